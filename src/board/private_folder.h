// A folder that only the user can look into, for the files that the board needs while it runs. It
// goes with all that is in it.
#pragma once

#include <string>
#include <string_view>

class PrivateFolder {
public:
    PrivateFolder();
    ~PrivateFolder();
    PrivateFolder(const PrivateFolder&) = delete;
    PrivateFolder& operator=(const PrivateFolder&) = delete;

    // False when no folder could be made.
    [[nodiscard]] bool Exists() const { return !path_.empty(); }
    [[nodiscard]] std::string File(std::string_view name) const;

    // Answers whether the file could be written.
    bool Write(std::string_view name, std::string_view content) const;

private:
    std::string path_;
};

// A folder of its own for a test that writes files; it goes with all that is in it.
#pragma once

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>
#include <string_view>

#include <sys/mman.h>

class ScratchFolder {
public:
    ScratchFolder() {
        std::string name = (std::filesystem::temp_directory_path() / "talurex-XXXXXX").string();
        path_ = mkdtemp(name.data());
    }
    ~ScratchFolder() {
        std::error_code ignored;
        std::filesystem::remove_all(path_, ignored);
    }
    ScratchFolder(const ScratchFolder&) = delete;
    ScratchFolder& operator=(const ScratchFolder&) = delete;

    [[nodiscard]] std::string File(std::string_view name) const { return (path_ / name).string(); }
    [[nodiscard]] std::string Path() const { return path_.string(); }

    // The number of entries, hidden ones included.
    [[nodiscard]] long NumEntries() const {
        return std::distance(std::filesystem::directory_iterator(path_),
                             std::filesystem::directory_iterator());
    }

private:
    std::filesystem::path path_;
};

// The name of a new file in memory, for tests that write it thousands of times: disks are slow.
inline std::string MakeFileInMemory() {
    return "/proc/self/fd/" + std::to_string(memfd_create("talurex", 0));
}

inline void WriteFile(const std::string& path, std::string_view content) {
    std::ofstream(path, std::ios::binary) << content;
}

inline std::string ReadFile(const std::string& path) {
    std::ostringstream content;
    content << std::ifstream(path, std::ios::binary).rdbuf();
    return content.str();
}

#include "board/private_folder.h"

#include <array>
#include <cstdlib>
#include <filesystem>
#include <system_error>

#include <fcntl.h>
#include <unistd.h>

namespace {

namespace fs = std::filesystem;

// Whether Talurex takes a name in this folder for that of a file: it must be one word, and short.
bool CanBeTyped(const fs::path& folder) {
    constexpr std::size_t MAX_LENGTH = 100;
    return folder.string().find_first_of(" \t\n\v\f\r") == std::string::npos &&
           folder.string().size() < MAX_LENGTH;
}

std::string MakeFolderIn(const fs::path& parent) {
    std::string name = (parent / "talurex-board-XXXXXX").string();
    return parent.is_absolute() && mkdtemp(name.data()) != nullptr ? name : "";
}

// The folder for the files of a session lies in memory and is the user's own; not every system has
// one. One that Talurex can save a game in goes first.
std::string MakeFolder() {
    const char* runtime = std::getenv("XDG_RUNTIME_DIR");
    std::error_code failed;
    const std::array<fs::path, 3> parents = {fs::path(runtime != nullptr ? runtime : ""),
                                             fs::temp_directory_path(failed), fs::path("/tmp")};
    for (const bool typed : {true, false}) {
        for (const fs::path& parent : parents) {
            std::string name = CanBeTyped(parent) == typed ? MakeFolderIn(parent) : "";
            if (!name.empty()) {
                return name;
            }
        }
    }
    return "";
}

}  // namespace

PrivateFolder::PrivateFolder() : path_(MakeFolder()) {}

PrivateFolder::~PrivateFolder() {
    if (Exists()) {
        std::error_code ignored;
        fs::remove_all(path_, ignored);
    }
}

std::string PrivateFolder::File(std::string_view name) const {
    return path_ + '/' + std::string(name);
}

bool PrivateFolder::Write(std::string_view name, std::string_view content) const {
    const int file = open(File(name).c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0600);
    if (file == -1) {
        return false;
    }
    const bool written =
        write(file, content.data(), content.size()) == static_cast<ssize_t>(content.size());
    return close(file) == 0 && written;
}

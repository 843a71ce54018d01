#include "board/private_folder.h"

#include <cstdlib>
#include <filesystem>
#include <system_error>

#include <fcntl.h>
#include <unistd.h>

namespace {

namespace fs = std::filesystem;

// The folder for the files of a session lies in memory and is the user's own; not every system has
// one.
std::string MakeFolder() {
    const char* runtime = std::getenv("XDG_RUNTIME_DIR");
    std::error_code failed;
    for (const fs::path& parent :
         {fs::path(runtime != nullptr ? runtime : ""), fs::temp_directory_path(failed)}) {
        std::string name = (parent / "talurex-board-XXXXXX").string();
        if (parent.is_absolute() && mkdtemp(name.data()) != nullptr) {
            return name;
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

#include "board/open_page.h"

#include <array>
#include <csignal>
#include <cstdlib>
#include <filesystem>
#include <fstream>

#include <fcntl.h>
#include <spawn.h>
#include <unistd.h>

namespace {

namespace fs = std::filesystem;

bool IsSet(const char* variable) {
    const char* value = std::getenv(variable);
    return value != nullptr && *value != '\0';
}

// In memory and the user's own, where the system has such a place.
std::string MakeFolder() {
    std::error_code failed;
    const char* runtime = std::getenv("XDG_RUNTIME_DIR");
    const std::array<fs::path, 3> parents = {fs::path(runtime != nullptr ? runtime : ""),
                                             fs::temp_directory_path(failed), fs::path("/tmp")};
    for (const fs::path& parent : parents) {
        std::string name = (parent / "talurex-board-XXXXXX").string();
        if (parent.is_absolute() && mkdtemp(name.data()) != nullptr) {
            return name;
        }
    }
    return "";
}

// Starts the program that opens files as the user likes, cut off from this terminal.
bool OpenFile(std::string path) {
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    for (int descriptor = 0; descriptor <= 2; ++descriptor) {
        posix_spawn_file_actions_addopen(&actions, descriptor, "/dev/null", O_RDWR, 0);
    }
    // It gets back what this program has changed about signals.
    posix_spawnattr_t attributes;
    posix_spawnattr_init(&attributes);
    sigset_t changed;
    sigemptyset(&changed);
    sigaddset(&changed, SIGPIPE);
    posix_spawnattr_setsigdefault(&attributes, &changed);
    posix_spawnattr_setflags(&attributes, POSIX_SPAWN_SETSIGDEF);
    std::string program = "xdg-open";
    const std::array<char*, 3> command = {program.data(), path.data(), nullptr};
    pid_t id = 0;
    const bool isStarted =
        posix_spawnp(&id, program.c_str(), &actions, &attributes, command.data(), environ) == 0;
    posix_spawnattr_destroy(&attributes);
    posix_spawn_file_actions_destroy(&actions);
    return isStarted;
}

}  // namespace

PageOpener::~PageOpener() {
    if (!folder_.empty()) {
        std::error_code ignored;
        fs::remove_all(folder_, ignored);
    }
}

bool PageOpener::Open(const std::string& address) {
    if (!IsSet("DISPLAY") && !IsSet("WAYLAND_DISPLAY")) {
        return true;
    }
    folder_ = MakeFolder();
    const std::string path = folder_ + "/open.html";
    std::ofstream file(path);
    file << "<!DOCTYPE html>\n<title>Talurex</title>\n"
            "<meta http-equiv=\"refresh\" content=\"0; url="
         << address << "\">\n";
    file.close();
    return !folder_.empty() && !file.fail() && OpenFile(path);
}

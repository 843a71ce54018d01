#include "board/open_page.h"

#include <cstdlib>

#include <unistd.h>

namespace {

std::string Variable(const char* name) {
    const char* value = std::getenv(name);
    return value != nullptr ? value : "";
}

// Makes a file of the user's own, in memory where the system has such a place. Answers its name, or
// an empty text.
std::string MakePrivateFile(const std::string& content) {
    constexpr std::string_view EXTENSION = ".html";
    const std::string runtime = Variable("XDG_RUNTIME_DIR");
    std::string name = runtime.starts_with('/') ? runtime : "/tmp";
    name += "/talurex-board-XXXXXX" + std::string(EXTENSION);
    const int file = mkstemps(name.data(), static_cast<int>(EXTENSION.size()));
    if (file < 0) {
        return "";
    }
    const bool isWritten =
        write(file, content.data(), content.size()) == static_cast<ssize_t>(content.size());
    return close(file) == 0 && isWritten ? name : "";
}

}  // namespace

bool OpenPage(const std::string& address, std::string& file) {
    if (Variable("DISPLAY").empty() && Variable("WAYLAND_DISPLAY").empty()) {
        return true;
    }
    file = MakePrivateFile("<!DOCTYPE html>\n<title>Talurex</title>\n"
                           "<meta http-equiv=\"refresh\" content=\"0; url=" +
                           address + "\">\n");
    // By a variable, which needs no quoting.
    return !file.empty() && setenv("TALUREX_PAGE", file.c_str(), 1) == 0 &&
           std::system("command -v xdg-open >/dev/null && "
                       "{ xdg-open \"$TALUREX_PAGE\" </dev/null >/dev/null 2>&1 & }") == 0;
}

#include "display/progress_line.h"

#include <algorithm>
#include <cstdio>

#include <sys/ioctl.h>
#include <unistd.h>

#include "support/signals.h"

namespace {

bool IsShown = false;

// The columns of the terminal; a terminal that does not tell is taken for one of the usual width.
std::size_t TerminalWidth() {
    constexpr std::size_t USUAL_WIDTH = 80;
    winsize size{};
    const bool known = ioctl(STDERR_FILENO, TIOCGWINSZ, &size) == 0 && size.ws_col > 0;
    return known ? size.ws_col : USUAL_WIDTH;
}

}  // namespace

bool CanShowProgress() {
    return isatty(STDERR_FILENO) == 1;
}

void ShowProgress(std::string text) {
    // A line that reaches the last column may wrap, and could then not be erased.
    text.resize(std::min(text.size(), TerminalWidth() - 1));
    std::fflush(stdout);
    std::fprintf(stderr, "\r%s\033[K", text.c_str());
    IsShown = true;
}

void EraseProgress() {
    // A terminal that is held must not hold up the end.
    if (IsShown && EndingSignal() == 0) {
        std::fprintf(stderr, "\r\033[K");
    }
    IsShown = false;
}

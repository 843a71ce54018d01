#include "terminal/progress_line.h"

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <string>

#include <sys/ioctl.h>
#include <unistd.h>

#include "rules/notation.h"
#include "support/output.h"
#include "support/requests.h"

namespace {

using Clock = std::chrono::steady_clock;

constexpr std::chrono::seconds SHORT_THOUGHT(1);
constexpr std::chrono::milliseconds INTERVAL(200);

bool IsShown = false;
Clock::time_point NextLook;

// The columns of the terminal; a terminal that does not tell is taken for one of the usual width.
std::size_t TerminalWidth() {
    constexpr std::size_t USUAL_WIDTH = 80;
    winsize size{};
    const bool known = ioctl(STDERR_FILENO, TIOCGWINSZ, &size) == 0 && size.ws_col > 0;
    return known ? size.ws_col : USUAL_WIDTH;
}

std::string ProgressText(const ThoughtProgress& progress) {
    const SearchProgress& search = progress.Search;
    std::string text = "Depth " + std::to_string(progress.Depth) + ": move " +
                       std::to_string(search.NumFinished) + '/' + std::to_string(search.NumMoves) +
                       ", " + std::to_string(search.NumEvaluations) + " positions";
    if (progress.Standing != nullptr) {
        text += ", best " + GetMoveString(progress.Standing->Search.BestMove, progress.Board);
    } else if (search.HasMove) {
        text += ", best " + GetMoveString(search.BestMove, progress.Board);
    }
    return text;
}

void WriteLine(std::string text) {
    // A line that reaches the last column may wrap, and could then not be erased.
    text.resize(std::min(text.size(), TerminalWidth() - 1));
    FlushOutput();
    std::fprintf(stderr, "\r%s\033[K", text.c_str());
    IsShown = true;
}

void EraseLine() {
    // A terminal that is held must not hold up the end.
    if (IsShown && !IsRequested(END_REQUESTS)) {
        std::fprintf(stderr, "\r\033[K");
    }
    IsShown = false;
}

}  // namespace

bool CanShowProgress() {
    return isatty(STDERR_FILENO) == 1;
}

void ShowProgress(void* /*context*/, const ThoughtProgress& progress) {
    if (progress.IsOver) {
        EraseLine();
        return;
    }
    const Clock::time_point now = Clock::now();
    if (now < NextLook || now - progress.Began < SHORT_THOUGHT) {
        return;
    }
    NextLook = now + INTERVAL;
    WriteLine(ProgressText(progress));
}

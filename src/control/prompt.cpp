#include "control/prompt.h"

#include <cerrno>
#include <csignal>
#include <cstdio>

#include <unistd.h>

#include "control/keep_game.h"
#include "support/files.h"
#include "support/signals.h"
#include "support/text.h"

namespace {

// The most characters taken at once, a line feed among them; what is longer is read in pieces, each
// a line of its own.
constexpr int INPUT_LINE_LENGTH = 198;

bool IsAtTerminal() {
    return isatty(STDIN_FILENO) == 1;
}

void PrintPrompt(const PlayState& state) {
    std::printf("Move (%i/%i), %s: ", state.CurrentMove, state.Record.LastMove,
                GlobCfg.GameRunFlag == 1 ? "your move" : "game stopped");
    std::fflush(stdout);
}

// Waits at a terminal until there is something to read.
void AwaitLine(const PlayState& state) {
    bool isWarned = false;
    while (!WaitForInput()) {
        if (EndingSignal() != 0) {
            EndBySignal(EndingSignal());
        }
        if (isWarned) {
            EndBySignal(SIGINT);
        }
        isWarned = true;
        DropRequests(REQUEST_INTERRUPT);
        std::printf("\n(Ctrl-C once more ends Talurex; /help lists the commands)\n");
        PrintPrompt(state);
    }
}

// Reads on when a signal came between two parts of a line, as when its first part was sent off by
// Ctrl-D.
bool ReadLine(const PlayState& state, std::string& line) {
    while (true) {
        if (IsAtTerminal()) {
            AwaitLine(state);
        }
        if (ReadPiece(INPUT_LINE_LENGTH, line, stdin)) {
            return true;
        }
        if (std::ferror(stdin) == 0 || errno != EINTR) {
            return false;
        }
        std::clearerr(stdin);
    }
}

}  // namespace

void PrepareInput() {
    if (IsAtTerminal()) {
        ListenToTerminal();
        // Without a buffer, so that waiting for input never waits for what has been read already.
        std::setvbuf(stdin, nullptr, _IONBF, 0);
    }
}

bool PromptForLine(const PlayState& state, std::string& line) {
    DropRequests(REQUEST_INTERRUPT);
    PrintPrompt(state);
    const bool isRead = ReadLine(state, line);
    DropRequests(REQUEST_MOVE_NOW);
    if (!isRead) {
        std::printf("\n");
        return false;
    }
    EatLeadingAndTrailingWhitespace(line);
    return true;
}

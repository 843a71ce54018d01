#include "control/prompt.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <csignal>
#include <cstdio>
#include <cstring>

#include <termios.h>
#include <unistd.h>

#include "control/keep_game.h"
#include "support/files.h"
#include "support/signals.h"
#include "support/text.h"

namespace {

// The most characters taken at once, a line feed among them; what is longer is read in pieces, each
// a line of its own.
constexpr std::size_t INPUT_LINE_LENGTH = 198;

bool IsAtTerminal() {
    return isatty(STDIN_FILENO) == 1;
}

void PrintPrompt(const PlayState& state) {
    std::printf("Move (%i/%i), %s: ", state.CurrentMove, state.Record.LastMove,
                GlobCfg.GameRunFlag == 1 ? "your move" : "game stopped");
    std::fflush(stdout);
}

// What was typed at the terminal and is not yet taken. It is not read through a stream: a request
// can be waited for together with input only when nothing has been read ahead and out of sight.
struct TypedText {
    std::string Text;
    bool IsAtEnd = false;
};
TypedText Typed;

// Ends the process for the second interrupt in a row, and when a signal asks for it; else drops
// what was typed and prompts again.
void AnswerRequest(const PlayState& state, bool isSecond) {
    if (EndingSignal() != 0) {
        EndBySignal(EndingSignal());
    }
    if (isSecond) {
        EndBySignal(SIGINT);
    }
    DropRequests(REQUEST_INTERRUPT);
    tcflush(STDIN_FILENO, TCIFLUSH);
    Typed.Text.clear();
    std::printf("\n(Ctrl-C once more ends Talurex; /help lists the commands)\n");
    PrintPrompt(state);
}

// Reads what the terminal has: as a rule a whole line, or its end.
void ReadOn() {
    std::array<char, 4096> bytes;
    const ssize_t count = read(STDIN_FILENO, bytes.data(), bytes.size());
    if (count > 0) {
        Typed.Text.append(bytes.data(), static_cast<std::size_t>(count));
    } else if (count == 0 || errno != EINTR) {
        Typed.IsAtEnd = true;
    }
}

// The same as ReadPiece, from the terminal.
bool ReadTypedPiece(const PlayState& state, std::string& line) {
    bool isWarned = false;
    std::size_t length = 0;
    while ((length = Typed.Text.find('\n') + 1) == 0 && !Typed.IsAtEnd &&
           Typed.Text.size() < INPUT_LINE_LENGTH) {
        if (WaitForInput()) {
            ReadOn();
        } else {
            AnswerRequest(state, isWarned);
            isWarned = true;
        }
    }
    length = std::min({length == 0 ? Typed.Text.size() : length, INPUT_LINE_LENGTH});
    line.assign(Typed.Text, 0, length);
    line.resize(std::strlen(line.c_str()));  // a NUL byte ends the line's text
    Typed.Text.erase(0, length);
    return length > 0;
}

}  // namespace

void PrepareInput() {
    if (IsAtTerminal()) {
        ListenToTerminal();
    }
}

bool PromptForLine(const PlayState& state, std::string& line) {
    DropRequests(REQUEST_INTERRUPT);
    PrintPrompt(state);
    const bool isRead =
        IsAtTerminal() ? ReadTypedPiece(state, line) : ReadPiece(INPUT_LINE_LENGTH, line, stdin);
    DropRequests(REQUEST_MOVE_NOW);
    if (!isRead) {
        std::printf("\n");
        return false;
    }
    EatLeadingAndTrailingWhitespace(line);
    return true;
}

#include "terminal/prompt.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <csignal>
#include <cstdio>
#include <cstring>

#include <termios.h>
#include <unistd.h>

#include "support/files.h"
#include "support/output.h"
#include "support/requests.h"
#include "terminal/keep_game.h"
#include "terminal/signals.h"

namespace {

void PrintPrompt(const Session& session) {
    PrintText(PromptText(session));
    FlushOutput();
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
void AnswerRequest(Session& session, bool isSecond) {
    if (EndingSignal() != 0) {
        EndBySignal(EndingSignal(), session.Play);
    }
    if (isSecond) {
        EndBySignal(SIGINT, session.Play);
    }
    DropRequests(REQUEST_INTERRUPT);
    tcflush(STDIN_FILENO, TCIFLUSH);
    Typed.Text.clear();
    Print("\n(Ctrl-C once more ends Talurex; /help lists the commands)\n");
    PrintPrompt(session);
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
bool ReadTypedPiece(Session& session, std::string& line) {
    bool isWarned = false;
    std::size_t length = 0;
    while ((length = Typed.Text.find('\n') + 1) == 0 && !Typed.IsAtEnd &&
           Typed.Text.size() < MAX_TYPED_LENGTH) {
        if (WaitForInput()) {
            ReadOn();
        } else {
            AnswerRequest(session, isWarned);
            isWarned = true;
        }
    }
    length = std::min({length == 0 ? Typed.Text.size() : length, MAX_TYPED_LENGTH});
    line.assign(Typed.Text, 0, length);
    line.resize(std::strlen(line.c_str()));  // a NUL byte ends the line's text
    Typed.Text.erase(0, length);
    return length > 0;
}

}  // namespace

bool IsAtTerminal() {
    static const bool isAtTerminal = isatty(STDIN_FILENO) == 1;
    return isAtTerminal;
}

void PrepareInput() {
    if (IsAtTerminal()) {
        ListenToTerminal();
    }
}

bool PromptForLine(Session& session, std::string& line) {
    DropRequests(REQUEST_INTERRUPT);
    PrintPrompt(session);
    const bool isRead =
        IsAtTerminal() ? ReadTypedPiece(session, line) : ReadPiece(MAX_TYPED_LENGTH, line, stdin);
    DropRequests(REQUEST_MOVE_NOW);
    if (!isRead) {
        Print("\n");
    }
    return isRead;
}

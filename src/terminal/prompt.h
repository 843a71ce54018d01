// The prompt, and the line that is typed behind it.
#pragma once

#include <string>

#include "control/session.h"

// Whether standard input was a terminal when this was first asked: one that has been closed since
// is none any more, but somebody sat there.
[[nodiscard]] bool IsAtTerminal();

// To be called once, before the first prompt. Signals act on a game that somebody plays at a
// terminal; elsewhere they do what they do to any program.
void PrepareInput();

// Prompts for a line and reads it. At a terminal the first interrupt drops
// what was typed and prompts again; the second one ends the program, and so does every signal that
// asks for it. Answers false at the end of standard input.
[[nodiscard]] bool PromptForLine(Session& session, std::string& line);

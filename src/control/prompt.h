// The prompt, and the line that is typed behind it.
#pragma once

#include <string>

#include "control/play_state.h"

// To be called once, before the first prompt. Signals act on a game that somebody plays at a
// terminal; elsewhere they do what they do to any program.
void PrepareInput();

// Prompts for a line and reads it, trimmed at both ends. At a terminal the first interrupt drops
// what was typed and prompts again; the second one ends the process, and so does every signal that
// asks for it. Answers false at the end of standard input.
[[nodiscard]] bool PromptForLine(const PlayState& state, std::string& line);

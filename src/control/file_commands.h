// Commands that read and write game files. A game in memory is replaced as a whole or not at all.
#pragma once

#include <string>

#include "control/play_state.h"

// The file that an argument of load and save names.
[[nodiscard]] std::string GameFileName(const std::string& argument);

// Replaces the stopped game by one from a saved-game file and shows its last position.
void DoLoad(const std::string& argument, PlayState& state);

void DoSave(const std::string& argument, PlayState& state);

// Replaces the stopped game by one from a game log and shows its last position.
void DoImport(const std::string& argument, PlayState& state);

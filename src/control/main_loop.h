// The interactive play loop.
#pragma once

#include <string>

#include "control/play_state.h"
#include "kernel/weights.h"

// Builds the first game and plays until the quit command or the end of standard input. `weights`
// are those of the computer's level; the level command changes them.
void MainControl(EvalWeights& weights);

// Carries out one trimmed line of input: a command, when it begins with '/' or the game is stopped,
// else a move.
void DoLine(PlayState& state, std::string line, EvalWeights& weights);

// What every turn ends with: a game that is over stops, and the graphical display is brought up to
// date.
void EndCycle(const PlayState& state);

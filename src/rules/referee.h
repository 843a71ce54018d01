// Whether a move from outside is allowed, whether the game is over, and who has how many stones.
#pragma once

#include "rules/moves.h"
#include "rules/position.h"

// Checks a placement or tower move against `position`. `distance` is the number of spaces that the
// input moves the tower (ignored in the setup phase). Answers false after printing the reason. A
// position whose side to move is neither colour ends the program.
[[nodiscard]] bool MoveIsOk(const Position& position, const Move& move, int distance);

// True when no tower of either side can move. Never in the setup phase.
[[nodiscard]] bool IsEndPosition(const Position& position);

// Counts the stones of the towers that each side owns; lone life stones count for nobody. Answers
// true while the game is not over.
bool GetScore(const Position& position, int& whiteScore, int& blackScore);

// How a game starts: the empty board of a normal setup, the random start position, and the
// placement of one stone.
#pragma once

#include "rules/moves.h"
#include "rules/position.h"

// Fills `position` with the start of a normal setup: an empty board, WHITE to place, and all life
// stones still to come. Spaces outside the rectangle are left alone.
void GenerateEmptyStartPosition(Position& position);

// Fills `position` with a full board in the move phase, WHITE to move. The stones are drawn one
// by one, column by column: the same seed gives the same board.
void GenerateRandomStartPosition(Position& position);

// The start position that SetupMode asks for.
void GenerateStartPosition(Position& position);

// Places one stone on the space named by `move`: `child` becomes the position behind it. The caller
// has checked the placement; one in a position past the setup, or on a space that is not empty,
// ends the program. `parent` and `child` must be different records.
void DoSetupMove(const Position& parent, const Move& move, Position& child);

// A space with the single stone of a colour code on it, or for EMPTY with none.
[[nodiscard]] Space SpaceWith(int color);

// Resets every field but the spaces to those of a game that begins in the move phase on what lies
// on the board: WHITE to move, nothing known of the value.
void ResetAllButSpaces(Position& position);

// The counter of the setup phase (Position::SetupPhase) at the start of a normal setup with this
// many life stones, and the number of life stones that such a counter stands for. The largest
// number has no successor and shares a counter with the one below it.
[[nodiscard]] int SetupCounter(int lifeStones);
[[nodiscard]] int LifeStonesOfCounter(int counter);

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
// ends the process. `parent` and `child` must be different records.
void DoSetupMove(const Position& parent, const Move& move, Position& child);

// The single stone of a colour code: WHITE, BLACK, LIFE, or the empty space.
[[nodiscard]] Space SingleStone(int color);

// Begins the move phase on the stones that lie on the board, with WHITE to move.
void BeginMovePhase(Position& position);

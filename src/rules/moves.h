// Tower moves: which there are, what they do, and the life rule, by which every group of towers
// that a move cuts off from all life stones leaves the board at once. A group is a set of occupied
// spaces connected through neighbouring occupied spaces.
#pragma once

#include <array>

#include "rules/position.h"

enum MoveKind : int {
    MOVE_SETUP = 0,
    MOVE_TOWER = 1,
    MOVE_PASS = 2,
};

// A move has a meaning only together with the position it is made in: a tower always moves its own
// height, so the distance is not stored.
struct Move {
    int Kind = MOVE_SETUP;  // a MoveKind; set for moves that are read from text, used by nobody
    int Column = 0;         // the moving tower, or the space of a placement
    int Row = 0;
    int Direction = 0;  // 0 to 5, not used by placements and passes

    bool operator==(const Move&) const = default;
};

// Six moves for each space of the largest board: no position has more.
inline constexpr int MAX_MOVES = NUM_DIRECTIONS * MAX_BOARD_SPACES;
using MoveArray = std::array<Move, MAX_MOVES>;

// Writes every legal tower move of the side to move into `moves`, by rows from the top, columns
// from the left, directions 0 to 5: ties in the search are broken by this order. `Kind` is left
// alone. Returns their number; 0 means that the side must pass. Not for positions of the setup
// phase.
[[nodiscard]] int GetPossibleMoves(const Position& position, MoveArray& moves);

// The number of legal tower moves of the side to move, or in the setup phase the number of empty
// spaces.
[[nodiscard]] int GetNumMoves(const Position& position);

// The space that the tower named by `move` reaches in `position`.
[[nodiscard]] Place MoveTarget(const Position& position, const Move& move);

// Makes a legal tower move: `child` becomes the position behind it, with dead groups removed and
// the parent's value negated. `parent` and `child` must be different records.
void DoMove(const Position& parent, const Move& move, Position& child);

// Makes a pass: the same board with the other side to move and the value negated.
void DoPass(const Position& parent, Position& child);

// True when every space strictly between the source of `move` and the place `height` steps on is
// occupied.
[[nodiscard]] bool CheckDirectConnection(const Position& position, const Move& move, int height);

// True when the group of (x, y) holds a life stone. (x, y) itself may be empty: its neighbours are
// then looked at all the same.
[[nodiscard]] bool TestOfLife(const Position& position, int x, int y);

// Empties (x, y) and every occupied space connected to it.
void KillDeathGroup(Position& position, int x, int y);

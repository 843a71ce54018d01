// The Position: everything the rules need to know of a game at one moment. A plain value without
// pointers, copied whole to make a successor.
#pragma once

#include <array>
#include <type_traits>

#include "rules/board.h"

// One set of codes serves for the side to move and for the owner of a space. The codes stand in the
// protocol of the graphical display.
enum ColorCode : int {
    WHITE = 0,
    BLACK = 1,
    LIFE = 2,   // a lone life stone; it belongs to nobody and never moves
    EMPTY = 3,  // no tower
};

// A tower is fully described by its height, its top stone, and whether it holds a life stone.
struct Space {
    int Height = 0;  // stones in the tower; 0 exactly when Owner is EMPTY
    int Life = 0;    // 1 when the tower holds a life stone
    int Owner = 0;   // a ColorCode: the colour of the top stone; start positions write EMPTY

    bool operator==(const Space&) const = default;
};

struct Position {
    // Indexed [column][row]. Spaces outside the board shape are always empty; those outside the
    // current rectangle of columns and rows are left alone.
    std::array<std::array<Space, MAX_BOARD_Y_DIM>, MAX_BOARD_X_DIM> Spaces{};
    int ActivePlayer = WHITE;  // the side to move
    double Value = 0.0;        // evaluation, seen from the side to move
    int ExactValue = 0;        // 1 when every line of the search for Value ended in an end position
    int EndPosition = 0;       // 1 when the evaluation found that neither side can move
    int SetupPhase = 0;  // 0: move phase, 1: own stones are placed, n: n - 1 life stones come first
};
static_assert(std::is_trivially_copyable_v<Position>);

// The side that is not `color`, for WHITE and BLACK.
constexpr int OtherColor(int color) {
    return WHITE + BLACK - color;
}

// The place that a way of `distance` steps in `direction` leads to, on the board or not.
struct Place {
    int Column = 0;
    int Row = 0;
};
constexpr Place StepFrom(int x, int y, int direction, int distance) {
    return {x + distance * xF[direction], y + distance * yF[direction]};
}

// True when the two records are equal to the last bit: a value of minus zero differs from zero.
[[nodiscard]] bool SamePosition(const Position& a, const Position& b);

// True when (x, y) lies in the rectangle and holds a tower or a life stone; any x and y may be
// asked.
[[nodiscard]] bool IsOccupied(const Position& position, int x, int y);

// True when a tower on (x, y) is not enclosed on all six sides. Looks at the neighbours only, not
// at (x, y) itself; at the edge of the rectangle, or outside, nothing encloses it.
[[nodiscard]] bool IsFree(const Position& position, int x, int y);

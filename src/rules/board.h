// The shape of the board: a hexagon of hexagonal spaces, cut out of a parallelogram of columns and
// rows whose size stands in GlobCfg. Column 0 is the leftmost, row index 0 the top row.
#pragma once

#include <array>

#include "config/glob_cfg.h"

// The spaces of the largest board: 15 by 9 less two corners of ten.
inline constexpr int MAX_BOARD_SPACES = 115;

inline constexpr int NUM_DIRECTIONS = 6;

// The six neighbours of a space, once round its ring: d and d + 1 are neighbours of each other, d
// and d + 3 are opposite. The seventh entry repeats the first, so that a walk over 0 to 6 closes
// the ring.
inline constexpr std::array<int, NUM_DIRECTIONS + 1> xF = {1, 0, -1, -1, 0, 1, 1};
inline constexpr std::array<int, NUM_DIRECTIONS + 1> yF = {0, 1, 1, 0, -1, -1, 0};

// The direction index whose step has these signs, or -1 when they belong to no direction. A
// straight line on the board has one of the six pairs of signs.
[[nodiscard]] int DirectionOfSigns(int xSign, int ySign);

// A straight way between two spaces.
struct Way {
    int Direction = 0;
    int Distance = 0;
};

// Finds the direction and the number of steps of the way (dx, dy). Answers false when the way
// follows none of the six directions, or leads nowhere.
[[nodiscard]] bool FindWay(int dx, int dy, Way& way);

// The side of the corner that is cut off the parallelogram at its top left and its bottom right.
[[nodiscard]] int CornerSize();

// The board spaces of a row: columns First up to, but not including, End. Empty when End <= First.
struct ColumnRange {
    int First = 0;
    int End = 0;
};
[[nodiscard]] ColumnRange BoardColumns(int y);

// The number of spaces on the board.
[[nodiscard]] int NumBoardSpaces();

// True when (x, y) is a space of the board; any x and y may be asked.
[[nodiscard]] bool IsOnBoard(int x, int y);

// True when (x, y) lies in the rectangle of columns and rows, cut-off corners included.
[[nodiscard]] bool IsInRectangle(int x, int y);

// Column distance plus row distance from the middle of the board; not a distance in steps.
[[nodiscard]] int CenterDistance(int x, int y);

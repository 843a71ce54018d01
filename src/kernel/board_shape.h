// What the search needs to know of the board's shape, in tables: the spaces are numbered as the
// move generator visits them, by rows from the top and columns from the left.
#pragma once

#include <array>
#include <cstdint>

#include "kernel/bit_set.h"
#include "rules/board.h"

// A tower of REACH_NONE stones or more lands off every board: such heights share one table row.
inline constexpr int REACH_NONE = MAX_BOARD_X_DIM;
static_assert(MAX_BOARD_Y_DIM <= REACH_NONE);

// One space.
template <typename Set>
struct alignas(64) Spot {
    // The spaces that a tower of a height reaches from here, without what is off the board. Being
    // reached is mutual: the towers of height h that reach this space stand on Reached[h].
    std::array<Set, REACH_NONE + 1> Reached{};
    // The same by direction, with NumSpaces for what is off the board; height 0, that of an empty
    // space, reaches nothing.
    std::array<std::array<std::uint8_t, NUM_DIRECTIONS>, REACH_NONE + 1> Target{};
    std::uint8_t Column = 0;
    std::uint8_t Row = 0;
    std::uint8_t FromCenter = 0;  // CenterDistance
};

template <typename Set>
struct BoardShape {
    static constexpr int MAX_SPACES = sizeof(Set) * 8;  // one of them stands for "off the board"

    std::array<Spot<Set>, MAX_SPACES> Spots{};
    // The spaces whose six neighbours all belong to the board: only they can be enclosed.
    Set Inner = 0;
    int NumSpaces = 0;
    int BoardXDim = 0;  // the board size that the tables were made for
    int BoardYDim = 0;

    [[nodiscard]] const Set& Neighbours(int space) const { return Spots[space].Reached[1]; }
};

// The tables of the current board, made anew when the board size has changed since the last call.
// The board must fit: at most MAX_SPACES - 1 spaces.
template <typename Set>
const BoardShape<Set>& CurrentShape();

static_assert(MAX_BOARD_SPACES < BoardShape<LargeSet>::MAX_SPACES);

// True when the current board fits into a SmallSet.
[[nodiscard]] bool IsSmallBoard();

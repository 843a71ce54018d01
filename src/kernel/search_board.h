// The compact board of the search: sets of spaces, and heights as bytes.
#pragma once

#include <array>
#include <cstdint>

#include "kernel/bit_set.h"
#include "kernel/geometry.h"
#include "rules/position.h"

namespace {

template <typename Set>
struct SearchBoard {
    Set Occupied = 0;            // towers and lone life stones
    Set Life = 0;                // what holds a life stone
    Set Enclosed = 0;            // occupied spaces whose six neighbours are occupied
    std::array<Set, 2> Owned{};  // the towers of WHITE and of BLACK
    // The towers of each height that can reach anything; the first and the last entry stay empty.
    // Aligned, and always walked from one end to the other: that takes a few vector instructions.
    alignas(32) std::array<Set, REACH_NONE + 1> ByHeight{};
    std::array<std::uint8_t, Geometry<Set>::MAX_SPACES> Height{};  // 0 where not occupied
    int ActivePlayer = WHITE;

    bool operator==(const SearchBoard&) const = default;
};

// The row of the geometry's tables for a height.
inline int ReachRow(int height) {
    return height < REACH_NONE ? height : REACH_NONE;
}

// The spaces of `board` that a set of occupied spaces encloses.
template <typename Set>
inline Set EnclosedSpaces(const Geometry<Set>& geometry, Set occupied) {
    Set enclosed = 0;
    for (Set inner = occupied & geometry.Inner; inner != 0;) {
        const int space = TakeFirst(inner);
        if ((geometry.Neighbours(space) & ~occupied) == 0) {
            enclosed |= Bit<Set>(space);
        }
    }
    return enclosed;
}

// The compact form of a position of the move phase.
template <typename Set>
inline SearchBoard<Set> ToSearchBoard(const Geometry<Set>& geometry, const Position& position) {
    SearchBoard<Set> board;
    for (int i = 0; i < geometry.NumSpaces; ++i) {
        const Space& space = position.Spaces[geometry.Column[i]][geometry.Row[i]];
        if (space.Height == 0) {
            continue;
        }
        const Set bit = Bit<Set>(i);
        board.Occupied |= bit;
        board.Life |= space.Life != 0 ? bit : Set{0};
        board.Height[i] = static_cast<std::uint8_t>(space.Height);
        if (space.Owner == WHITE || space.Owner == BLACK) {
            board.Owned[space.Owner] |= bit;
            if (space.Height < REACH_NONE) {
                board.ByHeight[space.Height] |= bit;
            }
        }
    }
    board.Enclosed = EnclosedSpaces(geometry, board.Occupied);
    board.ActivePlayer = position.ActivePlayer;
    return board;
}

// The towers of `board` whose own height leads them to `space`. The board is that before a move:
// callers take out the towers that have left it since.
template <typename Set>
inline Set AimersAt(const Geometry<Set>& geometry, const SearchBoard<Set>& board, int space) {
    Set aimers = 0;
    for (int height = 0; height <= REACH_NONE; ++height) {
        aimers |= geometry.Reached[space][height] & board.ByHeight[height];
    }
    return aimers;
}

// The position behind the move of the tower on `source` to `target`, of which `dead` dies.
template <typename Set>
inline SearchBoard<Set> MakeChild(const Geometry<Set>& geometry, const SearchBoard<Set>& board,
                                  int source, int target, Set dead) {
    const Set from = Bit<Set>(source);
    const Set to = Bit<Set>(target);
    const int mover = board.ActivePlayer;
    const int height = board.Height[source];
    const int stacked = height + board.Height[target];
    const Set alive = ~(from | dead);

    SearchBoard<Set> child = board;
    child.ActivePlayer = OtherColor(mover);
    child.Owned[mover] |= to;
    child.Owned[OtherColor(mover)] &= ~to;
    child.Life |= (board.Life & from) != 0 ? to : Set{0};
    child.Height[source] = 0;
    child.Height[target] = static_cast<std::uint8_t>(stacked);
    for (Set gone = dead; gone != 0;) {
        child.Height[TakeFirst(gone)] = 0;
    }
    child.Occupied &= alive;
    child.Life &= alive;
    child.Enclosed &= alive & ~geometry.Neighbours(source);
    child.Owned[WHITE] &= alive;
    child.Owned[BLACK] &= alive;
    const Set stay = alive & ~to;
    for (Set& towers : child.ByHeight) {
        towers &= stay;
    }
    if (stacked < REACH_NONE) {
        child.ByHeight[stacked] |= to & alive;
    }
    return child;
}

}  // namespace

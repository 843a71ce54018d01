// The compact board of the search: sets of spaces, and heights as bytes.
#pragma once

#include <array>
#include <cstdint>

#include "kernel/bit_set.h"
#include "kernel/board_shape.h"
#include "rules/position.h"

namespace {

// The kind of a tower as an index: whose it is, whether it is free and whether it holds life. A
// lone life stone has a kind of its own.
inline constexpr int KIND_LIFE = 1;
inline constexpr int KIND_FREE = 2;
inline constexpr int KIND_OWNER = 4;  // WHITE 0, BLACK 4, LIFE 8
inline constexpr int NUM_KINDS = 12;
inline constexpr int KindOf(int owner, bool free, bool life) {
    return owner * KIND_OWNER + (free ? KIND_FREE : 0) + (life ? KIND_LIFE : 0);
}
inline constexpr int OwnerOf(int kind) {
    return kind / KIND_OWNER;
}

template <typename Set>
struct SearchBoard {
    Set Occupied;              // towers and lone life stones
    Set Life;                  // what holds a life stone
    Set Enclosed;              // occupied spaces whose six neighbours are occupied
    std::array<Set, 2> Owned;  // the towers of WHITE and of BLACK
    // The towers of each height that can reach anything; the first and the last entry stay empty.
    // Aligned, and always walked from one end to the other: that takes a few vector instructions.
    alignas(32) std::array<Set, REACH_NONE + 1> ByHeight;
    std::array<std::uint8_t, BoardShape<Set>::MAX_SPACES> Height;  // 0 where not occupied
    std::array<std::uint8_t, BoardShape<Set>::MAX_SPACES> Kind;    // likewise
    int ActivePlayer;

    bool operator==(const SearchBoard&) const = default;
};

// The row of the shape's tables for a height.
inline int ReachRow(int height) {
    return height < REACH_NONE ? height : REACH_NONE;
}

// The spaces of `board` that a set of occupied spaces encloses.
template <typename Set>
inline Set EnclosedSpaces(const BoardShape<Set>& shape, Set occupied) {
    Set enclosed = 0;
    for (Set inner = occupied & shape.Inner; inner != 0;) {
        const int space = TakeFirst(inner);
        if ((shape.Neighbours(space) & ~occupied) == 0) {
            enclosed |= Bit<Set>(space);
        }
    }
    return enclosed;
}

template <typename Set>
inline const Space& SpaceOf(const BoardShape<Set>& shape, const Position& position, int space) {
    return position.Spaces[shape.Spots[space].Column][shape.Spots[space].Row];
}

// The compact form of a position of the move phase.
template <typename Set>
inline SearchBoard<Set> ToSearchBoard(const BoardShape<Set>& shape, const Position& position) {
    SearchBoard<Set> board{};
    for (int i = 0; i < shape.NumSpaces; ++i) {
        const Space& space = SpaceOf(shape, position, i);
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
    board.Enclosed = EnclosedSpaces(shape, board.Occupied);
    for (Set occupied = board.Occupied; occupied != 0;) {
        const int i = TakeFirst(occupied);
        const int owner = SpaceOf(shape, position, i).Owner;
        board.Kind[i] =
            static_cast<std::uint8_t>(KindOf(owner, !Has(board.Enclosed, i), Has(board.Life, i)));
    }
    board.ActivePlayer = position.ActivePlayer;
    return board;
}

// The towers of `board` whose own height leads them to `space`. The board is that before a move:
// callers take out the towers that have left it since.
template <typename Set>
inline Set AimersAt(const BoardShape<Set>& shape, const SearchBoard<Set>& board, int space) {
    Set aimers = 0;
    for (int height = 0; height <= REACH_NONE; ++height) {
        aimers |= shape.Spots[space].Reached[height] & board.ByHeight[height];
    }
    return aimers;
}

// The position behind the move of the tower on `source` to `target`, of which `dead` dies.
template <typename Set>
inline SearchBoard<Set> MakeChild(const BoardShape<Set>& shape, const SearchBoard<Set>& board,
                                  int source, int target, Set dead) {
    const Set from = Bit<Set>(source);
    const Set to = Bit<Set>(target);
    const int mover = board.ActivePlayer;
    const int stacked = board.Height[source] + board.Height[target];
    const Set alive = ~(from | dead);
    const Set stay = alive & ~to;

    SearchBoard<Set> child;
    child.Occupied = board.Occupied & alive;
    child.Life = (board.Life | (Has(board.Life, source) ? to : Set{0})) & alive;
    child.Enclosed = board.Enclosed & alive & ~shape.Neighbours(source);
    child.Owned[mover] = (board.Owned[mover] | to) & alive;
    child.Owned[OtherColor(mover)] = board.Owned[OtherColor(mover)] & stay;
    for (int height = 0; height <= REACH_NONE; ++height) {
        child.ByHeight[height] = board.ByHeight[height] & stay;
    }
    if (stacked < REACH_NONE) {
        child.ByHeight[stacked] |= to & alive;
    }
    for (int space = 0; space < BoardShape<Set>::MAX_SPACES; ++space) {
        child.Height[space] = board.Height[space];
    }
    for (int space = 0; space < BoardShape<Set>::MAX_SPACES; ++space) {
        child.Kind[space] = board.Kind[space];
    }
    for (Set freed = board.Enclosed & shape.Neighbours(source); freed != 0;) {
        child.Kind[TakeFirst(freed)] |= KIND_FREE;
    }
    child.Height[target] = static_cast<std::uint8_t>(stacked);
    child.Kind[target] =
        static_cast<std::uint8_t>(mover * KIND_OWNER | (child.Kind[target] & KIND_FREE) |
                                  ((board.Kind[source] | board.Kind[target]) & KIND_LIFE));
    for (Set gone = dead | from; gone != 0;) {
        const int space = TakeFirst(gone);
        child.Height[space] = 0;
        child.Kind[space] = 0;
    }
    child.ActivePlayer = OtherColor(mover);
    return child;
}

}  // namespace

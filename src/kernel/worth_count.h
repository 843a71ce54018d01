// Counting over the compact board what towers are worth: single ones, all of them, and what the
// towers that aim at a space have of it.
#pragma once

#include <array>

#include "kernel/search_board.h"
#include "kernel/worth.h"

namespace {

// The tables that a search reads: those of the board's shape, and what towers are worth.
template <typename Set>
struct BoardTables {
    const BoardShape<Set>& Shape;
    WorthTable Worths;
};

// The sets that towers are judged by.
template <typename Set>
struct TowerView {
    Set Occupied;
    Set Life;
};

// What the tower on a space adds to the worth of a board as it stands in `view`, at this worth of
// its kind and without the targets that the other side owns.
template <typename Set>
inline Worth WorthWithoutEnemies(const BoardTables<Set>& tables, const TowerView<Set>& view,
                                 int space, int height, const TowerWorth& worth) {
    const Set reached = tables.Shape.Spots[space].Reached[ReachRow(height)] & view.Occupied;
    return worth.Tower + height * worth.Stone + Count(reached) * worth.Target +
           Count(reached & view.Life) * worth.LifeTarget;
}

// The same with those targets: `kind` tells whose tower it is. Nothing when it is a lone life
// stone.
template <typename Set>
inline Worth WorthOfTower(const BoardTables<Set>& tables, const SearchBoard<Set>& board,
                          const TowerView<Set>& view, int space, int kind, int height,
                          const TowerWorth& worth) {
    Worth sum = WorthWithoutEnemies(tables, view, space, height, worth);
    if (tables.Worths.WithEnemies) {
        const Set reached = tables.Shape.Spots[space].Reached[ReachRow(height)] & view.Occupied;
        const Set enemies = board.Owned[kind < BLACK * KIND_OWNER ? BLACK : WHITE];
        sum += Count(reached & enemies) * worth.EnemyTarget;
    }
    return sum;
}

template <typename Set>
inline Worth WorthOfTower(const BoardTables<Set>& tables, const SearchBoard<Set>& board,
                          const TowerView<Set>& view, int space, int kind, int height) {
    return WorthOfTower(tables, board, view, space, kind, height, tables.Worths.Towers[kind]);
}

// What is gained when the enclosed tower on a space becomes free.
template <typename Set>
inline Worth WorthOfFreedom(const BoardTables<Set>& tables, const SearchBoard<Set>& board,
                            const TowerView<Set>& view, int space) {
    const int kind = board.Kind[space];
    return WorthOfTower(tables, board, view, space, kind, board.Height[space],
                        tables.Worths.Freedoms[kind]);
}

// The worth of the whole board.
template <typename Set>
inline Worth WorthOfBoard(const BoardTables<Set>& tables, const SearchBoard<Set>& board) {
    Worth sum = 0;
    for (Set occupied = board.Occupied; occupied != 0;) {
        const int space = TakeFirst(occupied);
        sum += WorthOfTower(tables, board, {board.Occupied, board.Life}, space, board.Kind[space],
                            board.Height[space]);
    }
    return sum;
}

// The towers of a board in the order of WorthTable's Targets: WHITE's enclosed and free ones, then
// BLACK's.
template <typename Set>
using TowerGroups = std::array<Set, 4>;

template <typename Set>
inline TowerGroups<Set> GroupTowers(const SearchBoard<Set>& board, Set enclosed) {
    return {board.Owned[WHITE] & enclosed, board.Owned[WHITE] & ~enclosed,
            board.Owned[BLACK] & enclosed, board.Owned[BLACK] & ~enclosed};
}

// What `aimers`, towers of `board`, contribute by having a target of this kind.
template <typename Set>
inline Worth WorthOfTarget(const BoardTables<Set>& tables, const SearchBoard<Set>& board,
                           const TowerGroups<Set>& groups, Set aimers, int kind) {
    const auto& worths = tables.Worths.Targets[kind];
    Worth sum = 0;
    for (int i = 0; i < 4; ++i) {
        sum += Count(aimers & groups[i]) * worths[i];
    }
    if ((aimers & board.Life) != 0) {
        for (int i = 0; i < 4; ++i) {
            sum += Count(aimers & groups[i] & board.Life) * tables.Worths.LifeHolders[i];
        }
    }
    return sum;
}

}  // namespace

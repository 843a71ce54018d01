// Counting the tallies of towers on the compact board.
#pragma once

#include "kernel/search_board.h"
#include "kernel/tallies.h"

namespace {

// The sets that tallies are counted over.
template <typename Set>
struct TallyView {
    bool WithEnemies;  // whether the targets that the other side owns are counted at all
    Set Occupied;
    Set Life;
    Set Enclosed;
    std::array<Set, 2> Owned;
};

template <typename Set>
inline TallyView<Set> ViewOf(const SearchBoard<Set>& board, bool withEnemies) {
    return {withEnemies, board.Occupied, board.Life, board.Enclosed, board.Owned};
}

// Adds one tower to the tallies `times` times: 1 or -1.
template <typename Set>
inline void AddTower(const Geometry<Set>& geometry, const TallyView<Set>& view, int space,
                     int owner, int height, bool life, bool free, int times, Tallies& tallies) {
    const Set reached = geometry.Reached[space][ReachRow(height)] & view.Occupied;
    const int sign = times * SignOf(owner);
    const int moves = Count(reached);
    int* tower = &tallies.Sums[TowerSums(free, life)];
    tower[TALLY_TOWERS] += sign;
    tower[TALLY_MOVES] += sign * moves;
    tower[TALLY_STONES] += sign * height;
    int* targets = &tallies.Sums[TargetSums(free)];
    targets[TALLY_TO_LIFE] += sign * Count(reached & view.Life);
    if (view.WithEnemies) {
        targets[TALLY_TO_ENEMY] += sign * Count(reached & view.Owned[OtherColor(owner)]);
    }
    tallies.Mobility += free ? times * moves : 0;
}

// Counts the tallies of the towers in `view` from nothing.
template <typename Set, typename Heights>
inline Tallies CountTallies(const Geometry<Set>& geometry, const TallyView<Set>& view,
                            const Heights& heights) {
    Tallies tallies;
    for (int owner = WHITE; owner <= BLACK; ++owner) {
        for (Set towers = view.Owned[owner]; towers != 0;) {
            const int space = TakeFirst(towers);
            AddTower(geometry, view, space, owner, heights[space], Has(view.Life, space),
                     !Has(view.Enclosed, space), 1, tallies);
        }
    }
    return tallies;
}

// Takes a tower out of the tallies of those that aim at it, who lose it as a target: it belongs to
// `owner` and does or does not hold life.
template <typename Set>
inline void LoseTarget(const SearchBoard<Set>& board, Set aimers, Set enclosed, int owner,
                       bool life, bool withEnemies, Tallies& tallies) {
    if (aimers == 0) {
        return;
    }
    for (const bool free : {false, true}) {
        const Set some = aimers & (free ? ~enclosed : enclosed);
        const Set white = some & board.Owned[WHITE];
        const Set black = some & board.Owned[BLACK];
        const int withLife = Count(white & board.Life) - Count(black & board.Life);
        const int plain = Count(white & ~board.Life) - Count(black & ~board.Life);
        tallies.Sums[TowerSums(free, false) + TALLY_MOVES] -= plain;
        tallies.Sums[TowerSums(free, true) + TALLY_MOVES] -= withLife;
        int* targets = &tallies.Sums[TargetSums(free)];
        targets[TALLY_TO_LIFE] -= life ? plain + withLife : 0;
        if (withEnemies) {
            targets[TALLY_TO_ENEMY] -= owner == WHITE ? -Count(black) : Count(white);
        }
    }
    tallies.Mobility -= Count(aimers & ~enclosed);
}

}  // namespace

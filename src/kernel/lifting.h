// From a position to its children: the tallies of the evaluation are carried over instead of being
// counted anew. A move is made in two steps, so that the moves of one tower share what they have in
// common: lifting the tower off the board (LiftTower), which decides what it leaves behind, and
// putting it down on a target (TalliesAfter). This is the search's innermost work.
#pragma once

#include <array>

#include "kernel/life_rule.h"
#include "kernel/search_board.h"
#include "kernel/tally_count.h"

namespace {

// The board without one tower of the side to move.
template <typename Set>
struct LiftedBoard {
    Set Occupied = 0;
    Set Life = 0;
    Set Enclosed = 0;
    // What dies wherever the tower goes; it is gone from the sets above and from the tallies.
    Set Dead = 0;
    // Groups that die unless the tower, which then holds a life stone, is put down on them.
    std::array<Set, 3> Doomed{};
    int NumDoomed = 0;
    Tallies Sums;
};

template <typename Set>
inline TallyView<Set> ViewOf(const LiftedBoard<Set>& lifted, const SearchBoard<Set>& board,
                             bool withEnemies) {
    return {withEnemies, lifted.Occupied, lifted.Life, lifted.Enclosed, board.Owned};
}

// Takes the lifted tower's share out of the tallies: its own, that of the towers that aimed at it,
// and the step from enclosed to free of the neighbours that it helped to enclose.
template <typename Set>
inline void LiftTallies(const Geometry<Set>& geometry, const SearchBoard<Set>& board, int space,
                        bool withEnemies, LiftedBoard<Set>& lifted) {
    Tallies& tallies = lifted.Sums;
    const int owner = board.ActivePlayer;
    const bool life = Has(board.Life, space);
    const TallyView<Set> before = ViewOf(board, withEnemies);
    AddTower(geometry, before, space, owner, board.Height[space], life, true, -1, tallies);

    LoseTarget(board, AimersAt(geometry, board, space), board.Enclosed, owner, life, withEnemies,
               tallies);

    // From here on the tallies no longer count the lifted tower as anybody's target.
    const TallyView<Set> after = ViewOf(lifted, board, withEnemies);
    for (Set freed = board.Enclosed & geometry.Neighbours(space); freed != 0;) {
        const int tower = TakeFirst(freed);
        for (int color = WHITE; color <= BLACK; ++color) {
            if (Has(board.Owned[color], tower)) {
                const bool towerLife = Has(board.Life, tower);
                AddTower(geometry, after, tower, color, board.Height[tower], towerLife, false, -1,
                         tallies);
                AddTower(geometry, after, tower, color, board.Height[tower], towerLife, true, 1,
                         tallies);
            }
        }
    }
}

// Takes the dead groups out of the sets and the tallies. They hold no life, and their neighbours
// are empty, so nobody's life or freedom changes; only the towers that aim at them from afar lose.
template <typename Set>
inline void BuryTallies(const Geometry<Set>& geometry, const SearchBoard<Set>& board,
                        bool withEnemies, LiftedBoard<Set>& lifted) {
    const TallyView<Set> view = ViewOf(lifted, board, withEnemies);
    const Set survivors = lifted.Occupied & ~lifted.Dead;
    for (Set dead = lifted.Dead & lifted.Occupied; dead != 0;) {
        const int space = TakeFirst(dead);
        const int owner = Has(board.Owned[WHITE], space) ? WHITE : BLACK;
        AddTower(geometry, view, space, owner, board.Height[space], false,
                 !Has(lifted.Enclosed, space), -1, lifted.Sums);
        LoseTarget(board, AimersAt(geometry, board, space) & survivors, lifted.Enclosed, owner,
                   false, withEnemies, lifted.Sums);
    }
    lifted.Occupied = survivors;
    lifted.Enclosed &= survivors;
}

// Lifts a free tower of the side to move off `board`, whose tallies are `parent`.
template <typename Set>
inline LiftedBoard<Set> LiftTower(const Geometry<Set>& geometry, const SearchBoard<Set>& board,
                                  const Tallies& parent, int space, bool withEnemies) {
    const Set rest = ~Bit<Set>(space);
    LiftedBoard<Set> lifted = {.Occupied = board.Occupied & rest,
                               .Life = board.Life & rest,
                               .Enclosed = board.Enclosed & ~geometry.Neighbours(space),
                               .Dead = 0,
                               .Doomed = {},
                               .NumDoomed = 0,
                               .Sums = parent};

    const RunStarts runs = FindRuns(geometry, lifted.Occupied, space);
    if (Has(board.Life, space)) {
        for (int i = 0; i < runs.Count; ++i) {
            Set group;
            if (!IsAlive(geometry, lifted.Occupied, lifted.Life, runs.Spaces[i], group)) {
                lifted.Doomed[lifted.NumDoomed++] = group;
            }
        }
    } else if (runs.Count >= 2) {
        lifted.Dead = KillBehindPlainTower(geometry, runs, lifted.Life, lifted.Occupied);
    }
    LiftTallies(geometry, board, space, withEnemies, lifted);
    if (lifted.Dead != 0) {
        BuryTallies(geometry, board, withEnemies, lifted);
    }
    return lifted;
}

// What dies when the lifted tower is put down on `target`.
template <typename Set>
inline Set DeadAfter(const LiftedBoard<Set>& lifted, int target) {
    Set dead = lifted.Dead;
    for (int i = 0; i < lifted.NumDoomed; ++i) {
        dead |= Has(lifted.Doomed[i], target) ? Set{0} : lifted.Doomed[i];
    }
    return dead;
}

// Changes the tallies of the towers that aim at the target of a move, which has gained life or a
// new owner, the mover.
template <typename Set>
inline void ChangeTarget(const Geometry<Set>& geometry, const SearchBoard<Set>& board,
                         const LiftedBoard<Set>& lifted, int target, bool gainsLife,
                         bool withEnemies, Tallies& tallies) {
    if (!gainsLife && !withEnemies) {
        return;
    }
    const int mover = board.ActivePlayer;
    const int other = OtherColor(mover);
    const bool ownTarget = Has(board.Owned[mover], target);
    const bool otherTarget = Has(board.Owned[other], target);
    const Set aimers = AimersAt(geometry, board, target) & lifted.Occupied;
    for (const bool free : {false, true}) {
        const Set some = aimers & (free ? ~lifted.Enclosed : lifted.Enclosed);
        const int own = Count(some & board.Owned[mover]);
        const int others = Count(some & board.Owned[other]);
        int* targets = &tallies.Sums[TargetSums(free)];
        targets[TALLY_TO_LIFE] += gainsLife ? SignOf(mover) * (own - others) : 0;
        if (withEnemies) {
            targets[TALLY_TO_ENEMY] += ownTarget ? 0 : SignOf(other) * others;
            targets[TALLY_TO_ENEMY] -= otherTarget ? SignOf(mover) * own : 0;
        }
    }
}

// The tallies behind the move of the lifted tower from `source` to `target`.
template <typename Set>
inline Tallies TalliesAfter(const Geometry<Set>& geometry, const SearchBoard<Set>& board,
                            const LiftedBoard<Set>& lifted, int source, int target,
                            bool withEnemies) {
    const Set dead = DeadAfter(lifted, target);
    if (dead != lifted.Dead) {
        const SearchBoard<Set> child = MakeChild(geometry, board, source, target, dead);
        return CountTallies(geometry, ViewOf(child, withEnemies), child.Height);
    }
    Tallies tallies = lifted.Sums;
    if (Has(dead, target)) {
        return tallies;
    }
    const int mover = board.ActivePlayer;
    const int stacked = board.Height[source] + board.Height[target];
    const bool free = !Has(lifted.Enclosed, target);
    const bool sourceLife = Has(board.Life, source);
    const bool targetLife = Has(board.Life, target);
    const TallyView<Set> view = ViewOf(lifted, board, withEnemies);
    const bool ownTarget = Has(board.Owned[mover], target);
    if (ownTarget || Has(board.Owned[OtherColor(mover)], target)) {
        AddTower(geometry, view, target, ownTarget ? mover : OtherColor(mover),
                 board.Height[target], targetLife, free, -1, tallies);
    }
    AddTower(geometry, view, target, mover, stacked, sourceLife || targetLife, free, 1, tallies);

    if (ownTarget && (targetLife || !sourceLife)) {
        return tallies;  // to those that aim at it, the target is what it was
    }
    ChangeTarget(geometry, board, lifted, target, sourceLife && !targetLife, withEnemies, tallies);
    return tallies;
}

}  // namespace

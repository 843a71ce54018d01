// Counting over the compact board what the evaluation weighs: the tallies, from nothing, and the
// worth of single towers.
#pragma once

#include "kernel/search_board.h"
#include "kernel/tallies.h"
#include "kernel/worth.h"

namespace {

// Counts the tallies of the whole board, without those of the targets that the other side owns when
// nobody asks for them. The sums of each kind of tower are first gathered in one
// word, each in a field with room for all that a board can hold.
template <typename Set>
inline Tallies CountTallies(const Geometry<Set>& geometry, const SearchBoard<Set>& board,
                            bool withEnemies) {
    constexpr int MOVES = 8;  // where the fields begin; that of the towers at 0
    constexpr int TO_LIFE = 18;
    constexpr int TO_ENEMY = 28;
    constexpr int STONES = 38;
    std::array<std::uint64_t, NUM_KINDS> sums{};
    for (int owner = WHITE; owner <= BLACK; ++owner) {
        const Set enemies = board.Owned[OtherColor(owner)];
        ForEachSpace(board.Owned[owner], [&](int space) {
            const int height = board.Height[space];
            const Set reached = geometry.Spots[space].Reached[ReachRow(height)] & board.Occupied;
            auto field = [](int count, int place) {
                return static_cast<std::uint64_t>(count) << place;
            };
            sums[board.Kind[space]] +=
                1 + field(Count(reached), MOVES) + field(Count(reached & board.Life), TO_LIFE) +
                (withEnemies ? field(Count(reached & enemies), TO_ENEMY) : 0) +
                field(height, STONES);
        });
    }
    Tallies tallies;
    for (int kind = 0; kind < LIFE * KIND_OWNER; ++kind) {
        auto field = [&](int place, int end) {
            return static_cast<int>(sums[kind] >> place &
                                    ((std::uint64_t{1} << (end - place)) - 1));
        };
        const bool free = (kind & KIND_FREE) != 0;
        const int sign = SignOf(OwnerOf(kind));
        int* towers = &tallies.Sums[TowerSums(free, (kind & KIND_LIFE) != 0)];
        towers[TALLY_TOWERS] += sign * field(0, MOVES);
        towers[TALLY_MOVES] += sign * field(MOVES, TO_LIFE);
        towers[TALLY_STONES] += sign * field(STONES, 64);
        int* targets = &tallies.Sums[TargetSums(free)];
        targets[TALLY_TO_LIFE] += sign * field(TO_LIFE, TO_ENEMY);
        targets[TALLY_TO_ENEMY] += sign * field(TO_ENEMY, STONES);
        tallies.Mobility += free ? field(MOVES, TO_LIFE) : 0;
    }
    return tallies;
}

// The stones of the towers of the side to move less those of the other side, behind the move of the
// tower on `source` to `target`, of which `dead` dies; as the other side sees it.
template <typename Set>
inline int StoneLeadBehind(const SearchBoard<Set>& board, int source, int target, Set dead) {
    const Set moved = Bit<Set>(source) | Bit<Set>(target);
    const int stack = board.Height[source] + board.Height[target];
    int lead = Has(dead, target) ? 0 : -stack;
    ForEachSpace(board.Owned[board.ActivePlayer] & ~(dead | moved),
                 [&](int space) { lead -= board.Height[space]; });
    ForEachSpace(board.Owned[OtherColor(board.ActivePlayer)] & ~(dead | moved),
                 [&](int space) { lead += board.Height[space]; });
    return lead;
}

// What the search keeps at hand: the tables of the board, and what towers are worth.
template <typename Set>
struct Context {
    const Geometry<Set>& Shape;
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
inline Worth PlainWorth(const Context<Set>& context, const TowerView<Set>& view, int space,
                        int height, const TowerWorth& worth) {
    const Set reached = context.Shape.Spots[space].Reached[ReachRow(height)] & view.Occupied;
    return worth.Tower + height * worth.Stone + Count(reached) * worth.Target +
           Count(reached & view.Life) * worth.LifeTarget;
}

// The same with those targets: `kind` tells whose tower it is. Nothing when it is a lone life
// stone.
template <typename Set>
inline Worth WorthOfTower(const Context<Set>& context, const SearchBoard<Set>& board,
                          const TowerView<Set>& view, int space, int kind, int height,
                          const TowerWorth& worth) {
    Worth sum = PlainWorth(context, view, space, height, worth);
    if (context.Worths.WithEnemies) {
        const Set reached = context.Shape.Spots[space].Reached[ReachRow(height)] & view.Occupied;
        const Set enemies = board.Owned[kind < BLACK * KIND_OWNER ? BLACK : WHITE];
        sum += Count(reached & enemies) * worth.EnemyTarget;
    }
    return sum;
}

template <typename Set>
inline Worth WorthOfTower(const Context<Set>& context, const SearchBoard<Set>& board,
                          const TowerView<Set>& view, int space, int kind, int height) {
    return WorthOfTower(context, board, view, space, kind, height, context.Worths.Towers[kind]);
}

// What is gained when the enclosed tower on a space becomes free.
template <typename Set>
inline Worth WorthOfFreedom(const Context<Set>& context, const SearchBoard<Set>& board,
                            const TowerView<Set>& view, int space) {
    const int kind = board.Kind[space];
    return WorthOfTower(context, board, view, space, kind, board.Height[space],
                        context.Worths.Freedoms[kind]);
}

// The worth of the whole board.
template <typename Set>
inline Worth WorthOfBoard(const Context<Set>& context, const SearchBoard<Set>& board) {
    Worth sum = 0;
    for (Set occupied = board.Occupied; occupied != 0;) {
        const int space = TakeFirst(occupied);
        sum += WorthOfTower(context, board, {board.Occupied, board.Life}, space, board.Kind[space],
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
inline Worth WorthOfTarget(const Context<Set>& context, const SearchBoard<Set>& board,
                           const TowerGroups<Set>& groups, Set aimers, int kind) {
    const auto& worths = context.Worths.Targets[kind];
    Worth sum = 0;
    for (int i = 0; i < 4; ++i) {
        sum += Count(aimers & groups[i]) * worths[i];
    }
    if ((aimers & board.Life) != 0) {
        for (int i = 0; i < 4; ++i) {
            sum += Count(aimers & groups[i] & board.Life) * context.Worths.LifeHolders[i];
        }
    }
    return sum;
}

}  // namespace

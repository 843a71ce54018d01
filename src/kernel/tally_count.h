// Counting over the compact board what the evaluation weighs: the tallies, from nothing, and the
// worth of single towers.
#pragma once

#include "kernel/search_board.h"
#include "kernel/tallies.h"
#include "kernel/worth.h"

namespace {

// Numbers in one word, added and subtracted as a whole. Each has a field with room for all that a
// board can hold, and begins in the middle of its range, so that it can go below as well.
struct TallyField {
    int Place;
    int End;

    [[nodiscard]] constexpr std::uint64_t Middle() const { return std::uint64_t{1} << (End - 1); }
    [[nodiscard]] int In(std::uint64_t word) const {
        const std::uint64_t shifted = word << (64 - End) >> (64 - End + Place);
        return static_cast<int>(shifted) - (1 << (End - Place - 1));
    }
};
inline constexpr TallyField TOWERS_FIELD = {0, 9};
inline constexpr TallyField MOVES_FIELD = {9, 20};
inline constexpr TallyField TO_LIFE_FIELD = {20, 31};
inline constexpr TallyField TO_ENEMY_FIELD = {31, 42};
inline constexpr TallyField STONES_FIELD = {42, 64};
inline constexpr std::uint64_t MIDDLE_OF_ALL = TOWERS_FIELD.Middle() + MOVES_FIELD.Middle() +
                                               TO_LIFE_FIELD.Middle() + TO_ENEMY_FIELD.Middle() +
                                               STONES_FIELD.Middle();
static_assert(MAX_BOARD_SPACES < 1 << 8 && NUM_DIRECTIONS * MAX_BOARD_SPACES < 1 << 10);

// Counts the tallies of the whole board, without those of the targets that the other side owns when
// nobody asks for them.
template <typename Set>
inline Tallies CountTallies(const Geometry<Set>& geometry, const SearchBoard<Set>& board,
                            bool withEnemies) {
    constexpr int FLAGS = KIND_FREE | KIND_LIFE;
    std::array<std::uint64_t, FLAGS + 1> leads;  // WHITE's sums less BLACK's, by flags
    leads.fill(MIDDLE_OF_ALL);
    Tallies tallies;
    for (int owner = WHITE; owner <= BLACK; ++owner) {
        const Set enemies = board.Owned[OtherColor(owner)];
        ForEachSpace(board.Owned[owner], [&](int space) {
            const int height = board.Height[space];
            const int kind = board.Kind[space];
            const Set reached = geometry.Spots[space].Reached[ReachRow(height)] & board.Occupied;
            const int targets = Count(reached);
            auto field = [](int count, const TallyField& to) {
                return static_cast<std::uint64_t>(count) << to.Place;
            };
            const std::uint64_t sums =
                field(1, TOWERS_FIELD) + field(targets, MOVES_FIELD) +
                field(Count(reached & board.Life), TO_LIFE_FIELD) +
                (withEnemies ? field(Count(reached & enemies), TO_ENEMY_FIELD) : 0) +
                field(height, STONES_FIELD);
            leads[kind & FLAGS] += owner == WHITE ? sums : -sums;
            tallies.Mobility += (kind & KIND_FREE) != 0 ? targets : 0;
        });
    }
    for (int flags = 0; flags <= FLAGS; ++flags) {
        const std::uint64_t lead = leads[flags];
        const bool free = (flags & KIND_FREE) != 0;
        int* towers = &tallies.Sums[TowerSums(free, (flags & KIND_LIFE) != 0)];
        towers[TALLY_TOWERS] = TOWERS_FIELD.In(lead);
        towers[TALLY_MOVES] = MOVES_FIELD.In(lead);
        towers[TALLY_STONES] = STONES_FIELD.In(lead);
        int* targets = &tallies.Sums[TargetSums(free)];
        targets[TALLY_TO_LIFE] += TO_LIFE_FIELD.In(lead);
        targets[TALLY_TO_ENEMY] += TO_ENEMY_FIELD.In(lead);
    }
    return tallies;
}

// The stones of WHITE's towers less those of BLACK's, behind the move of the tower on `source` to
// `target`, of which `dead` dies.
template <typename Set>
inline int StoneLeadBehind(const SearchBoard<Set>& board, int source, int target, Set dead) {
    const Set gone = Bit<Set>(source) | Bit<Set>(target) | dead;
    const int stack = board.Height[source] + board.Height[target];
    int lead = Has(dead, target) ? 0 : SignOf(board.ActivePlayer) * stack;
    ForEachSpace(board.Owned[WHITE] & ~gone, [&](int space) { lead += board.Height[space]; });
    ForEachSpace(board.Owned[BLACK] & ~gone, [&](int space) { lead -= board.Height[space]; });
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

// The worth of a position: a quick measure, in whole numbers, of what the evaluation says of it. It
// can be carried from a position to its children by adding and subtracting what a few towers
// contribute, in any order and without rounding, and it tells of most positions that their value
// need not be known: that it is above or below another one beyond doubt.
#pragma once

#include <array>
#include <cmath>
#include <cstdint>

#include "kernel/search_board.h"
#include "kernel/tallies.h"

namespace {

// The upper bits are the weighted sum from White's point of view, with weights rounded to whole
// numbers; the lower ones the number of move targets of the free towers of both sides, 0 of which
// end the game. Being a sum of both, such a number can be added and subtracted as a whole.
using Worth = std::int64_t;
inline constexpr int MOBILITY_BITS = 12;
static_assert(NUM_DIRECTIONS * MAX_BOARD_SPACES < 1 << MOBILITY_BITS);

// The upper bits by themselves, or a value in the same unit.
using Rank = std::int64_t;

inline constexpr Worth MOBILITY = (Worth{1} << MOBILITY_BITS) - 1;

inline bool CanMove(Worth worth) {
    return (worth & MOBILITY) != 0;
}

// The rank for the side that is not `player`: the one that has moved into the position.
inline Rank RankAgainst(Worth worth, int player) {
    return -SignOf(player) * (worth >> MOBILITY_BITS);
}

// What towers of one kind contribute.
struct TowerWorth {
    Worth Tower = 0;
    Worth Stone = 0;
    Worth Target = 0;       // each move target
    Worth LifeTarget = 0;   // and besides when it holds life
    Worth EnemyTarget = 0;  // and besides when the other side owns it
};

struct WorthTable {
    std::array<TowerWorth, NUM_KINDS> Towers{};  // a lone life stone contributes nothing
    // What enclosed towers of a kind gain when they become free.
    std::array<TowerWorth, NUM_KINDS> Freedoms{};
    // What a target contributes by the towers that aim at it, if they hold no life, by its owner
    // and whether it holds life: for WHITE's enclosed and free towers, then for BLACK's.
    using ByAimer = std::array<Worth, 4>;
    std::array<ByAimer, NUM_KINDS> Targets{};
    ByAimer LifeHolders{};     // how much more it is when they do
    bool WithEnemies = false;  // whether a target that the other side owns contributes at all
    // The flags of the lifted towers that change what others are worth when they are put down:
    // those with life; or all, when it matters who owns a target, and all that can be lifted are
    // free.
    int SpecialFlags = KIND_LIFE;
    double Scale = 1.0;  // a power of two: the rank of a value of 1
    // The rank of a position is nearer to its value, in units of rank, than this.
    Rank Margin = 0;

    // Of two positions whose ranks lie further apart than this, the values are in the same order.
    [[nodiscard]] Rank Doubt() const { return 2 * Margin; }

    // A rank for a value, nearer to it than the margin. Values far beyond all weighted sums may
    // share one.
    [[nodiscard]] Rank RankOf(double value) const {
        constexpr double HIGHEST = 0x1p60;
        const double scaled = value * Scale;
        return scaled >= HIGHEST    ? static_cast<Rank>(HIGHEST)
               : scaled <= -HIGHEST ? -static_cast<Rank>(HIGHEST)
                                    : static_cast<Rank>(scaled);
    }
};

// The largest weight becomes a whole number of this many bits. With it, 15 bits for the sum of all
// tallies (19 a space, and all stones, of which heights as bytes let no space have more than 255),
// and those of the mobility, a worth has room in 64.
inline constexpr int WEIGHT_BITS = 32;

// The nearest whole number, or the next one where two are nearly as near: off by half a unit and
// 2^-20 of one at most. The library's functions take longer than a short search can spare.
inline Worth RoundedWeight(double scaled) {
    return static_cast<Worth>(scaled < 0.0 ? scaled - 0.5 : scaled + 0.5);
}

// Fills what a table says of single towers, in terms of the weights.
inline void FillTowerWorths(const TallyWeights& weights, WorthTable& table) {
    for (int owner = WHITE; owner <= BLACK; ++owner) {
        auto worthOf = [&](int tally) {
            return SignOf(owner) * (RoundedWeight(weights[tally] * table.Scale) << MOBILITY_BITS);
        };
        for (const bool free : {false, true}) {
            for (const bool life : {false, true}) {
                const int tower = TowerSums(free, life);
                const int targets = TargetSums(free);
                const int kind = KindOf(owner, free, life);
                table.Towers[kind] = {.Tower = worthOf(tower + TALLY_TOWERS),
                                      .Stone = worthOf(tower + TALLY_STONES),
                                      .Target = worthOf(tower + TALLY_MOVES) + (free ? 1 : 0),
                                      .LifeTarget = worthOf(targets + TALLY_TO_LIFE),
                                      .EnemyTarget = worthOf(targets + TALLY_TO_ENEMY)};
            }
        }
    }
}

// The difference between free and enclosed towers.
inline void FillFreedoms(WorthTable& table) {
    for (int kind = 0; kind < NUM_KINDS; ++kind) {
        const TowerWorth& free = table.Towers[kind | KIND_FREE];
        const TowerWorth& now = table.Towers[kind];
        table.Freedoms[kind] = {.Tower = free.Tower - now.Tower,
                                .Stone = free.Stone - now.Stone,
                                .Target = free.Target - now.Target,
                                .LifeTarget = free.LifeTarget - now.LifeTarget,
                                .EnemyTarget = free.EnemyTarget - now.EnemyTarget};
    }
}

// The same seen from the targets.
inline void FillTargetWorths(WorthTable& table) {
    for (int i = 0; i < 4; ++i) {
        const int owner = i / 2;
        const int lifeless = KindOf(owner, i % 2 != 0, false);
        const TowerWorth& worth = table.Towers[lifeless];
        table.LifeHolders[i] = table.Towers[lifeless | KIND_LIFE].Target - worth.Target;
        for (int kind = 0; kind < NUM_KINDS; ++kind) {
            table.Targets[kind][i] = worth.Target +
                                     ((kind & KIND_LIFE) != 0 ? worth.LifeTarget : 0) +
                                     (OwnerOf(kind) == OtherColor(owner) ? worth.EnemyTarget : 0);
        }
    }
}

// The table for a search of a board with this many spaces and stones.
//
// The margin: each weight is off by half a unit after rounding, and 2^-20 of one at most, and the
// tallies that they are multiplied with add up to 19 a space (one tower, and six targets that count
// three times) and all stones: to less than 2^15. The true value is itself off the weighted sum by
// its own roundings, 32 of at most 2^-53 of 2^15 times the largest weight each. Besides the halves
// that is less than one unit each; halving the sum cuts off half a unit, and RankOf less than one.
inline WorthTable MakeWorthTable(const TallyWeights& weights, int spaces, int stones) {
    double highest = 0.0;
    for (const double weight : weights) {
        highest = std::fmax(highest, std::fabs(weight));
    }
    WorthTable table;
    constexpr int LARGEST_SHIFT = 1000;  // the scale itself must not overflow
    const int shift = highest == 0.0 ? 0 : WEIGHT_BITS - 1 - std::ilogb(highest);
    table.Scale = std::ldexp(1.0, shift < LARGEST_SHIFT ? shift : LARGEST_SHIFT);
    table.Margin = (19 * spaces + stones) / 2 + 4;
    table.WithEnemies = weights[TargetSums(false) + TALLY_TO_ENEMY] != 0.0 ||
                        weights[TargetSums(true) + TALLY_TO_ENEMY] != 0.0;
    table.SpecialFlags = KIND_LIFE | (table.WithEnemies ? KIND_FREE : 0);
    FillTowerWorths(weights, table);
    FillFreedoms(table);
    FillTargetWorths(table);
    return table;
}

}  // namespace

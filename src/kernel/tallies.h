// The sums over the board that the evaluation weighs, and their weighted sum.
#pragma once

#include <array>

#include "kernel/weights.h"
#include "rules/position.h"

namespace {

// The white-minus-black sums that the evaluation weighs, in the order in which it adds them up: for
// enclosed towers (0 to 7), then for free ones (8 to 15), first those without and then those with a
// life stone: towers, move targets, stones; and last the targets that hold life and those that the
// other side owns.
struct Tallies {
    std::array<int, 16> Sums{};
    int Mobility = 0;  // move targets of the free towers of both sides together; 0 ends the game

    bool operator==(const Tallies&) const = default;
};
inline constexpr int NUM_TALLIES = 16;
inline constexpr int TALLY_TOWERS = 0;
inline constexpr int TALLY_MOVES = 1;
inline constexpr int TALLY_STONES = 2;
inline constexpr int TALLY_TO_LIFE = 6;
inline constexpr int TALLY_TO_ENEMY = 7;

// Where the sums of towers with these flags begin: TALLY_TOWERS, _MOVES and _STONES follow.
inline int TowerSums(bool free, bool life) {
    return (free ? 8 : 0) + (life ? 3 : 0);
}
// Where the sums of the targets begin that share a free flag: TALLY_TO_LIFE and _TO_ENEMY follow.
inline int TargetSums(bool free) {
    return free ? 8 : 0;
}

// +1 for WHITE, -1 for BLACK: tallies are sums from White's point of view.
inline int SignOf(int color) {
    return 1 - 2 * color;
}

// The weights in the order of the tallies.
using TallyWeights = std::array<double, NUM_TALLIES>;

inline TallyWeights OrderWeights(const EvalWeights& weights) {
    TallyWeights ordered{};
    for (int f = 0; f < 2; ++f) {
        for (int l = 0; l < 2; ++l) {
            double* tower = &ordered[TowerSums(f != 0, l != 0)];
            tower[TALLY_TOWERS] = weights.Towers[f][l];
            tower[TALLY_MOVES] = weights.Moves[f][l];
            tower[TALLY_STONES] = weights.Score[f][l];
        }
        ordered[TargetSums(f != 0) + TALLY_TO_LIFE] = weights.MovesToLife[f];
        ordered[TargetSums(f != 0) + TALLY_TO_ENEMY] = weights.MovesToEnemy[f];
    }
    return ordered;
}

// The weighted sum from White's point of view, without the random term. Every term is one rounded
// product and one rounded addition, in the order of the tallies: the sum is the same to the last
// bit everywhere.
inline double WeightedSum(const Tallies& tallies, const TallyWeights& weights) {
    double sum = 0.0;
    for (int i = 0; i < NUM_TALLIES; ++i) {
        sum += tallies.Sums[i] * weights[i];
    }
    return sum;
}

// The stones of WHITE's towers less those of BLACK's.
inline int StoneLeadOf(const Tallies& tallies) {
    int stones = 0;
    for (const bool free : {false, true}) {
        for (const bool life : {false, true}) {
            stones += tallies.Sums[TowerSums(free, life) + TALLY_STONES];
        }
    }
    return stones;
}

// The value of an end position from White's point of view: 1000 for each stone of difference.
inline double FinalValue(int stoneLead) {
    return 1000.0 * stoneLead;
}

// A value from White's point of view, seen from `player`.
inline double ValueFor(int player, double value) {
    return player == BLACK ? -value : value;
}

}  // namespace

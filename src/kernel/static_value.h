// The exact value of single positions, to the last bit and with the draw that belongs to it, and
// the count of them. The search asks for it only where the worth leaves a doubt.
#pragma once

#include <cstdint>

#include "kernel/each_move.h"
#include "kernel/tally_count.h"
#include "support/random.h"

namespace {

template <typename Set>
struct Evaluator {
    BoardTables<Set> Tables;
    TallyWeights Weights;
    double RandomWeight;
    RandomGenerator Chance;  // a copy of its own: the caller skips what was drawn from it
    std::int64_t NumEvaluations = 0;

    // With a random term every evaluation has a draw of its own, and no value is what it was
    // before.
    [[nodiscard]] bool HasChance() const { return RandomWeight != 0.0; }
};

// The static value of a position for its side to move. With chance at work this draws, and so must
// be asked for every evaluation once, when it is counted.
template <typename Set>
inline double StaticValue(Evaluator<Set>& evaluator, const SearchBoard<Set>& board) {
    const double randomTerm =
        evaluator.HasChance() ? evaluator.RandomWeight * RandomReal(evaluator.Chance) : 0.0;
    const Tallies tallies =
        CountTallies(evaluator.Tables.Shape, board, evaluator.Tables.Worths.WithEnemies);
    return ValueFor(board.ActivePlayer, WeightedSum(tallies, evaluator.Weights) + randomTerm);
}

// The same of the position behind a move, of which `dead` dies; `isEnd` when nobody can move there.
template <typename Set>
[[gnu::noinline]] double StaticValueBehind(Evaluator<Set>& evaluator, const SearchBoard<Set>& board,
                                           const Step& step, Set dead, bool isEnd) {
    if (!isEnd) {
        return StaticValue(
            evaluator, MakeChild(evaluator.Tables.Shape, board, step.Source, step.Target, dead));
    }
    if (evaluator.HasChance()) {
        SkipRandom(evaluator.Chance, 1);
    }
    const int lead = StoneLeadBehind(board, step.Source, step.Target, dead);
    return ValueFor(OtherColor(board.ActivePlayer), FinalValue(lead));
}

}  // namespace

#include "engine/evaluation.h"

#include "kernel/tally_count.h"
#include "support/numbers.h"
#include "support/random.h"

int EvalCount = 0;

namespace {

template <typename Set>
Tallies TalliesOf(const Position& position) {
    const BoardShape<Set>& shape = CurrentShape<Set>();
    const SearchBoard<Set> board = ToSearchBoard(shape, position);
    return CountTallies(shape, board, true);
}

}  // namespace

int EvaluatePosition(Position& position, const EvalWeights& weights) {
    const Tallies tallies =
        IsSmallBoard() ? TalliesOf<SmallSet>(position) : TalliesOf<LargeSet>(position);
    const double randomTerm = weights.Random * RandomReal();
    position.EndPosition = tallies.Mobility == 0 ? 1 : 0;
    const double value = position.EndPosition == 1
                             ? FinalValue(StoneLeadOf(tallies))
                             : WeightedSum(tallies, OrderWeights(weights)) + randomTerm;
    position.Value = ValueFor(position.ActivePlayer, value);
    CountEvaluations(1);
    return position.EndPosition;
}

void AccountFor(const Thought& thought) {
    EvalCount = 0;
    CountEvaluations(thought.Search.NumEvaluations);
    SkipRandom(thought.NumDraws);
}

void CountEvaluations(std::int64_t number) {
    const std::int64_t sum = EvalCount + number;
    EvalCount = static_cast<int>(sum < INT_HIGHEST ? sum : INT_HIGHEST);
}

// The search of a node whose children are leaves: most of a search is here. The children are judged
// one by one, by their worth as long as that leaves no doubt.
#pragma once

#include <limits>

#include "kernel/best_so_far.h"
#include "kernel/static_value.h"

namespace {

// The best of the leaves of a node so far. While others are surely worse, its value need not be
// known, only where it lies; so it is worked out when somebody asks.
template <typename Set>
struct BestLeaf {
    BestSoFar Best;
    Set Dead = 0;  // what dies by its move
    bool HasValue = true;
    Rank Low = 0;   // its value lies from here
    Rank High = 0;  // to here

    // Takes in a leaf that is surely the best so far, whose value is nearer to `rank` than the
    // margin.
    void TakeRoughly(Rank rank, Rank margin, const Step& step, Set dead) {
        Best.Choice = step;
        Dead = dead;
        HasValue = false;
        Low = rank - margin;
        High = rank + margin;
    }

    // Notes where the value lies, from the value itself.
    void Locate(const WorthTable& worths) {
        Low = worths.RankOf(Best.Value) - 1;
        High = Low + 2;
    }
};

// Works the value of the best leaf out.
template <typename Set>
inline void SettleLeaf(Evaluator<Set>& evaluator, const SearchBoard<Set>& board,
                       BestLeaf<Set>& leaf) {
    if (!leaf.HasValue) {
        leaf.Best.Value = -StaticValueBehind(evaluator, board, leaf.Best.Choice, leaf.Dead, false);
        leaf.HasValue = true;
    }
}

// Takes in a leaf by its exact value. Answers false when it reaches the bound.
template <typename Set>
[[gnu::noinline]] bool TakeExactly(Evaluator<Set>& evaluator, const SearchBoard<Set>& board,
                                   const Step& step, Set dead, bool isEnd, double bound,
                                   BestLeaf<Set>& leaf) {
    SettleLeaf(evaluator, board, leaf);
    const double value = -StaticValueBehind(evaluator, board, step, dead, isEnd);
    const bool goesOn = leaf.Best.Take(value, step, bound);
    leaf.Locate(evaluator.Tables.Worths);
    return goesOn;
}

// For SearchLeaves: the value of the node is wanted, whatever it is.
inline constexpr double NEVER_ENOUGH = std::numeric_limits<double>::infinity();

// Searches the leaves of a node, up to the first that reaches `bound`. `isExact` is cleared unless
// all of them are end positions.
//
// The side that moved into the node has the negated value of the best leaf. Where that is above
// `enough`, the bound of the node above, its move is cut off, and by how much does not matter: then
// the value that is answered may be lower than the true one, as long as it is above `enough` too.
template <typename Set>
BestSoFar SearchLeaves(Evaluator<Set>& evaluator, const SearchBoard<Set>& board, Worth worth,
                       double bound, double enough, bool& isExact) {
    const WorthTable& worths = evaluator.Tables.Worths;
    BestLeaf<Set> leaf;
    leaf.Locate(worths);
    const Rank margin = worths.Margin;
    const Rank boundRank = worths.RankOf(bound);
    const int opponent = OtherColor(board.ActivePlayer);
    const bool hasChance = evaluator.HasChance();
    int numLeaves = 0;
    bool allEnd = true;
    ForEachMove(evaluator.Tables, board, worth, [&](const Landing<Set>& landing, const Step& step) {
        ++numLeaves;
        const bool isEnd = !CanMove(landing.WorthBehind);
        if (!isEnd && !hasChance) {
            allEnd = false;
            const Rank rank = RankAgainst(landing.WorthBehind, opponent);
            if (rank + margin <= leaf.Low) {
                return true;  // no better than the best
            }
            if (rank - margin >= boundRank) {
                leaf.Best.IsCutOff = true;
                return false;
            }
            if (rank - margin > leaf.High && rank + margin < boundRank) {
                leaf.TakeRoughly(rank, margin, step, landing.Dead);
                return true;
            }
        }
        allEnd = allEnd && isEnd;
        return TakeExactly(evaluator, board, step, landing.Dead, isEnd, bound, leaf);
    });
    leaf.Best.HasMove = numLeaves > 0;
    evaluator.NumEvaluations += numLeaves;
    isExact = isExact && allEnd;
    if (leaf.Best.IsCutOff) {
        return leaf.Best;
    }
    if (!leaf.HasValue && -leaf.High > worths.RankOf(enough)) {
        leaf.Best.Value = static_cast<double>(leaf.High) / worths.Scale;
        return leaf.Best;
    }
    SettleLeaf(evaluator, board, leaf);
    return leaf.Best;
}

}  // namespace

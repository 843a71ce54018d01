// A plain model of the evaluation and of the search, written for clarity: it copies whole Positions
// and scans the board. The fast engine is held to it, bit by bit, and measured against it.
#pragma once

#include <cstdint>
#include <span>
#include <vector>

#include "kernel/weights.h"
#include "rules/moves.h"
#include "rules/position.h"

namespace plain {

extern std::int64_t EvalCount;  // evaluations since it was last set to 0

// The white-minus-black sums that the evaluation weighs, indexed [free][life] or [free].
struct Tallies {
    int Towers[2][2] = {};
    int Moves[2][2] = {};
    int Score[2][2] = {};
    int MovesToLife[2] = {};
    int MovesToEnemy[2] = {};
    bool CanMove = false;  // a tower of either side can move

    bool operator==(const Tallies&) const = default;
};
Tallies CountTallies(const Position& position);

// As the function of the engine, with a count and draws of its own.
int EvaluatePosition(Position& position, const EvalWeights& weights);

// A permutation of the children's indices: the five with the lowest values first, in ascending
// order; the others behind them.
std::vector<int> SortPositions(std::span<const Position> children);

// Searches a position with at least one move. Answers the negation of the best value.
double GetBestMove(Position& position, int depth, const EvalWeights& weights, Move& bestMove,
                   int& exactFlag);

}  // namespace plain

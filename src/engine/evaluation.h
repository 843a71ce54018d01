// The static evaluation of a position of the move phase.
#pragma once

#include <cstdint>

#include "engine/thinking.h"
#include "kernel/weights.h"
#include "rules/position.h"

// Evaluations counted since it was last set to 0: the cost of a search. Stops at INT_HIGHEST.
extern int EvalCount;

// Adds to EvalCount.
void CountEvaluations(std::int64_t number);

// Does in the process what a thought of the game comes to: EvalCount becomes what the search that
// stands has cost, and the random numbers are drawn that its searches stand for.
void AccountFor(const Thought& thought);

// Writes `Value`, seen from the side to move, and `EndPosition` into `position`, counts one
// evaluation and draws one random number. Answers the new `EndPosition`: 1 when no tower of either
// side can move; the value is then 1000 times the stone difference, whatever the weights are.
int EvaluatePosition(Position& position, const EvalWeights& weights);

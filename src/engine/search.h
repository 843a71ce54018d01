// The game-tree search: a negamax of fixed depth with a single bound.
#pragma once

#include "engine/weights.h"
#include "rules/moves.h"
#include "rules/position.h"

// The best value of a node before its first move, and the value of a node that was cut off.
inline constexpr double LOW_INIT_VALUE = -999999999.0;
// The open bound: no value reaches it, with weights of any sense.
inline constexpr double HIGH_INIT_VALUE = 999999999.0;

// Searches `position`, whose side to move must have a move, `depth` plies deeper than its children
// (0 to MAX_SEARCH_DEPTH; 0 judges the children by their static values). Writes the best move into
// `bestMove` (all but its Kind). `exactFlag`, which may be the position's own `ExactValue`, becomes
// 1 when every line ended in an end position, else 0. A search of depth 1 or more also writes the
// position's `Value` and `ExactValue`. Adds the evaluations to EvalCount and draws one random
// number for each. Returns the value of the position for the side that moved into it: the negation
// of the best value that the side to move can reach. A position without a move ends the process.
double GetBestMove(Position& position, int depth, const EvalWeights& weights, Move& bestMove,
                   int& exactFlag);

// Fills `order` with a permutation of the indices 0 to count - 1: first the (up to) five with the
// lowest values, in ascending order, equal ones in the order of their indices; then the others.
void SortPositions(int count, const double* values, int* order);

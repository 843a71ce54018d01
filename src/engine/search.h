// The game-tree search: a negamax of fixed depth with a single bound.
#pragma once

#include "kernel/weights.h"
#include "rules/moves.h"
#include "rules/position.h"

// Searches `position`, whose side to move must have a move, `depth` plies deeper than its children
// (0 to MAX_SEARCH_DEPTH; 0 judges the children by their static values). Writes the best move into
// `bestMove` (all but its Kind). `exactFlag`, which may be the position's own `ExactValue`, becomes
// 1 when every line ended in an end position, else 0. A search of depth 1 or more also writes the
// position's `Value` and `ExactValue`. Adds the evaluations to EvalCount and draws one random
// number for each. Returns the value of the position for the side that moved into it: the negation
// of the best value that the side to move can reach. A position without a move ends the process.
double GetBestMove(Position& position, int depth, const EvalWeights& weights, Move& bestMove,
                   int& exactFlag);

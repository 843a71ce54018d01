// The game-tree search: a negamax of fixed depth with a single bound.
#pragma once

#include "kernel/search_kernel.h"
#include "kernel/weights.h"
#include "rules/moves.h"
#include "rules/position.h"

struct SearchResult {
    double Value = 0.0;       // of the position, for the side that moved into it
    bool IsExact = false;     // every line ended in an end position
    bool WasStopped = false;  // the stop flag ended the search
    // False when the search was stopped before it had finished a move, and when a value reached the
    // open bound in a search of depth 0.
    bool HasMove = false;
    Move BestMove;
};

// Searches `position`, whose side to move must have a move, `depth` plies deeper than its children
// (0 to MAX_SEARCH_DEPTH; 0 judges the children by their static values). A search of depth 1 or
// more also writes the position's `Value` and `ExactValue`. Adds the evaluations to EvalCount and
// draws one random number for each. The value is the negation of the best one that the side to move
// can reach. A position without a move ends the process.
//
// A search that `watch` stops answers with the best of the moves that it has finished, as if there
// were no others, and never calls that exact. Without a finished move it leaves the position alone.
SearchResult SearchPosition(Position& position, int depth, const EvalWeights& weights,
                            const SearchWatch* watch);

// The same for those who do not watch. Writes the best move into `bestMove` and into `exactFlag`,
// which may be the position's own `ExactValue`, whether the value is exact: 1 or 0. Returns the
// value.
double GetBestMove(Position& position, int depth, const EvalWeights& weights, Move& bestMove,
                   int& exactFlag);

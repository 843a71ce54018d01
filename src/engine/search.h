// The game-tree search: a negamax of fixed depth with a single bound.
#pragma once

#include <cstdint>

#include "kernel/search_kernel.h"
#include "kernel/weights.h"
#include "rules/moves.h"
#include "rules/position.h"

struct SearchResult {
    double Value = 0.0;       // of the position, for the side that moved into it
    double BestValue = 0.0;   // the best that the side to move can reach
    bool IsExact = false;     // every line ended in an end position
    bool WasStopped = false;  // the stop flag ended the search
    // False when the search was stopped before it had finished a move, and when a value reached the
    // open bound in a search of depth 0.
    bool HasMove = false;
    Move BestMove;
    std::int64_t NumEvaluations = 0;  // and of random numbers that the caller has to skip

    // The value that reached the open bound above depth 0, which only weights beyond all reason
    // bring about, and the number of moves there were.
    bool WasCutOff = false;
    double CutValue = 0.0;
    int NumMoves = 0;
};

// Searches `position`, whose side to move must have a move, `depth` plies deeper than its children
// (0 to MAX_SEARCH_DEPTH; 0 judges the children by their static values). The value is the negation
// of the best one that the side to move can reach. Draws no random number of the process, writes
// nothing and prints nothing. A position without a move ends the program.
//
// A search that `watch` stops answers with the best of the moves that it has finished, as if there
// were no others, and never calls that exact.
SearchResult SearchPosition(const Position& position, int depth, const EvalWeights& weights,
                            const SearchWatch* watch);

// The same as the game makes it: adds the evaluations to EvalCount, draws a random number for each,
// and writes the value into the position when the depth is 1 or more. Writes the best move into
// `bestMove` and into `exactFlag`, which may be the position's own `ExactValue`, whether the value
// is exact: 1 or 0. Returns the value.
double GetBestMove(Position& position, int depth, const EvalWeights& weights, Move& bestMove,
                   int& exactFlag);

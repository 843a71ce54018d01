// One whole search on the compact board. The rules of moving and of life that it follows are those
// of rules/moves.cpp, and the values and counts those of the plain engine in tests/plain; the tests
// hold it to both.
//
// To understand the machinery, read first what a board is: bit_set.h (sets of spaces),
// board_shape.h (who reaches whom), search_board.h (the compact board) and life_rule.h (who dies).
// Then what it is worth: weights.h and tallies.h (what the evaluation weighs), tally_count.h
// (counting it), worth.h (the same in whole numbers), worth_count.h (counting that) and lifting.h
// (from a board to its children). Then the search: each_move.h (the moves), static_value.h (exact
// values), bounds.h and best_so_far.h (when a node is done with), leaves.h, move_order.h and
// children.h (what to try first), search_kernel.cpp, where all is put together, and search_table.h
// (positions met again).
#pragma once

#include <atomic>
#include <cstdint>

#include "kernel/weights.h"
#include "rules/moves.h"
#include "rules/position.h"

// The deepest search: 0 is one ply, 20 are 21 plies.
inline constexpr int MAX_SEARCH_DEPTH = 20;

struct KernelResult {
    double Value = 0.0;      // the value of the position for the side that moved into it
    double BestValue = 0.0;  // the best value for the side to move
    double CutValue = 0.0;   // the value that reached the open bound, when WasCutOff above depth 0
    bool WasCutOff = false;
    bool HasMove = false;        // false: the side to move has none, and nothing was searched
    bool IsOutOfMemory = false;  // nothing was searched
    bool WasStopped = false;     // see SearchWatch; HasMove then tells of a move that was finished
    Move BestMove;               // means nothing unless BestValue is above LOW_INIT_VALUE
    int NumMoves = 0;            // moves of the position; 0 when they were not counted
    bool IsExact = false;        // every line ended in an end position
    // Counted evaluations. Each stands for one random number, which the caller has to skip; the
    // search draws those that it needs from a copy of the process-wide generator.
    std::int64_t NumEvaluations = 0;
};

// How far a search has come.
struct SearchProgress {
    int NumFinished = 0;  // moves of the position that are done with, of NumMoves
    int NumMoves = 0;
    std::int64_t NumEvaluations = 0;
    bool HasMove = false;  // a move is finished: BestMove is the best one so far
    Move BestMove;
    double BestValue = 0.0;  // for the side to move
};

// What somebody who waits for a search can do. The flag is looked at, and progress told, where the
// search enters a node above the leaves: on the largest board that is every few milliseconds, else
// far more often.
struct SearchWatch {
    // Not 0: the search ends at once, with the best of the moves that it has finished. What it
    // counted and drew stays counted and drawn, and later searches find what they would have found
    // anyway. A search of depth 0 is over before one could look. A signal handler may set the flag.
    const std::atomic<int>& StopFlag;
    // Called now and then, unless it is null. It should look at the clock before it does more.
    void (*Report)(void* context, const SearchProgress& progress) = nullptr;
    void* Context = nullptr;
};
static_assert(std::atomic<int>::is_always_lock_free);

// The search is compiled twice on processors of the x86-64 family: once for all of them, and once
// for those with an instruction that counts the bits of a word. The caller chooses when the program
// runs, so one binary is safe everywhere. `watch` is null when nobody watches.
namespace GenericKernel {
KernelResult SearchPosition(const Position& position, int depth, const EvalWeights& weights,
                            const SearchWatch* watch);
}
namespace PopCountKernel {
KernelResult SearchPosition(const Position& position, int depth, const EvalWeights& weights,
                            const SearchWatch* watch);
}

// How long the computer thinks about a move: searches that go deeper and deeper within a budget,
// and can be hurried.
#pragma once

#include <atomic>
#include <chrono>

#include "kernel/search_kernel.h"
#include "kernel/weights.h"
#include "rules/moves.h"
#include "rules/position.h"

// How much is to be thought.
struct SearchEffort {
    int Depth = 0;   // of the first search, 0 to MAX_SEARCH_DEPTH
    int Budget = 0;  // goes one ply deeper as long as the last search cost less; see SearchBudget
};

// What the search that stands has found.
struct Thought {
    double Value = 0.0;  // of the position, for the side that moved into it
    Move BestMove;
    int Depth = 0;           // of that search; its cost is in EvalCount
    bool IsExact = false;    // every line ended in an end position
    bool IsFinished = true;  // false: not even the first search came to its end
};

struct ThoughtProgress {
    const Position& Board;
    const Thought* Standing;
    int Depth;
    std::chrono::steady_clock::time_point Began;
    const SearchProgress& Search;
    bool IsOver;
};
struct ThoughtWatch {
    const std::atomic<int>& StopFlag;
    void (*Report)(void* context, const ThoughtProgress& progress) = nullptr;
    void* Context = nullptr;
};

// Thinks about `position`, whose side to move must have a move; searches write its `Value` and
// `ExactValue`. A thought that is hurried stands where its deepest finished search stands. When
// the first one was not finished either, the best of the moves that it had got through stands, and
// when there was none, a search of depth 0. On a terminal the progress of a long thought is shown.
Thought Think(Position& position, const SearchEffort& effort, const EvalWeights& weights,
              const ThoughtWatch* watch);

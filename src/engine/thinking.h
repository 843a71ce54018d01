// How long the computer thinks about a move: searches that go deeper and deeper within a budget,
// and can be ended early. Thinking changes nothing: not the position, not the random generator, not
// EvalCount.
#pragma once

#include <atomic>
#include <chrono>
#include <cstdint>

#include "engine/search.h"
#include "kernel/weights.h"
#include "rules/position.h"

// How much is to be thought.
struct SearchEffort {
    int Depth = 0;   // of the first search, 0 to MAX_SEARCH_DEPTH
    int Budget = 0;  // goes one ply deeper as long as the last search cost less; see SearchBudget
};

// What a thought has come to.
struct Thought {
    SearchResult Search;        // the one that stands
    int Depth = 0;              // of that search
    bool IsFinished = true;     // false: not even the first search came to its end
    std::int64_t NumDraws = 0;  // random numbers to be skipped, for all searches
};

// How far a thought has come, for somebody who waits for it.
struct ThoughtProgress {
    const Position& Board;
    const Thought* Standing;                      // what it would come to now; null: nothing yet
    int Depth;                                    // of the search under way
    std::chrono::steady_clock::time_point Began;  // the thought
    const SearchProgress& Search;
    bool IsOver;  // the search has ended: what was shown of it is to be taken away
};

// Who waits for a thought: may end it, and is told how it gets on.
struct ThoughtWatch {
    const std::atomic<int>& StopFlag;  // not 0: the thought ends within milliseconds
    void (*Report)(void* context, const ThoughtProgress& progress) = nullptr;  // null: nobody asks
    void* Context = nullptr;
};

// Thinks about `position`, whose side to move must have a move. A thought that is ended early
// stands where its deepest finished search stands. When the first one was not finished either, the
// best of the moves that it had got through stands, and when there was none, a search of depth 0.
// `watch` is null when nobody waits.
[[nodiscard]] Thought Think(const Position& position, const SearchEffort& effort,
                            const EvalWeights& weights, const ThoughtWatch* watch);

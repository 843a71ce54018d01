// The computer against itself: matches that compare two sets of weights, and the search for better
// ones. Every line is flushed as it is printed, so that a run can be watched through a pipe and
// interrupted at any time.
#pragma once

#include <array>

#include "kernel/weights.h"

// The two players of a match.
using ABWeightPair = std::array<EvalWeights, 2>;

// The match mode: one match of 100 games between the two built-in sets.
void PlayMatch();

// The tuning mode: never ends by itself.
[[noreturn]] void TuneWeights();

// How a series of games stands, as player 1 sees it.
struct MatchResult {
    int TotalScore = 0;   // final stone leads
    int MatchPoints = 0;  // half points: 2 for a win, 1 for a draw

    bool operator==(const MatchResult&) const = default;
};

// Plays `numPairs` pairs of games, in each of which both players begin once, with searches of the
// given depth.
MatchResult PlayGames(const ABWeightPair& players, int numPairs, int depth);

// The same with one line about the result.
void AutoBattle(const ABWeightPair& players, int numPairs, int depth);

// Looks for better weights than `start`, from generation to generation: the best set so far is
// mutated, and the candidate takes its place when it wins a match of up to `numPairs` pairs
// outright. A match ends early, behind a pair, once the best set's points, whole ones, exceed the
// number of games that each side began by more than `margin`.
[[noreturn]] void AutoOptimize(const EvalWeights& start, int numPairs, int margin, int depth);

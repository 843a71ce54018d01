// What the evaluate command tells of a position.
#pragma once

#include <string>

#include "engine/thinking.h"
#include "rules/position.h"

// How far a report searches: to a fixed depth (0 to MAX_SEARCH_DEPTH) at full strength, or with the
// weights and the budget of a playing level.
enum class ReportMode { Level, Depth };

struct EvaluationReport {
    Thought Found;         // IsFinished is false when it was ended early
    double Value = 0.0;    // for the side to move; when it is exact, the final stone difference
    std::string BestMove;  // as it is written; "PASS" when the side to move has none
};

// Searches `position`, of the move phase and no end position, for its side to move. Draws random
// numbers like any search of the game, and EvalCount becomes what the search that stands has cost.
[[nodiscard]] EvaluationReport ReportOn(const Position& position, ReportMode mode, int number,
                                        const ThoughtWatch* watch);

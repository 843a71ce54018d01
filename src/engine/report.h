// The answer to the evaluate command.
#pragma once

#include "rules/position.h"

// How far a report searches: to a fixed depth (0 to MAX_SEARCH_DEPTH) at full strength, or with the
// weights and the budget of a playing level.
enum class ReportMode { Level, Depth };

// Searches `position` for the side to move and prints its value, the best move, the depth reached
// and the number of evaluated positions; or says why there is nothing to search. Changes nothing
// but the random generator and EvalCount.
void GetEvaluationInfo(const Position& position, ReportMode mode, int number,
                       const struct ThoughtWatch* watch);

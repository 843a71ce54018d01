// What is printed of the searches that people see.
#pragma once

#include "engine/report.h"

// Searches `position` for the side to move and prints its value, the best move, the depth reached
// and the number of evaluated positions; or says why there is nothing to search. A request to hurry
// that ended it is dropped. Changes nothing but the random generator and EvalCount.
void GetEvaluationInfo(const Position& position, ReportMode mode, int number,
                       const ThoughtWatch& watch);

// Prints that a value reached the open bound, if one did: the weights are then beyond all reason.
void PrintCutOff(const Position& position, const SearchResult& found);

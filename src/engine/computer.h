// One turn of the computer player.
#pragma once

#include <string>

#include "engine/weights.h"
#include "rules/moves.h"
#include "rules/position.h"

// Chooses and makes the computer's placement, tower move or pass in `position`, which may be in any
// phase but not an end position: `next` becomes the position behind it, valued by the search from
// the view of its side to move, `move` the entry for the record (a pass leaves it alone), and
// `message` one line to print. `depth` is that of the search, 0 to MAX_SEARCH_DEPTH. The search
// also notes in `position` whether its value is exact. Answers how many choices there were.
int DoComputerMove(Position& position, int depth, const EvalWeights& weights, Position& next,
                   std::string& message, Move& move);

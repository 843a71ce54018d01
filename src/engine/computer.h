// One turn of the computer player.
#pragma once

#include <string>

#include "engine/thinking.h"
#include "kernel/weights.h"
#include "rules/moves.h"
#include "rules/position.h"

// What kind of turn a position asks for.
enum class Turn { Placement, TowerMove, Pass };

// Chooses and makes the computer's placement, tower move or pass in `position`, which may be in any
// phase; in an end position it passes. `next` becomes the position behind it, valued by the search
// from the view of its side to move; `move` receives the choice (a pass leaves it alone). The value
// that was found is also noted in `position`, and whether it is exact. EvalCount becomes what the
// search that stands has cost, 0 without one, and `thought` what it found. `watch` is null when
// nobody waits. Answers what kind of turn it was.
Turn MakeComputerTurn(Position& position, const SearchEffort& effort, const EvalWeights& weights,
                      const ThoughtWatch* watch, Position& next, Move& move, Thought& thought);

// The same with one line about it in `message`, to be printed. Answers how many choices there were:
// empty spaces in the setup phase, else moves.
int DoComputerMove(Position& position, const SearchEffort& effort, const EvalWeights& weights,
                   const ThoughtWatch* watch, Position& next, std::string& message, Move& move,
                   Thought& thought);

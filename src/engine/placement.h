// The computer's placements in the setup phase: every empty space is scored by a few geometric
// features, without any search.
#pragma once

#include "kernel/weights.h"
#include "rules/moves.h"
#include "rules/position.h"

// Writes the best space of a position of the setup phase, which has an empty space, into `Column`
// and `Row` of `move`, and answers its score. Draws one random number for every empty space. Among
// equal scores the first space counts, by rows from the top and columns from the left.
double GetBestSetupMove(const Position& position, const EvalWeights& weights, Move& move);

// How many rings a space of the board lies inside the outer ring, which is ring 0.
[[nodiscard]] int GetBorderDistance(int x, int y);

// How open a stone of `color` on (x, y) is: the neighbours that are empty or a life stone count one
// half, those of the other colour one, and each is weighed by SetupFlankFactor when it lies nearer
// the centre and by its inverse when it lies nearer the border.
[[nodiscard]] double GetRawFlankValue(const Position& position, int x, int y, int color,
                                      const EvalWeights& weights);

// The saturating form of a raw flank value: 1 - 2^(-raw), from 0 towards 1.
[[nodiscard]] double GetFlankValue(double raw);

// One whole search on the compact board. See kernel_build.h for why there are two of them. The
// rules of moving and of life that it follows are those of rules/moves.cpp, and the values and
// counts those of the plain engine in tests/plain; tests/engine holds it to both.
#pragma once

#include <cstdint>

#include "kernel/weights.h"
#include "rules/moves.h"
#include "rules/position.h"

// The deepest search: 0 is one ply, 20 are 21 plies.
inline constexpr int MAX_SEARCH_DEPTH = 20;

struct KernelResult {
    double Value = 0.0;      // the value of the position for the side that moved into it
    double BestValue = 0.0;  // the best value for the side to move
    double CutValue = 0.0;   // the value that reached the open bound, when WasCutOff
    bool WasCutOff = false;
    bool HasMove = false;
    Move BestMove;
    int NumMoves = 0;                 // moves of the position; 0 when they were not counted
    bool IsExact = false;             // every line ended in an end position
    std::int64_t NumEvaluations = 0;  // counted evaluations
    std::int64_t NumDraws = 0;  // random numbers that the caller must draw to make up for them
};

namespace GenericKernel {
KernelResult SearchPosition(const Position& position, int depth, const EvalWeights& weights);
}
namespace PopCountKernel {
KernelResult SearchPosition(const Position& position, int depth, const EvalWeights& weights);
}

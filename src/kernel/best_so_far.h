// The best move of a node so far.
#pragma once

#include "kernel/bounds.h"
#include "kernel/each_move.h"

namespace {

// The values seen so far at a node, against its bound.
struct BestSoFar {
    double Value = LOW_INIT_VALUE;
    Step Choice;                        // the move of that value
    double CutValue = HIGH_INIT_VALUE;  // the value that reached the bound, above the leaves
    bool IsCutOff = false;
    bool HasMove = false;

    // Takes in the value of one more move. Answers false when it reaches the bound.
    bool Take(double value, const Step& step, double bound) {
        HasMove = true;
        if (value >= bound) {
            IsCutOff = true;
            CutValue = value;
            return false;
        }
        if (value > Value) {
            Value = value;
            Choice = step;
        }
        return true;
    }

    // What the search of the node returns.
    [[nodiscard]] double Result() const { return IsCutOff ? LOW_INIT_VALUE : -Value; }
};

}  // namespace

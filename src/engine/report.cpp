#include "engine/report.h"

#include <cstdio>

#include "engine/evaluation.h"
#include "engine/search.h"
#include "kernel/search_kernel.h"
#include "rules/notation.h"
#include "rules/referee.h"

namespace {

// Searches to `depth`, and in level mode deeper as long as the last search cost less than the
// budget. Leaves the depth reached in `depth` and the cost of the last search in EvalCount.
double SearchForReport(Position& position, ReportMode mode, int number, int& depth, Move& move) {
    EvalWeights weights;
    SetLevel(mode == ReportMode::Depth ? FULL_STRENGTH_LEVEL : number, weights);
    const int budget = mode == ReportMode::Depth ? 0 : SearchBudget(number);
    depth = mode == ReportMode::Depth ? number : 0;
    while (true) {
        EvalCount = 0;
        const double value = GetBestMove(position, depth, weights, move, position.ExactValue);
        if (position.ExactValue == 1 || EvalCount >= budget || depth >= MAX_SEARCH_DEPTH) {
            return value;
        }
        ++depth;
    }
}

}  // namespace

void GetEvaluationInfo(const Position& position, ReportMode mode, int number) {
    if (IsEndPosition(position)) {
        std::printf("The game has already ended in this position!\n");
        PrintScore(position);
        return;
    }
    if (position.SetupPhase != 0) {
        std::printf("Evaluation during setup is not availible!\n");
        return;
    }
    Position searched = position;
    const bool passes = GetNumMoves(position) == 0;
    if (passes) {
        searched.ActivePlayer = OtherColor(position.ActivePlayer);
    }
    Move move;
    int depth = 0;
    double value = SearchForReport(searched, mode, number, depth, move);
    const bool isExact = searched.ExactValue == 1;
    if (isExact) {
        value /= 1000;  // the final stone difference
    }
    // The search answers for the side that moved into the position: behind a pass that is the side
    // which the report is for.
    const std::string best = passes ? "PASS" : GetMoveString(move, searched);
    std::printf("The %svalue is %.2f, best move: %s  (depth: %i, Evaluated pos.: %i)\n",
                isExact ? "exact " : "", passes ? value : -value, best.c_str(), depth, EvalCount);
}

#include "engine/report.h"

#include "engine/evaluation.h"
#include "engine/thinking.h"
#include "kernel/search_kernel.h"
#include "rules/notation.h"
#include "rules/referee.h"
#include "support/output.h"
#include "support/requests.h"

namespace {

// Searches to the given depth, or with the weights and the budget of the given level.
Thought ThinkForReport(Position& position, ReportMode mode, int number, const ThoughtWatch* watch) {
    const bool byDepth = mode == ReportMode::Depth;
    EvalWeights weights;
    SetLevel(byDepth ? FULL_STRENGTH_LEVEL : number, weights);
    const SearchEffort effort = {.Depth = byDepth ? number : 0,
                                 .Budget = byDepth ? 0 : SearchBudget(number)};
    return Think(position, effort, weights, watch);
}

}  // namespace

void GetEvaluationInfo(const Position& position, ReportMode mode, int number,
                       const ThoughtWatch* watch) {
    if (IsEndPosition(position)) {
        Print("The game has already ended in this position!\n");
        PrintScore(position);
        return;
    }
    if (position.SetupPhase != 0) {
        Print("Evaluation during setup is not availible!\n");
        return;
    }
    Position searched = position;
    const bool passes = GetNumMoves(position) == 0;
    if (passes) {
        searched.ActivePlayer = OtherColor(position.ActivePlayer);
    }
    const Thought thought = ThinkForReport(searched, mode, number, watch);
    DropRequests(REQUEST_MOVE_NOW | REQUEST_INTERRUPT);
    if (!thought.IsFinished) {
        Print("Evaluation was interrupted!\n");
        return;
    }
    // An exact value is that of the final stone difference.
    const double value = thought.IsExact ? thought.Value / 1000 : thought.Value;
    // The search answers for the side that moved into the position: behind a pass that is the side
    // which the report is for.
    const std::string best = passes ? "PASS" : GetMoveString(thought.BestMove, searched);
    Print("The %svalue is %.2f, best move: %s  (depth: %i, Evaluated pos.: %i)\n",
          thought.IsExact ? "exact " : "", passes ? value : -value, best.c_str(), thought.Depth,
          EvalCount);
}

#include "engine/report.h"

#include "engine/evaluation.h"
#include "rules/notation.h"

namespace {

// Searches to the given depth, or with the weights and the budget of the given level.
Thought ThinkForReport(const Position& position, ReportMode mode, int number,
                       const ThoughtWatch* watch) {
    const bool byDepth = mode == ReportMode::Depth;
    EvalWeights weights;
    SetLevel(byDepth ? FULL_STRENGTH_LEVEL : number, weights);
    const SearchEffort effort = {.Depth = byDepth ? number : 0,
                                 .Budget = byDepth ? 0 : SearchBudget(number)};
    return Think(position, effort, weights, watch);
}

}  // namespace

EvaluationReport ReportOn(const Position& position, ReportMode mode, int number,
                          const ThoughtWatch* watch) {
    Position searched = position;
    const bool passes = GetNumMoves(position) == 0;
    if (passes) {
        searched.ActivePlayer = OtherColor(position.ActivePlayer);
    }
    EvaluationReport report;
    report.Found = ThinkForReport(searched, mode, number, watch);
    AccountFor(report.Found);
    const SearchResult& found = report.Found.Search;
    // An exact value is that of the final stone difference.
    const double value = found.IsExact ? found.Value / 1000 : found.Value;
    // The search answers for the side that moved into the position: behind a pass that is the side
    // which the report is for.
    report.Value = passes ? value : -value;
    report.BestMove = passes ? "PASS" : GetMoveString(found.BestMove, searched);
    return report;
}

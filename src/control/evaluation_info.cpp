#include "control/evaluation_info.h"

#include "display/terminal_board.h"
#include "engine/evaluation.h"
#include "kernel/bounds.h"
#include "rules/notation.h"
#include "rules/referee.h"
#include "support/output.h"
#include "support/requests.h"

void GetEvaluationInfo(const Position& position, ReportMode mode, int number,
                       const ThoughtWatch& watch) {
    if (IsEndPosition(position)) {
        PrintRefusal("The game has already ended in this position!\n");
        PrintScore(position);
        return;
    }
    if (position.SetupPhase != 0) {
        PrintRefusal("Evaluation during setup is not availible!\n");
        return;
    }
    const EvaluationReport report = ReportOn(position, mode, number, &watch);
    DropRequests(HURRY_REQUESTS);
    if (!report.Found.IsFinished) {
        PrintRefusal("Evaluation was interrupted!\n");
        return;
    }
    PrintCutOff(position, report.Found.Search);
    Print("The %svalue is %.2f, best move: %s  (depth: %i, Evaluated pos.: %i)\n",
          report.Found.Search.IsExact ? "exact " : "", report.Value, report.BestMove.c_str(),
          report.Found.Depth, EvalCount);
}

void PrintCutOff(const Position& position, const SearchResult& found) {
    if (!found.WasCutOff) {
        return;
    }
    Print("Error: ToplevelFlag=TRUE && ABOrt!!!\n");
    Print("BAD RET VALUE: LOW_INIT_VALUE && TOPLEVELFLAG=TRUE\n");
    Print("Value:%f, BestValue:%f, NumMoves:%i, Treshold:%f\n", found.CutValue, found.BestValue,
          found.NumMoves, HIGH_INIT_VALUE);
    PrintPosition(position);
}

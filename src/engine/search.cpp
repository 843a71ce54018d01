#include "engine/search.h"

#include <cstdint>

#include "display/terminal_board.h"
#include "engine/evaluation.h"
#include "kernel/move_order.h"
#include "kernel/search_kernel.h"
#include "support/fatal.h"
#include "support/output.h"
#include "support/random.h"

namespace {

KernelResult SearchWithBestKernel(const Position& position, int depth, const EvalWeights& weights,
                                  const SearchWatch* watch) {
#ifdef TALUREX_HAS_POPCOUNT_KERNEL
    if (__builtin_cpu_supports("popcnt")) {
        return PopCountKernel::SearchPosition(position, depth, weights, watch);
    }
#endif
    return GenericKernel::SearchPosition(position, depth, weights, watch);
}

// A value that reaches the open bound means that the weights are beyond all reason.
void ReportCutOff(const Position& position, const KernelResult& result) {
    Print("Error: ToplevelFlag=TRUE && ABOrt!!!\n");
    Print("BAD RET VALUE: LOW_INIT_VALUE && TOPLEVELFLAG=TRUE\n");
    Print("Value:%f, BestValue:%f, NumMoves:%i, Treshold:%f\n", result.CutValue, result.BestValue,
          result.NumMoves, HIGH_INIT_VALUE);
    PrintPosition(position);
}

}  // namespace

SearchResult SearchPosition(Position& position, int depth, const EvalWeights& weights,
                            const SearchWatch* watch) {
    const KernelResult found = SearchWithBestKernel(position, depth, weights, watch);
    if (found.IsOutOfMemory) {
        ErrorExit("GetBestMove: Error: malloc for TmpPositions failed!\n");
    }
    if (!found.HasMove && !found.WasStopped) {
        ErrorExit("GetBestMove: Calling Error! No move left\n");
    }
    CountEvaluations(found.NumEvaluations);
    SkipRandom(found.NumDraws);
    if (depth > 0 && found.HasMove) {
        position.Value = found.BestValue;
        position.ExactValue = found.IsExact ? 1 : 0;
    }
    if (depth > 0 && found.WasCutOff) {
        ReportCutOff(position, found);
    }
    return {.Value = found.Value,
            .IsExact = found.IsExact,
            .WasStopped = found.WasStopped,
            .HasMove = found.HasMove && (depth > 0 || !found.WasCutOff) &&
                       found.BestValue > LOW_INIT_VALUE,
            .BestMove = found.BestMove};
}

double GetBestMove(Position& position, int depth, const EvalWeights& weights, Move& bestMove,
                   int& exactFlag) {
    const SearchResult found = SearchPosition(position, depth, weights, nullptr);
    exactFlag = found.IsExact ? 1 : 0;
    if (found.HasMove) {
        bestMove = found.BestMove;
    }
    return found.Value;
}

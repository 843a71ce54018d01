#include "engine/search.h"

#include <cstdint>
#include <cstdio>

#include "display/terminal_board.h"
#include "engine/evaluation.h"
#include "kernel/move_order.h"
#include "kernel/search_kernel.h"
#include "support/fatal.h"
#include "support/random.h"

namespace {

KernelResult SearchWithBestKernel(const Position& position, int depth, const EvalWeights& weights) {
#ifdef TALUREX_HAS_POPCOUNT_KERNEL
    if (__builtin_cpu_supports("popcnt")) {
        return PopCountKernel::SearchPosition(position, depth, weights);
    }
#endif
    return GenericKernel::SearchPosition(position, depth, weights);
}

// A value that reaches the open bound means that the weights are beyond all reason.
void ReportCutOff(const Position& position, const KernelResult& result) {
    std::printf("Error: ToplevelFlag=TRUE && ABOrt!!!\n");
    std::printf("BAD RET VALUE: LOW_INIT_VALUE && TOPLEVELFLAG=TRUE\n");
    std::printf("Value:%f, BestValue:%f, NumMoves:%i, Treshold:%f\n", result.CutValue,
                result.BestValue, result.NumMoves, HIGH_INIT_VALUE);
    PrintPosition(position);
}

}  // namespace

double GetBestMove(Position& position, int depth, const EvalWeights& weights, Move& bestMove,
                   int& exactFlag) {
    const KernelResult result = SearchWithBestKernel(position, depth, weights);
    if (result.IsOutOfMemory) {
        ErrorExit("GetBestMove: Error: malloc for TmpPositions failed!\n");
    }
    if (!result.HasMove) {
        ErrorExit("GetBestMove: Calling Error! No move left\n");
    }
    CountEvaluations(result.NumEvaluations);
    SkipRandom(result.NumDraws);
    exactFlag = result.IsExact ? 1 : 0;
    if (depth > 0) {
        position.Value = result.BestValue;
        position.ExactValue = exactFlag;
    }
    if (depth > 0 || !result.WasCutOff) {
        bestMove = {bestMove.Kind, result.BestMove.Column, result.BestMove.Row,
                    result.BestMove.Direction};
    }
    if (depth > 0 && result.WasCutOff) {
        ReportCutOff(position, result);
    }
    return result.Value;
}

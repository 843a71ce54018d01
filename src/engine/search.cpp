#include "engine/search.h"

#include "engine/evaluation.h"
#include "kernel/bounds.h"
#include "kernel/search_kernel.h"
#include "support/fatal.h"
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

}  // namespace

SearchResult SearchPosition(const Position& position, int depth, const EvalWeights& weights,
                            const SearchWatch* watch) {
    const KernelResult found = SearchWithBestKernel(position, depth, weights, watch);
    if (found.IsOutOfMemory) {
        ErrorExit("GetBestMove: Error: malloc for TmpPositions failed!\n");
    }
    if (!found.HasMove && !found.WasStopped) {
        ErrorExit("GetBestMove: Calling Error! No move left\n");
    }
    return {.Value = found.Value,
            .BestValue = found.BestValue,
            .IsExact = found.IsExact,
            .WasStopped = found.WasStopped,
            .HasMove = found.HasMove && (depth > 0 || !found.WasCutOff) &&
                       found.BestValue > LOW_INIT_VALUE,
            .BestMove = found.BestMove,
            .NumEvaluations = found.NumEvaluations,
            .WasCutOff = depth > 0 && found.WasCutOff,
            .CutValue = found.CutValue,
            .NumMoves = found.NumMoves};
}

double GetBestMove(Position& position, int depth, const EvalWeights& weights, Move& bestMove,
                   int& exactFlag) {
    const SearchResult found = SearchPosition(position, depth, weights, nullptr);
    CountEvaluations(found.NumEvaluations);
    SkipRandom(found.NumEvaluations);
    if (depth > 0) {
        position.Value = found.BestValue;
    }
    exactFlag = found.IsExact ? 1 : 0;
    if (found.HasMove) {
        bestMove = found.BestMove;
    }
    return found.Value;
}

#include "engine/thinking.h"

#include <utility>

namespace {

using Clock = std::chrono::steady_clock;

// A thought under way, as its watch is told of it.
struct UnderWay {
    const Position& Board;
    const EvalWeights& Weights;
    const ThoughtWatch* Watch;
    const Thought* Standing = nullptr;
    int Depth = 0;
    Clock::time_point Began = Clock::now();
    std::int64_t NumDraws = 0;
};

void Tell(const UnderWay& thought, const SearchProgress& search, bool isOver) {
    thought.Watch->Report(thought.Watch->Context, {.Board = thought.Board,
                                                   .Standing = thought.Standing,
                                                   .Depth = thought.Depth,
                                                   .Began = thought.Began,
                                                   .Search = search,
                                                   .IsOver = isOver});
}

void TellProgress(void* context, const SearchProgress& search) {
    Tell(*static_cast<const UnderWay*>(context), search, false);
}

SearchResult SearchTo(int depth, UnderWay& thought) {
    thought.Depth = depth;
    const ThoughtWatch* watch = thought.Watch;
    SearchResult found;
    if (watch == nullptr) {
        found = SearchPosition(thought.Board, depth, thought.Weights, nullptr);
    } else {
        const SearchWatch searchWatch = {.StopFlag = watch->StopFlag,
                                         .Report =
                                             watch->Report != nullptr ? TellProgress : nullptr,
                                         .Context = &thought};
        found = SearchPosition(thought.Board, depth, thought.Weights, &searchWatch);
        if (watch->Report != nullptr) {
            Tell(thought, {}, true);
        }
    }
    thought.NumDraws += found.NumEvaluations;
    return found;
}

// The first search of the thought, or what can be had of one that was stopped.
Thought BeginThought(int depth, UnderWay& thought) {
    SearchResult found = SearchTo(depth, thought);
    if (!found.WasStopped || found.HasMove) {
        return {.Search = found, .Depth = depth, .IsFinished = !found.WasStopped};
    }
    thought.Watch = nullptr;  // a search of depth 0 is over at once
    return {.Search = SearchTo(0, thought), .Depth = 0, .IsFinished = false};
}

// True when a search of this cost and result asks for one that goes a ply deeper.
bool GoesDeeper(const Thought& thought, int budget) {
    const SearchResult& search = thought.Search;
    return search.NumEvaluations >= 1 && search.NumEvaluations < budget &&
           thought.Depth < MAX_SEARCH_DEPTH && !search.IsExact;
}

}  // namespace

Thought Think(const Position& position, const SearchEffort& effort, const EvalWeights& weights,
              const ThoughtWatch* watch) {
    UnderWay underWay = {.Board = position, .Weights = weights, .Watch = watch};
    Thought thought = BeginThought(effort.Depth, underWay);
    underWay.Standing = &thought;
    while (thought.IsFinished && GoesDeeper(thought, effort.Budget)) {
        const SearchResult found = SearchTo(thought.Depth + 1, underWay);
        if (found.WasStopped) {
            break;
        }
        thought.Search = found;
        ++thought.Depth;
    }
    thought.NumDraws = underWay.NumDraws;
    return thought;
}

#include "engine/thinking.h"

#include <chrono>

#include "engine/evaluation.h"
#include "engine/search.h"

namespace {

using Clock = std::chrono::steady_clock;

struct Watched {
    const ThoughtWatch* Watch = nullptr;
    const Position* Board = nullptr;
    const Thought* Standing = nullptr;
    int Depth = 0;
    Clock::time_point Began;
};

void Tell(const Watched& watched, const SearchProgress& search, bool isOver) {
    if (watched.Watch != nullptr && watched.Watch->Report != nullptr) {
        watched.Watch->Report(
            watched.Watch->Context,
            {*watched.Board, watched.Standing, watched.Depth, watched.Began, search, isOver});
    }
}

void Relay(void* context, const SearchProgress& search) {
    Tell(*static_cast<Watched*>(context), search, false);
}

// One search of the thought. Notes in EvalCount what it cost.
SearchResult SearchTo(int depth, Position& position, const EvalWeights& weights, Watched& watched,
                      bool canStop) {
    EvalCount = 0;
    watched.Board = &position;
    watched.Depth = depth;
    static const std::atomic<int> never = 0;
    const SearchWatch watch = {.StopFlag =
                                   watched.Watch != nullptr ? watched.Watch->StopFlag : never,
                               .Report = Relay,
                               .Context = &watched};
    const SearchResult found = SearchPosition(
        position, depth, weights, canStop && watched.Watch != nullptr ? &watch : nullptr);
    Tell(watched, {}, true);
    position.ExactValue = found.IsExact ? 1 : 0;
    return found;
}

Thought ThoughtOf(const SearchResult& found, int depth) {
    return {.Value = found.Value,
            .BestMove = found.BestMove,
            .Depth = depth,
            .IsExact = found.IsExact,
            .IsFinished = !found.WasStopped};
}

// True when a search of this cost and result asks for one that goes a ply deeper.
bool GoesDeeper(const Thought& thought, int budget) {
    return EvalCount >= 1 && EvalCount < budget && thought.Depth < MAX_SEARCH_DEPTH &&
           !thought.IsExact;
}

}  // namespace

Thought Think(Position& position, const SearchEffort& effort, const EvalWeights& weights,
              const ThoughtWatch* watch) {
    Watched watched = {.Watch = watch, .Began = Clock::now()};
    SearchResult found = SearchTo(effort.Depth, position, weights, watched, true);
    Thought thought = ThoughtOf(found, effort.Depth);
    if (found.WasStopped && !found.HasMove) {
        found = SearchTo(0, position, weights, watched, false);
        thought = ThoughtOf(found, 0);
        thought.IsFinished = false;
    }
    watched.Standing = &thought;
    while (thought.IsFinished && GoesDeeper(thought, effort.Budget)) {
        const Position before = position;
        const int cost = EvalCount;
        found = SearchTo(thought.Depth + 1, position, weights, watched, true);
        if (found.WasStopped) {
            position = before;
            EvalCount = cost;
            break;
        }
        thought = ThoughtOf(found, thought.Depth + 1);
    }
    return thought;
}

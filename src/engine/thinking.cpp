#include "engine/thinking.h"

#include <chrono>
#include <string>

#include "display/progress_line.h"
#include "engine/evaluation.h"
#include "engine/search.h"
#include "rules/notation.h"
#include "support/signals.h"

namespace {

using Clock = std::chrono::steady_clock;

// What the progress line needs to know of the thought under way. There is one search at a time.
struct Watched {
    const Position* Board = nullptr;
    const Thought* Standing = nullptr;  // what a hurried thought would come to; null: nothing yet
    int Depth = 0;
    Clock::time_point NextLook;
};
Watched UnderWay;

void ReportProgress(const SearchProgress& progress) {
    constexpr std::chrono::milliseconds INTERVAL(200);
    const Clock::time_point now = Clock::now();
    if (now < UnderWay.NextLook) {
        return;
    }
    UnderWay.NextLook = now + INTERVAL;
    std::string text = "Depth " + std::to_string(UnderWay.Depth) + ": move " +
                       std::to_string(progress.NumFinished) + '/' +
                       std::to_string(progress.NumMoves) + ", " +
                       std::to_string(progress.NumEvaluations) + " positions";
    if (UnderWay.Standing != nullptr) {
        text += ", best " + GetMoveString(UnderWay.Standing->BestMove, *UnderWay.Board);
    } else if (progress.HasMove) {
        text += ", best " + GetMoveString(progress.BestMove, *UnderWay.Board);
    }
    ShowProgress(text);
}

// Answers what is to be told of the progress: nothing, where nobody would see it.
decltype(SearchWatch::Report) BeginProgress() {
    constexpr std::chrono::seconds SHORT_THOUGHT(1);
    UnderWay.NextLook = Clock::now() + SHORT_THOUGHT;
    return CanShowProgress() ? ReportProgress : nullptr;
}

// One search of the thought. Notes in EvalCount what it cost.
SearchResult SearchTo(int depth, Position& position, const EvalWeights& weights,
                      const SearchWatch* watch) {
    EvalCount = 0;
    UnderWay.Board = &position;
    UnderWay.Depth = depth;
    const SearchResult found = SearchPosition(position, depth, weights, watch);
    EraseProgress();
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

Thought Think(Position& position, const SearchEffort& effort, const EvalWeights& weights) {
    const SearchWatch watch = {.StopFlag = Requests,
                               .Report = effort.CanBeHurried ? BeginProgress() : nullptr};
    const SearchWatch* watched = effort.CanBeHurried ? &watch : nullptr;
    UnderWay.Standing = nullptr;
    SearchResult found = SearchTo(effort.Depth, position, weights, watched);
    Thought thought = ThoughtOf(found, effort.Depth);
    if (found.WasStopped && !found.HasMove) {
        found = SearchTo(0, position, weights, nullptr);
        thought = ThoughtOf(found, 0);
        thought.IsFinished = false;
    }
    UnderWay.Standing = &thought;
    while (thought.IsFinished && GoesDeeper(thought, effort.Budget)) {
        const Position before = position;
        const int cost = EvalCount;
        found = SearchTo(thought.Depth + 1, position, weights, watched);
        if (found.WasStopped) {
            position = before;
            EvalCount = cost;
            break;
        }
        thought = ThoughtOf(found, thought.Depth + 1);
    }
    UnderWay = {};  // nothing that it points to outlives the thought
    return thought;
}

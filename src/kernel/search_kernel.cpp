#include "kernel/search_kernel.h"

#include <array>
#include <memory>
#include <new>

#include "kernel/children.h"
#include "kernel/leaves.h"
#include "kernel/search_table.h"

// The build that counts bits with an instruction is compiled with another name for this namespace.
// All that the two builds are made of stands in unnamed namespaces, in the headers as well:
// otherwise the linker could take a function of one for the same function of the other.
#ifndef TALUREX_KERNEL
#define TALUREX_KERNEL GenericKernel
#endif

namespace TALUREX_KERNEL {
namespace {

// What outlives a search, so that the next one need not allocate it again: made when first needed.
template <typename Set>
struct Workspace {
    // The children of the node that is searched at each remaining depth, of which a node only
    // writes those of its own; none for depth 0.
    std::array<std::unique_ptr<ChildList<Set>>, MAX_SEARCH_DEPTH + 1> Lists;
    SearchTable<Set> Table;

    // Makes what a search of `depth` needs. Answers false when there is no memory for it.
    [[nodiscard]] bool Prepare(int depth) {
        for (int d = 1; d <= depth; ++d) {
            if (Lists[d] == nullptr) {
                Lists[d].reset(new (std::nothrow) ChildList<Set>);
            }
            if (Lists[d] == nullptr) {
                return false;
            }
        }
        // The children of a shallow search are leaves, which are not kept.
        return depth <= 1 || Table.BeginSearch();
    }
};

// How many nodes above the leaves the search enters before it tells its progress.
constexpr int NODES_PER_REPORT = 64;

template <typename Set>
struct Search {
    Evaluator<Set> Values;
    Workspace<Set>& Room;
    int RootDepth;
    const SearchWatch* Watch;
    bool IsExact = true;     // no line has ended but in an end position
    bool IsStopped = false;  // the search unwinds, and what its nodes answer means nothing
    int NodesUntilReport = NODES_PER_REPORT;
    SearchProgress Progress = {};

    // To be called where a node above the leaves is entered. Answers true when the search is to
    // end.
    bool LooksUp() {
        if (Watch == nullptr) {
            return false;
        }
        if (--NodesUntilReport == 0) {
            NodesUntilReport = NODES_PER_REPORT;
            if (Watch->Report != nullptr) {
                Progress.NumEvaluations = Values.NumEvaluations;
                Watch->Report(Watch->Context, Progress);
            }
        }
        IsStopped = IsStopped || Watch->StopFlag.load(std::memory_order_relaxed) != 0;
        return IsStopped;
    }

    // Notes how far the root has come.
    void NoteProgress(const BestSoFar& best, int numFinished, int numMoves) {
        Progress.NumFinished = numFinished;
        Progress.NumMoves = numMoves;
        Progress.HasMove = best.HasMove;
        Progress.BestMove = MoveOf(Values.Tables.Shape, best.Choice);
        Progress.BestValue = best.Value;
    }

    BestSoFar SearchChildren(const SearchBoard<Set>& board, int depth, double bound,
                             ChildList<Set>& list, int count) {
        const bool canBeCutOff = bound < HIGH_INIT_VALUE;
        BestSoFar best;
        for (int i = 0; i < count; ++i) {
            if (i == (canBeCutOff ? 1 : 0)) {
                SortChildren(Values, board, count, list);
            } else if (i == 0) {
                list.Order[0] = FindFirstChild(Values, board, count, list);
            }
            if (depth == RootDepth) {
                NoteProgress(best, i, count);
            }
            const Child<Set>& child = list.Children[list.Order[i]];
            double value = -child.Value;
            if (CanMove(child.WorthBehind)) {
                const SearchBoard<Set> next =
                    MakeChild(Values.Tables.Shape, board, child.Played.Source, child.Played.Target,
                              child.Dead);
                value =
                    depth == 1
                        ? SearchLeafNode(next, child.WorthBehind, child.Value, -best.Value,
                                         RootDepth == 1 ? NEVER_ENOUGH : bound)
                        : SearchNode(next, child.WorthBehind, child.Value, depth - 1, -best.Value);
            }
            if (IsStopped || !best.Take(value, child.Played, bound)) {
                break;
            }
        }
        return best;
    }

    // A side without a move passes; behind it the search goes on with the open bound. With no depth
    // left, the static value of the position stands. The other side has a move then: positions in
    // which neither has one end the game, and are not searched.
    double SearchPass(const SearchBoard<Set>& board, Worth worth, double drawnValue, int depth) {
        if (depth == 0) {
            IsExact = false;
            return Values.HasChance() ? -drawnValue : -StaticValue(Values, board);
        }
        SearchBoard<Set> passed = board;
        passed.ActivePlayer = OtherColor(board.ActivePlayer);
        return -SearchNode(passed, worth, -drawnValue, depth - 1, HIGH_INIT_VALUE);
    }

    double SearchLeafNode(const SearchBoard<Set>& board, Worth worth, double drawnValue,
                          double bound, double enough) {
        const BestSoFar best = SearchLeaves(Values, board, worth, bound, enough, IsExact);
        return best.HasMove ? best.Result() : SearchPass(board, worth, drawnValue, 0);
    }

    BestSoFar SearchMoves(const SearchBoard<Set>& board, Worth worth, int depth, double bound) {
        if (depth == 0) {
            return SearchLeaves(Values, board, worth, bound, NEVER_ENOUGH, IsExact);
        }
        if (LooksUp()) {
            return {};
        }
        ChildList<Set>& list = *Room.Lists[depth];
        const int count = ExpandNode(Values, board, worth, list);
        return count == 0 ? BestSoFar{} : SearchChildren(board, depth, bound, list, count);
    }

    SearchOutcome SearchAnew(const SearchBoard<Set>& board, Worth worth, double drawnValue,
                             int depth, double bound) {
        const std::int64_t before = Values.NumEvaluations;
        const BestSoFar best = SearchMoves(board, worth, depth, bound);
        if (IsStopped) {
            return {};
        }
        const double value =
            best.HasMove ? best.Result() : SearchPass(board, worth, drawnValue, depth);
        // A pass does not look at the bound: its outcome holds for all.
        return {.Value = value,
                .Above = best.Value,
                .UpTo = best.CutValue,
                .NumEvaluations = Values.NumEvaluations - before};
    }

    // The value of a node for the side that moved into it, or LOW_INIT_VALUE when one of its moves
    // reached the bound. With chance at work, `drawnValue` is its static value.
    double SearchNode(const SearchBoard<Set>& board, Worth worth, double drawnValue, int depth,
                      double bound) {
        // A leaf's children are found sooner than the table's entry; and a random term makes every
        // visit of a node a different one.
        if (depth == 0) {
            return SearchLeafNode(board, worth, drawnValue, bound, NEVER_ENOUGH);
        }
        if (Values.HasChance()) {
            return SearchAnew(board, worth, drawnValue, depth, bound).Value;
        }
        const auto address = Room.Table.AddressOf(board, depth);
        const SearchOutcome* known = Room.Table.Find(address);
        if (known != nullptr && bound > known->Above && bound <= known->UpTo) {
            // A line that ended early was noted when this search found the outcome.
            Values.NumEvaluations += known->NumEvaluations;
            return known->Value;
        }
        const SearchOutcome outcome = SearchAnew(board, worth, drawnValue, depth, bound);
        if (!IsStopped) {
            Room.Table.Store(address, outcome);
        }
        return outcome.Value;
    }
};

template <typename Set>
int CountStones(const SearchBoard<Set>& board) {
    int stones = 0;
    for (const std::uint8_t height : board.Height) {
        stones += height;
    }
    return stones;
}

template <typename Set>
KernelResult SearchOn(const Position& position, int depth, const EvalWeights& weights,
                      const SearchWatch* watch) {
    static Workspace<Set> workspace;
    KernelResult result;
    if (!workspace.Prepare(depth)) {
        result.IsOutOfMemory = true;
        return result;
    }
    const BoardShape<Set>& shape = CurrentShape<Set>();
    const SearchBoard<Set> board = ToSearchBoard(shape, position);
    const TallyWeights ordered = OrderWeights(weights);
    const BoardTables<Set> tables = {shape,
                                     MakeWorthTable(ordered, shape.NumSpaces, CountStones(board))};
    Search<Set> search = {
        {tables, ordered, weights.Random, PresentRandom()}, workspace, depth, watch};
    const BestSoFar best =
        search.SearchMoves(board, WorthOfBoard(tables, board), depth, HIGH_INIT_VALUE);
    result.Value = best.Result();
    result.BestValue = best.Value;
    result.CutValue = best.CutValue;
    result.WasCutOff = best.IsCutOff;
    result.HasMove = best.HasMove;
    result.WasStopped = search.IsStopped;
    result.BestMove = MoveOf(shape, best.Choice);
    result.NumMoves = search.Progress.NumMoves;
    result.IsExact = search.IsExact && !search.IsStopped;
    result.NumEvaluations = search.Values.NumEvaluations;
    return result;
}

}  // namespace

KernelResult SearchPosition(const Position& position, int depth, const EvalWeights& weights,
                            const SearchWatch* watch) {
    return IsSmallBoard() ? SearchOn<SmallSet>(position, depth, weights, watch)
                          : SearchOn<LargeSet>(position, depth, weights, watch);
}

}  // namespace TALUREX_KERNEL

#include "kernel/search_kernel.h"

#include <array>
#include <memory>
#include <new>

#include "kernel/lifting.h"
#include "kernel/move_order.h"
#include "kernel/search_table.h"
#include "support/random.h"

// The build that counts bits with an instruction is compiled with another name for this namespace.
// All that the two builds are made of stands in unnamed namespaces, in the headers as well:
// otherwise the linker could take a function of one for the same function of the other.
#ifndef TALUREX_KERNEL
#define TALUREX_KERNEL GenericKernel
#endif

namespace TALUREX_KERNEL {
namespace {

// A move as the search sees it.
struct Step {
    int Source = 0;
    int Target = 0;
    int Direction = 0;
};

template <typename Set>
Move MoveOf(const Geometry<Set>& geometry, const Step& step) {
    return {.Column = geometry.Column[step.Source],
            .Row = geometry.Row[step.Source],
            .Direction = step.Direction};
}

template <typename Set>
struct Child {
    Step Way;
    Set Dead = 0;
    Tallies Sums;
};

// The children of the node that is searched at one remaining depth. A node only writes the level of
// its own depth, so a whole search needs one level for each.
template <typename Set>
struct Level {
    std::array<Child<Set>, MAX_MOVES> Children;
    std::array<double, MAX_MOVES> Values;  // static values, seen from the side to move in the child
    std::array<int, MAX_MOVES> Order;
};

// What outlives a search, so that the next one need not allocate it again: made when first needed.
template <typename Set>
struct Workspace {
    std::array<std::unique_ptr<Level<Set>>, MAX_SEARCH_DEPTH + 1> Levels;  // none for depth 0
    SearchTable<Set> Table;

    // Makes what a search of `depth` needs. Answers false when there is no memory for it.
    [[nodiscard]] bool Prepare(int depth) {
        for (int d = 1; d <= depth; ++d) {
            if (Levels[d] == nullptr) {
                Levels[d].reset(new (std::nothrow) Level<Set>);
            }
            if (Levels[d] == nullptr) {
                return false;
            }
        }
        // The children of a shallow search are leaves, which are not kept.
        return depth <= 1 || Table.BeginSearch();
    }
};

// How many nodes above the leaves the search enters before it tells its progress.
constexpr int NODES_PER_REPORT = 64;

// The values seen so far at a node, against its bound.
struct BestSoFar {
    double Value = LOW_INIT_VALUE;
    Step Way;
    double CutValue = HIGH_INIT_VALUE;  // the value that reached the bound
    bool IsCutOff = false;
    bool HasMove = false;

    // Takes in the value of one more move. Answers false when it reaches the bound.
    bool Take(double value, const Step& way, double treshold) {
        HasMove = true;
        if (value >= treshold) {
            IsCutOff = true;
            CutValue = value;
            return false;
        }
        if (value > Value) {
            Value = value;
            Way = way;
        }
        return true;
    }

    // What the search of the node returns.
    [[nodiscard]] double Result() const { return IsCutOff ? LOW_INIT_VALUE : -Value; }
};

template <typename Set>
struct Search {
    const Geometry<Set>& Shape;
    Workspace<Set>& Space;
    TallyWeights Weights;
    double RandomWeight;
    bool WithEnemies;  // the weights ask for the targets that the other side owns
    int RootDepth;
    const SearchWatch* Watch;
    std::int64_t NumEvaluations = 0;
    std::int64_t NumDraws = 0;  // draws that are still owed to the random generator
    bool IsExact = true;        // no line has ended but in an end position
    bool IsStopped = false;     // the search unwinds, and what its nodes answer means nothing
    int NodesUntilReport = NODES_PER_REPORT;
    SearchProgress Progress = {};

    // Counts an evaluation and answers its value, seen from the side to move, here `player`.
    double Evaluate(const Tallies& tallies, int player) {
        ++NumEvaluations;
        double randomTerm = 0.0;
        if (RandomWeight != 0.0) {
            randomTerm = RandomWeight * RandomReal();
        } else {
            ++NumDraws;  // what is drawn does not matter, only that it is drawn
        }
        return PositionValue(tallies, Weights, randomTerm, player);
    }

    // Calls `visit(lifted, step)` for every move, in generation order, as long as it answers true.
    template <typename Visit>
    void ForEachMove(const SearchBoard<Set>& board, const Tallies& tallies, Visit visit) {
        for (Set movers = board.Owned[board.ActivePlayer] & ~board.Enclosed; movers != 0;) {
            const int source = TakeFirst(movers);
            const int row = ReachRow(board.Height[source]);
            if ((Shape.Reached[source][row] & board.Occupied) == 0) {
                continue;
            }
            const LiftedBoard<Set> lifted = LiftTower(Shape, board, tallies, source, WithEnemies);
            const auto& targets = Shape.Target[source][row];
            for (int d = 0; d < NUM_DIRECTIONS; ++d) {
                if (Has(board.Occupied, targets[d]) &&
                    !visit(lifted, Step{source, targets[d], d})) {
                    return;
                }
            }
        }
    }

    // A node of depth 0: its children are judged by their static values, one by one, so that a
    // cut-off saves the rest.
    BestSoFar SearchLeaves(const SearchBoard<Set>& board, const Tallies& tallies, double treshold) {
        BestSoFar best;
        const int opponent = OtherColor(board.ActivePlayer);
        ForEachMove(board, tallies, [&](const LiftedBoard<Set>& lifted, const Step& way) {
            const Tallies sums =
                TalliesAfter(Shape, board, lifted, way.Source, way.Target, WithEnemies);
            const double value = -Evaluate(sums, opponent);
            IsExact = IsExact && sums.Mobility == 0;
            return best.Take(value, way, treshold);
        });
        return best;
    }

    // Makes and evaluates every child of a deeper node. Answers their number.
    int ExpandNode(const SearchBoard<Set>& board, const Tallies& tallies, Level<Set>& level) {
        int count = 0;
        const int opponent = OtherColor(board.ActivePlayer);
        ForEachMove(board, tallies, [&](const LiftedBoard<Set>& lifted, const Step& way) {
            Child<Set>& child = level.Children[count];
            child.Way = way;
            child.Dead = DeadAfter(lifted, way.Target);
            child.Sums = TalliesAfter(Shape, board, lifted, way.Source, way.Target, WithEnemies);
            level.Values[count] = Evaluate(child.Sums, opponent);
            ++count;
            return true;
        });
        return count;
    }

    // To be called where a node above the leaves is entered. Answers true when the search is to
    // end.
    bool LooksUp() {
        if (Watch == nullptr) {
            return false;
        }
        if (--NodesUntilReport == 0) {
            NodesUntilReport = NODES_PER_REPORT;
            if (Watch->Report != nullptr) {
                Progress.NumEvaluations = NumEvaluations;
                Watch->Report(Progress);
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
        Progress.BestMove = MoveOf(Shape, best.Way);
        Progress.BestValue = best.Value;
    }

    BestSoFar SearchChildren(const SearchBoard<Set>& board, int depth, double treshold,
                             Level<Set>& level, int count) {
        SortPositions(count, level.Values.data(), level.Order.data());
        BestSoFar best;
        for (int i = 0; i < count; ++i) {
            if (depth == RootDepth) {
                NoteProgress(best, i, count);
            }
            const int k = level.Order[i];
            const Child<Set>& child = level.Children[k];
            double value = -level.Values[k];
            if (child.Sums.Mobility != 0) {
                const SearchBoard<Set> next =
                    MakeChild(Shape, board, child.Way.Source, child.Way.Target, child.Dead);
                value = SearchNode(next, child.Sums, level.Values[k], depth - 1, -best.Value);
            }
            if (IsStopped || !best.Take(value, child.Way, treshold)) {
                break;
            }
        }
        return best;
    }

    // A side without a move passes; behind it the search goes on with the open bound. With no depth
    // left, the static value of the position stands. The other side has a move then: positions in
    // which neither has one end the game, and are not searched.
    double SearchPass(const SearchBoard<Set>& board, const Tallies& tallies, double staticValue,
                      int depth) {
        if (depth == 0) {
            IsExact = false;
            return -staticValue;
        }
        SearchBoard<Set> passed = board;
        passed.ActivePlayer = OtherColor(board.ActivePlayer);
        return -SearchNode(passed, tallies, -staticValue, depth - 1, HIGH_INIT_VALUE);
    }

    BestSoFar SearchMoves(const SearchBoard<Set>& board, const Tallies& tallies, int depth,
                          double treshold, int& numMoves) {
        if (depth == 0) {
            return SearchLeaves(board, tallies, treshold);
        }
        if (LooksUp()) {
            return {};
        }
        Level<Set>& level = *Space.Levels[depth];
        numMoves = ExpandNode(board, tallies, level);
        return numMoves == 0 ? BestSoFar{}
                             : SearchChildren(board, depth, treshold, level, numMoves);
    }

    SearchOutcome SearchAnew(const SearchBoard<Set>& board, const Tallies& tallies,
                             double staticValue, int depth, double treshold) {
        const std::int64_t before = NumEvaluations;
        int numMoves = 0;
        const BestSoFar best = SearchMoves(board, tallies, depth, treshold, numMoves);
        if (IsStopped) {
            return {};
        }
        const double value =
            best.HasMove ? best.Result() : SearchPass(board, tallies, staticValue, depth);
        // A pass does not look at the bound: its outcome holds for all.
        return {.Value = value,
                .Above = best.Value,
                .UpTo = best.CutValue,
                .NumEvaluations = NumEvaluations - before,
                .IsExact = false};
    }

    // The value of a node for the side that moved into it, or LOW_INIT_VALUE when one of its moves
    // reached the bound.
    double SearchNode(const SearchBoard<Set>& board, const Tallies& tallies, double staticValue,
                      int depth, double treshold) {
        // A leaf's children are found sooner than the table's entry; and a random term makes every
        // visit of a node a different one.
        if (depth == 0 || RandomWeight != 0.0) {
            return SearchAnew(board, tallies, staticValue, depth, treshold).Value;
        }
        const auto key = Space.Table.KeyOf(board, depth);
        auto& slot = Space.Table.Slot(key);
        const SearchOutcome& known = slot.Outcome;
        if (slot.Node == key && treshold > known.Above && treshold <= known.UpTo) {
            NumEvaluations += known.NumEvaluations;
            NumDraws += known.NumEvaluations;
            IsExact = IsExact && known.IsExact;
            return known.Value;
        }
        const bool wasExact = IsExact;
        IsExact = true;
        SearchOutcome outcome = SearchAnew(board, tallies, staticValue, depth, treshold);
        if (IsStopped) {
            return outcome.Value;
        }
        outcome.IsExact = IsExact;
        slot.Node = key;
        slot.Outcome = outcome;
        IsExact = IsExact && wasExact;
        return outcome.Value;
    }
};

template <typename Set>
KernelResult SearchOn(const Position& position, int depth, const EvalWeights& weights,
                      const SearchWatch* watch) {
    static Workspace<Set> workspace;
    const Geometry<Set>& shape = CurrentGeometry<Set>();
    const bool withEnemies = weights.MovesToEnemy != EvalWeights::ByFree{};
    const SearchBoard<Set> board = ToSearchBoard(shape, position);
    const Tallies tallies = CountTallies(shape, ViewOf(board, withEnemies), board.Height);

    KernelResult result;
    if (!workspace.Prepare(depth)) {
        result.IsOutOfMemory = true;
        return result;
    }
    Search<Set> search = {shape, workspace, OrderWeights(weights), weights.Random, withEnemies,
                          depth, watch};
    const BestSoFar best =
        search.SearchMoves(board, tallies, depth, HIGH_INIT_VALUE, result.NumMoves);
    result.Value = best.Result();
    result.BestValue = best.Value;
    result.CutValue = best.CutValue;
    result.WasCutOff = best.IsCutOff;
    result.HasMove = best.HasMove;
    result.WasStopped = search.IsStopped;
    result.BestMove = MoveOf(shape, best.Way);
    result.IsExact = search.IsExact && !search.IsStopped;
    result.NumEvaluations = search.NumEvaluations;
    result.NumDraws = search.NumDraws;
    return result;
}

}  // namespace

KernelResult SearchPosition(const Position& position, int depth, const EvalWeights& weights,
                            const SearchWatch* watch) {
    return IsSmallBoard() ? SearchOn<SmallSet>(position, depth, weights, watch)
                          : SearchOn<LargeSet>(position, depth, weights, watch);
}

}  // namespace TALUREX_KERNEL

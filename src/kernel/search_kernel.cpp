#include "kernel/search_kernel.h"

#include <array>
#include <limits>
#include <memory>
#include <new>

#include "kernel/bounds.h"
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
    std::uint8_t Source = 0;
    std::uint8_t Target = 0;
    std::uint8_t Direction = 0;
};

template <typename Set>
Move MoveOf(const Geometry<Set>& geometry, const Step& step) {
    return {.Column = geometry.Spots[step.Source].Column,
            .Row = geometry.Spots[step.Source].Row,
            .Direction = step.Direction};
}

// A move of a node above the leaves and what is known of the position behind it.
template <typename Set>
struct Child {
    Set Dead;
    Worth Sum;
    double Value;  // the static value for the side to move, when HasValue
    Step Way;
    bool HasValue;
};

// The children of the node that is searched at one remaining depth. A node only writes the level of
// its own depth, so a whole search needs one level for each.
template <typename Set>
struct Level {
    std::array<Child<Set>, MAX_MOVES> Children;
    std::array<Rank, MAX_MOVES> Ranks;  // for the side that moves at the node
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
    double CutValue = HIGH_INIT_VALUE;  // the value that reached the bound, above the leaves
    bool IsCutOff = false;
    bool HasMove = false;

    // Takes in the value of one more move. Answers false when it reaches the bound.
    bool Take(double value, const Step& way, double bound) {
        HasMove = true;
        if (value >= bound) {
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

// A value that is never enough; see SearchLeaves.
constexpr double NEVER = std::numeric_limits<double>::infinity();

// The best of the leaves of a node so far. While others are surely worse, its value need not be
// known, only where it lies; so it is worked out when somebody asks.
template <typename Set>
struct BestLeaf {
    BestSoFar Best;
    Set Dead = 0;  // what dies by its move
    bool HasValue = true;
    Rank Low = 0;   // its value lies from here
    Rank High = 0;  // to here

    // Takes in a leaf that is surely the best so far, whose value is nearer to `rank` than the
    // margin.
    void TakeRoughly(Rank rank, Rank margin, const Step& way, Set dead) {
        Best.Way = way;
        Dead = dead;
        HasValue = false;
        Low = rank - margin;
        High = rank + margin;
    }
};

template <typename Set>
struct Search {
    Context<Set> Tables;
    Workspace<Set>& Room;
    TallyWeights Weights;
    double RandomWeight;
    int RootDepth;
    const SearchWatch* Watch;
    RandomGenerator Chance;
    std::int64_t NumEvaluations = 0;
    bool IsExact = true;     // no line has ended but in an end position
    bool IsStopped = false;  // the search unwinds, and what its nodes answer means nothing
    int NodesUntilReport = NODES_PER_REPORT;
    SearchProgress Progress = {};

    // With a random term every evaluation has a draw of its own, and no value is what it was
    // before.
    [[nodiscard]] bool HasChance() const { return RandomWeight != 0.0; }

    // The static value of a position for its side to move. With chance at work this draws, and so
    // must be asked for every evaluation once, when it is counted.
    double StaticValue(const SearchBoard<Set>& board) {
        const double randomTerm = HasChance() ? RandomWeight * RandomReal(Chance) : 0.0;
        const Tallies tallies = CountTallies(Tables.Shape, board, Tables.Worths.WithEnemies);
        return ValueFor(board.ActivePlayer, WeightedSum(tallies, Weights) + randomTerm);
    }

    // The same of the position behind a move.
    [[gnu::noinline]] double StaticValueBehind(const SearchBoard<Set>& board, const Step& way,
                                               Set dead, bool isEnd) {
        if (!isEnd) {
            return StaticValue(MakeChild(Tables.Shape, board, way.Source, way.Target, dead));
        }
        if (HasChance()) {
            SkipRandom(Chance, 1);
        }
        const int lead = StoneLeadBehind(board, way.Source, way.Target, dead);
        return ValueFor(OtherColor(board.ActivePlayer), FinalValue(lead));
    }

    // The directions in which a tower with these targets can move: bit d for direction d.
    static unsigned OccupiedWays(const std::array<std::uint8_t, NUM_DIRECTIONS>& targets,
                                 Set occupied) {
        unsigned ways = 0;
        for (int d = 0; d < NUM_DIRECTIONS; ++d) {
            ways |= static_cast<unsigned>(Has(occupied, targets[d])) << d;
        }
        return ways;
    }

    // Calls `visit(landing, step)` for every move, in generation order, as long as it answers true.
    template <typename Visit>
    void ForEachMove(const SearchBoard<Set>& board, Worth sum, Visit visit) {
        const TowerGroups<Set> groups = GroupTowers(board, board.Enclosed);
        LiftedBoard<Set> lifted;
        for (Set movers = board.Owned[board.ActivePlayer] & ~board.Enclosed; movers != 0;) {
            const int source = TakeFirst(movers);
            const int row = ReachRow(board.Height[source]);
            const Spot<Set>& spot = Tables.Shape.Spots[source];
            if ((spot.Reached[row] & board.Occupied) == 0) {
                continue;
            }
            LiftTower(Tables, board, groups, sum, source, lifted);
            const auto& targets = spot.Target[row];
            unsigned ways = row == 1 ? lifted.Neighbours : OccupiedWays(targets, board.Occupied);
            for (; ways != 0; ways &= ways - 1) {
                const int direction = First(SmallSet{ways});
                const std::uint8_t target = targets[direction];
                if (!visit(PutDown(Tables, board, lifted, target),
                           Step{static_cast<std::uint8_t>(source), target,
                                static_cast<std::uint8_t>(direction)})) {
                    return;
                }
            }
        }
    }

    // Takes in a leaf by its exact value. Answers false when it reaches the bound.
    [[gnu::noinline]] bool TakeExactly(const SearchBoard<Set>& board, const Step& way, Set dead,
                                       bool isEnd, double bound, BestLeaf<Set>& leaf) {
        SettleLeaf(board, leaf);
        const bool goesOn = leaf.Best.Take(-StaticValueBehind(board, way, dead, isEnd), way, bound);
        Locate(leaf);
        return goesOn;
    }

    // Notes where the value of the best leaf lies, from the value itself.
    void Locate(BestLeaf<Set>& leaf) {
        leaf.Low = Tables.Worths.RankOf(leaf.Best.Value) - 1;
        leaf.High = leaf.Low + 2;
    }

    void SettleLeaf(const SearchBoard<Set>& board, BestLeaf<Set>& leaf) {
        if (!leaf.HasValue) {
            leaf.Best.Value = -StaticValueBehind(board, leaf.Best.Way, leaf.Dead, false);
            leaf.HasValue = true;
        }
    }

    // A node of depth 0: its children are judged by their static values, one by one, so that a
    // cut-off saves the rest. Where the node's value for the side that moved into it is above
    // `enough`, that side needs to know no more: the value it gets may then be a trifle too low,
    // but still above `enough`.
    BestSoFar SearchLeaves(const SearchBoard<Set>& board, Worth sum, double bound, double enough) {
        BestLeaf<Set> leaf;
        Locate(leaf);
        const Rank margin = Tables.Worths.Margin;
        const Rank boundRank = Tables.Worths.RankOf(bound);
        const int opponent = OtherColor(board.ActivePlayer);
        const bool hasChance = HasChance();
        int numLeaves = 0;
        bool isExact = true;
        ForEachMove(board, sum, [&](const Landing<Set>& landing, const Step& way) {
            ++numLeaves;
            const bool isEnd = !CanMove(landing.Sum);
            if (!isEnd && !hasChance) {
                isExact = false;
                const Rank rank = RankAgainst(landing.Sum, opponent);
                if (rank + margin <= leaf.Low) {
                    return true;  // no better than the best
                }
                if (rank - margin >= boundRank) {
                    leaf.Best.IsCutOff = true;
                    return false;
                }
                if (rank - margin > leaf.High && rank + margin < boundRank) {
                    leaf.TakeRoughly(rank, margin, way, landing.Dead);
                    return true;
                }
            }
            isExact = isExact && isEnd;
            return TakeExactly(board, way, landing.Dead, isEnd, bound, leaf);
        });
        leaf.Best.HasMove = numLeaves > 0;
        NumEvaluations += numLeaves;
        IsExact = IsExact && isExact;
        if (leaf.Best.IsCutOff) {
            return leaf.Best;
        }
        if (!leaf.HasValue && -leaf.High > Tables.Worths.RankOf(enough)) {
            leaf.Best.Value = static_cast<double>(leaf.High) / Tables.Worths.Scale;
            return leaf.Best;
        }
        SettleLeaf(board, leaf);
        return leaf.Best;
    }

    void SettleChild(const SearchBoard<Set>& board, Child<Set>& child) {
        if (!child.HasValue) {
            child.Value = StaticValueBehind(board, child.Way, child.Dead, !CanMove(child.Sum));
            child.HasValue = true;
        }
    }

    // Makes and counts every child of a node above the leaves. Answers their number.
    int ExpandNode(const SearchBoard<Set>& board, Worth sum, Level<Set>& level) {
        int count = 0;
        const int opponent = OtherColor(board.ActivePlayer);
        const bool hasChance = HasChance();
        ForEachMove(board, sum, [&](const Landing<Set>& landing, const Step& way) {
            Child<Set>& child = level.Children[count];
            child.Dead = landing.Dead;
            child.Sum = landing.Sum;
            child.Way = way;
            child.HasValue = false;
            child.Value = 0.0;
            level.Ranks[count] = RankAgainst(landing.Sum, opponent);
            if (hasChance || !CanMove(landing.Sum)) {
                SettleChild(board, child);
                level.Ranks[count] = Tables.Worths.RankOf(-child.Value);
            }
            ++count;
            return true;
        });
        NumEvaluations += count;
        return count;
    }

    // Whether the first of two children has the higher value.
    bool IsAbove(const SearchBoard<Set>& board, Level<Set>& level, int a, int b) {
        const Rank doubt = Tables.Worths.Doubt();
        const Rank lead = level.Ranks[b] - level.Ranks[a];
        if (lead > doubt || lead < -doubt) {
            return lead > 0;
        }
        Child<Set>& one = level.Children[a];
        Child<Set>& other = level.Children[b];
        SettleChild(board, one);
        SettleChild(board, other);
        return one.Value > other.Value;
    }

    // Finds the child that the order of the moves puts first. Most nodes are cut off by it, and
    // never need the others.
    int FindFirstChild(const SearchBoard<Set>& board, int count, Level<Set>& level) {
        Rank best = level.Ranks[0];
        for (int i = 1; i < count; ++i) {
            best = level.Ranks[i] > best ? level.Ranks[i] : best;
        }
        const Rank doubt = Tables.Worths.Doubt();
        int first = -1;
        for (int i = 0; i < count; ++i) {
            if (level.Ranks[i] >= best - doubt && (first < 0 || IsAbove(board, level, first, i))) {
                first = i;
            }
        }
        return first;
    }

    // Puts the children in the order in which they are searched.
    void SortChildren(const SearchBoard<Set>& board, int count, Level<Set>& level) {
        SortPositions(count, level.Order.data(),
                      [&](int a, int b) { return IsAbove(board, level, a, b); });
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
        Progress.BestMove = MoveOf(Tables.Shape, best.Way);
        Progress.BestValue = best.Value;
    }

    BestSoFar SearchChildren(const SearchBoard<Set>& board, int depth, double bound,
                             Level<Set>& level, int count) {
        const bool canBeCutOff = bound < HIGH_INIT_VALUE;
        BestSoFar best;
        for (int i = 0; i < count; ++i) {
            if (i == (canBeCutOff ? 1 : 0)) {
                SortChildren(board, count, level);
            } else if (i == 0) {
                level.Order[0] = FindFirstChild(board, count, level);
            }
            if (depth == RootDepth) {
                NoteProgress(best, i, count);
            }
            const Child<Set>& child = level.Children[level.Order[i]];
            double value = -child.Value;
            if (CanMove(child.Sum)) {
                const SearchBoard<Set> next =
                    MakeChild(Tables.Shape, board, child.Way.Source, child.Way.Target, child.Dead);
                value = depth == 1
                            ? SearchLeafNode(next, child.Sum, child.Value, -best.Value,
                                             RootDepth == 1 ? NEVER : bound)
                            : SearchNode(next, child.Sum, child.Value, depth - 1, -best.Value);
            }
            if (IsStopped || !best.Take(value, child.Way, bound)) {
                break;
            }
        }
        return best;
    }

    // A side without a move passes; behind it the search goes on with the open bound. With no depth
    // left, the static value of the position stands. The other side has a move then: positions in
    // which neither has one end the game, and are not searched.
    double SearchPass(const SearchBoard<Set>& board, Worth sum, double drawnValue, int depth) {
        if (depth == 0) {
            IsExact = false;
            return HasChance() ? -drawnValue : -StaticValue(board);
        }
        SearchBoard<Set> passed = board;
        passed.ActivePlayer = OtherColor(board.ActivePlayer);
        return -SearchNode(passed, sum, -drawnValue, depth - 1, HIGH_INIT_VALUE);
    }

    double SearchLeafNode(const SearchBoard<Set>& board, Worth sum, double drawnValue, double bound,
                          double enough) {
        const BestSoFar best = SearchLeaves(board, sum, bound, enough);
        return best.HasMove ? best.Result() : SearchPass(board, sum, drawnValue, 0);
    }

    BestSoFar SearchMoves(const SearchBoard<Set>& board, Worth sum, int depth, double bound) {
        if (depth == 0) {
            return SearchLeaves(board, sum, bound, NEVER);
        }
        if (LooksUp()) {
            return {};
        }
        Level<Set>& level = *Room.Levels[depth];
        const int count = ExpandNode(board, sum, level);
        return count == 0 ? BestSoFar{} : SearchChildren(board, depth, bound, level, count);
    }

    SearchOutcome SearchAnew(const SearchBoard<Set>& board, Worth sum, double drawnValue, int depth,
                             double bound) {
        const std::int64_t before = NumEvaluations;
        const BestSoFar best = SearchMoves(board, sum, depth, bound);
        if (IsStopped) {
            return {};
        }
        const double value =
            best.HasMove ? best.Result() : SearchPass(board, sum, drawnValue, depth);
        // A pass does not look at the bound: its outcome holds for all.
        return {.Value = value,
                .Above = best.Value,
                .UpTo = best.CutValue,
                .NumEvaluations = NumEvaluations - before};
    }

    // The value of a node for the side that moved into it, or LOW_INIT_VALUE when one of its moves
    // reached the bound. With chance at work, `drawnValue` is its static value.
    double SearchNode(const SearchBoard<Set>& board, Worth sum, double drawnValue, int depth,
                      double bound) {
        // A leaf's children are found sooner than the table's entry; and a random term makes every
        // visit of a node a different one.
        if (depth == 0) {
            return SearchLeafNode(board, sum, drawnValue, bound, NEVER);
        }
        if (HasChance()) {
            return SearchAnew(board, sum, drawnValue, depth, bound).Value;
        }
        const auto address = Room.Table.AddressOf(board, depth);
        const SearchOutcome* known = Room.Table.Find(address);
        if (known != nullptr && bound > known->Above && bound <= known->UpTo) {
            // A line that ended early was noted when this search found the outcome.
            NumEvaluations += known->NumEvaluations;
            return known->Value;
        }
        const SearchOutcome outcome = SearchAnew(board, sum, drawnValue, depth, bound);
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
    const Geometry<Set>& shape = CurrentGeometry<Set>();
    const SearchBoard<Set> board = ToSearchBoard(shape, position);
    const TallyWeights ordered = OrderWeights(weights);
    const Context<Set> context = {shape,
                                  MakeWorthTable(ordered, shape.NumSpaces, CountStones(board))};
    Search<Set> search = {context, workspace, ordered,        weights.Random,
                          depth,   watch,     PresentRandom()};
    const BestSoFar best =
        search.SearchMoves(board, WorthOfBoard(context, board), depth, HIGH_INIT_VALUE);
    result.Value = best.Result();
    result.BestValue = best.Value;
    result.CutValue = best.CutValue;
    result.WasCutOff = best.IsCutOff;
    result.HasMove = best.HasMove;
    result.WasStopped = search.IsStopped;
    result.BestMove = MoveOf(shape, best.Way);
    result.NumMoves = search.Progress.NumMoves;
    result.IsExact = search.IsExact && !search.IsStopped;
    result.NumEvaluations = search.NumEvaluations;
    return result;
}

}  // namespace

KernelResult SearchPosition(const Position& position, int depth, const EvalWeights& weights,
                            const SearchWatch* watch) {
    return IsSmallBoard() ? SearchOn<SmallSet>(position, depth, weights, watch)
                          : SearchOn<LargeSet>(position, depth, weights, watch);
}

}  // namespace TALUREX_KERNEL

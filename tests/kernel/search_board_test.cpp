// The compact board against the rules and the plain evaluation.
#include <cmath>
#include <limits>

#include <gtest/gtest.h>

#include "common/engine_games.h"
#include "kernel/lifting.h"
#include "kernel/tally_count.h"
#include "plain/plain_engine.h"

namespace {

Tallies PlainTallies(const Position& position) {
    const plain::Tallies plain = plain::CountTallies(position);
    Tallies tallies;
    int i = 0;
    for (int f = 0; f < 2; ++f) {
        for (int l = 0; l < 2; ++l) {
            tallies.Sums[i++] = plain.Towers[f][l];
            tallies.Sums[i++] = plain.Moves[f][l];
            tallies.Sums[i++] = plain.Score[f][l];
        }
        tallies.Sums[i++] = plain.MovesToLife[f];
        tallies.Sums[i++] = plain.MovesToEnemy[f];
    }
    Position other = position;
    other.ActivePlayer = OtherColor(position.ActivePlayer);
    tallies.Mobility = GetNumMoves(position) + GetNumMoves(other);
    return tallies;
}

// The worth by its meaning: a sum of tallies and rounded weights, and the mobility.
Worth PlainWorth(const Tallies& tallies, const TallyWeights& weights, const WorthTable& table) {
    Worth sum = 0;
    for (int i = 0; i < NUM_TALLIES; ++i) {
        EXPECT_NEAR(static_cast<double>(RoundedWeight(weights[i] * table.Scale)),
                    weights[i] * table.Scale, 0.500001);
        sum += tallies.Sums[i] * RoundedWeight(weights[i] * table.Scale);
    }
    return (sum << MOBILITY_BITS) + tallies.Mobility;
}

// Every child of a position, made by the compact board, is the child that the rules make; its
// worth, carried over, is that of its tallies, and near to its value.
template <typename Set>
void CompareChildren(const Position& position, const EvalWeights& weights) {
    const BoardShape<Set>& shape = CurrentShape<Set>();
    const SearchBoard<Set> board = ToSearchBoard(shape, position);
    ASSERT_EQ(CountTallies(shape, board, true), PlainTallies(position))
        << WriteBoardText("parent", position);
    const TallyWeights ordered = OrderWeights(weights);
    int stones = 0;
    for (const int height : board.Height) {
        stones += height;
    }
    const BoardTables<Set> tables = {shape, MakeWorthTable(ordered, shape.NumSpaces, stones)};
    const WorthTable& worths = tables.Worths;
    const Worth worth = WorthOfBoard(tables, board);
    ASSERT_EQ(worth, PlainWorth(PlainTallies(position), ordered, worths));

    MoveArray moves;
    const int numMoves = GetPossibleMoves(position, moves);
    for (int i = 0; i < numMoves; ++i) {
        int source = 0;
        while (shape.Spots[source].Column != moves[i].Column ||
               shape.Spots[source].Row != moves[i].Row) {
            ++source;
        }
        const int row = ReachRow(board.Height[source]);
        const int target = shape.Spots[source].Target[row][moves[i].Direction];
        Position child;
        DoMove(position, moves[i], child);
        LiftedBoard<Set> lifted;
        LiftTower(tables, board, GroupTowers(board, board.Enclosed), worth, source, lifted);
        const Landing<Set> landing = PutDown(tables, board, lifted, target);
        ASSERT_EQ(MakeChild(shape, board, source, target, landing.Dead),
                  ToSearchBoard(shape, child))
            << WriteBoardText("parent", position) << " move " << i;
        const Tallies tallies = PlainTallies(child);
        ASSERT_EQ(landing.WorthBehind, PlainWorth(tallies, ordered, worths))
            << WriteBoardText("parent", position) << " move " << i;
        ASSERT_EQ(CanMove(landing.WorthBehind), tallies.Mobility != 0);
        const double value = WeightedSum(tallies, ordered) * worths.Scale;
        ASSERT_LT(std::fabs(value - static_cast<double>(RankAgainst(landing.WorthBehind, BLACK))),
                  static_cast<double>(worths.Margin));
    }
}

TEST(SearchBoard, ChildrenAndWorthsAreThoseOfTheRules) {
    std::mt19937 random(1);
    for (int game = 0; game < 60; ++game) {
        const Position start = RandomStart(random, game);
        const EvalWeights weights = SomeWeights(random, game);
        WalkGame(random, start, [&](const Position& position) {
            if (IsSmallBoard()) {
                CompareChildren<SmallSet>(position, weights);
            }
            CompareChildren<LargeSet>(position, weights);
        });
        ASSERT_FALSE(HasFatalFailure()) << "game " << game;
    }
}

// Weights so large or so small that a careless unit would not do.
TEST(Worth, AnyWeightsHaveAUnit) {
    for (const double weight : {0.0, 5e-324, 1e-200, 0.3, 448000.0, 1e12}) {
        TallyWeights weights{};
        weights[TALLY_MOVES] = weight;
        weights[TALLY_STONES] = -weight / 3;
        const WorthTable table = MakeWorthTable(weights, MAX_BOARD_SPACES, 255 * MAX_BOARD_SPACES);
        EXPECT_GT(table.Scale, 0.0);
        EXPECT_LT(std::fabs(weight) * table.Scale, 0x1p32);
        EXPECT_LE(std::abs(table.RankOf(std::numeric_limits<double>::infinity())), Rank{1} << 60);
        EXPECT_LT(table.RankOf(-999999999.0), table.RankOf(999999999.0));
    }
}

TEST(SearchBoard, EveryBoardFitsOneOfTheSets) {
    for (int columns = 1; columns <= MAX_BOARD_X_DIM; ++columns) {
        for (int rows = 1; rows <= MAX_BOARD_Y_DIM; ++rows) {
            UseBoard(columns, rows);
            const int most = IsSmallBoard() ? BoardShape<SmallSet>::MAX_SPACES
                                            : BoardShape<LargeSet>::MAX_SPACES;
            EXPECT_LT(NumBoardSpaces(), most);  // one bit stays free for "off the board"
        }
    }
    UseBoard(14, 5);  // 64 spaces: one too many for a single word
    EXPECT_FALSE(IsSmallBoard());
}

}  // namespace

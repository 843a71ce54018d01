// The compact board against the rules and the plain evaluation.
#include <gtest/gtest.h>

#include "common/engine_games.h"
#include "kernel/lifting.h"
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

// Every child of a position, made by the compact board, is the child that the rules make; and the
// tallies carried over are those counted from nothing.
template <typename Set>
void CompareChildren(const Position& position) {
    const Geometry<Set>& shape = CurrentGeometry<Set>();
    const SearchBoard<Set> board = ToSearchBoard(shape, position);
    const Tallies tallies = CountTallies(shape, ViewOf(board, true), board.Height);
    ASSERT_EQ(tallies, PlainTallies(position)) << WriteBoardText("parent", position);

    MoveArray moves;
    const int numMoves = GetPossibleMoves(position, moves);
    for (int i = 0; i < numMoves; ++i) {
        int source = 0;
        while (shape.Column[source] != moves[i].Column || shape.Row[source] != moves[i].Row) {
            ++source;
        }
        const int row = ReachRow(board.Height[source]);
        const int target = shape.Target[source][row][moves[i].Direction];
        Position child;
        DoMove(position, moves[i], child);
        const LiftedBoard<Set> lifted = LiftTower(shape, board, tallies, source, true);
        ASSERT_EQ(MakeChild(shape, board, source, target, DeadAfter(lifted, target)),
                  ToSearchBoard(shape, child))
            << WriteBoardText("parent", position) << " move " << i;
        ASSERT_EQ(TalliesAfter(shape, board, lifted, source, target, true), PlainTallies(child))
            << WriteBoardText("parent", position) << " move " << i;
    }
}

TEST(SearchBoard, ChildrenAndTalliesAreThoseOfTheRules) {
    std::mt19937 random(1);
    for (int game = 0; game < 60; ++game) {
        WalkGame(random, RandomStart(random, game), [](const Position& position) {
            if (IsSmallBoard()) {
                CompareChildren<SmallSet>(position);
            }
            CompareChildren<LargeSet>(position);
        });
        ASSERT_FALSE(HasFatalFailure()) << "game " << game;
    }
}

TEST(SearchBoard, EveryBoardFitsOneOfTheSets) {
    for (int columns = 1; columns <= MAX_BOARD_X_DIM; ++columns) {
        for (int rows = 1; rows <= MAX_BOARD_Y_DIM; ++rows) {
            UseBoard(columns, rows);
            const int most =
                IsSmallBoard() ? Geometry<SmallSet>::MAX_SPACES : Geometry<LargeSet>::MAX_SPACES;
            EXPECT_LT(NumBoardSpaces(), most);  // one bit stays free for "off the board"
        }
    }
    UseBoard(14, 5);  // 64 spaces: one too many for a single word
    EXPECT_FALSE(IsSmallBoard());
}

}  // namespace

// Which groups a move removes. In a game only a group that a move cuts off is dead; a file can
// hold boards on which others are, and then it matters which groups are looked at, and in which
// order. Every case is worked by hand.
#include <gtest/gtest.h>

#include "common/board_text.h"
#include "rules/notation.h"

namespace {

struct Case {
    const char* Before;
    const char* Move;
    const char* After;
};

void Check(std::initializer_list<Case> cases) {
    for (const Case& example : cases) {
        const BoardText before = ReadBoardText(example.Before);
        const BoardText after = ReadBoardText(example.After);
        UseBoard(before);
        Move move;
        int distance = 0;
        ASSERT_EQ(GetPlayerMove(example.Move, Notation::TowerMove, move, distance), 0);
        Position child;
        DoMove(before.Board, move, child);
        EXPECT_EQ(WriteBoardText(before.Name, child), WriteBoardText(before.Name, after.Board));
    }
}

}  // namespace

TEST(LifeRule, InAGame) {
    Check({
        // The middle of a line leaves: the right part is dead, the left one keeps the life stone.
        {"split 7 1 white : r b1 w1 b1 b1 . .", "C1-B1", "- 7 1 black : r w2 . . . . ."},
        // A life stone leaves along a line of towers: all hold together.
        {"along 7 1 white : w2* b1 b1 w1 . . .", "A1-C1", "- 7 1 black : . b1 w3* w1 . . ."},
        // Behind it, though, a tower is left alone.
        {"behind 7 1 white : b1 w2* b1 b1 w1 . .", "B1-D1", "- 7 1 black : . . b1 w3* w1 . ."},
        // The life stone jumps over a gap: both sides of its source are dead, and both are removed.
        {"jump 9 1 white : b1 w4* b1 . . b1 w1 . .", "B1-F1", "- 9 1 black : . . . . . w5* w1 . ."},
        {"gap 6 1 white : w3* b1 . w1 . .", "A1-D1", "- 6 1 black : . . . w4* . ."},
        // The same gap, but what is left behind has a life stone of its own.
        {"alive 8 1 white : r b1 w3* . . b1 w1 .", "C1-F1", "- 8 1 black : r b1 . . . w4* w1 ."},
        // Three groups round D4: E5 and D3 are dead, and C4 lives by the stone on B4.
        {"three 7 5 white : - - . . b1 . .; - r b1 w1 . . .; . . . b1 . . .; . . . b1 . . -; "
         ". . . . . - -",
         "D4-C4",
         "- 7 5 black : - - . . . . .; - r w2 . . . .; . . . . . . .; . . . . . . -; . . . . . - "
         "-"},
    });
}

TEST(LifeRule, GroupsThatWereDeadBefore) {
    Check({
        // Nobody looks at groups that do not touch the source.
        {"far 9 1 white : r w1 b1 . b1 . w1 b1 .", "B1-A1", "- 9 1 black : w2* . . . b1 . w1 b1 ."},
        // A single group is never looked at when no life stone leaves.
        {"single 7 1 white : w1 b1 . . r . .", "A1-B1", "- 7 1 black : . w2 . . r . ."},
        // Of two groups the outer one is removed, and the last one stays: here the moved tower...
        {"outer-left 9 1 white : w1 w1 b1 . . . . . r", "B1-C1",
         "- 9 1 black : . . w2 . . . . . r"},
        // ...and here it is the moved tower that goes.
        {"outer-right 9 1 white : r . . . . . w1 w1 b1", "H1-I1",
         "- 9 1 black : r . . . . . w1 . ."},
        // Of two equally far from the centre the first on the walk round the source, D1, goes.
        {"equal 9 1 white : . r . w1 w1 b1 . . .", "E1-F1", "- 9 1 black : . r . . . w2 . . ."},
        // With an even number of columns D is the centre of six.
        {"even 6 1 white : r . w1 w1 b1 .", "D1-E1", "- 6 1 black : r . . . w2 ."},
    });
}

// The order is no sorting by distance. Found in the order D3, C4, E5 at the distances 0, 2, 3, each
// displaces the one before it, and the order becomes E5, D3, C4: C4 is the last and stays, although
// D3 is nearer to the centre.
TEST(LifeRule, DisplacedGroupsMoveBack) {
    Check({{"displaced 7 5 white : - - . . b1 . .; - . b1 w1 . . .; r . . b1 . . .; . . . . . . -; "
            ". . . . . - -",
            "D4-D3",
            "- 7 5 black : - - . . . . .; - . b1 . . . .; r . . . . . .; . . . . . . -; "
            ". . . . . - -"}});
}

// E5 and D3 are one group, by a way round E4. It is removed when E5 is looked at, and counts once
// more when D3 is, so that C4 stays.
TEST(LifeRule, AGroupMayCountTwice) {
    Check({{"twice 7 5 white : - - . . b1 b1 .; - . b1 w1 . b1 .; r . . b1 b1 . .; . . . . . . -; "
            ". . . . . - -",
            "D4-C4",
            "- 7 5 black : - - . . . . .; - . w2 . . . .; r . . . . . .; . . . . . . -; "
            ". . . . . - -"}});
}

TEST(LifeRule, ItsPartsAtTheirEdges) {
    const BoardText board = ReadBoardText("edges 7 1 white : r . w1 b1 w2 . b3*");
    UseBoard(board);
    // An empty space is entered like any other, and its neighbours are looked at.
    EXPECT_TRUE(TestOfLife(board.Board, 1, 0));
    EXPECT_FALSE(TestOfLife(board.Board, 3, 0));
    EXPECT_TRUE(TestOfLife(board.Board, 5, 0));
    // The ends of a line do not belong to it; a step of one has nothing in between.
    const Move left = {.Kind = MOVE_TOWER, .Column = 5, .Row = 0, .Direction = 3};
    EXPECT_TRUE(CheckDirectConnection(board.Board, left, 4));
    EXPECT_FALSE(CheckDirectConnection(board.Board, left, 5));
    const Move right = {.Kind = MOVE_TOWER, .Column = 4, .Row = 0, .Direction = 0};
    EXPECT_TRUE(CheckDirectConnection(board.Board, right, 1));
    EXPECT_FALSE(CheckDirectConnection(board.Board, right, 2));
    // Removing leaves the mark of the life stone.
    Position position = board.Board;
    KillDeathGroup(position, 6, 0);
    EXPECT_EQ(position.Spaces[6][0], (Space{.Height = 0, .Life = 1, .Owner = EMPTY}));
}

#include "rules/moves.h"

#include <gtest/gtest.h>

#include "common/board_text.h"
#include "common/captured.h"
#include "rules/game_record.h"
#include "rules/notation.h"

namespace {

std::string MoveList(const BoardText& board) {
    UseBoard(board);
    MoveArray moves;
    const int count = GetPossibleMoves(board.Board, moves);
    std::string text;
    for (int i = 0; i < count; ++i) {
        text += GetMoveString(moves[i], board.Board) + " ";
    }
    return text;
}

}  // namespace

// By rows from the top, columns from the left, directions right, down, down left, left, up, up
// right.
TEST(Moves, AreListedInOneOrder) {
    EXPECT_EQ(MoveList(ReadBoardText("order 5 3 white : - . b1 b1 .; . w1 w1 b1 r; w1 b1 . w2 -")),
              "B2-C2 B2-B1 B2-A1 B2-C3 "
              "C2-D2 C2-B1 C2-B2 C2-C3 C2-D3 "
              "A1-B1 A1-B2 "
              "D1-B1 D1-D3 ");
}

// What a tower can land on: life stones, both colours; never a gap, the corner cut off, or nothing.
TEST(Moves, LandOnWhateverIsThere) {
    EXPECT_EQ(MoveList(ReadBoardText("targets 7 1 white : w3 . . r . w2 b1")), "A1-D1 F1-D1 ");
    EXPECT_EQ(MoveList(ReadBoardText("targets 7 1 black : w3 . . r . w2 b1")), "G1-F1 ");
    EXPECT_EQ(MoveList(ReadBoardText("corner 3 3 white : - . w2; w1 . .; . . -")), "");
}

TEST(Moves, StackTheTowers) {
    UseBoard(6, 1);
    Position child;
    DoMove(ReadBoardText("stack 6 1 black : b1 w2 . r . .").Board,
           {.Kind = MOVE_TOWER, .Column = 0, .Row = 0, .Direction = 0}, child);
    EXPECT_EQ(child.Spaces[1][0], (Space{.Height = 3, .Life = 0, .Owner = BLACK}));

    // A life stone stays in the tower, whichever of the two had it.
    for (const char* line :
         {"stack 6 1 black : b1 r . . . .", "stack 6 1 black : b1* w1 . . . ."}) {
        DoMove(ReadBoardText(line).Board,
               {.Kind = MOVE_TOWER, .Column = 0, .Row = 0, .Direction = 0}, child);
        EXPECT_EQ(child.Spaces[1][0], (Space{.Height = 2, .Life = 1, .Owner = BLACK}));
    }
}

// Behind a move or a pass the other side sees the value the other way round; a zero changes its
// sign as well. The flags of the search travel along.
TEST(Moves, TurnTheValueRound) {
    const BoardText board = ReadBoardText("value 3 1 white : w1 r b1");
    UseBoard(board);
    const Move move = {.Kind = MOVE_TOWER, .Column = 0, .Row = 0, .Direction = 0};
    for (const double value : {0.0, 3.25}) {
        Position parent = board.Board;
        parent.Value = value;
        parent.ExactValue = 1;
        parent.EndPosition = 1;
        Position expected = parent;
        expected.Value = -value;
        expected.ActivePlayer = BLACK;
        Position child;
        DoPass(parent, child);
        EXPECT_TRUE(SamePosition(child, expected));
        DoMove(parent, move, child);
        expected.Spaces = child.Spaces;
        EXPECT_TRUE(SamePosition(child, expected));
    }
}

TEST(Moves, AreEmptySpacesWhileStonesArePlaced) {
    UseBoard(11, 5);
    Position position;
    position.SetupPhase = 1;
    for (auto& column : position.Spaces) {
        column.fill({.Height = 0, .Life = 0, .Owner = EMPTY});
    }
    EXPECT_EQ(GetNumMoves(position), 49);
    position.Spaces[5][2] = {.Height = 1, .Life = 0, .Owner = BLACK};
    EXPECT_EQ(GetNumMoves(position), 48);
}

TEST(GameRecord, HasRoomForAllButTheLastEntry) {
    EXPECT_TRUE(RecordHasRoom(0));
    EXPECT_TRUE(RecordHasRoom(GAME_RECORD_SIZE - 2));
    EXPECT_EQ(StdoutOf([] { EXPECT_FALSE(RecordHasRoom(GAME_RECORD_SIZE - 1)); }),
              "Error: Game record is full!\n");
}

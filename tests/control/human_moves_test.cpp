#include "control/human_moves.h"

#include <gtest/gtest.h>

#include "common/board_text.h"
#include "common/captured.h"
#include "rules/setup.h"

namespace {

// Plays `line` and answers what was said, with a '+' in front when it was carried out. Otherwise
// nothing may have changed.
std::string Play(const Position& position, std::string_view line, Position& next, Move& move) {
    const Position nextBefore = next;
    const Move moveBefore = move;
    int result = 0;
    const std::string said = StdoutOf([&] { result = DoPlayerMove(line, position, next, move); });
    if (result != 0) {
        EXPECT_TRUE(SamePosition(next, nextBefore));
        EXPECT_EQ(move, moveBefore);
        return said;
    }
    return '+' + said;
}

}  // namespace

TEST(HumanMoves, PlacementsAndTowerMoves) {
    const BoardText board = ReadBoardText("moves 4 1 white : w1 b1 r .");
    UseBoard(board);
    Position next;
    Move move;
    EXPECT_EQ(Play(board.Board, "a1-c1", next, move),
              "Error: Move distance is 2, but must be 1 !\n");
    EXPECT_EQ(Play(board.Board, "a1", next, move), "Error: Incomplete Input!\n");
    EXPECT_EQ(Play(board.Board, "a1-b1", next, move), "+");
    EXPECT_EQ(WriteBoardText("moves", next), "moves 4 1 black : . w2 r .");
    EXPECT_EQ(move, (Move{.Kind = MOVE_TOWER, .Column = 0, .Row = 0, .Direction = 0}));

    Position start;
    GenerateEmptyStartPosition(start);
    EXPECT_EQ(Play(start, "e1", next, move),
              "Error: Column letter ('E') of source tower is not valid! (Range: A-D)\n");
    EXPECT_EQ(Play(start, "d1-a1", next, move), "+");
    EXPECT_EQ(move, (Move{.Kind = MOVE_SETUP, .Column = 3, .Row = 0}));
    EXPECT_EQ(next.Spaces[3][0], SingleStone(LIFE));
    start = next;
    EXPECT_EQ(Play(start, "d1", next, move), "Error: Move source is already occupied!\n");
}

TEST(HumanMoves, PassWithoutAMoveOnly) {
    BoardText board = ReadBoardText("pass 6 1 white : w4 . r b1 . .");
    UseBoard(board);
    board.Board.Value = 1.5;
    Position next;
    Move move = {.Kind = MOVE_SETUP, .Column = 3, .Row = 4, .Direction = 5};
    EXPECT_EQ(Play(board.Board, "a1-c1", next, move),
              "No more moves, press <return> or type \"pass\" to pass.\n");
    for (const char* line : {"", "p", "Pa", "pASs", "PASS", "passing", "pass a1"}) {
        EXPECT_EQ(Play(board.Board, line, next, move), "+No move, PASSING\n") << line;
        EXPECT_EQ(move, (Move{.Kind = MOVE_PASS, .Column = 3, .Row = 4, .Direction = 5}));
        Position expected = board.Board;
        expected.ActivePlayer = BLACK;
        expected.Value = -1.5;
        EXPECT_TRUE(SamePosition(next, expected));
    }
    for (const char* line : {"x", "pas s", "pax", "nope", "-"}) {
        EXPECT_EQ(Play(board.Board, line, next, move),
                  "No more moves, press <return> or type \"pass\" to pass.\n")
            << line;
    }
    board.Board.ActivePlayer = BLACK;
    EXPECT_EQ(Play(board.Board, "pass", next, move),
              "Error: Column letter ('P') of source tower is not valid! (Range: A-F)\n");
    EXPECT_EQ(Play(board.Board, "", next, move), "Error: Incomplete Input!\n");
}

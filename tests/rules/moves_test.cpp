#include "rules/moves.h"

#include <gtest/gtest.h>

#include "common/board_text.h"
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

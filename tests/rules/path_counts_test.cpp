#include <algorithm>
#include <sstream>

#include <gtest/gtest.h>

#include "common/board_text.h"
#include "common/captured.h"
#include "rules/notation.h"
#include "rules/plain_rules.h"
#include "rules/referee.h"

namespace {

std::vector<BoardText> PathCountBoards() {
    return ReadBoardFile(TALUREX_TESTS "/rules/path_counts.txt");
}

bool CanMove(Position position, int side) {
    position.ActivePlayer = side;
    return GetNumMoves(position) != 0;
}

// What a person would type for the move leads back to it, and the referee lets it pass.
void CheckNotation(const Position& position, const Move& move) {
    const std::string text = GetMoveString(move, position);
    Move read;
    int distance = 0;
    ASSERT_EQ(GetPlayerMove(text, Notation::TowerMove, read, distance), 0) << text;
    read.Kind = move.Kind;
    EXPECT_EQ(read, move) << text;
    EXPECT_TRUE(MoveIsOk(position, read, distance)) << text;
}

// Counts the ways of `depth` plies, and looks at every position on the way from all sides.
long CountPaths(const Position& position, int depth) {
    if (depth == 0) {
        return 1;
    }
    MoveArray moves;
    const int count = GetPossibleMoves(position, moves);
    EXPECT_EQ(GetNumMoves(position), count);
    EXPECT_EQ(IsEndPosition(position), !CanMove(position, WHITE) && !CanMove(position, BLACK));
    if (IsEndPosition(position)) {
        return 0;
    }
    Position child;
    if (count == 0) {
        DoPass(position, child);
        return CountPaths(child, depth - 1);
    }
    long paths = 0;
    for (int i = 0; i < count; ++i) {
        CheckNotation(position, moves[i]);
        DoMove(position, moves[i], child);
        paths += CountPaths(child, depth - 1);
    }
    return paths;
}

long CountPlainPaths(const PlainBoard& board, int side, int depth) {
    if (depth == 0) {
        return 1;
    }
    const std::vector<PlainMove> moves = PlainMoves(board, side);
    if (moves.empty()) {
        const bool over = PlainMoves(board, OtherColor(side)).empty();
        return over ? 0 : CountPlainPaths(board, OtherColor(side), depth - 1);
    }
    long paths = 0;
    for (const PlainMove& move : moves) {
        paths += CountPlainPaths(PlainAfter(board, move), OtherColor(side), depth - 1);
    }
    return paths;
}

}  // namespace

TEST(PathCounts, AreThoseOfTheFile) {
    for (const BoardText& board : PathCountBoards()) {
        UseBoard(board);
        std::istringstream counts(board.Rest);
        int depth = 0;
        for (long paths = 0; counts >> paths;) {
            EXPECT_EQ(CountPaths(board.Board, ++depth), paths) << board.Name << " depth " << depth;
        }
        EXPECT_GT(depth, 0) << board.Name;
    }
}

// The slow way, as deep as it gets in the time of a few thousand moves.
TEST(PathCounts, AreThoseOfThePlainRules) {
    for (const BoardText& board : PathCountBoards()) {
        UseBoard(board);
        std::istringstream counts(board.Rest);
        int depth = 0;
        for (long paths = 0; counts >> paths && paths < 1200;) {
            EXPECT_EQ(CountPlainPaths(PlainBoardOf(board.Board), board.Board.ActivePlayer, ++depth),
                      paths)
                << board.Name << " depth " << depth;
        }
    }
}

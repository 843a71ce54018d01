#include "rules/board.h"

#include <array>
#include <numeric>

#include <gtest/gtest.h>

#include "common/board_text.h"
#include "rules/position.h"

namespace {

// The number of board spaces of each row, from the top.
std::vector<int> RowLengths(int columns, int rows) {
    UseBoard(columns, rows);
    std::vector<int> lengths;
    for (int y = 0; y < rows; ++y) {
        int length = 0;
        for (int x = -3; x < columns + 3; ++x) {
            length += IsOnBoard(x, y) ? 1 : 0;
        }
        lengths.push_back(length);
    }
    return lengths;
}

}  // namespace

// Counted on drawings.
TEST(Board, HasTheShapeOfAHexagon) {
    EXPECT_EQ(RowLengths(11, 5), (std::vector{9, 10, 11, 10, 9}));
    EXPECT_EQ(RowLengths(15, 9), (std::vector{11, 12, 13, 14, 15, 14, 13, 12, 11}));
    EXPECT_EQ(RowLengths(4, 1), (std::vector{4}));
    EXPECT_EQ(RowLengths(4, 2), (std::vector{4, 4}));
    EXPECT_EQ(RowLengths(8, 4), (std::vector{7, 8, 8, 7}));
    EXPECT_EQ(RowLengths(6, 6), (std::vector{4, 5, 6, 6, 5, 4}));
    EXPECT_EQ(RowLengths(5, 8), (std::vector{2, 3, 4, 5, 5, 4, 3, 2}));
    // Narrower than its corners.
    EXPECT_EQ(RowLengths(1, 5), (std::vector{0, 0, 1, 0, 0}));
    EXPECT_EQ(RowLengths(2, 9), (std::vector{0, 0, 0, 1, 2, 1, 0, 0, 0}));
    EXPECT_EQ(RowLengths(3, 8), (std::vector{0, 1, 2, 3, 3, 2, 1, 0}));
}

TEST(Board, CutsTheTopLeftAndTheBottomRightCorner) {
    UseBoard(11, 5);
    for (const auto& [x, y] : {Place{0, 0}, {1, 0}, {0, 1}, {10, 4}, {9, 4}, {10, 3}}) {
        EXPECT_FALSE(IsOnBoard(x, y)) << x << ' ' << y;
        EXPECT_TRUE(IsInRectangle(x, y));
    }
    for (const auto& [x, y] : {Place{2, 0}, {0, 2}, {10, 0}, {8, 4}, {1, 1}, {9, 3}, {0, 4}}) {
        EXPECT_TRUE(IsOnBoard(x, y)) << x << ' ' << y;
    }
    UseBoard(8, 4);
    EXPECT_FALSE(IsOnBoard(0, 0));
    EXPECT_FALSE(IsOnBoard(7, 3));
    EXPECT_TRUE(IsOnBoard(0, 1));
    EXPECT_TRUE(IsOnBoard(7, 2));
}

// Rows given as ranges of columns are the same board.
TEST(Board, RangesAndCountsAgreeWithTheShape) {
    int largest = 0;
    for (int columns = 1; columns <= MAX_BOARD_X_DIM; ++columns) {
        for (int rows = 1; rows <= MAX_BOARD_Y_DIM; ++rows) {
            const std::vector<int> lengths = RowLengths(columns, rows);
            const int spaces = std::accumulate(lengths.begin(), lengths.end(), 0);
            EXPECT_EQ(NumBoardSpaces(), spaces) << columns << " by " << rows;
            largest = std::max(largest, spaces);
            for (int y = 0; y < rows; ++y) {
                const ColumnRange range = BoardColumns(y);
                for (int x = -2; x < columns + 2; ++x) {
                    EXPECT_EQ(IsOnBoard(x, y), range.First <= x && x < range.End)
                        << columns << " by " << rows << ": " << x << ' ' << y;
                }
            }
        }
    }
    EXPECT_EQ(largest, MAX_BOARD_SPACES);
}

TEST(Board, DirectionsGoOnceRoundASpace) {
    for (int d = 0; d < NUM_DIRECTIONS; ++d) {
        const int dx = xF[d + 1] - xF[d];
        const int dy = yF[d + 1] - yF[d];
        EXPECT_GE(DirectionOfSigns(dx, dy), 0) << "neighbours " << d << " and the next";
        const int opposite = (d + 3) % NUM_DIRECTIONS;
        EXPECT_EQ(xF[d] + xF[opposite], 0);
        EXPECT_EQ(yF[d] + yF[opposite], 0);
    }
    EXPECT_EQ(xF[0], 1);
    EXPECT_EQ(yF[1], 1);
    EXPECT_EQ(DirectionOfSigns(1, 1), -1);
    EXPECT_EQ(DirectionOfSigns(0, 0), -1);
}

TEST(Board, LinesFollowTheDirections) {
    struct Case {
        int Dx, Dy, Direction, Distance;
    };
    for (const Case& way : {Case{5, 0, 0, 5},
                            {0, 8, 1, 8},
                            {-3, 3, 2, 3},
                            {-1, 0, 3, 1},
                            {0, -2, 4, 2},
                            {4, -4, 5, 4}}) {
        Line line;
        ASSERT_TRUE(FindLine(way.Dx, way.Dy, line)) << way.Dx << ' ' << way.Dy;
        EXPECT_EQ(line.Direction, way.Direction);
        EXPECT_EQ(line.Distance, way.Distance);
    }
    for (const auto& [dx, dy] : {std::pair{0, 0}, {1, 1}, {-2, -2}, {2, -1}, {-1, 2}, {5, -4}}) {
        Line line;
        EXPECT_FALSE(FindLine(dx, dy, line)) << dx << ' ' << dy;
    }
}

TEST(Board, CenterDistanceIsASumOfTwo) {
    UseBoard(11, 5);
    EXPECT_EQ(CenterDistance(5, 2), 0);
    EXPECT_EQ(CenterDistance(0, 2), 5);
    EXPECT_EQ(CenterDistance(10, 2), 5);
    EXPECT_EQ(CenterDistance(4, 3), 2);  // one step, but one column and one row
    UseBoard(8, 4);
    EXPECT_EQ(CenterDistance(4, 2), 0);
    EXPECT_EQ(CenterDistance(0, 0), 6);
    EXPECT_EQ(CenterDistance(7, 3), 4);
}

TEST(Position, TowersOnTheEdgeOrWithAGapAreFree) {
    const BoardText board = ReadBoardText(
        "free 5 5 white : - - b1 b1 b1; - b1 w1 b1 b1; b1 b1 . w1 w1; b1 w1 b1 b1 -; b1 b1 b1 - -");
    UseBoard(board);
    EXPECT_TRUE(IsFree(board.Board, 2, 1));  // one empty neighbour
    EXPECT_TRUE(IsFree(board.Board, 4, 2));  // the last column
    EXPECT_TRUE(IsFree(board.Board, 1, 1));  // a slanted edge
    EXPECT_TRUE(IsFree(board.Board, 2, 0));  // the top row
    Position full = board.Board;
    full.Spaces[2][2] = full.Spaces[2][1];
    EXPECT_FALSE(IsFree(full, 2, 1));
    EXPECT_FALSE(IsFree(full, 2, 2));
    EXPECT_TRUE(IsFree(full, 1, 1));
}

TEST(Position, NothingIsOccupiedOutside) {
    UseBoard(5, 3);
    Position position;  // every owner is WHITE, outside the rectangle as well
    EXPECT_TRUE(IsOccupied(position, 4, 2));
    for (const auto& [x, y] :
         {Place{-1, 0}, {0, -1}, {5, 0}, {0, 3}, {-100, 7}, {14, 8}, {99, 99}}) {
        EXPECT_FALSE(IsOccupied(position, x, y)) << x << ' ' << y;
    }
}

TEST(Position, SameMeansToTheLastBit) {
    Position position;
    Position other = position;
    EXPECT_TRUE(SamePosition(position, other));
    other.Value = -0.0;
    EXPECT_FALSE(SamePosition(position, other));
    other = position;
    other.Spaces[14][8].Life = 1;
    EXPECT_FALSE(SamePosition(position, other));
}

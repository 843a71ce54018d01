#include "rules/setup.h"

#include <algorithm>
#include <array>

#include <gtest/gtest.h>

#include "common/board_text.h"
#include "rules/referee.h"
#include "support/numbers.h"

namespace {

using Counts = std::array<int, 4>;  // spaces by owner: WHITE, BLACK, LIFE, EMPTY

Counts CountOwners(const Position& position) {
    Counts counts{};
    for (int x = 0; x < GlobCfg.BoardXDim; ++x) {
        for (int y = 0; y < GlobCfg.BoardYDim; ++y) {
            if (IsOnBoard(x, y)) {
                ++counts[position.Spaces[x][y].Owner];
            }
        }
    }
    return counts;
}

// Fills the board by placements, from the top left on, and answers which stones came in which
// order: a letter each, followed by "w" or "b" for the side that moves behind the last one.
std::string PlaceAll(Position& position) {
    std::string stones;
    GenerateEmptyStartPosition(position);
    for (int y = 0; y < GlobCfg.BoardYDim; ++y) {
        for (int x = 0; x < GlobCfg.BoardXDim; ++x) {
            if (IsOnBoard(x, y)) {
                const Position parent = position;
                EXPECT_NE(parent.SetupPhase, 0);
                DoSetupMove(parent, {.Kind = MOVE_SETUP, .Column = x, .Row = y}, position);
                stones += "wbr"[position.Spaces[x][y].Owner];
            }
        }
    }
    return stones + ':' + "wb"[position.ActivePlayer];
}

Counts RandomCounts(int columns, int rows, int lifeStones, int whiteStones) {
    UseBoard(columns, rows);
    GlobCfg.NumLifeStones = lifeStones;
    GlobCfg.NumWhiteStones = whiteStones;
    Position position;
    position.SetupPhase = 5;
    position.ActivePlayer = BLACK;
    position.Value = 7.0;
    GenerateRandomStartPosition(position);
    EXPECT_EQ(position.SetupPhase, 0);
    EXPECT_EQ(position.ActivePlayer, WHITE);
    EXPECT_EQ(position.Value, 0.0);
    for (int x = 0; x < columns; ++x) {
        for (int y = 0; y < rows; ++y) {
            const Space& space = position.Spaces[x][y];
            EXPECT_EQ(space, SingleStone(space.Owner));
            EXPECT_EQ(space.Owner == EMPTY, !IsOnBoard(x, y));
        }
    }
    return CountOwners(position);
}

}  // namespace

TEST(Setup, OfADefaultGame) {
    UseBoard(11, 5);
    Position position;
    const std::string stones = PlaceAll(position);
    EXPECT_EQ(stones.substr(0, 8), "rrrbwbwb");
    EXPECT_EQ(stones.substr(46), "wbw:w");  // WHITE fills the board and moves again
    EXPECT_EQ(CountOwners(position), (Counts{23, 23, 3, 0}));
    EXPECT_EQ(position.SetupPhase, 0);
    int white = 0;
    int black = 0;
    EXPECT_TRUE(GetScore(position, white, black));
    EXPECT_EQ(white, 23);
    EXPECT_EQ(black, 23);
}

TEST(Setup, CountsLifeStonesDownToOwnStones) {
    UseBoard(5, 1);
    Position position;
    GenerateEmptyStartPosition(position);
    const std::array<std::array<int, 2>, 6> expected = {
        {{4, WHITE}, {3, BLACK}, {2, WHITE}, {1, BLACK}, {1, WHITE}, {0, WHITE}}};
    for (int x = 0; x < 5; ++x) {
        EXPECT_EQ(position.SetupPhase, expected[x][0]);
        EXPECT_EQ(position.ActivePlayer, expected[x][1]);
        Position parent = position;
        parent.Value = 2.5;
        DoSetupMove(parent, {.Kind = MOVE_SETUP, .Column = x, .Row = 0}, position);
        EXPECT_EQ(position.Value, 2.5);  // a placement does not turn it round
    }
    EXPECT_EQ(position.SetupPhase, expected[5][0]);
    EXPECT_EQ(position.ActivePlayer, expected[5][1]);
}

TEST(Setup, OnOtherBoards) {
    const auto stones = [](int columns, int rows, int lifeStones) {
        UseBoard(columns, rows);
        GlobCfg.NumLifeStones = lifeStones;
        Position position;
        return PlaceAll(position);
    };
    EXPECT_EQ(stones(6, 1, 2), "rrwbwb:w");
    EXPECT_EQ(stones(5, 1, 2), "rrwbw:w");
    EXPECT_EQ(stones(3, 3, 1), "rbwbwbw:w");  // seven spaces
    EXPECT_EQ(stones(1, 5, 3), "r:w");        // one space is all that its corners leave
    EXPECT_EQ(stones(2, 9, 1), "rbwb:w");
    EXPECT_EQ(stones(3, 4, 3), "rrrbwbwbwb:w");
    // More life stones than spaces: the board is full all the same.
    EXPECT_EQ(stones(4, 1, 4), "rrrr:w");
    EXPECT_EQ(stones(3, 1, 9), "rrr:w");
    EXPECT_EQ(stones(3, 1, INT_HIGHEST), "rrr:w");
}

TEST(Setup, AtRandomHasTheRightStones) {
    EXPECT_EQ(RandomCounts(11, 5, 3, -1), (Counts{23, 23, 3, 0}));
    // An odd stone goes to WHITE behind an even number of life stones, else to BLACK.
    EXPECT_EQ(RandomCounts(11, 5, 2, -1), (Counts{24, 23, 2, 0}));
    EXPECT_EQ(RandomCounts(8, 4, 3, -1), (Counts{13, 14, 3, 0}));
    EXPECT_EQ(RandomCounts(8, 4, 4, -1), (Counts{13, 13, 4, 0}));
    EXPECT_EQ(RandomCounts(11, 5, 3, 0), (Counts{0, 46, 3, 0}));
    EXPECT_EQ(RandomCounts(11, 5, 3, 10), (Counts{10, 36, 3, 0}));
    EXPECT_EQ(RandomCounts(11, 5, 3, 46), (Counts{46, 0, 3, 0}));
    EXPECT_EQ(RandomCounts(11, 5, 3, INT_HIGHEST), (Counts{46, 0, 3, 0}));
    EXPECT_EQ(RandomCounts(11, 5, 49, 10), (Counts{0, 0, 49, 0}));
    EXPECT_EQ(RandomCounts(11, 5, INT_HIGHEST, -1), (Counts{0, 0, 49, 0}));
    // Boards narrower than their corners are counted, not computed.
    EXPECT_EQ(RandomCounts(1, 5, 3, -1), (Counts{0, 0, 1, 0}));
    EXPECT_EQ(RandomCounts(2, 9, 1, -1), (Counts{1, 2, 1, 0}));
}

// Every stone is as likely on every space: the middle of a default board is a life stone in 3 of 49
// cases. 4900 boards give about 300, with a standard deviation of 17.
TEST(Setup, AtRandomIsFair) {
    UseBoard(11, 5);
    int numLife = 0;
    for (int i = 0; i < 4900; ++i) {
        Position position;
        GenerateRandomStartPosition(position);
        numLife += position.Spaces[5][2].Owner == LIFE ? 1 : 0;
    }
    EXPECT_NEAR(numLife, 300, 85);
}

TEST(Setup, StartsAsTheModeSays) {
    UseBoard(11, 5);
    Position position;
    GenerateStartPosition(position);
    EXPECT_EQ(position.SetupPhase, 4);
    EXPECT_EQ(CountOwners(position)[EMPTY], 49);
    GlobCfg.SetupMode = 1;
    GenerateStartPosition(position);
    EXPECT_EQ(position.SetupPhase, 0);
    EXPECT_EQ(CountOwners(position)[EMPTY], 0);
}

TEST(SetupDeathTest, TrustsItsCaller) {
    UseBoard(2, 1);
    GlobCfg.NumLifeStones = 1;
    Position start;
    Position one;
    Position full;
    GenerateEmptyStartPosition(start);
    DoSetupMove(start, {.Column = 0}, one);
    EXPECT_EXIT(DoSetupMove(one, {.Column = 0}, full), testing::ExitedWithCode(1),
                "^DoSetupMove: Error: Setup move target is not empty!\n$");
    DoSetupMove(one, {.Column = 1}, full);
    EXPECT_EXIT(DoSetupMove(full, {.Column = 1}, one), testing::ExitedWithCode(1),
                "^DoSetupMove: Error: Position is done with setup!\n$");
}

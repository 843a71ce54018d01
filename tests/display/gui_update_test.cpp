// The updates of the display as texts, and the board that a display makes of them.
#include "display/gui_update.h"

#include <algorithm>
#include <memory>
#include <random>
#include <sstream>

#include <gtest/gtest.h>

#include "common/board_text.h"
#include "common/random_games.h"
#include "display/shown_board.h"

namespace {

void ApplyUpdate(ShownBoard& shown, const std::string& update) {
    std::istringstream lines(update);
    for (std::string line; std::getline(lines, line);) {
        EXPECT_EQ(TakeDisplayLine(shown, line),
                  line == "D" ? DisplayLine::Done : DisplayLine::Taken)
            << line;
    }
}

struct Walk {
    std::mt19937 Random{20031031};
    GuiMirror Mirror;
    ShownBoard Shown;
    std::unique_ptr<GameRecord> Record = std::make_unique<GameRecord>();
    int NumAnimations = 0;
    int NumPasses = 0;

    // Shows position n and compares what the display makes of it with the game.
    void ShowAndCompare(int n) {
        const std::string update = UpdateText(Mirror, *Record, n);
        ApplyUpdate(Shown, update);
        NumAnimations += Shown.Animated ? 1 : 0;
        EXPECT_EQ(Shown.MoveNumber, n);
        EXPECT_EQ(Shown.LastMove, Record->LastMove);
        for (int x = 0; x < GlobCfg.BoardXDim; ++x) {
            for (int y = 0; y < GlobCfg.BoardYDim; ++y) {
                ASSERT_EQ(Record->PositionList[n].Spaces[x][y], Shown.Spaces[x][y])
                    << x << ' ' << y << '\n'
                    << update;
            }
        }
    }

    // Forward from the start to the end, then back and forth, mostly in single steps: those are the
    // updates that leave most out.
    void PlayAndWalk() {
        ShowAndCompare(0);
        while (!IsEndPosition(Record->PositionList[Record->LastMove])) {
            NumPasses += GetNumMoves(Record->PositionList[Record->LastMove]) == 0 ? 1 : 0;
            PlayRandomPly(Random, *Record);
            ShowAndCompare(Record->LastMove);
        }
        int n = Record->LastMove;
        for (int i = 0; i < 60; ++i) {
            const bool jump = RandomBelow(Random, 3) == 0;
            n += jump ? RandomBelow(Random, 21) - 10 : RandomBelow(Random, 4) - 1;
            n = std::clamp(n, 0, Record->LastMove);
            ShowAndCompare(n);
        }
    }
};

}  // namespace

TEST(GuiUpdate, LinesAloneRebuildTheBoard) {
    constexpr BoardSettings BOARDS[] = {{11, 5, 3}, {15, 9, 3}, {5, 1, 2}, {1, 1, 1},
                                        {6, 6, 2},  {1, 5, 1},  {7, 4, 1}, {2, 9, 5},
                                        {9, 9, 2},  {4, 3, 1},  {3, 2, 9}, {11, 5, 1}};
    Walk walk;
    for (const BoardSettings& board : BOARDS) {
        for (int game = 0; game < 3; ++game) {
            SCOPED_TRACE(std::to_string(board.XDim) + " by " + std::to_string(board.YDim));
            SetBoardSettings(board);
            GenerateEmptyStartPosition(walk.Record->PositionList[0]);
            walk.Record->LastMove = 0;
            walk.PlayAndWalk();
            ASSERT_FALSE(testing::Test::HasFatalFailure());
        }
    }
    EXPECT_GT(walk.NumPasses, 0);
    EXPECT_GT(walk.NumAnimations, 100);
}

// Only the sign of a zero tells the positions apart, and that is a difference.
TEST(GuiUpdate, SignOfZeroIsADifference) {
    UseBoard(1, 1);
    GuiMirror mirror;
    const auto record = std::make_unique<GameRecord>();
    GenerateEmptyStartPosition(record->PositionList[0]);
    const std::string first = UpdateText(mirror, *record, 0);
    EXPECT_EQ("C\n" + UpdateText(mirror, *record, 0), first);
    record->PositionList[0].Value = -0.0;
    EXPECT_NE(UpdateText(mirror, *record, 0).find("S 0 0 0 3 0\n"), std::string::npos);
}

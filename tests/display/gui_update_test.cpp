// The updates of the display as texts, and the board that a display makes of them.
#include "display/gui_update.h"

#include <memory>
#include <sstream>
#include <vector>

#include <gtest/gtest.h>

#include "board/shown_board.h"
#include "common/board_text.h"
#include "common/random_games.h"

namespace {

// Answers the letters of the update's lines.
std::string ApplyUpdate(ShownBoard& shown, const std::string& update) {
    std::string letters;
    std::istringstream lines(update);
    for (std::string line; std::getline(lines, line);) {
        const DisplayLine taken = TakeDisplayLine(shown, line);
        letters += taken == DisplayLine::Faulty ? '?' : line.at(0);
        EXPECT_EQ(taken == DisplayLine::Done, line == "D");
    }
    return letters;
}

// Whether the letters are those of an update: C only in the first, at most one M, any number of S.
bool IsUpdate(std::string letters, bool first) {
    const std::size_t spaces = letters.find('S');
    if (spaces != std::string::npos) {
        letters.erase(spaces, letters.find_last_of('S') + 1 - spaces);
    }
    const std::string start = first ? "CLN" : "LN";
    return letters == start + "TD" || letters == start + "MTD";
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
        const bool first = !Mirror.Started;
        const std::string update = UpdateText(Mirror, *Record, n);
        const std::string letters = ApplyUpdate(Shown, update);
        ASSERT_TRUE(IsUpdate(letters, first)) << update;
        NumAnimations += letters.find('M') != std::string::npos ? 1 : 0;
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

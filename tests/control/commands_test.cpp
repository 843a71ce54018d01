#include <memory>

#include <gtest/gtest.h>

#include "common/random_games.h"
#include "common/scratch_folder.h"
#include "control/help.h"
#include "control/interpreter.h"
#include "control/main_loop.h"
#include "rules/notation.h"
#include "support/numbers.h"

namespace {

// A stopped two-person game of the default settings, and lines typed into it.
class Commands : public testing::Test {
protected:
    Commands() : before_(GlobCfg) {
        SetDefaultConfiguration();
        GlobCfg.NumHumanPlayers = 2;
        GlobCfg.GameRunFlag = 0;
        SetLevel(GlobCfg.ComputerLevel, weights_);
        GenerateEmptyStartPosition(state_->Record.PositionList[0]);
    }
    ~Commands() override { GlobCfg = before_; }

    // Answers what is printed.
    std::string Type(const std::string& line) {
        testing::internal::CaptureStdout();
        DoLine(*state_, line, weights_);
        return testing::internal::GetCapturedStdout();
    }

    // Plays random plies and goes to the last.
    void Play(int numPlies) {
        std::mt19937 random(6);
        PlayRandomGame(random, numPlies, state_->Record);
        state_->CurrentMove = state_->Record.LastMove;
    }

    // Goes to a position as a walk would, without printing it.
    void GoTo(int moveNumber) { state_->CurrentMove = moveNumber; }

    std::unique_ptr<PlayState> state_ = std::make_unique<PlayState>();
    EvalWeights weights_;

private:
    GlobalConfiguration before_;
};

TEST_F(Commands, WalksEndAtTheEndsOfTheGame) {
    struct Walk {
        const char* Line;
        int From;
        int To;
    };
    const Walk walks[] = {
        {"back", 20, 19},
        {"back 3", 20, 17},
        {"back 100", 20, 0},
        {"back -5", 20, 25},
        {"back x", 20, 19},
        {"back 0x10", 20, 4},
        {"back -2147483648", 20, 30},
        {"back 99999999999", 20, 0},
        {"forward", 20, 21},
        {"forward 100", 20, 30},
        {"forward -7", 20, 13},
        {"forward 2147483647", 20, 30},
        {"forward -99999999999", 20, 0},
    };
    Play(30);
    for (const Walk& walk : walks) {
        GoTo(walk.From);
        state_->SearchDepth = 4;
        GlobCfg.GameRunFlag = 1;
        Type(std::string("/") + walk.Line);
        EXPECT_EQ(walk.To, state_->CurrentMove) << walk.Line;
        EXPECT_EQ(30, state_->Record.LastMove) << walk.Line;
        EXPECT_EQ(0, state_->SearchDepth);
        EXPECT_EQ(0, GlobCfg.GameRunFlag);
    }
}

TEST_F(Commands, UndoGivesTheSameSideItsMoveBack) {
    struct Undo {
        int From;
        int To;
    };
    Play(60);
    // 49 spaces: WHITE makes the last placement, in position 48, and the first move, in 49.
    for (const Undo& undo : {Undo{48, 46}, {49, 46}, {50, 47}, {51, 49}, {52, 50}, {2, 0}}) {
        GoTo(undo.From);
        state_->SearchDepth = 4;
        GlobCfg.GameRunFlag = undo.From % 2;
        const int side = state_->Record.PositionList[undo.From].ActivePlayer;
        Type("/undo");
        EXPECT_EQ(undo.To, state_->CurrentMove);
        EXPECT_EQ(side, state_->Record.PositionList[undo.To].ActivePlayer);
        EXPECT_EQ(60, state_->Record.LastMove);
        EXPECT_EQ(undo.From % 2, GlobCfg.GameRunFlag);
        EXPECT_EQ(0, state_->SearchDepth);
    }
    for (const int from : {0, 1}) {
        GoTo(from);
        EXPECT_EQ("There is nothing to undo!\n", Type("/undo"));
        EXPECT_EQ(from, state_->CurrentMove);
    }
}

TEST_F(Commands, NumbersAreBroughtIntoTheirRange) {
    struct Setting {
        const char* Line;
        int& Field;
        int Value;
    };
    const Setting settings[] = {
        {"players 5", GlobCfg.NumHumanPlayers, 2},
        {"players -1", GlobCfg.NumHumanPlayers, 0},
        {"level -7", GlobCfg.ComputerLevel, 0},
        {"level 0x10", GlobCfg.ComputerLevel, 16},
        {"level 010", GlobCfg.ComputerLevel, 8},
        {"level 99999999999", GlobCfg.ComputerLevel, INT_HIGHEST},
        {"lifestones 0", GlobCfg.NumLifeStones, 1},
        {"lifestones abc", GlobCfg.NumLifeStones, 1},
        {"lifestones 2147483647", GlobCfg.NumLifeStones, INT_HIGHEST},
        {"randomsetup 3", GlobCfg.SetupMode, 1},
        {"status -3", GlobCfg.PrintStatusFlag, 0},
        {"highlighting 0 1", GlobCfg.GuiHighlighting, 0},
        {"players x", GlobCfg.NumHumanPlayers, 0},
    };
    for (const Setting& setting : settings) {
        Type(setting.Line);
        EXPECT_EQ(setting.Value, setting.Field) << setting.Line;
    }
    Type("randomsetup 0");
    Type("new");
    EXPECT_EQ(INT_HIGHEST, state_->Record.PositionList[0].SetupPhase);
}

// In an end position a player may go on passing, until there is no room for more.
TEST_F(Commands, FullRecordTakesNoMove) {
    GlobCfg.BoardXDim = 1;
    GlobCfg.BoardYDim = 1;
    GenerateEmptyStartPosition(state_->Record.PositionList[0]);
    Type("move a1");
    for (int i = 1; i < GAME_RECORD_SIZE - 1; ++i) {
        Type("move");
    }
    EXPECT_EQ(GAME_RECORD_SIZE - 1, state_->Record.LastMove);
    EXPECT_EQ("Error: Game record is full!\nError in Move! Move was not executed!\n",
              Type("move nonsense"));
    EXPECT_EQ(GAME_RECORD_SIZE - 1, state_->Record.LastMove);
    Type("back");
    Type("move p");
    EXPECT_EQ(GAME_RECORD_SIZE - 1, state_->CurrentMove);
}

TEST_F(Commands, BrokenCallersEndTheProcess) {
    for (const int id : {-1, 27, 29}) {
        EXPECT_EXIT(ExecuteCommand(static_cast<CommandId>(id), "", *state_, weights_),
                    testing::ExitedWithCode(1),
                    "^ExecuteCommand: Illegal default case reached! \\(bug in calling routine\\)");
    }
}

}  // namespace

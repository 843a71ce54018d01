#include <memory>

#include <gtest/gtest.h>

#include "control/help.h"
#include "control/interpreter.h"
#include "control/main_loop.h"
#include "random_games.h"
#include "rules/notation.h"
#include "scratch_folder.h"
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

TEST_F(Commands, UndoOnAnEvenBoardGoesBackTwo) {
    GlobCfg.BoardXDim = 4;
    GlobCfg.BoardYDim = 2;
    GenerateEmptyStartPosition(state_->Record.PositionList[0]);
    Play(9);
    Type("undo");
    EXPECT_EQ(7, state_->CurrentMove);
}

TEST_F(Commands, GamesRunOnWhereTheyCan) {
    Play(GAME_RECORD_SIZE);  // to the end
    const int end = state_->Record.LastMove;
    EXPECT_EQ("game cannot be started in an end position!\n", Type("start"));
    GoTo(end - 3);
    EXPECT_EQ("game is finished and cannot be continued!\n", Type("cont"));
    EXPECT_EQ(end - 3, state_->CurrentMove);
    EXPECT_EQ(0, GlobCfg.GameRunFlag);
    EXPECT_EQ("", Type("start"));
    EXPECT_EQ(1, GlobCfg.GameRunFlag);
    EXPECT_EQ("game is already started!", Type("/start"));
    EXPECT_EQ("game is already running!\n", Type("/cont"));
    EXPECT_EQ("", Type("/stop"));
    EXPECT_EQ("game is already stopped!\n", Type("stop"));

    state_->Record.LastMove = end - 1;  // a game broken off before its last ply
    EXPECT_TRUE(Type("cont").starts_with("\n"));
    EXPECT_EQ(end - 1, state_->CurrentMove);
    EXPECT_EQ(1, GlobCfg.GameRunFlag);
}

TEST_F(Commands, RunningGamesAreNotReplaced) {
    GlobCfg.GameRunFlag = 1;
    Play(5);
    for (const char* line : {"/load", "/new", "/boardsize 3 3", "/import x", "/quit"}) {
        EXPECT_TRUE(Type(line).starts_with("A game is running! Stop it before ")) << line;
        EXPECT_EQ(5, state_->CurrentMove);
        EXPECT_EQ(11, GlobCfg.BoardXDim);
        EXPECT_EQ(0, state_->QuitFlag);
    }
    Type("/stop");
    EXPECT_EQ("See you :-)\n", Type("quit"));
    EXPECT_EQ(1, state_->QuitFlag);
}

TEST_F(Commands, NewGamesBeginWithTheirSettings) {
    Play(60);
    Type("lifestones 7");
    Type("boardsize 15 9 and more");
    EXPECT_EQ(0, state_->CurrentMove);
    EXPECT_EQ(0, state_->Record.LastMove);
    EXPECT_EQ(1, GlobCfg.GameRunFlag);
    EXPECT_EQ(8, state_->Record.PositionList[0].SetupPhase);
    EXPECT_EQ(115, GetNumMoves(state_->Record.PositionList[0]));
    GlobCfg.GameRunFlag = 0;
    for (const char* line :
         {"boardsize", "boardsize 7", "boardsize 7,5", "boardsize x 5", "boardsize 16 5",
          "boardsize 0 5", "boardsize 5 10", "boardsize 5 -99999999999"}) {
        EXPECT_TRUE(Type(line).starts_with("Error in Command!\nusage: /boardsize x_size y_size\n"))
            << line;
        EXPECT_EQ(15, GlobCfg.BoardXDim);
        EXPECT_EQ(9, GlobCfg.BoardYDim);
    }
    Type("randomsetup 1");
    Type("new");
    EXPECT_EQ(0, state_->Record.PositionList[0].SetupPhase);
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

TEST_F(Commands, LevelChangesTheWeightsAndTheDepth) {
    state_->SearchDepth = 5;
    Type("level 500");
    EvalWeights wanted;
    SetLevel(500, wanted);
    EXPECT_EQ(wanted.Moves, weights_.Moves);
    EXPECT_EQ(0, state_->SearchDepth);
}

TEST_F(Commands, ColorIsThatOfTheHuman) {
    GlobCfg.NumHumanPlayers = 1;
    EXPECT_EQ("Your playing color was set to BLACK.\n", Type("color Beige"));
    EXPECT_EQ(WHITE, state_->ComputerSide);
    EXPECT_EQ("You are playing the BLACK stones\n", Type("color"));
    Type("color random");
    EXPECT_EQ(2, GlobCfg.ComputerColor);
    EXPECT_EQ(WHITE, state_->ComputerSide);
    EXPECT_EQ("Your playing color was set to WHITE.\n", Type("color w"));
    EXPECT_EQ(BLACK, state_->ComputerSide);
    EXPECT_EQ(BLACK, GlobCfg.ComputerColor);
    EXPECT_EQ("Error in Command!\nusage: /color [w,b,r]  (white, black or random)\n",
              Type("col 1"));
}

TEST_F(Commands, MovePlaysOnAndDropsTheOldContinuation) {
    Play(30);
    const Move later = state_->Record.MoveList[20];  // its space is still empty in position 10
    GoTo(10);
    const std::string line = "move " + GetMoveString(later, state_->Record.PositionList[20]);
    EXPECT_TRUE(Type(line).starts_with("\nBLACK is moving"));
    EXPECT_EQ(11, state_->CurrentMove);
    EXPECT_EQ(11, state_->Record.LastMove);
    EXPECT_EQ(later, state_->Record.MoveList[10]);
    EXPECT_EQ("Error: Move source is already occupied!\nError in Move! Move was not executed!\n",
              Type(line));
    EXPECT_EQ(11, state_->Record.LastMove);
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

TEST_F(Commands, ImportSetsTheDefaultBoardOrNothing) {
    const ScratchFolder folder;
    const std::string log = folder.File("a log");
    WriteFile(log, "000000000\n0000000000\n00000100000\n0000000000\n00000000");
    Type("boardsize 4 4");
    Type("/stop");
    Type("lifestones 9");
    EXPECT_EQ("Illegal char in import file!\nImporting game from file \"" + log + "\" failed!\n",
              Type("import " + log));
    EXPECT_EQ((BoardSettings{4, 4, 9}), GetBoardSettings());
    WriteFile(log, "000000000\n0000000000\n00000100000\n0000000000\n000000000");
    EXPECT_TRUE(Type("import " + log)
                    .ends_with("\nThe game ended 1:0 (WHITE wins)\n\n"
                               "Game was successfully imported.\n"));
    EXPECT_EQ(DEFAULT_BOARD, GetBoardSettings());
    EXPECT_EQ(0, GlobCfg.GameRunFlag);
}

TEST_F(Commands, FileNamesAreTheFirstWord) {
    const ScratchFolder folder;
    Type("save " + folder.File("game") + " other");
    Type("save " + folder.File("game.TLX"));
    EXPECT_EQ(2, folder.NumEntries());
    const std::string file = folder.File("game.tlx");
    EXPECT_TRUE(Type("load " + file)
                    .starts_with("Loading game from file: \"" + file +
                                 "\"!\nloading game was successful.\n"));
    // A lone form feed is a word to the lookup, but none to scanf.
    EXPECT_TRUE(Type("load \f").starts_with("Loading game from file: \"quicksave.tlx\"!\n"));
}

TEST_F(Commands, BrokenCallersEndTheProcess) {
    for (const int id : {-1, 27, 29}) {
        EXPECT_EXIT(ExecuteCommand(static_cast<CommandId>(id), "", *state_, weights_),
                    testing::ExitedWithCode(1),
                    "^ExecuteCommand: Illegal default case reached! \\(bug in calling routine\\)");
    }
}

}  // namespace

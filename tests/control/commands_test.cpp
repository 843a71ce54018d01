// What no line typed into the program brings about, or only hundreds of them do.
#include <memory>

#include <gtest/gtest.h>

#include "common/board_text.h"
#include "common/captured.h"
#include "control/evaluation_info.h"
#include "control/interpreter.h"
#include "rules/setup.h"

// In an end position a player may go on passing, until there is no room for more.
TEST(Commands, FullRecordTakesNoMove) {
    UseBoard(1, 1);
    GlobCfg.GameRunFlag = 0;
    const auto session = std::make_unique<Session>();
    PlayState* const state = &session->Play;
    GenerateEmptyStartPosition(state->Record.PositionList[0]);
    auto type = [&](const char* line) { return StdoutOf([&] { TypeLine(*session, line); }); };
    type("move a1");
    for (int i = 1; i < GAME_RECORD_SIZE - 1; ++i) {
        type("move");
    }
    EXPECT_EQ(state->Record.LastMove, GAME_RECORD_SIZE - 1);
    EXPECT_EQ(type("move nonsense"),
              "Error: Game record is full!\nError in Move! Move was not executed!\n");
    EXPECT_EQ(state->Record.LastMove, GAME_RECORD_SIZE - 1);
    type("back");
    type("move p");
    EXPECT_EQ(state->CurrentMove, GAME_RECORD_SIZE - 1);
}

// Weights beyond all reason make a value that reaches the open bound: that of the one move of
// White's behind A-B and Black's pass.
TEST(Commands, SayThatAValueReachesTheBound) {
    const BoardText board = ReadBoardText("row 6 1 white : w1 w1 r b3 . .");
    UseBoard(board);
    EvalWeights weights;
    weights.Moves[1][0] = 1e9;
    const auto sayWithDepth = [&](int depth) {
        return StdoutOf([&] {
            PrintCutOff(board.Board, SearchPosition(board.Board, depth, weights, nullptr));
        });
    };
    const std::string said = sayWithDepth(1);
    EXPECT_TRUE(said.starts_with("Error: ToplevelFlag=TRUE && ABOrt!!!\n"
                                 "BAD RET VALUE: LOW_INIT_VALUE && TOPLEVELFLAG=TRUE\n"
                                 "Value:1000000000.000000, BestValue:-999999999.000000, "
                                 "NumMoves:3, Treshold:999999999.000000\nWHITE is moving"))
        << said;
    EXPECT_EQ(sayWithDepth(0), "");
}

TEST(CommandsDeathTest, BrokenCallersEndTheProcess) {
    const auto session = std::make_unique<Session>();
    for (const int id : {-1, 27, 29}) {
        EXPECT_EXIT(EndAsMain([&] { ExecuteCommand(static_cast<CommandId>(id), "", *session); }),
                    testing::ExitedWithCode(1),
                    "^ExecuteCommand: Illegal default case reached! \\(bug in calling routine\\)");
    }
}

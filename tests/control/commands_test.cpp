// What no line typed into the program brings about, or only hundreds of them do.
#include <memory>

#include <gtest/gtest.h>

#include "common/board_text.h"
#include "common/captured.h"
#include "control/interpreter.h"
#include "control/main_loop.h"
#include "rules/setup.h"

// In an end position a player may go on passing, until there is no room for more.
TEST(Commands, FullRecordTakesNoMove) {
    UseBoard(1, 1);
    GlobCfg.GameRunFlag = 0;
    EvalWeights weights;
    const auto state = std::make_unique<PlayState>();
    GenerateEmptyStartPosition(state->Record.PositionList[0]);
    auto type = [&](const char* line) { return StdoutOf([&] { DoLine(*state, line, weights); }); };
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

TEST(CommandsDeathTest, BrokenCallersEndTheProcess) {
    const auto state = std::make_unique<PlayState>();
    EvalWeights weights;
    for (const int id : {-1, 27, 29}) {
        EXPECT_EXIT(ExecuteCommand(static_cast<CommandId>(id), "", *state, weights),
                    testing::ExitedWithCode(1),
                    "^ExecuteCommand: Illegal default case reached! \\(bug in calling routine\\)");
    }
}

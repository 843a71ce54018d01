// What no line typed into the program brings about, or only hundreds of them do.
#include <memory>

#include <gtest/gtest.h>

#include "common/board_text.h"
#include "common/captured.h"
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

TEST(CommandsDeathTest, BrokenCallersEndTheProcess) {
    const auto session = std::make_unique<Session>();
    for (const int id : {-1, 27, 29}) {
        EXPECT_EXIT(EndAsMain([&] { ExecuteCommand(static_cast<CommandId>(id), "", *session); }),
                    testing::ExitedWithCode(1),
                    "^ExecuteCommand: Illegal default case reached! \\(bug in calling routine\\)");
    }
}

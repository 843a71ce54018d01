// What no game can bring onto the screen; the transcripts show the rest.
#include "display/terminal_board.h"

#include <gtest/gtest.h>

#include "common/board_text.h"
#include "common/captured.h"
#include "rules/setup.h"

TEST(TerminalBoard, ShowsAFaultyOwnerAndGoesOn) {
    UseBoard(3, 1);
    Position position;
    GenerateEmptyStartPosition(position);
    position.Spaces[1][0] = {.Height = 4, .Life = 0, .Owner = 9};
    std::string shown;
    EXPECT_EQ(StderrOf([&] { shown = StdoutOf([&] { PrintPosition(position); }); }),
              "Error: Position data is faulty !\n");
    EXPECT_NE(shown.find(" 0.  4? \x1b[1;32m"), std::string::npos) << shown;
}

TEST(TerminalBoardDeathTest, KnowsSeventeenColours) {
    EXPECT_EQ(StdoutOf([] { SetColor(BACKGROUND_CYAN); }), "\x1b[46m");
    EXPECT_EXIT(EndAsMain([] { SetColor(17); }), testing::ExitedWithCode(1),
                "^SetColor: Error in calling parameter value\n$");
}

// A session of the whole program with a display: what the commands send.
#include <string>

#include <gtest/gtest.h>

#include "common/display_peer.h"
#include "common/run_program.h"

namespace {

const std::string NO_LAST = "L -1 -1 -1 -1\n";
const std::string NO_NEXT = "N -1 -1 -1 -1\n";
const std::string NOTHING = NO_LAST + NO_NEXT;

std::string Status(const std::string& text) {
    return "TMove " + text + " is moving\nD\n";
}

std::string EmptyBoard(int columns, int rows) {
    std::string lines;
    for (int y = 0; y < rows; ++y) {
        for (int x = 0; x < columns; ++x) {
            lines += "S " + std::to_string(x) + ' ' + std::to_string(y) + " 0 3 0\n";
        }
    }
    return lines;
}

// Five spaces in a row, C and D the life stones: A onto B, pass, E onto D.
TEST(GuiSessionTest, CommandsOfAWholeSession) {
    DisplayPeer peer;
    const ScratchFolder folder;
    WriteFile(folder.File("talurex.cfg"), "BOARD_X_DIM 5\nBOARD_Y_DIM 1\nNUM_LIFE_STONES 2\n"
                                          "NUM_HUMAN_PLAYERS 2\nGUI_PORT " +
                                              std::to_string(peer.Port) + "\n");
    const struct {
        const char* Line;
        std::string Update;
    } steps[] = {
        {"c1", "L -1 -1 2 0\n" + NO_NEXT + "S 2 0 1 2 1\n" + Status("(1/1) BLACK")},
        {"d1", "L -1 -1 3 0\n" + NO_NEXT + "S 3 0 1 2 1\n" + Status("(2/2) WHITE")},
        {"a1", "L -1 -1 0 0\n" + NO_NEXT + "S 0 0 1 0 0\n" + Status("(3/3) BLACK")},
        {"b1", "L -1 -1 1 0\n" + NO_NEXT + "S 1 0 1 1 0\n" + Status("(4/4) WHITE")},
        {"e1", "L -1 -1 4 0\n" + NO_NEXT + "S 4 0 1 0 0\n" + Status("(5/5) WHITE")},
        {"a1-e1", "L -1 -1 4 0\n" + NO_NEXT + Status("(5/5) WHITE")},
        {"a1-b1", "L 0 0 1 0\n" + NO_NEXT + "M 0 0 1 0\nS 0 0 0 3 0\n" + Status("(6/6) BLACK")},
        {"", "L 0 0 1 0\n" + NO_NEXT + Status("(7/7) WHITE")},
        {"e1-d1", "L 4 0 3 0\n" + NO_NEXT + "M 4 0 3 0\nS 4 0 0 3 0\n" + Status("(8/8) BLACK")},
        {"/back 2", "L 0 0 1 0\n" + NO_NEXT +
                        "S 0 0 0 3 0\nS 1 0 2 0 0\nS 2 0 1 2 1\nS 3 0 1 2 1\nS 4 0 1 0 0\n" +
                        Status("(6/8) BLACK")},
        {"redraw", "L 0 0 1 0\n" + NO_NEXT + Status("(6/8) BLACK")},
        {"forward", "L 0 0 1 0\nN 4 0 3 0\n" + Status("(7/8) WHITE")},
        {"highlighting 0", NOTHING + Status("(7/8) WHITE")},
        {"save game", NOTHING + Status("(7/8) WHITE")},
        {"boardsize 3 2", NOTHING + EmptyBoard(3, 2) + Status("(0/0) WHITE")},
        {"/stop", NOTHING + Status("(0/0) WHITE")},
        {"load game", NOTHING +
                          "S 0 0 0 3 0\nS 1 0 2 0 0\nS 2 0 1 2 1\nS 3 0 2 0 1\nS 4 0 0 3 0\n" +
                          Status("(8/8) BLACK")},
        {"undo", NOTHING + "S 0 0 0 3 0\nS 1 0 2 0 0\nS 2 0 1 2 1\nS 3 0 1 2 1\nS 4 0 1 0 0\n" +
                     Status("(6/8) BLACK")},
        {"gui 0", "Q\n"},
    };
    std::string input;
    std::string expected = "C\n" + NOTHING + Status("(0/0) WHITE");
    for (const auto& step : steps) {
        input += std::string(step.Line) + '\n';
        expected += step.Update;
    }
    // The clear line is not sent again on the second connection, which the end of input closes.
    input += "gui 1\nnew\n";
    const std::string second = NOTHING + Status("(6/8) BLACK") + NOTHING + EmptyBoard(5, 1) +
                               Status("(0/0) WHITE") + "Q\n";
    const ProgramRun run = RunProgram({TALUREX_PROGRAM, "-gui"}, input, folder.Path());
    EXPECT_EQ(run.ExitStatus, 0);
    EXPECT_EQ(run.Errors, "");
    EXPECT_NE(run.Output.find("GUI usage was disabled!\n"), std::string::npos);
    EXPECT_NE(run.Output.find("trying to enable GUI...\n"
                              "Connection to GUI successfully established!\n"),
              std::string::npos);
    EXPECT_TRUE(run.Output.ends_with("Move (0/0), your move: \n"));
    AcceptConnection(peer);
    EXPECT_EQ(ReadToEnd(peer), expected);
    AcceptConnection(peer);
    EXPECT_EQ(ReadToEnd(peer), second);
}

}  // namespace

#include "display/terminal_board.h"

#include <sstream>

#include <gtest/gtest.h>

#include "common/board_text.h"
#include "common/captured.h"
#include "rules/setup.h"

namespace {

// What the terminal gets, with \x1b[ written as '<' and its final m as '>'.
std::string Coloured(const Position& position) {
    std::string shown;
    bool inSequence = false;
    for (const char c : StdoutOf([&position] { PrintPosition(position); })) {
        if (c == '\x1b') {
            inSequence = true;
            shown += '<';
        } else if (inSequence && c == 'm') {
            inSequence = false;
            shown += '>';
        } else if (c != '[') {
            shown += c;
        }
    }
    return shown;
}

// The same without colours.
std::string Plain(const Position& position) {
    std::string shown;
    bool inSequence = false;
    for (const char c : Coloured(position)) {
        if (c == '<' || c == '>') {
            inSequence = c == '<';
        } else if (!inSequence) {
            shown += c;
        }
    }
    return shown;
}

Position EmptyBoard(int columns, int rows) {
    UseBoard(columns, rows);
    Position position;
    GenerateEmptyStartPosition(position);
    return position;
}

}  // namespace

TEST(TerminalBoard, OfADefaultGame) {
    EXPECT_EQ(Plain(EmptyBoard(11, 5)), "WHITE is moving\n"
                                        "5         0.  0.  0.  0.  0.  0.  0.  0.  0.          \n"
                                        "4       0.  0.  0.  0.  0.  0.  0.  0.  0.  0.        \n"
                                        "3     0.  0.  0.  0.  0.  0.  0.  0.  0.  0.  0.      \n"
                                        "2       0.  0.  0.  0.  0.  0.  0.  0.  0.  0.        \n"
                                        "1         0.  0.  0.  0.  0.  0.  0.  0.  0.          \n"
                                        "------------------------------------------------------\n"
                                        "             A   B   C   D   E   F   G   H   I   J   K\n");
}

TEST(TerminalBoard, OfOneSpace) {
    EXPECT_EQ(Coloured(EmptyBoard(1, 1)), "WHITE is moving<47>\n"
                                          "<0><30><47>1<1;32><30> 0.  \n"
                                          "<0><30><47>------\n"
                                          "     A<0>\n");
}

TEST(TerminalBoard, GivesEachKindOfTowerItsColours) {
    const BoardText board = ReadBoardText("kinds 6 1 black : w1 w3* b12 b2* r .");
    UseBoard(board);
    const std::string end = " \n<0><30><47>--------------------------\n"
                            "     A   B   C   D   E   F<0>\n";
    EXPECT_EQ(Coloured(board.Board),
              "BLACK is moving<47>\n"
              "<0><30><47>1<1;37> 1+ <1;33> 3* <0><30><47>12# <1;34> 2@ <1;31> 1% <1;32><30> 0. " +
                  end);
    // One mark for all of them, in the same colours.
    GlobCfg.SingleDispCharFlag = 1;
    GlobCfg.SingleDispChar = 'o';
    EXPECT_EQ(Coloured(board.Board),
              "BLACK is moving<47>\n"
              "<0><30><47>1<1;37> 1o <1;33> 3o <0><30><47>12o <1;34> 2o <1;31> 1o <1;32><30> 0o " +
                  end);
}

// Whatever the size, the lines are equally long, and each letter stands at the foot of its column.
TEST(TerminalBoard, KeepsItsLinesStraight) {
    for (int columns = 1; columns <= MAX_BOARD_X_DIM; ++columns) {
        for (int rows = 1; rows <= MAX_BOARD_Y_DIM; ++rows) {
            std::istringstream text(Plain(EmptyBoard(columns, rows)));
            std::string line;
            std::getline(text, line);
            std::string above;
            for (int i = 0; i <= rows; ++i) {
                std::getline(text, above);
                EXPECT_EQ(static_cast<int>(above.size()), 4 * columns + 2 * rows);
            }
            std::getline(text, line);
            for (int x = 0; x < columns; ++x) {
                EXPECT_EQ(line.at(2 * rows + 3 + 4 * x), "ABCDEFGHIJKLMNO"[x]);
            }
            EXPECT_FALSE(std::getline(text, line));
        }
    }
}

TEST(TerminalBoard, ShowsAFaultyOwnerAndGoesOn) {
    Position position = EmptyBoard(3, 1);
    position.Spaces[1][0] = {.Height = 4, .Life = 0, .Owner = 9};
    std::string shown;
    EXPECT_EQ(StderrOf([&] { shown = Coloured(position); }), "Error: Position data is faulty !\n");
    EXPECT_NE(shown.find("1<1;32><30> 0.  4? <1;32><30> 0.  \n"), std::string::npos) << shown;
}

TEST(TerminalBoardDeathTest, KnowsSeventeenColours) {
    EXPECT_EQ(StdoutOf([] { SetColor(BACKGROUND_CYAN); }), "\x1b[46m");
    EXPECT_EXIT(SetColor(17), testing::ExitedWithCode(1),
                "^SetColor: Error in calling parameter value\n$");
}

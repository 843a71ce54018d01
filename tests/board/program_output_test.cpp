// Drawings read back as the positions that were drawn, whatever comes around them.
#include "board/program_output.h"

#include <memory>

#include <gtest/gtest.h>

#include "common/board_text.h"
#include "common/captured.h"
#include "common/random_games.h"
#include "display/terminal_board.h"

namespace {

std::string Drawn(const Position& position) {
    return StdoutOf([&] { PrintPosition(position); });
}

void ExpectReadBack(const Position& position) {
    const std::string drawn = Drawn(position);
    OutputReader reader;
    const std::vector<OutputPart> parts = ReadOutput(reader, drawn);
    ASSERT_EQ(parts.size(), 1U) << drawn;
    ASSERT_EQ(parts[0].Kind, OutputKind::Drawing) << drawn;
    const BoardDrawing& drawing = parts[0].Drawing;
    EXPECT_EQ(drawing.Columns, GlobCfg.BoardXDim);
    EXPECT_EQ(drawing.Rows, GlobCfg.BoardYDim);
    EXPECT_EQ(drawing.Board.ActivePlayer, position.ActivePlayer);
    for (int x = 0; x < GlobCfg.BoardXDim; ++x) {
        for (int y = 0; y < GlobCfg.BoardYDim; ++y) {
            ASSERT_EQ(drawing.Board.Spaces[x][y], position.Spaces[x][y]) << drawn;
        }
    }
}

// All that the parts say, in a form that does not tell in how many pieces it came.
std::string Told(const std::vector<OutputPart>& parts) {
    std::string told;
    for (const OutputPart& part : parts) {
        switch (part.Kind) {
        case OutputKind::Text:
            told += part.Text;
            break;
        case OutputKind::Drawing:
            told += "<board " + std::to_string(part.Drawing.Columns) + ">";
            break;
        case OutputKind::Prompt:
            told += "<" + part.Text + (part.At.Running ? "runs>" : "stopped>");
            break;
        }
    }
    return told;
}

}  // namespace

TEST(ProgramOutput, DrawingsOfEverySizeReadBack) {
    std::mt19937 random(8);
    const auto record = std::make_unique<GameRecord>();
    for (int columns = 1; columns <= MAX_BOARD_X_DIM; ++columns) {
        for (int rows = 1; rows <= MAX_BOARD_Y_DIM; ++rows) {
            UseBoard(columns, rows);
            FillBoardAtRandom(random, record->PositionList[0]);
            PlayRandomGame(random, 200, *record);
            for (const int n : {0, record->LastMove / 2, record->LastMove}) {
                ExpectReadBack(record->PositionList[n]);
            }
        }
    }
}

// A mark may look like a digit, a blank or the beginning of a colour, and a tower may be so high
// that its row is longer than the others.
TEST(ProgramOutput, OddMarksAndHighTowersReadBack) {
    for (const char mark : {'5', ' ', '\r', '\033', '0', '-', '%'}) {
        UseBoard(15, 9);
        GlobCfg.SingleDispCharFlag = 1;
        GlobCfg.SingleDispChar = mark;
        Position position;
        GenerateEmptyStartPosition(position);
        position.Spaces[4][0] = {.Height = 115, .Life = 1, .Owner = BLACK};
        position.Spaces[14][1] = {.Height = 100, .Life = 0, .Owner = WHITE};
        position.Spaces[14][2] = {.Height = 11, .Life = 1, .Owner = WHITE};
        position.Spaces[7][4] = {.Height = 15, .Life = 0, .Owner = BLACK};
        position.Spaces[8][4] = {.Height = 1, .Life = 1, .Owner = LIFE};
        ExpectReadBack(position);
    }
    UseBoard(11, 5);
}

TEST(ProgramOutput, IsTheSameInWhateverPiecesItComes) {
    UseBoard(2, 3);
    Position position;
    GenerateEmptyStartPosition(position);
    const std::string drawn = Drawn(position);
    const std::string output = "Loading\nBLACK is moving\n\n\nNow:\n\n" + drawn + "No\n" + drawn +
                               "game is already started!Move (3/17), your move: ";
    const std::string told = "Loading\nBLACK is moving\n\n\nNow:\n<board 2>No\n<board 2>"
                             "game is already started!<Move (3/17), your move: runs>";
    for (std::size_t i = 0; i <= output.size(); ++i) {
        OutputReader reader;
        std::vector<OutputPart> parts = ReadOutput(reader, output.substr(0, i));
        for (const OutputPart& part : ReadOutput(reader, output.substr(i))) {
            parts.push_back(part);
        }
        EXPECT_EQ(Told(parts), told) << "cut at " << i;
    }
}

TEST(ProgramOutput, OnlyTheEndCanBeAPrompt) {
    OutputReader reader;
    EXPECT_EQ(Told(ReadOutput(reader, "Move (1/2), game stopped: x")), "");
    EXPECT_EQ(Told(ReadOutput(reader, "\n")), "Move (1/2), game stopped: x\n");
    EXPECT_EQ(Told(ReadOutput(reader, "Move (2/1), game stopped: ")), "");
    EXPECT_EQ(Told(ReadOutput(reader, "\nMove (1/1), game stopped: ")),
              "Move (2/1), game stopped: \n<Move (1/1), game stopped: stopped>");
}

TEST(ProgramOutput, LinesWithoutEndAreHandedOn) {
    OutputReader reader;
    const std::string flood(100000, 'x');
    EXPECT_GT(Told(ReadOutput(reader, flood)).size(), 90000U);
    EXPECT_LT(reader.Line.size(), 5000U);
}

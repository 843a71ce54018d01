#include "gamefiles/game_log.h"

#include <memory>

#include <gtest/gtest.h>

#include "common/random_games.h"
#include "common/scratch_folder.h"
#include "rules/notation.h"

namespace {

class GameLog : public testing::Test {
protected:
    GameLog() : before_(GetBoardSettings()) { SetBoardSettings(DEFAULT_BOARD); }
    ~GameLog() override { SetBoardSettings(before_); }

    int Import(std::string_view text, GameRecord& record) {
        WriteFile(file_, text);
        testing::internal::CaptureStdout();
        const int result = ImportGame(file_, record);
        printed_ = testing::internal::GetCapturedStdout();
        return result;
    }

    ScratchFolder folder_;
    std::string file_ = folder_.File("game.log");
    std::string printed_;

private:
    BoardSettings before_;
};

std::string SpaceInLog(Place place) {
    return std::to_string(RowNumber(place.Row)) + ColumnLetter(place.Column);
}

// The log that the service would have written: turn, colon, space for a placement, and moves alone.
std::string LogOf(const GameRecord& record) {
    std::string text;
    int k = 0;
    for (; record.PositionList[k].SetupPhase != 0; ++k) {
        text += std::to_string(3 + k % 2) + ":" +
                SpaceInLog({record.MoveList[k].Column, record.MoveList[k].Row}) + " placed\n";
    }
    if (k > 0) {
        text += "one\n\n# a comment is no line\nthree\nfour\nfive\n";
    } else {
        constexpr std::string_view SIGNS = "1230";
        for (int y = 0; y < 5; ++y) {
            for (int x = 0; x < 11; ++x) {
                if (IsOnBoard(x, y)) {
                    text += SIGNS[static_cast<unsigned>(record.PositionList[0].Spaces[x][y].Owner)];
                    text.append(static_cast<unsigned>((x + y) % 2), ' ');
                }
            }
            text += y == 3 ? " 77\n" : "\n";
        }
    }
    for (; k < record.LastMove; ++k) {
        const Position& position = record.PositionList[k];
        if (GetNumMoves(position) != 0) {
            const Move& move = record.MoveList[k];
            text += SpaceInLog({move.Column, move.Row}) + "x" +
                    SpaceInLog(MoveTarget(position, move)) + "\n";
        }
    }
    return text;
}

TEST_F(GameLog, WholeGamesAreTakenOver) {
    std::mt19937 random(4);
    auto played = std::make_unique<GameRecord>();
    auto imported = std::make_unique<GameRecord>();
    int numPasses = 0;
    for (int game = 0; game < 60; ++game) {
        *played = {};
        if (game % 2 == 0) {
            GenerateEmptyStartPosition(played->PositionList[0]);
        } else {
            FillBoardAtRandom(random, played->PositionList[0]);
        }
        PlayRandomGame(random, GAME_RECORD_SIZE, *played);
        for (int k = 0; k < played->LastMove; ++k) {
            numPasses += GetNumMoves(played->PositionList[k]) == 0 ? 1 : 0;
        }
        const std::string log = LogOf(*played);
        ASSERT_EQ(0, Import(log, *imported)) << printed_ << log;
        EXPECT_EQ("", printed_);
        ASSERT_EQ(-1, FirstDifference(*played, *imported)) << log;
    }
    EXPECT_GT(numPasses, 50);  // passes do not stand in a log
}

// Every line that is missing is missed, and a log that ends too soon is no game.
TEST_F(GameLog, BrokenLogsChangeNothing) {
    std::mt19937 random(5);
    auto played = std::make_unique<GameRecord>();
    auto record = std::make_unique<GameRecord>();
    for (const bool withSetup : {true, false}) {
        *played = {};
        if (withSetup) {
            GenerateEmptyStartPosition(played->PositionList[0]);
        } else {
            FillBoardAtRandom(random, played->PositionList[0]);
        }
        PlayRandomGame(random, GAME_RECORD_SIZE, *played);
        const std::string log = LogOf(*played);
        *record = *played;
        for (std::size_t end = log.find('\n'); end < log.size() - 1;
             end = log.find('\n', end + 1)) {
            ASSERT_EQ(1, Import(log.substr(0, end), *record)) << end;
            EXPECT_TRUE(printed_.ends_with("Error: Unexpected end of import file!\n")) << printed_;
            ASSERT_EQ(-1, FirstDifference(*played, *record));
        }
    }
}

struct Damage {
    std::string Text;
    const char* Printed;
};

TEST_F(GameLog, DamagedLogsAreRefusedWithTheirReason) {
    // Row by row from the top; the lone tower in the middle of row 3 is enclosed.
    const std::string board = "121212121\n2121212121\n12121312121\n2121212121\n121212121\n";
    const Damage damages[] = {
        {"", "Error: Unexpected end of import file!\n"},
        {"# nothing\n#\n", "Error: Unexpected end of import file!\n"},
        {"3:1", "Error in Import file: line too short! (move 1)\n"},
        {"3:1A\n4:\n", "Error in Import file: line too short! (move 2)\n"},
        {"3:1A\n4:1A\n", "Error: Move source is already occupied!\n"
                         "Error in Import file: (setup move number 2 is not correct!\n"},
        {"3:1a\n", "Error: Move source is out of bounds !\n"
                   "Error in Import file: (setup move number 1 is not correct!\n"},
        {"3:5A\n", "Error: Move source is out of bounds !\n"
                   "Error in Import file: (setup move number 1 is not correct!\n"},
        {"3:\xff\xff\n", "Error: Move source is out of bounds !\n"
                         "Error in Import file: (setup move number 1 is not correct!\n"},
        {"3;1A\n", "Illegal char in import file!\n"},
        {"121212121\n\n", "Illegal char in import file!\n"},
        {"12121212\n2121212121\n", "Illegal char in import file!\n"},
        {"121212124\n", "Illegal char in import file!\n"},
        {board + "1A1\n", "Error in Import file: line too short! (move 1)\n"},
        {board + "2B-1C\n", "Illegal move in import file (move 1)!\n"},
        {board + "1A-1A\n", "Illegal move in import file (move 1)!\n"},
        {board + "1A-1a\n", "Error: Move distance is 32, but must be 1 !\n"
                            "Error in Import file: (move number 1 is not correct!)\n"},
        {board + "1A-1D\n", "Error: Move distance is 3, but must be 1 !\n"
                            "Error in Import file: (move number 1 is not correct!)\n"},
        {board + "1B-1A\n", "Error: Move source is not owned by active player !\n"
                            "Error in Import file: (move number 1 is not correct!)\n"},
        {board + "3E-2E\n", "Error: Move source is not free !\n"
                            "Error in Import file: (move number 1 is not correct!)\n"},
        {board + "1A-1B\n\xff\xff-\xff\xfe\n",
         "Error: Move source is out of bounds !\n"
         "Error in Import file: (move number 2 is not correct!)\n"},
    };
    auto record = std::make_unique<GameRecord>();
    record->LastMove = 7;
    for (const Damage& damage : damages) {
        EXPECT_EQ(1, Import(damage.Text, *record)) << damage.Text;
        EXPECT_EQ(damage.Printed, printed_) << damage.Text;
        EXPECT_EQ(7, record->LastMove);
    }
}

}  // namespace

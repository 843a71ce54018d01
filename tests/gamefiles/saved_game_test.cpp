#include "gamefiles/saved_game.h"

#include <memory>

#include <gtest/gtest.h>

#include "common/random_games.h"
#include "common/scratch_folder.h"
#include "support/numbers.h"

namespace {

class SavedGame : public testing::Test {
protected:
    SavedGame() : before_(GetBoardSettings()) { SetBoardSettings(DEFAULT_BOARD); }
    ~SavedGame() override { SetBoardSettings(before_); }

    // Loads a file with this content; what is printed is left in `printed_`.
    int Load(std::string_view text, GameRecord& record) {
        WriteFile(file_, text);
        testing::internal::CaptureStdout();
        const int result = LoadGame(file_, record);
        printed_ = testing::internal::GetCapturedStdout();
        return result;
    }

    ScratchFolder folder_;
    std::string file_ = folder_.File("game.tlx");
    std::string printed_;

private:
    BoardSettings before_;
};

// Loads the saved game back under other settings, and saves it again. The text is written without
// SaveGame's wait for the disk: there are thousands of games.
void ExpectRoundTrip(const GameRecord& record, const std::string& file) {
    const BoardSettings settings = GetBoardSettings();
    const std::string text = SavedGameText(record);
    WriteFile(file, text);
    SetBoardSettings({4, 4, 1});
    auto loaded = std::make_unique<GameRecord>();
    ASSERT_EQ(0, LoadGame(file, *loaded)) << text;
    EXPECT_EQ(settings, GetBoardSettings()) << text;
    EXPECT_EQ(-1, FirstDifference(record, *loaded)) << text;
    EXPECT_EQ(text, SavedGameText(*loaded));
}

// A whole game on three spaces in a row: WHITE takes the life stone, and BLACK's stone is cut off.
constexpr std::string_view SMALL_GAME = "DIM(3,1,1)\n"
                                        "# White : -\n"
                                        "# Black : -\n"
                                        "# Date  : -\n"
                                        "#\n"
                                        "# phase 1:\n"
                                        "B1  C1\n"
                                        "A1\n"
                                        "# Setup:\n"
                                        "# 1 * 2 \n"
                                        "# \n"
                                        "# phase 2:\n"
                                        "A1-B1  C1-B1\n"
                                        "#  0  :  3\n";

// Random starts in which one side never can move.
constexpr std::string_view BLACK_PASSES = "DIM(3,1,2)\n"
                                          "# White : -\n"
                                          "# Black : -\n"
                                          "# Date  : -\n"
                                          "#\n"
                                          "# phase 1:\n"
                                          "# Setup:\n"
                                          ": 1 * 1 \n"
                                          "# \n"
                                          "# phase 2:\n"
                                          "A1-B1  PASS \n"
                                          "C1-B1\n"
                                          "#  3  :  0\n";
constexpr std::string_view WHITE_PASSES = "DIM(3,1,2)\n"
                                          "# White : -\n"
                                          "# Black : -\n"
                                          "# Date  : -\n"
                                          "#\n"
                                          "# phase 1:\n"
                                          "# Setup:\n"
                                          ": 2 * 2 \n"
                                          "# \n"
                                          "# phase 2:\n"
                                          "PASS   A1-B1\n"
                                          "PASS   C1-B1\n"
                                          "#  0  :  3\n";

TEST_F(SavedGame, EveryGameLoadsBackInEveryPhase) {
    std::mt19937 random(1);
    auto record = std::make_unique<GameRecord>();
    int longest = 0;
    for (int x = 1; x <= MAX_BOARD_X_DIM; ++x) {
        for (int y = 1; y <= MAX_BOARD_Y_DIM; ++y) {
            for (int game = 0; game < 4; ++game) {
                SCOPED_TRACE(std::to_string(x) + "x" + std::to_string(y) + " game " +
                             std::to_string(game));
                SetBoardSettings({x, y, 1 + RandomBelow(random, game == 0 ? 200 : 5)});
                *record = {};
                if (game == 3) {
                    FillBoardAtRandom(random, record->PositionList[0]);
                } else {
                    GenerateEmptyStartPosition(record->PositionList[0]);
                }
                PlayRandomGame(random, GAME_RECORD_SIZE, *record);
                longest = std::max(longest, record->LastMove);
                ExpectRoundTrip(*record, file_);
                // The same game broken off: early, late and anywhere.
                const int end = record->LastMove;
                for (const int stop : {0, 1, RandomBelow(random, end + 1), std::max(0, end - 1)}) {
                    record->LastMove = std::min(stop, end);
                    ExpectRoundTrip(*record, file_);
                }
                if (HasFailure()) {
                    return;
                }
            }
        }
    }
    EXPECT_GT(longest, 180);  // the largest boards were really played through
}

TEST_F(SavedGame, EveryPlyOfAGameWithPassesLoadsBack) {
    auto record = std::make_unique<GameRecord>();
    for (const std::string_view game : {SMALL_GAME, BLACK_PASSES, WHITE_PASSES}) {
        ASSERT_EQ(0, Load(game, *record)) << printed_;
        EXPECT_EQ("", printed_);
        ASSERT_EQ(0, SaveGame(*record, file_));
        EXPECT_EQ(game, ReadFile(file_));
        EXPECT_TRUE(IsEndPosition(record->PositionList[record->LastMove]));
        for (; record->LastMove >= 0; --record->LastMove) {
            ExpectRoundTrip(*record, file_);
        }
    }
}

TEST_F(SavedGame, LifeStonesAreThoseOfTheGame) {
    // The player has chosen another number for the next game.
    auto record = std::make_unique<GameRecord>();
    for (const int stones : {1, 3, 60, INT_HIGHEST}) {
        GlobCfg.NumLifeStones = stones;
        GenerateEmptyStartPosition(record->PositionList[0]);
        GlobCfg.NumLifeStones = 7;
        const std::string line = "DIM(11,5," + std::to_string(stones) + ")\n";
        EXPECT_EQ(stones != 3, SavedGameText(*record).starts_with(line));
    }
    // A random start does not tell; the setting goes with the file.
    ResetAllButSpaces(record->PositionList[0]);
    EXPECT_TRUE(SavedGameText(*record).starts_with("DIM(11,5,7)\n"));
}

TEST_F(SavedGame, NothingIsWrittenPastTheEndOfTheGame) {
    auto record = std::make_unique<GameRecord>();
    ASSERT_EQ(0, Load(SMALL_GAME, *record));
    for (int i = 0; i < 5; ++i) {  // a player may go on passing for ever
        DoPass(record->PositionList[record->LastMove], record->PositionList[record->LastMove + 1]);
        ++record->LastMove;
    }
    EXPECT_EQ(SMALL_GAME, SavedGameText(*record));
}

TEST_F(SavedGame, GamesThatAreOverWhenTheSetupEndsNeedNoFurtherLine) {
    auto record = std::make_unique<GameRecord>();
    EXPECT_EQ(0, Load("DIM(1,1,1)\nA1\n", *record));
    EXPECT_EQ(1, record->LastMove);
    EXPECT_EQ(0, Load("DIM(2,1,5)\nA1 B1", *record));
    EXPECT_EQ(2, record->LastMove);
    EXPECT_EQ(0, Load("DIM(2,1,1)\n: 1 .", *record));
    EXPECT_EQ(0, record->LastMove);
    // Not over: a line must come.
    EXPECT_EQ(1, Load("DIM(2,1,1)\n: 1 1", *record));
    EXPECT_EQ("", printed_);
}

struct Damage {
    const char* Text;
    const char* Printed;
};

TEST_F(SavedGame, DamagedFilesAreRefusedWithTheirReason) {
    const Damage damages[] = {
        {"", ""},
        {"# only a comment\n", ""},
        {"DIM(3,1,1)", ""},
        {"DIM(3,1,1)\nB1  C1\nA1\n", ""},
        {"DIM(3,1,1)\nB1  C1\nA1\nA1-B1", "Error: Incomplete Input!\n"
                                          "Error in savegame file: (setup move number 5 is no "
                                          "move!\n"},
        {"DIM(3,1)\nBREAK\n", "Error! DIM-Line must have Format: DIM(x,y,l)\n"},
        {"DIM (3,1,1)\nBREAK\n", "Error! DIM-Line must have Format: DIM(x,y,l)\n"},
        {"DIM(3,1,)\n", "Error! DIM-Line must have Format: DIM(x,y,l)\n"},
        {"DIM\n", "Error! DIM-Line must have Format: DIM(x,y,l)\n"},
        {"DIM(0,1,1)\nBREAK\n", "Error! DIM-Line values are out of range!\n"},
        {"DIM(16,1,1)\nBREAK\n", "Error! DIM-Line values are out of range!\n"},
        {"DIM(3,10,1)\nBREAK\n", "Error! DIM-Line values are out of range!\n"},
        {"DIM(3,-1,1)\nBREAK\n", "Error! DIM-Line values are out of range!\n"},
        {"DIM(3,1,0)\nBREAK\n", "Error! DIM-Line values are out of range!\n"},
        {"DIM(99999999999,1,1)\nBREAK\n", "Error! DIM-Line values are out of range!\n"},
        {"DIM(3,1,1)\nB1  B1\n", "Error: Move source is already occupied!\n"
                                 "Error in savegame file: (setup move number 2 is not correct!\n"},
        {"DIM(3,1,1)\nB1\nC1\n", "Error: Incomplete Input!\n"
                                 "Error in savegame file: (setup move number 2 is no move!\n"},
        {"DIM(3,1,1)\nB2\n", "Error: Row number ('2') of source tower is not valid! (Range: 1-1)\n"
                             "Error in savegame file: (setup move number 1 is no move!\n"},
        {"DIM(3,1,1)\nB1  C1\nA1\nA1-C1\n",
         "Error: Move distance is 2, but must be 1 !\n"
         "Error in savegame file: (setup move number 4 is not correct!\n"},
        {"DIM(3,1,1)\nB1  C1\nA1\nPASS \n",
         "Error in savegame file: Illegal PASS move in move 4\n"},
        {"DIM(3,1,1)\n*1*\n",
         "Error: Column letter ('*') of source tower is not valid! (Range: A-C)\n"
         "Error in savegame file: (setup move number 1 is no move!\n"},
        {"DIM(3,1,1)\n: 1 * 3\nBREAK\n", "Error: Reading Setup position (3,1) failed!\n"},
        {"DIM(3,2,1)\n: 1 * 2\n 1 1 1\nBREAK\n",
         "Error: Random Setup line 2 does not start with a ':'!\n"},
        {"DIM(3,2,1)\n: 1 * 2\n: 1\nBREAK\n", "Error: Reading Setup position (2,1) failed!\n"},
        {"DIM(3,2,1)\n: 1 * 2\n", ""},
    };
    GlobCfg.NumLifeStones = 9;
    const BoardSettings settings = GetBoardSettings();
    auto before = std::make_unique<GameRecord>();
    std::mt19937 random(2);
    GenerateEmptyStartPosition(before->PositionList[0]);
    PlayRandomGame(random, 70, *before);
    auto record = std::make_unique<GameRecord>(*before);
    for (const Damage& damage : damages) {
        EXPECT_EQ(1, Load(damage.Text, *record)) << damage.Text;
        EXPECT_EQ(damage.Printed, printed_) << damage.Text;
        EXPECT_EQ(settings, GetBoardSettings()) << damage.Text;
        EXPECT_EQ(-1, FirstDifference(*before, *record)) << damage.Text;
    }
}

// Whatever a slip of the finger makes of a file, it is refused and changes nothing, or it is a game
// that saves and loads again.
TEST_F(SavedGame, AnyDamageIsRefusedWholeOrIsAnotherGame) {
    constexpr std::string_view SLIPS = "ABCK159 -:.*#\n\tPx";
    std::mt19937 random(3);
    auto before = std::make_unique<GameRecord>();
    auto record = std::make_unique<GameRecord>();
    int numRefused = 0;
    for (int i = 0; i < 1500; ++i) {
        SetBoardSettings({2 + RandomBelow(random, 4), 1 + RandomBelow(random, 4), 2});
        *before = {};
        GenerateEmptyStartPosition(before->PositionList[0]);
        if (i % 3 == 0) {
            FillBoardAtRandom(random, before->PositionList[0]);
        }
        PlayRandomGame(random, RandomBelow(random, 40), *before);
        std::string text = SavedGameText(*before);
        const auto place =
            static_cast<unsigned>(RandomBelow(random, static_cast<int>(text.size())));
        const auto sign =
            static_cast<unsigned>(RandomBelow(random, static_cast<int>(SLIPS.size())));
        switch (i % 4) {
        case 0:
            text[place] = SLIPS[sign];
            break;
        case 1:
            text.erase(place, 1 + sign);
            break;
        case 2:
            text.insert(place, 1, SLIPS[sign]);
            break;
        default:
            text.resize(place);
            break;
        }
        const BoardSettings settings = GetBoardSettings();
        *record = *before;
        if (Load(text, *record) != 0) {
            ++numRefused;
            ASSERT_EQ(settings, GetBoardSettings()) << text;
            ASSERT_EQ(-1, FirstDifference(*before, *record)) << text;
        } else {
            ASSERT_NO_FATAL_FAILURE(ExpectRoundTrip(*record, file_)) << text;
        }
    }
    EXPECT_GT(numRefused, 300);
    EXPECT_LT(numRefused, 1200);
}

TEST_F(SavedGame, LinesUpToTheLimitAreReadAndLongerOnesEndTheProcess) {
    auto record = std::make_unique<GameRecord>();
    const std::string filler(198 - 6, ' ');
    EXPECT_EQ(0, Load("DIM(1,1,1)\nA1" + filler + "BREK\nBREAK\n", *record));
    WriteFile(file_, "DIM(1,1,1)\n#" + filler + "      \nA1\n");
    EXPECT_EXIT(static_cast<void>(LoadGame(file_, *record)), testing::ExitedWithCode(1),
                "FileReadLine: Error: Input line too long \\(more than 199 chars\\)");
}

}  // namespace

// Whole games saved and loaded; what a damaged file leads to stands in the transcripts.
#include "gamefiles/saved_game.h"

#include <gtest/gtest.h>

#include "common/captured.h"
#include "common/round_trip.h"

// On every size of board: complete, and broken off early, late and anywhere.
TEST(SavedGame, EveryGameLoadsBackInEveryPhase) {
    const std::string path = MakeFileInMemory();
    std::mt19937 random(1);
    const auto record = std::make_unique<GameRecord>();
    int longest = 0;
    for (int i = 0; i < 4 * MAX_BOARD_X_DIM * MAX_BOARD_Y_DIM; ++i) {
        const int columns = 1 + i / 4 % MAX_BOARD_X_DIM;
        const int rows = 1 + i / 4 / MAX_BOARD_X_DIM;
        const BoardSettings settings = {columns, rows,
                                        1 + RandomBelow(random, i % 4 == 0 ? 200 : 5)};
        SetBoardSettings(settings);
        *record = {};
        if (i % 4 == 3) {
            FillBoardAtRandom(random, record->PositionList[0]);
        } else {
            GenerateEmptyStartPosition(record->PositionList[0]);
        }
        PlayRandomGame(random, GAME_RECORD_SIZE, *record);
        const int end = record->LastMove;
        longest = std::max(longest, end);
        for (const int stop : {end, 0, 1, RandomBelow(random, end + 1), end - 1}) {
            record->LastMove = std::clamp(stop, 0, end);
            ASSERT_EQ(RoundTripFault(*record, path), "");
            ASSERT_EQ(GetBoardSettings(), settings);
        }
    }
    EXPECT_GT(longest, 180);  // the largest boards were really played through
}

// A few games, cut off at every byte and with every byte replaced by each of some that matter.
TEST(SavedGame, DamageAnywhereIsRefusedOrIsAnotherGame) {
    const std::string path = MakeFileInMemory();
    const auto record = std::make_unique<GameRecord>();
    int numLoaded = 0;
    int numRefused = 0;
    auto load = [&](const std::string& text) {
        WriteFile(path, text);
        record->LastMove = -5;
        SetBoardSettings({6, 2, 1});
        if (LoadGame(path, *record) == 0) {
            ++numLoaded;
            ASSERT_EQ(RoundTripFault(*record, path), "") << text;
        } else {
            ++numRefused;
            ASSERT_EQ(record->LastMove, -5);
            ASSERT_EQ(GetBoardSettings(), (BoardSettings{6, 2, 1}));
        }
    };
    std::mt19937 random(2);
    for (const BoardSettings& settings : {BoardSettings{5, 3, 2}, DEFAULT_BOARD}) {
        SetBoardSettings(settings);
        *record = {};
        GenerateEmptyStartPosition(record->PositionList[0]);
        PlayRandomGame(random, GAME_RECORD_SIZE, *record);
        const std::string whole = SavedGameText(*record);
        StdoutOf([&] {
            for (std::size_t i = 0; i < whole.size(); ++i) {
                load(whole.substr(0, i));
                for (const char c : std::string_view("\0\n -#:1AaP*\xff", 12)) {
                    std::string damaged = whole;
                    damaged[i] = c;
                    load(damaged);
                }
            }
        });
    }
    EXPECT_GT(numLoaded, 1000);
    EXPECT_GT(numRefused, 1000);
}

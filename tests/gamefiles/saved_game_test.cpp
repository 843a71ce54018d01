// Whole games saved and loaded; what a damaged file leads to stands in the transcripts.
#include "gamefiles/saved_game.h"

#include <gtest/gtest.h>

#include "common/round_trip.h"

// On every size of board: complete, and broken off early, late and anywhere.
TEST(SavedGame, EveryGameLoadsBackInEveryPhase) {
    const ScratchFolder folder;
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
            ASSERT_EQ(RoundTripFault(*record, folder.File("game.tlx")), "");
            ASSERT_EQ(GetBoardSettings(), settings);
        }
    }
    EXPECT_GT(longest, 180);  // the largest boards were really played through
}

// Whole games taken over from logs; what a damaged log leads to stands in the transcripts.
#include "gamefiles/game_log.h"

#include <memory>

#include <gtest/gtest.h>

#include "common/random_games.h"
#include "common/scratch_folder.h"
#include "rules/notation.h"

namespace {

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

}  // namespace

TEST(GameLog, WholeGamesAreTakenOver) {
    const ScratchFolder folder;
    const std::string file = folder.File("game.log");
    std::mt19937 random(4);
    const auto played = std::make_unique<GameRecord>();
    const auto imported = std::make_unique<GameRecord>();
    int numPasses = 0;
    SetBoardSettings(DEFAULT_BOARD);
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
        WriteFile(file, log);
        ASSERT_EQ(ImportGame(file, *imported), 0) << log;
        ASSERT_EQ(FirstDifference(*played, *imported), -1) << log;
    }
    EXPECT_GT(numPasses, 50);  // passes do not stand in a log
}

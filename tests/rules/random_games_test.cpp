// Whole games at random, on every size of board and always the same ones.
#include <algorithm>
#include <memory>

#include <gtest/gtest.h>

#include "common/board_text.h"
#include "common/random_games.h"
#include "rules/plain_rules.h"

namespace {

// The moves that there are, and what one of them leads to.
void ComparePly(const Position& parent, const Move& move, const Position& child) {
    const PlainBoard board = PlainBoardOf(parent);
    MoveArray moves;
    const int count = GetPossibleMoves(parent, moves);
    std::vector<PlainMove> found;
    for (int i = 0; i < count; ++i) {
        found.push_back(PlainMoveOf(parent, moves[i]));
    }
    std::sort(found.begin(), found.end());
    ASSERT_EQ(found, PlainMoves(board, parent.ActivePlayer)) << WriteBoardText("position", parent);
    ASSERT_EQ(PlainBoardOf(child),
              count == 0 ? board : PlainAfter(board, PlainMoveOf(parent, move)))
        << WriteBoardText("position", parent);
    ASSERT_NE(child.ActivePlayer, parent.ActivePlayer);
}

}  // namespace

TEST(RandomGames, FollowThePlainRules) {
    const auto record = std::make_unique<GameRecord>();
    for (int columns = 1; columns <= MAX_BOARD_X_DIM; ++columns) {
        for (int rows = 1; rows <= MAX_BOARD_Y_DIM; ++rows) {
            SCOPED_TRACE(testing::Message() << columns << " by " << rows);
            UseBoard(columns, rows);
            GlobCfg.NumLifeStones = 1 + (columns + rows) % 4;
            std::mt19937 random(columns * 100 + rows);
            GenerateEmptyStartPosition(record->PositionList[0]);
            PlayRandomGame(random, GAME_RECORD_SIZE, *record);
            for (int i = NumBoardSpaces(); i < record->LastMove; ++i) {
                ComparePly(record->PositionList[i], record->MoveList[i],
                           record->PositionList[i + 1]);
                ASSERT_FALSE(HasFatalFailure());
            }
            const PlainBoard end = PlainBoardOf(record->PositionList[record->LastMove]);
            EXPECT_TRUE(PlainMoves(end, WHITE).empty() && PlainMoves(end, BLACK).empty());
        }
    }
}

#include "rules/referee.h"

#include <gtest/gtest.h>

#include "common/board_text.h"
#include "common/captured.h"
#include "rules/setup.h"

namespace {

bool IsOver(const char* line) {
    const BoardText board = ReadBoardText(line);
    UseBoard(board);
    return IsEndPosition(board.Board);
}

}  // namespace

// What no line of input can ask for; the transcripts show the other reasons.
TEST(Referee, RefusesDirectionsThatAreNone) {
    const BoardText board = ReadBoardText("refuse 3 1 white : w1 r .");
    UseBoard(board);
    for (const int direction : {-1, NUM_DIRECTIONS}) {
        const Move move = {.Column = 0, .Row = 0, .Direction = direction};
        EXPECT_EQ(StdoutOf([&] { EXPECT_FALSE(MoveIsOk(board.Board, move, 1)); }),
                  "Error: Move direction has an illegal value!\n");
    }
}

TEST(RefereeDeathTest, NobodyElseMoves) {
    UseBoard(11, 5);
    Position position;
    position.ActivePlayer = LIFE;
    EXPECT_EXIT(EndAsMain([&] { (void)MoveIsOk(position, {}, 0); }), testing::ExitedWithCode(1),
                "^CheckMove: Active Player must be WHITE or BLACK !\n$");
}

TEST(Referee, EndsTheGameWhenNeitherSideCanMove) {
    EXPECT_TRUE(IsOver("apart 7 1 white : w2 . . r . b3 ."));
    EXPECT_TRUE(IsOver("life 3 1 white : r r r"));
    EXPECT_TRUE(IsOver("nothing 3 1 white : . . ."));
    // Only one side is stuck, whoever is to move.
    EXPECT_FALSE(IsOver("stuck 7 1 white : w2 . . r b1 . ."));
    EXPECT_FALSE(IsOver("stuck 7 1 black : w2 . . r b1 . ."));
    // A tower with targets that is enclosed moves no more than one without.
    EXPECT_TRUE(IsOver("enclosed 3 3 white : - r r; r w1 r; r r -"));
    EXPECT_FALSE(IsOver("enclosed 3 3 white : - r r; r w1 .; r r -"));

    Position setup;
    UseBoard(1, 1);
    GenerateEmptyStartPosition(setup);
    EXPECT_FALSE(IsEndPosition(setup));
}

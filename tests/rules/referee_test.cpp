#include "rules/referee.h"

#include <gtest/gtest.h>

#include "common/board_text.h"
#include "common/captured.h"
#include "rules/setup.h"

namespace {

struct Case {
    Move Entry;
    int Distance;
    const char* Reason;  // empty: accepted
};

void Check(const Position& position, std::initializer_list<Case> cases) {
    for (const Case& example : cases) {
        bool good = false;
        const std::string said =
            StdoutOf([&] { good = MoveIsOk(position, example.Entry, example.Distance); });
        EXPECT_EQ(said, example.Reason);
        EXPECT_EQ(good, said.empty());
    }
}

bool IsOver(const char* line) {
    const BoardText board = ReadBoardText(line);
    UseBoard(board);
    return IsEndPosition(board.Board);
}

}  // namespace

// Each of these moves is wrong in every way that comes later in the order as well, as far as that
// can be.
TEST(Referee, RefusesTowerMovesInOrder) {
    const BoardText board = ReadBoardText("refuse 7 5 white : - - b1 b1 b1 . .; - w3 b1 w1 b1 . .; "
                                          ". . b1 b1 b1 r .; w2 . . . w1 . -; "
                                          ". . . . . - -");
    UseBoard(board);
    Check(board.Board,
          {
              {{1, -1, 1, 9}, 7, "Error: Move source is out of bounds !\n"},
              {{1, 7, 1, 9}, 7, "Error: Move source is out of bounds !\n"},
              {{1, 1, -1, 9}, 7, "Error: Move source is out of bounds !\n"},
              {{1, 1, 5, 9}, 7, "Error: Move source is out of bounds !\n"},
              {{1, 1, 0, 9}, 7, "Error: Move source is out of bounds !\n"},
              {{1, 6, 3, 9}, 7, "Error: Move source is out of bounds !\n"},
              {{1, 0, 2, 9}, 7, "Error: Move source is an empty space !\n"},
              {{1, 2, 1, 9}, 7, "Error: Move source is not owned by active player !\n"},
              {{1, 5, 2, 9}, 7, "Error: Move source is not owned by active player !\n"},
              {{1, 3, 1, 9}, 7, "Error: Move source is not free !\n"},
              {{1, 1, 1, 9}, 7, "Error: Move distance is 7, but must be 3 !\n"},
              {{1, 1, 1, 9}, 2, "Error: Move distance is 2, but must be 3 !\n"},
              {{1, 1, 1, 9}, -3, "Error: Move distance is -3, but must be 3 !\n"},
              {{1, 1, 1, 6}, 3, "Error: Move direction has an illegal value!\n"},
              {{1, 1, 1, -1}, 3, "Error: Move direction has an illegal value!\n"},
              {{1, 1, 1, 4}, 3, "Error: Move target is out of bounds !\n"},
              {{1, 0, 3, 4}, 2, "Error: Move target is out of bounds !\n"},  // the corner cut off
              {{1, 4, 3, 1}, 1, "Error: Move target is an empty space !\n"},
              {{1, 1, 1, 0}, 3, ""},
              {{2, 4, 3, 5}, 1, ""},  // a life stone; nobody looks at the kind
          });
}

TEST(Referee, RefusesPlacementsOnStonesAndOutside) {
    UseBoard(11, 5);
    Position position;
    GenerateEmptyStartPosition(position);
    position.Spaces[4][2] = SpaceWith(LIFE);
    Check(position, {
                        {{0, 4, 2, 9}, 7, "Error: Move source is already occupied!\n"},
                        {{0, 0, 0, 0}, 0, "Error: Move source is out of bounds !\n"},
                        {{0, 10, 4, 0}, 0, "Error: Move source is out of bounds !\n"},
                        {{0, -1, 2, 0}, 0, "Error: Move source is out of bounds !\n"},
                        {{0, 3, 2, 9}, 7, ""},
                    });
}

TEST(RefereeDeathTest, NobodyElseMoves) {
    UseBoard(11, 5);
    Position position;
    position.ActivePlayer = LIFE;
    EXPECT_EXIT((void)MoveIsOk(position, {}, 0), testing::ExitedWithCode(1),
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

TEST(Referee, CountsTheStonesUnderEachColor) {
    int white = -1;
    int black = -1;
    const BoardText board = ReadBoardText("score 7 1 white : w2* . . r w3 b12 b1");
    UseBoard(board);
    EXPECT_TRUE(GetScore(board.Board, white, black));
    EXPECT_EQ(white, 5);
    EXPECT_EQ(black, 13);
    EXPECT_FALSE(GetScore(ReadBoardText("score 7 1 white : w2* . . r . . .").Board, white, black));
    EXPECT_EQ(white, 2);
    EXPECT_EQ(black, 0);
}

// The evaluation against the plain one, and a placement worked by hand. Levels, turns, reports and
// matches stand in the transcripts.
#include <cmath>

#include <gtest/gtest.h>

#include "common/engine_games.h"
#include "engine/evaluation.h"
#include "engine/placement.h"
#include "plain/plain_engine.h"
#include "support/numbers.h"
#include "support/random.h"

TEST(Evaluation, IsThePlainOneAndCountsAndDraws) {
    std::mt19937 random(3);
    for (int game = 0; game < 40; ++game) {
        const EvalWeights weights = SomeWeights(random, game);
        WalkGame(random, RandomStart(random, game), [&](const Position& position) {
            Position fast = position;
            Position plain = position;
            const unsigned seed = static_cast<unsigned>(random());
            SeedRandom(seed);
            EvalCount = 6;
            EvaluatePosition(fast, weights);
            const int draw = DrawRandom();
            SeedRandom(seed);
            plain::EvaluatePosition(plain, weights);
            ASSERT_TRUE(SamePosition(fast, plain)) << WriteBoardText("position", position);
            ASSERT_EQ(draw, DrawRandom());
            ASSERT_EQ(EvalCount, 7);
        });
    }
    EvalCount = INT_HIGHEST - 1;
    CountEvaluations(5);
    EXPECT_EQ(EvalCount, INT_HIGHEST);
}

// Ten white stones to seven, and nobody can move: the towers on the long row are too high.
TEST(Evaluation, EndPositionsAreWorthTheirStones) {
    for (const bool whiteMoves : {true, false}) {
        const BoardText board =
            ReadBoardText(whiteMoves ? "end 3 1 white : w10* b7 r" : "end 3 1 black : w10* b7 r");
        UseBoard(board);
        Position position = board.Board;
        EXPECT_EQ(EvaluatePosition(position, {}), 1);
        EXPECT_EQ(position.Value, whiteMoves ? 3000.0 : -3000.0);
    }
}

// A row of three with a life stone on A and a white stone on B; Black has only C to fill. Every
// space is on the outer ring, so every neighbour counts fully.
TEST(Placement, ScoresWorkedByHand) {
    UseBoard(3, 1);
    Position position;
    GenerateEmptyStartPosition(position);
    position.SetupPhase = 1;
    position.ActivePlayer = BLACK;
    position.Spaces[0][0] = SpaceWith(LIFE);
    position.Spaces[1][0] = SpaceWith(WHITE);
    EvalWeights weights;
    SetLevel(FULL_STRENGTH_LEVEL, weights);
    weights.SetupRandom = 0.0;
    // Of the stone on B: one half each from A and C make a raw value of 1, a flank value of 1/2.
    auto flankOf = [](double raw) { return 1 - std::pow(2.0, -raw); };
    const double flank = flankOf(1.0);
    const double toLife = 1.0 / 3.0;                       // life two steps away
    const double forBlack = 0.3 * flank -                  // a hostile neighbour
                            0.3 * (flankOf(1.5) - flank);  // C turns hostile for B
    const double forWhite = 0.0 +                          // a friendly neighbour
                            0.3 * (flankOf(0.5) - flank);  // C turns friendly for B
    Move move;
    EXPECT_NEAR(GetBestSetupMove(position, weights, move), toLife + forBlack - -forWhite + 0.1,
                1e-12);
    EXPECT_EQ(move.Column, 2);
}

// Levels, placements, the computer's turn, the report and matches.
#include <bit>
#include <cmath>
#include <cstdint>

#include <gtest/gtest.h>

#include "common/captured.h"
#include "common/engine_games.h"
#include "engine/computer.h"
#include "engine/evaluation.h"
#include "engine/placement.h"
#include "engine/report.h"
#include "engine/self_play.h"
#include "plain/plain_engine.h"
#include "support/numbers.h"
#include "support/random.h"

namespace {

EvalWeights WeightsOf(int level) {
    EvalWeights weights;
    SetLevel(level, weights);
    return weights;
}

TEST(Levels, ScaleUpToFullStrength) {
    const EvalWeights none = WeightsOf(0);
    EXPECT_EQ(none.Moves[1][0], 0.0);
    EXPECT_EQ(none.Random, 1.0);
    EXPECT_EQ(none.SetupRandom, 1.0);
    EXPECT_EQ(none.SetupFlankFactor, 1.3);
    const EvalWeights nearly = WeightsOf(999);
    EXPECT_EQ(nearly.Moves[1][0], 0.169 * 0.999);
    EXPECT_EQ(nearly.Random, 1 - 0.999);
    EXPECT_EQ(nearly.SetupRandom, 0.1 * 0.999 + (1 - 0.999));
    for (const int level : {1000, 1001, 5000, INT_HIGHEST}) {
        EXPECT_EQ(WeightsOf(level).Moves[1][0], 0.169);
        EXPECT_EQ(WeightsOf(level).Random, 0.0);
        EXPECT_EQ(SearchBudget(level), level - 1000);
    }
    EXPECT_EQ(WeightsOf(-1000).Moves[1][0], -0.169);
    EXPECT_EQ(WeightsOf(-1000).Random, 2.0);
    EXPECT_EQ(SearchBudget(INT_LOWEST), 0);
}

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
        EXPECT_EQ(EvaluatePosition(position, WeightsOf(0)), 1);
        EXPECT_EQ(position.Value, whiteMoves ? 3000.0 : -3000.0);
    }
}

TEST(Placement, IsThePlainOne) {
    std::mt19937 random(4);
    for (int game = 0; game < 60; ++game) {
        UseBoard(1 + RandomBelow(random, MAX_BOARD_X_DIM),
                 1 + RandomBelow(random, MAX_BOARD_Y_DIM));
        GlobCfg.NumLifeStones = 1 + RandomBelow(random, 6);
        EvalWeights weights = WeightsOf(game % 2 == 0 ? 5000 : RandomBelow(random, 1000));
        weights.SetupFlankFactor = game % 3 == 0 ? 1.7 : 1.3;
        Position position;
        GenerateEmptyStartPosition(position);
        while (position.SetupPhase != 0) {
            const unsigned seed = static_cast<unsigned>(random());
            Move fast;
            Move plain;
            SeedRandom(seed);
            const double fastScore = GetBestSetupMove(position, weights, fast);
            const int draw = DrawRandom();
            SeedRandom(seed);
            const double plainScore = plain::GetBestSetupMove(position, weights, plain);
            ASSERT_EQ(std::bit_cast<std::uint64_t>(fastScore),
                      std::bit_cast<std::uint64_t>(plainScore));
            ASSERT_EQ(fast, plain);
            ASSERT_EQ(draw, DrawRandom());
            const Position parent = position;
            DoSetupMove(parent, fast, position);
        }
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
    EvalWeights weights = WeightsOf(1000);
    weights.SetupRandom = 0.0;
    // Of the stone on B: one half each from A and C make a raw value of 1, a flank value of 1/2.
    EXPECT_EQ(GetRawFlankValue(position, 1, 0, WHITE, weights), 1.0);
    const double flank = 1 - std::pow(2.0, -1.0);
    const double toLife = 1.0 / 3.0;                             // life two steps away
    const double forBlack = 0.3 * flank -                        // a hostile neighbour
                            0.3 * (GetFlankValue(1.5) - flank);  // C turns hostile for B
    const double forWhite = 0.0 +                                // a friendly neighbour
                            0.3 * (GetFlankValue(0.5) - flank);  // C turns friendly for B
    Move move;
    EXPECT_NEAR(GetBestSetupMove(position, weights, move), toLife + forBlack - -forWhite + 0.1,
                1e-12);
    EXPECT_EQ(move.Column, 2);
}

TEST(Computer, PlaysEveryKindOfTurn) {
    const BoardText board = ReadBoardText("row 6 1 white : w1 w1 r b3 . .");
    UseBoard(board);
    Position position = board.Board;
    Position next;
    Position last;
    std::string message;
    Move move;
    SearchEffort effort = {.Depth = 2};
    EXPECT_EQ(DoComputerMove(position, effort, WeightsOf(1000), next, message, move), 3);
    EXPECT_EQ(message, "Talurex does move: (A1-B1)\n");
    EXPECT_EQ(next.Value, -5000.0);
    EXPECT_EQ(next.ExactValue, 1);
    const Move before = move;
    EXPECT_EQ(DoComputerMove(next, effort, WeightsOf(1000), last, message, move), 0);
    EXPECT_EQ(message, "Talurex is passing\n");
    EXPECT_EQ(last.Value, 5000.0);
    EXPECT_EQ(move, before);

    GenerateEmptyStartPosition(position);
    EXPECT_EQ(DoComputerMove(position, effort, WeightsOf(1000), next, message, move), 6);
    EXPECT_EQ(message, "Talurex does setup move: (" +
                           std::string(1, static_cast<char>('A' + move.Column)) + "1)\n");
}

TEST(Report, AnswersForTheSideToMove) {
    const BoardText board = ReadBoardText("row 6 1 white : w1 w1 r b3 . .");
    UseBoard(board);
    auto report = [](const Position& position, ReportMode mode, int number) {
        return StdoutOf([&] { GetEvaluationInfo(position, mode, number); });
    };
    EXPECT_EQ(report(board.Board, ReportMode::Depth, 2),
              "The exact value is 5.00, best move: A1-B1  (depth: 2, Evaluated pos.: 4)\n");
    EXPECT_EQ(report(board.Board, ReportMode::Level, 1000),
              "The value is 0.16, best move: A1-B1  (depth: 0, Evaluated pos.: 3)\n");
    // Each search costs less than the budget until the value is exact.
    EXPECT_EQ(report(board.Board, ReportMode::Level, 1005),
              "The exact value is 5.00, best move: A1-B1  (depth: 2, Evaluated pos.: 4)\n");
    // Black, with b3 against w2, has no move here, and White takes it.
    EXPECT_EQ(report(ReadBoardText("row 6 1 black : . w2 r b3 . .").Board, ReportMode::Depth, 0),
              "The exact value is -5.00, best move: PASS  (depth: 0, Evaluated pos.: 1)\n");
    EXPECT_EQ(report(ReadBoardText("row 6 1 black : . . r w5 . .").Board, ReportMode::Depth, 3),
              "The game has already ended in this position!\nThe game ended 5:0 (WHITE wins)\n");
    Position setup;
    GenerateEmptyStartPosition(setup);
    EXPECT_EQ(report(setup, ReportMode::Level, 5000),
              "Evaluation during setup is not availible!\n");
}

TEST(SelfPlay, AMatchIsThatOfThePlainEngine) {
    UseBoard(11, 5);
    ABWeightPair players = {WeightsOf(1000), WeightsOf(1000)};
    players[1].Moves = {{{0.1, 0.2}, {-0.3, 0.4}}};
    for (unsigned seed = 1; seed <= 3; ++seed) {
        SeedRandom(seed);
        const MatchResult plain = plain::PlayMatch(players, 2, 1);
        SeedRandom(seed);
        EXPECT_EQ(PlayGames(players, 2, 1), plain);
    }
}

}  // namespace

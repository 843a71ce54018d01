// The search against the plain one, and on boards small enough to be worked by hand.
#include <algorithm>
#include <atomic>
#include <bit>
#include <cmath>
#include <cstdint>
#include <fstream>

#include <gtest/gtest.h>

#include "common/captured.h"
#include "common/engine_games.h"
#include "engine/evaluation.h"
#include "engine/search.h"
#include "kernel/bounds.h"
#include "kernel/search_kernel.h"
#include "plain/plain_engine.h"
#include "support/random.h"

namespace {

std::uint64_t BitsOf(double value) {
    return std::bit_cast<std::uint64_t>(value);
}

// Everything that a search leaves behind.
struct Outcome {
    std::uint64_t Value = 0;
    std::uint64_t PositionValue = 0;
    int Column = 0;
    int Row = 0;
    int Direction = 0;
    int Exact = 0;
    std::int64_t Count = 0;
    int NextDraw = 0;  // tells how many random numbers were drawn

    bool operator==(const Outcome&) const = default;
};

std::ostream& operator<<(std::ostream& out, const Outcome& outcome) {
    return out << std::bit_cast<double>(outcome.Value) << " move " << outcome.Column << ' '
               << outcome.Row << ' ' << outcome.Direction << " exact " << outcome.Exact << " count "
               << outcome.Count << " next draw " << outcome.NextDraw;
}

enum class Engine { Fast, Plain };

Outcome SearchWith(Engine engine, Position position, int depth, const EvalWeights& weights,
                   unsigned seed) {
    Move move;
    SeedRandom(seed);
    EvalCount = 0;
    plain::EvalCount = 0;
    const auto search = engine == Engine::Fast ? GetBestMove : plain::GetBestMove;
    const double value = search(position, depth, weights, move, position.ExactValue);
    return {
        BitsOf(value),       BitsOf(position.Value),       move.Column, move.Row, move.Direction,
        position.ExactValue, EvalCount + plain::EvalCount, DrawRandom()};
}

// Deep enough to meet passes, ends and repeated positions, and still quick for the plain search.
int DepthFor(const Position& position) {
    const int numMoves = GetNumMoves(position);
    return numMoves > 60 ? 0 : numMoves > 25 ? 1 : numMoves > 12 ? 2 : numMoves > 6 ? 3 : 6;
}

TEST(Search, FindsWhatThePlainSearchFinds) {
    std::mt19937 random(2);
    for (int game = 0; game < 60; ++game) {
        WalkGame(random, RandomStart(random, game), [&](const Position& position) {
            // Other ones each time: nothing found with the ones before may be left in the table.
            const EvalWeights weights = SomeWeights(random, game);
            for (int depth = 0; depth <= DepthFor(position); ++depth) {
                const unsigned seed = static_cast<unsigned>(random());
                const Outcome fast = SearchWith(Engine::Fast, position, depth, weights, seed);
                ASSERT_EQ(fast, SearchWith(Engine::Plain, position, depth, weights, seed))
                    << WriteBoardText("position", position) << " depth " << depth;
                SeedRandom(seed);
                const KernelResult generic =
                    GenericKernel::SearchPosition(position, depth, weights, nullptr);
                ASSERT_EQ(BitsOf(generic.Value), fast.Value);
                ASSERT_EQ(generic.NumEvaluations, fast.Count);
            }
        });
        ASSERT_FALSE(HasFatalFailure()) << "game " << game;
    }
}

struct Expected {
    double BestValue;
    const char* Move;  // column letters of source and target
    int Exact;
    int Count;
};

void ExpectSearch(const char* line, int depth, const Expected& expected) {
    SCOPED_TRACE(testing::Message() << line << " depth " << depth);
    const BoardText board = ReadBoardText(line);
    UseBoard(board);
    Position position = board.Board;
    EvalWeights weights;
    SetLevel(FULL_STRENGTH_LEVEL, weights);
    Move move;
    EvalCount = 0;
    EXPECT_EQ(BitsOf(-GetBestMove(position, depth, weights, move, position.ExactValue)),
              BitsOf(expected.BestValue));
    const Place target = MoveTarget(position, move);
    EXPECT_EQ(move.Column, expected.Move[0] - 'A');
    EXPECT_EQ(target.Column, expected.Move[1] - 'A');
    EXPECT_EQ(position.ExactValue, expected.Exact);
    EXPECT_EQ(EvalCount, expected.Count);
}

// A row of four: White has to build the tower that Black then takes.
TEST(Search, OneWayToTheEnd) {
    const char* line = "row 4 1 white : w1 r b1 .";
    // Behind A-B stand w2* and b1: a white tower less, one move of Black's onto life, heights 2
    // and 1.
    const double leaf =
        0.0 + -1 * 0.068 + -1 * 0.169 + -1 * 0.006 + 1 * 0.015 + 2 * 0.077 + -1 * 0.209;
    ExpectSearch(line, 0, {leaf, "AB", 0, 1});
    for (const int depth : {1, 2, MAX_SEARCH_DEPTH}) {
        ExpectSearch(line, depth, {-3000.0, "AB", 1, 2});  // three stones, all Black's in the end
    }
}

// A row of six: behind A-B Black must pass and White takes it all. B-A leaves White nothing and B-C
// two stones to three.
TEST(Search, APassTakesAPlyAndNeedsOneToBeLookedBehind) {
    const char* line = "row 6 1 white : w1 w1 r b3 . .";
    const double leaf = 0.0 + 1 * 0.169 + -1 * 0.006;  // w2 with a target, and b3
    ExpectSearch(line, 0, {leaf, "AB", 0, 3});
    ExpectSearch(line, 1, {leaf, "AB", 0, 3});
    ExpectSearch(line, 2, {5000.0, "AB", 1, 4});
    ExpectSearch(line, 3, {5000.0, "AB", 1, 4});
}

// The two best moves are worth the same but for the roundings of their sums: the later one is
// better by the last bit.
TEST(Search, TheLastBitDecides) {
    const BoardText board = ReadBoardText(
        "position 10 9 white : - - - - . . . . . .; - - - . b2* . w3 b1 . w2; - - b4 r . b2 . . w2 "
        "b1; - w1 b1 w2* . b1 b1 . b5* r; b1 . . b1 b3 b1 b2 b1 r r; . b4 . w1 . b3 w6* r b1 -; w3 "
        "r . w1 . b1 w3 . - -; . w1 . . . . . - - -; . w2* . . . . - - - -");
    UseBoard(board);
    EvalWeights weights;
    SetLevel(FULL_STRENGTH_LEVEL, weights);
    for (const int depth : {0, 1}) {
        EXPECT_EQ(SearchWith(Engine::Fast, board.Board, depth, weights, 1),
                  SearchWith(Engine::Plain, board.Board, depth, weights, 1));
    }
}

// An even end is a zero with a sign, which is printed: that of White's view, seen by who moves.
TEST(Search, AnEvenEndHasASign) {
    for (const int depth : {0, 1}) {
        ExpectSearch("row 5 1 white : w1 r . . b2*", depth, {0.0, "AB", 1, 1});
        ExpectSearch("row 5 1 black : b1 r . . w2*", depth, {-0.0, "AB", 1, 1});
    }
}

// Both moves lead to mirror images of one another, and behind both Black passes: the first one is
// taken, at depth 0 and deeper.
TEST(Search, TheFirstOfEqualMovesIsTaken) {
    const char* line = "row 3 1 white : r w1 r";
    const double leaf = 0.0 + 1 * 0.015 + 1 * 0.077 + 2 * 0.077 + 1 * 0.209;
    ExpectSearch(line, 0, {leaf, "BC", 0, 2});
    ExpectSearch(line, 1, {leaf, "BC", 0, 2});
    ExpectSearch(line, 2, {3000.0, "BC", 1, 4});  // the search behind a pass has the open bound
}

// Weights beyond all reason make every move worse than the value that stands for none: then none is
// chosen.
TEST(Search, NoMoveIsBetterThanNone) {
    const BoardText board = ReadBoardText("row 3 1 white : r w1 r");
    UseBoard(board);
    EvalWeights weights;
    SetLevel(FULL_STRENGTH_LEVEL, weights);
    weights.Moves[1][1] = -2e9;
    for (const int depth : {0, 1}) {
        Position position = board.Board;
        const Move before = {.Column = 1};
        Move move = before;
        EXPECT_EQ(GetBestMove(position, depth, weights, move, position.ExactValue),
                  -LOW_INIT_VALUE);
        EXPECT_EQ(move, before);
    }
}

TEST(SearchDeathTest, NoMoveEndsTheProcess) {
    const BoardText board = ReadBoardText("row 3 1 white : . w2* r");
    UseBoard(board);
    Position position = board.Board;
    EvalWeights weights;
    Move move;
    const auto search = [&] { GetBestMove(position, 0, weights, move, position.ExactValue); };
    EXPECT_EXIT(EndAsMain(search), testing::ExitedWithCode(1),
                "GetBestMove: Calling Error! No move left");
}

// What the reports of a stopped search say; the report sets the flag after a number of calls.
std::atomic<int> StopFlag = 0;
int ReportsUntilStop = 0;
SearchProgress LastProgress;
void StopInTime(void* /*context*/, const SearchProgress& progress) {
    LastProgress = progress;
    if (--ReportsUntilStop <= 0) {
        StopFlag = 1;
    }
}

// A search stopped anywhere answers with a move of the position, draws nothing by itself, and the
// next search finds what it would have found anyway.
TEST(Search, AStoppedSearchLeavesNoTrace) {
    std::mt19937 random(5);
    int numStopped = 0;
    for (const BoardText& board : ReadBoardFile(TALUREX_TESTS "/../bench/positions.txt")) {
        UseBoard(board);
        if (GetNumMoves(board.Board) == 0) {
            continue;
        }
        for (int trial = 0; trial < 6; ++trial) {
            const EvalWeights weights = SomeWeights(random, trial);
            const int depth = std::min(3, std::stoi(board.Rest) - 1);
            const Outcome expected = SearchWith(Engine::Fast, board.Board, depth, weights, 9);
            StopFlag = 0;
            ReportsUntilStop = RandomBelow(random, 8);
            const Position& position = board.Board;
            EvalCount = 0;
            SeedRandom(9);
            if (ReportsUntilStop == 0) {
                StopFlag = 1;
            }
            LastProgress = {};
            const SearchWatch watch = {StopFlag, StopInTime};
            const SearchResult result = SearchPosition(position, depth, weights, &watch);
            const int draw = DrawRandom();
            SeedRandom(9);
            ASSERT_EQ(draw, DrawRandom()) << "after " << result.NumEvaluations << " evaluations";
            EXPECT_EQ(EvalCount, 0);
            numStopped += result.WasStopped ? 1 : 0;
            if (result.WasStopped) {
                EXPECT_LT(result.NumEvaluations, expected.Count);
                EXPECT_FALSE(result.IsExact);
                EXPECT_EQ(result.HasMove, LastProgress.HasMove);
            }
            if (result.WasStopped && result.HasMove) {
                EXPECT_EQ(result.BestMove, LastProgress.BestMove);
                EXPECT_EQ(result.BestValue, LastProgress.BestValue);
                EXPECT_TRUE(IsOccupied(position, result.BestMove.Column, result.BestMove.Row));
            }
            EXPECT_EQ(SearchWith(Engine::Fast, board.Board, depth, weights, 9), expected);
        }
    }
    EXPECT_GT(numStopped, 20);
}

// The signature: a change of what is searched changes it, a change of how fast does not.
TEST(Search, SignatureIsTheRecordedOne) {
    std::int64_t signature = 0;
    EvalWeights weights;
    SetLevel(FULL_STRENGTH_LEVEL, weights);
    for (const BoardText& board : ReadBoardFile(TALUREX_TESTS "/../bench/positions.txt")) {
        UseBoard(board);
        Position position = board.Board;
        if (GetNumMoves(position) == 0) {
            DoPass(board.Board, position);
        }
        Move move;
        EvalCount = 0;
        GetBestMove(position, std::stoi(board.Rest), weights, move, position.ExactValue);
        signature += EvalCount;
    }
    std::int64_t recorded = 0;
    std::ifstream(TALUREX_TESTS "/engine/signature.txt") >> recorded;
    EXPECT_EQ(signature, recorded);
}

}  // namespace

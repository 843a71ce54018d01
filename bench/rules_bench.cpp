// How many ways of four plies the plain rules walk in a second, from an early to a late position.
#include <benchmark/benchmark.h>

#include "common/board_text.h"
#include "rules/moves.h"

namespace {

constexpr int DEPTH = 4;

// The number of ways of `depth` plies; every position on the way is made.
long CountPaths(const Position& position, int depth) {
    MoveArray moves;
    const int count = GetPossibleMoves(position, moves);
    if (depth == 1) {
        return count;
    }
    Position child;
    if (count == 0) {
        DoPass(position, child);
        return CountPaths(child, depth - 1);
    }
    long paths = 0;
    for (int i = 0; i < count; ++i) {
        DoMove(position, moves[i], child);
        paths += CountPaths(child, depth - 1);
    }
    return paths;
}

void MovePaths(benchmark::State& state, const BoardText& board) {
    UseBoard(board);
    long paths = 0;
    for (auto _ : state) {
        paths += CountPaths(board.Board, DEPTH);
    }
    state.counters["paths"] =
        benchmark::Counter(static_cast<double>(paths), benchmark::Counter::kIsRate);
}

}  // namespace

int main(int argc, char** argv) {
    benchmark::Initialize(&argc, argv);
    for (const BoardText& board : ReadBoardFile(TALUREX_BENCH "/positions.txt")) {
        if (board.Name == "early" || board.Name == "middle" || board.Name == "late") {
            benchmark::RegisterBenchmark(("MovePaths/" + board.Name).c_str(), MovePaths, board)
                ->Unit(benchmark::kMillisecond);
        }
    }
    benchmark::RunSpecifiedBenchmarks();
}

// What a counted evaluation costs: the search of the engine, the plain model of the tests, and two
// floors, which do nothing but one weighted sum for each, without and with one draw of the C
// library's generator. All are measured side by side in one run, and the medians compared in a
// table; below it stands the signature of the search, the total number of evaluations over all
// positions.
#include <algorithm>
#include <array>
#include <chrono>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <map>
#include <string>
#include <vector>

#include <benchmark/benchmark.h>

#include "common/board_text.h"
#include "engine/evaluation.h"
#include "engine/search.h"
#include "kernel/tallies.h"
#include "plain/plain_engine.h"

namespace {

constexpr int REPETITIONS = 5;

// Nanoseconds per counted evaluation of every repetition, by name of the position.
using Costs = std::map<std::string, std::vector<double>>;
Costs FastCosts;
Costs PlainCosts;
std::vector<double> SumCosts;
std::vector<double> SumAndDrawCosts;
std::map<std::string, std::int64_t> Counts;

double Median(std::vector<double> values) {
    std::sort(values.begin(), values.end());
    return values.empty() ? 0.0 : values[values.size() / 2];
}

Position RootOf(const BoardText& board) {
    UseBoard(board);
    Position root = board.Board;
    if (GetNumMoves(root) == 0) {
        DoPass(board.Board, root);
    }
    return root;
}

EvalWeights FullStrength() {
    EvalWeights weights;
    SetLevel(FULL_STRENGTH_LEVEL, weights);
    return weights;
}

// Runs `search` and notes what each of its evaluations costs.
template <typename Search>
void Measure(benchmark::State& state, const BoardText& board, Costs& costs, Search search) {
    const Position root = RootOf(board);
    const EvalWeights weights = FullStrength();
    const int depth = std::stoi(board.Rest);
    std::int64_t evaluations = 0;
    const auto begin = std::chrono::steady_clock::now();
    for (auto _ : state) {
        Position position = root;
        Move move;
        evaluations += search(position, depth, weights, move);
    }
    const std::chrono::duration<double, std::nano> time = std::chrono::steady_clock::now() - begin;
    costs[board.Name].push_back(time.count() / static_cast<double>(evaluations));
    state.counters["evaluations"] =
        benchmark::Counter(static_cast<double>(evaluations), benchmark::Counter::kIsRate);
}

void Fast(benchmark::State& state, const BoardText& board) {
    Measure(state, board, FastCosts,
            [&board](Position& position, int depth, const EvalWeights& weights, Move& move) {
                EvalCount = 0;
                GetBestMove(position, depth, weights, move, position.ExactValue);
                Counts[board.Name] = EvalCount;
                return EvalCount;
            });
}

void Plain(benchmark::State& state, const BoardText& board) {
    Measure(state, board, PlainCosts,
            [](Position& position, int depth, const EvalWeights& weights, Move& move) {
                plain::EvalCount = 0;
                plain::GetBestMove(position, depth, weights, move, position.ExactValue);
                return plain::EvalCount;
            });
}

void Floor(benchmark::State& state, bool withDraw, std::vector<double>& costs) {
    constexpr int EVALUATIONS = 1 << 20;
    const TallyWeights weights = OrderWeights(FullStrength());
    std::array<Tallies, 64> tallies;
    for (Tallies& some : tallies) {
        for (int& sum : some.Sums) {
            sum = std::rand() % 20 - 10;
        }
    }
    const auto begin = std::chrono::steady_clock::now();
    for (auto _ : state) {
        for (int i = 0; i < EVALUATIONS; ++i) {
            if (withDraw) {
                benchmark::DoNotOptimize(std::rand());
            }
            benchmark::DoNotOptimize(WeightedSum(tallies[i % 64], weights));
        }
    }
    const std::chrono::duration<double, std::nano> time = std::chrono::steady_clock::now() - begin;
    costs.push_back(time.count() / EVALUATIONS / static_cast<double>(state.iterations()));
}

void PrintTable(const std::vector<BoardText>& boards) {
    const double sum = Median(SumCosts);
    const double sumAndDraw = Median(SumAndDrawCosts);
    std::int64_t signature = 0;
    std::printf(
        "\nns per counted evaluation (a weighted sum: %.1f, and a draw of the library: %.1f)\n",
        sum, sumAndDraw);
    std::printf("%-14s %5s %11s %8s %9s %9s %14s %10s\n", "position", "depth", "evaluations",
                "fast", "plain", "fast/sum", "fast/sum+draw", "plain/fast");
    for (const BoardText& board : boards) {
        const double fast = Median(FastCosts[board.Name]);
        const double plain = Median(PlainCosts[board.Name]);
        std::printf("%-14s %5s %11lld %8.1f %9.1f %9.2f %14.2f %10.1f\n", board.Name.c_str(),
                    board.Rest.c_str(), static_cast<long long>(Counts[board.Name]), fast, plain,
                    fast / sum, fast / sumAndDraw, plain / fast);
        signature += Counts[board.Name];
    }
    std::printf("signature: %lld\n", static_cast<long long>(signature));
}

}  // namespace

int main(int argc, char** argv) {
    // The repetitions of all benches take turns, so that a busy moment of the machine meets them
    // all.
    std::vector<char*> arguments(argv, argv + argc);
    std::string interleaving = "--benchmark_enable_random_interleaving=true";
    arguments.insert(arguments.begin() + 1, interleaving.data());
    int numArguments = argc + 1;
    benchmark::Initialize(&numArguments, arguments.data());
    const std::vector<BoardText> boards = ReadBoardFile(TALUREX_BENCH "/positions.txt");
    auto add = [](const std::string& name, auto... bench) {
        benchmark::RegisterBenchmark(name.c_str(), bench...)
            ->Repetitions(REPETITIONS)
            ->ReportAggregatesOnly()
            ->Unit(benchmark::kMillisecond);
    };
    add("Floor/sum", [](auto& state) { Floor(state, false, SumCosts); });
    add("Floor/sum_and_draw", [](auto& state) { Floor(state, true, SumAndDrawCosts); });
    for (const BoardText& board : boards) {
        add("Fast/" + board.Name, Fast, board);
        add("Plain/" + board.Name, Plain, board);
    }
    benchmark::RunSpecifiedBenchmarks();
    PrintTable(boards);
}

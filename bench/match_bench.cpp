// How many games of a self-play match the engine plays in a second.
#include <benchmark/benchmark.h>

#include "common/board_text.h"
#include "engine/self_play.h"
#include "support/random.h"

namespace {

constexpr int PAIRS = 5;
constexpr int DEPTH = 1;

ABWeightPair Players() {
    ABWeightPair players;
    SetLevel(FULL_STRENGTH_LEVEL, players[0]);
    players[1] = players[0];
    players[1].Score = {{{0.1, 0.1}, {0.1, 0.1}}};
    return players;
}

void Match(benchmark::State& state) {
    UseBoard(11, 5);
    const ABWeightPair players = Players();
    for (auto _ : state) {
        SeedRandom(1);
        benchmark::DoNotOptimize(PlayGames(players, PAIRS, DEPTH));
    }
    state.counters["games"] = benchmark::Counter(
        static_cast<double>(state.iterations()) * 2 * PAIRS, benchmark::Counter::kIsRate);
}

BENCHMARK(Match)->Unit(benchmark::kMillisecond);

}  // namespace

BENCHMARK_MAIN();

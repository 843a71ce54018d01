// How many games of a self-play match the engine plays in a second, and the plain model of the
// tests from the same seed.
#include <benchmark/benchmark.h>

#include "common/board_text.h"
#include "engine/self_play.h"
#include "plain/plain_engine.h"
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

template <typename Play>
void Match(benchmark::State& state, Play play) {
    UseBoard(11, 5);
    const ABWeightPair players = Players();
    for (auto _ : state) {
        SeedRandom(1);
        play(players);
    }
    state.counters["games"] = benchmark::Counter(
        static_cast<double>(state.iterations()) * 2 * PAIRS, benchmark::Counter::kIsRate);
}

void FastMatch(benchmark::State& state) {
    Match(state, [](const ABWeightPair& players) {
        benchmark::DoNotOptimize(PlayGames(players, PAIRS, DEPTH));
    });
}

void PlainMatch(benchmark::State& state) {
    Match(state, [](const ABWeightPair& players) {
        benchmark::DoNotOptimize(plain::PlayMatch(players, PAIRS, DEPTH));
    });
}

BENCHMARK(FastMatch)->Unit(benchmark::kMillisecond);
BENCHMARK(PlainMatch)->Unit(benchmark::kMillisecond);

}  // namespace

BENCHMARK_MAIN();

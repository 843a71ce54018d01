// The process-wide random generator, seeded once. Its numbers are those of the GNU C library's
// `rand`, on every machine; it is our own so that draws nobody looks at can be skipped by
// computing.
#pragma once

#include <array>
#include <cstdint>

// Where a sequence of numbers stands. A copy of it goes on by itself.
struct RandomGenerator {
    static constexpr int LENGTH = 31;  // numbers are made by whole rounds of so many
    std::array<std::uint32_t, LENGTH> Numbers{};
    int NumDrawn = LENGTH;  // how many of the round are drawn
};

// The process-wide generator, to draw from a copy what it would draw next.
[[nodiscard]] const RandomGenerator& PresentRandom();

// Seeds the generator. A positive seed gives a repeatable run; 0 or less takes the seed from the
// clock. To be called exactly once: a second call ends the program, and so does a failing clock.
void InitRandom(int seed);

// Seeds the generator as `srand` does, as often as one likes: for tests, and for InitRandom.
void SeedRandom(unsigned seed);

// Draws what `rand` would answer: 0 to 2147483647.
[[nodiscard]] int DrawRandom();

// Draws a uniform integer in 0 .. n-1, for n of 1 or more.
[[nodiscard]] int RandomInt(int n);

// Draws a uniform real number in [0, 1]; both ends can occur.
[[nodiscard]] double RandomReal();

// Draws `count` numbers that nobody needs to know. However many they are, it takes microseconds.
void SkipRandom(std::int64_t count);

// The same from a generator of one's own.
[[nodiscard]] double RandomReal(RandomGenerator& generator);
void SkipRandom(RandomGenerator& generator, std::int64_t count);

// The process-wide random generator: the standard library's `rand`, seeded once.
#pragma once

#include <cstdint>

// Seeds the generator. A positive seed gives a repeatable run; 0 or less takes the seed from the
// clock. To be called exactly once: a second call ends the process, and so does a failing clock.
void InitRandom(int seed);

// Draws a uniform integer in 0 .. n-1, for n of 1 or more.
[[nodiscard]] int RandomInt(int n);

// Draws a uniform real number in [0, 1]; both ends can occur.
[[nodiscard]] double RandomReal();

// Draws `count` numbers that nobody needs to know.
void SkipRandom(std::int64_t count);

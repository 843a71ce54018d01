#include "support/random.h"

#include <array>
#include <bit>
#include <ctime>

#include "support/fatal.h"
#include "support/numbers.h"

namespace {

bool NoInit = false;  // true once the generator is seeded: no other InitRandom is then allowed

// The generator is an additive feedback register: every number is the sum, modulo 2^32, of the one
// 3 places before it and the one 31 places before it, and what is drawn are its upper 31 bits.
constexpr int LENGTH = RandomGenerator::LENGTH;
constexpr int LAG = 3;
using Round = std::array<std::uint32_t, LENGTH>;

void MakeNextRound(Round& round) {
    for (int i = 0; i < LENGTH; ++i) {
        round[i] += round[i < LAG ? LENGTH - LAG + i : i - LAG];
    }
}

// The first round comes from a generator of its own (a product modulo 2^31 - 1), and the numbers
// behind it have to mix before the first is drawn.
RandomGenerator Seeded(unsigned seed) {
    constexpr std::int64_t FACTOR = 16807;
    constexpr std::int64_t MODULUS = 2147483647;
    constexpr int NUM_MIXED = 10 * LENGTH;
    Round first{};
    auto word = static_cast<std::int32_t>(seed == 0 ? 1 : seed);
    for (int i = 0; i < LENGTH; ++i) {
        // The register's oldest number is the one seeded in the place behind the lag.
        first[(i + LENGTH - LAG) % LENGTH] = static_cast<std::uint32_t>(word);
        const std::int64_t next = word * FACTOR % MODULUS;
        word = static_cast<std::int32_t>(next < 0 ? next + MODULUS : next);
    }
    for (int i = 0; i < NUM_MIXED; i += LENGTH) {
        MakeNextRound(first);
    }
    return {first, LENGTH};
}

RandomGenerator Chance = Seeded(1);  // as `rand` begins when nobody has seeded it

// A number far on is a sum of multiples of the present round's: the multiples for the number `n`
// places behind the first are the coefficients of x^n modulo x^31 - x^28 - 1, the lowest first.
using Polynomial = Round;

// Replaces every x^31 and above of a product by what it is equal to.
Polynomial Reduce(std::array<std::uint32_t, 2UL * LENGTH>& product) {
    for (int i = 2UL * LENGTH - 1; i >= LENGTH; --i) {
        product[i - LAG] += product[i];
        product[i - LENGTH] += product[i];
    }
    Polynomial reduced;
    for (int i = 0; i < LENGTH; ++i) {
        reduced[i] = product[i];
    }
    return reduced;
}

// The square of a polynomial, times x^shift; `shift` is 0 or 1.
Polynomial SquareTimesX(const Polynomial& factor, unsigned shift) {
    std::array<std::uint32_t, 2UL * LENGTH> product{};
    for (int i = 0; i < LENGTH; ++i) {
        product[2 * i + shift] += factor[i] * factor[i];
        const std::uint32_t twice = 2 * factor[i];
        for (int k = i + 1; k < LENGTH; ++k) {
            product[i + k + shift] += twice * factor[k];
        }
    }
    return Reduce(product);
}

// x^n modulo the polynomial of the generator: from the highest bits of n, which need no reduction,
// to the lowest.
Polynomial PowerOfX(std::uint64_t n) {
    auto bit = static_cast<int>(std::bit_width(n));
    std::uint64_t done = 0;
    while (bit > 0 && (done << 1 | 1) < LENGTH) {
        --bit;
        done = n >> bit;
    }
    Polynomial power{};
    power[done] = 1;
    while (bit > 0) {
        --bit;
        power = SquareTimesX(power, static_cast<unsigned>(n >> bit & 1));
    }
    return power;
}

// The round that begins `n` numbers behind the first of `round`.
Round RoundBehind(const Round& round, std::uint64_t n) {
    const Polynomial multiples = PowerOfX(n);
    Round next = round;
    MakeNextRound(next);
    std::array<std::uint32_t, 2UL * LENGTH> numbers{};
    for (int i = 0; i < LENGTH; ++i) {
        numbers[i] = round[i];
        numbers[LENGTH + i] = next[i];
    }
    Round sums{};
    for (int k = 0; k < LENGTH; ++k) {
        for (int i = 0; i < LENGTH; ++i) {
            sums[i] += multiples[k] * numbers[i + k];
        }
    }
    return sums;
}

int Draw(RandomGenerator& generator) {
    if (generator.NumDrawn == LENGTH) {
        MakeNextRound(generator.Numbers);
        generator.NumDrawn = 0;
    }
    return static_cast<int>(generator.Numbers[generator.NumDrawn++] >> 1);
}

}  // namespace

void InitRandom(int seed) {
    if (NoInit) {
        ErrorExit("InitRandom: error: Only one call of InitRandom is allowed !\n");
    }
    auto start = static_cast<unsigned>(seed);
    if (seed <= 0) {
        const std::time_t now = std::time(nullptr);
        if (now < 0) {
            ErrorExit("InitRandom: error: call of time() failed !\n");
        }
        start = static_cast<unsigned>(now);
    }
    NoInit = true;
    SeedRandom(start);
}

void SeedRandom(unsigned seed) {
    Chance = Seeded(seed);
}

const RandomGenerator& PresentRandom() {
    return Chance;
}

int DrawRandom() {
    return Draw(Chance);
}

int RandomInt(int n) {
    // The largest draw gives a quotient of exactly 1.0, which must not lead to n itself.
    return Min(n - 1, static_cast<int>(RandomReal() * n));
}

double RandomReal() {
    return RandomReal(Chance);
}

double RandomReal(RandomGenerator& generator) {
    return Draw(generator) / 2147483647.0;
}

void SkipRandom(std::int64_t count) {
    SkipRandom(Chance, count);
}

void SkipRandom(RandomGenerator& generator, std::int64_t count) {
    // Fewer are quicker made than skipped.
    constexpr std::uint64_t LEAST_SKIP = 10000;
    std::uint64_t behind = static_cast<std::uint64_t>(generator.NumDrawn) + count;
    if (behind >= LEAST_SKIP) {
        generator = {RoundBehind(generator.Numbers, behind), 0};
        return;
    }
    for (; behind > LENGTH; behind -= LENGTH) {
        MakeNextRound(generator.Numbers);
    }
    generator.NumDrawn = static_cast<int>(behind);
}

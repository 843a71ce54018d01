#include "support/random.h"

#include <cstdint>
#include <cstdlib>
#include <ctime>
#include <random>
#include <tuple>

#include <gtest/gtest.h>

#include "common/captured.h"
#include "support/fatal.h"

#ifdef __GLIBC__
// The same seed gives the same sequence to every version of the program.
TEST(Random, IsTheGeneratorOfTheLibrary) {
    std::mt19937 random(1);
    for (int i = 0; i < 300; ++i) {
        const auto seed = i < 3 ? static_cast<unsigned>(i) - 1 : static_cast<unsigned>(random());
        SeedRandom(seed);
        std::srand(seed);
        for (int draw = 0; draw < 100; ++draw) {
            ASSERT_EQ(DrawRandom(), std::rand()) << "seed " << seed << " draw " << draw;
        }
        const int skipped = static_cast<int>(random() % 40000);
        SkipRandom(skipped);
        for (int draw = 0; draw < skipped; ++draw) {
            std::ignore = std::rand();
        }
        ASSERT_EQ(DrawRandom(), std::rand()) << "seed " << seed << " behind " << skipped;
    }
}
#endif

TEST(Random, TwoSkipsAreOne) {
    std::mt19937_64 random(2);
    auto someSkip = [&] { return static_cast<std::int64_t>(random() >> (random() % 62 + 2)); };
    for (int i = 0; i < 1000; ++i) {
        const auto seed = static_cast<unsigned>(random());
        const std::int64_t first = someSkip();
        const std::int64_t second = someSkip();
        SeedRandom(seed);
        SkipRandom(first);
        SkipRandom(second);
        const int draw = DrawRandom();
        SeedRandom(seed);
        SkipRandom(first + second);
        ASSERT_EQ(DrawRandom(), draw) << "seed " << seed << ": " << first << " + " << second;
    }
}

TEST(Random, NumbersAreSharesOfADraw) {
    InitRandom(5);
    const int integer = RandomInt(1000000);
    const double real = RandomReal();
    SeedRandom(5);
    EXPECT_EQ(integer, static_cast<int>(DrawRandom() / 2147483647.0 * 1000000));
    EXPECT_EQ(real, DrawRandom() / 2147483647.0);
}

TEST(RandomDeathTest, IsSeededOnce) {
    const auto seedTwice = [] {
        InitRandom(5);
        InitRandom(5);
    };
    EXPECT_EXIT(EndAsMain(seedTwice), testing::ExitedWithCode(1),
                "^InitRandom: error: Only one call of InitRandom is allowed !\n$");
}

// The second that the clock shows, or the next when it has just moved on.
TEST(RandomDeathTest, SeedZeroIsTheClock) {
    const auto drawByTheClock = [] {
        const std::time_t before = std::time(nullptr);
        InitRandom(0);
        const int draw = DrawRandom();
        bool found = false;
        for (std::time_t second = before; second <= std::time(nullptr); ++second) {
            SeedRandom(static_cast<unsigned>(second));
            found = found || DrawRandom() == draw;
        }
        std::_Exit(found ? 0 : 1);
    };
    EXPECT_EXIT(drawByTheClock(), testing::ExitedWithCode(0), "");
}

TEST(FatalDeathTest, EndsWithStatusOneAndItsText) {
    EXPECT_EXIT(EndAsMain([] { ErrorExit("Name: %s %i\n", "fault", 7); }),
                testing::ExitedWithCode(1), "^Name: fault 7\n$");
}

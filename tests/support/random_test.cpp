#include "support/random.h"

#include <array>
#include <cstdlib>

#include <gtest/gtest.h>

#include "support/fatal.h"

// One draw of `rand` each: the same seed gives the same sequence to every version of the program.
TEST(Random, IsTheStandardGenerator) {
    InitRandom(5);
    const std::array<int, 3> drawn = {RandomInt(1000000), RandomInt(1000000), RandomInt(1000000)};
    const double real = RandomReal();
    std::srand(5);
    for (const int draw : drawn) {
        EXPECT_EQ(draw, static_cast<int>(std::rand() / 2147483647.0 * 1000000));
    }
    EXPECT_EQ(real, std::rand() / 2147483647.0);
}

TEST(RandomDeathTest, IsSeededOnce) {
    const auto seedTwice = [] {
        InitRandom(5);
        InitRandom(5);
    };
    EXPECT_EXIT(seedTwice(), testing::ExitedWithCode(1),
                "^InitRandom: error: Only one call of InitRandom is allowed !\n$");
}

TEST(FatalDeathTest, EndsWithStatusOneAndItsText) {
    EXPECT_EXIT(ErrorExit("Name: %s %i\n", "fault", 7), testing::ExitedWithCode(1),
                "^Name: fault 7\n$");
}

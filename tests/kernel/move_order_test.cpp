#include "kernel/move_order.h"

#include <array>

#include <gtest/gtest.h>

TEST(MoveOrder, SortsTheFiveLowestAndKeepsTheRest) {
    const std::array<double, 8> values = {5, 3, 9, 3, 7, 1, 8, 2};
    std::array<int, 8> order{};
    SortPositions(8, order.data(), [&](int a, int b) { return values[a] > values[b]; });
    // 1, 2, 3 (index 1 before 3), 5; index 4 was pushed out by 5 and index 2 by 7.
    EXPECT_EQ(order, (std::array<int, 8>{5, 7, 1, 3, 0, 2, 6, 4}));
}

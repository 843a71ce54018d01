// The order in which the search tries the moves of a node. Five of them are sorted, and no more:
// the number of evaluations, and with it the random numbers that a game draws, depends on the
// order, and people and programs rely on both.
#pragma once

// Fills `order` with a permutation of the indices 0 to count - 1: first the (up to) five with the
// lowest values, in ascending order, equal ones in the order of their indices; then the others.
// `isAbove(a, b)` tells whether the value of index a is above that of index b.
template <typename IsAbove>
void SortPositions(int count, int* order, IsAbove isAbove) {
    constexpr int NUM_SORTED = 5;
    order[0] = 0;
    for (int i = 1; i < count; ++i) {
        int k = (i < NUM_SORTED ? i : NUM_SORTED) - 1;
        if (!isAbove(order[k], i)) {
            order[i] = i;
            continue;
        }
        // The newcomer pushes the last of the sorted ones out to its own place.
        order[i] = order[k];
        while (k > 0 && isAbove(order[k - 1], i)) {
            order[k] = order[k - 1];
            --k;
        }
        order[k] = i;
    }
}

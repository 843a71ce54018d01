#include "kernel/move_order.h"

void SortPositions(int count, const double* values, int* order) {
    constexpr int NUM_SORTED = 5;
    order[0] = 0;
    for (int i = 1; i < count; ++i) {
        int k = (i < NUM_SORTED ? i : NUM_SORTED) - 1;
        if (!(values[order[k]] > values[i])) {
            order[i] = i;
            continue;
        }
        // The newcomer pushes the last of the sorted ones out to its own place.
        order[i] = order[k];
        while (k > 0 && values[order[k - 1]] > values[i]) {
            order[k] = order[k - 1];
            --k;
        }
        order[k] = i;
    }
}

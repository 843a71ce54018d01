// The order in which the search tries the moves of a node, and the values that bound it.
#pragma once

// The best value of a node before its first move, and the value of a node that was cut off.
inline constexpr double LOW_INIT_VALUE = -999999999.0;
// The open bound: no value reaches it, with weights of any sense.
inline constexpr double HIGH_INIT_VALUE = 999999999.0;

// Fills `order` with a permutation of the indices 0 to count - 1: first the (up to) five with the
// lowest values, in ascending order, equal ones in the order of their indices; then the others.
void SortPositions(int count, const double* values, int* order);

// The values that bound a search.
//
// A node is searched with one bound and no window: its moves are tried until one of them reaches
// the negated best value that the node above has so far, and nothing is handed down from further
// up. A window would cut off more. But how many evaluations a search counts decides how deep the
// next one goes, and how many random numbers a game draws; people and programs rely on both, to the
// last one. So cut-offs stay where they are, as the order of the moves does (move_order.h).
#pragma once

// The best value of a node before its first move, and the value of a node that was cut off.
inline constexpr double LOW_INIT_VALUE = -999999999.0;
// The open bound: no value reaches it, unless the weights are beyond all reason.
inline constexpr double HIGH_INIT_VALUE = 999999999.0;

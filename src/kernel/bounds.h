// The values that bound a search.
#pragma once

// The best value of a node before its first move, and the value of a node that was cut off.
inline constexpr double LOW_INIT_VALUE = -999999999.0;
// The open bound: no value reaches it, unless the weights are beyond all reason.
inline constexpr double HIGH_INIT_VALUE = 999999999.0;

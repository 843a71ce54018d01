// Sets of board spaces as bits: one 64-bit word for boards of up to 63 spaces, the default one
// among them, and a pair of words for the larger ones. Bit i stands for space i in the order of the
// move generator, so that walking over a set from its lowest bit visits spaces in that order. The
// bit behind the last space is never set: it stands for all that is off the board.
#pragma once

#include <cstdint>

using SmallSet = std::uint64_t;
__extension__ using LargeSet = unsigned __int128;

namespace {

inline int Count(SmallSet set) {
    return __builtin_popcountll(set);
}

inline int Count(LargeSet set) {
    return Count(static_cast<SmallSet>(set)) + Count(static_cast<SmallSet>(set >> 64));
}

// The lowest space of a set that is not empty.
inline int First(SmallSet set) {
    return __builtin_ctzll(set);
}

inline int First(LargeSet set) {
    const auto low = static_cast<SmallSet>(set);
    return low != 0 ? First(low) : 64 + First(static_cast<SmallSet>(set >> 64));
}

template <typename Set>
inline Set Bit(int space) {
    return Set{1} << space;
}

inline bool Has(SmallSet set, int space) {
    return (set >> space & 1) != 0;
}

inline bool Has(LargeSet set, int space) {
    const auto half = static_cast<SmallSet>(space < 64 ? set : set >> 64);
    return Has(half, space & 63);
}

// Takes the lowest space out of a set that is not empty.
template <typename Set>
inline int TakeFirst(Set& set) {
    const int space = First(set);
    set &= set - 1;
    return space;
}

// Calls `visit(space)` for every space of a set, from the lowest.
template <typename Visit>
inline void ForEachSpace(SmallSet set, Visit visit) {
    while (set != 0) {
        visit(TakeFirst(set));
    }
}

template <typename Visit>
inline void ForEachSpace(LargeSet set, Visit visit) {
    ForEachSpace(static_cast<SmallSet>(set), visit);
    ForEachSpace(static_cast<SmallSet>(set >> 64), [&](int space) { visit(64 + space); });
}

}  // namespace

// The life rule on sets of spaces: which groups die when a tower leaves its space. What a move does
// is defined by rules/moves.cpp; this is the same, step by step, and the tests hold it to that.
#pragma once

#include <array>

#include "kernel/bit_set.h"
#include "kernel/geometry.h"

namespace {

// True when the group of `space` in `occupied` holds life. Otherwise `group` is the whole of it.
template <typename Set>
inline bool IsAlive(const Geometry<Set>& geometry, Set occupied, Set life, int space, Set& group) {
    group = Bit<Set>(space);
    for (Set edge = group; edge != 0;) {
        if ((group & life) != 0) {
            return true;
        }
        const Set found = geometry.Neighbours(TakeFirst(edge)) & occupied & ~group;
        group |= found;
        edge |= found;
    }
    return false;
}

// The first spaces of the runs of occupied neighbours round a vacated space, in walking order.
struct RunStarts {
    std::array<int, 3> Spaces{};
    int Count = 0;
};
template <typename Set>
inline RunStarts FindRuns(const Geometry<Set>& geometry, Set occupied, int space) {
    const auto& ring = geometry.Target[space][1];
    unsigned here = 0;  // bit d: the neighbour in direction d is occupied
    for (int d = 0; d < NUM_DIRECTIONS; ++d) {
        here |= static_cast<unsigned>(Has(occupied, ring[d])) << d;
    }
    // Bit d - 1: the run begins in direction d. Direction 0 closes the walk and so comes last.
    const unsigned shifted = here >> 1 | (here & 1) << (NUM_DIRECTIONS - 1);
    RunStarts runs;
    for (unsigned starts = shifted & ~here; starts != 0; starts &= starts - 1) {
        runs.Spaces[runs.Count++] = ring[(First(SmallSet{starts}) + 1) % NUM_DIRECTIONS];
    }
    return runs;
}

// The groups that die behind a tower without life, taken out of `occupied` one after the other: the
// one farthest from the centre is examined first, and the last one never, once the others are gone.
// A file can bring groups onto the board that have been dead all along. Then the order decides
// which of them stays, and one that two runs belong to counts twice.
template <typename Set>
inline Set KillBehindPlainTower(const Geometry<Set>& geometry, RunStarts runs, Set life,
                                Set occupied) {
    const std::array<int, 3> spaces = runs.Spaces;
    int best = 0;
    for (int i = 1; i < runs.Count; ++i) {
        runs.Spaces[i] = spaces[i];
        if (geometry.FromCenter[spaces[i]] > geometry.FromCenter[spaces[best]]) {
            runs.Spaces[i] = spaces[best];
            best = i;
        }
    }
    runs.Spaces[0] = spaces[best];

    Set dead = 0;
    int killed = 0;
    for (int i = 0; i < runs.Count && runs.Count - killed >= 2; ++i) {
        Set group;
        if (!IsAlive(geometry, occupied, life, runs.Spaces[i], group)) {
            ++killed;
            dead |= group;
            occupied &= ~group;
        }
    }
    return dead;
}

}  // namespace

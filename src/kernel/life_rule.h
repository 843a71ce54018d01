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

// The directions of the occupied neighbours of a space: bit d for direction d. Their rows are cut
// out of the set as a whole: two neighbours above, one on each side, two below.
template <typename Set>
inline unsigned OccupiedNeighbours(const Geometry<Set>& geometry, Set occupied, int space) {
    // Indexed by what was cut out: bits 0 and 2 are directions 3 and 0, 3 and 4 directions 4 and 5,
    // 5 and 6 directions 2 and 1.
    static constexpr auto WAYS = [] {
        constexpr std::array<int, 7> DIRECTIONS = {3, -1, 0, 4, 5, 2, 1};
        std::array<std::uint8_t, 128> ways{};
        for (unsigned cut = 0; cut < ways.size(); ++cut) {
            for (unsigned i = 0; i < DIRECTIONS.size(); ++i) {
                if ((cut >> i & 1) != 0 && DIRECTIONS[i] >= 0) {
                    ways[cut] |= static_cast<std::uint8_t>(1 << DIRECTIONS[i]);
                }
            }
        }
        return ways;
    }();
    const Spot<Set>& spot = geometry.Spots[space];
    const Set shifted = occupied << 1;  // so that the place before space 0 is there
    const auto cut = [&](int place) { return static_cast<unsigned>(shifted >> place); };
    const unsigned index =
        (cut(space) & 5) | (cut(spot.Above) & 3) << 3 | (cut(spot.Below) & 3) << 5;
    return WAYS[index] & spot.OnBoard;
}

// The first spaces of the runs of occupied neighbours round a vacated space, in walking order.
struct RunStarts {
    std::array<int, 3> Spaces;
    int Count;
};

// In which directions the runs begin, by the directions that are occupied.
struct RunDirections {
    std::array<std::uint8_t, 3> Directions{};
    std::uint8_t Count = 0;
};
inline constexpr auto RUN_DIRECTIONS = [] {
    std::array<RunDirections, 1 << NUM_DIRECTIONS> runs{};
    for (unsigned ways = 0; ways < runs.size(); ++ways) {
        // Direction 0 closes the walk and so comes last.
        for (unsigned step = 1; step <= NUM_DIRECTIONS; ++step) {
            const unsigned direction = step % NUM_DIRECTIONS;
            if ((ways >> direction & 1) != 0 && (ways >> (step - 1) & 1) == 0) {
                runs[ways].Directions[runs[ways].Count++] = static_cast<std::uint8_t>(direction);
            }
        }
    }
    return runs;
}();

template <typename Set>
inline RunStarts FindRuns(const Geometry<Set>& geometry, unsigned ways, int space) {
    const RunDirections& runs = RUN_DIRECTIONS[ways];
    const auto& ring = geometry.Spots[space].Target[1];
    return {{ring[runs.Directions[0]], ring[runs.Directions[1]], ring[runs.Directions[2]]},
            runs.Count};
}

// The groups that die behind a tower without life, taken out of `occupied` one after the other: the
// one farthest from the centre is examined first, and the last one never, once the others are gone.
// A file can bring groups onto the board that have been dead all along. Then the order decides
// which of them stays, and one that two runs belong to counts twice.
template <typename Set>
[[gnu::noinline]] Set KillBehindPlainTower(const Geometry<Set>& geometry, RunStarts runs, Set life,
                                           Set occupied) {
    const std::array<int, 3> spaces = runs.Spaces;
    int best = 0;
    for (int i = 1; i < runs.Count; ++i) {
        runs.Spaces[i] = spaces[i];
        if (geometry.Spots[spaces[i]].FromCenter > geometry.Spots[spaces[best]].FromCenter) {
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

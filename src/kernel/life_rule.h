// The life rule on sets of spaces: which groups die when a tower leaves its space. What a move does
// is defined by rules/moves.cpp; this is the same, step by step, and the tests hold it to that.
#pragma once

#include <array>

#include "kernel/bit_set.h"
#include "kernel/board_shape.h"

namespace {

// True when the group of `space` in `occupied` holds life. Otherwise `group` is the whole of it.
template <typename Set>
inline bool IsAlive(const BoardShape<Set>& shape, Set occupied, Set life, int space, Set& group) {
    group = Bit<Set>(space);
    for (Set edge = group; edge != 0;) {
        if ((group & life) != 0) {
            return true;
        }
        const Set found = shape.Neighbours(TakeFirst(edge)) & occupied & ~group;
        group |= found;
        edge |= found;
    }
    return false;
}

// The directions in which one of `targets` is occupied: bit d for direction d.
template <typename Set>
inline unsigned OccupiedDirections(const std::array<std::uint8_t, NUM_DIRECTIONS>& targets,
                                   Set occupied) {
    unsigned directions = 0;
    for (int d = 0; d < NUM_DIRECTIONS; ++d) {
        directions |= static_cast<unsigned>(Has(occupied, targets[d])) << d;
    }
    return directions;
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
    for (unsigned occupied = 0; occupied < runs.size(); ++occupied) {
        // Direction 0 closes the walk and so comes last.
        for (unsigned step = 1; step <= NUM_DIRECTIONS; ++step) {
            const unsigned direction = step % NUM_DIRECTIONS;
            if ((occupied >> direction & 1) != 0 && (occupied >> (step - 1) & 1) == 0) {
                runs[occupied].Directions[runs[occupied].Count++] =
                    static_cast<std::uint8_t>(direction);
            }
        }
    }
    return runs;
}();

template <typename Set>
inline RunStarts FindRuns(const BoardShape<Set>& shape, unsigned occupied, int space) {
    const RunDirections& runs = RUN_DIRECTIONS[occupied];
    const auto& ring = shape.Spots[space].Target[1];
    return {{ring[runs.Directions[0]], ring[runs.Directions[1]], ring[runs.Directions[2]]},
            runs.Count};
}

// The groups that die behind a tower without life, taken out of `occupied` one after the other: the
// one farthest from the centre is examined first, and the last one never, once the others are gone.
// A file can bring groups onto the board that have been dead all along. Then the order decides
// which of them stays, and one that two runs belong to counts twice.
template <typename Set>
[[gnu::noinline]] Set KillBehindLifelessTower(const BoardShape<Set>& shape, RunStarts runs,
                                              Set life, Set occupied) {
    const std::array<int, 3> spaces = runs.Spaces;
    int best = 0;
    for (int i = 1; i < runs.Count; ++i) {
        runs.Spaces[i] = spaces[i];
        if (shape.Spots[spaces[i]].FromCenter > shape.Spots[spaces[best]].FromCenter) {
            runs.Spaces[i] = spaces[best];
            best = i;
        }
    }
    runs.Spaces[0] = spaces[best];

    Set dead = 0;
    int killed = 0;
    for (int i = 0; i < runs.Count && runs.Count - killed >= 2; ++i) {
        Set group;
        if (!IsAlive(shape, occupied, life, runs.Spaces[i], group)) {
            ++killed;
            dead |= group;
            occupied &= ~group;
        }
    }
    return dead;
}

}  // namespace

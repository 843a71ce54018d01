#include "rules/position.h"

#include <bit>
#include <cstdint>

bool SamePosition(const Position& a, const Position& b) {
    return a.Spaces == b.Spaces && a.ActivePlayer == b.ActivePlayer &&
           std::bit_cast<std::uint64_t>(a.Value) == std::bit_cast<std::uint64_t>(b.Value) &&
           a.ExactValue == b.ExactValue && a.EndPosition == b.EndPosition &&
           a.SetupPhase == b.SetupPhase;
}

bool IsOccupied(const Position& position, int x, int y) {
    return IsInRectangle(x, y) && position.Spaces[x][y].Owner != EMPTY;
}

bool IsFree(const Position& position, int x, int y) {
    if (x <= 0 || x >= GlobCfg.BoardXDim - 1 || y <= 0 || y >= GlobCfg.BoardYDim - 1) {
        return true;
    }
    for (int d = 0; d < NUM_DIRECTIONS; ++d) {
        const Place neighbour = StepFrom(x, y, d, 1);
        if (position.Spaces[neighbour.Column][neighbour.Row].Height == 0) {
            return true;
        }
    }
    return false;
}

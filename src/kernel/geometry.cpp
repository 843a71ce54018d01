#include "kernel/geometry.h"

#include "rules/position.h"

namespace {

using SpaceNumbers = std::array<std::array<int, MAX_BOARD_Y_DIM>, MAX_BOARD_X_DIM>;

template <typename Set>
void NumberSpaces(Geometry<Set>& geometry, SpaceNumbers& numbers) {
    geometry.NumSpaces = 0;
    for (int y = 0; y < GlobCfg.BoardYDim; ++y) {
        const ColumnRange columns = BoardColumns(y);
        for (int x = columns.First; x < columns.End; ++x) {
            const int space = geometry.NumSpaces++;
            numbers[x][y] = space;
            Spot<Set>& spot = geometry.Spots[space];
            spot.Column = static_cast<std::uint8_t>(x);
            spot.Row = static_cast<std::uint8_t>(y);
            spot.FromCenter = static_cast<std::uint8_t>(CenterDistance(x, y));
        }
    }
}

// Fills the targets of one space for one height.
template <typename Set>
void FillTargets(Geometry<Set>& geometry, const SpaceNumbers& numbers, int space, int height) {
    Spot<Set>& spot = geometry.Spots[space];
    Set reached = 0;
    for (int d = 0; d < NUM_DIRECTIONS; ++d) {
        const Place place = StepFrom(spot.Column, spot.Row, d, height);
        int target = geometry.NumSpaces;
        if (height > 0 && height < REACH_NONE && IsOnBoard(place.Column, place.Row)) {
            target = numbers[place.Column][place.Row];
            reached |= Bit<Set>(target);
        }
        spot.Target[height][d] = static_cast<std::uint8_t>(target);
    }
    spot.Reached[height] = reached;
}

// Two neighbours each stand side by side in the rows above and below; where only one of the two is
// on the board, the other's number follows from it.
template <typename Set>
void FillNeighbours(Geometry<Set>& geometry, int space) {
    Spot<Set>& spot = geometry.Spots[space];
    const auto& targets = spot.Target[1];
    auto isThere = [&](int d) { return targets[d] != geometry.NumSpaces; };
    spot.OnBoard = 0;
    for (int d = 0; d < NUM_DIRECTIONS; ++d) {
        spot.OnBoard |= static_cast<std::uint8_t>((isThere(d) ? 1 : 0) << d);
    }
    spot.Above = static_cast<std::uint8_t>(isThere(4)   ? targets[4] + 1
                                           : isThere(5) ? targets[5]
                                                        : 0);
    spot.Below = static_cast<std::uint8_t>(isThere(2)   ? targets[2] + 1
                                           : isThere(1) ? targets[1]
                                                        : 0);
}

template <typename Set>
void FillGeometry(Geometry<Set>& geometry) {
    SpaceNumbers numbers{};
    NumberSpaces(geometry, numbers);
    geometry.Inner = 0;
    for (int space = 0; space < geometry.NumSpaces; ++space) {
        for (int height = 0; height <= REACH_NONE; ++height) {
            FillTargets(geometry, numbers, space, height);
        }
        FillNeighbours(geometry, space);
        if (Count(geometry.Neighbours(space)) == NUM_DIRECTIONS) {
            geometry.Inner |= Bit<Set>(space);
        }
    }
    geometry.BoardXDim = GlobCfg.BoardXDim;
    geometry.BoardYDim = GlobCfg.BoardYDim;
}

}  // namespace

template <typename Set>
const Geometry<Set>& CurrentGeometry() {
    static Geometry<Set> geometry;
    if (geometry.BoardXDim != GlobCfg.BoardXDim || geometry.BoardYDim != GlobCfg.BoardYDim) {
        FillGeometry(geometry);
    }
    return geometry;
}

template const Geometry<SmallSet>& CurrentGeometry<SmallSet>();
template const Geometry<LargeSet>& CurrentGeometry<LargeSet>();

bool IsSmallBoard() {
    return NumBoardSpaces() < Geometry<SmallSet>::MAX_SPACES;
}

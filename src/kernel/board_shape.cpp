#include "kernel/board_shape.h"

#include "rules/position.h"

namespace {

using SpaceNumbers = std::array<std::array<int, MAX_BOARD_Y_DIM>, MAX_BOARD_X_DIM>;

template <typename Set>
void NumberSpaces(BoardShape<Set>& shape, SpaceNumbers& numbers) {
    shape.NumSpaces = 0;
    for (int y = 0; y < GlobCfg.BoardYDim; ++y) {
        const ColumnRange columns = BoardColumns(y);
        for (int x = columns.First; x < columns.End; ++x) {
            const int space = shape.NumSpaces++;
            numbers[x][y] = space;
            Spot<Set>& spot = shape.Spots[space];
            spot.Column = static_cast<std::uint8_t>(x);
            spot.Row = static_cast<std::uint8_t>(y);
            spot.FromCenter = static_cast<std::uint8_t>(CenterDistance(x, y));
        }
    }
}

// Fills the targets of one space for one height.
template <typename Set>
void FillTargets(BoardShape<Set>& shape, const SpaceNumbers& numbers, int space, int height) {
    Spot<Set>& spot = shape.Spots[space];
    Set reached = 0;
    for (int d = 0; d < NUM_DIRECTIONS; ++d) {
        const Place place = StepFrom(spot.Column, spot.Row, d, height);
        int target = shape.NumSpaces;
        if (height > 0 && height < REACH_NONE && IsOnBoard(place.Column, place.Row)) {
            target = numbers[place.Column][place.Row];
            reached |= Bit<Set>(target);
        }
        spot.Target[height][d] = static_cast<std::uint8_t>(target);
    }
    spot.Reached[height] = reached;
}

template <typename Set>
void FillShape(BoardShape<Set>& shape) {
    SpaceNumbers numbers{};
    NumberSpaces(shape, numbers);
    shape.Inner = 0;
    for (int space = 0; space < shape.NumSpaces; ++space) {
        for (int height = 0; height <= REACH_NONE; ++height) {
            FillTargets(shape, numbers, space, height);
        }
        if (Count(shape.Neighbours(space)) == NUM_DIRECTIONS) {
            shape.Inner |= Bit<Set>(space);
        }
    }
    shape.BoardXDim = GlobCfg.BoardXDim;
    shape.BoardYDim = GlobCfg.BoardYDim;
}

}  // namespace

template <typename Set>
const BoardShape<Set>& CurrentShape() {
    static BoardShape<Set> shape;
    if (shape.BoardXDim != GlobCfg.BoardXDim || shape.BoardYDim != GlobCfg.BoardYDim) {
        FillShape(shape);
    }
    return shape;
}

template const BoardShape<SmallSet>& CurrentShape<SmallSet>();
template const BoardShape<LargeSet>& CurrentShape<LargeSet>();

bool IsSmallBoard() {
    return NumBoardSpaces() < BoardShape<SmallSet>::MAX_SPACES;
}

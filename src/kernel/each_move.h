// The moves of a board, one after the other, each with what comes of it.
#pragma once

#include <array>
#include <cstdint>

#include "kernel/lifting.h"
#include "rules/moves.h"

namespace {

// A move as the search keeps it.
struct Step {
    std::uint8_t Source = 0;
    std::uint8_t Target = 0;
    std::uint8_t Direction = 0;
};

template <typename Set>
Move MoveOf(const BoardShape<Set>& shape, const Step& step) {
    return {.Column = shape.Spots[step.Source].Column,
            .Row = shape.Spots[step.Source].Row,
            .Direction = step.Direction};
}

// Calls `visit(landing, step)` for every move of a board that is worth `worth`, in generation
// order, as long as it answers true.
template <typename Set, typename Visit>
inline void ForEachMove(const BoardTables<Set>& tables, const SearchBoard<Set>& board, Worth worth,
                        Visit visit) {
    const TowerGroups<Set> groups = GroupTowers(board, board.Enclosed);
    LiftedBoard<Set> lifted;
    for (Set movers = board.Owned[board.ActivePlayer] & ~board.Enclosed; movers != 0;) {
        const int source = TakeFirst(movers);
        const int row = ReachRow(board.Height[source]);
        const Spot<Set>& spot = tables.Shape.Spots[source];
        if ((spot.Reached[row] & board.Occupied) == 0) {
            continue;
        }
        LiftTower(tables, board, groups, worth, source, lifted);
        const auto& targets = spot.Target[row];
        unsigned directions =
            row == 1 ? lifted.Neighbours : OccupiedDirections(targets, board.Occupied);
        for (; directions != 0; directions &= directions - 1) {
            const int direction = First(SmallSet{directions});
            const std::uint8_t target = targets[direction];
            if (!visit(PutDown(tables, board, lifted, target),
                       Step{static_cast<std::uint8_t>(source), target,
                            static_cast<std::uint8_t>(direction)})) {
                return;
            }
        }
    }
}

}  // namespace

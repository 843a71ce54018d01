// From a position to its children: the worth is carried over instead of being counted anew. A move
// is made in two steps, so that the moves of one tower share what they have in common: lifting the
// tower off the board (LiftTower), which decides what it leaves behind, and putting it down on a
// target (PutDown). This is the search's innermost work; what comes up seldom is kept out of line.
#pragma once

#include <array>

#include "kernel/life_rule.h"
#include "kernel/search_board.h"
#include "kernel/worth_count.h"

namespace {

// The board without one tower of the side to move.
template <typename Set>
struct LiftedBoard {
    int Space;  // the tower: where it stood, and what it is
    int Kind;
    int Height;
    unsigned Neighbours;  // its neighbours; bit d: there is one in direction d
    TowerView<Set> View;  // what dies wherever the tower goes is gone from it
    Set Enclosed;         // and from this
    Set Dead;             // that which dies so
    // Groups that die unless the tower, which then holds a life stone, is put down on them.
    std::array<Set, 3> Doomed;
    int NumDoomed;
    Worth WorthLeft;  // of the towers that stand
};

// Takes the dead groups out of the sets and the worth. They hold no life, and their neighbours are
// empty, so nobody's life or freedom changes; only the towers that aim at them from afar lose.
template <typename Set>
[[gnu::noinline]] void BuryTowers(const BoardTables<Set>& tables, const SearchBoard<Set>& board,
                                  LiftedBoard<Set>& lifted) {
    const TowerGroups<Set> groups = GroupTowers(board, lifted.Enclosed);
    const Set survivors = lifted.View.Occupied & ~lifted.Dead;
    for (Set dead = lifted.Dead; dead != 0;) {
        const int space = TakeFirst(dead);
        const int kind = board.Kind[space] | (Has(lifted.Enclosed, space) ? 0 : KIND_FREE);
        lifted.WorthLeft -=
            WorthOfTower(tables, board, lifted.View, space, kind, board.Height[space]);
        const Set aimers = AimersAt(tables.Shape, board, space) & survivors;
        lifted.WorthLeft -= WorthOfTarget(tables, board, groups, aimers, kind);
    }
    lifted.View.Occupied = survivors;
    lifted.Enclosed &= survivors;
}

// What dies when a tower that holds life leaves, unless it is put down there. A tower with one run
// of neighbours may move along it and leave nothing behind: then the group is the one it lands on.
template <typename Set>
[[gnu::noinline]] void FindDoomed(const BoardShape<Set>& shape, LiftedBoard<Set>& lifted) {
    const RunStarts runs = FindRuns(shape, lifted.Neighbours, lifted.Space);
    for (int i = 0; i < runs.Count; ++i) {
        Set group;
        if (!IsAlive(shape, lifted.View.Occupied, lifted.View.Life, runs.Spaces[i], group)) {
            lifted.Doomed[lifted.NumDoomed++] = group;
        }
    }
}

// Lifts a free tower of the side to move off `board`, which is worth `worth`.
template <typename Set>
inline void LiftTower(const BoardTables<Set>& tables, const SearchBoard<Set>& board,
                      const TowerGroups<Set>& groups, Worth worth, int space,
                      LiftedBoard<Set>& lifted) {
    const BoardShape<Set>& shape = tables.Shape;
    const Set rest = ~Bit<Set>(space);
    lifted.Space = space;
    lifted.Kind = board.Kind[space];
    lifted.Height = board.Height[space];
    lifted.Neighbours = OccupiedDirections(shape.Spots[space].Target[1], board.Occupied);
    lifted.View = {board.Occupied & rest, board.Life & rest};
    lifted.Enclosed = board.Enclosed & ~shape.Neighbours(space);
    lifted.Dead = 0;
    lifted.NumDoomed = 0;
    // The tower's own share, and that of those who aim at it: from here on it is nobody's target.
    worth -= WorthOfTower(tables, board, lifted.View, space, lifted.Kind, lifted.Height);
    worth -= WorthOfTarget(tables, board, groups, AimersAt(shape, board, space), lifted.Kind);
    // Neighbours that it helped to enclose step from enclosed to free.
    for (Set freed = board.Enclosed & shape.Neighbours(space); freed != 0;) {
        const int tower = TakeFirst(freed);
        worth += WorthOfFreedom(tables, board, lifted.View, tower);
    }
    lifted.WorthLeft = worth;

    if ((lifted.Kind & KIND_LIFE) != 0) {
        FindDoomed(shape, lifted);
    } else if (RUN_DIRECTIONS[lifted.Neighbours].Count >= 2) {
        lifted.Dead = KillBehindLifelessTower(shape, FindRuns(shape, lifted.Neighbours, space),
                                              lifted.View.Life, lifted.View.Occupied);
        if (lifted.Dead != 0) {
            BuryTowers(tables, board, lifted);
        }
    }
}

// What comes of putting the lifted tower down.
template <typename Set>
struct Landing {
    Set Dead;           // what dies
    Worth WorthBehind;  // the worth of the position behind the move
};

// Some groups die by this move alone: the worth is counted anew.
template <typename Set>
[[gnu::noinline]] Worth CountWorthBehind(const BoardTables<Set>& tables,
                                         const SearchBoard<Set>& board, int source, int target,
                                         Set dead) {
    return WorthOfBoard(tables, MakeChild(tables.Shape, board, source, target, dead));
}

// What the towers that aim at the target of a move gain when its kind changes.
template <typename Set>
[[gnu::noinline]] Worth WorthOfChange(const BoardTables<Set>& tables, const SearchBoard<Set>& board,
                                      const LiftedBoard<Set>& lifted, int target, int from,
                                      int to) {
    const TowerGroups<Set> groups = GroupTowers(board, lifted.Enclosed);
    const Set aimers = AimersAt(tables.Shape, board, target) & lifted.View.Occupied;
    return WorthOfTarget(tables, board, groups, aimers, to) -
           WorthOfTarget(tables, board, groups, aimers, from);
}

// The kind of the target of a move, once the tower is lifted: a tower of one stone moves to a
// neighbour, which it no longer encloses.
template <typename Set>
inline int KindBelow(const SearchBoard<Set>& board, const LiftedBoard<Set>& lifted, int target) {
    return board.Kind[target] | (lifted.Height == 1 ? KIND_FREE : 0);
}

// The kind that it becomes when the lifted tower is put down there.
template <typename Set>
inline int KindOnTop(const LiftedBoard<Set>& lifted, int below) {
    return (below & (KIND_FREE | KIND_LIFE)) | (lifted.Kind & ~KIND_FREE);
}

// Puts a lifted tower with one of the special flags down on `target`.
template <typename Set>
[[gnu::noinline]] Landing<Set> PutDownSpecial(const BoardTables<Set>& tables,
                                              const SearchBoard<Set>& board,
                                              const LiftedBoard<Set>& lifted, int target) {
    Set dead = lifted.Dead;
    if (lifted.NumDoomed != 0) {
        for (int i = 0; i < lifted.NumDoomed; ++i) {
            dead |= Has(lifted.Doomed[i], target) ? Set{0} : lifted.Doomed[i];
        }
        if (dead != 0) {
            return {dead, CountWorthBehind(tables, board, lifted.Space, target, dead)};
        }
    }
    if (Has(dead, target)) {
        return {dead, lifted.WorthLeft};
    }
    const int from = KindBelow(board, lifted, target);
    const int to = KindOnTop(lifted, from);
    const int height = board.Height[target];
    return {dead, lifted.WorthLeft -
                      WorthOfTower(tables, board, lifted.View, target, from, height) +
                      WorthOfTower(tables, board, lifted.View, target, to, height + lifted.Height) +
                      WorthOfChange(tables, board, lifted, target, from, to)};
}

// Puts the lifted tower down on `target`.
template <typename Set>
inline Landing<Set> PutDown(const BoardTables<Set>& tables, const SearchBoard<Set>& board,
                            const LiftedBoard<Set>& lifted, int target) {
    if ((lifted.Kind & tables.Worths.SpecialFlags) != 0) {
        return PutDownSpecial(tables, board, lifted, target);
    }
    if (Has(lifted.Dead, target)) {
        return {lifted.Dead, lifted.WorthLeft};
    }
    const int from = KindBelow(board, lifted, target);
    const int to = KindOnTop(lifted, from);
    const int height = board.Height[target];
    const TowerView<Set>& view = lifted.View;
    return {lifted.Dead,
            lifted.WorthLeft -
                WorthWithoutEnemies(tables, view, target, height, tables.Worths.Towers[from]) +
                WorthWithoutEnemies(tables, view, target, height + lifted.Height,
                                    tables.Worths.Towers[to])};
}

}  // namespace

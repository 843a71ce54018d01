#include "rules/moves.h"

#include "support/fatal.h"

namespace {

// Calls `found(x, y, direction)` for every legal tower move of the side to move, in generation
// order.
template <typename Found>
void ForEachMove(const Position& position, Found found) {
    for (int y = 0; y < GlobCfg.BoardYDim; ++y) {
        for (int x = 0; x < GlobCfg.BoardXDim; ++x) {
            const Space& space = position.Spaces[x][y];
            if (space.Owner != position.ActivePlayer || !IsFree(position, x, y)) {
                continue;
            }
            for (int d = 0; d < NUM_DIRECTIONS; ++d) {
                const Place target = StepFrom(x, y, d, space.Height);
                if (IsOccupied(position, target.Column, target.Row)) {
                    found(x, y, d);
                }
            }
        }
    }
}

// The groups that a vacated space may have cut apart: one space of each run of occupied neighbours.
struct Representatives {
    std::array<Place, 3> List{};
    int Count = 0;
};

// Walks once round (x, y) and notes the first space of every run of occupied neighbours, in walking
// order. A ring of six occupied neighbours has no first space; a free tower never leaves one
// behind.
Representatives FindRepresentatives(const Position& position, int x, int y) {
    Representatives found;
    Place previous = StepFrom(x, y, 0, 1);
    for (int d = 1; d <= NUM_DIRECTIONS; ++d) {
        const Place neighbour = StepFrom(x, y, d, 1);
        if (IsOccupied(position, neighbour.Column, neighbour.Row) &&
            !IsOccupied(position, previous.Column, previous.Row)) {
            found.List[found.Count++] = neighbour;
        }
        previous = neighbour;
    }
    return found;
}

// Removes the group of `place` when it is dead. Answers whether it was.
bool KillIfDead(Position& position, Place place) {
    if (TestOfLife(position, place.Column, place.Row)) {
        return false;
    }
    KillDeathGroup(position, place.Column, place.Row);
    return true;
}

// Brings the representatives into the order of examination: the one farthest from the centre comes
// first, the earliest of equally far ones, and whoever held that rank before takes the place of the
// one that took it over. That is no order by distance, and it is part of the rule.
void BringOutermostFirst(Representatives& groups) {
    auto distance = [](Place place) { return CenterDistance(place.Column, place.Row); };
    const std::array<Place, 3> places = groups.List;
    int best = 0;
    for (int i = 1; i < groups.Count; ++i) {
        groups.List[i] = places[i];
        if (distance(places[i]) > distance(places[best])) {
            groups.List[i] = places[best];
            best = i;
        }
    }
    groups.List[0] = places[best];
}

// The life rule behind a move that took a life stone away: any of the groups may be dead.
void KillGroupsAfterLifeMove(Position& child, const Move& move, int height,
                             const Representatives& groups) {
    // A single run that touches the line to the target is still connected to the stone carried off.
    if (groups.Count < 2 && CheckDirectConnection(child, move, height)) {
        return;
    }
    for (int i = 0; i < groups.Count; ++i) {
        KillIfDead(child, groups.List[i]);
    }
}

// The life rule behind a move that took no life stone away: the group that was cut apart held one,
// so one of its parts still does, and the last part is never examined once the others are gone.
// Looking at the outermost part first finds the dead one soonest. The order is part of the rule all
// the same: in a group without life, which a file can contain, it decides which part stays.
void KillGroupsAfterPlainMove(Position& child, Representatives groups) {
    if (groups.Count < 2) {
        return;
    }
    BringOutermostFirst(groups);
    int killed = 0;
    for (int i = 0; i < groups.Count && groups.Count - killed >= 2; ++i) {
        if (KillIfDead(child, groups.List[i])) {
            ++killed;
        }
    }
}

// Depth-first search for a life stone. Visited spaces are marked in the working copy by a height
// of 0, so that no space is entered twice.
bool TestOfLifeRecursion(Position& copy, int x, int y) {
    Space& space = copy.Spaces[x][y];
    if (space.Life == 1) {
        return true;
    }
    space.Height = 0;
    for (int d = 0; d < NUM_DIRECTIONS; ++d) {
        const Place next = StepFrom(x, y, d, 1);
        if (IsInRectangle(next.Column, next.Row) &&
            copy.Spaces[next.Column][next.Row].Height != 0 &&
            TestOfLifeRecursion(copy, next.Column, next.Row)) {
            return true;
        }
    }
    return false;
}

// Makes the same board with the other side to move: what every ply of the move phase begins with.
void HandOver(const Position& parent, Position& child) {
    child = parent;
    child.ActivePlayer = OtherColor(parent.ActivePlayer);
    child.Value = -parent.Value;
}

}  // namespace

int GetPossibleMoves(const Position& position, MoveArray& moves) {
    int count = 0;
    ForEachMove(position, [&](int x, int y, int d) {
        if (count < MAX_MOVES) {
            Move& move = moves[count];
            move.Column = x;
            move.Row = y;
            move.Direction = d;
        }
        ++count;
    });
    if (count > MAX_MOVES) {
        ErrorExit("GetPossibleMoves: Maximum number of moves exeeded (MoveCount=%i)! "
                  "Memory may be corrupted!\n",
                  count);
    }
    return count;
}

int GetNumMoves(const Position& position) {
    int count = 0;
    if (position.SetupPhase == 0) {
        ForEachMove(position, [&count](int, int, int) { ++count; });
        return count;
    }
    for (int y = 0; y < GlobCfg.BoardYDim; ++y) {
        const ColumnRange columns = BoardColumns(y);
        for (int x = columns.First; x < columns.End; ++x) {
            count += position.Spaces[x][y].Owner == EMPTY ? 1 : 0;
        }
    }
    return count;
}

Place MoveTarget(const Position& position, const Move& move) {
    const int height = position.Spaces[move.Column][move.Row].Height;
    return StepFrom(move.Column, move.Row, move.Direction, height);
}

void DoMove(const Position& parent, const Move& move, Position& child) {
    const Space source = parent.Spaces[move.Column][move.Row];
    const Place target = MoveTarget(parent, move);

    HandOver(parent, child);
    Space& stack = child.Spaces[target.Column][target.Row];
    stack.Height += source.Height;
    stack.Life |= source.Life;
    stack.Owner = source.Owner;
    child.Spaces[move.Column][move.Row] = {.Height = 0, .Life = 0, .Owner = EMPTY};

    const Representatives groups = FindRepresentatives(child, move.Column, move.Row);
    if (source.Life == 1) {
        KillGroupsAfterLifeMove(child, move, source.Height, groups);
    } else {
        KillGroupsAfterPlainMove(child, groups);
    }
}

void DoPass(const Position& parent, Position& child) {
    HandOver(parent, child);
}

bool CheckDirectConnection(const Position& position, const Move& move, int height) {
    for (int k = 1; k < height; ++k) {
        const Place place = StepFrom(move.Column, move.Row, move.Direction, k);
        if (position.Spaces[place.Column][place.Row].Owner == EMPTY) {
            return false;
        }
    }
    return true;
}

bool TestOfLife(const Position& position, int x, int y) {
    Position copy = position;
    return TestOfLifeRecursion(copy, x, y);
}

void KillDeathGroup(Position& position, int x, int y) {
    Space& space = position.Spaces[x][y];
    space.Owner = EMPTY;
    space.Height = 0;
    for (int d = 0; d < NUM_DIRECTIONS; ++d) {
        const Place next = StepFrom(x, y, d, 1);
        if (IsOccupied(position, next.Column, next.Row)) {
            KillDeathGroup(position, next.Column, next.Row);
        }
    }
}

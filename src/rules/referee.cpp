#include "rules/referee.h"

#include "support/fatal.h"
#include "support/output.h"

namespace {

bool Refuse(const char* reason) {
    PrintRefusal("%s", reason);
    return false;
}

bool TowerMoveIsOk(const Position& position, const Move& move, int distance) {
    const Space& source = position.Spaces[move.Column][move.Row];
    if (source.Height == 0) {
        return Refuse("Error: Move source is an empty space !\n");
    }
    if (source.Owner != position.ActivePlayer) {
        return Refuse("Error: Move source is not owned by active player !\n");
    }
    if (!IsFree(position, move.Column, move.Row)) {
        return Refuse("Error: Move source is not free !\n");
    }
    if (distance != source.Height) {
        PrintRefusal("Error: Move distance is %i, but must be %i !\n", distance, source.Height);
        return false;
    }
    if (move.Direction < 0 || move.Direction >= NUM_DIRECTIONS) {
        return Refuse("Error: Move direction has an illegal value!\n");
    }
    const Place target = MoveTarget(position, move);
    if (!IsOnBoard(target.Column, target.Row)) {
        return Refuse("Error: Move target is out of bounds !\n");
    }
    if (position.Spaces[target.Column][target.Row].Height == 0) {
        return Refuse("Error: Move target is an empty space !\n");
    }
    return true;
}

// True when the tower on (x, y) could move if its owner were to move.
bool TowerCanMove(const Position& position, int x, int y) {
    const Space& space = position.Spaces[x][y];
    if ((space.Owner != WHITE && space.Owner != BLACK) || !IsFree(position, x, y)) {
        return false;
    }
    for (int d = 0; d < NUM_DIRECTIONS; ++d) {
        const Place target = StepFrom(x, y, d, space.Height);
        if (IsOccupied(position, target.Column, target.Row)) {
            return true;
        }
    }
    return false;
}

}  // namespace

bool MoveIsOk(const Position& position, const Move& move, int distance) {
    if (position.ActivePlayer != WHITE && position.ActivePlayer != BLACK) {
        ErrorExit("CheckMove: Active Player must be WHITE or BLACK !\n");
    }
    if (!IsOnBoard(move.Column, move.Row)) {
        return Refuse("Error: Move source is out of bounds !\n");
    }
    if (position.SetupPhase == 0) {
        return TowerMoveIsOk(position, move, distance);
    }
    if (position.Spaces[move.Column][move.Row].Owner != EMPTY) {
        return Refuse("Error: Move source is already occupied!\n");
    }
    return true;
}

bool IsEndPosition(const Position& position) {
    if (position.SetupPhase != 0) {
        return false;
    }
    for (int y = 0; y < GlobCfg.BoardYDim; ++y) {
        for (int x = 0; x < GlobCfg.BoardXDim; ++x) {
            if (TowerCanMove(position, x, y)) {
                return false;
            }
        }
    }
    return true;
}

bool GetScore(const Position& position, int& whiteScore, int& blackScore) {
    whiteScore = 0;
    blackScore = 0;
    for (int y = 0; y < GlobCfg.BoardYDim; ++y) {
        const ColumnRange columns = BoardColumns(y);
        for (int x = columns.First; x < columns.End; ++x) {
            const Space& space = position.Spaces[x][y];
            whiteScore += space.Owner == WHITE ? space.Height : 0;
            blackScore += space.Owner == BLACK ? space.Height : 0;
        }
    }
    return !IsEndPosition(position);
}

#include "rules/setup.h"

#include "support/fatal.h"
#include "support/numbers.h"
#include "support/random.h"

namespace {

// How many stones of each kind a random start position holds, indexed by WHITE, BLACK, LIFE.
std::array<int, 3> CountRandomStones(int numSpaces) {
    const int life = Min(GlobCfg.NumLifeStones, numSpaces);
    const int own = numSpaces - life;
    if (GlobCfg.NumWhiteStones >= 0) {
        const int white = Max(Min(GlobCfg.NumWhiteStones, own), 0);
        return {white, Max(own - white, 0), life};
    }
    // An odd stone goes to the side that would place first behind the life stones.
    const int odd = own % 2;
    const int oddWhite = life % 2 == 0 ? odd : 0;
    return {own / 2 + oddWhite, own / 2 + odd - oddWhite, life};
}

// Draws one of the stones still to place and takes it out of the counts.
int DrawStone(std::array<int, 3>& counts, int numStones) {
    int draw = RandomInt(numStones);
    for (int color = WHITE; color <= LIFE; ++color) {
        int& count = counts[color];
        if (draw < count) {
            --count;
            return color;
        }
        draw -= count;
    }
    ErrorExit("GenerateRandomStartPosition: Error: Illegal state reached!\n");
}

}  // namespace

void GenerateEmptyStartPosition(Position& position) {
    ResetAllButSpaces(position);
    position.SetupPhase = SetupCounter(GlobCfg.NumLifeStones);
    for (int y = 0; y < GlobCfg.BoardYDim; ++y) {
        for (int x = 0; x < GlobCfg.BoardXDim; ++x) {
            position.Spaces[x][y] = SpaceWith(EMPTY);
        }
    }
}

void GenerateRandomStartPosition(Position& position) {
    ResetAllButSpaces(position);
    int numStones = NumBoardSpaces();
    std::array<int, 3> counts = CountRandomStones(numStones);
    for (int x = 0; x < GlobCfg.BoardXDim; ++x) {
        for (int y = 0; y < GlobCfg.BoardYDim; ++y) {
            const int stone = IsOnBoard(x, y) ? DrawStone(counts, numStones--) : EMPTY;
            position.Spaces[x][y] = SpaceWith(stone);
        }
    }
}

void GenerateStartPosition(Position& position) {
    if (GlobCfg.SetupMode == 1) {
        GenerateRandomStartPosition(position);
    } else {
        GenerateEmptyStartPosition(position);
    }
}

void DoSetupMove(const Position& parent, const Move& move, Position& child) {
    if (parent.SetupPhase == 0) {
        ErrorExit("DoSetupMove: Error: Position is done with setup!\n");
    }
    if (parent.Spaces[move.Column][move.Row].Owner != EMPTY) {
        ErrorExit("DoSetupMove: Error: Setup move target is not empty!\n");
    }
    child = parent;
    Space& target = child.Spaces[move.Column][move.Row];
    if (parent.SetupPhase > 1) {
        target = SpaceWith(LIFE);
        child.SetupPhase = parent.SetupPhase - 1;
    } else {
        target = SpaceWith(parent.ActivePlayer);
    }
    child.ActivePlayer = OtherColor(parent.ActivePlayer);
    if (GetNumMoves(child) == 0) {  // no space is empty
        child.SetupPhase = 0;
        child.ActivePlayer = WHITE;
    }
}

Space SpaceWith(int color) {
    return {.Height = color == EMPTY ? 0 : 1, .Life = color == LIFE ? 1 : 0, .Owner = color};
}

void ResetAllButSpaces(Position& position) {
    position.ActivePlayer = WHITE;
    position.Value = 0.0;
    position.ExactValue = 0;
    position.EndPosition = 0;
    position.SetupPhase = 0;
}

int SetupCounter(int lifeStones) {
    return lifeStones < INT_HIGHEST ? lifeStones + 1 : INT_HIGHEST;
}

int LifeStonesOfCounter(int counter) {
    return counter < INT_HIGHEST ? counter - 1 : INT_HIGHEST;
}

// Positions of all kinds for the tests of the engine: whole random games from random starts on
// random boards, some of them with holes, high towers and groups without life, as a file can
// contain.
#pragma once

#include <random>

#include "common/board_text.h"
#include "common/random_games.h"
#include "kernel/weights.h"

// A board size, every third time the default one, and a start position of the move phase.
inline Position RandomStart(std::mt19937& random, int game) {
    if (game % 3 == 0) {
        UseBoard(11, 5);
    } else {
        UseBoard(1 + RandomBelow(random, MAX_BOARD_X_DIM),
                 1 + RandomBelow(random, MAX_BOARD_Y_DIM));
    }
    Position position;
    FillBoardAtRandom(random, position);
    if (game % 4 == 0) {
        for (int y = 0; y < GlobCfg.BoardYDim; ++y) {
            for (int x = 0; x < GlobCfg.BoardXDim; ++x) {
                Space& space = position.Spaces[x][y];
                const int chance = RandomBelow(random, 8);
                if (chance < 2) {
                    space = SpaceWith(EMPTY);
                } else if (chance == 2 && space.Owner < LIFE) {
                    space.Height += RandomBelow(random, 20);
                    space.Life = RandomBelow(random, 2);
                }
            }
        }
    }
    return position;
}

// Calls `look(position)` for every position of a random game in which the side to move has a move.
template <typename Look>
void WalkGame(std::mt19937& random, Position position, Look look) {
    while (!IsEndPosition(position)) {
        const Position parent = position;
        if (GetNumMoves(parent) != 0) {
            look(parent);
        }
        Move move;
        MakeRandomPly(random, parent, move, position);
    }
}

// Weights of a kind: full strength, random numbers at work, or no field zero.
inline EvalWeights SomeWeights(std::mt19937& random, int kind) {
    EvalWeights weights;
    SetLevel(kind % 3 == 1 ? RandomBelow(random, 1000) : 5000, weights);
    if (kind % 3 == 2) {
        auto some = [&random] { return RandomBelow(random, 2001) / 1000.0 - 1.0; };
        for (EvalWeights::ByFreeAndLife* table :
             {&weights.Towers, &weights.Moves, &weights.Score}) {
            for (EvalWeights::ByFree& row : *table) {
                row = {some(), some()};
            }
        }
        weights.MovesToLife = {some(), some()};
        weights.MovesToEnemy = {some(), some()};
    }
    return weights;
}

// Random games, played by the rules alone, for tests that need many of them.
#pragma once

#include <algorithm>
#include <random>

#include "config/board_settings.h"
#include "rules/game_record.h"
#include "rules/referee.h"
#include "rules/setup.h"

inline int RandomBelow(std::mt19937& random, int n) {
    return static_cast<int>(random() % static_cast<unsigned>(n));
}

// A start position with every space filled at random, without a draw from the program's own
// generator.
inline void FillBoardAtRandom(std::mt19937& random, Position& position) {
    GenerateEmptyStartPosition(position);
    ResetAllButSpaces(position);
    for (int y = 0; y < GlobCfg.BoardYDim; ++y) {
        for (int x = 0; x < GlobCfg.BoardXDim; ++x) {
            if (IsOnBoard(x, y)) {
                const int stone = RandomBelow(random, 12);
                position.Spaces[x][y] = SpaceWith(stone < 2 ? LIFE : stone % 2);
            }
        }
    }
}

// Makes a random ply in `position`, a pass where there is no move.
inline void MakeRandomPly(std::mt19937& random, const Position& position, Move& move,
                          Position& next) {
    move = {};
    if (position.SetupPhase != 0) {
        do {
            move.Column = RandomBelow(random, GlobCfg.BoardXDim);
            move.Row = RandomBelow(random, GlobCfg.BoardYDim);
        } while (!IsOnBoard(move.Column, move.Row) ||
                 position.Spaces[move.Column][move.Row].Owner != EMPTY);
        DoSetupMove(position, move, next);
        return;
    }
    MoveArray moves;
    const int numMoves = GetPossibleMoves(position, moves);
    if (numMoves == 0) {
        DoPass(position, next);
    } else {
        move = moves[RandomBelow(random, numMoves)];
        DoMove(position, move, next);
    }
}

// The same in the last position of the record.
inline void PlayRandomPly(std::mt19937& random, GameRecord& record) {
    const int n = record.LastMove++;
    MakeRandomPly(random, record.PositionList[n], record.MoveList[n], record.PositionList[n + 1]);
}

// Plays on from PositionList[0] to the end of the game, but no further than ply `maxPlies`.
inline void PlayRandomGame(std::mt19937& random, int maxPlies, GameRecord& record) {
    record.LastMove = 0;
    while (record.LastMove < maxPlies && !IsEndPosition(record.PositionList[record.LastMove])) {
        PlayRandomPly(random, record);
    }
}

// Compares two games, each stored move as far as anyone reads it. Answers the number of the first
// position or move that differs, or -1.
inline int FirstDifference(const GameRecord& a, const GameRecord& b) {
    for (int i = 0; i <= std::max(a.LastMove, b.LastMove); ++i) {
        const bool inBoth = i <= a.LastMove && i <= b.LastMove;
        if (!inBoth || !SamePosition(a.PositionList[i], b.PositionList[i])) {
            return i;
        }
        const Position& position = a.PositionList[i];
        if (i == a.LastMove || (position.SetupPhase == 0 && GetNumMoves(position) == 0)) {
            continue;  // no move is stored behind the last position and for a pass
        }
        const Move& moveA = a.MoveList[i];
        const Move& moveB = b.MoveList[i];
        if (moveA.Column != moveB.Column || moveA.Row != moveB.Row ||
            (position.SetupPhase == 0 && moveA.Direction != moveB.Direction)) {
            return i;
        }
    }
    return -1;
}

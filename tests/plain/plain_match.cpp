#include "plain/plain_engine.h"
#include "rules/referee.h"
#include "rules/setup.h"

namespace plain {

namespace {

void PlayTurn(Position& position, int depth, const EvalWeights& weights, Position& next) {
    Move move;
    if (position.SetupPhase != 0) {
        plain::GetBestSetupMove(position, weights, move);
        DoSetupMove(position, move, next);
    } else if (GetNumMoves(position) == 0) {
        DoPass(position, next);
    } else {
        const double value =
            plain::GetBestMove(position, depth, weights, move, position.ExactValue);
        DoMove(position, move, next);
        next.Value = value;
    }
}

// The final lead of WHITE, whom `beginner` plays.
int PlayGame(const ABWeightPair& players, int beginner, Position position, int depth) {
    while (!IsEndPosition(position)) {
        const int player = position.ActivePlayer == WHITE ? beginner : 1 - beginner;
        Position next;
        PlayTurn(position, depth, players[player], next);
        position = next;
    }
    position.ActivePlayer = WHITE;
    plain::EvaluatePosition(position, players[beginner]);
    return static_cast<int>(position.Value) / 1000;
}

}  // namespace

MatchResult PlayMatch(const ABWeightPair& players, int numPairs, int depth) {
    MatchResult result;
    for (int pair = 0; pair < numPairs; ++pair) {
        Position start;
        GenerateEmptyStartPosition(start);
        const int first = PlayGame(players, 0, start, depth);
        const int second = -PlayGame(players, 1, start, depth);
        for (const int lead : {first, second}) {
            result.TotalScore += lead;
            result.MatchPoints += lead > 0 ? 2 : (lead == 0 ? 1 : 0);
        }
    }
    return result;
}

}  // namespace plain

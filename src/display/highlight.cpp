#include "display/highlight.h"

namespace {

// The step that move `k` of the record makes.
FromTo StepOf(const GameRecord& record, int k) {
    const Position& position = record.PositionList[k];
    const Move& move = record.MoveList[k];
    const Place source = {move.Column, move.Row};
    if (position.SetupPhase != 0) {
        return {NOWHERE, source};
    }
    return {source, MoveTarget(position, move)};
}

}  // namespace

FromTo LastStep(const GameRecord& record, int n) {
    if (GetNumMoves(record.PositionList[n - 1]) != 0) {
        return StepOf(record, n - 1);
    }
    return n < 2 ? FromTo{} : StepOf(record, n - 2);
}

FromTo NextStep(const GameRecord& record, int n) {
    if (n >= record.LastMove || GetNumMoves(record.PositionList[n]) == 0) {
        return {};
    }
    return StepOf(record, n);
}

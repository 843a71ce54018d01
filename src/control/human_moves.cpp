#include "control/human_moves.h"

#include "rules/notation.h"
#include "rules/referee.h"
#include "rules/setup.h"
#include "support/output.h"

namespace {

int DoTypedPass(std::string_view line, const Position& position, Position& next, Move& move) {
    if (CheckPassMove(line) != 0) {
        Print("No more moves, press <return> or type \"pass\" to pass.\n");
        return 1;
    }
    move.Kind = MOVE_PASS;
    DoPass(position, next);
    Print("No move, PASSING\n");
    return 0;
}

}  // namespace

int DoPlayerMove(std::string_view line, const Position& position, Position& next, Move& move) {
    const bool setup = position.SetupPhase != 0;
    if (!setup && GetNumMoves(position) == 0) {
        return DoTypedPass(line, position, next, move);
    }
    Move entered;
    int distance = 0;
    const Notation notation = setup ? Notation::Placement : Notation::TowerMove;
    if (GetPlayerMove(line, notation, entered, distance) != 0 ||
        !MoveIsOk(position, entered, distance)) {
        return 1;
    }
    if (setup) {
        DoSetupMove(position, entered, next);
    } else {
        DoMove(position, entered, next);
    }
    move = entered;
    return 0;
}

int CheckPassMove(std::string_view line) {
    constexpr std::string_view SMALL = "pass";
    constexpr std::string_view CAPITAL = "PASS";
    const std::size_t length = line.size() < SMALL.size() ? line.size() : SMALL.size();
    for (std::size_t i = 0; i < length; ++i) {
        if (line[i] != SMALL[i] && line[i] != CAPITAL[i]) {
            return 1;
        }
    }
    return 0;
}

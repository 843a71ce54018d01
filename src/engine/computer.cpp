#include "engine/computer.h"

#include "engine/placement.h"
#include "engine/search.h"
#include "rules/notation.h"
#include "rules/setup.h"
#include "support/fatal.h"

Turn MakeComputerTurn(Position& position, int depth, const EvalWeights& weights, Position& next,
                      Move& move) {
    const bool hasChoice = GetNumMoves(position) > 0;
    if (position.SetupPhase != 0) {
        if (!hasChoice) {
            ErrorExit("DoComputerMove: Error: In setup mode and no moves left! (bug in program)\n");
        }
        GetBestSetupMove(position, weights, move);
        DoSetupMove(position, move, next);
        return Turn::Placement;
    }
    if (!hasChoice) {
        DoPass(position, next);
        return Turn::Pass;
    }
    const double value = GetBestMove(position, depth, weights, move, position.ExactValue);
    DoMove(position, move, next);
    next.Value = value;
    return Turn::TowerMove;
}

int DoComputerMove(Position& position, int depth, const EvalWeights& weights, Position& next,
                   std::string& message, Move& move) {
    switch (MakeComputerTurn(position, depth, weights, next, move)) {
    case Turn::Placement:
        message = "Talurex does setup move: (" + GetMoveString(move, position) + ")\n";
        break;
    case Turn::TowerMove:
        message = "Talurex does move: (" + GetMoveString(move, position) + ")\n";
        break;
    case Turn::Pass:
        message = "Talurex is passing\n";
        break;
    }
    return GetNumMoves(position);
}

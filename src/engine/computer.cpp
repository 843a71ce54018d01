#include "engine/computer.h"

#include "engine/evaluation.h"
#include "engine/placement.h"
#include "rules/notation.h"
#include "rules/setup.h"
#include "support/fatal.h"

Turn MakeComputerTurn(Position& position, SearchEffort& effort, const EvalWeights& weights,
                      const ThoughtWatch* watch, Position& next, Move& move) {
    EvalCount = 0;
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
    const Thought thought = Think(position, effort, weights, watch);
    effort.Depth = thought.Depth;
    move = thought.BestMove;
    DoMove(position, move, next);
    next.Value = thought.Value;
    return Turn::TowerMove;
}

int DoComputerMove(Position& position, SearchEffort& effort, const EvalWeights& weights,
                   const ThoughtWatch* watch, Position& next, std::string& message, Move& move) {
    switch (MakeComputerTurn(position, effort, weights, watch, next, move)) {
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

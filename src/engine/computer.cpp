#include "engine/computer.h"

#include "engine/evaluation.h"
#include "engine/placement.h"
#include "rules/notation.h"
#include "rules/setup.h"
#include "support/fatal.h"
#include "support/random.h"

Turn MakeComputerTurn(Position& position, const SearchEffort& effort, const EvalWeights& weights,
                      const ThoughtWatch* watch, Position& next, Move& move, Thought& thought) {
    EvalCount = 0;
    thought = {.Search = {}, .Depth = effort.Depth};
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
    thought = Think(position, effort, weights, watch);
    AccountFor(thought);
    const SearchResult& found = thought.Search;
    if (thought.Depth > 0) {
        position.Value = found.BestValue;
    }
    position.ExactValue = found.IsExact ? 1 : 0;
    move = found.BestMove;
    DoMove(position, move, next);
    next.Value = found.Value;
    return Turn::TowerMove;
}

int DoComputerMove(Position& position, const SearchEffort& effort, const EvalWeights& weights,
                   const ThoughtWatch* watch, Position& next, std::string& message, Move& move,
                   Thought& thought) {
    switch (MakeComputerTurn(position, effort, weights, watch, next, move, thought)) {
    case Turn::Placement:
        message = "Talurex does setup move: (" + GetMoveString(move, position) + ")\n";
        break;
    case Turn::TowerMove:
        message = "Talurex does move: (" + GetMoveString(move, position) + ")\n";
        break;
    case Turn::Pass: message = "Talurex is passing\n"; break;
    }
    return GetNumMoves(position);
}

#include "control/main_loop.h"

#include <cstdio>

#include "control/command_table.h"
#include "control/game_commands.h"
#include "control/interpreter.h"
#include "control/keep_game.h"
#include "control/prompt.h"
#include "display/gui_link.h"
#include "engine/computer.h"
#include "engine/evaluation.h"
#include "kernel/search_kernel.h"
#include "rules/notation.h"
#include "rules/referee.h"
#include "rules/setup.h"
#include "support/signals.h"

namespace {

// Those that ask the computer to move at once.
constexpr int HURRY_REQUESTS = REQUEST_MOVE_NOW | REQUEST_INTERRUPT;

void StartPlay(PlayState& state) {
    ChooseComputerSide(state);
    std::printf(GlobCfg.SetupMode == 1 ? "Using random setup\n" : "Using normal setup\n");
    GenerateStartPosition(state.Record.PositionList[0]);
    ShowPosition(state);
    if (GlobCfg.Gui != 0) {
        GUIPrintPosition(state.Record, 0);
    }
}

bool ComputerIsToMove(const PlayState& state) {
    const int side = state.Record.PositionList[state.CurrentMove].ActivePlayer;
    return GlobCfg.GameRunFlag == 1 &&
           (GlobCfg.NumHumanPlayers == 0 ||
            (GlobCfg.NumHumanPlayers == 1 && side == state.ComputerSide));
}

void StopAtEnd(const PlayState& state) {
    const Position& position = state.Record.PositionList[state.CurrentMove];
    if (IsEndPosition(position)) {
        GlobCfg.GameRunFlag = 0;
        PrintScore(position);
    }
}

// What the computer's search found out about the position that its move led to.
void PrintStatus(const Position& position, int depth) {
    if (position.ExactValue != 0) {
        // Towards zero: less than a whole stone is none.
        std::printf("ExactValue: %i  (Depth: %i, Positions: %i)\n",
                    static_cast<int>(position.Value) / 1000, depth, EvalCount);
    } else {
        std::printf("Value: %f (Depth %i, Positions: %i)\n", position.Value, depth, EvalCount);
    }
}

// Stops a game without people when that is asked for. Answers whether it did.
bool StopOnRequest() {
    if (GlobCfg.NumHumanPlayers != 0 || !TakeRequests(HURRY_REQUESTS)) {
        return false;
    }
    GlobCfg.GameRunFlag = 0;
    return true;
}

// Makes the computer's turn. The next one begins its search at the depth that was reached.
void DoComputerTurn(PlayState& state, const EvalWeights& weights) {
    const int n = state.CurrentMove;
    if (!CheckRecordRoom(n)) {
        GlobCfg.GameRunFlag = 0;  // or the same turn would come again for ever
        return;
    }
    if (StopOnRequest()) {
        return;
    }
    std::fflush(
        stdout);  // who reads a pipe sees each move as it is made, and not behind the answer
    SearchEffort effort = {.Depth = state.SearchDepth,
                           .Budget = SearchBudget(GlobCfg.ComputerLevel),
                           .CanBeHurried = true};
    // Aside, for the record may go on behind this turn, and the process may end before it does.
    Position next;
    Move move = state.Record.MoveList[n];
    std::string message;
    DoComputerMove(state.Record.PositionList[n], effort, weights, next, message, move);
    if (EndingSignal() != 0) {
        EndBySignal(EndingSignal());
    }
    state.SearchDepth = effort.Depth;
    state.Record.PositionList[n + 1] = next;
    state.Record.MoveList[n] = move;
    std::fputs(message.c_str(), stdout);
    AdvanceAndShow(state);
    if (GlobCfg.PrintStatusFlag != 0) {
        PrintStatus(state.Record.PositionList[state.CurrentMove], state.SearchDepth);
    }
    StopAtEnd(state);
    std::fflush(stdout);
    if (!StopOnRequest() && GlobCfg.NumHumanPlayers != 0) {
        DropRequests(HURRY_REQUESTS);  // they were for this turn
    }
}

void DoMoveLine(PlayState& state, const std::string& line) {
    if (PlayTypedPly(line, state)) {
        StopAtEnd(state);
    }
}

}  // namespace

void DoLine(PlayState& state, std::string line, EvalWeights& weights) {
    if (line.starts_with('/') || GlobCfg.GameRunFlag == 0) {
        const CommandId id = GetCommand(line);
        ExecuteCommand(id, line, state, weights);
    } else {
        DoMoveLine(state, line);
    }
}

void EndCycle(const PlayState& state) {
    if (IsEndPosition(state.Record.PositionList[state.CurrentMove])) {
        GlobCfg.GameRunFlag = 0;
    }
    if (GlobCfg.Gui != 0) {
        GUIPrintPosition(state.Record, state.CurrentMove);
    }
}

void MainControl(EvalWeights& weights) {
    PlayState state;
    PrepareInput();
    const GameKeeper keeper(state);
    StartPlay(state);
    std::string line;
    while (state.QuitFlag == 0) {
        NoteBoardSettings(state);
        if (ComputerIsToMove(state)) {
            DoComputerTurn(state, weights);
        } else if (PromptForLine(state, line)) {
            DoLine(state, line, weights);
        } else {
            KeepGame();
            CloseGuiLink();
            return;
        }
        EndCycle(state);
    }
}

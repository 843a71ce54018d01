#include "control/main_loop.h"

#include <cstdio>

#include "control/command_table.h"
#include "control/game_commands.h"
#include "control/human_moves.h"
#include "control/interpreter.h"
#include "display/gui_link.h"
#include "engine/computer.h"
#include "engine/evaluation.h"
#include "rules/notation.h"
#include "rules/referee.h"
#include "rules/setup.h"
#include "support/files.h"
#include "support/random.h"
#include "support/text.h"

namespace {

// The longest line taken at once; what is longer is read in pieces, each a line of its own.
constexpr int INPUT_LINE_LENGTH = 198;

void StartPlay(PlayState& state) {
    state.ComputerSide = GlobCfg.ComputerColor == 2 ? RandomInt(2) : GlobCfg.ComputerColor;
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

// Makes the computer's move, deeper and deeper until a search has used up its budget; only the last
// attempt stands. The next move begins at the depth that was reached. Answers the line to print.
std::string SearchAndMove(PlayState& state, const EvalWeights& weights) {
    const int budget = SearchBudget(GlobCfg.ComputerLevel);
    const int n = state.CurrentMove;
    Position& next = state.Record.PositionList[n + 1];
    std::string message;
    for (;; ++state.SearchDepth) {
        EvalCount = 0;
        DoComputerMove(state.Record.PositionList[n], state.SearchDepth, weights, next, message,
                       state.Record.MoveList[n]);
        const bool cheap = EvalCount >= 1 && EvalCount < budget;
        if (!cheap || state.SearchDepth >= MAX_SEARCH_DEPTH || next.ExactValue != 0) {
            return message;
        }
    }
}

void DoComputerTurn(PlayState& state, const EvalWeights& weights) {
    if (!RecordHasRoom(state.CurrentMove)) {
        GlobCfg.GameRunFlag = 0;  // or the same turn would come again for ever
        return;
    }
    const std::string message = SearchAndMove(state, weights);
    std::fputs(message.c_str(), stdout);
    AdvanceAndShow(state);
    if (GlobCfg.PrintStatusFlag != 0) {
        PrintStatus(state.Record.PositionList[state.CurrentMove], state.SearchDepth);
    }
    StopAtEnd(state);
    std::fflush(stdout);  // whoever reads through a pipe sees each move as it is made
}

void DoMoveLine(PlayState& state, const std::string& line) {
    if (!RecordHasRoom(state.CurrentMove)) {
        return;
    }
    GameRecord& record = state.Record;
    if (DoPlayerMove(line, record.PositionList[state.CurrentMove],
                     record.PositionList[state.CurrentMove + 1],
                     record.MoveList[state.CurrentMove]) == 0) {
        AdvanceAndShow(state);
        StopAtEnd(state);
    }
}

// Prompts for a line and reads it. Answers false at the end of standard input.
bool PromptForLine(const PlayState& state, std::string& line) {
    std::printf("Move (%i/%i), %s: ", state.CurrentMove, state.Record.LastMove,
                GlobCfg.GameRunFlag == 1 ? "your move" : "game stopped");
    std::fflush(stdout);
    if (!ReadPiece(INPUT_LINE_LENGTH, line, stdin)) {
        std::printf("\n");
        return false;
    }
    EatLeadingAndTrailingWhitespace(line);
    return true;
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
    StartPlay(state);
    std::string line;
    while (state.QuitFlag == 0) {
        if (ComputerIsToMove(state)) {
            DoComputerTurn(state, weights);
        } else if (PromptForLine(state, line)) {
            DoLine(state, line, weights);
        } else {
            CloseGuiLink();
            return;
        }
        EndCycle(state);
    }
}

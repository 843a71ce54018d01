#include "control/session.h"

#include "control/command_table.h"
#include "control/evaluation_info.h"
#include "control/game_commands.h"
#include "control/interpreter.h"
#include "display/gui_link.h"
#include "engine/computer.h"
#include "engine/evaluation.h"
#include "rules/notation.h"
#include "rules/referee.h"
#include "rules/setup.h"
#include "support/output.h"
#include "support/requests.h"
#include "support/text.h"

namespace {

// What the computer's search found out about the position that its move led to.
void PrintStatus(const Position& position, int depth) {
    if (position.ExactValue != 0) {
        // Towards zero: less than a whole stone is none.
        Print("ExactValue: %i  (Depth: %i, Positions: %i)\n",
              static_cast<int>(position.Value) / 1000, depth, EvalCount);
    } else {
        Print("Value: %f (Depth %i, Positions: %i)\n", position.Value, depth, EvalCount);
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

// A game that is over stops. Where a ply has ended it, and not a walk through the game, the score
// is told.
void StopAtEnd(const PlayState& play, bool byPly) {
    const Position& position = ShownPosition(play);
    if (!IsEndPosition(position)) {
        return;
    }
    GlobCfg.GameRunFlag = 0;
    if (byPly) {
        PrintScore(position);
    }
}

void BringDisplayUpToDate(const PlayState& play) {
    if (GlobCfg.Gui != 0) {
        GUIPrintPosition(play.Record, play.CurrentMove);
    }
}

// The computer's turn itself. Answers whether a ply came of it.
bool PlayComputerPly(Session& session) {
    PlayState& play = session.Play;
    const int n = play.CurrentMove;
    if (!CheckRecordRoom(n)) {
        GlobCfg.GameRunFlag = 0;  // or the same turn would come again for ever
        return false;
    }
    if (StopOnRequest()) {
        return false;
    }
    FlushOutput();  // who reads a pipe sees each move as it is made, and not behind the answer
    const SearchEffort effort = {.Depth = play.SearchDepth,
                                 .Budget = SearchBudget(GlobCfg.ComputerLevel)};
    const ThoughtWatch watch = WatchOf(session);
    // Aside, for the record may go on behind this turn, and the program may end before it does.
    Position next;
    Move move = play.Record.MoveList[n];
    std::string message;
    Thought thought;
    DoComputerMove(play.Record.PositionList[n], effort, session.Weights, &watch, next, message,
                   move, thought);
    if (IsRequested(END_REQUESTS)) {
        return false;
    }
    PrintCutOff(play.Record.PositionList[n], thought.Search);
    play.SearchDepth = thought.Depth;
    play.Record.PositionList[n + 1] = next;
    play.Record.MoveList[n] = move;
    PrintText(message);
    AdvanceAndShow(play);
    if (GlobCfg.PrintStatusFlag != 0) {
        PrintStatus(ShownPosition(play), play.SearchDepth);
    }
    return true;
}

}  // namespace

void BeginPlay(Session& session) {
    PlayState& play = session.Play;
    ChooseComputerSide(play);
    PrintText(GlobCfg.SetupMode == 1 ? "Using random setup\n" : "Using normal setup\n");
    GenerateStartPosition(play.Record.PositionList[0]);
    ShowPosition(play);
    BringDisplayUpToDate(play);
}

bool ComputerIsToMove(const Session& session) {
    const int side = ShownPosition(session.Play).ActivePlayer;
    return GlobCfg.GameRunFlag == 1 &&
           (GlobCfg.NumHumanPlayers == 0 ||
            (GlobCfg.NumHumanPlayers == 1 && side == session.Play.ComputerSide));
}

void PlayComputerTurn(Session& session) {
    const bool played = PlayComputerPly(session);
    if (IsRequested(END_REQUESTS)) {
        return;
    }
    StopAtEnd(session.Play, played);
    FlushOutput();
    if (played && !StopOnRequest() && GlobCfg.NumHumanPlayers != 0) {
        DropRequests(HURRY_REQUESTS);  // they were for this turn
    }
    BringDisplayUpToDate(session.Play);
}

void TypeLine(Session& session, std::string line) {
    EatLeadingAndTrailingWhitespace(line);
    bool played = false;
    if (line.starts_with('/') || GlobCfg.GameRunFlag == 0) {
        const CommandId id = GetCommand(line);
        ExecuteCommand(id, line, session);
    } else {
        played = PlayTypedPly(line, session.Play);
    }
    StopAtEnd(session.Play, played);
    BringDisplayUpToDate(session.Play);
}

std::string PromptText(const Session& session) {
    return "Move (" + std::to_string(session.Play.CurrentMove) + '/' +
           std::to_string(session.Play.Record.LastMove) + "), " +
           (GlobCfg.GameRunFlag == 1 ? "your move: " : "game stopped: ");
}

ThoughtWatch WatchOf(const Session& session) {
    return {.StopFlag = Requests, .Report = session.Report, .Context = session.ReportContext};
}

#include "control/main_loop.h"

#include <cstdio>
#include <string>

#include "control/human_moves.h"
#include "control/play_state.h"
#include "display/terminal_board.h"
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
    std::printf("\n");
    PrintPosition(state.Record.PositionList[0]);
}

// Makes the ply that was just written behind the shown position the last one of the game, and shows
// the position it led to.
void AdvanceAndShow(PlayState& state) {
    ++state.CurrentMove;
    state.Record.LastMove = state.CurrentMove;
    std::printf("\n");
    PrintPosition(state.Record.PositionList[state.CurrentMove]);
}

void StopAtEnd(const PlayState& state) {
    const Position& position = state.Record.PositionList[state.CurrentMove];
    if (IsEndPosition(position)) {
        GlobCfg.GameRunFlag = 0;
        PrintScore(position);
    }
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

void MainControl() {
    PlayState state;
    StartPlay(state);
    std::string line;
    while (state.QuitFlag == 0) {
        if (!PromptForLine(state, line)) {
            return;
        }
        DoMoveLine(state, line);
        if (IsEndPosition(state.Record.PositionList[state.CurrentMove])) {
            GlobCfg.GameRunFlag = 0;
        }
    }
}

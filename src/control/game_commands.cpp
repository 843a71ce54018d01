#include "control/game_commands.h"

#include <algorithm>
#include <cstdint>
#include <optional>
#include <string_view>

#include "config/glob_cfg.h"
#include "control/evaluation_info.h"
#include "control/help.h"
#include "control/human_moves.h"
#include "display/gui_link.h"
#include "display/terminal_board.h"
#include "kernel/search_kernel.h"
#include "rules/referee.h"
#include "rules/setup.h"
#include "support/numbers.h"
#include "support/output.h"
#include "support/random.h"
#include "support/text.h"

namespace {

// Shows the position `distance` plies on, or the end of the game in that direction. The distance of
// a user may be any number, and its opposite: 64 bits hold every sum.
void Walk(std::int64_t distance, PlayState& state) {
    const std::int64_t moveNumber = state.CurrentMove + distance;
    GlobCfg.GameRunFlag = 0;
    state.CurrentMove =
        static_cast<int>(std::clamp<std::int64_t>(moveNumber, 0, state.Record.LastMove));
    state.SearchDepth = 0;
    ShowPosition(state);
}

void BeginNewGame(PlayState& state) {
    GenerateStartPosition(state.Record.PositionList[0]);
    state.CurrentMove = 0;
    state.Record.LastMove = 0;
    state.SearchDepth = 0;
    state.HasNewPlies = false;
    state.InFile.clear();
    GlobCfg.GameRunFlag = 1;
}

// Reads what the evaluate command is to search with. Answers false when it is no number.
bool ReadReportNumber(ReportMode mode, const std::string& argument, int searchDepth, int& number) {
    if (argument.empty()) {
        number = mode == ReportMode::Depth ? searchDepth : GlobCfg.ComputerLevel;
        return true;
    }
    const std::optional<int> given = ReadInt(argument);
    if (!given) {
        return false;
    }
    number = Max(0, *given);
    if (mode == ReportMode::Depth && number > MAX_SEARCH_DEPTH) {
        PrintRefusal("Maximum depth is %i!\n", MAX_SEARCH_DEPTH);
        number = MAX_SEARCH_DEPTH;
    }
    return true;
}

}  // namespace

void ShowPosition(const PlayState& state) {
    if (PrintedBoards != BoardStyle::Hidden) {
        Print("\n");
        PrintPosition(ShownPosition(state));
    }
}

void ChooseComputerSide(PlayState& state) {
    state.ComputerSide =
        GlobCfg.ComputerColor == RANDOM_COLOR ? RandomInt(2) : GlobCfg.ComputerColor;
}

void AdvanceAndShow(PlayState& state) {
    ++state.CurrentMove;
    state.Record.LastMove = state.CurrentMove;
    state.HasNewPlies = true;
    state.InFile.clear();
    ShowPosition(state);
}

bool PlayTypedPly(const std::string& text, PlayState& state) {
    GameRecord& record = state.Record;
    const int n = state.CurrentMove;
    if (!CheckRecordRoom(n) || DoPlayerMove(text, record.PositionList[n],
                                            record.PositionList[n + 1], record.MoveList[n]) != 0) {
        return false;
    }
    AdvanceAndShow(state);
    return true;
}

void DoUndo(PlayState& state) {
    if (state.CurrentMove < 2) {
        PrintRefusal("There is nothing to undo!\n");
        return;
    }
    const auto& positions = state.Record.PositionList;
    const int begin = state.CurrentMove;
    state.CurrentMove -= 2;
    // WHITE makes the last of an odd number of placements and the first move as well.
    if (positions[state.CurrentMove].SetupPhase == 1 && positions[begin].SetupPhase == 0 &&
        GlobCfg.BoardXDim * GlobCfg.BoardYDim % 2 == 1) {
        --state.CurrentMove;
    }
    state.SearchDepth = 0;
    ShowPosition(state);
}

void DoBack(const std::string& argument, PlayState& state) {
    Walk(-static_cast<std::int64_t>(ReadInt(argument).value_or(1)), state);
}

void DoForward(const std::string& argument, PlayState& state) {
    Walk(ReadInt(argument).value_or(1), state);
}

void DoStart(const PlayState& state) {
    if (GlobCfg.GameRunFlag == 1) {
        PrintRefusal("game is already started!");  // the next prompt follows on the same line
    } else if (IsEndPosition(state.Record.PositionList[state.CurrentMove])) {
        PrintRefusal("game cannot be started in an end position!\n");
    } else {
        GlobCfg.GameRunFlag = 1;
    }
}

void DoCont(PlayState& state) {
    if (GlobCfg.GameRunFlag == 1) {
        PrintRefusal("game is already running!\n");
        return;
    }
    if (IsEndPosition(state.Record.PositionList[state.Record.LastMove])) {
        PrintRefusal("game is finished and cannot be continued!\n");
        return;
    }
    state.CurrentMove = state.Record.LastMove;
    GlobCfg.GameRunFlag = 1;
    ShowPosition(state);
}

void DoStop() {
    if (GlobCfg.GameRunFlag != 1) {
        PrintRefusal("game is already stopped!\n");
    }
    GlobCfg.GameRunFlag = 0;
}

void DoNew(PlayState& state) {
    if (GlobCfg.GameRunFlag == 1) {
        PrintRefusal("A game is running! Stop it before creating a new one!\n");
        return;
    }
    BeginNewGame(state);
    ChooseComputerSide(state);
    ShowPosition(state);
}

void DoBoardSize(const std::string& argument, PlayState& state) {
    if (GlobCfg.GameRunFlag == 1) {
        PrintRefusal("A game is running! Stop it before changing boardsize and creating a new one!"
                     "\n");
        return;
    }
    std::string_view rest = argument;
    const std::optional<int> x = ScanInt(rest);
    const std::optional<int> y = ScanInt(rest);
    if (!x || !y) {
        PrintUsageError(COMMAND_BOARDSIZE);
        return;
    }
    if (!IsBoardSize(*x, *y)) {
        PrintUsageError(COMMAND_BOARDSIZE);
        PrintRefusal("x_size: 1-%i\n", MAX_BOARD_X_DIM);
        PrintRefusal("y_size: 1-%i\n", MAX_BOARD_Y_DIM);
        return;
    }
    GlobCfg.BoardXDim = *x;
    GlobCfg.BoardYDim = *y;
    Print("Board dimensions changed to (%ix%i).\n", *x, *y);
    Print("A new game was created.\n");
    BeginNewGame(state);
    ShowPosition(state);
}

void DoEvaluate(const std::string& argument, const Session& session) {
    std::string numberText = argument;
    ReportMode mode = ReportMode::Level;
    if (argument.starts_with('d') || argument.starts_with('D')) {
        mode = ReportMode::Depth;
        numberText.front() = ' ';
        EatLeadingAndTrailingWhitespace(numberText);
    }
    int number = 0;
    if (!ReadReportNumber(mode, numberText, session.Play.SearchDepth, number)) {
        PrintUsageError(COMMAND_EVALUATE);
        return;
    }
    GetEvaluationInfo(ShownPosition(session.Play), mode, number, WatchOf(session));
}

void DoMoveCommand(const std::string& argument, PlayState& state) {
    if (!PlayTypedPly(argument, state)) {
        PrintRefusal("Error in Move! Move was not executed!\n");
    }
}

void DoQuit(PlayState& state) {
    if (GlobCfg.GameRunFlag == 1) {
        PrintRefusal("A game is running! Stop it before exiting talurex!\n");
        return;
    }
    CloseGuiLink();
    Print("See you :-)\n");
    state.QuitFlag = 1;
}

// Any lines typed into a game between two people. Files stay in a scratch folder, and what would
// search or open a connection is left out.
#include <memory>
#include <sstream>

#include "config/board_settings.h"
#include "control/session.h"
#include "fuzz/fuzz_support.h"
#include "rules/referee.h"
#include "rules/setup.h"
#include "support/random.h"
#include "support/text.h"

namespace {

void RequireSaneState(const PlayState& state) {
    Require(state.CurrentMove >= 0 && state.CurrentMove <= state.Record.LastMove,
            "the shown position belongs to the game");
    Require(state.Record.LastMove < GAME_RECORD_SIZE, "the game fits the record");
    Require(state.ComputerSide == WHITE || state.ComputerSide == BLACK, "the computer has a side");
    Require(GlobCfg.BoardXDim >= 1 && GlobCfg.BoardXDim <= MAX_BOARD_X_DIM, "columns are in range");
    Require(GlobCfg.BoardYDim >= 1 && GlobCfg.BoardYDim <= MAX_BOARD_Y_DIM, "rows are in range");
    Require(GlobCfg.NumLifeStones >= 1, "there are life stones");
    Require(GlobCfg.ComputerLevel >= 0, "the level is in range");
    Require(GlobCfg.GameRunFlag == 0 ||
                !IsEndPosition(state.Record.PositionList[state.CurrentMove]),
            "no game runs on past its end");
}

// People may pass on and on in an end position; a saved game ends with the first.
void CutAtTheEnd(GameRecord& record) {
    for (int i = 0; i < record.LastMove; ++i) {
        if (IsEndPosition(record.PositionList[i])) {
            record.LastMove = i;
        }
    }
}

// Spaces outside the board keep what a larger board left there; a loaded game has nothing there.
void ClearOutside(GameRecord& record) {
    for (int i = 0; i <= record.LastMove; ++i) {
        for (int x = 0; x < MAX_BOARD_X_DIM; ++x) {
            for (int y = 0; y < MAX_BOARD_Y_DIM; ++y) {
                if (!IsInRectangle(x, y)) {
                    record.PositionList[i].Spaces[x][y] = {};
                }
            }
        }
    }
}

}  // namespace

extern "C" int LLVMFuzzerInitialize(int* /*argc*/, char*** /*argv*/) {
    SilenceStandardOutput();
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const auto session = std::make_unique<Session>();
    *session = {};
    PlayState* const state = &session->Play;
    SetDefaultConfiguration();
    GlobCfg.NumHumanPlayers = 2;
    SeedRandom(1);
    ForgetGameFile();
    GenerateStartPosition(state->Record.PositionList[0]);

    std::istringstream lines(TextOfInput(data, size, 198));
    for (std::string line; state->QuitFlag == 0 && std::getline(lines, line);) {
        line = line.c_str();  // a NUL byte ends the line's text
        EatLeadingAndTrailingWhitespace(line);
        TypeLine(*session, Harmless(line));
        RequireSaneState(*state);
    }
    CutAtTheEnd(state->Record);
    ClearOutside(state->Record);
    RequireRoundTrip(state->Record);
    return 0;
}

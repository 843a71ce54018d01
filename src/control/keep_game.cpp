#include "control/keep_game.h"

#include <cstdio>
#include <cstdlib>

#include <unistd.h>

#include "display/gui_link.h"
#include "gamefiles/saved_game.h"
#include "support/fatal.h"

namespace {

constexpr const char* KEPT_FILE = "autosave.tlx";
constexpr int SIGNAL_STATUS = 128;  // what shells add to the number of the signal

PlayState* Kept = nullptr;  // null: there is no game to keep

}  // namespace

GameKeeper::GameKeeper(PlayState& state) {
    static const bool isRegistered = std::atexit(KeepGame) == 0;
    if (isRegistered && isatty(STDIN_FILENO) == 1) {
        Kept = &state;
    }
}

GameKeeper::~GameKeeper() {
    Kept = nullptr;
}

void NoteBoardSettings(PlayState& state) {
    state.Settings = GetBoardSettings();
}

void KeepGame() {
    if (Kept == nullptr || !Kept->HasNewPlies) {
        return;
    }
    PlayState& state = *Kept;
    Kept = nullptr;
    SetBoardSettings(state.Settings);
    PrintError(SaveGame(state.Record, KEPT_FILE) == 0
                   ? "The game is kept: /load autosave goes on with it.\n"
                   : "The game could not be kept!\n");
}

void EndBySignal(int number) {
    CloseGuiLink();
    std::printf("\n");
    KeepGame();
    std::exit(SIGNAL_STATUS + number);
}

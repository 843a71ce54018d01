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

enum class Outcome { NothingToKeep, Saved, NotSaved };

Outcome Save() {
    if (Kept == nullptr || !Kept->HasNewPlies) {
        return Outcome::NothingToKeep;
    }
    const PlayState& state = *Kept;
    Kept = nullptr;
    SetBoardSettings(state.Settings);
    return SaveGame(state.Record, KEPT_FILE) == 0 ? Outcome::Saved : Outcome::NotSaved;
}

void SayWhatBecame(Outcome outcome) {
    switch (outcome) {
    case Outcome::NothingToKeep:
        return;
    case Outcome::Saved:
        return PrintError("The game is kept: /load autosave goes on with it.\n");
    case Outcome::NotSaved:
        return PrintError("The game could not be kept!\n");
    }
}

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
    SayWhatBecame(Save());
}

void EndBySignal(int number) {
    // First of all: the rest may have to wait, for a terminal that is held or for a display.
    const Outcome outcome = Save();
    std::printf("\n");
    SayWhatBecame(outcome);
    CloseGuiLink();
    std::exit(SIGNAL_STATUS + number);
}

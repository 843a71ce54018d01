#include "terminal/keep_game.h"

#include "display/gui_link.h"
#include "gamefiles/kept_game.h"
#include "gamefiles/saved_game.h"
#include "support/fatal.h"
#include "support/output.h"
#include "terminal/prompt.h"

namespace {

constexpr int SIGNAL_STATUS = 128;  // what shells add to the number of the signal

enum class Outcome { NothingToKeep, Saved, NotSaved };

Outcome Save(PlayState& play) {
    if (!play.HasNewPlies || !IsAtTerminal()) {
        return Outcome::NothingToKeep;
    }
    play.HasNewPlies = false;
    return SaveGame(play.Record, std::string(KEPT_GAME_NAME) + ".tlx") == 0 ? Outcome::Saved
                                                                            : Outcome::NotSaved;
}

void SayWhatBecame(Outcome outcome) {
    if (outcome != Outcome::NothingToKeep) {
        SayWhetherKept(outcome == Outcome::Saved, KEPT_GAME_NAME);
    }
}

}  // namespace

void KeepGame(PlayState& play) {
    SayWhatBecame(Save(play));
}

void EndBySignal(int number, PlayState& play) {
    // First of all: the rest may have to wait, for a terminal that is held or for a display.
    const Outcome outcome = Save(play);
    Print("\n");
    SayWhatBecame(outcome);
    CloseGuiLink();
    throw ProgramEnd{SIGNAL_STATUS + number};
}

// What becomes of the game when the program is ended from outside, or by an error, while somebody
// sits at the terminal: it is saved as autosave.tlx, so that it can be gone on with. Elsewhere
// nothing is ever kept.
#pragma once

#include "control/play_state.h"

// Saves the game when it has plies that are in no file yet, and says on standard error how to go on
// with it. There is then nothing more to keep.
void KeepGame(PlayState& play);

// Keeps the game, takes leave of the display and ends the program, as a signal of that number asks.
[[noreturn]] void EndBySignal(int number, PlayState& play);

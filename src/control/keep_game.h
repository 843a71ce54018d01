// What becomes of the game when the program is ended from outside, or by an error, while somebody
// sits at the terminal: it is saved as autosave.tlx, so that it can be gone on with.
#pragma once

#include "control/play_state.h"

// As long as it lives, the game of `state` is kept at every end of the process. The main loop,
// which ends that, calls KeepGame for the end of input; who quits wants nothing kept. One at a
// time. Only for a process whose standard input is a terminal; elsewhere nothing is ever kept.
class GameKeeper {
public:
    explicit GameKeeper(PlayState& state);
    ~GameKeeper();
    GameKeeper(const GameKeeper&) = delete;
    GameKeeper& operator=(const GameKeeper&) = delete;
};

// To be called before every turn: if the process ends while a file is being read, the game is saved
// with the board settings that it has now.
void NoteBoardSettings(PlayState& state);

// Saves the game when it has plies that are in no file yet, and says on standard error how to go on
// with it.
void KeepGame();

// Takes leave of the display and ends the process, as a signal of that number asks.
[[noreturn]] void EndBySignal(int number);

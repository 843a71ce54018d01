// What a page is to show of a game, apart from the plies that led to it: the position, and what
// stands around it. The size of the board and the settings are those of GlobCfg.
#pragma once

#include <string>

#include "control/session.h"
#include "display/highlight.h"

enum class GameState { Waiting, Thinking, Ended };

struct PageView {
    Position Shown;
    int Move = 0;  // the number of the shown position, 0 to LastMove
    int LastMove = 0;
    FromTo Last;
    FromTo Next;
    bool Running = true;
    bool IsLastOver = false;  // the last position of the game is an end position
    int ComputerSide = WHITE;
    GameState State = GameState::Thinking;

    bool Watching = false;  // a game elsewhere is looked at: nothing can be done
    bool Connected = false;
    int ExitStatus = 0;     // of a game that was ended
    std::string LastWords;  // and what was printed last
};

[[nodiscard]] PageView ViewOf(const PlayState& play, GameState state);

// Where play stands: the game in memory and the main loop's own variables.
#pragma once

#include "config/board_settings.h"
#include "rules/game_record.h"

struct PlayState {
    GameRecord Record;
    int CurrentMove = 0;       // number of the shown position, 0 to Record.LastMove
    int SearchDepth = 0;       // depth of the computer's next search; raised by deepening
    int ComputerSide = WHITE;  // the colour the computer plays in this game
    int QuitFlag = 0;          // 1 ends the main loop
    bool HasNewPlies = false;  // plies were played that are in no file of this run
    BoardSettings Settings;    // of the game in memory; a reader of files may be changing GlobCfg's
};

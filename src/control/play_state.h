// Where play stands: the game in memory and the variables around it.
#pragma once

#include <string>

#include "rules/game_record.h"

struct PlayState {
    GameRecord Record;
    int CurrentMove = 0;       // number of the shown position, 0 to Record.LastMove
    int SearchDepth = 0;       // depth of the computer's next search; raised by deepening
    int ComputerSide = WHITE;  // the colour the computer plays in this game
    int QuitFlag = 0;          // 1: the game was quit
    bool HasNewPlies = false;  // plies were played that are in no file of this run
    std::string InFile;        // the file that a load or save has the whole game in, if any
};

[[nodiscard]] inline const Position& ShownPosition(const PlayState& play) {
    return play.Record.PositionList[play.CurrentMove];
}

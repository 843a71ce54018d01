// What a graphical display is told of the game: the lines of one update (docs/gui-protocol.md), as
// a text. How it gets there is the business of display/gui_link.h.
#pragma once

#include <string>

#include "rules/game_record.h"

// What the display was last told. It outlives the connection: after a reconnection the next update
// builds on it.
struct GuiMirror {
    bool Started = false;  // the clear line of the process is used up
    Position LastPosition;
    int LastMoveNr = 0;
};

// The update that leads the display from what `mirror` holds to position `moveNumber` of the
// record, which `mirror` then holds.
[[nodiscard]] std::string UpdateText(GuiMirror& mirror, const GameRecord& record, int moveNumber);

// The one-way link to a graphical display: a TCP client that mirrors the game as lines of text
// (docs/gui-protocol.md). The link is on while GlobCfg.Gui is not 0; its socket is then
// GlobCfg.GuiSocket. Until start-up has tried to connect, Gui is only the wish for a link.
#pragma once

#include "display/gui_update.h"

extern GuiMirror GuiLast;

// Switches the link on, or leaves it off when nobody listens, and prints which. Answers 0 when it
// is on. For a link that is off.
int OpenGuiLink();

// Says farewell to the display and switches the link off, without a message. Answers false when it
// was off already.
bool CloseGuiLink();

// Sends one update: how the display gets from what it shows to position `moveNumber` of the record.
// A link that turns out to be lost is switched off with a message. For a link that is on.
void GUIPrintPosition(const GameRecord& record, int moveNumber);

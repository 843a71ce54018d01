// The one-way link to a graphical display: a TCP client that mirrors the game as lines of text.
#pragma once

#include <string_view>

#include "rules/game_record.h"

// Connects to the display on the loopback address at GuiPort. Answers 0, or 1 after a line on
// standard error.
[[nodiscard]] int SocketOpen(int& socketHandle);

void SocketClose(int socketHandle);

// Sends the text. Answers 0, or 1 when it could not be sent whole.
int SocketSendString(int socketHandle, std::string_view text);

// Sends one update: how the display gets from what it shows to position `moveNumber` of the record.
void GUIPrintPosition(const GameRecord& record, int moveNumber);

// The transport of the display link: one TCP connection to a display on this machine.
#pragma once

#include <cstddef>
#include <string_view>

// Connects to the display on the loopback address at GuiPort. Answers 0, or 1 after a line on
// standard error; no socket is then left open.
[[nodiscard]] int SocketOpen(int& socketHandle);

void SocketClose(int socketHandle);

// Sends the bytes, waiting for a display that is slow to read them, but not for one that takes no
// byte for ten seconds. Answers how many were sent: fewer than `length` when the connection is
// lost.
std::size_t SocketSend(int socketHandle, const char* bytes, std::size_t length);

// Sends the text. Answers 0, or 1 when it could not be sent whole.
int SocketSendString(int socketHandle, std::string_view text);

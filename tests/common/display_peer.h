// The other end of the link: a display that records every byte.
#pragma once

#include <string>

// A listener on a loopback port of the system's choosing, and at most one connection. All waiting
// is bounded; a wait in vain ends the process.
struct DisplayPeer {
    explicit DisplayPeer(int receiveBuffer = 0);  // in bytes; 0: the system's choice
    ~DisplayPeer();
    DisplayPeer(const DisplayPeer&) = delete;
    DisplayPeer& operator=(const DisplayPeer&) = delete;

    int Listener = -1;
    int Connection = -1;
    int Port = 0;
    std::string Received;  // all that was read on every connection
};

// A port that stays taken although nobody listens on it.
struct ClosedPort {
    ClosedPort();
    ~ClosedPort();
    ClosedPort(const ClosedPort&) = delete;
    ClosedPort& operator=(const ClosedPort&) = delete;

    int Descriptor = -1;
    int Port = 0;
};

void AcceptConnection(DisplayPeer& peer);
void HangUp(DisplayPeer& peer);

// Reads once, at most `maxBytes`. Answers false at the end of the connection.
bool ReadSome(DisplayPeer& peer, std::size_t maxBytes);

// Reads up to the done line of the next update and answers the update.
std::string ReadUpdate(DisplayPeer& peer);

// Reads to the end of the connection and answers what came.
std::string ReadToEnd(DisplayPeer& peer);

// The listening end of the display link: a loopback port behind a gate. Any page of any origin can
// connect to it; a connection counts for nothing until its first line is one of the protocol
// (docs/gui-protocol.md).
#pragma once

#include <deque>
#include <functional>
#include <memory>
#include <string>
#include <string_view>

#include "board/loopback_port.h"

struct DisplayConnection;

struct DisplayListener {
    explicit DisplayListener(boost::asio::io_context& context) : Port(context) {}

    LoopbackPort Port;
    std::shared_ptr<DisplayConnection> Game;                   // the one that is shown
    std::deque<std::shared_ptr<DisplayConnection>> AtTheGate;  // the oldest first

    // A line of the game, without its line feed; one that is too long has become a faulty one.
    std::function<void(std::string_view)> OnLine;
    std::function<void(bool isConnected)> OnConnection;
};

// Listens on a port of 127.0.0.1. Answers the port, or 0 after filling `error`.
[[nodiscard]] int OpenDisplayListener(DisplayListener& listener, int port, std::string& error);

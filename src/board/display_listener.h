// The listening end of the display link: a loopback port, and one Talurex at a time that sends. A
// browser can be made to connect here by any page, so whoever comes has to begin with a line of the
// protocol, and only then is looked at as a game.
#pragma once

#include <utility>

#include <deque>
#include <functional>
#include <memory>
#include <string>
#include <string_view>

#include "board/loopback_port.h"

struct DisplayConnection;

// The same holds for the context as for that of a LoopbackPort.
struct DisplayListener {
    explicit DisplayListener(boost::asio::io_context& context) : Port(context) {}

    LoopbackPort Port;
    std::shared_ptr<DisplayConnection> Game;
    // Those that have sent no line yet, and those that came before the game had gone; the oldest
    // first.
    std::deque<std::shared_ptr<DisplayConnection>> Waiting;

    // Called with each line of the game, without its line feed. A line of more than 256 characters
    // becomes "?", which is none of the protocol.
    std::function<void(std::string_view)> OnLine;
    std::function<void(bool)> OnConnection;  // a game has come, or gone
};

// Listens on a port of 127.0.0.1; 0 lets the system choose. Answers the port, or 0 after filling
// `error`: another port can then be tried.
[[nodiscard]] int OpenDisplayListener(DisplayListener& listener, int port, std::string& error);

// True when the game, or one that is still to show that it is one, has sent more than was handed
// on.
[[nodiscard]] bool LinkHasMore(const DisplayListener& listener);

// The listening end of the display link: a loopback port, and one Talurex at a time that sends.
#pragma once

#include <utility>

#include <array>
#include <functional>
#include <optional>
#include <string>
#include <string_view>

#include "board/loopback_port.h"

struct DisplayListener {
    explicit DisplayListener(boost::asio::io_context& context) : Port(context) {}

    LoopbackPort Port;
    std::optional<boost::asio::ip::tcp::socket> Connection;
    bool Awaiting = false;
    std::array<char, 4096> Bytes{};

    std::function<void()> OnReadable;  // called once for each AwaitDisplay
    std::function<void(bool)> OnConnection;
};

// Listens on a port of 127.0.0.1; 0 lets the system choose. Answers the port, or 0 after filling
// `error`.
[[nodiscard]] int OpenDisplayListener(DisplayListener& listener, int port, std::string& error);

// Has OnReadable called as soon as there is something to read. Without a connection it has no
// effect.
void AwaitDisplay(DisplayListener& listener);

// Reads some of what has come in, without waiting; empty when there is nothing. The end of the
// connection shows in OnConnection.
[[nodiscard]] std::string_view ReadDisplay(DisplayListener& listener);

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
    std::array<char, 16384> Bytes{};

    // Told what comes in, and when a connection begins and ends.
    std::function<void(std::string_view)> OnBytes;
    std::function<void(bool)> OnConnection;
};

// Listens on a port of 127.0.0.1; 0 lets the system choose. Answers the port, or 0 after filling
// `error`.
[[nodiscard]] int OpenDisplayListener(DisplayListener& listener, int port, std::string& error);

// Reads at once what has come in so far, for a caller who has just heard from Talurex otherwise.
void ReadDisplayNow(DisplayListener& listener);

// The listening end of the display link: a loopback port, and one Talurex at a time that sends.
#pragma once

#include <utility>

#include <array>
#include <functional>
#include <optional>
#include <string>
#include <string_view>

#include <boost/asio/io_context.hpp>
#include <boost/asio/ip/tcp.hpp>

struct DisplayListener {
    explicit DisplayListener(boost::asio::io_context& context) : Acceptor(context) {}

    boost::asio::ip::tcp::acceptor Acceptor;
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

// Opens an acceptor on a port of 127.0.0.1, never shared and not handed on to other programs.
// Answers as OpenDisplayListener.
[[nodiscard]] int OpenLoopbackPort(boost::asio::ip::tcp::acceptor& acceptor, int port,
                                   std::string& error);

// Keeps a descriptor from the programs that are started later.
void KeepFromChildren(int descriptor);

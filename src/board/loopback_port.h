// A port of this machine alone, and whoever connects to it. The context is made before it and run
// no more once it is gone; what then still waits there may be destroyed at any time.
#pragma once

#include <utility>

#include <functional>
#include <string>

#include <boost/asio/io_context.hpp>
#include <boost/asio/ip/tcp.hpp>
#include <boost/asio/steady_timer.hpp>

struct LoopbackPort {
    explicit LoopbackPort(boost::asio::io_context& context) : Acceptor(context), Pause(context) {}
    LoopbackPort(const LoopbackPort&) = delete;
    LoopbackPort& operator=(const LoopbackPort&) = delete;

    boost::asio::ip::tcp::acceptor Acceptor;
    boost::asio::steady_timer Pause;
    // Gets every connection. Its descriptor is not handed on to programs that are started later.
    std::function<void(boost::asio::ip::tcp::socket)> OnConnection;
};

// Listens on a port of 127.0.0.1 that is shared with nobody; 0 lets the system choose. Answers the
// port, or 0 after filling `error`: another port can then be tried.
[[nodiscard]] int OpenPort(LoopbackPort& port, int number, std::string& error);

void ClosePort(LoopbackPort& port);

// Who may come in, the files of the page, and the messages to and from the pages. Whoever reaches a
// page's connection can type commands as the user; so only this machine is listened to, and a page
// has to come from here and know the token.
#pragma once

#include <deque>
#include <functional>
#include <memory>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include <boost/beast/core/tcp_stream.hpp>

#include "board/loopback_port.h"

struct LivePage;

struct PageMessage {
    std::shared_ptr<const std::string> Text;
    bool IsState = false;  // takes the place of a state that still waits behind other messages
};

// The same holds for the context as for that of a LoopbackPort.
struct WebServer {
    explicit WebServer(boost::asio::io_context& context) : Listener(context) {}

    LoopbackPort Listener;
    int Port = 0;
    std::string Token;
    // The connections that have not shown the token, the oldest first, and some that have ended.
    std::deque<std::weak_ptr<boost::beast::tcp_stream>> Strangers;
    std::set<std::shared_ptr<LivePage>> Pages;  // those that have shown the token
    bool Closing = false;

    // What a page that has come in is told first, in order.
    std::function<std::vector<std::string>()> OnPage;
    // What a page is answered; an empty answer is not sent.
    std::function<std::string(std::string_view)> OnMessage;
    // Called when the last page has gone from a server that is closing.
    std::function<void()> OnEmpty;
};

// Listens on a port of 127.0.0.1, 0 for one of the system's choosing. Answers the port, or 0 after
// filling `error`: another port can then be tried. Draws the token, too.
[[nodiscard]] int OpenWebServer(WebServer& server, int port, std::string& error);

// Sends a message to every page, in order. None is waited for: a page that has let too much wait is
// dropped.
void SendToPages(WebServer& server, const PageMessage& message);

// Lets nobody in any more, and parts from each page when it has been sent everything. A page that
// does not read stays as long as it likes.
void CloseWebServer(WebServer& server);

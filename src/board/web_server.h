// Who may come in, the files of the page, and the live connection of every page. Whoever reaches a
// page's connection can type commands as the user; so only this machine is listened to, and a page
// has to come from here and know the token.
#pragma once

#include <utility>

#include <functional>
#include <memory>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "board/loopback_port.h"

struct PageConnection;

struct WebServer {
    explicit WebServer(boost::asio::io_context& context) : Listener(context) {}

    LoopbackPort Listener;
    int Port = 0;
    std::string Token;
    int NumConnections = 0;                           // of any kind
    std::set<std::shared_ptr<PageConnection>> Pages;  // those that have shown the token
    bool Closing = false;

    // What a page that has come in is told first, and what it is answered; an empty answer is not
    // sent.
    std::function<std::vector<std::string>()> OnPage;
    std::function<std::string(std::string_view)> OnMessage;
    // Called when a page has been sent something that waited.
    std::function<void()> OnSent;
    // Called when the last page has gone from a server that is closing.
    std::function<void()> OnEmpty;
};

// Listens on a port of 127.0.0.1, 0 for one of the system's choosing. Answers the port, or 0 after
// filling `error`. Draws the token, too.
[[nodiscard]] int OpenWebServer(WebServer& server, int port, std::string& error);

// Sends a text to every page. A page that has let too much wait is dropped.
void SendToPages(WebServer& server, const std::string& message);

// The same for a state. A page that has been given up gets only the latest of them.
void SendStateToPages(WebServer& server, const std::string& message);

// True while much waits for a page that is still reading: whoever has more to send does well to
// wait.
[[nodiscard]] bool PagesAreBehind(const WebServer& server);

// Waits no more for the pages that are behind and have read nothing since the last such call.
void GiveUpStuckPages(WebServer& server);

// Parts from all pages once they have been sent everything, and lets nobody in any more.
void CloseWebServer(WebServer& server);

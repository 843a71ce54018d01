// The board that only shows a game: that of a Talurex which is played elsewhere and tells it to a
// display.
#pragma once

#include <boost/asio/io_context.hpp>
#include <boost/asio/steady_timer.hpp>

#include "board/display_listener.h"
#include "board/watched_game.h"
#include "board/web_server.h"

struct WatchedBoard {
    explicit WatchedBoard(boost::asio::io_context& context)
        : Context(context), Web(context), Display(context), EndTimer(context) {}

    boost::asio::io_context& Context;
    WebServer Web;
    DisplayListener Display;
    WatchedGame Game;
    PageNews All;  // what a page is told that comes in
    boost::asio::steady_timer EndTimer;
};

// To be called when both ports are listened to.
void BeginWatching(WatchedBoard& board);

// Tells the pages and parts from them; then the context stops.
void EndWatching(WatchedBoard& board);

// The board while it runs: the web server for its pages, and the game that they are told of. It is
// played here, or by a Talurex elsewhere and only watched.
#pragma once

#include <boost/asio/io_context.hpp>
#include <boost/asio/steady_timer.hpp>

#include "board/display_listener.h"
#include "board/game_thread.h"
#include "board/watched_game.h"
#include "board/web_server.h"

struct Board {
    explicit Board(boost::asio::io_context& context)
        : Context(context), Web(context), Display(context), EndTimer(context) {}

    boost::asio::io_context& Context;
    WebServer Web;
    PageNews All;  // what a page is told that comes in

    GameThread Game;  // when it is played here
    bool IsWatching = false;
    DisplayListener Display;  // when it is not
    WatchedGame Watched;

    boost::asio::steady_timer EndTimer;
    bool IsEnding = false;  // a signal has asked for the end
    bool IsOver = false;    // the game has ended, and pages are parted from
};

// Starts the game, whose settings are made. The web server listens already.
void BeginPlaying(Board& board);

// Shows the game that the display link tells of. Both ports are listened to already.
void BeginWatching(Board& board);

// Ends the board in good order: the game first, then its pages are told and parted from, and then
// the context stops. A game that hangs in a file or a display is left behind, and so is any when
// this is asked for again.
void EndBoard(Board& board);

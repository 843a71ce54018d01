// The board that people play on: the web server for its pages, and the game behind them.
#pragma once

#include <boost/asio/io_context.hpp>
#include <boost/asio/steady_timer.hpp>

#include "board/game_thread.h"
#include "board/web_server.h"

struct PlayedBoard {
    explicit PlayedBoard(boost::asio::io_context& context)
        : Context(context), Web(context), EndTimer(context) {}

    boost::asio::io_context& Context;
    WebServer Web;
    GameThread Game;
    PageNews All;  // what a page is told that comes in
    boost::asio::steady_timer EndTimer;
    bool IsEnding = false;  // a signal has asked for the end
    bool IsOver = false;    // the game has ended
};

// Starts the game, whose settings are made, behind a server that listens already.
void BeginBoard(PlayedBoard& board);

// Ends the board in good order: the game first, then its pages are told and parted from, and then
// the context stops. A game that hangs in a file or a display is left behind, and so is any when
// this is asked for again.
void EndBoard(PlayedBoard& board);

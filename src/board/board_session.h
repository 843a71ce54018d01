// The board from its start to its end: brings together the Talurex that plays, its display link,
// and the pages.
#pragma once

#include <utility>

#include <chrono>
#include <deque>
#include <string>

#include <boost/asio/io_context.hpp>
#include <boost/asio/steady_timer.hpp>

#include "board/conversation.h"
#include "board/display_listener.h"
#include "board/game_process.h"
#include "board/page_state.h"
#include "board/web_server.h"

struct BoardSession {
    explicit BoardSession(boost::asio::io_context& context)
        : Context(context), Game(context), Display(context), Web(context), BehindTimer(context),
          PublishTimer(context), ThinkTimer(context), CopyTimer(context), EndTimer(context) {}

    boost::asio::io_context& Context;
    Conversation Talk = NewConversation();
    GameProcess Game;
    DisplayListener Display;
    WebServer Web;
    bool Watching = false;

    // What has been read and not been taken in: it waits for pages that are behind.
    std::deque<OutputPart> Output;
    std::string DisplayBytes;
    std::string DisplayLine;  // begun on the display link
    bool TakingIn = false;
    bool BehindDated = false;  // BehindTimer runs
    boost::asio::steady_timer BehindTimer;

    Picture Published;         // what the pages were shown last
    int Serial = 0;            // of the state in which they were
    bool Changed = false;      // there is more to show
    bool PromptShown = false;  // the pages know that Talurex waits
    bool Dated = false;        // PublishTimer runs
    boost::asio::steady_timer PublishTimer;
    boost::asio::steady_timer ThinkTimer;
    boost::asio::steady_timer CopyTimer;
    bool CopyDated = false;  // CopyTimer runs
    std::chrono::steady_clock::time_point LastCopy;
    boost::asio::steady_timer EndTimer;
    std::chrono::steady_clock::time_point EndBegan;

    bool Ending = false;  // a signal has asked for the end
    bool SaveTyped = false;
    bool Ended = false;  // Talurex has ended
    int ExitStatus = 0;
    std::string LastWords;
};

// Connects the parts, which are open already, but for the game.
void BeginSession(BoardSession& session);

// Ends the session in good order: the game is kept, then Talurex ends, then the pages are told. The
// context stops running behind that. Asked for again, it ends at once.
void EndSession(BoardSession& session);

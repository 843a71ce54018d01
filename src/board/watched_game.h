// The game of a Talurex that is played elsewhere, as its display link tells it.
#pragma once

#include <string_view>

#include "display/shown_board.h"
#include "page/page_news.h"
#include "page/page_state.h"

struct WatchedGame {
    ShownBoard Link;  // what the display was told
    PageView View;    // what pages are shown of it
};

// Begins without a connection. Answers what pages are told.
[[nodiscard]] PageNews BeginWatchedGame(WatchedGame& game);

// Takes one line of the link. Answers true behind a whole update, with what pages are told of it.
[[nodiscard]] bool TakeWatchedLine(WatchedGame& game, std::string_view line, PageNews& news);

// The link was made or lost. Answers what pages are told.
[[nodiscard]] PageNews NoteConnection(WatchedGame& game, bool isConnected);

// The board is closed. Answers what pages are told.
[[nodiscard]] PageNews EndWatchedGame(WatchedGame& game);

// The game as a page shows it: a session whose text becomes a log, and that tells what has come of
// every turn and every line. An error that ends the program elsewhere ends only the line or the
// turn that met it.
#pragma once

#include <chrono>
#include <functional>

#include "config/board_settings.h"
#include "control/session.h"
#include "gamefiles/kept_game.h"
#include "page/page_news.h"
#include "page/page_request.h"
#include "page/page_state.h"

struct PageGame {
    Session Game;
    KeptGame Kept;
    // Called when there is something new, with what the game does now.
    std::function<void(const PageNews& news, GameState state)> Tell;

    std::string Log;      // the latest of what was printed and typed
    std::string NewText;  // the part of it that was not told yet
    bool IsPromptShown = false;

    PlayState Told;           // what pages know of the game
    BoardSettings ToldBoard;  // and of its board
    bool HasTold = false;
    bool WalkedBack = false;  // an earlier position is shown, and not because of an undo

    std::chrono::steady_clock::time_point BusySince;
    bool HasToldThinking = false;
};

// From here on what is printed goes into the log, and boards are not printed: pages draw them.
// Messages of errors are left on standard error until CatchErrors.
void CatchOutput(PageGame& game);
void CatchErrors(PageGame& game);

// Builds the first game, and tells of it; connects to a display where the settings ask for one.
void BeginPageGame(PageGame& game);

// Whether the computer is to make the next turn, or a line is awaited.
[[nodiscard]] bool HasComputerTurn(const PageGame& game);

// Makes the computer's turn.
void PlayPageTurn(PageGame& game);

// Carries out a line.
void TypePageLine(PageGame& game, const PageRequest& line);

// Tells that the game is ended, with the last that was printed or another last word.
void TellPageEnd(PageGame& game, int exitStatus, const std::string& lastWords);

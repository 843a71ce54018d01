// The game as a page shows it: a session whose text becomes a log, and that tells what has come of
// every turn and every line. An error that ends the program elsewhere ends only the line or the
// turn that met it.
#pragma once

#include <chrono>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "config/board_settings.h"
#include "control/session.h"
#include "gamefiles/kept_game.h"
#include "page/how_played.h"
#include "page/page_news.h"
#include "page/page_request.h"
#include "page/page_state.h"

// A game that can be gone on with in place of the present one: the one that this has replaced, or
// one that was found at the start.
struct OfferedGame {
    std::string Text = {};  // it is the previous game with this text;
    std::string Name = {};  // or, if that is empty, what the load command calls it
    std::optional<HowPlayed> How = {};
    bool IsFound = false;
    int Move = 0;  // where it stands
};

struct PageGame {
    Session Game;
    KeptGame Kept;
    // Called when there is something new, with what the game does now.
    std::function<void(const PageNews& news, GameState state)> Tell;

    std::string Log;       // the latest of what was printed and typed
    std::string NewText;   // the part of it that was not told yet
    std::string Refusals;  // what was said of the present line not being carried out
    bool IsPromptShown = false;

    PlayState Told;           // what pages know of the game
    BoardSettings ToldBoard;  // and of its board
    HowPlayed ToldHow;
    bool HasTold = false;
    bool WalkedBack = false;  // an earlier position is shown, and not because of an undo
    bool HasSaidUnkept = false;
    std::optional<OfferedGame> Offer;
    std::vector<std::string> Answers;  // messages that are to be told

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

// To be called before lines are typed and after them: tells what has come of them.
void BeginLines(PageGame& game);
void EndLines(PageGame& game);

// Types one line behind the prompt. `isUndo` tells that a step back is to take plies back, as the
// undo command's is. Answers false when something was refused, which is then said.
bool TypePageLine(PageGame& game, const std::string& line, bool isUndo = false);

// Says why something is not done.
void RefuseOnPage(PageGame& game, const std::string& reason);

// Puts the present game aside as it is, and offers it, before one plays on from an earlier position
// of it.
void KeepBeforeReplay(PageGame& game);

// How far one's own last choice lies back: a ply that the computer did not choose, and no pass, for
// there is nothing to choose then. 0 when there is none.
[[nodiscard]] int UndoDistance(const PlayState& play);

// Tells that the game is ended, with the last that was printed or another last word.
void TellPageEnd(PageGame& game, int exitStatus, const std::string& lastWords);

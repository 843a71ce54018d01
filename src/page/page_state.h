// What a page is told, as JSON: the board with all that may be done on it and the numbers and texts
// around it, the plies of the game, and the log.
#pragma once

#include <span>
#include <string>

#include <nlohmann/json.hpp>

#include "control/session.h"
#include "display/highlight.h"
#include "gamefiles/stored_games.h"

enum class GameState { Waiting, Thinking, Ended };

// What is to be shown of a game, apart from its plies. The size of the board and the settings are
// those of GlobCfg.
struct PageView {
    Position Shown;
    int Move = 0;  // the number of the shown position, 0 to LastMove
    int LastMove = 0;
    FromTo Last;
    FromTo Next;
    bool Running = true;
    int ComputerSide = WHITE;
    GameState State = GameState::Thinking;
    bool IsEvaluating = false;  // what it thinks about is no move of its own
    bool CanUndo = false;
    int FoundMove = -1;        // where a game stands that is offered and was found at the start
    bool CanTakeBack = false;  // a game is offered that was replaced

    bool Watching = false;  // a game elsewhere is looked at: nothing can be done
    bool Connected = false;
    int ExitStatus = 0;     // of a game that was ended
    std::string LastWords;  // and what was printed last
};

// The view of a game that is played here.
[[nodiscard]] PageView ViewOf(const PlayState& play, GameState state);

[[nodiscard]] std::string StateMessage(const PageView& view);

// Plies, texts of page/plies.h, that take the place of all those that the page has from number
// `first` on.
[[nodiscard]] std::string PliesMessage(int first, std::span<const std::string> plies);

// More of the log; with `reset` all there is of it.
[[nodiscard]] std::string LogMessage(const std::string& text, bool reset);

[[nodiscard]] std::string ErrorMessage(const std::string& text);

// Asks whether the file may be replaced by what was to be saved, or opened: `what`.
[[nodiscard]] std::string AskMessage(const char* what, const std::string& fileName);

// The saved games to choose from.
[[nodiscard]] std::string GamesMessage(std::span<const StoredGame> games);

// The game as a file.
[[nodiscard]] std::string FileMessage(const std::string& content);

// What these messages are made of.

// The text of a value. What is no UTF-8 in it, a file's name for one, is replaced.
[[nodiscard]] std::string JsonText(const nlohmann::ordered_json& value);

// "white", "black", "life" or "empty", for a ColorCode.
[[nodiscard]] const char* ColorName(int color);

// "White" or "Black".
[[nodiscard]] std::string SideTitle(int side);

// The name of a space of the board; null for any other place.
[[nodiscard]] nlohmann::ordered_json NameOrNull(Place place);

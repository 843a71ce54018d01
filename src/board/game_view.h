// What is known of the game behind the board, gathered from what Talurex prints and from what its
// display link sends. The drawing on standard output is always right, but comes late when the
// computer thinks on it; the link comes at once, but misleads after some commands and never tells
// the size of an empty board. So the link is followed while it is known to be exact, and the latest
// drawing has the last word at every prompt.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "board/program_output.h"
#include "board/shown_board.h"

// One position of a game as it is shown.
struct Picture {
    int Columns = 0;  // 0: none has been seen yet
    int Rows = 0;
    Position Board;  // its SetupPhase is 1 for one's own stones and 2 for any number of life stones
    int Move = 0;
    int LastMove = 0;
    FromTo Last;
    FromTo Next;
};

// True when the pictures show the same stones on a board of the same size.
[[nodiscard]] bool SameStones(const Picture& a, const Picture& b);

// Makes the size of the picture's board that of GlobCfg, for the rules.
void UseBoardOf(const Picture& picture);

struct GameSettings {
    int Level = 0;
    int Players = 0;
    int ComputerColor = 0;  // WHITE, BLACK or RANDOM_COLOR
    int RandomSetup = 0;
    int LifeStones = 0;  // of the next game

    bool operator==(const GameSettings&) const = default;
};

// A ply in the notation of saved games.
struct Ply {
    std::string Text;
    bool IsWhites = false;
};

struct GameView {
    Picture Shown;
    bool Running = true;
    bool Waiting = false;  // Talurex waits for a line
    GameSettings Settings;
    int ComputerSide = WHITE;  // in a game against the computer
    bool Unsaved = false;      // there are plies that no file holds
    int NumChanges = 0;        // how often plies have been added to the game

    std::optional<BoardDrawing> Drawn;  // the latest
    ShownBoard Link;
    bool LinkOnly = false;  // there is no standard output to read: the link is all there is
    bool Connected = false;
    bool LinkKnown = false;  // an update has come on this connection
    bool LinkExact = false;  // the link's board is the shown one, and so is what follows from it
    int GameLifeStones = 0;  // with which the shown game began

    // The line that Talurex is busy with.
    bool MayLoad = false;  // it may bring in a game from a file
    bool MayBeginGame = false;
    bool DrawnSinceLine = false;
    bool Loaded = false;

    // What is to be asked before the next line of a person.
    bool AskLifeStones = false;
    bool AskColor = false;
    bool BeginsGame = false;  // the number of life stones of the next game is that of this one

    Picture End;  // the last position of the game, when it was last shown

    // What it takes to write the game down without Talurex.
    Picture Begin;              // its first position, if that was seen
    bool HasCopy = false;       // Talurex has made a copy of the game
    std::vector<Ply> NewPlies;  // at its end, and in no copy
    bool ArePliesKnown = true;  // all of them were seen
    std::string SaidPly;        // the computer's, which is drawn next
    std::string DrawnPly;       // the one that is being drawn
};

// To be told when Talurex makes a copy of the game.
void NoteCopy(GameView& view);

// The view before anything is read, with the settings of GlobCfg.
[[nodiscard]] GameView NewGameView();

// To be told before a line is typed.
void NoteLine(GameView& view, std::string_view line);

// The rest answer whether what is shown has changed.
bool NoteText(GameView& view, std::string_view line);
bool NoteDrawing(GameView& view, const BoardDrawing& drawing);
bool NotePrompt(GameView& view, const Prompt& prompt);
bool NoteUpdate(GameView& view);  // behind the last line of an update in view.Link

void NoteConnection(GameView& view, bool connected);

// A line that changes nothing, whose answer has to be known; empty when there is none. To be typed
// at a prompt before all others; each is asked once.
[[nodiscard]] std::string TakeQuestion(GameView& view);
[[nodiscard]] bool HasQuestion(const GameView& view);

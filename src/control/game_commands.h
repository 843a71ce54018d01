// Commands that work on the game in memory: walking through it, stopping and starting it, playing
// and judging a move. A command that is refused says why and changes nothing.
#pragma once

#include <string>

#include "control/session.h"

// Prints the shown position behind an empty line.
void ShowPosition(const PlayState& state);

// Draws the colour that the computer plays in a new game, where the settings leave it to chance.
void ChooseComputerSide(PlayState& state);

// Makes the ply that was just written behind the shown position the last one of the game, and shows
// the position it led to.
void AdvanceAndShow(PlayState& state);

// Carries out a typed ply in the shown position and shows what it led to. Answers false after
// saying why nothing was done.
[[nodiscard]] bool PlayTypedPly(const std::string& text, PlayState& state);

// Goes back two half-moves; three where the second would be the other side's, at the end of a setup
// phase with an odd number of placements. The game keeps running, or stays stopped, and keeps its
// last move.
void DoUndo(PlayState& state);

// Walks through the game and stops it. A negative number walks the other way; the walk ends at the
// first and at the last position.
void DoBack(const std::string& argument, PlayState& state);
void DoForward(const std::string& argument, PlayState& state);

// Lets a stopped game run on, at the shown position or at the last one.
void DoStart(const PlayState& state);
void DoCont(PlayState& state);

void DoStop();

// Replace the game by a new one and start it.
void DoNew(PlayState& state);
void DoBoardSize(const std::string& argument, PlayState& state);

// Reports value and best move of the shown position.
void DoEvaluate(const std::string& argument, const Session& session);

// Plays a move, placement or pass in the shown position, whether the game is running or stopped.
void DoMoveCommand(const std::string& argument, PlayState& state);

void DoQuit(PlayState& state);

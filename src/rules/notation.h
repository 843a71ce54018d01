// Moves and scores as people read and write them. A space is its column letter, 'A' for column 0,
// and its row number, which counts from the bottom row up.
#pragma once

#include <string>
#include <string_view>

#include "rules/moves.h"
#include "rules/position.h"

[[nodiscard]] constexpr char ColumnLetter(int x) {
    return static_cast<char>('A' + x);
}

// The number of row index y on the current board.
[[nodiscard]] int RowNumber(int y);

// The notation of a space of the current board: "E3".
[[nodiscard]] std::string SpaceText(Place place);

// What a line asks for. A placement has one space, a tower move two.
enum class Notation { Placement, TowerMove };

// Reads a placement ("e3") or a tower move ("e3-e4"; letters in either case, any run of blanks and
// '-' in between, anything behind it ignored) into `move`, and the number of spaces of a tower move
// into `distance`, which a placement leaves alone. Answers 0, or 1 after printing why the line was
// not understood. Does not ask whether the move is legal.
[[nodiscard]] int GetPlayerMove(std::string_view line, Notation notation, Move& move,
                                int& distance);

// The notation of a move in the position it is played in: "E3" in the setup phase, "E3-E4", or
// "PASS " (five characters) when the side to move has no move.
[[nodiscard]] std::string GetMoveString(const Move& move, const Position& position);

// Prints the score, as the final one when the game is over.
void PrintScore(const Position& position);

// Positions of the move phase as lines of a text file, for tests and benches:
//
//   name columns rows side : row; row; row : rest
//
// `side` is white or black. A row, from the top, has a word for each of its columns, from the left:
//   w3 b2*  a tower: owner, height, and a '*' when it holds a life stone
//   r       a lone life stone
//   .       an empty space
//   -       no space of the board
// `rest` and the ':' before it may be missing; what it means is the reader's business. Empty lines
// and lines that begin with '#' are skipped.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "rules/position.h"

struct BoardText {
    std::string Name;
    int BoardXDim = 0;
    int BoardYDim = 0;
    Position Board;    // a position of the move phase
    std::string Rest;  // trimmed
};

// Reads one line. A line that breaks the form above, or whose '-' are not exactly the corners of
// the board, ends the process: these files are part of the project.
[[nodiscard]] BoardText ReadBoardText(std::string_view line);

[[nodiscard]] std::vector<BoardText> ReadBoardFile(const std::string& path);

// The line of `position` on the current board, without a rest: what ReadBoardText reads back as the
// same record.
[[nodiscard]] std::string WriteBoardText(std::string_view name, const Position& position);

// Sets every setting to its default and the size of the board to that of `board`, or to the one
// given.
void UseBoard(const BoardText& board);
void UseBoard(int columns, int rows);

// The other end of the display link: what it tells, read into a board line by line, as
// docs/gui-protocol.md tells a display to.
#pragma once

#include <array>
#include <optional>
#include <string>
#include <string_view>

#include "display/highlight.h"

using SpaceArray = std::array<std::array<Space, MAX_BOARD_Y_DIM>, MAX_BOARD_X_DIM>;

// An array of empty spaces.
[[nodiscard]] SpaceArray NoStones();

struct ShownBoard {
    SpaceArray Spaces = NoStones();  // indexed [column][row]
    // The rectangle that the latest update with all spaces made up; 0 before the first.
    int Columns = 0;
    int Rows = 0;
    int MoveNumber = 0;
    int LastMove = 0;
    std::string Status;  // the rest of the status line: "WHITE is moving"
    FromTo Last;
    FromTo Next;

    // How the latest update changed the board.
    bool OneStep = false;            // its number is one higher than that of the update before
    std::optional<FromTo> Animated;  // its M line
    int NumSpaces = 0;               // its S lines, of which the last named the space
    Place LastSpace;

    bool Begun = false;  // an update has begun and is not done
};

enum class DisplayLine { Taken, Done, Farewell, Faulty };

// Takes one line, without its line feed, over into the board. Answers Done behind the last line of
// an update, Farewell when Talurex parts, and Faulty when the line is none of the protocol or names
// what cannot be; it then changes nothing.
[[nodiscard]] DisplayLine TakeDisplayLine(ShownBoard& board, std::string_view line);

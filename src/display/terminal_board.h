// The coloured board on a terminal.
#pragma once

#include "rules/position.h"

// The colours of the terminal, as ANSI escape sequences.
enum ScreenColor : unsigned {
    FOREGROUND_BLACK = 0,
    FOREGROUND_RED = 1,
    FOREGROUND_GREEN = 2,
    FOREGROUND_YELLOW = 3,
    FOREGROUND_BLUE = 4,
    FOREGROUND_MAGENTA = 5,
    FOREGROUND_CYAN = 6,
    FOREGROUND_WHITE = 7,
    BACKGROUND_BLACK = 8,
    BACKGROUND_WHITE = 9,
    BACKGROUND_RED = 10,
    BACKGROUND_GREEN = 11,
    BACKGROUND_YELLOW = 12,
    BACKGROUND_BLUE = 13,
    BACKGROUND_MAGENTA = 14,
    BACKGROUND_CYAN = 15,
    RESET_COLORS = 16,
};

// How boards are printed: in colours, without them, or not at all for somebody who shows the
// position in another way.
enum class BoardStyle { Colored, Plain, Hidden };
extern BoardStyle PrintedBoards;

// Prints the escape sequence of a ScreenColor, where boards are coloured. A code above 16 ends the
// program.
void SetColor(unsigned code);

// Prints the board: the side to move, a line per row with height and mark of every space, a rule
// and the column letters; nothing where boards are hidden. A space with a faulty owner is shown
// with the mark '?' after a line on standard error.
void PrintPosition(const Position& position);

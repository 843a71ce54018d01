// The one global configuration record, read by every floor above.
#pragma once

#include <string>

#include "config/board_settings.h"

inline constexpr const char* TALUREX_VERSION = "1.1";
inline constexpr const char* TALUREX_VERSION_DATE = "2003-10-31";

// The ComputerColor that is drawn for each new game; the others are the codes of the two sides.
inline constexpr int RANDOM_COLOR = 2;

// The settings with their defaults; changed by the configuration file, the command line and, while
// the program runs, by commands. Never written back to a file. GameRunFlag, Gui and GuiSocket tell
// more of the run than of what somebody set; they stand here because every floor asks for them.
struct GlobalConfiguration {
    int ComputerColor = 1;    // 0: the computer plays WHITE, 1: BLACK, or RANDOM_COLOR
    int NumHumanPlayers = 1;  // 0: the computer plays both sides, 1: against a human, 2: two humans
    int ComputerLevel = 5000;  // 1000 is full strength; what is above it is the search budget
    int SetupMode = 0;         // 0: stones are placed one by one, 1: random start position
    int BoardXDim = DEFAULT_BOARD.XDim;            // columns, 1 to MAX_BOARD_X_DIM
    int BoardYDim = DEFAULT_BOARD.YDim;            // rows, 1 to MAX_BOARD_Y_DIM
    int NumLifeStones = DEFAULT_BOARD.LifeStones;  // life stones of a new game, 1 or more
    int NumWhiteStones = -1;     // white stones of a random start position; -1: an even split
    int SingleDispCharFlag = 0;  // 1: the board shows SingleDispChar on every space
    char SingleDispChar = '*';   // the mark of that display
    std::string ConfigFileName = "talurex.cfg";  // read when the command line names no other
    int RandomSeed = 0;                          // 0 or less: seed from the clock
    int PrintStatusFlag = 1;                     // 1: a value line after each computer move
    int GameRunFlag = 1;      // 1: the game is running, 0: stopped (lines are commands)
    int Special = 0;          // 1: self-play match, 2: weight tuning, else normal play
    int Gui = 0;              // not 0: every position is sent to the graphical display
    int GuiSocket = 0;        // no setting: the connected socket while Gui is on
    int GuiPort = 9998;       // TCP port of the display; its low 16 bits are used
    int GuiHighlighting = 1;  // not 0: the display highlights the last and the next move
};

extern GlobalConfiguration GlobCfg;

// Gives every setting its default. GuiSocket keeps its value.
void SetDefaultConfiguration();

// The one global configuration record, read by every floor above.
#pragma once

#include <string>

// The largest board; it fixes the size of a Position.
inline constexpr int MAX_BOARD_X_DIM = 15;
inline constexpr int MAX_BOARD_Y_DIM = 9;

inline constexpr const char* TALUREX_VERSION = "1.1";
inline constexpr const char* TALUREX_VERSION_DATE = "2003-10-31";

// All zero until SetDefaultConfiguration has filled it at start-up; then changed by the
// configuration file, the command line and, while the program runs, by commands. Never written back
// to a file.
struct GlobalConfiguration {
    int ComputerColor = 0;    // 0: the computer plays WHITE, 1: BLACK, 2: drawn for each new game
    int NumHumanPlayers = 0;  // 0: the computer plays both sides, 1: against a human, 2: two humans
    int ComputerLevel = 0;    // 1000 is full strength; what is above it is the search budget
    int SetupMode = 0;        // 0: stones are placed one by one, 1: random start position
    int BoardXDim = 0;        // columns, 1 to MAX_BOARD_X_DIM
    int BoardYDim = 0;        // rows, 1 to MAX_BOARD_Y_DIM
    int NumLifeStones = 0;    // life stones of a new game, 1 or more
    int NumWhiteStones = 0;   // white stones of a random start position; -1: an even split
    int SingleDispCharFlag = 0;  // 1: the board shows SingleDispChar on every space
    char SingleDispChar = '\0';  // the mark of that display
    std::string ConfigFileName;  // read at start-up when the command line names no other
    int RandomSeed = 0;          // 0 or less: seed from the clock
    int PrintStatusFlag = 0;     // 1: a value line after each computer move
    int GameRunFlag = 0;         // 1: the game is running, 0: stopped (lines are commands)
    int Special = 0;             // 1: self-play match, 2: weight tuning, else normal play
    int Gui = 0;                 // not 0: every position is sent to the graphical display
    int GuiSocket = 0;           // the connected socket while Gui is on
    int GuiPort = 0;             // TCP port of the display; its low 16 bits are used
    int GuiHighlighting = 0;     // not 0: the display highlights the last and the next move
};

extern GlobalConfiguration GlobCfg;

// Writes every default into GlobCfg. GuiSocket keeps its value.
void SetDefaultConfiguration();

// The configuration file: lines of a keyword and a value, and comments, that set the start-up
// values of GlobCfg.
#pragma once

#include <array>
#include <string>
#include <string_view>

#include "config/glob_cfg.h"
#include "support/numbers.h"

// One key. Its value is an integer for the field Number, or a character in single quotes for the
// field Character; the other of the two is null.
struct ConfigKey {
    const char* Name;
    int GlobalConfiguration::*Number = nullptr;
    int Lowest = INT_LOWEST;
    int Highest = INT_HIGHEST;
    const char* Range = "";  // the accepted numbers, as the message for any other shows them
    char GlobalConfiguration::*Character = nullptr;
};

static_assert(MAX_BOARD_X_DIM == 15 && MAX_BOARD_Y_DIM == 9, "the ranges below name the limits");

// clang-format off
inline constexpr std::array CONFIG_KEYS = {
    ConfigKey{"COMPUTER_COLOR", &GlobalConfiguration::ComputerColor, 0, 2, "0-2"},
    ConfigKey{"NUM_HUMAN_PLAYERS", &GlobalConfiguration::NumHumanPlayers, 0, 2, "0-2"},
    ConfigKey{"COMPUTER_LEVEL", &GlobalConfiguration::ComputerLevel, 0, INT_HIGHEST, ">=0"},
    ConfigKey{"SETUP_MODE", &GlobalConfiguration::SetupMode, 0, 1, "0-1"},
    ConfigKey{"BOARD_X_DIM", &GlobalConfiguration::BoardXDim, 1, MAX_BOARD_X_DIM, "1-15"},
    ConfigKey{"BOARD_Y_DIM", &GlobalConfiguration::BoardYDim, 1, MAX_BOARD_Y_DIM, "1-9"},
    ConfigKey{"NUM_LIFE_STONES", &GlobalConfiguration::NumLifeStones, 1, INT_HIGHEST, ">=1"},
    ConfigKey{"NUM_WHITE_STONES", &GlobalConfiguration::NumWhiteStones, -1, INT_HIGHEST, ">= -1"},
    ConfigKey{"SINGLE_DISP_CHAR_FLAG", &GlobalConfiguration::SingleDispCharFlag, 0, 1, "0-1"},
    ConfigKey{.Name = "SINGLE_DISP_CHAR", .Character = &GlobalConfiguration::SingleDispChar},
    ConfigKey{"RANDOM_SEED", &GlobalConfiguration::RandomSeed, 0, INT_HIGHEST, ">=0"},
    ConfigKey{"PRINT_STATUS_FLAG", &GlobalConfiguration::PrintStatusFlag, 0, 1, "0-1"},
    ConfigKey{"GAME_RUN_FLAG", &GlobalConfiguration::GameRunFlag, 0, 1, "0-1"},
    ConfigKey{"SPECIAL", &GlobalConfiguration::Special},
    ConfigKey{"GUI", &GlobalConfiguration::Gui},
    ConfigKey{"GUI_HIGHLIGHTING", &GlobalConfiguration::GuiHighlighting},
    ConfigKey{"GUI_PORT", &GlobalConfiguration::GuiPort, 1, INT_HIGHEST, ">0"},
};
// clang-format on

// Applies the whole file to GlobCfg. A file that cannot be opened leaves everything as it is, after
// a warning; one with a line that holds an error ends the program.
void ReadConfigFile(const std::string& path);

// Applies one line to GlobCfg. Answers 0 when it was applied or held nothing to apply, 1 when it
// holds an error: GlobCfg is then unchanged and the reason printed, except that a line of odd white
// space has no reason to print.
[[nodiscard]] int ProcessConfigLine(std::string_view line);

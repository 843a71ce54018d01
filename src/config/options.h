// The command line. It is read in two passes, because it names the configuration file but also
// overrides it: GetOptions collects the arguments, ProcessOptions applies them.
#pragma once

#include <array>
#include <span>
#include <string>
#include <string_view>

#include "config/glob_cfg.h"
#include "support/numbers.h"

// A word that an option takes, in its short and its long form, and the setting it stands for.
struct OptionWord {
    const char* Short;
    const char* Long;
    int Value;
};

// The word is the colour of the person, the setting that of the computer.
inline constexpr std::array COLOR_WORDS = {
    OptionWord{"w", "white", 1},
    OptionWord{"b", "black", 0},
    OptionWord{"r", "random", RANDOM_COLOR},
};
inline constexpr std::array SETUP_WORDS = {
    OptionWord{"n", "normal", 0},
    OptionWord{"r", "random", 1},
};

enum class OptionArgument { None, Path, Word, Number, OptionalNumber };

// One option. An argument of words or numbers goes into Field.
struct Option {
    const char* Name;
    OptionArgument Argument;
    const char* Usage;  // its line of the usage text; empty: the usage text leaves it out
    int GlobalConfiguration::*Field = nullptr;
    std::span<const OptionWord> Words = {};
    int Lowest = INT_LOWEST;
    int Highest = INT_HIGHEST;
};

// The places of the options that start-up itself asks for.
inline constexpr int OPTION_HELP = 0;
inline constexpr int OPTION_CONFIG = 1;

// In the order in which arguments are matched and settings applied. No name is a prefix of another.
// clang-format off
inline constexpr std::array OPTIONS = {
    Option{"help", OptionArgument::None,
           "-help                            : print this help text"},
    Option{"config", OptionArgument::Path,
           "-config=<path>                  : read config file from <path>"},
    Option{"color", OptionArgument::Word,
           "-color=[w|white|b|black|r|random]: set color of human player",
           &GlobalConfiguration::ComputerColor, COLOR_WORDS},
    Option{"setup", OptionArgument::Word,
           "-setup=[n|normal|r|random]       : set dvonn setup mode",
           &GlobalConfiguration::SetupMode, SETUP_WORDS},
    Option{"players", OptionArgument::Number,
           "-players=[0|1|2]                 : set the number of human players",
           &GlobalConfiguration::NumHumanPlayers, {}, 0, 2},
    Option{"level", OptionArgument::Number,
           "-level=<level>                   : set computer playing strength",
           &GlobalConfiguration::ComputerLevel},
    Option{"special", OptionArgument::Number, "", &GlobalConfiguration::Special},
    Option{"gui", OptionArgument::OptionalNumber,
           "-gui                             : connect to graphical display",
           &GlobalConfiguration::Gui},
};
// clang-format on

static_assert(OPTIONS[OPTION_HELP].Name == std::string_view("help") &&
              OPTIONS[OPTION_CONFIG].Name == std::string_view("config"));

// What the command line gave for one option.
struct OptionValue {
    bool Given = false;
    std::string Argument;  // empty when it came without one
};

// Indexed as OPTIONS.
using OptionValues = std::array<OptionValue, OPTIONS.size()>;

// Marks every option as not given.
void InitOptions(OptionValues& values);

// Collects every command-line argument. One that is no option, or lacks the value that its '='
// announces, ends the program; so does a value of more than 199 characters.
void GetOptions(OptionValues& values, int argumentCount, const char* const* arguments);

// Applies the collected settings to GlobCfg. A missing or invalid argument ends the program.
void ProcessOptions(const OptionValues& values);

// Prints the usage text. It names the program in fixed words, however it was invoked.
void PrintCommandLineHelp(const char* programName);

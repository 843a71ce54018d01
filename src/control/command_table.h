// The commands that people type: names, argument patterns and help texts, one row each. A new
// command is an id and a row here, a case in ExecuteCommand and the function that does it; the
// compiler names what is missing.
#pragma once

#include <array>
#include <string>

// A command's id is its row in CommandList.
enum CommandId : int {
    COMMAND_NONE = 0,  // an empty line, which does nothing
    COMMAND_LOAD = 1,
    COMMAND_SAVE = 2,
    COMMAND_REDRAW = 3,
    COMMAND_UNDO = 4,
    COMMAND_BACK = 5,
    COMMAND_FORWARD = 6,
    COMMAND_START = 7,
    COMMAND_STOP = 8,
    COMMAND_CONT = 9,
    COMMAND_NEW = 10,
    COMMAND_BOARDSIZE = 11,
    COMMAND_LIFESTONES = 12,
    COMMAND_LEVEL = 13,
    COMMAND_PLAYERS = 14,
    COMMAND_COLOR = 15,
    COMMAND_RANDOMSETUP = 16,
    COMMAND_IMPORT = 17,
    COMMAND_EVALUATE = 18,
    COMMAND_MOVE = 19,
    COMMAND_ANALYZE = 20,
    COMMAND_STATUS = 21,
    COMMAND_HELP = 22,
    COMMAND_QUIT = 23,
    COMMAND_GUI = 24,
    COMMAND_HIGHLIGHTING = 25,
    COMMAND_ABOUT = 26,
    // 27 has never been a command: nothing may take it for one.
    UNKNOWN_COMMAND = 28,  // a word that names no command, or more than one
};
inline constexpr int NUM_COMMANDS = COMMAND_ABOUT + 1;

struct Command {
    CommandId Id = COMMAND_NONE;
    const char* Name = "";
    // What stands behind the name in the usage line of an error; null when the command never
    // complains about its argument. Help has a pattern of its own, which may differ.
    const char* ErrorPattern = nullptr;
    const char* ErrorHint = "";         // a line behind that usage line
    const char* HelpPattern = nullptr;  // null when there is no specific help
    const char* HelpText = nullptr;
};
extern const std::array<Command, NUM_COMMANDS> CommandList;

// Finds the command that the first word of `line` names, by its full name or an abbreviation that
// fits no other command; slashes before the word are skipped. `line` then holds the argument text
// alone. For UNKNOWN_COMMAND it is left as it was.
[[nodiscard]] CommandId GetCommand(std::string& line);

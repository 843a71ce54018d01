#include "control/command_table.h"

#include <algorithm>
#include <string_view>

#include "support/text.h"

// clang-format off
constexpr std::array<Command, NUM_COMMANDS> CommandList = {{
    {.Id = COMMAND_NONE},
    {.Id = COMMAND_LOAD, .Name = "load", .HelpPattern = " [filename]",
     .HelpText = "This command loads a previously saved game for analyzing, continuing, etc.\n"
                 "If no filename is specified, the default filename: quicksave.tlx will\n"
                 "be used.\n"},
    {.Id = COMMAND_SAVE, .Name = "save", .HelpPattern = " [filename]",
     .HelpText = "This command saves a finished or unfinished game on disk\n"
                 "If no filename is specified, the default filename: quicksave.tlx will\n"
                 "be used.\n"},
    {.Id = COMMAND_REDRAW, .Name = "redraw", .HelpPattern = "",
     .HelpText = "This command displays the current game situation on the screen.\n"},
    {.Id = COMMAND_UNDO, .Name = "undo", .HelpPattern = "",
     .HelpText = "This command goes back 2 half-moves in the current game.\n"},
    {.Id = COMMAND_BACK, .Name = "back", .HelpPattern = " [n]",
     .HelpText = "This command goes back 'n' half-moves and stops (see /stop) the current\n"
                 "game. If 'n' is not specified it defaults to 1\n"},
    {.Id = COMMAND_FORWARD, .Name = "forward", .HelpPattern = " [n]",
     .HelpText = "This command goes forward 'n' half-moves and stops (see /stop) the current\n"
                 "game. If 'n' is not specified it defaults to 1\n"},
    {.Id = COMMAND_START, .Name = "start", .HelpPattern = "",
     .HelpText = "This command starts a stopped game. This means that Talurex will automaticly\n"
                 "do moves, if it is his turn and all inputs are interpreted as player moves,\n"
                 "unless they start with a '/'\n"},
    {.Id = COMMAND_STOP, .Name = "stop", .HelpPattern = "",
     .HelpText = "This command stops a started game. This means that Talurex will do no moves,\n"
                 "if it is his turn and all inputs are interpreted as commands.\n"},
    {.Id = COMMAND_CONT, .Name = "cont", .HelpPattern = "",
     .HelpText = "This command goes forward to the last position of the game and starts\n"
                 "it (see /start).\n"},
    {.Id = COMMAND_NEW, .Name = "new", .HelpPattern = "",
     .HelpText = "This command creates a new game with the current game parameters and starts\n"
                 "it. The current game is lost, unless saved before.\n"},
    {.Id = COMMAND_BOARDSIZE, .Name = "boardsize", .ErrorPattern = " x_size y_size",
     .HelpPattern = " x y",
     .HelpText = "This command changes the size of the board to a width of x and a height of y.\n"
                 "A new game with the new boardsize will be automaticly created and started.\n"
                 "The current game is lost, unless saved before.\n"},
    {.Id = COMMAND_LIFESTONES, .Name = "lifestones", .HelpPattern = " [n]",
     .HelpText = "This command sets the number of (red) dvonn stones to 'n'. The change will take\n"
                 "effect in the next started game. If 'n' is not specified the current number of\n"
                 "dvonn stones will be displayed.\n"},
    {.Id = COMMAND_LEVEL, .Name = "level", .ErrorPattern = " level", .ErrorHint = "level >= 0\n",
     .HelpPattern = " [n]",
     .HelpText = "This command sets the playing strength of talurex to 'n'. The change will take\n"
                 "effect immediately. If 'n' is not specified the current level will be\n"
                 "displayed.\n"},
    {.Id = COMMAND_PLAYERS, .Name = "players", .ErrorPattern = " [0,1,2]",
     .HelpPattern = " [0, 1, 2]",
     .HelpText = "This command sets the number of human players to 'n'. The change will take\n"
                 "effect immediately. If there is no value specified the current number of\n"
                 "players will be displayed.\n"},
    {.Id = COMMAND_COLOR, .Name = "color", .ErrorPattern = " [w,b,r]  (white, black or random)",
     .HelpPattern = " [w, b, r]",
     .HelpText = "This command sets your color, when playing against Talurex. The change will\n"
                 "take effect immediately. If there is no value specified your current playing\n"
                 "color will be displayed. Use 'r' (random) as parameter to let randomly\n"
                 "determine colors, when a new game is started.\n"},
    {.Id = COMMAND_RANDOMSETUP, .Name = "randomsetup", .ErrorPattern = " [0,1]",
     .HelpPattern = " [0, 1]",
     .HelpText = "This command sets or unsets the random setup mode in talurex. The change will\n"
                 "take effect, when a new game is started. If there is no value specified the\n"
                 "current setting will be displayed.\n"},
    {.Id = COMMAND_IMPORT, .Name = "import", .ErrorPattern = " <bsw-dvonn-logfile>",
     .HelpPattern = " filename",
     .HelpText = "This command imports a game from a log file from the Brettspielwelt into\n"
                 "talurex. After successful importing, it can be saved, analyzed, replayed\n"
                 "etc.\n"},
    {.Id = COMMAND_EVALUATE, .Name = "evaluate", .ErrorPattern = " [d<depth> | <level>]",
     .HelpPattern = " [<level>, d<depth>",
     .HelpText = "This command evaluates the current position and displays the value and the best\n"
                 "move found for the current player. You can specify a <level> or a <depth>\n"
                 "value. With a <level> value the specified playing strength will be used for\n"
                 "the evaluation. With a <depth> value you can specify a fixed number of half\n"
                 "moves, which will be used to search the game tree. But be careful with\n"
                 "the <depth> value, because a too big value can lead to a very large response\n"
                 "time. If no value is specified to this command, the current level (see /level)\n"
                 "will be used for evaluation.\n"},
    {.Id = COMMAND_MOVE, .Name = "move", .HelpPattern = " <move>",
     .HelpText = "This command does the move <move> in the current position. If you are not in\n"
                 "the last position of the current game (e.g. you went back with /back), the\n"
                 "previously made move in this position will be overwritten, and all subsequent\n"
                 "moves will be lost.\n"},
    {.Id = COMMAND_ANALYZE, .Name = "analyze", .HelpPattern = "",
     .HelpText = "This command is currently not implemented!\n"
                 "Try again at next version.\n"},
    {.Id = COMMAND_STATUS, .Name = "status", .ErrorPattern = " [0,1]", .HelpPattern = " [0,1]",
     .HelpText = "This command enables or disables a line with some status information, which\n"
                 "will be printed after each computer move.\n"},
    {.Id = COMMAND_HELP, .Name = "help", .HelpPattern = " [<command>]",
     .HelpText = "This command prints out a help text for <command>. If <command> is not\n"
                 "specified some common help and a command list will be displayed.\n"},
    {.Id = COMMAND_QUIT, .Name = "quit"},
    {.Id = COMMAND_GUI, .Name = "gui", .ErrorPattern = " [0,1]", .HelpPattern = " [0,1]",
     .HelpText = "This command enables or disables the connection to an external GUI, which\n"
                 "have to be started before trying this command.\n"},
    {.Id = COMMAND_HIGHLIGHTING, .Name = "highlighting", .ErrorPattern = " [0,1]",
     .HelpPattern = " [0,1]",
     .HelpText = "This command enables or disables the highlighting of the previous\n"
                 "and next move, when an external GUI is used.\n"},
    {.Id = COMMAND_ABOUT, .Name = "about", .HelpPattern = "",
     .HelpText = "This command displays some information about Talurex.\n"},
}};
// clang-format on

namespace {

constexpr bool EveryRowIsItsId() {
    for (int id = 0; id < NUM_COMMANDS; ++id) {
        if (CommandList[id].Id != id) {
            return false;
        }
    }
    return true;
}
static_assert(EveryRowIsItsId());

// An exact name wins at once; a beginning must fit one name alone.
CommandId FindCommand(std::string_view word) {
    CommandId found = UNKNOWN_COMMAND;
    int numMatches = 0;
    for (const Command& command : CommandList) {
        const std::string_view name = command.Name;
        if (name == word) {
            return command.Id;
        }
        if (name.starts_with(word)) {
            found = command.Id;
            ++numMatches;
        }
    }
    return numMatches == 1 ? found : UNKNOWN_COMMAND;
}

}  // namespace

CommandId GetCommand(std::string& line) {
    const std::size_t begin = std::min(line.find_first_not_of('/'), line.size());
    // Only blanks and line feeds end the word: a tab belongs to it.
    const std::size_t end = std::min(line.find_first_of(" \n", begin), line.size());
    const CommandId id = FindCommand(std::string_view(line).substr(begin, end - begin));
    if (id != UNKNOWN_COMMAND) {
        line.erase(0, end);
        EatLeadingAndTrailingWhitespace(line);
    }
    return id;
}

#include "control/command_table.h"

#include <algorithm>
#include <string_view>

#include "support/text.h"

// clang-format off
const std::array<Command, NUM_COMMANDS> CommandList = {{
    {COMMAND_NONE, "", nullptr, nullptr, nullptr},
    {COMMAND_LOAD, "load", nullptr, " [filename]",
     "This command loads a previously saved game for analyzing, continuing, etc.\n"
     "If no filename is specified, the default filename: quicksave.tlx will\n"
     "be used.\n"},
    {COMMAND_SAVE, "save", nullptr, " [filename]",
     "This command saves a finished or unfinished game on disk\n"
     "If no filename is specified, the default filename: quicksave.tlx will\n"
     "be used.\n"},
    {COMMAND_REDRAW, "redraw", nullptr, "",
     "This command displays the current game situation on the screen.\n"},
    {COMMAND_UNDO, "undo", nullptr, "",
     "This command goes back 2 half-moves in the current game.\n"},
    {COMMAND_BACK, "back", nullptr, " [n]",
     "This command goes back 'n' half-moves and stops (see /stop) the current\n"
     "game. If 'n' is not specified it defaults to 1\n"},
    {COMMAND_FORWARD, "forward", nullptr, " [n]",
     "This command goes forward 'n' half-moves and stops (see /stop) the current\n"
     "game. If 'n' is not specified it defaults to 1\n"},
    {COMMAND_START, "start", nullptr, "",
     "This command starts a stopped game. This means that Talurex will automaticly\n"
     "do moves, if it is his turn and all inputs are interpreted as player moves,\n"
     "unless they start with a '/'\n"},
    {COMMAND_STOP, "stop", nullptr, "",
     "This command stops a started game. This means that Talurex will do no moves,\n"
     "if it is his turn and all inputs are interpreted as commands.\n"},
    {COMMAND_CONT, "cont", nullptr, "",
     "This command goes forward to the last position of the game and starts\n"
     "it (see /start).\n"},
    {COMMAND_NEW, "new", nullptr, "",
     "This command creates a new game with the current game parameters and starts\n"
     "it. The current game is lost, unless saved before.\n"},
    {COMMAND_BOARDSIZE, "boardsize", " x_size y_size", " x y",
     "This command changes the size of the board to a width of x and a height of y.\n"
     "A new game with the new boardsize will be automaticly created and started.\n"
     "The current game is lost, unless saved before.\n"},
    {COMMAND_LIFESTONES, "lifestones", nullptr, " [n]",
     "This command sets the number of (red) dvonn stones to 'n'. The change will take\n"
     "effect in the next started game. If 'n' is not specified the current number of\n"
     "dvonn stones will be displayed.\n"},
    {COMMAND_LEVEL, "level", " level", " [n]",
     "This command sets the playing strength of talurex to 'n'. The change will take\n"
     "effect immediately. If 'n' is not specified the current level will be\n"
     "displayed.\n"},
    {COMMAND_PLAYERS, "players", " [0,1,2]", " [0, 1, 2]",
     "This command sets the number of human players to 'n'. The change will take\n"
     "effect immediately. If there is no value specified the current number of\n"
     "players will be displayed.\n"},
    {COMMAND_COLOR, "color", " [w,b,r]  (white, black or random)", " [w, b, r]",
     "This command sets your color, when playing against Talurex. The change will\n"
     "take effect immediately. If there is no value specified your current playing\n"
     "color will be displayed. Use 'r' (random) as parameter to let randomly\n"
     "determine colors, when a new game is started.\n"},
    {COMMAND_RANDOMSETUP, "randomsetup", " [0,1]", " [0, 1]",
     "This command sets or unsets the random setup mode in talurex. The change will\n"
     "take effect, when a new game is started. If there is no value specified the\n"
     "current setting will be displayed.\n"},
    {COMMAND_IMPORT, "import", " <bsw-dvonn-logfile>", " filename",
     "This command imports a game from a log file from the Brettspielwelt into\n"
     "talurex. After successful importing, it can be saved, analyzed, replayed\n"
     "etc.\n"},
    {COMMAND_EVALUATE, "evaluate", " [d<depth> | <level>]", " [<level>, d<depth>",
     "This command evaluates the current position and displays the value and the best\n"
     "move found for the current player. You can specify a <level> or a <depth>\n"
     "value. With a <level> value the specified playing strength will be used for\n"
     "the evaluation. With a <depth> value you can specify a fixed number of half\n"
     "moves, which will be used to search the game tree. But be careful with\n"
     "the <depth> value, because a too big value can lead to a very large response\n"
     "time. If no value is specified to this command, the current level (see /level)\n"
     "will be used for evaluation.\n"},
    {COMMAND_MOVE, "move", nullptr, " <move>",
     "This command does the move <move> in the current position. If you are not in\n"
     "the last position of the current game (e.g. you went back with /back), the\n"
     "previously made move in this position will be overwritten, and all subsequent\n"
     "moves will be lost.\n"},
    {COMMAND_ANALYZE, "analyze", nullptr, "",
     "This command is currently not implemented!\n"
     "Try again at next version.\n"},
    {COMMAND_STATUS, "status", " [0,1]", " [0,1]",
     "This command enables or disables a line with some status information, which\n"
     "will be printed after each computer move.\n"},
    {COMMAND_HELP, "help", nullptr, " [<command>]",
     "This command prints out a help text for <command>. If <command> is not\n"
     "specified some common help and a command list will be displayed.\n"},
    {COMMAND_QUIT, "quit", nullptr, nullptr, nullptr},
    {COMMAND_GUI, "gui", " [0,1]", " [0,1]",
     "This command enables or disables the connection to an external GUI, which\n"
     "have to be started before trying this command.\n"},
    {COMMAND_HIGHLIGHTING, "highlighting", " [0,1]", " [0,1]",
     "This command enables or disables the highlighting of the previous\n"
     "and next move, when an external GUI is used.\n"},
    {COMMAND_ABOUT, "about", nullptr, "",
     "This command displays some information about Talurex.\n"},
}};
// clang-format on

namespace {

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

#include "control/help.h"

#include "support/output.h"

namespace {

constexpr int COMMANDS_PER_LINE = 7;

void PrintGeneralHelp() {
    Print("1.) In 'game stopped' mode, you do not need to type the '/' char in commands.\n"
          "2.) You may abbreviate a command, as long as it can be uniquely determined.\n"
          "3.) Type /help <command> to get a specific help for a command.\n"
          "4.) The following commands are known by talurex:\n");
    for (const Command& command : CommandList) {
        if (command.Id != COMMAND_NONE) {
            Print("/%s,%c", command.Name, command.Id % COMMANDS_PER_LINE == 0 ? '\n' : ' ');
        }
    }
    Print("\n\n");
}

void PrintCommandHelp(const Command& command) {
    Print("command: /%s\n", command.Name);
    if (command.HelpPattern == nullptr) {
        Print("I am sorry. For this command no specific help is available!\n");
        return;
    }
    Print("usage: /%s%s\n%s", command.Name, command.HelpPattern, command.HelpText);
}

}  // namespace

void PrintHelp(const std::string& argument) {
    std::string rest = argument;
    const CommandId id = GetCommand(rest);
    if (id == UNKNOWN_COMMAND) {
        Print("\"%s\" is not a valid command! Try /help\n", argument.c_str());
    } else if (id == COMMAND_NONE) {
        PrintGeneralHelp();
    } else {
        PrintCommandHelp(CommandList[id]);
    }
}

void PrintUsageError(CommandId id) {
    const Command& command = CommandList[id];
    PrintRefusal("Error in Command!\nusage: /%s%s\n%s", command.Name, command.ErrorPattern,
                 command.ErrorHint);
}

// The texts that explain the commands, from the table of commands.
#pragma once

#include <string>

#include "control/command_table.h"

// Prints the help for the command that `argument` names or abbreviates; for an empty argument some
// notes and the list of all commands.
void PrintHelp(const std::string& argument);

// Prints that the command was not understood and how it is used.
void PrintUsageError(CommandId id);

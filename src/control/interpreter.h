// The command interpreter: carries out what GetCommand found.
#pragma once

#include <string>

#include "control/command_table.h"
#include "control/session.h"

// Carries out a command. `argument` is the text behind its name, trimmed at both ends. What people
// ask for in vain is answered on standard output, where an answer is due, and changes nothing; an
// id that GetCommand never gives ends the program.
void ExecuteCommand(CommandId id, const std::string& argument, Session& session);

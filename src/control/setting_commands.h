// Commands that show or change a setting, or print information. None is refused while a game is
// running. Without an argument they show the value; a number out of range is brought into it.
#pragma once

#include <string>

#include "control/session.h"

// Both act when the next game is created.
void DoLifeStones(const std::string& argument);
void DoRandomSetup(const std::string& argument);

// Fills the weights anew; the computer starts its deepening from the beginning.
void DoLevel(const std::string& argument, Session& session);

void DoPlayers(const std::string& argument);
void DoColor(const std::string& argument, PlayState& state);
void DoStatus(const std::string& argument);
void DoHighlighting(const std::string& argument);

// Connects to the graphical display or takes leave of it.
void DoGui(const std::string& argument);

void PrintAbout();

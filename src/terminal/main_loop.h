// The interactive play loop at a terminal or at the end of a pipe.
#pragma once

#include "control/session.h"

// Plays from the first game until the quit command or the end of standard input, where the game is
// kept. `session` has the weights of the computer's level. A signal that asks for the end, and the
// second interrupt at a prompt, end the program by throwing.
void MainControl(Session& session);

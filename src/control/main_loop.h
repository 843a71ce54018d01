// The interactive play loop.
#pragma once

// Builds the first game and plays until the quit command or the end of standard input.
void MainControl();

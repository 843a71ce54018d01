// The one line on standard error that tells, while the computer thinks, how far it has come:
// written over and over, and erased before anything else is printed.
#pragma once

#include <string>

// True when standard error is a terminal: only then may the line be shown.
[[nodiscard]] bool CanShowProgress();

// Shows the text in place of the one before, cut to the width of the terminal.
void ShowProgress(std::string text);

// Takes the line away, if there is one, unless the process is about to end.
void EraseProgress();

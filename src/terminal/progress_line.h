// The one line on standard error that tells, while the computer thinks, how far it has come:
// written over and over, and erased before anything else is printed.
#pragma once

#include "engine/thinking.h"

// True when standard error is a terminal: only then may the line be shown.
[[nodiscard]] bool CanShowProgress();

// Shows how a thought that takes long gets on, cut to the width of the terminal, and takes the line
// away when it is over. For Session::Report, without a context.
void ShowProgress(void* context, const ThoughtProgress& progress);

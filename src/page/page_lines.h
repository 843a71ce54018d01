// What pages ask for, as lines: whatever changes a game could have been typed, and stands in the
// log so.
#pragma once

#include "page/page_game.h"

// Carries out a request, and tells what has come of it.
void CarryOut(PageGame& game, const PageRequest& request);

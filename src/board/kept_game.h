// The game as a file that Talurex loads, for when it has gone and cannot save any more: the copy
// that it made last, or the start of the game, and the plies that were seen since.
#pragma once

#include <string>

#include "board/game_view.h"

// `copy` is the text of the copy. An empty answer means that the game is not known.
[[nodiscard]] std::string KeptGameText(const GameView& view, const std::string& copy);

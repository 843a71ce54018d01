// What a page is told, as JSON: the board with all that may be done on it and the numbers and texts
// around it, the plies of the game, and the log.
#pragma once

#include <span>
#include <string>

#include "page/page_view.h"

[[nodiscard]] std::string StateMessage(const PageView& view);

// Plies, texts of page/plies.h, that take the place of all those that the page has from number
// `first` on.
[[nodiscard]] std::string PliesMessage(int first, std::span<const std::string> plies);

// More of the log; with `reset` all there is of it.
[[nodiscard]] std::string LogMessage(const std::string& text, bool reset);

[[nodiscard]] std::string ErrorMessage(const std::string& text);

// JSON as pages read it, and the words that stand in it for codes.
#pragma once

#include <string>

#include <nlohmann/json.hpp>

#include "rules/position.h"

// The text of a value. What is no UTF-8 in it, a file's name for one, is replaced.
[[nodiscard]] std::string JsonText(const nlohmann::ordered_json& value);

// "white", "black", "life" or "empty", for a ColorCode.
[[nodiscard]] const char* ColorName(int color);

// "White" or "Black".
[[nodiscard]] const char* SideTitle(int side);

// The name of a space of the board; null for any other place.
[[nodiscard]] nlohmann::ordered_json NameOrNull(Place place);

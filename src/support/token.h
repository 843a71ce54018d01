// Secrets by which somebody is known.
#pragma once

#include <string>
#include <string_view>

// Makes 48 hexadecimal digits that nobody can guess. A system without random numbers ends the
// program.
[[nodiscard]] std::string NewToken();

// Compares, and takes as long wherever the texts differ.
[[nodiscard]] bool IsToken(std::string_view token, std::string_view text);

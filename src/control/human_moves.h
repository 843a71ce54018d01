// A typed line carried out as a placement, a tower move or a pass.
#pragma once

#include <string_view>

#include "rules/moves.h"
#include "rules/position.h"

// Carries out `line` in `position`: `next` becomes the position behind it and `move` the entry for
// the record. Answers 0, or non-zero after printing why nothing was done; `next` and `move` are
// then unchanged.
[[nodiscard]] int DoPlayerMove(std::string_view line, const Position& position, Position& next,
                               Move& move);

// Answers 0 when the line asks for a pass, else 1. The first four characters, as far as there are
// any, must spell "pass" in small letters or capitals, so an empty line passes too.
[[nodiscard]] int CheckPassMove(std::string_view line);

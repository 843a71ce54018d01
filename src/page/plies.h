// The plies of a game as pages keep them: each with the picture of the position that it led to, so
// that a page can show any of them without asking.
#pragma once

#include <string>

#include "display/highlight.h"
#include "rules/game_record.h"

// The number of the first ply of `record` that `known` has not, or has another way; LastMove + 1
// when it has them all. Ply 0 is the start position. For two games on boards of one size.
[[nodiscard]] int FirstNewPly(const GameRecord& known, const GameRecord& record);

// Ply `n` of the record as JSON: how it is written and said, what moved and what died, and the
// position behind it. Of ply 0 there is nothing but the position.
[[nodiscard]] std::string PlyText(const GameRecord& record, int n);

// A position alone, as the start of a game has it.
[[nodiscard]] std::string PictureText(const Position& position);

// The same as PlyText for a step that leads from one position to another; a pass has no target.
[[nodiscard]] std::string PlyTextOf(const Position& before, const Position& after,
                                    const FromTo& step);

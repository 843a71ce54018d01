// The steps that a display marks: the one that led to a position and the one that follows.
#pragma once

#include "rules/game_record.h"

inline constexpr Place NOWHERE = {-1, -1};

// A tower move, a placement (which comes from nowhere), or nothing at all.
struct FromTo {
    Place Source = NOWHERE;
    Place Target = NOWHERE;
};

[[nodiscard]] constexpr bool IsSomewhere(Place place) {
    return place.Column >= 0;
}

// The step that led to position `n`, 1 or more, of the record; behind a pass, the one before it,
// and nothing where there is none.
[[nodiscard]] FromTo LastStep(const GameRecord& record, int n);

// The step that the record holds behind position `n`; nothing for a pass.
[[nodiscard]] FromTo NextStep(const GameRecord& record, int n);

// How a game is played, as far as its saved form does not tell: it stands in a comment behind it,
// for whoever goes on with the game.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "control/play_state.h"

struct HowPlayed {
    int People = 0;
    int HumanSide = WHITE;  // against one person
    int Level = 0;
    int Move = 0;  // the number of the shown position

    bool operator==(const HowPlayed&) const = default;
};

// How it is played now, by play and settings.
[[nodiscard]] HowPlayed PresentPlay(const PlayState& play);

// The comment line.
[[nodiscard]] std::string RemarkOn(const HowPlayed& how);

// The last such line of a saved game's text, if it has one.
[[nodiscard]] std::optional<HowPlayed> ReadRemark(std::string_view text);

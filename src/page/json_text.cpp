#include "page/json_text.h"

#include <array>

#include "rules/notation.h"

using nlohmann::ordered_json;

std::string JsonText(const ordered_json& value) {
    return value.dump(-1, ' ', false, ordered_json::error_handler_t::replace);
}

const char* ColorName(int color) {
    constexpr std::array COLOR_NAMES = {"white", "black", "life", "empty"};
    return COLOR_NAMES[color];
}

const char* SideTitle(int side) {
    return side == BLACK ? "Black" : "White";
}

ordered_json NameOrNull(Place place) {
    return IsOnBoard(place.Column, place.Row) ? ordered_json(SpaceText(place)) : ordered_json();
}

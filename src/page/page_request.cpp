#include "page/page_request.h"

#include <algorithm>

#include <nlohmann/json.hpp>

#include "page/buttons.h"

namespace {

using nlohmann::json;

// The text of a member; empty when there is none.
std::string TextMember(const json& message, const char* name) {
    const auto member = message.find(name);
    return member != message.end() && member->is_string() ? member->get<std::string>() : "";
}

bool IsMove(std::string_view text) {
    constexpr std::size_t MAX_MOVE_LENGTH = 8;
    return !text.empty() && text.size() <= MAX_MOVE_LENGTH &&
           std::all_of(text.begin(), text.end(), [](char c) {
               return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') ||
                      c == '-';
           });
}

PageRequest ButtonRequest(std::string_view name) {
    for (const PageButton& button : PAGE_BUTTONS) {
        if (name == button.Name) {
            return {button.Kind, button.Line};
        }
    }
    return {};
}

}  // namespace

PageRequest ReadPageRequest(std::string_view text) {
    const json message = json::parse(text, nullptr, false);
    if (!message.is_object()) {
        return {};
    }
    if (message.contains("token")) {
        return {RequestKind::Token, TextMember(message, "token")};
    }
    if (message.contains("button")) {
        return ButtonRequest(TextMember(message, "button"));
    }
    if (message.contains("move")) {
        const std::string move = TextMember(message, "move");
        return IsMove(move) ? PageRequest{RequestKind::Move, move} : PageRequest{};
    }
    const auto line = message.find("line");
    if (line == message.end() || !line->is_string()) {
        return {};
    }
    const auto stop = message.find("stop");
    const bool replaces = stop != message.end() && stop->is_boolean() && stop->get<bool>();
    return {replaces ? RequestKind::Replace : RequestKind::Line, line->get<std::string>()};
}

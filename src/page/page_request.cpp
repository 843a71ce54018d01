#include "page/page_request.h"

#include <algorithm>
#include <string_view>

#include <nlohmann/json.hpp>

#include "control/session.h"
#include "page/buttons.h"
#include "support/requests.h"
#include "support/text.h"

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

constexpr std::size_t MAX_QUEUED_LINES = 32;

// Why the line cannot be typed; empty when it can.
std::string RefusalOf(const LineQueue& queue, const PageRequest& line) {
    if (line.Text.size() > MAX_TYPED_LENGTH) {
        return "The line is too long: " + std::to_string(MAX_TYPED_LENGTH) + " characters at most.";
    }
    if (HoldsControlCharacter(line.Text)) {
        return "The line holds a control character.";
    }
    if (line.Kind == RequestKind::Move && !queue.IsWaiting) {
        return "It is not the moment for a move.";
    }
    return queue.Lines.size() < MAX_QUEUED_LINES ? "" : "Too many lines are waiting already.";
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

std::string TakeRequest(LineQueue& queue, const PageRequest& request) {
    if (request.Kind == RequestKind::None || request.Kind == RequestKind::Token) {
        return "The board did not understand the page.";
    }
    const bool isLine = request.Kind != RequestKind::MoveNow;
    if (std::string refusal = isLine ? RefusalOf(queue, request) : ""; !refusal.empty()) {
        return refusal;
    }
    if (!queue.IsWaiting && (!isLine || request.Kind == RequestKind::Replace)) {
        MakeRequests(REQUEST_MOVE_NOW);
    }
    if (isLine) {
        queue.Lines.push_back(request);
        queue.IsWaiting = false;
    }
    return "";
}

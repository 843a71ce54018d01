#include "page/page_request.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <string_view>
#include <utility>

#include <nlohmann/json.hpp>

#include "control/session.h"
#include "page/buttons.h"
#include "rules/game_record.h"
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

bool IsTrue(const json& message, const char* name) {
    const auto member = message.find(name);
    return member != message.end() && member->is_boolean() && member->get<bool>();
}

// A whole number below a limit; -1 when there is none.
int NumberMember(const json& message, const char* name, int limit = GAME_RECORD_SIZE) {
    const auto member = message.find(name);
    const bool isNumber = member != message.end() && member->is_number_unsigned();
    return isNumber && member->get<std::uint64_t>() < static_cast<std::uint64_t>(limit)
               ? member->get<int>()
               : -1;
}

PageRequest ButtonRequest(std::string_view name, int number) {
    for (const PageButton& button : PAGE_BUTTONS) {
        if (name == button.Name) {
            return {.Kind = button.Kind, .Text = button.Line, .Number = number};
        }
    }
    return {};
}

// What goes with a name of its own in a message: a move, a line or a file.
PageRequest NamedRequest(const json& message) {
    constexpr std::array KINDS = {
        std::pair{"move", RequestKind::Move}, std::pair{"line", RequestKind::Line},
        std::pair{"load", RequestKind::Load}, std::pair{"save", RequestKind::Save},
        std::pair{"open", RequestKind::Open},
    };
    for (const auto& [name, kind] : KINDS) {
        const auto member = message.find(name);
        if (member == message.end()) {
            continue;
        }
        PageRequest request = {.Kind = kind, .Text = TextMember(message, name)};
        request.Content = TextMember(message, "content");
        request.Number = NumberMember(message, "ply");
        request.MayReplace = IsTrue(message, "replace");
        if (kind == RequestKind::Line && IsTrue(message, "stop")) {
            request.Kind = RequestKind::Replace;
        }
        const bool isWhole =
            member->is_string() && (kind != RequestKind::Move || IsMove(request.Text));
        return isWhole ? request : PageRequest{};
    }
    return {};
}

constexpr std::size_t MAX_QUEUED_LINES = 32;

// Why a request cannot be carried out; empty when it can.
std::string RefusalOf(const LineQueue& queue, const PageRequest& request) {
    if (request.Text.size() > MAX_TYPED_LENGTH) {
        return "The line is too long: " + std::to_string(MAX_TYPED_LENGTH) + " characters at most.";
    }
    if (HoldsControlCharacter(request.Text)) {
        return "The line holds a control character.";
    }
    if (request.Kind == RequestKind::Move && !queue.IsWaiting) {
        return "It is not the moment for a move.";
    }
    return queue.Lines.size() < MAX_QUEUED_LINES ? "" : "Too many lines are waiting already.";
}

// Whether a computer that thinks is to come to an end because of it.
bool IsUrgent(RequestKind kind) {
    switch (kind) {
    case RequestKind::Replace:
    case RequestKind::Undo:
    case RequestKind::Fill:
    case RequestKind::FromHere:
    case RequestKind::GoOn:
    case RequestKind::Load:
    case RequestKind::Open: return true;
    default: return false;
    }
}

// Whether it was meant for another position than the present one.
bool IsLate(const LineQueue& queue, const PageRequest& request) {
    return (request.Kind == RequestKind::Move || request.Kind == RequestKind::MoveNow) &&
           request.Number >= 0 && request.Number != queue.Move;
}

}  // namespace

PageRequest ReadPageRequest(std::string_view text) {
    const json message = json::parse(text, nullptr, false);
    if (!message.is_object()) {
        return {};
    }
    if (message.contains("token")) {
        return {.Kind = RequestKind::Token, .Text = TextMember(message, "token")};
    }
    if (message.contains("button")) {
        return ButtonRequest(TextMember(message, "button"), NumberMember(message, "ply"));
    }
    constexpr int MAX_PAUSE = 10001;
    if (const int pause = NumberMember(message, "pause", MAX_PAUSE); pause >= 0) {
        return {.Kind = RequestKind::Pause, .Number = pause};
    }
    return NamedRequest(message);
}

std::string TakeRequest(LineQueue& queue, const PageRequest& request) {
    if (request.Kind == RequestKind::None || request.Kind == RequestKind::Token) {
        return "The board did not understand the page.";
    }
    if (IsLate(queue, request)) {
        return "";
    }
    if (request.Kind == RequestKind::MoveNow) {
        if (!queue.IsWaiting) {
            MakeRequests(REQUEST_MOVE_NOW);
        }
        return "";
    }
    if (std::string refusal = RefusalOf(queue, request); !refusal.empty()) {
        return refusal;
    }
    if (!queue.IsWaiting && IsUrgent(request.Kind)) {
        MakeRequests(REQUEST_MOVE_NOW);
    }
    queue.Lines.push_back(request);
    queue.IsWaiting = false;
    return "";
}

#include "page/line_queue.h"

#include <string_view>

#include "control/session.h"
#include "support/requests.h"

namespace {

constexpr std::size_t MAX_QUEUED_LINES = 32;

// The control characters of ASCII, and those that UTF-8 writes in two bytes.
bool HoldsControlCharacter(std::string_view line) {
    for (std::size_t i = 0; i < line.size(); ++i) {
        const auto c = static_cast<unsigned char>(line[i]);
        const auto next = static_cast<unsigned char>(i + 1 < line.size() ? line[i + 1] : ' ');
        if (c < ' ' || c == 127 || (c == 0xC2 && next >= 0x80 && next < 0xA0)) {
            return true;
        }
    }
    return false;
}

void Hurry(const LineQueue& queue) {
    if (!queue.IsWaiting) {
        MakeRequests(REQUEST_MOVE_NOW);
    }
}

std::string QueueLine(LineQueue& queue, const std::string& line, LineKind kind) {
    if (line.size() > MAX_TYPED_LENGTH) {
        return "The line is too long: " + std::to_string(MAX_TYPED_LENGTH) + " characters at most.";
    }
    if (HoldsControlCharacter(line)) {
        return "The line holds a control character.";
    }
    if (kind == LineKind::Move && !queue.IsWaiting) {
        return "It is not the moment for a move.";
    }
    if (queue.Lines.size() >= MAX_QUEUED_LINES) {
        return "Too many lines are waiting already.";
    }
    if (kind == LineKind::Replace) {
        Hurry(queue);
    }
    queue.Lines.push_back({line, kind});
    queue.IsWaiting = false;
    return "";
}

}  // namespace

std::string TakeRequest(LineQueue& queue, const PageRequest& request) {
    switch (request.Kind) {
    case RequestKind::Line:
        return QueueLine(queue, request.Text, LineKind::Typed);
    case RequestKind::Replace:
        return QueueLine(queue, request.Text, LineKind::Replace);
    case RequestKind::Move:
        return QueueLine(queue, request.Text, LineKind::Move);
    case RequestKind::MoveNow:
        Hurry(queue);
        return "";
    case RequestKind::Token:
    case RequestKind::None:
        break;
    }
    return "The board did not understand the page.";
}

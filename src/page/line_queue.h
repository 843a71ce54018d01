// What pages have asked for and is not carried out yet: lines, as if typed.
#pragma once

#include <deque>
#include <string>

#include "page/page_request.h"

enum class LineKind {
    Typed,    // as it stands
    Move,     // a move: by the move command while the game is stopped
    Replace,  // as it stands, but a running game is stopped first
};

struct QueuedLine {
    std::string Text;
    LineKind Kind = LineKind::Typed;
};

struct LineQueue {
    std::deque<QueuedLine> Lines;
    bool IsWaiting = false;  // the game waits for a line, and has none
};

// Takes a page's request: queues its line, or asks a busy game to hurry. Answers an empty text, or
// why nothing was done.
[[nodiscard]] std::string TakeRequest(LineQueue& queue, const PageRequest& request);

// What pages ask for, and what of it is not carried out yet.
#pragma once

#include <deque>
#include <string>
#include <string_view>

enum class RequestKind {
    None,     // not understood
    Token,    // the first message of every page
    Line,     // a line as if typed
    Replace,  // a line that wants a running game stopped first
    Move,     // a placement or a tower move: by the move command while the game is stopped
    MoveNow,  // hurry the computer
};

struct PageRequest {
    RequestKind Kind = RequestKind::None;
    std::string Text;  // token, line or move
};

// Reads a message. Anything may come in.
[[nodiscard]] PageRequest ReadPageRequest(std::string_view text);

struct LineQueue {
    std::deque<PageRequest> Lines;  // of the kinds Line, Replace and Move
    bool IsWaiting = false;         // the game waits for a line, and has none
};

// Takes a page's request: queues its line, or asks a busy game to hurry. Answers an empty text, or
// why nothing was done.
[[nodiscard]] std::string TakeRequest(LineQueue& queue, const PageRequest& request);

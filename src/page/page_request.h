// What a page asks for.
#pragma once

#include <string>
#include <string_view>

enum class RequestKind {
    None,     // not understood
    Token,    // the first message of every page
    Line,     // a line as if typed
    Replace,  // a line that wants a running game stopped first
    Move,     // a placement or a tower move
    MoveNow,  // hurry the computer
};

struct PageRequest {
    RequestKind Kind = RequestKind::None;
    std::string Text;  // token, line or move
};

// Reads a message. Anything may come in.
[[nodiscard]] PageRequest ReadPageRequest(std::string_view text);

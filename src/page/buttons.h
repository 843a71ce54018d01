// The buttons of the page: what each asks for, and when it can be pressed.
#pragma once

#include <array>
#include <string_view>

#include "page/page_request.h"
#include "page/page_view.h"

// What decides whether a button can be pressed.
struct ButtonFacts {
    const PageView& View;
    bool IsUsable;   // somebody plays here, and the game is not ended
    bool IsWaiting;  // and a line is awaited
    bool IsOver;     // the shown position is an end position
    bool MustPass;
};

struct PageButton {
    std::string_view Name;
    RequestKind Kind;  // None: the page makes a line of it
    const char* Line;
    bool (*CanBePressed)(const ButtonFacts& facts);
};

// clang-format off
inline constexpr std::array PAGE_BUTTONS = {
    PageButton{"new", RequestKind::None, "", [](const ButtonFacts& f) { return f.IsUsable; }},
    PageButton{"undo", RequestKind::Line, "/undo",
               [](const ButtonFacts& f) { return f.IsWaiting && f.View.Move >= 2; }},
    PageButton{"back", RequestKind::Line, "/back",
               [](const ButtonFacts& f) { return f.IsWaiting && f.View.Move > 0; }},
    PageButton{"forward", RequestKind::Line, "/forward",
               [](const ButtonFacts& f) { return f.IsWaiting && f.View.Move < f.View.LastMove; }},
    PageButton{"first", RequestKind::Line, "/back 1000",
               [](const ButtonFacts& f) { return f.IsWaiting && f.View.Move > 0; }},
    PageButton{"last", RequestKind::Line, "/forward 1000",
               [](const ButtonFacts& f) { return f.IsWaiting && f.View.Move < f.View.LastMove; }},
    PageButton{"continue", RequestKind::Line, "/cont",
               [](const ButtonFacts& f) {
                   return f.IsWaiting && !f.View.Running && !f.View.IsLastOver;
               }},
    PageButton{"pass", RequestKind::Move, "pass",
               [](const ButtonFacts& f) { return f.IsWaiting && f.MustPass; }},
    PageButton{"evaluate", RequestKind::Line, "/evaluate",
               [](const ButtonFacts& f) { return f.IsWaiting && !f.IsOver; }},
    PageButton{"save", RequestKind::None, "", [](const ButtonFacts& f) { return f.IsUsable; }},
    PageButton{"load", RequestKind::None, "", [](const ButtonFacts& f) { return f.IsUsable; }},
    PageButton{"movenow", RequestKind::MoveNow, "",
               [](const ButtonFacts& f) { return f.IsUsable && !f.IsWaiting; }},
};
// clang-format on

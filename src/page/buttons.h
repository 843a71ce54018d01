// The buttons of the page: what each asks for, and when it can be pressed.
#pragma once

#include <array>
#include <string_view>

#include "page/page_request.h"

// What may hold of a game that is played here; a button can be pressed when all that it needs
// holds.
enum ButtonNeed : unsigned {
    NEED_NOTHING = 0,
    NEED_LINE = 1,        // a line is awaited
    NEED_THOUGHT = 2,     // none is
    NEED_CHOICE = 4,      // somebody has chosen a ply that can be taken back
    NEED_STOPPED = 8,     // the game is stopped
    NEED_PASS = 16,       // the side to move has no move
    NEED_OPEN = 32,       // the shown position is not the end
    NEED_SETUP = 256,     // stones are to be placed
    NEED_FOUND = 64,      // a game is offered that was found at the start
    NEED_REPLACED = 128,  // one that was replaced
};

struct PageButton {
    std::string_view Name;
    RequestKind Kind;  // None: what it asks for has a message of its own
    const char* Line;
    unsigned Needs;
};

inline constexpr std::array PAGE_BUTTONS = {
    PageButton{"new", RequestKind::Replace, "/new", NEED_NOTHING},
    PageButton{"undo", RequestKind::Undo, "", NEED_CHOICE},
    PageButton{"fill", RequestKind::Fill, "", NEED_LINE | NEED_SETUP},
    PageButton{"continue", RequestKind::Line, "/start", NEED_LINE | NEED_STOPPED | NEED_OPEN},
    PageButton{"pass", RequestKind::Move, "pass", NEED_LINE | NEED_PASS},
    PageButton{"evaluate", RequestKind::Line, "/evaluate", NEED_LINE | NEED_OPEN},
    PageButton{"save", RequestKind::None, "", NEED_NOTHING},
    PageButton{"load", RequestKind::None, "", NEED_NOTHING},
    PageButton{"games", RequestKind::List, "", NEED_NOTHING},
    PageButton{"download", RequestKind::Download, "", NEED_NOTHING},
    PageButton{"fromhere", RequestKind::FromHere, "", NEED_NOTHING},
    PageButton{"resume", RequestKind::GoOn, "", NEED_FOUND},
    PageButton{"takeback", RequestKind::GoOn, "", NEED_REPLACED},
    PageButton{"movenow", RequestKind::MoveNow, "", NEED_THOUGHT},
};

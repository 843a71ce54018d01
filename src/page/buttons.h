// The buttons of the page: what each asks for, and when it can be pressed.
#pragma once

#include <array>
#include <string_view>

#include "page/page_request.h"

// What may hold of a game that is played here; a button can be pressed when all that it needs
// holds.
enum ButtonNeed : unsigned {
    NEED_NOTHING = 0,
    NEED_LINE = 1,     // a line is awaited
    NEED_THOUGHT = 2,  // none is
    NEED_PLY = 4,      // there is a position before the shown one
    NEED_TWO_PLIES = 8,
    NEED_MORE = 16,     // there is a position behind it
    NEED_STOPPED = 32,  // the game is stopped, and its last position is not the end
    NEED_PASS = 64,     // the side to move has no move
    NEED_OPEN = 128,    // the shown position is not the end
};

struct PageButton {
    std::string_view Name;
    RequestKind Kind;  // None: the page makes a line of it
    const char* Line;
    unsigned Needs;
};

inline constexpr std::array PAGE_BUTTONS = {
    PageButton{"new", RequestKind::None, "", NEED_NOTHING},
    PageButton{"undo", RequestKind::Line, "/undo", NEED_LINE | NEED_TWO_PLIES},
    PageButton{"back", RequestKind::Line, "/back", NEED_LINE | NEED_PLY},
    PageButton{"forward", RequestKind::Line, "/forward", NEED_LINE | NEED_MORE},
    PageButton{"first", RequestKind::Line, "/back 1000", NEED_LINE | NEED_PLY},
    PageButton{"last", RequestKind::Line, "/forward 1000", NEED_LINE | NEED_MORE},
    PageButton{"continue", RequestKind::Line, "/cont", NEED_LINE | NEED_STOPPED},
    PageButton{"pass", RequestKind::Move, "pass", NEED_LINE | NEED_PASS},
    PageButton{"evaluate", RequestKind::Line, "/evaluate", NEED_LINE | NEED_OPEN},
    PageButton{"save", RequestKind::None, "", NEED_NOTHING},
    PageButton{"load", RequestKind::None, "", NEED_NOTHING},
    PageButton{"movenow", RequestKind::MoveNow, "", NEED_THOUGHT},
};

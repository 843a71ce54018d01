#include "display/terminal_board.h"

#include <array>
#include <span>

#include "rules/notation.h"
#include "support/fatal.h"
#include "support/output.h"

BoardStyle PrintedBoards = BoardStyle::Colored;

namespace {

// Indexed by ScreenColor.
constexpr std::array<const char*, 17> COLOR_TEXTS = {
    "\033[30m",   "\033[1;31m", "\033[1;32m", "\033[1;33m", "\033[1;34m", "\033[1;35m",
    "\033[1;36m", "\033[1;37m", "\033[40m",   "\033[47m",   "\033[41m",   "\033[42m",
    "\033[43m",   "\033[44m",   "\033[45m",   "\033[46m",   "\033[0m",
};
static_assert(COLOR_TEXTS.size() == RESET_COLORS + 1);

// What a space looks like: the colours sent just before it, and its mark.
struct Look {
    std::array<unsigned, 3> Colors;
    std::size_t NumColors;
    char Mark;
};
constexpr Look WHITE_LOOK = {{FOREGROUND_WHITE}, 1, '+'};
constexpr Look WHITE_LIFE_LOOK = {{FOREGROUND_YELLOW}, 1, '*'};
constexpr Look BLACK_LOOK = {{RESET_COLORS, FOREGROUND_BLACK, BACKGROUND_WHITE}, 3, '#'};
constexpr Look BLACK_LIFE_LOOK = {{FOREGROUND_BLUE}, 1, '@'};
constexpr Look LIFE_LOOK = {{FOREGROUND_RED}, 1, '%'};
// Two colours, of which the second counts: readers of a pipe tell spaces by the whole sequence.
constexpr Look EMPTY_LOOK = {{FOREGROUND_GREEN, FOREGROUND_BLACK}, 2, '.'};
constexpr Look FAULTY_LOOK = {{}, 0, '?'};

const Look& LookOf(const Space& space) {
    switch (space.Owner) {
    case WHITE: return space.Life != 0 ? WHITE_LIFE_LOOK : WHITE_LOOK;
    case BLACK: return space.Life != 0 ? BLACK_LIFE_LOOK : BLACK_LOOK;
    case LIFE: return LIFE_LOOK;
    case EMPTY: return EMPTY_LOOK;
    default: PrintError("Error: Position data is faulty !\n"); return FAULTY_LOOK;
    }
}

void SetColors(std::span<const unsigned> codes) {
    for (const unsigned code : codes) {
        SetColor(code);
    }
}

// Black on white, the colours of everything but the spaces themselves.
void SetBoardColors() {
    SetColors(std::array<unsigned, 3>{RESET_COLORS, FOREGROUND_BLACK, BACKGROUND_WHITE});
}

void PrintTimes(int count, const char* text) {
    for (int i = 0; i < count; ++i) {
        PrintText(text);
    }
}

void PrintSpace(const Space& space) {
    const Look& look = LookOf(space);
    SetColors(std::span(look.Colors).first(look.NumColors));
    const char mark = GlobCfg.SingleDispCharFlag == 1 ? GlobCfg.SingleDispChar : look.Mark;
    Print("%2i%c", space.Height, mark);
}

void PrintRow(const Position& position, int y) {
    SetBoardColors();
    Print("%i", RowNumber(y));
    PrintTimes(y, "  ");
    for (int x = 0; x < GlobCfg.BoardXDim; ++x) {
        if (IsOnBoard(x, y)) {
            PrintSpace(position.Spaces[x][y]);
        } else {
            Print("   ");
        }
        Print(" ");
    }
    PrintTimes(GlobCfg.BoardYDim - y - 1, "  ");
    Print(" \n");
    SetBoardColors();
}

// The letter of a column stands at the foot of its diagonal.
void PrintLetterLine() {
    PrintTimes(GlobCfg.BoardYDim - 1, "  ");
    Print("     ");
    const int last = GlobCfg.BoardXDim - 1;
    for (int x = 0; x < last; ++x) {
        Print("%c   ", ColumnLetter(x));
    }
    Print("%c", ColumnLetter(last));
}

}  // namespace

void SetColor(unsigned code) {
    if (code >= COLOR_TEXTS.size()) {
        ErrorExit("SetColor: Error in calling parameter value\n");
    }
    if (PrintedBoards == BoardStyle::Colored) {
        PrintText(COLOR_TEXTS[code]);
    }
}

void PrintPosition(const Position& position) {
    if (PrintedBoards == BoardStyle::Hidden) {
        return;
    }
    Print(position.ActivePlayer == WHITE ? "WHITE is moving" : "BLACK is moving");
    SetColor(BACKGROUND_WHITE);
    Print("\n");
    for (int y = 0; y < GlobCfg.BoardYDim; ++y) {
        PrintRow(position, y);
    }
    PrintTimes(GlobCfg.BoardXDim, "----");
    PrintTimes(GlobCfg.BoardYDim - 1, "--");
    Print("--\n");
    PrintLetterLine();
    SetColor(RESET_COLORS);
    Print("\n");
}

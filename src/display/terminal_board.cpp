#include "display/terminal_board.h"

#include <array>
#include <cstdio>
#include <cstdlib>
#include <span>

#include <unistd.h>

#include "rules/notation.h"
#include "support/fatal.h"

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
    case WHITE:
        return space.Life != 0 ? WHITE_LIFE_LOOK : WHITE_LOOK;
    case BLACK:
        return space.Life != 0 ? BLACK_LIFE_LOOK : BLACK_LOOK;
    case LIFE:
        return LIFE_LOOK;
    case EMPTY:
        return EMPTY_LOOK;
    default:
        PrintError("Error: Position data is faulty !\n");
        return FAULTY_LOOK;
    }
}

// People can ask for a terminal without colours. Who reads a pipe gets them always.
bool IsWithoutColors() {
    static const bool isWithoutColors = [] {
        const char* wish = std::getenv("NO_COLOR");
        return isatty(STDOUT_FILENO) == 1 && wish != nullptr && wish[0] != '\0';
    }();
    return isWithoutColors;
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
        std::fputs(text, stdout);
    }
}

void PrintSpace(const Space& space) {
    const Look& look = LookOf(space);
    SetColors(std::span(look.Colors).first(look.NumColors));
    const char mark = GlobCfg.SingleDispCharFlag == 1 ? GlobCfg.SingleDispChar : look.Mark;
    std::printf("%2i%c", space.Height, mark);
}

void PrintRow(const Position& position, int y) {
    SetBoardColors();
    std::printf("%i", RowNumber(y));
    PrintTimes(y, "  ");
    for (int x = 0; x < GlobCfg.BoardXDim; ++x) {
        if (IsOnBoard(x, y)) {
            PrintSpace(position.Spaces[x][y]);
        } else {
            std::printf("   ");
        }
        std::printf(" ");
    }
    PrintTimes(GlobCfg.BoardYDim - y - 1, "  ");
    std::printf(" \n");
    SetBoardColors();
}

// The letter of a column stands at the foot of its diagonal.
void PrintLetterLine() {
    PrintTimes(GlobCfg.BoardYDim - 1, "  ");
    std::printf("     ");
    const int last = GlobCfg.BoardXDim - 1;
    for (int x = 0; x < last; ++x) {
        std::printf("%c   ", ColumnLetter(x));
    }
    std::printf("%c", ColumnLetter(last));
}

}  // namespace

void SetColor(unsigned code) {
    if (code >= COLOR_TEXTS.size()) {
        ErrorExit("SetColor: Error in calling parameter value\n");
    }
    if (!IsWithoutColors()) {
        std::fputs(COLOR_TEXTS[code], stdout);
    }
}

void PrintPosition(const Position& position) {
    std::printf(position.ActivePlayer == WHITE ? "WHITE is moving" : "BLACK is moving");
    SetColor(BACKGROUND_WHITE);
    std::printf("\n");
    for (int y = 0; y < GlobCfg.BoardYDim; ++y) {
        PrintRow(position, y);
    }
    PrintTimes(GlobCfg.BoardXDim, "----");
    PrintTimes(GlobCfg.BoardYDim - 1, "--");
    std::printf("--\n");
    PrintLetterLine();
    SetColor(RESET_COLORS);
    std::printf("\n");
}

#include "board/shown_board.h"

#include "support/numbers.h"

namespace {

constexpr Space NO_STONE = {.Height = 0, .Life = 0, .Owner = EMPTY};

// Reads `numbers.size()` decimal numbers, each behind one blank, to the end of the line.
template <std::size_t Count>
bool ReadNumbers(std::string_view text, std::array<int, Count>& numbers) {
    for (int& number : numbers) {
        if (!text.starts_with(' ') || text.starts_with("  ")) {
            return false;
        }
        const std::optional<int> read = ScanInt(text);
        if (!read) {
            return false;
        }
        number = *read;
    }
    return text.empty();
}

bool IsShown(Place place) {
    return place.Column >= 0 && place.Column < MAX_BOARD_X_DIM && place.Row >= 0 &&
           place.Row < MAX_BOARD_Y_DIM;
}

bool IsNowhere(Place place) {
    return place.Column == -1 && place.Row == -1;
}

bool ReadFromTo(std::string_view text, FromTo& step) {
    std::array<int, 4> n{};
    if (!ReadNumbers(text, n)) {
        return false;
    }
    const FromTo read = {{n[0], n[1]}, {n[2], n[3]}};
    if ((!IsShown(read.Source) && !IsNowhere(read.Source)) ||
        (!IsShown(read.Target) && !IsNowhere(read.Target))) {
        return false;
    }
    step = read;
    return true;
}

bool IsSpace(const Space& space) {
    if (space.Owner == EMPTY) {
        return space.Height == 0 && space.Life == 0;
    }
    return space.Owner >= WHITE && space.Owner <= LIFE && space.Height >= 1 &&
           space.Height <= MAX_BOARD_SPACES && (space.Life == 0 || space.Life == 1);
}

bool TakeSpaceLine(ShownBoard& board, std::string_view text) {
    std::array<int, 5> n{};
    if (!ReadNumbers(text, n)) {
        return false;
    }
    const Place place = {n[0], n[1]};
    const Space space = {.Height = n[2], .Life = n[4], .Owner = n[3]};
    if (!IsShown(place) || !IsSpace(space)) {
        return false;
    }
    board.Spaces[place.Column][place.Row] = space;
    if (board.NumSpaces == 0) {
        board.FirstSpace = place;
    }
    board.LastSpace = place;
    board.NumSpaces = Min(board.NumSpaces + 1, MAX_BOARD_X_DIM * MAX_BOARD_Y_DIM + 1);
    return true;
}

// A tower that is not there, or would reach beyond the array, stays where it is: the board then
// belongs to another game than the move.
void MoveTower(ShownBoard& board, const FromTo& step) {
    if (!IsShown(step.Source) || !IsShown(step.Target)) {
        return;
    }
    const Space tower = board.Spaces[step.Source.Column][step.Source.Row];
    Space& target = board.Spaces[step.Target.Column][step.Target.Row];
    if (tower.Height == 0 || tower.Height + target.Height > MAX_BOARD_SPACES) {
        return;
    }
    board.Spaces[step.Source.Column][step.Source.Row] = NO_STONE;
    target = {.Height = target.Height + tower.Height,
              .Life = target.Life | tower.Life,
              .Owner = tower.Owner};
}

// M lines name a target off the array when the display shows another game: any numbers will do.
bool TakeMoveLine(ShownBoard& board, std::string_view text) {
    std::array<int, 4> n{};
    if (!ReadNumbers(text, n)) {
        return false;
    }
    board.Animated = FromTo{{n[0], n[1]}, {n[2], n[3]}};
    MoveTower(board, *board.Animated);
    return true;
}

bool TakeNumber(std::string_view& text, char before, int& number) {
    if (!text.starts_with(before)) {
        return false;
    }
    std::string_view rest = text.substr(1);
    const std::optional<int> read = ScanInt(rest);
    if (!read || *read < 0) {
        return false;
    }
    text = rest;
    number = *read;
    return true;
}

bool TakeStatusLine(ShownBoard& board, std::string_view text) {
    constexpr std::string_view BEFORE = "Move ";
    constexpr std::size_t MAX_STATUS_LENGTH = 200;
    int moveNumber = 0;
    int lastMove = 0;
    if (!text.starts_with(BEFORE)) {
        return false;
    }
    text.remove_prefix(BEFORE.size());
    if (!TakeNumber(text, '(', moveNumber) || !TakeNumber(text, '/', lastMove) ||
        !text.starts_with(") ") || moveNumber > lastMove || text.size() > MAX_STATUS_LENGTH) {
        return false;
    }
    board.OneStep = moveNumber - 1 == board.MoveNumber;
    board.MoveNumber = moveNumber;
    board.LastMove = lastMove;
    board.Status = text.substr(2);
    return true;
}

// Empties what lies outside the rectangle of the board.
void KeepRectangle(ShownBoard& board) {
    for (int x = 0; x < MAX_BOARD_X_DIM; ++x) {
        for (int y = 0; y < MAX_BOARD_Y_DIM; ++y) {
            if (x >= board.Columns || y >= board.Rows) {
                board.Spaces[x][y] = NO_STONE;
            }
        }
    }
}

void EndUpdate(ShownBoard& board) {
    board.Begun = false;
    const int columns = board.LastSpace.Column + 1;
    const int rows = board.LastSpace.Row + 1;
    board.Whole = board.NumSpaces > 0 && !board.OneStep && board.FirstSpace.Column == 0 &&
                  board.FirstSpace.Row == 0 && board.NumSpaces == columns * rows;
    if (board.Whole) {
        board.Columns = columns;
        board.Rows = rows;
        KeepRectangle(board);
    }
}

void BeginUpdate(ShownBoard& board) {
    board.Begun = true;
    board.Whole = false;
    board.Animated.reset();
    board.NumSpaces = 0;
    board.FirstSpace = board.LastSpace = {-1, -1};
}

bool TakeClearLine(ShownBoard& board, std::string_view text) {
    if (text.empty()) {
        board.Spaces = NoStones();
        board.Columns = board.Rows = 0;  // it is another Talurex
    }
    return text.empty();
}

bool TakeLine(ShownBoard& board, char kind, std::string_view text) {
    switch (kind) {
    case 'C':
        return TakeClearLine(board, text);
    case 'L':
        return ReadFromTo(text, board.Last);
    case 'N':
        return ReadFromTo(text, board.Next);
    case 'M':
        return TakeMoveLine(board, text);
    case 'S':
        return TakeSpaceLine(board, text);
    case 'T':
        return TakeStatusLine(board, text);
    default:
        return false;
    }
}

}  // namespace

SpaceArray NoStones() {
    SpaceArray spaces;
    for (auto& column : spaces) {
        column.fill(NO_STONE);
    }
    return spaces;
}

DisplayLine TakeDisplayLine(ShownBoard& board, std::string_view line) {
    if (line == "Q") {
        return DisplayLine::Farewell;
    }
    if (line.empty()) {
        return DisplayLine::Faulty;
    }
    if (!board.Begun) {
        BeginUpdate(board);
    }
    if (line == "D") {
        EndUpdate(board);
        return DisplayLine::Done;
    }
    return TakeLine(board, line.front(), line.substr(1)) ? DisplayLine::Taken : DisplayLine::Faulty;
}

#include "display/shown_board.h"

#include "support/numbers.h"

namespace {

constexpr Space NO_STONE = {.Height = 0, .Life = 0, .Owner = EMPTY};

// Reads as many decimal numbers as there is room for, each behind one blank, to the end of the
// line.
template <std::size_t Count>
bool ReadNumbers(std::string_view text, std::array<int, Count>& numbers) {
    for (int& number : numbers) {
        const bool isSingleBlank = text.starts_with(' ') && !text.starts_with("  ");
        const std::optional<int> read = isSingleBlank ? ScanInt(text) : std::nullopt;
        if (!read) {
            return false;
        }
        number = *read;
    }
    return text.empty();
}

bool IsInArray(Place place) {
    return place.Column >= 0 && place.Column < MAX_BOARD_X_DIM && place.Row >= 0 &&
           place.Row < MAX_BOARD_Y_DIM;
}

bool IsInArrayOrNowhere(Place place) {
    return IsInArray(place) || (place.Column == -1 && place.Row == -1);
}

// The step of an L, N or M line; nothing when it is faulty.
std::optional<FromTo> ReadStep(std::string_view text) {
    std::array<int, 4> n{};
    if (!ReadNumbers(text, n)) {
        return {};
    }
    return FromTo{{n[0], n[1]}, {n[2], n[3]}};
}

bool TakeHighlight(std::string_view text, FromTo& highlight) {
    const std::optional<FromTo> step = ReadStep(text);
    if (!step || !IsInArrayOrNowhere(step->Source) || !IsInArrayOrNowhere(step->Target)) {
        return false;
    }
    highlight = *step;
    return true;
}

// A tower that is not there, or would reach beyond the array, stays where it is: the board then
// belongs to another game than the move, which may name any numbers.
bool TakeAnimation(ShownBoard& board, std::string_view text) {
    const std::optional<FromTo> step = ReadStep(text);
    if (!step) {
        return false;
    }
    board.Animated = step;
    const auto [from, to] = *step;
    if (IsInArray(from) && IsInArray(to)) {
        Space& source = board.Spaces[from.Column][from.Row];
        Space& target = board.Spaces[to.Column][to.Row];
        const int height = source.Height + target.Height;
        if (source.Height != 0 && height <= MAX_BOARD_SPACES) {
            const Space tower = {
                .Height = height, .Life = source.Life | target.Life, .Owner = source.Owner};
            source = NO_STONE;
            target = tower;
        }
    }
    return true;
}

bool CanBe(const Space& space) {
    if (space.Owner == EMPTY) {
        return space == NO_STONE;
    }
    return space.Owner >= WHITE && space.Owner <= LIFE && space.Height >= 1 &&
           space.Height <= MAX_BOARD_SPACES && (space.Life == 0 || space.Life == 1);
}

bool TakeSpace(ShownBoard& board, std::string_view text) {
    std::array<int, 5> n{};
    if (!ReadNumbers(text, n)) {
        return false;
    }
    const Place place = {n[0], n[1]};
    const Space space = {.Height = n[2], .Life = n[4], .Owner = n[3]};
    if (!IsInArray(place) || !CanBe(space)) {
        return false;
    }
    board.Spaces[place.Column][place.Row] = space;
    board.LastSpace = place;
    board.NumSpaces = Min(board.NumSpaces + 1, MAX_BOARD_X_DIM * MAX_BOARD_Y_DIM + 1);
    return true;
}

// Takes the lead and the number behind it off the front of the text. Answers -1 when they are not
// there.
int TakeNumber(std::string_view& text, std::string_view lead) {
    if (!text.starts_with(lead)) {
        return -1;
    }
    text.remove_prefix(lead.size());
    return ScanInt(text).value_or(-1);
}

bool TakeStatus(ShownBoard& board, std::string_view text) {
    constexpr std::size_t MAX_STATUS_LENGTH = 200;
    const int moveNumber = TakeNumber(text, "Move (");
    const int lastMove = TakeNumber(text, "/");
    if (moveNumber < 0 || moveNumber > lastMove || lastMove >= GAME_RECORD_SIZE ||
        !text.starts_with(") ") || text.size() > MAX_STATUS_LENGTH) {
        return false;
    }
    board.OneStep = moveNumber == board.MoveNumber + 1;
    board.MoveNumber = moveNumber;
    board.LastMove = lastMove;
    board.Status = text.substr(2);
    return true;
}

// An update with spaces that was not one step forward has named the whole rectangle, the last space
// at its end.
void EndUpdate(ShownBoard& board) {
    board.Begun = false;
    const int columns = board.LastSpace.Column + 1;
    const int rows = board.LastSpace.Row + 1;
    if (board.OneStep || board.NumSpaces != columns * rows) {
        return;
    }
    board.Columns = columns;
    board.Rows = rows;
    for (int x = 0; x < MAX_BOARD_X_DIM; ++x) {
        for (int y = 0; y < MAX_BOARD_Y_DIM; ++y) {
            if (x >= board.Columns || y >= board.Rows) {
                board.Spaces[x][y] = NO_STONE;
            }
        }
    }
}

bool TakeLine(ShownBoard& board, std::string_view line) {
    const std::string_view text = line.substr(1);
    switch (line.front()) {
    case 'C':
        if (text.empty()) {
            board.Spaces = NoStones();
            board.Columns = board.Rows = 0;  // it is another Talurex
        }
        return text.empty();
    case 'L': return TakeHighlight(text, board.Last);
    case 'N': return TakeHighlight(text, board.Next);
    case 'M': return TakeAnimation(board, text);
    case 'S': return TakeSpace(board, text);
    case 'T': return TakeStatus(board, text);
    default: return false;
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
        board.Begun = true;
        board.Animated.reset();
        board.NumSpaces = 0;
    }
    if (line == "D") {
        EndUpdate(board);
        return DisplayLine::Done;
    }
    return TakeLine(board, line) ? DisplayLine::Taken : DisplayLine::Faulty;
}

#include "board/program_output.h"

#include <array>
#include <optional>
#include <utility>

#include "config/board_settings.h"
#include "support/numbers.h"

namespace {

// Longer lines are handed on in pieces.
constexpr std::size_t MAX_LINE_LENGTH = 2000;

constexpr std::string_view BOARD_COLORS = "\033[0m\033[30m\033[47m";
constexpr std::string_view HEADING_END = " is moving\033[47m";
constexpr std::string_view RESET = "\033[0m";

// The colours in front of a space, and what they tell of it. No row begins with another.
struct SpaceColors {
    std::string_view Colors;
    int Owner;
    int Life;
};
constexpr std::array<SpaceColors, 6> SPACE_COLORS = {{
    {"\033[1;37m", WHITE, 0},
    {"\033[1;33m", WHITE, 1},
    {"\033[0m\033[30m\033[47m", BLACK, 0},
    {"\033[1;34m", BLACK, 1},
    {"\033[1;31m", LIFE, 1},
    {"\033[1;32m\033[30m", EMPTY, 0},
}};

bool IsDigit(char c) {
    return c >= '0' && c <= '9';
}

// Steps past `expected` at the front of `text`. Answers false when it is not there.
bool Take(std::string_view& text, std::string_view expected) {
    if (!text.starts_with(expected)) {
        return false;
    }
    text.remove_prefix(expected.size());
    return true;
}

bool TakeBlanks(std::string_view& text, int count) {
    for (int i = 0; i < count; ++i) {
        if (!Take(text, " ")) {
            return false;
        }
    }
    return true;
}

// Reads height and mark, `length` characters. The mark may be any character, a digit among them.
bool TakeHeight(std::string_view& text, std::size_t length, int& height) {
    if (text.size() < length) {
        return false;
    }
    std::string_view digits = text.substr(0, length - 1);
    text.remove_prefix(length);
    if (digits.front() == ' ') {
        digits.remove_prefix(1);
    }
    height = 0;
    for (const char digit : digits) {
        if (!IsDigit(digit)) {
            return false;
        }
        height = 10 * height + (digit - '0');
    }
    return height <= MAX_BOARD_SPACES;
}

// How many characters height and mark take: three, and four from a height of 100 on. Behind them
// come a blank and the colours of the next space, or `rest` characters when it is the row's last.
std::size_t HeightLength(std::string_view text, std::optional<std::size_t> rest) {
    if (rest) {
        return text.size() > *rest ? text.size() - *rest : 0;
    }
    return text.substr(0, 6).ends_with(" \033[") ? 3 : 4;
}

bool TakeSpace(std::string_view& text, std::optional<std::size_t> rest, Space& space) {
    for (const SpaceColors& look : SPACE_COLORS) {
        if (Take(text, look.Colors)) {
            const std::size_t length = HeightLength(text, rest);
            space = {.Height = 0, .Life = look.Life, .Owner = look.Owner};
            return (length == 3 || length == 4) && TakeHeight(text, length, space.Height) &&
                   (space.Height == 0) == (space.Owner == EMPTY) && Take(text, " ");
        }
    }
    return false;
}

// Reads row `y` of a board whose size GlobCfg holds.
bool ReadRow(std::string_view text, int y, Position& position) {
    const int below = GlobCfg.BoardYDim - y - 1;
    // Behind a row the colours are set once more, and stand at the front of the next.
    if (y > 0 && !Take(text, BOARD_COLORS)) {
        return false;
    }
    if (!Take(text, BOARD_COLORS) || !Take(text, std::to_string(below + 1)) ||
        !TakeBlanks(text, 2 * y)) {
        return false;
    }
    const ColumnRange columns = BoardColumns(y);
    for (int x = 0; x < GlobCfg.BoardXDim; ++x) {
        std::optional<std::size_t> rest;
        if (x == columns.End - 1) {
            rest = static_cast<std::size_t>(1 + 4 * (GlobCfg.BoardXDim - 1 - x) + 2 * below + 1);
        }
        if (IsOnBoard(x, y) ? !TakeSpace(text, rest, position.Spaces[x][y])
                            : !TakeBlanks(text, 4)) {
            return false;
        }
    }
    return TakeBlanks(text, 2 * below + 1) && text.empty();
}

// The rule under the board is four characters for a column and two for a row. Answers 0 when it is
// none of a board of `rows` rows.
int ColumnsOfRule(std::string_view rule, int rows) {
    if (!Take(rule, BOARD_COLORS) || rule.find_first_not_of('-') != std::string_view::npos) {
        return 0;
    }
    const int length = static_cast<int>(rule.size()) - 2 * rows;
    return length % 4 == 0 && length / 4 <= MAX_BOARD_X_DIM ? Max(0, length / 4) : 0;
}

bool IsLetterLine(std::string_view line, int columns, int rows) {
    if (!TakeBlanks(line, 2 * (rows - 1) + 2)) {
        return false;
    }
    for (int x = 0; x < columns; ++x) {
        const char letter = static_cast<char>('A' + x);
        if (!TakeBlanks(line, 3) || !Take(line, std::string_view(&letter, 1))) {
            return false;
        }
    }
    return line == RESET;
}

// The number of rows that the first line below the heading announces; 0 when it is no row.
int RowsOfFirstLine(std::string_view line) {
    return Take(line, BOARD_COLORS) && !line.empty() && line[0] >= '1' && line[0] <= '9'
               ? line[0] - '0'
               : 0;
}

bool ReadHeading(std::string_view line, int& side) {
    side = line.starts_with("WHITE") ? WHITE : BLACK;
    return (Take(line, "WHITE") || Take(line, "BLACK")) && line == HEADING_END;
}

bool IsHeading(std::string_view line) {
    int side = 0;
    return ReadHeading(line, side);
}

bool ReadRows(const std::vector<std::string>& lines, Position& position) {
    for (int y = 0; y < GlobCfg.BoardYDim; ++y) {
        if (!ReadRow(lines[static_cast<std::size_t>(y) + 1], y, position)) {
            return false;
        }
    }
    return true;
}

// Text as a page may show it: without colours and without other control characters.
std::string Plain(std::string_view text) {
    std::string plain;
    while (!text.empty()) {
        if (Take(text, "\033[")) {
            // Parameters, and the letter that ends them.
            const std::size_t end = text.find_first_not_of("0123456789;");
            text.remove_prefix(end == std::string_view::npos ? text.size() : end + 1);
            continue;
        }
        const auto c = static_cast<unsigned char>(text.front());
        if (c == '\n' || c == '\t' || (c >= ' ' && c != 127)) {
            plain += text.front();
        }
        text.remove_prefix(1);
    }
    return plain;
}

bool TakeNumber(std::string_view& text, int& number) {
    if (text.empty() || !IsDigit(text.front())) {
        return false;
    }
    number = 0;
    while (!text.empty() && IsDigit(text.front()) && number <= 10000) {
        number = 10 * number + (text.front() - '0');
        text.remove_prefix(1);
    }
    return true;
}

bool ReadPrompt(std::string_view text, Prompt& prompt) {
    if (!Take(text, "Move (") || !TakeNumber(text, prompt.Move) || !Take(text, "/") ||
        !TakeNumber(text, prompt.LastMove) || !Take(text, "), ") || prompt.Move > prompt.LastMove) {
        return false;
    }
    prompt.Running = text == "your move: ";
    return prompt.Running || text == "game stopped: ";
}

void AddText(std::string_view text, std::vector<OutputPart>& parts) {
    if (!text.empty()) {
        parts.push_back({.Kind = OutputKind::Text, .Text = Plain(text), .Drawing = {}, .At = {}});
    }
}

void AddHeldBlank(OutputReader& reader, std::vector<OutputPart>& parts) {
    if (reader.Blank) {
        reader.Blank = false;
        AddText("\n", parts);
    }
}

// Gives up a drawing that turned out to be none.
void AddLinesAsText(OutputReader& reader, std::vector<OutputPart>& parts) {
    for (const std::string& line : reader.Drawn) {
        AddText(line + '\n', parts);
    }
    reader.Drawn.clear();
}

// Takes one more line of the drawing that has begun.
void TakeDrawnLine(OutputReader& reader, std::vector<OutputPart>& parts) {
    reader.Drawn.push_back(reader.Line);
    const int rows = RowsOfFirstLine(reader.Drawn[1]);
    if (rows != 0 && reader.Drawn.size() < static_cast<std::size_t>(rows) + 3) {
        return;
    }
    OutputPart part = {.Kind = OutputKind::Drawing, .Text = {}, .Drawing = {}, .At = {}};
    if (ReadDrawing(reader.Drawn, part.Drawing)) {
        parts.push_back(std::move(part));
        reader.Drawn.clear();
    } else {
        AddLinesAsText(reader, parts);
    }
}

void TakeLine(OutputReader& reader, std::vector<OutputPart>& parts) {
    if (!reader.Drawn.empty()) {
        TakeDrawnLine(reader, parts);
    } else if (IsHeading(reader.Line)) {
        reader.Blank = false;
        reader.Drawn.push_back(reader.Line);
    } else {
        AddHeldBlank(reader, parts);
        reader.Blank = reader.Line.empty();
        if (!reader.Blank) {
            AddText(reader.Line + '\n', parts);
        }
    }
    reader.Line.clear();
}

void TakePrompt(OutputReader& reader, std::vector<OutputPart>& parts) {
    const std::size_t begin = reader.Line.rfind("Move (");
    if (begin == std::string::npos || !reader.Drawn.empty()) {
        return;
    }
    OutputPart part = {.Kind = OutputKind::Prompt, .Text = {}, .Drawing = {}, .At = {}};
    part.Text = reader.Line.substr(begin);
    if (ReadPrompt(part.Text, part.At)) {
        AddHeldBlank(reader, parts);
        AddText(std::string_view(reader.Line).substr(0, begin), parts);
        parts.push_back(std::move(part));
        reader.Line.clear();
    }
}

}  // namespace

std::vector<OutputPart> ReadOutput(OutputReader& reader, std::string_view bytes) {
    std::vector<OutputPart> parts;
    for (const char c : bytes) {
        if (c == '\n') {
            TakeLine(reader, parts);
            continue;
        }
        reader.Line += c;
        if (reader.Line.size() > MAX_LINE_LENGTH) {
            AddLinesAsText(reader, parts);
            AddHeldBlank(reader, parts);
            AddText(reader.Line, parts);
            reader.Line.clear();
        }
    }
    TakePrompt(reader, parts);
    return parts;
}

bool ReadDrawing(const std::vector<std::string>& lines, BoardDrawing& drawing) {
    BoardDrawing read;
    if (lines.size() < 4 || !ReadHeading(lines[0], read.Board.ActivePlayer)) {
        return false;
    }
    read.Rows = RowsOfFirstLine(lines[1]);
    if (read.Rows == 0 || lines.size() != static_cast<std::size_t>(read.Rows) + 3) {
        return false;
    }
    read.Columns = ColumnsOfRule(lines[lines.size() - 2], read.Rows);
    if (read.Columns == 0 || !IsLetterLine(lines.back(), read.Columns, read.Rows)) {
        return false;
    }
    for (auto& column : read.Board.Spaces) {
        column.fill({.Height = 0, .Life = 0, .Owner = EMPTY});
    }
    const BoardSettingsGuard guard;
    SetBoardSettings({read.Columns, read.Rows, GlobCfg.NumLifeStones});
    if (!ReadRows(lines, read.Board)) {
        return false;
    }
    drawing = read;
    return true;
}

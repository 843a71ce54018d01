#include "common/board_text.h"

#include <fstream>

#include "rules/setup.h"
#include "support/fatal.h"
#include "support/numbers.h"
#include "support/text.h"

namespace {

std::string_view TakeField(std::string_view& text, char separator) {
    const std::size_t end = text.find(separator);
    const std::string_view field = text.substr(0, end);
    text = end == std::string_view::npos ? std::string_view() : text.substr(end + 1);
    return field;
}

bool ReadSpace(std::string_view word, bool onBoard, Space& space) {
    space = SpaceWith(EMPTY);
    if (word == "-" || word == ".") {
        return onBoard == (word == ".");
    }
    if (word == "r") {
        space = SpaceWith(LIFE);
        return onBoard;
    }
    if (word.empty() || (word.front() != 'w' && word.front() != 'b')) {
        return false;
    }
    space.Owner = word.front() == 'w' ? WHITE : BLACK;
    word.remove_prefix(1);
    space.Height = ScanInt(word).value_or(0);
    space.Life = word == "*" ? 1 : 0;
    return onBoard && space.Height > 0 && (word.empty() || space.Life == 1);
}

bool ReadRow(std::string_view text, int y, Position& position) {
    for (int x = 0; x < GlobCfg.BoardXDim; ++x) {
        const std::string_view word = ScanWord(text);
        if (!ReadSpace(word, IsOnBoard(x, y), position.Spaces[x][y])) {
            return false;
        }
    }
    return ReadWord(text).empty();
}

bool ReadHead(std::string_view text, BoardText& board) {
    board.Name = ScanWord(text);
    board.BoardXDim = ReadInt(ScanWord(text)).value_or(0);
    board.BoardYDim = ReadInt(ScanWord(text)).value_or(0);
    const std::string_view side = ScanWord(text);
    ResetAllButSpaces(board.Board);
    board.Board.ActivePlayer = side == "black" ? BLACK : WHITE;
    return board.BoardXDim >= 1 && board.BoardXDim <= MAX_BOARD_X_DIM && board.BoardYDim >= 1 &&
           board.BoardYDim <= MAX_BOARD_Y_DIM && (side == "white" || side == "black") &&
           ScanWord(text).empty();
}

// The rows are checked against the shape of the board, which is that of the current size.
bool ReadRows(std::string_view text, BoardText& board) {
    const int oldXDim = GlobCfg.BoardXDim;
    const int oldYDim = GlobCfg.BoardYDim;
    GlobCfg.BoardXDim = board.BoardXDim;
    GlobCfg.BoardYDim = board.BoardYDim;
    bool good = true;
    for (int y = 0; y < board.BoardYDim; ++y) {
        good = good && ReadRow(TakeField(text, ';'), y, board.Board);
    }
    GlobCfg.BoardXDim = oldXDim;
    GlobCfg.BoardYDim = oldYDim;
    return good && text.empty();
}

std::string SpaceText(const Space& space) {
    if (space.Owner == EMPTY) {
        return ".";
    }
    if (space.Owner == LIFE) {
        return "r";
    }
    std::string text(1, space.Owner == WHITE ? 'w' : 'b');
    text += std::to_string(space.Height);
    return space.Life == 1 ? text + '*' : text;
}

}  // namespace

BoardText ReadBoardText(std::string_view line) {
    BoardText board;
    std::string_view text = line;
    const std::string_view head = TakeField(text, ':');
    const std::string_view rows = TakeField(text, ':');
    if (!ReadHead(head, board) || !ReadRows(rows, board)) {
        ErrorExit("ReadBoardText: Error: %s\n", std::string(line).c_str());
    }
    board.Rest = text;
    EatLeadingAndTrailingWhitespace(board.Rest);
    return board;
}

std::vector<BoardText> ReadBoardFile(const std::string& path) {
    std::ifstream file(path);
    if (!file) {
        ErrorExit("ReadBoardFile: Error: cannot read %s\n", path.c_str());
    }
    std::vector<BoardText> boards;
    for (std::string line; std::getline(file, line);) {
        if (!ReadWord(line).empty() && !line.starts_with('#')) {
            boards.push_back(ReadBoardText(line));
        }
    }
    return boards;
}

std::string WriteBoardText(std::string_view name, const Position& position) {
    std::string text(name);
    text += ' ' + std::to_string(GlobCfg.BoardXDim) + ' ' + std::to_string(GlobCfg.BoardYDim);
    text += position.ActivePlayer == WHITE ? " white :" : " black :";
    for (int y = 0; y < GlobCfg.BoardYDim; ++y) {
        text += y == 0 ? "" : ";";
        for (int x = 0; x < GlobCfg.BoardXDim; ++x) {
            text += ' ' + (IsOnBoard(x, y) ? SpaceText(position.Spaces[x][y]) : "-");
        }
    }
    return text;
}

void UseBoard(const BoardText& board) {
    UseBoard(board.BoardXDim, board.BoardYDim);
}

void UseBoard(int columns, int rows) {
    SetDefaultConfiguration();
    GlobCfg.BoardXDim = columns;
    GlobCfg.BoardYDim = rows;
}

#include "gamefiles/saved_game.h"

#include <array>
#include <cstdio>
#include <memory>
#include <new>
#include <optional>

#include "config/board_settings.h"
#include "gamefiles/line_reader.h"
#include "rules/notation.h"
#include "rules/referee.h"
#include "rules/setup.h"
#include "support/files.h"
#include "support/numbers.h"
#include "support/output.h"
#include "support/text.h"

namespace {

// A saved game being read: its file, what is left of the current line, and the game so far.
// Functions that answer false have found an error, and have said what it is where that is more than
// the end of the file. Nothing more is then read.
struct SavedGame {
    std::FILE* File = nullptr;
    std::string Line;
    GameRecord Record;  // LastMove grows as it is read
};

Position& Current(SavedGame& game) {
    return game.Record.PositionList[game.Record.LastMove];
}

bool ReadLine(SavedGame& game) {
    return GetNextGoodLine(game.File, game.Line) == 0;
}

// Reads "DIM(x,y,l)".
bool ReadDimensions(std::string_view line, BoardSettings& settings) {
    std::array<int, 3> values{};
    constexpr std::array<std::string_view, 3> LEADS = {"DIM(", ",", ","};
    for (std::size_t i = 0; i < values.size(); ++i) {
        std::optional<int> number;
        if (line.starts_with(LEADS[i])) {
            line.remove_prefix(LEADS[i].size());
            number = ScanInt(line);
        }
        if (!number) {
            PrintRefusal("Error! DIM-Line must have Format: DIM(x,y,l)\n");
            return false;
        }
        values[i] = *number;
    }
    settings = {values[0], values[1], values[2]};
    if (!IsBoardSize(settings.XDim, settings.YDim) || settings.LifeStones < 1) {
        PrintRefusal("Error! DIM-Line values are out of range!\n");
        return false;
    }
    return true;
}

// Reads the first line, and the next when it names the board.
bool ReadSettings(SavedGame& game) {
    BoardSettings settings = DEFAULT_BOARD;
    if (!ReadLine(game)) {
        return false;
    }
    if (game.Line.starts_with("DIM") && !(ReadDimensions(game.Line, settings) && ReadLine(game))) {
        return false;
    }
    SetBoardSettings(settings);
    return true;
}

bool ReadBoardRow(SavedGame& game, int y) {
    if (!game.Line.starts_with(':')) {
        PrintRefusal("Error: Random Setup line %i does not start with a ':'!\n", y + 1);
        return false;
    }
    game.Line.erase(0, 1);
    EatLeadingAndTrailingWhitespace(game.Line);
    const ColumnRange columns = BoardColumns(y);
    for (int x = columns.First; x < columns.End; ++x) {
        const int stone = TakeStone(game.Line, SAVED_STONE_SIGNS);
        if (stone < 0) {
            PrintRefusal("Error: Reading Setup position (%i,%i) failed!\n", x + 1, RowNumber(y));
            return false;
        }
        Current(game).Spaces[x][y] = SpaceWith(stone);
    }
    return true;
}

// Reads the drawing of a random start position.
bool ReadStartPosition(SavedGame& game) {
    ResetAllButSpaces(Current(game));
    for (int y = 0; y < GlobCfg.BoardYDim; ++y) {
        if (!ReadBoardRow(game, y)) {
            return false;
        }
        // Behind a drawing that is the end of its game there need not be a line.
        const bool lastRow = y == GlobCfg.BoardYDim - 1;
        if (!(lastRow && IsEndPosition(Current(game))) && !ReadLine(game)) {
            return false;
        }
    }
    return true;
}

// Parses the ply at the front of the line and checks it against the current position. The messages
// speak of the setup in both phases.
bool ParsePly(SavedGame& game, Notation notation, Move& move) {
    int distance = 0;
    const int number = game.Record.LastMove + 1;
    if (GetPlayerMove(game.Line, notation, move, distance) != 0) {
        PrintRefusal("Error in savegame file: (setup move number %i is no move!\n", number);
        return false;
    }
    if (!MoveIsOk(Current(game), move, distance)) {
        PrintRefusal("Error in savegame file: (setup move number %i is not correct!\n", number);
        return false;
    }
    return true;
}

bool CheckPass(SavedGame& game) {
    if (GetNumMoves(Current(game)) == 0) {
        return true;
    }
    PrintRefusal("Error in savegame file: Illegal PASS move in move %i\n",
                 game.Record.LastMove + 1);
    return false;
}

// Plays the ply at the front of the line.
bool PlayPly(SavedGame& game) {
    const Position& position = Current(game);
    Position& next = game.Record.PositionList[game.Record.LastMove + 1];
    Move& move = game.Record.MoveList[game.Record.LastMove];
    if (position.SetupPhase != 0) {
        if (!ParsePly(game, Notation::Placement, move)) {
            return false;
        }
        DoSetupMove(position, move, next);
    } else if (game.Line.starts_with("PASS")) {
        if (!CheckPass(game)) {
            return false;
        }
        DoPass(position, next);
    } else {
        if (!ParsePly(game, Notation::TowerMove, move)) {
            return false;
        }
        DoMove(position, move, next);
    }
    ++game.Record.LastMove;
    return true;
}

// Goes on to the ply behind the one just played: the next word of the line, or the next line when
// WHITE is to move. A game that is over needs neither.
bool StepToNextPly(SavedGame& game) {
    if (Current(game).ActivePlayer != WHITE) {
        DelFirstWord(game.Line);
        return true;
    }
    return IsEndPosition(Current(game)) || ReadLine(game);
}

// Plays the game up to its end or to the line that breaks it off.
bool ReadPlies(SavedGame& game) {
    while (!IsEndPosition(Current(game)) && !game.Line.starts_with("BREAK")) {
        if (!CheckRecordRoom(game.Record.LastMove) || !PlayPly(game) || !StepToNextPly(game)) {
            return false;
        }
    }
    return true;
}

bool ReadGame(SavedGame& game) {
    if (!ReadSettings(game)) {
        return false;
    }
    GenerateEmptyStartPosition(Current(game));
    if (game.Line.starts_with(':') && !ReadStartPosition(game)) {
        return false;
    }
    return ReadPlies(game);
}

}  // namespace

int LoadGame(const std::string& fileName, GameRecord& record) {
    std::FILE* file = nullptr;
    if (FileOpenToRead(fileName, file) != 0) {
        PrintRefusal("Error! Savegame file \"%s\" could not be opened for reading!\n",
                     fileName.c_str());
        return 1;
    }
    return LoadGame(file, record);
}

int LoadGame(std::FILE* file, GameRecord& record) {
    OwnedFile owned(file);
    // Not on the stack, of which there may be little.
    const std::unique_ptr<SavedGame> reading(new (std::nothrow) SavedGame);
    if (reading == nullptr) {
        return 1;
    }
    SavedGame& game = *reading;
    game.File = file;
    BoardSettingsGuard settings;
    const bool complete = ReadGame(game);
    FileClose(owned.release());
    if (!complete) {
        return 1;
    }
    settings.Keep();
    record = game.Record;
    return 0;
}

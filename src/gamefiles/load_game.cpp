#include "gamefiles/saved_game.h"

#include <array>
#include <cstdio>
#include <optional>

#include "config/board_settings.h"
#include "gamefiles/line_reader.h"
#include "rules/notation.h"
#include "rules/referee.h"
#include "rules/setup.h"
#include "support/files.h"
#include "support/numbers.h"
#include "support/text.h"

namespace {

// A saved game being read. Once an error is noted, nothing more is read from the file.
struct Reader {
    std::FILE* File = nullptr;
    std::string Line;  // what is left of the current line
    bool Error = false;
    bool Break = false;  // the line that ends an unfinished game was seen
    int Ply = 0;         // number of the last position so far
    GameRecord Record;
};

Position& Current(Reader& reader) {
    return reader.Record.PositionList[reader.Ply];
}

void ReadLine(Reader& reader) {
    if (GetNextGoodLine(reader.File, reader.Line) != 0) {
        reader.Error = true;
    }
}

// Reads "DIM(x,y,l)". Answers false after saying what is wrong with it.
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
            std::printf("Error! DIM-Line must have Format: DIM(x,y,l)\n");
            return false;
        }
        values[i] = *number;
    }
    settings = {values[0], values[1], values[2]};
    if (settings.XDim < 1 || settings.XDim > MAX_BOARD_X_DIM || settings.YDim < 1 ||
        settings.YDim > MAX_BOARD_Y_DIM || settings.LifeStones < 1) {
        std::printf("Error! DIM-Line values are out of range!\n");
        return false;
    }
    return true;
}

// Reads the first line, and the next when it names the board.
void ReadSettings(Reader& reader) {
    BoardSettings settings = DEFAULT_BOARD;
    ReadLine(reader);
    if (!reader.Error && reader.Line.starts_with("DIM")) {
        if (!ReadDimensions(reader.Line, settings)) {
            reader.Error = true;
            return;
        }
        ReadLine(reader);
    }
    SetBoardSettings(settings);
}

void ReadBoardRow(Reader& reader, int y) {
    if (!reader.Line.starts_with(':')) {
        std::printf("Error: Random Setup line %i does not start with a ':'!\n", y + 1);
        reader.Error = true;
        return;
    }
    reader.Line.erase(0, 1);
    EatLeadingAndTrailingWhitespace(reader.Line);
    const ColumnRange columns = BoardColumns(y);
    for (int x = columns.First; x < columns.End; ++x) {
        const int stone = TakeStone(reader.Line, SAVED_STONE_SIGNS);
        if (stone < 0) {
            std::printf("Error: Reading Setup position (%i,%i) failed!\n", x + 1, RowNumber(y));
            reader.Error = true;
            return;
        }
        Current(reader).Spaces[x][y] = SpaceWith(stone);
    }
}

// Reads the drawing of a random start position.
void ReadStartPosition(Reader& reader) {
    ResetAllButSpaces(Current(reader));
    for (int y = 0; y < GlobCfg.BoardYDim && !reader.Error; ++y) {
        ReadBoardRow(reader, y);
        // Behind a drawing that is the end of its game there need not be a line.
        const bool lastRow = y == GlobCfg.BoardYDim - 1;
        if (!reader.Error && !(lastRow && IsEndPosition(Current(reader)))) {
            ReadLine(reader);
        }
    }
}

// Parses the ply at the front of the line and checks it against the current position. Answers false
// after saying what is wrong. The messages speak of the setup in both phases.
bool ReadPly(Reader& reader, Notation notation, Move& move) {
    int distance = 0;
    if (GetPlayerMove(reader.Line, notation, move, distance) != 0) {
        std::printf("Error in savegame file: (setup move number %i is no move!\n", reader.Ply + 1);
        return false;
    }
    if (!MoveIsOk(Current(reader), move, distance)) {
        std::printf("Error in savegame file: (setup move number %i is not correct!\n",
                    reader.Ply + 1);
        return false;
    }
    return true;
}

// Goes on to the ply behind the one just read: the next word of the line, or the next line when
// WHITE is to move. A game that is over needs neither.
void StepToNextPly(Reader& reader) {
    ++reader.Ply;
    if (Current(reader).ActivePlayer != WHITE) {
        DelFirstWord(reader.Line);
    } else if (!IsEndPosition(Current(reader))) {
        ReadLine(reader);
    }
}

void ReadPlacement(Reader& reader) {
    Move& move = reader.Record.MoveList[reader.Ply];
    if (!ReadPly(reader, Notation::Placement, move)) {
        reader.Error = true;
        return;
    }
    DoSetupMove(Current(reader), move, reader.Record.PositionList[reader.Ply + 1]);
    StepToNextPly(reader);
}

void ReadPass(Reader& reader) {
    if (GetNumMoves(Current(reader)) != 0) {
        std::printf("Error in savegame file: Illegal PASS move in move %i\n", reader.Ply + 1);
        reader.Error = true;
        return;
    }
    DoPass(Current(reader), reader.Record.PositionList[reader.Ply + 1]);
    StepToNextPly(reader);
}

void ReadTowerMove(Reader& reader) {
    Move& move = reader.Record.MoveList[reader.Ply];
    if (!ReadPly(reader, Notation::TowerMove, move)) {
        reader.Error = true;
        return;
    }
    DoMove(Current(reader), move, reader.Record.PositionList[reader.Ply + 1]);
    StepToNextPly(reader);
}

// Reads one ply of the current phase, or the line that breaks off the game.
void ReadPlyOrBreak(Reader& reader) {
    if (reader.Line.starts_with("BREAK")) {
        reader.Break = true;
    } else if (!CheckRecordRoom(reader.Ply)) {
        reader.Error = true;
    } else if (Current(reader).SetupPhase != 0) {
        ReadPlacement(reader);
    } else if (reader.Line.starts_with("PASS")) {
        ReadPass(reader);
    } else {
        ReadTowerMove(reader);
    }
}

void ReadGame(Reader& reader) {
    ReadSettings(reader);
    if (reader.Error) {
        return;
    }
    GenerateEmptyStartPosition(Current(reader));
    if (reader.Line.starts_with(':')) {
        ReadStartPosition(reader);
    }
    while (!reader.Error && !reader.Break && !IsEndPosition(Current(reader))) {
        ReadPlyOrBreak(reader);
    }
}

}  // namespace

int LoadGame(const std::string& fileName, GameRecord& record) {
    Reader reader;
    if (FileOpenToRead(fileName, reader.File) != 0) {
        std::printf("Error! Savegame file \"%s\" could not be opened for reading!\n",
                    fileName.c_str());
        return 1;
    }
    const BoardSettings before = GetBoardSettings();
    ReadGame(reader);
    FileClose(reader.File);
    if (reader.Error) {
        SetBoardSettings(before);
        return 1;
    }
    reader.Record.LastMove = reader.Ply;
    record = reader.Record;
    return 0;
}

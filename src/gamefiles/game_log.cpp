#include "gamefiles/game_log.h"

#include <cstdio>
#include <memory>
#include <new>

#include "gamefiles/line_reader.h"
#include "rules/referee.h"
#include "rules/setup.h"
#include "support/files.h"
#include "support/output.h"

namespace {

// The characters of WHITE, BLACK, LIFE and EMPTY in the drawing of a start position.
constexpr std::string_view STONE_SIGNS = "1230";

// Lines between the last placement and the first move that say nothing of interest.
constexpr int NUM_UNREAD_LINES = 5;

// A log being read: its current line and the game so far.
struct Log {
    std::FILE* File = nullptr;
    std::string Line;
    GameRecord Record;  // LastMove grows as it is read
};

Position& Current(Log& log) {
    return log.Record.PositionList[log.Record.LastMove];
}

bool ReadLine(Log& log) {
    if (GetNextGoodLine(log.File, log.Line) == 0) {
        return true;
    }
    PrintRefusal("Error: Unexpected end of import file!\n");
    return false;
}

bool CheckLineLength(const Log& log, std::size_t length) {
    if (log.Line.size() >= length) {
        return true;
    }
    PrintRefusal("Error in Import file: line too short! (move %i)\n", log.Record.LastMove + 1);
    return false;
}

// The space whose row digit stands at `index` of the line and whose column letter behind it, on the
// board or not: character codes are 0 to 255.
Place PlaceAt(const Log& log, std::size_t index) {
    const int digit = static_cast<unsigned char>(log.Line[index]);
    const int letter = static_cast<unsigned char>(log.Line[index + 1]);
    return {letter - 'A', '0' + GlobCfg.BoardYDim - digit};
}

// Reads the placements; the first stands in the current line.
bool ReadPlacements(Log& log) {
    int& k = log.Record.LastMove;
    while (Current(log).SetupPhase != 0) {
        if (!CheckRecordRoom(k) || (k > 0 && !ReadLine(log)) || !CheckLineLength(log, 4)) {
            return false;
        }
        const Place place = PlaceAt(log, 2);
        Move& move = log.Record.MoveList[k];
        move.Column = place.Column;
        move.Row = place.Row;
        if (!MoveIsOk(Current(log), move, 0)) {
            PrintRefusal("Error in Import file: (setup move number %i is not correct!\n", k + 1);
            return false;
        }
        DoSetupMove(Current(log), move, log.Record.PositionList[k + 1]);
        ++k;
    }
    for (int i = 0; i < NUM_UNREAD_LINES; ++i) {
        if (!ReadLine(log)) {
            return false;
        }
    }
    return true;
}

// Reads the drawing of a start position; its first row stands in the current line.
bool ReadStartPosition(Log& log) {
    for (int y = 0; y < GlobCfg.BoardYDim; ++y) {
        if (y > 0 && !ReadLine(log)) {
            return false;
        }
        const ColumnRange columns = BoardColumns(y);
        for (int x = columns.First; x < columns.End; ++x) {
            const int stone = TakeStone(log.Line, STONE_SIGNS);
            if (stone < 0) {
                PrintRefusal("Illegal char in import file!\n");
                return false;
            }
            Current(log).Spaces[x][y] = SpaceWith(stone);
        }
    }
    ResetAllButSpaces(Current(log));
    return true;
}

// Reads one tower move from the next line and makes it.
bool ReadMove(Log& log) {
    int& k = log.Record.LastMove;
    if (!ReadLine(log) || !CheckLineLength(log, 5)) {
        return false;
    }
    const Place source = PlaceAt(log, 0);
    const Place target = PlaceAt(log, 3);
    Way way;
    if (!FindWay(target.Column - source.Column, target.Row - source.Row, way)) {
        PrintRefusal("Illegal move in import file (move %i)!\n", k + 1);
        return false;
    }
    Move& move = log.Record.MoveList[k];
    move.Column = source.Column;
    move.Row = source.Row;
    move.Direction = way.Direction;
    if (!MoveIsOk(Current(log), move, way.Distance)) {
        PrintRefusal("Error in Import file: (move number %i is not correct!)\n", k + 1);
        return false;
    }
    DoMove(Current(log), move, log.Record.PositionList[k + 1]);
    ++k;
    return true;
}

// Plays the game to its end. The log does not tell when a side had to pass.
bool ReadMoves(Log& log) {
    int& k = log.Record.LastMove;
    while (!IsEndPosition(Current(log))) {
        if (!CheckRecordRoom(k)) {
            return false;
        }
        if (GetNumMoves(Current(log)) == 0) {
            DoPass(Current(log), log.Record.PositionList[k + 1]);
            ++k;
        } else if (!ReadMove(log)) {
            return false;
        }
    }
    return true;
}

bool ReadLog(Log& log) {
    if (!ReadLine(log)) {
        return false;
    }
    GenerateEmptyStartPosition(Current(log));
    const bool withSetup = log.Line.starts_with("3:");
    return (withSetup ? ReadPlacements(log) : ReadStartPosition(log)) && ReadMoves(log);
}

}  // namespace

int ImportGame(const std::string& fileName, GameRecord& record) {
    // Not on the stack, of which there may be little; without memory no file can be read either.
    const std::unique_ptr<Log> reading(new (std::nothrow) Log);
    if (reading == nullptr) {
        return 1;
    }
    Log& log = *reading;
    if (FileOpenToRead(fileName, log.File) != 0) {
        PrintRefusal("Error: Import file \"%s\" could not be opened!\n", fileName.c_str());
        return 1;
    }
    OwnedFile file(log.File);
    const bool complete = ReadLog(log);
    FileClose(file.release());
    if (!complete) {
        return 1;
    }
    record = log.Record;
    return 0;
}

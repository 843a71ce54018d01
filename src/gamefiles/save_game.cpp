#include "gamefiles/saved_game.h"

#include <array>
#include <cstdio>
#include <cstdlib>

#include "config/board_settings.h"
#include "rules/notation.h"
#include "rules/referee.h"
#include "rules/setup.h"
#include "support/file_replace.h"
#include "support/files.h"
#include "support/output.h"

namespace {

// The settings that the start of this game needs when it is loaded again. The number of life stones
// may have been changed since for the next game; a game that began with the normal setup carries
// its own in the counter of its start position.
BoardSettings SettingsOf(const GameRecord& record) {
    BoardSettings settings = GetBoardSettings();
    const int counter = record.PositionList[0].SetupPhase;
    if (counter != 0) {
        settings.LifeStones = LifeStonesOfCounter(counter);
    }
    return settings;
}

std::string DimensionLine(const BoardSettings& settings) {
    if (settings == DEFAULT_BOARD) {
        return "";
    }
    return "DIM(" + std::to_string(settings.XDim) + "," + std::to_string(settings.YDim) + "," +
           std::to_string(settings.LifeStones) + ")\n";
}

// The board as lines, each behind `prefix`, indented to the shape of the hexagon.
std::string BoardDrawing(const Position& position, const char* prefix) {
    std::string text;
    for (int y = 0; y < GlobCfg.BoardYDim; ++y) {
        text += prefix;
        text.append(static_cast<std::size_t>(std::abs(GlobCfg.BoardYDim / 2 - y)), ' ');
        const ColumnRange columns = BoardColumns(y);
        for (int x = columns.First; x < columns.End; ++x) {
            const int owner = position.Spaces[x][y].Owner;
            if (owner < WHITE || owner > EMPTY) {
                PrintError("Error: Position data is faulty !\n");
                continue;
            }
            text += SAVED_STONE_SIGNS[owner];
            text += ' ';
        }
        text += '\n';
    }
    return text;
}

// Lines of two plies: WHITE's is held back until the other is known, or until there is none.
struct PlyLines {
    std::string Text;
    std::string Held;

    void Add(const std::string& ply, bool isWhites) {
        if (isWhites) {
            Held = ply;
        } else {
            Text += Held + "  " + ply + '\n';
            Held.clear();
        }
    }

    // Answers whether a ply was waiting for the other one.
    bool EndWith(const char* ending) {
        const bool held = !Held.empty();
        if (held) {
            Text += Held + ending;
        }
        Held.clear();
        return held;
    }
};

// The placements, two to a line; `k` becomes the number of the position behind them.
std::string PlacementLines(const GameRecord& record, int& k) {
    PlyLines lines;
    for (; record.PositionList[k].SetupPhase != 0 && k < record.LastMove; ++k) {
        lines.Add(GetMoveString(record.MoveList[k], record.PositionList[k]), k % 2 == 0);
    }
    lines.EndWith(record.PositionList[k].SetupPhase != 0 ? " BREAK\n" : "\n");
    return lines.Text;
}

// The plies of the move phase from position `k` on, two to a line, and how the game stands behind
// them.
std::string MoveLines(const GameRecord& record, int k) {
    PlyLines lines;
    for (; k < record.LastMove && !IsEndPosition(record.PositionList[k]); ++k) {
        const Position& position = record.PositionList[k];
        lines.Add(GetMoveString(record.MoveList[k], position), position.ActivePlayer == WHITE);
    }
    int white = 0;
    int black = 0;
    if (GetScore(record.PositionList[k], white, black)) {
        if (!lines.EndWith(" BREAK\n")) {
            lines.Text += "BREAK\n";
        }
        return lines.Text;
    }
    lines.EndWith("\n");
    std::array<char, 40> score{};
    std::snprintf(score.data(), score.size(), "# %2i  : %2i\n", white, black);
    return lines.Text + score.data();
}

}  // namespace

std::string SavedGameText(const GameRecord& record) {
    const bool normalSetup = record.PositionList[0].SetupPhase != 0;
    std::string text = DimensionLine(SettingsOf(record));
    text += "# White : -\n"
            "# Black : -\n"
            "# Date  : -\n"
            "#\n"
            "# phase 1:\n";
    int k = 0;
    text += PlacementLines(record, k);
    text += "# Setup:\n";
    text += BoardDrawing(record.PositionList[k], normalSetup ? "# " : ": ");
    text += "# \n";
    if (record.LastMove > k) {
        text += "# phase 2:\n";
    }
    return text + MoveLines(record, k);
}

int SaveGame(const GameRecord& record, const std::string& fileName) {
    switch (FileReplace(fileName, SavedGameText(record))) {
    case FileReplaced::Done: return 0;
    case FileReplaced::NotOpened:
        PrintFileOpenError(fileName, FILE_WRITE_MODE);
        PrintRefusal("Error! Savegame file \"%s\" could not be opened for writing!\n",
                     fileName.c_str());
        return 1;
    case FileReplaced::NotWritten: return 1;
    }
    return 1;
}

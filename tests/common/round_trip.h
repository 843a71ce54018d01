// Saved games written, loaded back and written again.
#pragma once

#include <memory>
#include <string>

#include "common/random_games.h"
#include "common/scratch_folder.h"
#include "gamefiles/saved_game.h"

// Saves the game as the file `path` and loads it back under other settings. Answers what is wrong
// then, or an empty text. The settings are left as those that were loaded. The text is written
// without SaveGame's wait for the disk: there are thousands of games.
inline std::string RoundTripFault(const GameRecord& record, const std::string& path) {
    const BoardSettings before = GetBoardSettings();
    const std::string text = SavedGameText(record);
    WriteFile(path, text);
    static const auto loaded = std::make_unique<GameRecord>();
    SetBoardSettings({6, 2, 1});
    if (LoadGame(path, *loaded) != 0) {
        return "does not load:\n" + text;
    }
    const BoardSettings after = GetBoardSettings();
    if (after.XDim != before.XDim || after.YDim != before.YDim) {
        return "loads with another board:\n" + text;
    }
    if (FirstDifference(record, *loaded) != -1) {
        return "loads as another game:\n" + text;
    }
    return SavedGameText(*loaded) == text ? "" : "is then saved as another text:\n" + text;
}

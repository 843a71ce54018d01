#include "control/file_commands.h"

#include <filesystem>

#include "config/board_settings.h"
#include "control/help.h"
#include "display/terminal_board.h"
#include "gamefiles/game_log.h"
#include "gamefiles/saved_game.h"
#include "rules/notation.h"
#include "support/output.h"
#include "support/text.h"

namespace {

constexpr const char* DEFAULT_GAME_NAME = "quicksave.tlx";
constexpr const char* GAME_EXTENSION = ".tlx";

// What went into a pipe or came out of one is in no file.
bool IsFile(const std::string& name) {
    std::error_code unknown;
    return std::filesystem::is_regular_file(name, unknown);
}

// Goes to the end of a game that has just been taken over.
void ShowLastPosition(PlayState& state) {
    state.CurrentMove = state.Record.LastMove;
    state.SearchDepth = 0;
    PrintPosition(state.Record.PositionList[state.CurrentMove]);
    PrintScore(state.Record.PositionList[state.CurrentMove]);
}

}  // namespace

std::string GameFileName(const std::string& argument) {
    std::string name(ReadWord(argument));
    if (name.empty()) {
        name = DEFAULT_GAME_NAME;
    }
    AddExtensionToString(name, GAME_EXTENSION);
    return name;
}

void DoLoad(const std::string& argument, PlayState& state) {
    if (GlobCfg.GameRunFlag == 1) {
        PrintRefusal("A game is running! Stop it before loading a game!\n");
        return;
    }
    const std::string name = GameFileName(argument);
    Print("Loading game from file: \"%s\"!\n", name.c_str());
    if (LoadGame(name, state.Record) != 0) {
        PrintRefusal("Loading game failed!\n");
        return;
    }
    Print("loading game was successful.\n");
    state.HasNewPlies = !IsFile(name);
    state.InFile = state.HasNewPlies ? "" : name;
    ShowLastPosition(state);
}

void DoSave(const std::string& argument, PlayState& state) {
    const std::string name = GameFileName(argument);
    Print("Saving current game in file: \"%s\"!\n", name.c_str());
    if (SaveGame(state.Record, name) != 0) {
        PrintRefusal("Saving game failed!\n");
        return;
    }
    Print("Saving game was successful.\n");
    if (IsFile(name)) {
        state.HasNewPlies = false;
        state.InFile = name;
    }
}

void DoImport(const std::string& argument, PlayState& state) {
    if (GlobCfg.GameRunFlag == 1) {
        PrintRefusal("A game is running! Stop it before importing a game!\n");
        return;
    }
    if (argument.empty()) {
        PrintUsageError(COMMAND_IMPORT);
        return;
    }
    BoardSettingsGuard settings;
    SetBoardSettings(DEFAULT_BOARD);
    if (ImportGame(argument, state.Record) != 0) {
        PrintRefusal("Importing game from file \"%s\" failed!\n", argument.c_str());
        return;
    }
    settings.Keep();
    state.HasNewPlies = true;
    state.InFile.clear();
    ShowLastPosition(state);
    Print("\nGame was successfully imported.\n");
}

// Whole games as text files that people can read and edit: the placements, a drawing of the board
// behind the setup, and the moves, two plies to a line.
#pragma once

#include <cstdio>
#include <string>
#include <string_view>

#include "rules/game_record.h"

// The characters of WHITE, BLACK, LIFE and EMPTY in the drawing of the board.
inline constexpr std::string_view SAVED_STONE_SIGNS = "12*.";

// Writes the game, up to its last move or its end position, to the file. Answers 0, or 1 when that
// could not be done; an earlier file of that name then keeps its content. Only a file that could
// not be opened is answered with a message.
[[nodiscard]] int SaveGame(const GameRecord& record, const std::string& fileName);

// The text of a saved game.
[[nodiscard]] std::string SavedGameText(const GameRecord& record);

// Replays a saved game. On success the answer is 0, `record` holds the game, and the board settings
// in GlobCfg are those of the file. Otherwise the answer is 1, after printing the reason where
// there is more to say than that the file ended too soon, and record and settings are as before.
[[nodiscard]] int LoadGame(const std::string& fileName, GameRecord& record);

// The same from an open file, which it closes.
[[nodiscard]] int LoadGame(std::FILE* file, GameRecord& record);

// Logs of games played on the Brettspielwelt online service, always on the default board.
#pragma once

#include <string>

#include "rules/game_record.h"

// Replays a log of a complete game. The caller has set the board settings to DEFAULT_BOARD. Answers
// 0, or 1 after printing why the log was refused; `record` is then unchanged.
[[nodiscard]] int ImportGame(const std::string& fileName, GameRecord& record);

// The whole game in memory.
#pragma once

#include <array>

#include "rules/moves.h"
#include "rules/position.h"

// No game needs more: on the largest board of N = 115 spaces there are at most N placements, N - 1
// tower moves and N - 1 passes, and one position more than plies.
inline constexpr int GAME_RECORD_SIZE = 3 * MAX_BOARD_SPACES - 1;
static_assert(GAME_RECORD_SIZE == 344);

// Entry 0 of PositionList is the start position; entry i + 1 is the position behind the ply of
// MoveList entry i. Entries above LastMove are left over from an abandoned continuation.
struct GameRecord {
    std::array<Position, GAME_RECORD_SIZE> PositionList{};
    std::array<Move, GAME_RECORD_SIZE> MoveList{};
    int LastMove = 0;  // number of the last position; 0 means only the start position
};

// Answers whether a ply can still be played in position `moveNumber`, after saying that the record
// is full when it can not.
[[nodiscard]] bool CheckRecordRoom(int moveNumber);

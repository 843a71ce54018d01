// The move phase once more, said as plainly as the rules of the game are told: slow, and without
// anything from src/rules but the records. What the tests hold the real rules to.
#pragma once

#include <map>
#include <utility>
#include <vector>

#include "rules/moves.h"
#include "rules/position.h"

using PlainPlace = std::pair<int, int>;  // column, row index

struct PlainTower {
    int Height = 0;
    bool Life = false;
    int Owner = 0;

    bool operator==(const PlainTower&) const = default;
};

// The occupied spaces. Off the board there is nothing, so the shape of the board is not needed.
using PlainBoard = std::map<PlainPlace, PlainTower>;

struct PlainMove {
    PlainPlace Source;
    PlainPlace Target;

    auto operator<=>(const PlainMove&) const = default;
};

PlainBoard PlainBoardOf(const Position& position);

PlainMove PlainMoveOf(const Position& position, const Move& move);

// Sorted.
std::vector<PlainMove> PlainMoves(const PlainBoard& board, int side);

// The board behind a move. Every tower that is not connected to a life stone is gone.
PlainBoard PlainAfter(PlainBoard board, const PlainMove& move);

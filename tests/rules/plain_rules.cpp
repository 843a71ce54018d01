#include "rules/plain_rules.h"

#include <algorithm>
#include <cstdlib>
#include <set>

namespace {

// Rows lean: a step that goes up and right, or down and left, crosses one border only.
int Distance(PlainPlace a, PlainPlace b) {
    const int dx = b.first - a.first;
    const int dy = b.second - a.second;
    return std::max({std::abs(dx), std::abs(dy), std::abs(dx + dy)});
}

bool InLine(PlainPlace a, PlainPlace b) {
    const int dx = b.first - a.first;
    const int dy = b.second - a.second;
    return dx == 0 || dy == 0 || dx + dy == 0;
}

bool Enclosed(const PlainBoard& board, PlainPlace place) {
    return std::count_if(board.begin(), board.end(), [place](const auto& entry) {
               return Distance(entry.first, place) == 1;
           }) == 6;
}

}  // namespace

PlainBoard PlainBoardOf(const Position& position) {
    PlainBoard board;
    for (int x = 0; x < GlobCfg.BoardXDim; ++x) {
        for (int y = 0; y < GlobCfg.BoardYDim; ++y) {
            const Space& space = position.Spaces[x][y];
            if (space.Height != 0) {
                board[{x, y}] = {space.Height, space.Life != 0, space.Owner};
            }
        }
    }
    return board;
}

PlainMove PlainMoveOf(const Position& position, const Move& move) {
    const Place target = MoveTarget(position, move);
    return {{move.Column, move.Row}, {target.Column, target.Row}};
}

std::vector<PlainMove> PlainMoves(const PlainBoard& board, int side) {
    std::vector<PlainMove> moves;
    for (const auto& [source, tower] : board) {
        if (tower.Owner != side || Enclosed(board, source)) {
            continue;
        }
        for (const auto& [target, other] : board) {
            if (InLine(source, target) && Distance(source, target) == tower.Height) {
                moves.push_back({source, target});
            }
        }
    }
    std::sort(moves.begin(), moves.end());
    return moves;
}

PlainBoard PlainAfter(PlainBoard board, const PlainMove& move) {
    const PlainTower tower = board.at(move.Source);
    board.erase(move.Source);
    PlainTower& stack = board.at(move.Target);
    stack = {stack.Height + tower.Height, stack.Life || tower.Life, tower.Owner};

    std::set<PlainPlace> living;
    std::vector<PlainPlace> fresh;
    for (const auto& [place, other] : board) {
        if (other.Life) {
            fresh.push_back(place);
        }
    }
    while (!fresh.empty()) {
        const PlainPlace place = fresh.back();
        fresh.pop_back();
        if (!living.insert(place).second) {
            continue;
        }
        for (const auto& [next, other] : board) {
            if (Distance(place, next) == 1) {
                fresh.push_back(next);
            }
        }
    }
    std::erase_if(board, [&living](const auto& entry) { return !living.contains(entry.first); });
    return board;
}

#include "plain/plain_engine.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <cstdlib>
#include <memory>
#include <numeric>

#include "kernel/search_kernel.h"
#include "support/random.h"

namespace plain {

std::int64_t EvalCount = 0;

Tallies CountTallies(const Position& position) {
    Tallies tallies;
    for (int y = 0; y < GlobCfg.BoardYDim; ++y) {
        const ColumnRange columns = BoardColumns(y);
        for (int x = columns.First; x < columns.End; ++x) {
            const Space& tower = position.Spaces[x][y];
            if (tower.Owner != WHITE && tower.Owner != BLACK) {
                continue;
            }
            const int sign = tower.Owner == WHITE ? 1 : -1;
            const int free = IsFree(position, x, y) ? 1 : 0;
            tallies.Towers[free][tower.Life] += sign;
            tallies.Score[free][tower.Life] += sign * tower.Height;
            for (int d = 0; d < NUM_DIRECTIONS; ++d) {
                const Place place = StepFrom(x, y, d, tower.Height);
                if (!IsInRectangle(place.Column, place.Row)) {
                    continue;
                }
                const Space& target = position.Spaces[place.Column][place.Row];
                if (target.Height == 0) {
                    continue;
                }
                tallies.CanMove = tallies.CanMove || free == 1;
                tallies.MovesToLife[free] += target.Life == 1 ? sign : 0;
                tallies.MovesToEnemy[free] += target.Owner == 1 - tower.Owner ? sign : 0;
                tallies.Moves[free][tower.Life] += sign;
            }
        }
    }
    return tallies;
}

int EvaluatePosition(Position& position, const EvalWeights& weights) {
    const Tallies tallies = CountTallies(position);
    const double random = RandomReal();
    double value = 0.0;
    for (int f = 0; f < 2; ++f) {
        for (int l = 0; l < 2; ++l) {
            if (tallies.CanMove) {
                value += tallies.Towers[f][l] * weights.Towers[f][l];
                value += tallies.Moves[f][l] * weights.Moves[f][l];
                value += tallies.Score[f][l] * weights.Score[f][l];
            } else {
                value += 1000 * tallies.Score[f][l];
            }
        }
        if (tallies.CanMove) {
            value += tallies.MovesToLife[f] * weights.MovesToLife[f];
            value += tallies.MovesToEnemy[f] * weights.MovesToEnemy[f];
        }
    }
    if (tallies.CanMove) {
        value += weights.Random * random;
    }
    position.Value = position.ActivePlayer == BLACK ? -value : value;
    position.EndPosition = tallies.CanMove ? 0 : 1;
    ++EvalCount;
    return position.EndPosition;
}

std::vector<int> SortPositions(std::span<const Position> children) {
    constexpr int NUM_SORTED = 5;
    auto isLower = [&children](int a, int b) { return children[a].Value < children[b].Value; };
    std::vector<int> order;
    for (int i = 0; i < static_cast<int>(children.size()); ++i) {
        const auto begin = order.begin();
        const auto end = std::ssize(order) < NUM_SORTED ? order.end() : begin + NUM_SORTED;
        const auto place = std::upper_bound(begin, end, i, isLower);
        if (place - begin == NUM_SORTED) {
            order.push_back(i);
            continue;
        }
        order.insert(place, i);
        if (std::ssize(order) > NUM_SORTED) {  // the sixth lowest goes to the end
            std::rotate(order.begin() + NUM_SORTED, order.begin() + NUM_SORTED + 1, order.end());
        }
    }
    return order;
}

namespace {

constexpr double LOW_INIT_VALUE = -999999999.0;
constexpr double HIGH_INIT_VALUE = 999999999.0;

// Children and moves of the node that is being searched at each remaining depth.
struct Level {
    MoveArray Moves;
    std::array<Position, MAX_MOVES> Children;
};
Level& LevelOf(int depth) {
    static std::array<std::unique_ptr<Level>, MAX_SEARCH_DEPTH + 1> levels;
    if (levels[depth] == nullptr) {
        levels[depth] = std::make_unique<Level>();
    }
    return *levels[depth];
}

struct Search {
    const EvalWeights& Weights;
    Move& BestMove;
    int& ExactFlag;

    double SearchPass(const Position& position, int depth) {
        if (position.EndPosition == 1) {
            std::abort();  // the callers never search an end position
        }
        if (depth == 0) {
            ExactFlag = 0;
            return -position.Value;
        }
        Position& passed = LevelOf(depth).Children[0];
        DoPass(position, passed);
        return -SearchNode(passed, depth - 1, HIGH_INIT_VALUE, false);
    }

    double SearchNode(Position& position, int depth, double treshold, bool top) {
        Level& level = LevelOf(depth);
        const int numMoves = GetPossibleMoves(position, level.Moves);
        if (numMoves == 0) {
            return SearchPass(position, depth);
        }
        std::vector<int> order(numMoves);
        std::iota(order.begin(), order.end(), 0);
        if (depth > 0) {
            for (int i = 0; i < numMoves; ++i) {
                DoMove(position, level.Moves[i], level.Children[i]);
                plain::EvaluatePosition(level.Children[i], Weights);
            }
            order = SortPositions(std::span(level.Children).first(numMoves));
        }
        double best = LOW_INIT_VALUE;
        for (const int k : order) {
            Position& child = level.Children[k];
            if (depth == 0) {  // one by one: a cut-off saves the rest
                DoMove(position, level.Moves[k], child);
                ExactFlag &= plain::EvaluatePosition(child, Weights);
            }
            const double value = depth > 0 && child.EndPosition == 0
                                     ? SearchNode(child, depth - 1, -best, false)
                                     : -child.Value;
            if (value >= treshold) {
                return LOW_INIT_VALUE;
            }
            if (value > best) {
                best = value;
                if (top) {
                    BestMove = level.Moves[k];
                }
            }
        }
        if (top && depth > 0) {
            position.Value = best;
            position.ExactValue = ExactFlag;
        }
        return -best;
    }
};

}  // namespace

double GetBestMove(Position& position, int depth, const EvalWeights& weights, Move& bestMove,
                   int& exactFlag) {
    exactFlag = 1;
    Search search = {weights, bestMove, exactFlag};
    return search.SearchNode(position, depth, HIGH_INIT_VALUE, true);
}

}  // namespace plain

#include "engine/placement.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <span>

#include "kernel/move_order.h"
#include "support/fatal.h"
#include "support/random.h"

namespace {

// How much a space on ring `ring` counts for one on ring `from`.
double RingFactor(int ring, int from, const EvalWeights& weights) {
    if (ring == from) {
        return 1.0;
    }
    return ring > from ? weights.SetupFlankFactor : 1.0 / weights.SetupFlankFactor;
}

int HexDistance(Place a, Place b) {
    const int dx = a.Column - b.Column;
    const int dy = a.Row - b.Row;
    return std::max({std::abs(dx), std::abs(dy), std::abs(dx + dy)});
}

// The life stones on the board, by rows and columns.
struct LifeStones {
    std::array<Place, MAX_BOARD_SPACES> Places{};
    int Count = 0;

    [[nodiscard]] std::span<const Place> List() const { return std::span(Places).first(Count); }
};

LifeStones FindLifeStones(const Position& position) {
    LifeStones stones;
    for (int y = 0; y < GlobCfg.BoardYDim; ++y) {
        const ColumnRange columns = BoardColumns(y);
        for (int x = columns.First; x < columns.End; ++x) {
            if (position.Spaces[x][y].Life == 1) {
                stones.Places[stones.Count++] = {x, y};
            }
        }
    }
    return stones;
}

int DistanceToStone(Place stone, Place place) {
    const int distance = HexDistance(stone, place);
    if (distance == 0) {
        ErrorExit("GetBestSetupMove: Error: Dist=0 should be impossible\n");
    }
    return distance;
}

double ScoreLifeStone(Place place, const LifeStones& stones, const EvalWeights& weights) {
    double score = 0.0;
    for (const Place stone : stones.List()) {
        const int distance = DistanceToStone(stone, place);
        score -= weights.SetupLifeDistance / (distance * distance);
    }
    score += GetBorderDistance(place.Column, place.Row) * weights.SetupLifeBorder;
    score += RandomReal() * weights.SetupLifeRandom;
    return score;
}

// The flank values of the stones on the board. Every empty space asks for those of its neighbours,
// so they are worked out once for a placement.
struct StoneFlanks {
    struct Flank {
        double Raw = 0.0;
        double Value = 0.0;
    };
    std::array<std::array<Flank, MAX_BOARD_Y_DIM>, MAX_BOARD_X_DIM> Flanks{};
};

bool IsStone(const Space& space) {
    return space.Owner == WHITE || space.Owner == BLACK;
}

StoneFlanks FindStoneFlanks(const Position& position, const EvalWeights& weights) {
    StoneFlanks stones;
    for (int y = 0; y < GlobCfg.BoardYDim; ++y) {
        const ColumnRange columns = BoardColumns(y);
        for (int x = columns.First; x < columns.End; ++x) {
            const Space& space = position.Spaces[x][y];
            if (IsStone(space)) {
                const double raw = GetRawFlankValue(position, x, y, space.Owner, weights);
                stones.Flanks[x][y] = {raw, GetFlankValue(raw)};
            }
        }
    }
    return stones;
}

// Adds to `score` what (x, y) is worth for a stone of `color`: its own flank value, less what its
// arrival changes in the flank values of the stones round it. It stops counting one half there, as
// an empty space does, and counts nothing for its own side and one for the other.
double AddFlankScore(const Position& position, const StoneFlanks& stones, Place place, int color,
                     const EvalWeights& weights, double score) {
    const int ring = GetBorderDistance(place.Column, place.Row);
    score += weights.SetupFlank *
             GetFlankValue(GetRawFlankValue(position, place.Column, place.Row, color, weights));
    for (int d = 0; d < NUM_DIRECTIONS; ++d) {
        const Place next = StepFrom(place.Column, place.Row, d, 1);
        if (!IsOnBoard(next.Column, next.Row)) {
            continue;
        }
        const Space& neighbour = position.Spaces[next.Column][next.Row];
        if (!IsStone(neighbour)) {
            continue;
        }
        const double factor = RingFactor(ring, GetBorderDistance(next.Column, next.Row), weights);
        const double sign = neighbour.Owner == color ? -1.0 : 1.0;
        const StoneFlanks::Flank& flank = stones.Flanks[next.Column][next.Row];
        score -= sign * weights.SetupFlank *
                 (GetFlankValue(flank.Raw + sign * 0.5 * factor) - flank.Value);
    }
    return score;
}

double ScoreOwnStone(const Position& position, const StoneFlanks& flanks, Place place,
                     const LifeStones& stones, const EvalWeights& weights) {
    double score = 0.0;
    for (const Place stone : stones.List()) {
        score += weights.SetupToLife / std::pow(3.0, DistanceToStone(stone, place) - 1);
    }
    const int player = position.ActivePlayer;
    score = AddFlankScore(position, flanks, place, player, weights, score);
    score = AddFlankScore(position, flanks, place, OtherColor(player), weights, score);
    if (GetBorderDistance(place.Column, place.Row) == 0) {
        score += weights.SetupEdge;
    }
    score += RandomReal() * weights.SetupRandom;
    return score;
}

}  // namespace

double GetBestSetupMove(const Position& position, const EvalWeights& weights, Move& move) {
    const LifeStones stones = FindLifeStones(position);
    const bool placesLife = position.SetupPhase > 1;
    const StoneFlanks flanks = placesLife ? StoneFlanks{} : FindStoneFlanks(position, weights);
    double best = LOW_INIT_VALUE;
    for (int y = 0; y < GlobCfg.BoardYDim; ++y) {
        const ColumnRange columns = BoardColumns(y);
        for (int x = columns.First; x < columns.End; ++x) {
            if (position.Spaces[x][y].Owner != EMPTY) {
                continue;
            }
            const double score = placesLife
                                     ? ScoreLifeStone({x, y}, stones, weights)
                                     : ScoreOwnStone(position, flanks, {x, y}, stones, weights);
            if (score > best) {
                best = score;
                move.Column = x;
                move.Row = y;
            }
        }
    }
    return best;
}

int GetBorderDistance(int x, int y) {
    const int right = GlobCfg.BoardXDim - 1 - x;
    const int below = GlobCfg.BoardYDim - 1 - y;
    const int corner = CornerSize();
    return std::min({x, right, y, below, x + y - corner, right + below - corner});
}

double GetRawFlankValue(const Position& position, int x, int y, int color,
                        const EvalWeights& weights) {
    const int ring = GetBorderDistance(x, y);
    double sum = 0.0;
    for (int d = 0; d < NUM_DIRECTIONS; ++d) {
        const Place next = StepFrom(x, y, d, 1);
        if (!IsOnBoard(next.Column, next.Row)) {
            continue;
        }
        const double factor = RingFactor(GetBorderDistance(next.Column, next.Row), ring, weights);
        const int owner = position.Spaces[next.Column][next.Row].Owner;
        switch (owner) {
        case WHITE:
        case BLACK:
            if (owner != color) {
                sum += factor;
            }
            break;
        case LIFE:
        case EMPTY:
            sum += 0.5 * factor;
            break;
        default:
            std::printf("x y %i %i\n", next.Column, next.Row);
            ErrorExit("GetRawFlankValue: Error: Illegal default case reached! (bug in program)\n");
        }
    }
    return sum;
}

double GetFlankValue(double raw) {
    // Boards offer few raw values, and `pow` is slow: a value that comes again is looked up. An
    // entry not yet used says that the flank value of 0 is 0, which it is.
    struct Known {
        double Raw = 0.0;
        double Value = 0.0;
    };
    constexpr int INDEX_BITS = 8;
    static std::array<Known, 1 << INDEX_BITS> table;
    const auto bits = std::bit_cast<std::uint64_t>(raw);
    Known& known = table[bits * 0x9E3779B97F4A7C15U >> (64 - INDEX_BITS)];
    if (known.Raw != raw) {
        known = {raw, 1.0 - std::pow(2.0, -raw)};
    }
    return known.Value;
}

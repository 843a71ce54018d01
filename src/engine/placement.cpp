#include "engine/placement.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <span>

#include "kernel/bounds.h"
#include "support/fatal.h"
#include "support/numbers.h"
#include "support/output.h"
#include "support/random.h"

namespace {

// What the placement asks of the board's shape again and again. Spaces are numbered by rows from
// the top and columns from the left.
struct SetupBoard {
    struct Neighbour {
        int Space = 0;
        int RingStep =
            0;  // 0: it lies nearer the border, 1: on the same ring, 2: nearer the centre
    };
    int BoardXDim = 0;  // the board size that this was made for
    int BoardYDim = 0;
    int NumSpaces = 0;
    std::array<Place, MAX_BOARD_SPACES> Places{};
    std::array<int, MAX_BOARD_SPACES> Rings{};
    std::array<int, MAX_BOARD_SPACES> NumNeighbours{};
    std::array<std::array<Neighbour, NUM_DIRECTIONS>, MAX_BOARD_SPACES> Neighbours{};

    // In the order of the directions.
    [[nodiscard]] std::span<const Neighbour> NeighboursOf(int space) const {
        return std::span(Neighbours[space]).first(NumNeighbours[space]);
    }
};

void NumberSpaces(SetupBoard& board,
                  std::array<std::array<int, MAX_BOARD_Y_DIM>, MAX_BOARD_X_DIM>& numbers) {
    for (int y = 0; y < GlobCfg.BoardYDim; ++y) {
        const ColumnRange columns = BoardColumns(y);
        for (int x = columns.First; x < columns.End; ++x) {
            numbers[x][y] = board.NumSpaces;
            board.Places[board.NumSpaces] = {x, y};
            board.Rings[board.NumSpaces] = GetBorderDistance(x, y);
            ++board.NumSpaces;
        }
    }
}

SetupBoard MakeSetupBoard() {
    SetupBoard board;
    board.BoardXDim = GlobCfg.BoardXDim;
    board.BoardYDim = GlobCfg.BoardYDim;
    std::array<std::array<int, MAX_BOARD_Y_DIM>, MAX_BOARD_X_DIM> numbers{};
    NumberSpaces(board, numbers);
    for (int space = 0; space < board.NumSpaces; ++space) {
        for (int d = 0; d < NUM_DIRECTIONS; ++d) {
            const Place next = StepFrom(board.Places[space].Column, board.Places[space].Row, d, 1);
            if (IsOnBoard(next.Column, next.Row)) {
                const int number = numbers[next.Column][next.Row];
                board.Neighbours[space][board.NumNeighbours[space]++] = {
                    number, 1 + Sign(board.Rings[number] - board.Rings[space])};
            }
        }
    }
    return board;
}

const SetupBoard& CurrentSetupBoard() {
    static SetupBoard board;
    if (board.BoardXDim != GlobCfg.BoardXDim || board.BoardYDim != GlobCfg.BoardYDim) {
        board = MakeSetupBoard();
    }
    return board;
}

// How much a neighbour counts, by its RingStep.
using RingFactors = std::array<double, 3>;

// One placement that is to be made.
struct Setup {
    const SetupBoard& Board;
    const EvalWeights& Weights;
    RingFactors Factors;
    std::array<int, MAX_BOARD_SPACES> Owners{};
};

Setup MakeSetup(const Position& position, const EvalWeights& weights) {
    Setup setup = {.Board = CurrentSetupBoard(),
                   .Weights = weights,
                   .Factors = {1.0 / weights.SetupFlankFactor, 1.0, weights.SetupFlankFactor}};
    for (int space = 0; space < setup.Board.NumSpaces; ++space) {
        const Place place = setup.Board.Places[space];
        setup.Owners[space] = position.Spaces[place.Column][place.Row].Owner;
    }
    return setup;
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
    const SetupBoard& board = CurrentSetupBoard();
    for (const Place place : std::span(board.Places).first(board.NumSpaces)) {
        if (position.Spaces[place.Column][place.Row].Life == 1) {
            stones.Places[stones.Count++] = place;
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

double ScoreLifeStone(const Setup& setup, int space, const LifeStones& stones) {
    double score = 0.0;
    for (const Place stone : stones.List()) {
        const int distance = DistanceToStone(stone, setup.Board.Places[space]);
        score -= setup.Weights.SetupLifeDistance / (distance * distance);
    }
    score += setup.Board.Rings[space] * setup.Weights.SetupLifeBorder;
    score += RandomReal() * setup.Weights.SetupLifeRandom;
    return score;
}

double RawFlankValue(const Setup& setup, int space, int color) {
    double sum = 0.0;
    for (const SetupBoard::Neighbour next : setup.Board.NeighboursOf(space)) {
        const double factor = setup.Factors[next.RingStep];
        const int owner = setup.Owners[next.Space];
        switch (owner) {
        case WHITE:
        case BLACK:
            if (owner != color) {
                sum += factor;
            }
            break;
        case LIFE:
        case EMPTY: sum += 0.5 * factor; break;
        default: {
            const Place place = setup.Board.Places[next.Space];
            Print("x y %i %i\n", place.Column, place.Row);
            ErrorExit("GetRawFlankValue: Error: Illegal default case reached! (bug in program)\n");
        }
        }
    }
    return sum;
}

bool IsStone(int owner) {
    return owner == WHITE || owner == BLACK;
}

// The flank values of the stones on the board. Every empty space asks for those of its neighbours,
// so they are worked out once for a placement.
struct StoneFlank {
    double Raw = 0.0;
    double Value = 0.0;
};
using StoneFlanks = std::array<StoneFlank, MAX_BOARD_SPACES>;

StoneFlanks FindStoneFlanks(const Setup& setup) {
    StoneFlanks flanks;
    for (int space = 0; space < setup.Board.NumSpaces; ++space) {
        if (IsStone(setup.Owners[space])) {
            const double raw = RawFlankValue(setup, space, setup.Owners[space]);
            flanks[space] = {raw, GetFlankValue(raw)};
        }
    }
    return flanks;
}

// Adds to `score` what a space is worth for a stone of `color`: its own flank value, less what its
// arrival changes in the flank values of the stones round it. It stops counting one half there, as
// an empty space does, and counts nothing for its own side and one for the other. The sum is handed
// on because its roundings depend on the order of all its terms.
double AddFlankScore(const Setup& setup, const StoneFlanks& flanks, int space, int color,
                     double score) {
    const double weight = setup.Weights.SetupFlank;
    score += weight * GetFlankValue(RawFlankValue(setup, space, color));
    for (const SetupBoard::Neighbour next : setup.Board.NeighboursOf(space)) {
        const int owner = setup.Owners[next.Space];
        if (!IsStone(owner)) {
            continue;
        }
        const double factor = setup.Factors[2 - next.RingStep];  // seen from the neighbour
        const double sign = owner == color ? -1.0 : 1.0;
        const StoneFlank& flank = flanks[next.Space];
        score -= sign * weight * (GetFlankValue(flank.Raw + sign * 0.5 * factor) - flank.Value);
    }
    return score;
}

// 3 to the power of a distance less one; `pow` is asked once for each.
double PowerOfThree(int distance) {
    static const auto powers = [] {
        std::array<double, MAX_BOARD_X_DIM + MAX_BOARD_Y_DIM> values{};
        for (std::size_t i = 1; i < values.size(); ++i) {
            values[i] = std::pow(3.0, static_cast<double>(i) - 1);
        }
        return values;
    }();
    return powers[distance];
}

double ScoreOwnStone(const Setup& setup, const StoneFlanks& flanks, int player, int space,
                     const LifeStones& stones) {
    const EvalWeights& weights = setup.Weights;
    double score = 0.0;
    for (const Place stone : stones.List()) {
        const int distance = DistanceToStone(stone, setup.Board.Places[space]);
        score += weights.SetupToLife / PowerOfThree(distance);
    }
    score = AddFlankScore(setup, flanks, space, player, score);
    score = AddFlankScore(setup, flanks, space, OtherColor(player), score);
    if (setup.Board.Rings[space] == 0) {
        score += weights.SetupEdge;
    }
    score += RandomReal() * weights.SetupRandom;
    return score;
}

}  // namespace

double GetBestSetupMove(const Position& position, const EvalWeights& weights, Move& move) {
    const Setup setup = MakeSetup(position, weights);
    const LifeStones stones = FindLifeStones(position);
    const bool placesLife = position.SetupPhase > 1;
    const StoneFlanks flanks = placesLife ? StoneFlanks{} : FindStoneFlanks(setup);
    double best = LOW_INIT_VALUE;
    for (int space = 0; space < setup.Board.NumSpaces; ++space) {
        if (setup.Owners[space] != EMPTY) {
            continue;
        }
        const double score =
            placesLife ? ScoreLifeStone(setup, space, stones)
                       : ScoreOwnStone(setup, flanks, position.ActivePlayer, space, stones);
        if (score > best) {
            best = score;
            move.Column = setup.Board.Places[space].Column;
            move.Row = setup.Board.Places[space].Row;
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
    const Setup setup = MakeSetup(position, weights);
    int space = 0;
    while (setup.Board.Places[space].Column != x || setup.Board.Places[space].Row != y) {
        ++space;
    }
    return RawFlankValue(setup, space, color);
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

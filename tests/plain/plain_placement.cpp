#include <cmath>
#include <cstdlib>
#include <vector>

#include "plain/plain_engine.h"
#include "support/random.h"

namespace plain {

namespace {

// How many rings a space lies inside the border.
int Ring(int x, int y) {
    const int corner = (GlobCfg.BoardYDim - 1) / 2;
    int ring = x;
    for (const int edge : {GlobCfg.BoardXDim - 1 - x, y, GlobCfg.BoardYDim - 1 - y, x + y - corner,
                           GlobCfg.BoardXDim + GlobCfg.BoardYDim - x - y - 2 - corner}) {
        ring = edge < ring ? edge : ring;
    }
    return ring;
}

double RawFlank(const Position& position, Place at, int color, const EvalWeights& weights) {
    double sum = 0.0;
    for (int d = 0; d < NUM_DIRECTIONS; ++d) {
        const Place next = StepFrom(at.Column, at.Row, d, 1);
        if (!IsOnBoard(next.Column, next.Row)) {
            continue;
        }
        const int here = Ring(at.Column, at.Row);
        const int there = Ring(next.Column, next.Row);
        double factor = 1.0;
        if (there > here) {
            factor = weights.SetupFlankFactor;
        } else if (there < here) {
            factor = 1.0 / weights.SetupFlankFactor;
        }
        const int owner = position.Spaces[next.Column][next.Row].Owner;
        if (owner == 1 - color) {
            sum += factor;
        } else if (owner == LIFE || owner == EMPTY) {
            sum += 0.5 * factor;
        }
    }
    return sum;
}

double Flank(double raw) {
    return 1.0 - std::pow(2.0, -raw);
}

int Distance(Place a, Place b) {
    const int dx = std::abs(a.Column - b.Column);
    const int dy = std::abs(a.Row - b.Row);
    const int dz = std::abs(a.Column + a.Row - b.Column - b.Row);
    return dx > dy ? (dx > dz ? dx : dz) : (dy > dz ? dy : dz);
}

double ScoreOwn(const Position& position, Place at, const std::vector<Place>& life,
                const EvalWeights& weights) {
    double score = 0.0;
    for (const Place stone : life) {
        score += weights.SetupToLife / std::pow(3.0, Distance(stone, at) - 1);
    }
    for (const int color : {position.ActivePlayer, 1 - position.ActivePlayer}) {
        score += weights.SetupFlank * Flank(RawFlank(position, at, color, weights));
        for (int d = 0; d < NUM_DIRECTIONS; ++d) {
            const Place next = StepFrom(at.Column, at.Row, d, 1);
            if (!IsOnBoard(next.Column, next.Row)) {
                continue;
            }
            const int owner = position.Spaces[next.Column][next.Row].Owner;
            if (owner != WHITE && owner != BLACK) {
                continue;
            }
            double factor = 1.0;
            if (Ring(next.Column, next.Row) < Ring(at.Column, at.Row)) {
                factor = weights.SetupFlankFactor;
            } else if (Ring(next.Column, next.Row) > Ring(at.Column, at.Row)) {
                factor = 1.0 / weights.SetupFlankFactor;
            }
            const int sign = owner == color ? -1 : 1;
            const double raw = RawFlank(position, next, owner, weights);
            score -= sign * weights.SetupFlank * (Flank(raw + sign * 0.5 * factor) - Flank(raw));
        }
    }
    if (Ring(at.Column, at.Row) == 0) {
        score += weights.SetupEdge;
    }
    score += RandomReal() * weights.SetupRandom;
    return score;
}

double ScoreLife(Place at, const std::vector<Place>& life, const EvalWeights& weights) {
    double score = 0.0;
    for (const Place stone : life) {
        const int distance = Distance(stone, at);
        score -= weights.SetupLifeDistance / (distance * distance);
    }
    score += Ring(at.Column, at.Row) * weights.SetupLifeBorder;
    score += RandomReal() * weights.SetupLifeRandom;
    return score;
}

}  // namespace

double GetBestSetupMove(const Position& position, const EvalWeights& weights, Move& bestMove) {
    std::vector<Place> life;
    std::vector<Place> empty;
    for (int y = 0; y < GlobCfg.BoardYDim; ++y) {
        for (int x = 0; x < GlobCfg.BoardXDim; ++x) {
            if (!IsOnBoard(x, y)) {
                continue;
            }
            if (position.Spaces[x][y].Life == 1) {
                life.push_back({x, y});
            } else if (position.Spaces[x][y].Owner == EMPTY) {
                empty.push_back({x, y});
            }
        }
    }
    double best = -999999999.0;
    for (const Place place : empty) {
        const double score = position.SetupPhase > 1 ? ScoreLife(place, life, weights)
                                                     : ScoreOwn(position, place, life, weights);
        if (score > best) {
            best = score;
            bestMove.Column = place.Column;
            bestMove.Row = place.Row;
        }
    }
    return best;
}

}  // namespace plain

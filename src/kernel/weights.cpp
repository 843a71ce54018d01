#include "kernel/weights.h"

void SetLevel(int level, EvalWeights& weights) {
    const double f = level < FULL_STRENGTH_LEVEL ? level / 1000.0 : 1.0;
    weights.Towers = {{{0.0, 0.045 * f}, {0.068 * f, 0.015 * f}}};
    weights.Moves = {{{0.15 * f, 0.0}, {0.169 * f, 0.077 * f}}};
    weights.Score = {{{0.001 * f, 0.068 * f}, {0.006 * f, 0.077 * f}}};
    weights.MovesToLife = {0.031 * f, 0.209 * f};
    weights.MovesToEnemy = {0.0, 0.0};
    weights.Random = 1.0 - f;
    weights.SetupLifeRandom = f + (1.0 - f);  // 1 but for the roundings, which values depend on
    weights.SetupLifeBorder = 0.3 * f;
    weights.SetupLifeDistance = f;
    weights.SetupRandom = 0.1 * f + (1.0 - f);
    weights.SetupToLife = f;
    weights.SetupFlank = 0.3 * f;
    weights.SetupEdge = 0.1 * f;
    weights.SetupFlankFactor = 1.3;
}

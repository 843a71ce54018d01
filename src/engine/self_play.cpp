#include "engine/self_play.h"

#include <cmath>
#include <cstdarg>
#include <cstdio>

#include "engine/computer.h"
#include "engine/evaluation.h"
#include "rules/referee.h"
#include "rules/setup.h"
#include "support/numbers.h"
#include "support/random.h"

namespace {

constexpr int SELF_PLAY_DEPTH = 1;
constexpr int BATTLE_PAIRS = 50;

// The fields that tuning changes, in the order of the record, as its lines name them.
constexpr std::array<const char*, 16> TUNABLE_NAMES = {
    "Towers[0][0]=",    "Towers[0][1]=",    "Towers[1][0]=",     "Towers[1][1]=",
    "Moves[0][0] =",    "Moves[0][1] =",    "Moves[1][0] =",     "Moves[1][1] =",
    "Score[0][0] =",    "Score[0][1] =",    "Score[1][0] =",     "Score[1][1] =",
    "MovesToLife[0] =", "MovesToLife[1] =", "MovesToEnemy[0] =", "MovesToEnemy[1] =",
};
constexpr int NUM_TUNABLE = static_cast<int>(TUNABLE_NAMES.size());
using TunableValues = std::array<double, NUM_TUNABLE>;

double& Tunable(EvalWeights& weights, int i) {
    const int group = i / 4;
    if (group == 3) {
        return i % 4 < 2 ? weights.MovesToLife[i % 2] : weights.MovesToEnemy[i % 2];
    }
    const std::array<EvalWeights::ByFreeAndLife*, 3> groups = {&weights.Towers, &weights.Moves,
                                                               &weights.Score};
    return (*groups[group])[i / 2 % 2][i % 2];
}

constexpr TunableValues MATCH_PLAYER_1 = {1.0, 1.0, 1.0, 1.0, 1.0, 1.0, 1.0, 1.0,
                                          1.0, 1.0, 1.0, 1.0, 1.0, 1.0, 0.0, 0.0};
constexpr TunableValues MATCH_PLAYER_2 = {
    -0.079678, -0.003822, -0.020655, 0.178169, 0.131626,  -0.031337, 0.100233, 0.017182,
    -0.0032,   -0.077848, 0.031144,  0.079221, -0.139505, 0.10638,   0.0,      0.0};
constexpr TunableValues TUNING_START = {-1.0, -1.0, -1.0, -1.0, -1.0, -1.0, -1.0, -1.0,
                                        -1.0, -1.0, -1.0, -1.0, -1.0, -1.0, -1.0, -1.0};
constexpr TunableValues TUNING_REFERENCE = {1.0, 1.0, 1.0, 1.0, 1.0, 1.0, 1.0, 1.0,
                                            1.0, 1.0, 1.0, 1.0, 1.0, 1.0, 1.0, 1.0};

// A built-in set: the given values, and for the rest those of full strength.
EvalWeights BuiltInWeights(const TunableValues& values) {
    EvalWeights weights;
    SetLevel(FULL_STRENGTH_LEVEL, weights);
    for (int i = 0; i < NUM_TUNABLE; ++i) {
        Tunable(weights, i) = values[i];
    }
    return weights;
}

[[gnu::format(printf, 1, 2)]] void PrintAndFlush(const char* format, ...) {
    std::va_list arguments;
    va_start(arguments, format);
    std::vprintf(format, arguments);
    va_end(arguments);
    std::fflush(stdout);
}

// Plays one game from `start` and answers the final stone lead of the beginner, who plays WHITE.
int PlayGame(const ABWeightPair& players, int beginner, const Position& start, int depth) {
    std::array<Position, 2> slots = {start, start};
    int slot = beginner;    // where the position to move in stands
    int player = beginner;  // who moves in it
    Move move;
    while (!IsEndPosition(slots[slot])) {
        const int other = 1 - slot;
        SearchEffort effort = {.Depth = depth};
        MakeComputerTurn(slots[slot], effort, players[player], slots[other], move);
        // The side that makes the last placement may also make the first move.
        if (slots[other].ActivePlayer != slots[slot].ActivePlayer) {
            player = 1 - player;
        }
        slot = other;
    }
    Position& end = slots[slot];
    end.ActivePlayer = WHITE;
    EvaluatePosition(end, players[slot]);  // whose weights do not matter: the stones are counted
    return static_cast<int>(end.Value) / 1000;
}

// Takes in a game that ended with the given lead of the beginner.
void TakeGame(MatchResult& result, int lead, bool playerOneBegan) {
    const int ownLead = playerOneBegan ? lead : -lead;
    result.TotalScore += ownLead;
    result.MatchPoints += 1 + Sign(ownLead);
}

// Plays a pair of games: both players begin once. Calls `look(game)` behind each.
template <typename Look>
void PlayPair(const ABWeightPair& players, int depth, MatchResult& result, Look look) {
    Position start;
    GenerateEmptyStartPosition(start);
    for (int game = 0; game < 2; ++game) {
        TakeGame(result, PlayGame(players, game, start, depth), game == 0);
        look(game);
    }
}

void PrintResult(const char* heading, const MatchResult& result, int numPairs) {
    PrintAndFlush("%sPlayer 1: Total Score: %i, MatchScore: %0.1f/%i\n", heading, result.TotalScore,
                  result.MatchPoints / 2.0, 2 * numPairs);
}

// The step sizes and probabilities of the mutations. They shrink from cycle to cycle.
struct Mutation {
    double Probability = 1.0;
    double Intensity = 1.0;
    double InversionProbability = 0.25;

    void Decay() {
        constexpr double DECAY = 0.995;
        constexpr double LEAST_PROBABILITY = 0.1;
        Probability *= DECAY;
        InversionProbability *= DECAY;
        Intensity *= DECAY;
        if (Probability < LEAST_PROBABILITY) {
            Probability = LEAST_PROBABILITY;
        }
    }
};

// A mutated copy of `best`, scaled so that the absolute values of its tunable fields add up to 1.
EvalWeights MakeCandidate(const EvalWeights& best, const Mutation& mutation) {
    constexpr double LEAST_SUM = 0.00001;
    EvalWeights candidate = best;
    double sum = 0.0;
    for (int i = 0; i < NUM_TUNABLE; ++i) {
        double& weight = Tunable(candidate, i);
        if (RandomReal() < mutation.Probability) {
            weight = weight + (1 - 2 * RandomReal()) * mutation.Intensity;
        }
        if (RandomReal() < mutation.InversionProbability) {
            weight = -weight;
        }
        sum += std::fabs(weight);
    }
    if (sum < LEAST_SUM) {
        PrintAndFlush("WARNING !!! TmpSum has value: %f !\n", sum);
        sum = LEAST_SUM;
    }
    for (int i = 0; i < NUM_TUNABLE; ++i) {
        Tunable(candidate, i) /= sum;
    }
    return candidate;
}

// Plays the match of the best set (player 1) against a candidate. Answers whether the candidate won
// it outright.
bool CandidateWins(const ABWeightPair& players, int numPairs, int margin, int depth,
                   MatchResult& result) {
    bool isLost = false;  // once set, it stays set; the pair is played to its end all the same
    int pair = 0;
    for (; pair < numPairs && !isLost; ++pair) {
        PlayPair(players, depth, result, [&](int game) {
            isLost = isLost || result.MatchPoints / 2 - pair - game >= margin + 1;
        });
    }
    PrintResult("", result, pair);
    return !isLost && result.MatchPoints < 2 * numPairs;
}

void PrintNewBest(EvalWeights& best) {
    PrintAndFlush("New best weights\n");
    for (int i = 0; i < NUM_TUNABLE; ++i) {
        PrintAndFlush("ABWeights[1].%s %f;\n", TUNABLE_NAMES[i], Tunable(best, i));
    }
    PrintAndFlush("------------------------------------------------------------------------\n");
}

}  // namespace

void PlayMatch() {
    AutoBattle({BuiltInWeights(MATCH_PLAYER_1), BuiltInWeights(MATCH_PLAYER_2)}, BATTLE_PAIRS,
               SELF_PLAY_DEPTH);
}

void TuneWeights() {
    constexpr int MATCH_PAIRS = 10;
    constexpr int MARGIN = 3;
    AutoOptimize(BuiltInWeights(TUNING_START), MATCH_PAIRS, MARGIN, SELF_PLAY_DEPTH);
}

MatchResult PlayGames(const ABWeightPair& players, int numPairs, int depth) {
    MatchResult result;
    for (int pair = 0; pair < numPairs; ++pair) {
        PlayPair(players, depth, result, [](int) {});
    }
    return result;
}

void AutoBattle(const ABWeightPair& players, int numPairs, int depth) {
    PrintResult("AUTOBATTLE: ", PlayGames(players, numPairs, depth), numPairs);
}

void AutoOptimize(const EvalWeights& start, int numPairs, int margin, int depth) {
    EvalWeights best = start;
    Mutation mutation;
    for (int cycle = 1;; ++cycle) {
        mutation.Decay();
        PrintAndFlush("evol-pars: MP:%f, MI:%f, IP:%f\n", mutation.Probability, mutation.Intensity,
                      mutation.InversionProbability);
        if (cycle % 100 == 0) {
            PrintAndFlush("cycle: %i\n", cycle);
        }
        const EvalWeights candidate = MakeCandidate(best, mutation);
        MatchResult result;
        if (!CandidateWins({best, candidate}, numPairs, margin, depth, result)) {
            continue;
        }
        best = candidate;
        PrintResult("", result, numPairs);
        AutoBattle({BuiltInWeights(TUNING_REFERENCE), best}, BATTLE_PAIRS, SELF_PLAY_DEPTH);
        PrintNewBest(best);
    }
}

#include "engine/self_play.h"

#include <cmath>
#include <cstdarg>

#include "engine/computer.h"
#include "rules/referee.h"
#include "rules/setup.h"
#include "support/numbers.h"
#include "support/output.h"
#include "support/random.h"

namespace {

constexpr int SELF_PLAY_DEPTH = 1;
constexpr int BATTLE_PAIRS = 50;

// A field that tuning changes: how its line names it, and where it stands. It belongs to a group of
// two indices or, where that is null, to one of one index.
struct TunableField {
    const char* Label;
    EvalWeights::ByFreeAndLife EvalWeights::*ByFreeAndLife;
    EvalWeights::ByFree EvalWeights::*ByFree;
    int Free;
    int Life;
};

// In the order of the record.
// clang-format off
constexpr std::array TUNABLE_FIELDS = {
    TunableField{"Towers[0][0]=", &EvalWeights::Towers, nullptr, 0, 0},
    TunableField{"Towers[0][1]=", &EvalWeights::Towers, nullptr, 0, 1},
    TunableField{"Towers[1][0]=", &EvalWeights::Towers, nullptr, 1, 0},
    TunableField{"Towers[1][1]=", &EvalWeights::Towers, nullptr, 1, 1},
    TunableField{"Moves[0][0] =", &EvalWeights::Moves, nullptr, 0, 0},
    TunableField{"Moves[0][1] =", &EvalWeights::Moves, nullptr, 0, 1},
    TunableField{"Moves[1][0] =", &EvalWeights::Moves, nullptr, 1, 0},
    TunableField{"Moves[1][1] =", &EvalWeights::Moves, nullptr, 1, 1},
    TunableField{"Score[0][0] =", &EvalWeights::Score, nullptr, 0, 0},
    TunableField{"Score[0][1] =", &EvalWeights::Score, nullptr, 0, 1},
    TunableField{"Score[1][0] =", &EvalWeights::Score, nullptr, 1, 0},
    TunableField{"Score[1][1] =", &EvalWeights::Score, nullptr, 1, 1},
    TunableField{"MovesToLife[0] =", nullptr, &EvalWeights::MovesToLife, 0, 0},
    TunableField{"MovesToLife[1] =", nullptr, &EvalWeights::MovesToLife, 1, 0},
    TunableField{"MovesToEnemy[0] =", nullptr, &EvalWeights::MovesToEnemy, 0, 0},
    TunableField{"MovesToEnemy[1] =", nullptr, &EvalWeights::MovesToEnemy, 1, 0},
};
// clang-format on
using TunableValues = std::array<double, TUNABLE_FIELDS.size()>;

double& Tunable(EvalWeights& weights, const TunableField& field) {
    return field.ByFreeAndLife != nullptr ? (weights.*field.ByFreeAndLife)[field.Free][field.Life]
                                          : (weights.*field.ByFree)[field.Free];
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
    for (std::size_t i = 0; i < values.size(); ++i) {
        Tunable(weights, TUNABLE_FIELDS[i]) = values[i];
    }
    return weights;
}

[[gnu::format(printf, 1, 2)]] void PrintAndFlush(const char* format, ...) {
    std::va_list arguments;
    va_start(arguments, format);
    PrintList(format, arguments);
    va_end(arguments);
    FlushOutput();
}

// Plays one game from `start` and answers the final stone lead of the beginner, who plays WHITE.
int PlayGame(const ABWeightPair& players, int beginner, const Position& start, int depth) {
    Position position = start;
    Position next;
    Move move;
    Thought thought;
    int player = beginner;
    while (!IsEndPosition(position)) {
        MakeComputerTurn(position, {.Depth = depth}, players[player], nullptr, next, move, thought);
        // The side that makes the last placement may also make the first move.
        if (next.ActivePlayer != position.ActivePlayer) {
            player = 1 - player;
        }
        position = next;
    }
    int white = 0;
    int black = 0;
    GetScore(position, white, black);
    SkipRandom(1);  // as the evaluation of the end position would
    return white - black;
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
    for (const TunableField& field : TUNABLE_FIELDS) {
        double& weight = Tunable(candidate, field);
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
    for (const TunableField& field : TUNABLE_FIELDS) {
        Tunable(candidate, field) /= sum;
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

void PrintNewBest(EvalWeights best) {
    PrintAndFlush("New best weights\n");
    for (const TunableField& field : TUNABLE_FIELDS) {
        PrintAndFlush("ABWeights[1].%s %f;\n", field.Label, Tunable(best, field));
    }
    PrintAndFlush("------------------------------------------------------------------------\n");
}

// What a tuning run carries from cycle to cycle.
struct Tuning {
    EvalWeights Best;
    Mutation Steps;
    int NumCycles = 0;
};

// One generation: a candidate plays against the best set and takes its place if it wins.
void RunCycle(Tuning& tuning, int numPairs, int margin, int depth) {
    constexpr int CYCLES_PER_NOTE = 100;
    tuning.Steps.Decay();
    PrintAndFlush("evol-pars: MP:%f, MI:%f, IP:%f\n", tuning.Steps.Probability,
                  tuning.Steps.Intensity, tuning.Steps.InversionProbability);
    ++tuning.NumCycles;
    if (tuning.NumCycles % CYCLES_PER_NOTE == 0) {
        PrintAndFlush("cycle: %i\n", tuning.NumCycles);
    }
    const EvalWeights candidate = MakeCandidate(tuning.Best, tuning.Steps);
    MatchResult result;
    if (!CandidateWins({tuning.Best, candidate}, numPairs, margin, depth, result)) {
        return;
    }
    tuning.Best = candidate;
    PrintResult("", result, numPairs);
    AutoBattle({BuiltInWeights(TUNING_REFERENCE), tuning.Best}, BATTLE_PAIRS, SELF_PLAY_DEPTH);
    PrintNewBest(tuning.Best);
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
    Tuning tuning;
    tuning.Best = start;
    while (true) {
        RunCycle(tuning, numPairs, margin, depth);
    }
}

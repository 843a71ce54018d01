// What the computer player thinks important: the weights of the evaluation and of the placements.
#pragma once

#include <array>

// Fields of two indices are indexed [free][life]: whether the tower is free to move, and whether it
// holds a life stone. Fields of one index are indexed [free].
struct EvalWeights {
    using ByFreeAndLife = std::array<std::array<double, 2>, 2>;
    using ByFree = std::array<double, 2>;

    ByFreeAndLife Towers{};  // each tower of a side
    ByFreeAndLife Moves{};   // each move target of a tower, enclosed towers included
    ByFreeAndLife Score{};   // each stone of a tower
    ByFree MovesToLife{};    // each move target that holds a life stone
    ByFree MovesToEnemy{};   // each move target that the other side owns
    double Random = 0;       // a random number in [0, 1], added to every value that is not final
    double SetupLifeRandom = 0;    // life stones: random term
    double SetupLifeBorder = 0;    // life stones: distance from the border
    double SetupLifeDistance = 0;  // life stones: penalty for being near one another
    double SetupRandom = 0;        // own stones: random term
    double SetupToLife = 0;        // own stones: closeness to the life stones
    double SetupFlank = 0;         // own stones: flank values
    double SetupEdge = 0;          // own stones: bonus on the outer ring
    double SetupFlankFactor = 0;   // how much a neighbour nearer the centre counts in a flank value
};

// Level of full strength; what a level has above it is a budget of evaluated positions.
inline constexpr int FULL_STRENGTH_LEVEL = 1000;

// Fills every field for a playing level. Below full strength the weights shrink in proportion and a
// random term takes their place.
void SetLevel(int level, EvalWeights& weights);

// The budget of evaluated positions of a level: the search goes one ply deeper as long as the last
// one cost less. 0 for levels up to full strength.
[[nodiscard]] constexpr int SearchBudget(int level) {
    return level > FULL_STRENGTH_LEVEL ? level - FULL_STRENGTH_LEVEL : 0;
}

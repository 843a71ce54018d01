// Counting over the compact board what the evaluation weighs.
#pragma once

#include "kernel/search_board.h"
#include "kernel/tallies.h"

namespace {

// Numbers in one word, added and subtracted as a whole. Each has a field with room for all that a
// board can hold, and begins in the middle of its range, so that it can go below as well.
struct TallyField {
    int Place;
    int End;

    [[nodiscard]] constexpr std::uint64_t Middle() const { return std::uint64_t{1} << (End - 1); }
    [[nodiscard]] int In(std::uint64_t word) const {
        const std::uint64_t shifted = word << (64 - End) >> (64 - End + Place);
        return static_cast<int>(shifted) - (1 << (End - Place - 1));
    }
};
inline constexpr TallyField TOWERS_FIELD = {0, 9};
inline constexpr TallyField MOVES_FIELD = {9, 20};
inline constexpr TallyField TO_LIFE_FIELD = {20, 31};
inline constexpr TallyField TO_ENEMY_FIELD = {31, 42};
inline constexpr TallyField STONES_FIELD = {42, 64};
inline constexpr std::uint64_t MIDDLE_OF_ALL = TOWERS_FIELD.Middle() + MOVES_FIELD.Middle() +
                                               TO_LIFE_FIELD.Middle() + TO_ENEMY_FIELD.Middle() +
                                               STONES_FIELD.Middle();
static_assert(MAX_BOARD_SPACES < 1 << 8 && NUM_DIRECTIONS * MAX_BOARD_SPACES < 1 << 10);

// Counts the tallies of the whole board, without those of the targets that the other side owns when
// nobody asks for them.
template <typename Set>
inline Tallies CountTallies(const BoardShape<Set>& shape, const SearchBoard<Set>& board,
                            bool withEnemies) {
    constexpr int FLAGS = KIND_FREE | KIND_LIFE;
    std::array<std::uint64_t, FLAGS + 1> leads;  // WHITE's sums less BLACK's, by flags
    leads.fill(MIDDLE_OF_ALL);
    Tallies tallies;
    for (int owner = WHITE; owner <= BLACK; ++owner) {
        const Set enemies = board.Owned[OtherColor(owner)];
        ForEachSpace(board.Owned[owner], [&](int space) {
            const int height = board.Height[space];
            const int kind = board.Kind[space];
            const Set reached = shape.Spots[space].Reached[ReachRow(height)] & board.Occupied;
            const int targets = Count(reached);
            auto field = [](int count, const TallyField& to) {
                return static_cast<std::uint64_t>(count) << to.Place;
            };
            const std::uint64_t sums =
                field(1, TOWERS_FIELD) + field(targets, MOVES_FIELD) +
                field(Count(reached & board.Life), TO_LIFE_FIELD) +
                (withEnemies ? field(Count(reached & enemies), TO_ENEMY_FIELD) : 0) +
                field(height, STONES_FIELD);
            leads[kind & FLAGS] += owner == WHITE ? sums : -sums;
            tallies.Mobility += (kind & KIND_FREE) != 0 ? targets : 0;
        });
    }
    for (int flags = 0; flags <= FLAGS; ++flags) {
        const std::uint64_t lead = leads[flags];
        const bool free = (flags & KIND_FREE) != 0;
        int* towers = &tallies.Sums[TowerSums(free, (flags & KIND_LIFE) != 0)];
        towers[TALLY_TOWERS] = TOWERS_FIELD.In(lead);
        towers[TALLY_MOVES] = MOVES_FIELD.In(lead);
        towers[TALLY_STONES] = STONES_FIELD.In(lead);
        int* targets = &tallies.Sums[TargetSums(free)];
        targets[TALLY_TO_LIFE] += TO_LIFE_FIELD.In(lead);
        targets[TALLY_TO_ENEMY] += TO_ENEMY_FIELD.In(lead);
    }
    return tallies;
}

// The stones of WHITE's towers less those of BLACK's, behind the move of the tower on `source` to
// `target`, of which `dead` dies.
template <typename Set>
inline int StoneLeadBehind(const SearchBoard<Set>& board, int source, int target, Set dead) {
    const Set gone = Bit<Set>(source) | Bit<Set>(target) | dead;
    const int stack = board.Height[source] + board.Height[target];
    int lead = Has(dead, target) ? 0 : SignOf(board.ActivePlayer) * stack;
    ForEachSpace(board.Owned[WHITE] & ~gone, [&](int space) { lead += board.Height[space]; });
    ForEachSpace(board.Owned[BLACK] & ~gone, [&](int space) { lead -= board.Height[space]; });
    return lead;
}

}  // namespace

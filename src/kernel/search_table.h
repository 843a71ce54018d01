// The table of searched nodes: a position that a search meets again, along another order of moves,
// is answered from here with all that searching it again would give.
#pragma once

#include <array>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <memory>
#include <new>
#include <type_traits>

#include "kernel/search_board.h"

namespace {

// What the search of a node found. The bound takes no part in a search but to end it: the moves are
// tried in the same order, with the same results, until one reaches the bound. So the same outcome
// holds for every bound above `Above` and up to `UpTo`.
struct SearchOutcome {
    double Value = 0.0;  // what the search of the node returned
    double Above = 0.0;  // the best value before the move that reached the bound
    double UpTo = 0.0;   // the value of that move, or HIGH_INIT_VALUE when none reached it
    std::int64_t NumEvaluations = 0;  // counted evaluations of the whole subtree
    bool IsExact = false;             // every line ended in an end position
};

// Entries are found by a hash and compared by the whole position, so that no other position is ever
// taken for it. A new entry replaces the one in its place, so the table never grows: it takes 2
// megabytes for small boards and 4 for large ones.
template <typename Set>
struct SearchTable {
    // All that tells one node from another.
    struct Key {
        std::array<std::uint8_t, Geometry<Set>::MAX_SPACES> Height;
        std::array<Set, 2> Owned;
        Set Life;
        Set Label;  // side to move, remaining depth and number of the search; see KeyOf

        bool operator==(const Key&) const = default;
    };
    static_assert(std::has_unique_object_representations_v<Key>);

    struct Entry {
        Key Node{};
        SearchOutcome Outcome;
    };

    static constexpr int INDEX_BITS = 14;

    std::unique_ptr<Entry[]> Entries;
    std::uint64_t Search = 0;  // number of the search under way

    // Forgets what earlier searches found: weights and board size may have changed since. Answers
    // false when there is no memory for the table.
    [[nodiscard]] bool BeginSearch() {
        ++Search;
        if (Entries == nullptr) {
            Entries.reset(new (std::nothrow) Entry[std::size_t{1} << INDEX_BITS]);
        }
        return Entries != nullptr;
    }

    // The label holds the side to move in bit 0, the depth from bit 1 on and the search from bit 8
    // on. Searches are numbered from 1, so an unused entry has the label of none.
    [[nodiscard]] Key KeyOf(const SearchBoard<Set>& board, int depth) const {
        const Set side = board.ActivePlayer == BLACK ? 1 : 0;
        const Set label = side | static_cast<Set>(depth) << 1 | static_cast<Set>(Search) << 8;
        return {board.Height, board.Owned, board.Life, label};
    }

    // The one place where an entry of this key may stand.
    [[nodiscard]] Entry& Slot(const Key& key) {
        std::array<std::uint64_t, sizeof(Key) / sizeof(std::uint64_t)> words;
        std::memcpy(words.data(), &key, sizeof key);
        constexpr std::uint64_t GOLDEN = 0x9E3779B97F4A7C15U;
        std::uint64_t hash = 0;
        for (const std::uint64_t word : words) {
            hash = (std::rotl(hash, 29) ^ word) * GOLDEN;
        }
        return Entries[(hash ^ hash >> 32) * GOLDEN >> (64 - INDEX_BITS)];
    }
};

}  // namespace

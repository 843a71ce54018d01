// The table of searched nodes: a position that a search meets again, along another order of moves,
// is answered from here with all that searching it again would give.
#pragma once

#include <array>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <span>
#include <type_traits>

#include "kernel/search_board.h"

namespace {

// What the search of a node found. The bound takes no part in a search but to end it: the moves are
// tried in the same order, with the same results, until one reaches the bound. So the same outcome
// holds for every bound above `Above` and up to `UpTo`.
struct SearchOutcome {
    double Value = 0.0;  // what the search of the node returned
    double Above = 0.0;  // the best value before the move that reached the bound
    // The value of that move, or a trifle less where only that it was enough is known; or
    // HIGH_INIT_VALUE when none reached the bound.
    double UpTo = 0.0;
    std::int64_t NumEvaluations = 0;  // counted evaluations of the whole subtree
    bool IsExact = false;             // every line ended in an end position
};

// Entries are found by a hash and compared by the whole position, so that no other position is ever
// taken for it. Two places are open to an entry, and there the outcome of the deeper search stays.
// A search begins with a small table, which stays near the processor, and goes over to larger ones
// as they fill. All sizes together take 48 megabytes for small boards and 41 for large ones.
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
        Key Node;
        SearchOutcome Outcome;
    };

    // The sizes, from small to large, grow by a factor of four.
    static constexpr int NUM_SIZES = 4;
    static constexpr int FIRST_BITS = sizeof(Set) == sizeof(SmallSet) ? 12 : 11;

    // Zeroed memory of the system, which is not there before it is used.
    struct Free {
        void operator()(void* memory) const { std::free(memory); }
    };
    std::array<std::unique_ptr<Entry[], Free>, NUM_SIZES> Sizes;
    Entry* Entries = nullptr;  // the size in use
    int SizeInUse = 0;
    std::uint64_t Search = 0;    // number of the search under way
    std::int64_t NumStored = 0;  // what it has stored

    // Forgets what earlier searches found: weights and board size may have changed since. Answers
    // false when there is no memory for the table.
    [[nodiscard]] bool BeginSearch() {
        ++Search;
        NumStored = 0;
        return Use(0);
    }

    // The label holds the side to move in bit 0, the depth from bit 1 on and the search from bit 8
    // on. Searches are numbered from 1, so an unused entry has the label of none.
    [[nodiscard]] Key KeyOf(const SearchBoard<Set>& board, int depth) const {
        const Set side = board.ActivePlayer == BLACK ? 1 : 0;
        const Set label = side | static_cast<Set>(depth) << 1 | static_cast<Set>(Search) << 8;
        return {board.Height, board.Owned, board.Life, label};
    }

    // What is known of a node, or null.
    [[nodiscard]] const SearchOutcome* Find(const Key& key) const {
        Entry* places = PlacesOf(key);
        return places[0].Node == key   ? &places[0].Outcome
               : places[1].Node == key ? &places[1].Outcome
                                       : nullptr;
    }

    void Store(const Key& key, const SearchOutcome& outcome) {
        if (++NumStored > 2 * NumEntries() && SizeInUse + 1 < NUM_SIZES) {
            Grow();
        }
        Put({key, outcome});
    }

private:
    static Set DepthOf(const Key& key) { return key.Label >> 1 & 127; }

    void Put(const Entry& entry) {
        Entry* places = PlacesOf(entry.Node);
        const bool isFree = places[0].Node.Label >> 8 != Search || places[0].Node == entry.Node;
        const bool goesFirst = isFree || DepthOf(places[0].Node) <= DepthOf(entry.Node);
        places[goesFirst ? 0 : 1] = entry;
    }

    [[nodiscard]] int IndexBits() const { return FIRST_BITS + 2 * SizeInUse; }
    [[nodiscard]] std::int64_t NumEntries() const { return std::int64_t{1} << IndexBits(); }

    // Goes over to one of the sizes. Without memory for it, all stays as it is.
    [[nodiscard]] bool Use(int size) {
        static_assert(std::is_trivially_copyable_v<Entry>);
        if (Sizes[size] == nullptr) {
            const std::size_t numEntries = std::size_t{1} << (FIRST_BITS + 2 * size);
            Sizes[size].reset(static_cast<Entry*>(std::calloc(numEntries, sizeof(Entry))));
        }
        if (Sizes[size] == nullptr) {
            return false;
        }
        Entries = Sizes[size].get();
        SizeInUse = size;
        return true;
    }

    void Grow() {
        const std::span<const Entry> before(Entries, static_cast<std::size_t>(NumEntries()));
        if (!Use(SizeInUse + 1)) {
            NumStored = 0;  // asks again later
            return;
        }
        for (const Entry& entry : before) {
            if (entry.Node.Label >> 8 == Search) {
                Put(entry);
            }
        }
    }

    // The two places where an entry of this key may stand.
    [[nodiscard]] Entry* PlacesOf(const Key& key) const {
        std::array<std::uint64_t, sizeof(Key) / sizeof(std::uint64_t)> words;
        std::memcpy(words.data(), &key, sizeof key);
        // Every word has an odd factor of its own, so that the products need not wait for each
        // other.
        constexpr std::uint64_t GOLDEN = 0x9E3779B97F4A7C15U;
        std::uint64_t hash = 0;
        for (std::size_t i = 0; i < words.size(); ++i) {
            hash += std::rotl(words[i] * (GOLDEN * (2 * i + 1)), 32);
        }
        return Entries + ((hash ^ hash >> 32) * GOLDEN >> (65 - IndexBits())) * 2;
    }
};

}  // namespace

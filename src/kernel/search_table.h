// The table of searched nodes: a position that a search meets again, along another order of moves,
// is answered from here with all that searching it again would give.
#pragma once

#include <array>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <initializer_list>
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
    // The value of that move, or a lower one that reaches the bound as well (SearchLeaves in
    // leaves.h answers with one); or HIGH_INIT_VALUE when none reached the bound.
    double UpTo = 0.0;
    std::int64_t NumEvaluations = 0;  // counted evaluations of the whole subtree
};

// Entries are found by a hash and compared by the whole position, so that no other position is ever
// taken for it. Two places are open to an entry, and in the first one the outcome of the deeper
// search stays. A search begins with a small table, which stays near the processor, and goes over
// to larger ones when it has gone on for long: fresh memory costs more than its answers save at
// first. All sizes together take 23 megabytes.
template <typename Set>
struct SearchTable {
    // All that tells one node from another.
    struct Key {
        std::array<std::uint8_t, BoardShape<Set>::MAX_SPACES> Height;
        std::array<Set, 2> Owned;
        Set Life;
        Set Label;  // side to move, remaining depth and number of the search; see AddressOf

        bool operator==(const Key&) const = default;
    };
    static constexpr int DEPTH_BITS = 7;
    static constexpr int SEARCH_PLACE = 1 + DEPTH_BITS;
    static_assert(std::has_unique_object_representations_v<Key>);

    // A node to be looked up or stored: its key, and the hash of that.
    struct Address {
        Key Node;
        std::uint64_t Hash;
    };

    struct alignas(64) Entry {
        Key Node;
        SearchOutcome Outcome;
    };

    // The lower 16 bits of an entry's label, and above them 16 of its hash. The tags of all entries
    // stand close together, so that what becomes of most nodes is known without a look at far
    // memory: that they are not in the table, and which place they may take. No tag in use is 0,
    // since the remaining depth of what is stored is not.
    using Tag = std::uint32_t;
    static constexpr int TAG_HASH_PLACE = 16;

    // The sizes, from small to large, grow by a factor of four.
    static constexpr int NUM_SIZES = 3;
    static constexpr int STORED_PER_PLACE = 8;  // before the search goes over to the next size
    static constexpr int FIRST_BITS = sizeof(Set) == sizeof(SmallSet) ? 13 : 12;

    // Memory of the system, which is not there before it is used. That of the tags begins as zeros;
    // an entry is only looked at when it has a tag.
    struct Free {
        void operator()(void* memory) const { std::free(memory); }
    };
    struct Size {
        std::unique_ptr<Entry[], Free> Entries;
        std::unique_ptr<Tag[], Free> Tags;
    };
    std::array<Size, NUM_SIZES> Sizes;
    int SizeInUse = 0;
    Entry* Entries = nullptr;  // of the size in use
    Tag* Tags = nullptr;
    std::uint64_t SearchNumber = 0;  // of the search under way
    std::int64_t NumStored = 0;      // what it has stored

    // Forgets what earlier searches found: weights and board size may have changed since. Answers
    // false when there is no memory for the table.
    [[nodiscard]] bool BeginSearch() {
        ++SearchNumber;
        NumStored = 0;
        return Use(0);
    }

    // Where to look for the node of this position and remaining depth. The label holds the side to
    // move in bit 0, then the depth and, from SEARCH_PLACE on, the number of the search.
    [[nodiscard]] Address AddressOf(const SearchBoard<Set>& board, int depth) const {
        const Set side = board.ActivePlayer == BLACK ? 1 : 0;
        const Set label =
            side | static_cast<Set>(depth) << 1 | static_cast<Set>(SearchNumber) << SEARCH_PLACE;
        const Key key = {board.Height, board.Owned, board.Life, label};
        return {key, HashOf(key)};
    }

    // What is known of a node, or null.
    [[nodiscard]] const SearchOutcome* Find(const Address& address) const {
        const std::size_t place = PlaceOf(address.Hash);
        const Tag tag = TagOf(address);
        for (const std::size_t i : {place, place + 1}) {
            if (Tags[i] == tag && Entries[i].Node == address.Node) {
                return &Entries[i].Outcome;
            }
        }
        return nullptr;
    }

    void Store(const Address& address, const SearchOutcome& outcome) {
        if (++NumStored > STORED_PER_PLACE * NumEntries() && SizeInUse + 1 < NUM_SIZES) {
            Grow();
        }
        Put(address, outcome);
    }

private:
    [[nodiscard]] static Tag TagOf(const Address& address) {
        constexpr Tag LABEL = (Tag{1} << TAG_HASH_PLACE) - 1;
        return (static_cast<Tag>(address.Node.Label) & LABEL) |
               (static_cast<Tag>(address.Hash) & ~LABEL);
    }

    // The search that an entry is from, as far as the tag tells: only to choose a place.
    [[nodiscard]] static std::uint8_t SearchOf(Tag tag) {
        static_assert(TAG_HASH_PLACE - SEARCH_PLACE == 8);
        return static_cast<std::uint8_t>(tag >> SEARCH_PLACE);
    }

    [[nodiscard]] static Tag DepthOf(Tag tag) { return tag >> 1 & ((Tag{1} << DEPTH_BITS) - 1); }

    void Put(const Address& address, const SearchOutcome& outcome) {
        const std::size_t place = PlaceOf(address.Hash);
        const Tag tag = TagOf(address);
        const Tag first = Tags[place];
        const bool isOld = SearchOf(first) != SearchOf(tag);
        const std::size_t i = isOld || DepthOf(first) <= DepthOf(tag) ? place : place + 1;
        Entries[i] = {address.Node, outcome};
        Tags[i] = tag;
    }

    [[nodiscard]] int IndexBits() const { return FIRST_BITS + 2 * SizeInUse; }
    [[nodiscard]] std::int64_t NumEntries() const { return std::int64_t{1} << IndexBits(); }

    // Goes over to one of the sizes. Without memory for it, all stays as it is.
    [[nodiscard]] bool Use(int size) {
        static_assert(std::is_trivially_copyable_v<Entry>);
        Size& wanted = Sizes[size];
        const std::size_t numEntries = std::size_t{1} << (FIRST_BITS + 2 * size);
        if (wanted.Entries == nullptr) {
            void* memory = std::aligned_alloc(alignof(Entry), numEntries * sizeof(Entry));
            wanted.Entries.reset(static_cast<Entry*>(memory));
        }
        if (wanted.Tags == nullptr) {
            wanted.Tags.reset(static_cast<Tag*>(std::calloc(numEntries, sizeof(Tag))));
        }
        if (wanted.Entries == nullptr || wanted.Tags == nullptr) {
            return false;
        }
        SizeInUse = size;
        Entries = wanted.Entries.get();
        Tags = wanted.Tags.get();
        return true;
    }

    void Grow() {
        const Entry* entries = Entries;
        const std::span<const Tag> tags(Tags, static_cast<std::size_t>(NumEntries()));
        if (!Use(SizeInUse + 1)) {
            NumStored = 0;  // asks again later
            return;
        }
        for (std::size_t i = 0; i < tags.size(); ++i) {
            if (tags[i] != 0 && entries[i].Node.Label >> SEARCH_PLACE == SearchNumber) {
                Put({entries[i].Node, HashOf(entries[i].Node)}, entries[i].Outcome);
            }
        }
    }

    [[nodiscard]] std::size_t PlaceOf(std::uint64_t hash) const {
        return hash >> (65 - IndexBits()) << 1;
    }

    [[nodiscard]] static std::uint64_t HashOf(const Key& key) {
        std::array<std::uint64_t, sizeof(Key) / sizeof(std::uint64_t)> words;
        std::memcpy(words.data(), &key, sizeof key);
        // Every word has an odd factor of its own, so that the products need not wait for each
        // other.
        constexpr std::uint64_t GOLDEN = 0x9E3779B97F4A7C15U;
        std::uint64_t hash = 0;
        for (std::size_t i = 0; i < words.size(); ++i) {
            hash += std::rotl(words[i] * (GOLDEN * (2 * i + 1)), 32);
        }
        return (hash ^ hash >> 32) * GOLDEN;
    }
};

}  // namespace

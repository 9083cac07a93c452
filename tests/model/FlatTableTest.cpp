// The flat hash table under the registry and the stored link positions:
// random inserts, lookups and removals against std::unordered_map, with
// hashes that crowd few home slots so that runs wrap around the table's end
// and removals must shift entries back across them.
#include <krmwtarn/platform/common/FlatTable.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <unordered_map>

namespace {

struct Slot {
    int key = 0;  // 0: free
    int value = 0;
};
// Keys share home slots in groups of 16, and the groups lie near the top of
// any table size, so runs cross from the last slot to the first.
std::uint64_t crowded(int key) { return ~std::uint64_t{0} - static_cast<std::uint64_t>(key / 16); }
struct Traits {
    static bool isFree(const Slot& s) noexcept { return s.key == 0; }
    static std::uint64_t hashOf(const Slot& s) noexcept { return crowded(s.key); }
};
auto is(int key) {
    return [key](const Slot& s) { return s.key == key; };
}

TEST(FlatTable, AgreesWithAStandardMapThroughRandomInsertsAndRemovals) {
    krflat::FlatTable<Slot, Traits> table;
    std::unordered_map<int, int> expected;
    std::mt19937 random(7);
    for (int step = 0; step < 50000; ++step) {
        int key = 1 + static_cast<int>(random() % 1500);
        switch (random() % 3) {
            case 0: {
                auto [slot, fresh] = table.insert(crowded(key), is(key), Slot{key, step});
                EXPECT_EQ(fresh, expected.emplace(key, step).second);
                EXPECT_EQ(slot->value, expected[key]);
                break;
            }
            case 1:
                EXPECT_EQ(table.erase(crowded(key), is(key)), expected.erase(key) == 1);
                break;
            default: {
                const Slot* s = table.find(crowded(key), is(key));
                auto it = expected.find(key);
                ASSERT_EQ(s != nullptr, it != expected.end()) << "key " << key << " at step " << step;
                if (s) {
                    EXPECT_EQ(s->value, it->second);
                }
            }
        }
        ASSERT_EQ(table.size(), expected.size());
    }
    // Every entry is still reachable after the last removals and a regrowth.
    table.reserve(expected.size() * 4);
    for (const auto& [key, value] : expected) {
        const Slot* s = table.find(crowded(key), is(key));
        ASSERT_NE(s, nullptr) << key;
        EXPECT_EQ(s->value, value);
    }
    std::size_t seen = 0;
    table.each([&](const Slot&) { ++seen; });
    EXPECT_EQ(seen, expected.size());
}

TEST(FlatTable, PointerHashesSpreadAlignedAddressesOverTheLowBits) {
    // Objects 16 or 64 bytes apart spread over the homes like random keys.
    alignas(64) static char block[64 * 256];
    for (std::size_t stride : {16u, 64u}) {
        std::unordered_map<std::uint64_t, int> homes;
        for (std::size_t i = 0; i < 256 * 64 / stride; ++i) ++homes[krflat::pointerHash(block + i * stride) & 1023];
        int worst = 0;
        for (const auto& [home, n] : homes) worst = std::max(worst, n);
        EXPECT_LE(worst, 8) << "stride " << stride;  // as random placement would; the address alone: 16
    }
}

}  // namespace

// MutationTest.cpp — the reader over mutated decks: seeded runs that cut,
// splice, flip and repeat bytes of the hand-written decks (and write their
// loads back) must never crash, hang or leave objects behind after a failed
// load. The libFuzzer entry (DeckFuzz.cpp) drives the same check.
#include "DeckTestSupport.h"
#include "DeckFuzzCheck.h"

#include <gtest/gtest.h>

#include <random>

TEST(Mutation, SeededMutationsOfTheHandWrittenDecks) {
    std::vector<krsource::Deck> decks = decktest::handWrittenDecks();
    std::mt19937 rng(20240517);
    const char alphabet[] = "(),='* X\n\t\r0AZ\x1a\x40\xc1";
    for (int run = 0; run < 3000; ++run) {
        std::string bytes = decks[rng() % decks.size()].bytes;
        int edits = 1 + rng() % 8;
        for (int e = 0; e < edits && !bytes.empty(); ++e) {
            std::size_t at = rng() % bytes.size();
            switch (rng() % 5) {
                case 0: bytes[at] = alphabet[rng() % (sizeof alphabet - 1)]; break;
                case 1: bytes.erase(at, rng() % 40); break;
                case 2: bytes.insert(at, bytes.substr(rng() % bytes.size(), rng() % 80)); break;
                case 3: bytes.resize(at); break;
                default: bytes[at] = static_cast<char>(rng()); break;
            }
        }
        ASSERT_TRUE(deckfuzz::check(bytes)) << "run " << run;
    }
}

// ImportMutationTest.cpp — seeded runs of hostile imports: the sample's
// documents in several orders (some imported beforehand) and every view's
// document, mutated a few times each; every import must either give its
// documents back unchanged or be refused at a place in the file with the
// repository exactly as it was. A failure names its seed; the same seed
// replays it.
#include "import/ImportCheck.h"

#include <gtest/gtest.h>

namespace {
struct Tally {
    int imported = 0, refused = 0;
};

// One run: a file made and mutated from the seed, imported and checked.
std::string run(std::uint32_t seed, Tally& tally) {
    importcheck::SeededChoices choices(seed);
    std::vector<nlohmann::json> docs;
    if (choices.below(3) == 0) {
        const auto& views = importcheck::viewDocuments();
        docs.push_back(views[choices.below(static_cast<std::uint32_t>(views.size()))]);
    } else {
        docs = importcheck::shuffledSample(choices);
        std::size_t before = choices.below(static_cast<std::uint32_t>(docs.size()));
        std::string failure = importcheck::importAndCheck(importcheck::file({docs.begin(), docs.begin() + before}));
        if (!failure.empty()) return "importing the unchanged documents first: " + failure;
        docs.erase(docs.begin(), docs.begin() + before);
    }
    nlohmann::json file = importcheck::file(std::move(docs));
    for (std::uint32_t n = 1 + choices.below(3); n > 0; --n) importcheck::mutate(file, choices);
    bool imported = false;
    std::string failure = importcheck::importAndCheck(file, &imported);
    ++(imported ? tally.imported : tally.refused);
    return failure;
}

class Mutations : public ::testing::TestWithParam<std::uint32_t> {
protected:
    void SetUp() override { DLLView_init::initAll(); }
    void TearDown() override { DSRegistrar::releaseAll(); }
};

TEST_P(Mutations, EndInARoundTripOrARefusalThatLeavesNothingBehind) {
    Tally tally;
    const std::uint32_t first = GetParam() * 250;
    for (std::uint32_t seed = first; seed < first + 250; ++seed) {
        std::string failure = run(seed, tally);
        DSRegistrar::releaseAll();
        ASSERT_EQ(failure, "") << "seed " << seed;
    }
    // Both ways are taken often.
    EXPECT_GT(tally.imported, 25);
    EXPECT_GT(tally.refused, 100);
}

INSTANTIATE_TEST_SUITE_P(Seeds, Mutations, ::testing::Range(0u, 8u));
}  // namespace

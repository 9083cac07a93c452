// RefusalTest.cpp — what a user reads when the model refuses a link: each
// refusal the links throw, provoked for real, reads as a sentence with every
// placeholder filled and its number kept; one the table lacks reads as its
// message, and the owner of a thrown exception frees it on every path.
#include <krmwtarn/krmwtarn.h>
#include <krmwtarn/platform/common/Finding.h>
#include <krmwtarn/platform/common/Refusals.h>

#include <gtest/gtest.h>

#include <functional>
#include <memory>

namespace {
class Refusals : public ::testing::Test {
protected:
    void TearDown() override { DSRegistrar::releaseAll(); }
};
}  // namespace

TEST_F(Refusals, EachRefusalOfTheLinksReadsAsASentenceWithItsNumber) {
    DSDBD a("V1", ADObject::defaultObjID(), 1), b("V1", ADObject::defaultObjID(), 1);
    DSSegment seg("V1", ADObject::defaultObjID(), 1), other("V2", ADObject::defaultObjID(), 1);
    DSContainsSegment(&a, &seg, 1);
    struct Case {
        const char* what;
        std::function<void()> step;
        const char* sentence;
    };
    for (const Case& c : std::vector<Case>{
             {"twice", [&] { DSContainsSegment(&a, &seg, 1); },
              "the two objects are joined by a DSContainsSegment link already (at position 0 of the role) (2441)"},
             {"second owner", [&] { DSContainsSegment(&b, &seg, 1); },
              "this DSSegment belongs to another object already: a DSContainsSegment link gives it one owner only "
              "(2514)"},
             {"versions", [&] { DSContainsSegment(&a, &other, 1); },
              "the two ends are in different versions (V2 and V1) (2510)"}}) {
        std::unique_ptr<KVException> refused = kr::refusalOf(c.step);
        ASSERT_NE(refused, nullptr) << c.what;
        EXPECT_TRUE(kr::hasSentence(*refused)) << c.what;
        EXPECT_EQ(kr::explain(*refused), c.sentence) << c.what << ": " << refused->message();
        EXPECT_EQ(kr::describe(*refused), c.sentence) << c.what;
    }
    EXPECT_EQ(kr::refusalOf([] {}), nullptr);
}

TEST(RefusalText, OneTheTableLacksReadsAsItsMessageOrItsText) {
    KVException store("krmwtarn_store", 7, "the repository is locked by ann");
    EXPECT_FALSE(kr::hasSentence(store));
    EXPECT_EQ(kr::explain(store), "krmwtarn_store 7: the repository is locked by ann");
    EXPECT_EQ(kr::describe(store), "the repository is locked by ann");
    // The same number with texts of another shape is not taken for the known one.
    KVException odd("ewswtarn_", 2514, "only one");
    EXPECT_FALSE(kr::hasSentence(odd));
    EXPECT_EQ(kr::explain(odd), "ewswtarn_ 2514: only one");
}

// Every finding reads as one line: its place (a deck place, the file as a
// whole, or an object path), its severity, its code where it has one.
TEST(FindingText, ThePlaceIsTheDeckElseTheFileElseThePath) {
    struct Case {
        kr::Finding f;
        const char* text;
    };
    for (const Case& c : std::vector<Case>{{{"d.dbd", 3, 10, kr::Severity::Error, "a second root", "SEG-ROOT", "D/S"},
                                            "d.dbd:3:10: error: [SEG-ROOT] a second root"},
                                           {{"d.dbd", 0, 0, kr::Severity::Error, "cannot read the deck", {}, {}},
                                            "d.dbd: error: cannot read the deck"},
                                           {{{}, 0, 0, kr::Severity::Warning, "no sequence field", "SEQ", "D/S"},
                                            "D/S: warning: [SEQ] no sequence field"},
                                           {{{}, 0, 0, kr::Severity::Error, "refused", {}, {}}, "error: refused"}})
        EXPECT_EQ(c.f.text(), c.text);
    KVException store("krmwtarn_store", 7, "the repository is locked by ann");
    kr::Finding f = kr::findingOf(store, "repo.db");
    EXPECT_EQ(f.text(), "repo.db: error: [7] the repository is locked by ann");
}

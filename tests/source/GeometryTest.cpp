// GeometryTest.cpp — a field's START, BYTES and TYPE: kept in the data item the
// field uses and in that item's type definition, written back by the deck
// writer (TYPE=C, the default, left out), read back to the same values.
#include "DeckTestSupport.h"
#include "Geometries.h"

#include <gtest/gtest.h>

namespace {
class Geometry : public ::testing::Test {
protected:
    void TearDown() override { DSRegistrar::releaseAll(); }
};

const char* const kSegment =
    "         DBD   NAME=GEODBD,ACCESS=HDAM,RMNAME=(DFSHDC40,1,10)\n"
    "         SEGM  NAME=ROOT,PARENT=0,BYTES=40\n"
    "         FIELD NAME=(KEY,SEQ,U),START=1,BYTES=6,TYPE=P\n"
    "         FIELD NAME=TEXT,START=7,BYTES=30\n"
    "         FIELD NAME=FLAG,TYPE=X\n"
    "         FIELD NAME=BARE\n"
    "         DBDGEN\n";
}  // namespace

TEST_F(Geometry, LoadedIntoTheDataItemAndItsTypeDefinition) {
    krsource::LoadResult r = krsource::loadDecks({{"geo.dbd", kSegment}});
    ASSERT_TRUE(r.ok()) << decktest::report(r);
    EXPECT_EQ(decktest::report(r).find("have no place"), std::string::npos) << decktest::report(r);
    // TYPE defaults to C; a field that gives none of the three uses no data item.
    std::map<std::string, std::string> expected = {
        {"GEODBD/ROOT/KEY", "1,6,P"}, {"GEODBD/ROOT/TEXT", "7,30,C"}, {"GEODBD/ROOT/FLAG", "0,0,X"}};
    EXPECT_EQ(decktest::geometries(r.dbds), expected);
    for (DSSegment* s = r.dbds[0]->_getFirst_segments(); s; s = r.dbds[0]->_getNext_segments())
        for (DSField* f = (*s)->_getFirst_fields(); f; f = (*s)->_getNext_fields())
            if (std::string((*f)->_get_strFieldName()) == "BARE") {
                EXPECT_EQ((*f)->_get_targetDataItem()->count(), 0);
            }
}

TEST_F(Geometry, WrittenWithTheDefaultTypeLeftOut) {
    krsource::LoadResult r = krsource::loadDecks({{"geo.dbd", kSegment}});
    ASSERT_TRUE(r.ok()) << decktest::report(r);
    std::string deck = krsource::writeDbdDeck(r.dbds[0].operator->());
    EXPECT_NE(deck.find("FIELD NAME=(KEY,SEQ,U),START=1,BYTES=6,TYPE=P"), std::string::npos) << deck;
    EXPECT_NE(deck.find("FIELD NAME=TEXT,START=7,BYTES=30\n"), std::string::npos) << deck;
    EXPECT_NE(deck.find("FIELD NAME=FLAG,TYPE=X\n"), std::string::npos) << deck;
    EXPECT_NE(deck.find("FIELD NAME=BARE\n"), std::string::npos) << deck;
}

// Every hand-written deck's geometry survives deck -> model -> deck -> model.
TEST_F(Geometry, HandWrittenDecksReadBackToTheSameValues) {
    krsource::LoadResult first = krsource::loadDecks(decktest::handWrittenDecks());
    ASSERT_TRUE(first.ok()) << decktest::report(first);
    auto before = decktest::geometries(first.dbds);
    EXPECT_GE(before.size(), 15u);
    EXPECT_EQ(before.at("HOSPDBD/PATIENT/PATNO"), "1,8,P");
    std::vector<krsource::Deck> written = decktest::written(first.dbds, first.psbs);
    krsource::LoadResult again = krsource::loadDecks(written, "AGAIN");
    ASSERT_TRUE(again.ok()) << decktest::report(again);
    EXPECT_EQ(decktest::geometries(again.dbds), before);
}

TEST_F(Geometry, TypeIsOneLetter) {
    std::string deck = kSegment;
    deck.replace(deck.find("TYPE=P"), 6, "TYPE=PD");
    krsource::LoadResult r = krsource::loadDecks({{"geo.dbd", deck}});
    EXPECT_FALSE(r.ok());
    EXPECT_NE(decktest::report(r).find("geo.dbd:3:54: error: FIELD TYPE: one letter is expected, not 'PD'"),
              std::string::npos)
        << decktest::report(r);
}

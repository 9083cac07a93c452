// RoundTripTest.cpp — decks written from the model read back to the same
// model: the hand-written decks (every statement and operand) and the built-in
// sample, compared as the documents `export` writes.
#include "DeckTestSupport.h"
#include <krmwtarn/sample/SampleModel.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <functional>
#include <map>
#include <sstream>

using decktest::documents;

namespace {
// Decks do not name the dictionary's objects (a segment's layout and text, a
// field's data item and text): those links are left out of the comparison. A
// compression routine is known by its routine's name, which the sample does
// not use as its identity.
nlohmann::json withoutDictionary(nlohmann::json docs) {
    std::function<void(nlohmann::json&)> walk = [&](nlohmann::json& j) {
        if (j.is_object()) {
            for (const char* key :
                 {"mappingStructure", "segmName", "fldName", "targetDataItem", "sharedDataItem", "alternateStructures"})
                j.erase(key);
            if (j.value("@class", "") == "DSCompRoutine") j.erase("@id");
            for (auto& [key, value] : j.items()) walk(value);
        } else if (j.is_array()) {
            for (auto& v : j) walk(v);
        }
    };
    walk(docs);
    return decktest::renumbered(docs);
}

class RoundTrip : public ::testing::Test {
protected:
    void TearDown() override { DSRegistrar::releaseAll(); }
};
}  // namespace

TEST_F(RoundTrip, SampleWrittenAndLoadedExportsAsTheSample) {
    sample::Model m = sample::build();
    // What a deck states and the sample leaves out: a SENSEG always names its
    // segment, an exit is its capture routine.
    DSSenSegment viaIndex(sample::kVersion, "HOSPPSB.NAMEPCB.PATIENT", 1);
    DSSegmentComplex patient(sample::kVersion, "HOSPDBD.PATIENT", 1);
    DSSegment patientSegment(patient.operator->());
    DSMapsTo(&viaIndex, &patientSegment, 1);
    DSExit(sample::kVersion, "PARTDBD.PARTEXIT", 1)->_set_captureRoutine("PARTEXIT", omStore);
    std::vector<DSDBD> dbds = {m.hospital, m.hospIndex, m.nameIndex, m.logical, m.dedb, m.hdam, m.msdb};
    nlohmann::json expected = documents(dbds, {m.psb});
    std::vector<krsource::Deck> decks = decktest::written(dbds, {m.psb});
    dbds.clear();
    m = sample::Model();
    DSRegistrar::releaseAll();

    krsource::LoadResult loaded = krsource::loadDecks(decks, sample::kVersion);
    ASSERT_TRUE(loaded.ok()) << decktest::report(loaded);
    nlohmann::json actual = documents(loaded.dbds, loaded.psbs);
    nlohmann::json diff = nlohmann::json::diff(withoutDictionary(expected), withoutDictionary(actual));
    EXPECT_TRUE(diff.empty()) << diff.dump(1);
}

namespace {
// The documents of the definitions that `decks` load into an empty
// repository, each document keyed by its root's identity.
std::map<std::string, nlohmann::json> loadedDocuments(const std::vector<krsource::Deck>& decks,
                                                      std::vector<krsource::Deck>* writtenBack = nullptr) {
    krsource::LoadResult r = krsource::loadDecks(decks);
    EXPECT_TRUE(r.ok()) << decktest::report(r);
    std::map<std::string, nlohmann::json> byRoot;
    for (const DSDBD& d : r.dbds) byRoot[d->objID()] = documents({d}, {})[0];
    for (const DSPSB& p : r.psbs) byRoot[p->objID()] = documents({}, {p})[0];
    if (writtenBack) *writtenBack = decktest::written(r.dbds, r.psbs);
    r = krsource::LoadResult();
    DSRegistrar::releaseAll();
    return byRoot;
}
}  // namespace

TEST_F(RoundTrip, HandWrittenDecksWrittenAndReadBackGiveTheSameModel) {
    std::vector<krsource::Deck> generated;
    auto original = loadedDocuments(decktest::handWrittenDecks(), &generated);
    ASSERT_EQ(original.size(), 11u);
    auto again = loadedDocuments(generated);
    for (const auto& [root, doc] : original) {
        nlohmann::json diff = nlohmann::json::diff(doc, again[root]);
        EXPECT_TRUE(diff.empty()) << root << "\n" << diff.dump(1);
    }
    // Writing is canonical: the written decks write themselves again unchanged.
    std::vector<krsource::Deck> second;
    loadedDocuments(generated, &second);
    ASSERT_EQ(second.size(), generated.size());
    for (std::size_t i = 0; i < generated.size(); ++i)
        EXPECT_EQ(second[i].bytes, generated[i].bytes) << generated[i].name;
}

TEST_F(RoundTrip, TheOrderOfTheFilesDoesNotMatter) {
    std::vector<krsource::Deck> decks = decktest::handWrittenDecks();
    auto forward = loadedDocuments(decks);
    std::reverse(decks.begin(), decks.end());
    auto backward = loadedDocuments(decks);
    EXPECT_EQ(forward, backward);
}

TEST_F(RoundTrip, WrittenCardsStayWithinTheirColumns) {
    krsource::LoadResult r = krsource::loadDecks(decktest::handWrittenDecks());
    for (const krsource::Deck& d : decktest::written(r.dbds, r.psbs)) {
        std::istringstream in(d.bytes);
        std::string card;
        bool continued = false;
        while (std::getline(in, card)) {
            ASSERT_LE(card.size(), 72u) << d.name << ": " << card;
            if (continued) {
                EXPECT_EQ(card.find_first_not_of(' '), 15u) << d.name << ": " << card;
            }
            continued = card.size() == 72;
            if (continued) {
                EXPECT_EQ(card[71], 'X');
            }
        }
    }
}

// A PCB whose type is neither a TP nor a based one has nothing a deck can
// state: it is passed over, and the PCBs around it are written as ever.
TEST_F(RoundTrip, APcbOfNoStatableTypeIsPassedOver) {
    DSPSB psb("V", "P", 1);
    psb->_set_strPSBName("P", omStore);
    DSPCB bare("V", "P.BARE", 1), tp("V", "P.TP", 1);
    bare->_set_strPCBAccessName("BARE", omStore);
    tp->_set_strPCBAccessName("TERM", omStore);
    DSPCBtype bareType("V", "P.BARE.TYPE", 1);
    DSPCBtp tpType("V", "P.TP.TYPE", 1);
    DSPCBtype tpAsType(tpType.operator->());
    DSIncludesPCB(&psb, &bare, 1);
    DSIncludesPCB(&psb, &tp, 1);
    DSSpecifiedByType(&bare, &bareType, 1);
    DSSpecifiedByType(&tp, &tpAsType, 1);
    std::string deck = krsource::writePsbDeck(psb.operator->());
    EXPECT_EQ(deck.find("BARE"), std::string::npos) << deck;
    EXPECT_NE(deck.find("PCB   TYPE=TP,PCBNAME=TERM\n"), std::string::npos) << deck;
    EXPECT_NE(deck.find("PSBGEN"), std::string::npos) << deck;
}

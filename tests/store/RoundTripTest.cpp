// RoundTripTest.cpp — the sample and the largest model stored and retrieved:
// in one process and by a second process, every role's order and every value
// back exactly (the export documents are equal); loaded decks with their
// fields' geometry. Each test runs on an SQLite
// file and on a PostgreSQL server.
#include <krmwtarn/source/DeckLoader.h>
#include <krmwtarn/store/Repository.h>
#include "tests/source/Geometries.h"
#include "tests/store/StoreTestSupport.h"

#include <cctype>

#include <cstring>

TEST_P(StoreTest, SampleRoundTripInOneProcess) {
    nlohmann::json before;
    {
        sample::Model m = sample::build();
        before = storetest::documents();
        auto r = open();
        r->storeAll();
    }
    DSRegistrar::releaseAll();
    ASSERT_EQ(DSRegistrar::count(), 0u);
    auto r = open();
    r->retrieveAll();
    EXPECT_EQ(storetest::documents(), before);
}

TEST_P(StoreTest, SampleStoredByAnotherProcessIsRetrievedHere) {
    nlohmann::json expected;
    {
        sample::Model m = sample::build();
        expected = storetest::documents();
    }
    DSRegistrar::releaseAll();
    std::string out;
    ASSERT_EQ(probe("store-sample " + repo(), &out), 0) << out;
    auto r = open();
    r->retrieveAll();
    EXPECT_EQ(storetest::renumbered(storetest::documents()), storetest::renumbered(expected));
}

TEST_P(StoreTest, SampleStoredHereIsExportedByAnotherProcess) {
    nlohmann::json expected;
    {
        sample::Model m = sample::build();
        expected = storetest::documents();
        open()->storeAll();
    }
    std::string out;
    ASSERT_EQ(probe("export " + repo(), &out), 0) << out;
    EXPECT_EQ(nlohmann::json::parse(out), expected);
}

// Role order comes back exactly, also in roles that hold links of several
// units retrieved in any order: the PCBs based on a DBD are links of the PCB
// units, placed in the DBD's role at their stored positions.
TEST_P(StoreTest, RoleOrderComesBackWhateverOrderUnitsAreRetrievedIn) {
    auto idsOf = [](DSModelCollection* role, bool far) {
        std::vector<std::string> ids;
        for (const ADObject& h : *role) {
            auto* l = static_cast<_ADLink*>(h.impl());
            ids.push_back(far ? (*l->getSource())->objID() : h->objID());
        }
        return ids;
    };
    std::vector<std::string> segments, based;
    {
        storetest::buildLargest("V1", 6);
        DSDBD dbd("V1", "BIGDBD", 1);
        // Re-order: the last segment first, the third behind the first.
        DSModelCollection* role = dbd->_get_segments();
        auto* last = static_cast<_DSContainsSegment*>(role->at(role->count() - 1)->impl());
        last->moveTargetAfter(nullptr, omStore);
        auto* third = static_cast<_DSContainsSegment*>(role->at(3)->impl());
        DSContainsSegment first(static_cast<_DSContainsSegment*>(role->at(0)->impl()));
        third->moveTargetAfter(&first, omStore);
        segments = idsOf(dbd->_get_segments(), false);
        based = idsOf(dbd->_get_basedPCBs(), true);
        open()->storeAll();
    }
    DSRegistrar::releaseAll();
    auto r = open();
    // The PCB units first, in reverse order, then the DBD, then the PSB.
    for (int i = 5; i >= 0; --i) r->retrieveUnit({"DSPCB", "PCB" + std::to_string(i), "V1"});
    ADObject dbd = r->retrieveUnit({"DSDBD", "BIGDBD", "V1"});
    r->retrieveUnit({"DSPSB", "BIGPSB", "V1"});
    auto* d = static_cast<_DSDBD*>(dbd.impl());
    EXPECT_EQ(idsOf(d->_get_segments(), false), segments);
    EXPECT_EQ(idsOf(d->_get_basedPCBs(), true), based);
    EXPECT_EQ(d->_get_basedPCBs()->count(), 6);
}

// A hundred DBDs and PSBs: the sample's units copied into twelve versions,
// all retrieved, each version exporting as the sample does.
TEST_P(StoreTest, HundredDefinitionsInThirteenVersions) {
    nlohmann::json expected = storedSample();
    auto r = open();
    for (const krstore::UnitInfo& u : r->units())
        for (int v = 1; v <= 12; ++v) r->copyUnit(u.key, std::string("V").append(std::to_string(v)));
    int definitions = 0;
    for (const krstore::UnitInfo& u : r->units())
        definitions += u.key.className == "DSDBD" || u.key.className == "DSPSB";
    EXPECT_GE(definitions, 100);
    r->retrieveAll();
    nlohmann::json all = storetest::documents();
    std::string sampleText = expected.dump();
    for (int v = 1; v <= 12; ++v) {
        nlohmann::json version = nlohmann::json::array();
        for (const auto& d : all)
            if (d["root"]["@version"] == "V" + std::to_string(v)) version.push_back(d);
        std::string text = version.dump();
        // The same documents but for the version every object carries.
        std::string replaced = sampleText;
        for (size_t at = 0; (at = replaced.find("\"SAMPLE\"", at)) != std::string::npos;)
            replaced.replace(at, 8, "\"V" + std::to_string(v) + "\"");
        EXPECT_EQ(text, replaced) << "version V" << v;
    }
}

STORE_ON_BOTH_BACKENDS(StoreTest);

// A field's geometry lives in dictionary objects that its DBD's unit holds (the
// field controls its data item, the item its type definition): stored with the
// DBD and retrieved with it.
TEST_P(StoreTest, LoadedDecksKeepTheirFieldGeometry) {
    std::map<std::string, std::string> before;
    {
        krsource::LoadResult r = krsource::loadDeckFiles(
            {std::string(KRMWTARN_DECKS_DIR) + "/hospital.dbd", std::string(KRMWTARN_DECKS_DIR) + "/hospidx.dbd",
             std::string(KRMWTARN_DECKS_DIR) + "/nameidx.dbd", std::string(KRMWTARN_DECKS_DIR) + "/hosplog.dbd"});
        ASSERT_TRUE(r.ok());
        before = decktest::geometries(r.dbds);
        ASSERT_FALSE(before.empty());
        open()->storeAll();
    }
    DSRegistrar::releaseAll();
    auto r = open();
    r->retrieveAll();
    std::vector<DSDBD> dbds;
    DSRegistrar::forEach([&](_ADObject* o) {
        if (!std::strcmp(o->whoAmI(), "DSDBD")) dbds.emplace_back(static_cast<_DSDBD*>(o));
    });
    EXPECT_EQ(decktest::geometries(dbds), before);
}

// Stored positions need only keep their order: positions far apart (as a
// repository written by other means may hold) still put every role back in
// its order.
TEST_P(StoreTest, PositionsFarApartKeepTheirOrder) {
    nlohmann::json before = storedSample();
    for (std::string table : {"DSContainsSegment", "DSHasField", "DSIncludesPCB"}) {
        if (onServer())  // the server's table names are in lower case
            for (char& c : table) c = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
        std::string name = "\"" + table + "\"";
        query("UPDATE " + name + " SET source_pos = source_pos * 10000000 + 5, target_pos = target_pos * 999983");
    }
    open()->retrieveAll();
    EXPECT_EQ(storetest::documents(), before);
}

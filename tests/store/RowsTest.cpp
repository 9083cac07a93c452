// RowsTest.cpp — the rows behind the unit operations: a store replaces the rows
// of the units it stores and of no other unit, in one call that mixes units
// stored before with new ones and across stores of one program; a copy into
// another repository takes every unit's row as it is (revision, name, who
// stored it and when) and leaves the locks behind. Each test runs on an SQLite
// file and on a PostgreSQL server (the suite is instantiated in RoundTripTest.cpp).
#include "tests/store/StoreTestSupport.h"

namespace {
const krstore::UnitKey hospital{"DSDBD", "HOSPDBD", sample::kVersion};
const krstore::UnitKey psb{"DSPSB", "HOSPPSB", sample::kVersion};
}  // namespace

TEST_P(StoreTest, AStoreReplacesTheRowsOfTheUnitsItStoresAndNoOthers) {
    nlohmann::json before;
    std::size_t units = 0;
    {
        sample::Model m = sample::build();
        auto r = open();
        // One unit, then it again beside every other unit, new: one store that
        // replaces a unit's rows and writes the first rows of the others.
        r->storeUnits({m.hospital.impl()});
        m.hospital->_set_versionString("2.0", omStore | omSetChanged);
        r->storeAll();
        // Then each of two units alone: the second store replaces the PSB's
        // rows only, not those the store before it replaced.
        m.hospital->_set_versionString("3.0", omStore | omSetChanged);
        r->storeUnits({m.hospital.impl()});
        m.psb->_set_compatibility(1, omStore | omSetChanged);
        r->storeUnits({m.psb.impl()});
        before = storetest::documents();
        EXPECT_EQ(r->knownRevision(hospital), 3);
        EXPECT_EQ(r->knownRevision(psb), 2);
        units = r->units().size();
        for (const krstore::UnitInfo& u : r->units()) {
            long expected = u.key.text() == hospital.text() ? 3 : u.key.text() == psb.text() ? 2 : 1;
            EXPECT_EQ(u.revision, expected) << u.key.text();
        }
    }
    DSRegistrar::releaseAll();
    auto r = open();
    r->retrieveAll();
    EXPECT_EQ(r->units().size(), units);
    EXPECT_EQ(storetest::documents(), before);
}

TEST_P(StoreTest, ACopyIntoAnotherRepositoryKeepsEveryUnitsRowButNotItsLock) {
    std::string from = (dir_ / "from.db").string();
    {
        sample::Model m = sample::build();
        auto a = krstore::Repository::open(from);
        a->storeAll();
        m.hospital->_set_versionString("2.0", omStore | omSetChanged);
        a->storeUnits({m.hospital.impl()});
        a->lockUnit(psb);
    }
    DSRegistrar::releaseAll();
    auto a = krstore::Repository::open(from);
    auto b = open();
    std::vector<krstore::UnitInfo> source = a->units();
    ASSERT_EQ(a->copyInto(*b), source.size());
    std::vector<krstore::UnitInfo> copied = b->units();
    ASSERT_EQ(copied.size(), source.size());
    for (std::size_t i = 0; i < source.size(); ++i) {
        const krstore::UnitInfo &s = source[i], &c = copied[i];
        EXPECT_EQ(c.key.text(), s.key.text());
        EXPECT_EQ(c.name, s.name);
        EXPECT_EQ(c.revision, s.revision) << s.key.text();
        EXPECT_EQ(c.storedBy, s.storedBy);
        EXPECT_EQ(c.storedAt, s.storedAt);
        EXPECT_FALSE(c.locked) << s.key.text();
    }
    EXPECT_TRUE(a->findUnit("HOSPPSB").locked);
    // The copy's units are stored again as any other: at their next revision.
    b->retrieveAll();
    ADObject dbd(DSRegistrar::findObj("DSDBD", "HOSPDBD", sample::kVersion));
    ASSERT_FALSE(dbd.isEmpty());
    b->storeUnits({dbd.impl()});
    EXPECT_EQ(b->findUnit("HOSPDBD").revision, 3);
}

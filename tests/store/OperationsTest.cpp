// OperationsTest.cpp — the unit operations and their refusals: revisions and
// the stale store, change bits, retrieve sharing live objects, refresh, touch,
// locks and their owners, delete with its delete list, copy, a unit claiming
// another unit's object, values out of their column's range. A refused
// operation leaves memory and the repository as they were.
#include "tests/store/StoreTestSupport.h"

#include <fstream>

namespace {
krstore::OpenOptions as(const char* user) {
    krstore::OpenOptions o;
    o.user = user;
    return o;
}
const krstore::UnitKey hospital{"DSDBD", "HOSPDBD", sample::kVersion};
}  // namespace

TEST_P(StoreTest, StoreCountsRevisionsAndClearsChangeBits) {
    sample::Model m = sample::build();
    m.hospital->_set_versionString("2.0", omStore | omSetChanged);
    ASSERT_EQ(m.hospital->getChangeFlag("versionString"), 64u);
    auto r = open();
    r->makeCurrent();
    EXPECT_EQ(m.hospital->store(), 0);
    EXPECT_EQ(m.hospital->getChangeFlag("versionString"), 0u);
    EXPECT_EQ(m.hospital->getChangeFlag(nullptr), 0u);
    EXPECT_EQ(r->knownRevision(hospital), 1);
    m.hospital->touch();
    EXPECT_EQ(m.hospital->getChangeFlag(nullptr), 4u);
    m.hospital->store();
    EXPECT_EQ(r->knownRevision(hospital), 2);
    EXPECT_EQ(r->findUnit("HOSPDBD").revision, 2);
    // Only the unit of the object stored: the PSB is not in the repository.
    EXPECT_EQ(r->units().size(), 1u);
}

TEST_P(StoreTest, StoreOfAUnitStoredMeanwhileIsRefused) {
    storedSample();
    auto r = open();
    r->retrieveAll();
    std::ofstream((dir_ / "go").string()).put('\n');
    std::string out;
    ASSERT_EQ(probe("store-after " + repo() + " HOSPDBD " + (dir_ / "go").string(), &out), 0) << out;
    ADObject dbd(DSRegistrar::findObj("DSDBD", "HOSPDBD", sample::kVersion));
    static_cast<_DSDBD*>(dbd.impl())->_set_versionString("mine", omStore | omSetChanged);
    std::string message = refusal([&] { r->storeUnits({dbd.impl()}); });
    EXPECT_NE(message.find("unit DSDBD HOSPDBD (SAMPLE) was stored meanwhile by"), std::string::npos) << message;
    EXPECT_NE(message.find("at revision 2"), std::string::npos) << message;
    // Nothing changed: the change stays, the repository keeps the other store.
    EXPECT_EQ(dbd->getChangeFlag("versionString"), 64u);
    EXPECT_EQ(r->findUnit("HOSPDBD").revision, 2);
    // A refresh takes the stored unit and drops the change; then the store goes.
    r->refreshUnit(dbd.impl());
    EXPECT_EQ(dbd->getChangeFlag("versionString"), 0u);
    EXPECT_STRNE(static_cast<_DSDBD*>(dbd.impl())->_get_versionString(), "mine");
    EXPECT_STRNE(dbd->_get_adName(), "HOSPDBD");  // the probe's change
    r->storeUnits({dbd.impl()});
    EXPECT_EQ(r->findUnit("HOSPDBD").revision, 3);
}

TEST_P(StoreTest, RetrieveSharesLiveObjectsAndKeepsTheirChanges) {
    storedSample();
    DSDBD dbd(sample::kVersion, "HOSPDBD", 1);  // live before the retrieve
    dbd->_set_versionString("unstored", omStore | omSetChanged);
    auto r = open();
    r->makeCurrent();
    EXPECT_EQ(dbd->retrieve(), 0);
    EXPECT_STREQ(dbd->_get_versionString(), "unstored");
    EXPECT_GT(dbd->_get_segments()->count(), 0);
    EXPECT_STREQ(dbd->_get_strDBDName(), "HOSPDBD");
    EXPECT_EQ(dbd->refresh(), 0);
    EXPECT_STRNE(dbd->_get_versionString(), "unstored");
    EXPECT_EQ(dbd->getChangeFlag(nullptr), 0u);
}

TEST_P(StoreTest, RefreshDropsUnstoredLinksAndRestoresStoredOnes) {
    sample::Model m = sample::build();
    auto r = open();
    r->storeAll();
    long segments = m.hospital->_get_segments()->count();
    DSSegment extra(sample::kVersion, "EXTRA", 1);
    DSContainsSegment(&m.hospital, &extra, 1);
    // Take the first stored segment's link away.
    m.hospital->_get_segments()->at(0)->impl()->markDeleted(nullptr, 0);
    ASSERT_EQ(m.hospital->_get_segments()->count(), segments);
    r->refreshUnit(m.hospital.impl());
    EXPECT_EQ(m.hospital->_get_segments()->count(), segments);
    for (const ADObject& h : *m.hospital->_get_segments())
        EXPECT_STRNE((*static_cast<_ADLink*>(h.impl())->getTarget())->objID(), "EXTRA");
}

TEST_P(StoreTest, LocksBelongToTheirOwner) {
    sample::Model m = sample::build();
    auto alice = open(as("alice"));
    alice->storeAll();
    alice->lockUnit(hospital);
    auto bob = open(as("bob"));
    bob->retrieveAll();
    krstore::UnitInfo u = bob->findUnit("HOSPDBD");
    EXPECT_TRUE(u.locked);
    EXPECT_EQ(u.lockOwner.user, "alice");
    EXPECT_EQ(u.lockOwner.pid, static_cast<long>(getpid()));
    std::string stored = refusal([&] { bob->storeUnits({m.hospital.impl()}); });
    EXPECT_NE(stored.find("unit DSDBD HOSPDBD (SAMPLE) is locked by alice@"), std::string::npos) << stored;
    std::string deleted = refusal([&] { bob->deleteUnit(hospital); });
    EXPECT_NE(deleted.find("is locked by alice@"), std::string::npos) << deleted;
    std::string unlocked = refusal([&] { bob->unlockUnit(hospital); });
    EXPECT_NE(unlocked.find("unlock --force"), std::string::npos) << unlocked;
    // Alice's process runs (it is this one): not even --force breaks her lock.
    std::string forced = refusal([&] { bob->unlockUnit(hospital, true); });
    EXPECT_NE(forced.find("whose process is still running"), std::string::npos) << forced;
    // Other units are not locked; Alice stores hers.
    EXPECT_EQ(refusal([&] { bob->storeUnits({m.psb.impl()}); }), "");
    EXPECT_EQ(refusal([&] { alice->storeUnits({m.hospital.impl()}); }), "");
    alice->unlockUnit(hospital);
    EXPECT_FALSE(bob->findUnit("HOSPDBD").locked);
}

TEST_P(StoreTest, DeleteRemovesTheUnitAndWhatItsDeleteListNames) {
    sample::Model m = sample::build();
    auto r = open();
    r->makeCurrent();
    r->storeAll();
    DSModelCollection list;
    m.msdb->getDeleteList(&list);
    EXPECT_GT(list.count(), 2);
    std::size_t before = r->units().size();
    EXPECT_EQ(m.msdb->deleteFromRepository(), 0);
    EXPECT_EQ(r->units().size(), before - 1);
    EXPECT_EQ(m.msdb->getChangeFlag(nullptr), 8u);  // deleted
    EXPECT_EQ(DSRegistrar::findObj("DSSegment", "RATEMSDB.RATE", sample::kVersion), nullptr);
    EXPECT_EQ(refusal([&] {
                  r->retrieveUnit({"DSDBD", "RATEMSDB", sample::kVersion});
              }),
              "unit DSDBD RATEMSDB (SAMPLE) is not in repository " + path_);
    // The rows went with the unit.
    DSRegistrar::releaseAll();
    m = sample::Model();
    r->retrieveAll();
    EXPECT_EQ(DSRegistrar::findObj("DSSegment", "RATEMSDB.RATE", sample::kVersion), nullptr);
    EXPECT_NE(DSRegistrar::findObj("DSDBD", "HOSPDBD", sample::kVersion), nullptr);
}

TEST_P(StoreTest, CopyIntoAVersionThatHoldsTheUnitIsRefused) {
    sample::Model m = sample::build();
    auto r = open();
    r->makeCurrent();
    r->storeAll();
    EXPECT_NE(refusal([&] { m.hospital->copy(); }).find("no version to copy"), std::string::npos);
    r->setCopyVersion("V2");
    EXPECT_EQ(m.hospital->copy(), 0);
    EXPECT_EQ(refusal([&] { m.hospital->copy(); }), "unit DSDBD HOSPDBD (V2) is already in the repository; not copied");
    ADObject copied = r->retrieveUnit({"DSDBD", "HOSPDBD", "V2"});
    ASSERT_FALSE(copied.isEmpty());
    EXPECT_EQ(static_cast<_DSDBD*>(copied.impl())->_get_segments()->count(), m.hospital->_get_segments()->count());
}

TEST_P(StoreTest, AnObjectTwoUnitsClaimIsRefusedNamingBoth) {
    {
        DSDBD a("V", "DBDA", 1);
        DSSegment s("V", "SHARED", 1);
        DSContainsSegment(&a, &s, 1);
        open()->storeAll();
    }
    DSRegistrar::releaseAll();
    DSDBD b("V", "DBDB", 1);
    DSSegment s("V", "SHARED", 1);
    DSContainsSegment(&b, &s, 1);
    auto r = open();
    EXPECT_EQ(refusal([&] { r->storeUnits({b.impl()}); }),
              "DSSegment SHARED (V) belongs to unit DSDBD DBDA (V); unit DSDBD DBDB (V) claims it too; nothing stored");
    EXPECT_EQ(r->units().size(), 1u);
}

TEST_P(StoreTest, ValueOutOfItsColumnsRangeIsRefused) {
    DSPSB psb("V", "P", 1);
    psb->_set_compatibility(7, omStore);  // a boolean
    auto r = open();
    std::string message = refusal([&] { r->storeUnits({psb.impl()}); });
    EXPECT_NE(message.find("cannot store DSPSB P (V): a value is out of its column's range"), std::string::npos)
        << message;
    EXPECT_NE(message.find("compatibility"), std::string::npos) << message;
    EXPECT_TRUE(r->units().empty());
    psb->_set_compatibility(1, omStore);
    r->storeUnits({psb.impl()});
    EXPECT_EQ(r->units().size(), 1u);
}

TEST_P(StoreTest, WithoutARepositoryTheUnitOperationsDoNothing) {
    sample::Model m = sample::build();
    ASSERT_EQ(dsrepository::current(), nullptr);
    EXPECT_EQ(m.hospital->store(), 0);
    EXPECT_EQ(m.hospital->lock(), 0);
    EXPECT_EQ(m.hospital->retrieve(), 0);
}

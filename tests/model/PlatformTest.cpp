// PlatformTest.cpp — the platform substitute on its own: the cursor collection,
// the registry and its release of whole repositories, exceptions, the trace
// and the notification listener.
#include "TestSupport.h"

#include <cstring>
#include <random>
#include <string>

namespace {
std::vector<_ADObject*> contents(DSModelCollection& c) {
    std::vector<_ADObject*> v;
    for (const ADObject& h : c) v.push_back(h.impl());
    return v;
}
}  // namespace

using Platform = RepositoryTest;

TEST_F(Platform, CollectionCursorOrderingAndRemoval) {
    auto a = make<DSField>(), b = make<DSField>(), c = make<DSField>();
    DSModelCollection coll;
    EXPECT_EQ(coll.first(), nullptr);
    EXPECT_EQ(coll.indexOf(), -1);
    coll.addLast(a);
    coll.addLast(c);
    coll.addAfter(b, coll.indexOf(&a));
    EXPECT_EQ(contents(coll), (std::vector<_ADObject*>{a.impl(), b.impl(), c.impl()}));
    EXPECT_EQ(a->_get_useCount(), 2);

    ASSERT_TRUE(coll.first());
    ASSERT_TRUE(coll.next());
    EXPECT_EQ(coll.indexOf(), 1);
    coll.remove();  // b goes; next() continues with c
    EXPECT_EQ(b->_get_useCount(), 1);
    EXPECT_TRUE(*coll.next() == c);
    EXPECT_EQ(coll.next(), nullptr);
    EXPECT_EQ(coll.next(), nullptr);
    EXPECT_EQ(coll.indexOf(), -1);

    coll.addFirst(b);
    EXPECT_EQ(contents(coll), (std::vector<_ADObject*>{b.impl(), a.impl(), c.impl()}));
    coll.first();
    coll.moveAfter(&c);  // b behind c
    EXPECT_EQ(contents(coll), (std::vector<_ADObject*>{a.impl(), c.impl(), b.impl()}));
    coll.moveAfter(nullptr);  // the cursor follows b: to the front
    EXPECT_EQ(contents(coll), (std::vector<_ADObject*>{b.impl(), a.impl(), c.impl()}));
    auto stranger = make<DSField>();
    coll.moveAfter(&stranger);  // not in the collection: nothing moves
    EXPECT_EQ(contents(coll), (std::vector<_ADObject*>{b.impl(), a.impl(), c.impl()}));
    EXPECT_EQ(coll.indexOf(&stranger), -1);
    coll.addAfter(stranger, 99);  // past the end appends
    EXPECT_EQ(coll.indexOf(&stranger), 3);
}

TEST_F(Platform, HandleCopiesAndAssignmentCountUses) {
    auto dbd = make<DSDBD>();
    {
        DSDBD copy = dbd;
        ADObject moved = std::move(copy);
        EXPECT_TRUE(copy.isEmpty());
        EXPECT_EQ(dbd->_get_useCount(), 2);
        ADObject other = make<DSSegment>();
        other = moved;  // the segment goes with its only handle
        EXPECT_EQ(dbd->_get_useCount(), 3);
        other = other.impl();  // self-assignment keeps the count
        EXPECT_EQ(dbd->_get_useCount(), 3);
    }
    EXPECT_EQ(dbd->_get_useCount(), 1);
    EXPECT_EQ(DSRegistrar::count(), 1u);
}

TEST_F(Platform, ReleaseAllFreesCyclesButKeepsWhatCallersHold) {
    auto dbd = make<DSDBD>();
    {
        auto seg = make<DSSegment>();
        DSContainsSegment link(&dbd, &seg, 1);
    }
    // The link and the segment live on through the DBD's role.
    EXPECT_EQ(DSRegistrar::count(), 3u);
    EXPECT_EQ(DSRegistrar::releaseAll(), 3u);
    EXPECT_EQ(DSRegistrar::count(), 1u);
    EXPECT_EQ(dbd->_get_segments()->count(), 0);
    EXPECT_EQ(dbd->_get_useCount(), 1);
}

TEST_F(Platform, RegistryKeepsKeysApartAndRefusesATakenOne) {
    DSDBD a("V1", "SAME", 1);
    DSSegment b("V1", "SAME", 1);
    EXPECT_FALSE(a.impl() == b.impl());
    EXPECT_EQ(DSRegistrar::findObj("DSSegment", "SAME", "V1"), b.impl());
    EXPECT_EQ(DSRegistrar::findObj("DSSegment", "SAME", "V2"), nullptr);
    EXPECT_EQ(DSRegistrar::registerObj(a.impl()), 0);
    EXPECT_EQ(DSRegistrar::registerObj(nullptr), 0);
    DSDBD nullId("V1", nullptr, 1);  // a missing ID is the default: a new object
    EXPECT_FALSE(nullId.isEmpty());
    EXPECT_STRNE(nullId->objID(), "SAME");
}

// Objects come and go in a random order while the table grows past several
// sizes: every live object stays findable (singly and in batches), every gone
// one is not, and keys that differ only in where one string ends do not meet.
TEST_F(Platform, RegistryFindsWhatLivesThroughGrowthAndRemoval) {
    std::mt19937 random(7);
    std::vector<DSField> live;
    std::vector<std::string> gone;
    for (int i = 0; i < 5000; ++i) {
        live.emplace_back("V", ("F" + std::to_string(i)).c_str(), 1);
        if (random() % 3 == 0) {
            std::size_t k = random() % live.size();
            gone.push_back(live[k]->objID());
            live.erase(live.begin() + static_cast<long>(k));
        }
    }
    ASSERT_EQ(DSRegistrar::count(), live.size());
    std::vector<DSRegistrar::Key> keys;
    for (const DSField& f : live) {
        EXPECT_EQ(DSRegistrar::findObj("DSField", f->objID(), "V"), f.impl());
        keys.push_back({"DSField", f->objID(), "V"});
    }
    for (const std::string& id : gone) {
        EXPECT_EQ(DSRegistrar::findObj("DSField", id.c_str(), "V"), nullptr) << id;
        keys.push_back({"DSField", id.c_str(), "V"});
    }
    std::vector<_ADObject*> found(keys.size());
    DSRegistrar::findObjs(keys.size(), keys.data(), found.data());
    for (std::size_t i = 0; i < keys.size(); ++i)
        EXPECT_EQ(found[i], i < live.size() ? live[i].impl() : nullptr) << keys[i].objID;

    DSField ab("AB", "C", 1), a("A", "BC", 1);
    EXPECT_EQ(DSRegistrar::findObj("DSField", "C", "AB"), ab.impl());
    EXPECT_EQ(DSRegistrar::findObj("DSField", "BC", "A"), a.impl());
    EXPECT_EQ(DSRegistrar::findObj("DSField", "CA", "B"), nullptr);
}

// A collection keeps its first handle inside itself and moves to the heap as
// it grows: inserts and removals at any place across that step keep the order
// of a plain vector and the objects' use counts.
TEST_F(Platform, CollectionOrderAndUseCountsAcrossGrowth) {
    std::vector<DSField> fields;
    for (int i = 0; i < 12; ++i) fields.push_back(make<DSField>());
    std::mt19937 random(3);
    for (int round = 0; round < 50; ++round) {
        DSModelCollection coll;
        std::vector<_ADObject*> model;
        for (int step = 0; step < 30; ++step) {
            if (model.empty() || random() % 3) {
                long after = static_cast<long>(random() % (model.size() + 1)) - 1;
                _ADObject* o = fields[random() % fields.size()].impl();
                coll.addAfter(ADObject(o), after);
                model.insert(model.begin() + (after + 1), o);
            } else {
                long at = static_cast<long>(random() % model.size());
                coll.first();
                for (long k = 0; k < at; ++k) coll.next();
                coll.remove();
                model.erase(model.begin() + at);
            }
            ASSERT_EQ(contents(coll), model);
        }
    }
    for (const DSField& f : fields) EXPECT_EQ(f->_get_useCount(), 1) << "a handle was lost or kept";
}

TEST(Exception, KeepsEveryPart) {
    KVException e("ewswtarn_", 2498, "DSPCBbased", "DSDBD", "_DSBasedOn", "source");
    EXPECT_STREQ(e.first(), "ewswtarn_");
    EXPECT_EQ(e.number(), 2498);
    ASSERT_EQ(e.textCount(), 4);
    EXPECT_STREQ(e.text(3), "source");
    EXPECT_EQ(e.text(4), nullptr);
    EXPECT_EQ(e.message(), "ewswtarn_ 2498: DSPCBbased, DSDBD, _DSBasedOn, source");
    KVException listed("relSameTarget", 2441, {"DSBasedOn", "0"});
    EXPECT_EQ(listed.textCount(), 2);
}

TEST(Trace, WritesOnlyWhenSwitchedOnAndCritical) {
    std::vector<std::string> got;
    auto old = krtrace::setSink([&](const char* m, int line, const char* file) {
        got.push_back(m);
        EXPECT_GT(line, 0);
        EXPECT_NE(file, nullptr);
    });
    KR_TRACE("off\n");
    TRACEFLAG = 1;
    krtrace::setCritical(false);
    KR_TRACE("not critical\n");
    krtrace::setCritical(true);
    KR_TRACE("on\n");
    TRACEFLAG = 0;
    krtrace::setSink(old);
    EXPECT_EQ(got, (std::vector<std::string>{"on\n"}));
}

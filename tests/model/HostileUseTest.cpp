// HostileUseTest.cpp — the platform under hostile use: registry walks whose
// visitor deletes links or releases the repository, generated identities past
// the last number, role collections given what does not belong in them, and
// objects whose status word says deleted while they are still registered.
#include "TestSupport.h"

#include <functional>
#include <set>
#include <string>

using HostileUse = RepositoryTest;

namespace {
// Every link in the roles of an object, copied before anything changes them.
std::vector<ADObject> linksInRoles(_ADObject* o) {
    std::vector<ADObject> links;
    for (ADAttributeEntry* t = o->nextAttributeTable(nullptr); t; t = o->nextAttributeTable(t))
        for (ADAttributeEntry* row = t; row->name; ++row)
            if (adIsRoleRow(*row) && row->getter.role)
                for (const ADObject& h : *(o->*row->getter.role)()) links.push_back(h);
    return links;
}

bool registered(_ADObject* o) { return DSRegistrar::findObj(o->whoAmI(), o->objID(), o->context()) == o; }
}  // namespace

// ---- registry walks ----------------------------------------------------------

struct Visitor {
    const char* name;
    std::function<void(_ADObject*)> visit;
};

class RegistryWalk : public HostileUse, public ::testing::WithParamInterface<Visitor> {};

// A DBD holds forty segments through links; the caller holds the DBD only, so
// each segment lives by its link alone. Whatever the visitor frees, the walk
// goes on over live objects, and calls it only for objects still registered.
TEST_P(RegistryWalk, VisitsOnlyLiveRegisteredObjectsWhateverTheVisitorFrees) {
    auto dbd = make<DSDBD>();
    for (int i = 0; i < 40; ++i) {
        auto segment = make<DSSegment>();
        DSContainsSegment(&dbd, &segment, 1);
    }
    ASSERT_EQ(DSRegistrar::count(), 81u);
    int visits = 0;
    DSRegistrar::forEach([&](_ADObject* o) {
        ++visits;
        EXPECT_TRUE(registered(o)) << o->whoAmI();
        GetParam().visit(o);
    });
    EXPECT_GT(visits, 0);
    // Every link is gone, and with them the segments only they held.
    EXPECT_EQ(DSRegistrar::count(), 1u);
    EXPECT_EQ(dbd->_get_segments()->count(), 0);
    EXPECT_EQ(dbd->_get_useCount(), 1);
}

INSTANTIATE_TEST_SUITE_P(Visitors, RegistryWalk,
                         ::testing::Values(Visitor{"DeletesTheVisitedLink",
                                                   [](_ADObject* o) {
                                                       if (o->isRelationshipObject()) o->markDeleted(nullptr, 0);
                                                   }},
                                           Visitor{"DeletesTheLinksOfTheVisitedObject",
                                                   [](_ADObject* o) {
                                                       for (ADObject& l : linksInRoles(o)) l->markDeleted(nullptr, 0);
                                                   }},
                                           Visitor{"ReleasesTheRepository",
                                                   [](_ADObject*) { DSRegistrar::releaseAll(); }}),
                         [](const ::testing::TestParamInfo<Visitor>& p) { return std::string(p.param.name); });

// ---- generated identities --------------------------------------------------

class TopIdentity : public HostileUse, public ::testing::WithParamInterface<const char*> {};

// A caller may take any ID of the generated form, also the last numbers there
// are. The generator goes on without ever handing out an identity that is
// taken for the class and version, and every object it names is registered.
TEST_P(TopIdentity, GeneratedIdentitiesStayFreeAndRegistered) {
    std::vector<DSDBD> given;
    for (const char* id : {"#1", "#2", "#3", GetParam()}) given.emplace_back("V1", id, 1);
    std::set<std::string> seen;
    for (const DSDBD& g : given) seen.insert(g->objID());
    std::vector<DSDBD> made;
    for (int i = 0; i < 6; ++i) {
        made.push_back(make<DSDBD>());
        EXPECT_TRUE(seen.insert(made.back()->objID()).second) << made.back()->objID() << " handed out again";
        EXPECT_TRUE(registered(made.back().impl())) << made.back()->objID();
    }
    // Links take generated identities as well.
    auto segment = make<DSSegment>();
    DSContainsSegment link(&made[0], &segment, 1);
    EXPECT_TRUE(registered(link.impl())) << link->objID();
    EXPECT_EQ(DSRegistrar::count(), given.size() + made.size() + 2);
}

INSTANTIATE_TEST_SUITE_P(LastNumbers, TopIdentity,
                         ::testing::Values("#18446744073709551614", "#18446744073709551615",
                                           "#99999999999999999999999"));

// ---- role collections --------------------------------------------------------

enum class Add { last, first, after };

class RoleCollection : public HostileUse, public ::testing::WithParamInterface<Add> {
protected:
    static void add(DSModelCollection* role, const ADObject& element) {
        switch (GetParam()) {
            case Add::last:
                return role->addLast(element);
            case Add::first:
                return role->addFirst(element);
            case Add::after:
                return role->addAfter(element, 0);
        }
    }
};

// A role holds the links of its class in which its owner stands at the role's
// end, each once. Anything else is refused and nothing changes: an empty
// handle, an object that is no link, a link of another class (2498), a link of
// the class at another object (2499), a link already there (2441). A later
// link creation, which walks the role, still works.
TEST_P(RoleCollection, RefusesWhatDoesNotBelongInIt) {
    auto dbd = make<DSDBD>(), other = make<DSDBD>();
    auto segment = make<DSSegment>(), elsewhere = make<DSSegment>(), next = make<DSSegment>();
    auto exit = make<DSExit>();
    auto item = make<DSDataItem>();
    DSContainsSegment mine(&dbd, &segment, 1);
    DSContainsSegment theirs(&other, &elsewhere, 1);
    DSUsesDBDExit otherClass(&dbd, &exit, 1);

    struct Case {
        DSModelCollection* role;
        ADObject element;
        long number;
        std::vector<std::string> texts;
    };
    const std::vector<Case> cases = {
        {dbd->_get_segments(), ADObject(), 2498, {"DSContainsSegment", "", "segments"}},
        {dbd->_get_segments(), segment, 2498, {"DSContainsSegment", "DSSegment", "segments"}},
        {dbd->_get_segments(), otherClass, 2498, {"DSContainsSegment", "DSUsesDBDExit", "segments"}},
        {dbd->_get_segments(), theirs, 2499, {"DSContainsSegment", "segments", "source"}},
        {dbd->_get_segments(), mine, 2441, {"DSContainsSegment", "0"}},
        {segment->_get_containingDBD(), dbd, 2498, {"DSContainsSegment", "DSDBD", "containingDBD"}},
        {segment->_get_containingDBD(), theirs, 2499, {"DSContainsSegment", "containingDBD", "target"}},
        {segment->_get_containingDBD(), mine, 2441, {"DSContainsSegment", "0"}},
        {item->_get_fieldsForTARN(), mine, 2498, {"DSMakesUseOf", "DSContainsSegment", "fieldsForTARN"}},
        {dbd->_get_dependsOn(), mine, 2498, {"ADLinkKVPartDependsOnKVPart", "DSContainsSegment", "dependsOn"}},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.texts[0] + " / " + (c.texts.size() > 2 ? c.texts[1] + " / " + c.texts[2] : c.texts[1]));
        long count = c.role->count();
        int uses = c.element.isEmpty() ? 0 : c.element->_get_useCount();
        auto e = thrown([&] { add(c.role, c.element); });
        ASSERT_TRUE(e) << "accepted";
        EXPECT_EQ(e->number(), c.number);
        ASSERT_EQ(e->textCount(), static_cast<int>(c.texts.size()));
        for (int i = 0; i < e->textCount(); ++i) EXPECT_EQ(e->text(i), c.texts[static_cast<size_t>(i)]);
        EXPECT_EQ(c.role->count(), count);
        if (!c.element.isEmpty()) {
            EXPECT_EQ(c.element->_get_useCount(), uses);
        }
    }
    DSContainsSegment later(&dbd, &next, 1);
    EXPECT_EQ(dbd->_get_segments()->count(), 2);
    EXPECT_EQ(dbd->_get_segments()->indexOf(&later), 1);
}

INSTANTIATE_TEST_SUITE_P(AddOperations, RoleCollection, ::testing::Values(Add::last, Add::first, Add::after));

// ---- deleted status ------------------------------------------------------------

// Status bit 2 says deleted, so the component's release step leaves the
// registry alone, as for an object that markDeleted already took off. Set
// directly, the object is still registered when its last handle goes: no
// entry may outlive it, and its identity can be made again.
TEST_F(HostileUse, AnObjectDeletedByItsStatusLeavesNoEntryBehind) {
    std::size_t before = DSRegistrar::count();
    {
        DSField field("V1", "F17", 1);
        field->setStatus(adStatusDeleted);
        EXPECT_EQ(DSRegistrar::findObj("DSField", "F17", "V1"), field.impl());
        EXPECT_EQ(field->getChangeFlag(nullptr), 8u);
    }
    EXPECT_EQ(DSRegistrar::count(), before);
    EXPECT_EQ(DSRegistrar::findObj("DSField", "F17", "V1"), nullptr);
    DSField again("V1", "F17", 1);
    EXPECT_EQ(DSRegistrar::findObj("DSField", "F17", "V1"), again.impl());
    EXPECT_EQ(again->getChangeFlag(nullptr), 0u);

    // A link goes with its roles when the repository is released.
    auto dbd = make<DSDBD>();
    std::string id;
    {
        auto segment = make<DSSegment>();
        DSContainsSegment link(&dbd, &segment, 1);
        link->setStatus(adStatusDeleted);
        id = link->objID();
    }
    DSRegistrar::releaseAll();
    EXPECT_EQ(DSRegistrar::findObj("DSContainsSegment", id.c_str(), "V1"), nullptr);
    EXPECT_EQ(DSRegistrar::count(), 2u);  // the DBD and `again`
}

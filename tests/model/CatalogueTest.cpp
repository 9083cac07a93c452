// CatalogueTest.cpp — invariants of the registered class tables as a whole, read
// the way the repository client reads them: every role row is one end of one
// registered link and the end rows name it back, inverse roles pair up, each
// table chain follows the class table's superclasses, the controlling and
// ordered ends answer in behaviour what the rows say, the data dictionary's
// roles of the model's links are described, and the counts follow the lists.
#include "TestSupport.h"

#include "platform/dictionary/ViewClasses.h"

#include <cstring>
#include <map>
#include <memory>
#include <set>
#include <string>
#include <type_traits>
#include <utility>

namespace {
struct Row {
    const _classStruct* holder;
    const ADAttributeEntry* row;
};

// Every row of every registered component, with the class whose own table holds it.
std::vector<Row> allRows() {
    DSDictionary_viewClasses();
    std::vector<Row> rows;
    for (DSRegistration* r : DSRegistration::all())
        for (const _classStruct* c = r->classTable(); c && c->className; ++c)
            for (const ADAttributeEntry* e = c->attributes; e && e->name; ++e) rows.push_back({c, e});
    return rows;
}

bool isLink(const _classStruct* c) { return c->superclassName && std::strcmp(c->superclassName, "ADLink") == 0; }

// The row named `name` in the chain of class `cls`, and the class holding it.
Row findInChain(const char* cls, const char* name) {
    for (const _classStruct* c = DSRegistration::findClass(cls); c;
         c = c->superclassName ? DSRegistration::findClass(c->superclassName) : nullptr)
        for (const ADAttributeEntry* e = c->attributes; e && e->name; ++e)
            if (std::strcmp(e->name, name) == 0) return {c, e};
    return {nullptr, nullptr};
}

int endOf(const ADAttributeEntry& role) { return (role.flags & adFlagTargetEnd) ? 1 : 0; }
}  // namespace

TEST(Catalogue, EveryRowIsDescribedAsAnAttributeARoleOrALinkEnd) {
    // A role that another component's link joins is stated by name only until
    // that component describes it; a row left undescribed has no kind.
    for (const Row& r : allRows()) {
        std::uint32_t kind = r.row->flags & 0xF;
        EXPECT_TRUE(kind == 0x1 || kind == 0x3 || kind == 0x4 || kind == 0x5 || kind == 0x7)
            << r.holder->className << "." << r.row->name << " flags 0x" << std::hex << r.row->flags;
        if (kind == 0x3 || kind == 0x7) {
            EXPECT_NE(r.row->inverse, nullptr) << r.holder->className << "." << r.row->name;
            EXPECT_NE(r.row->type, nullptr) << r.holder->className << "." << r.row->name;
        }
    }
}

TEST(Catalogue, RoleRowsAndLinkEndsCorrespondOneToOne) {
    // Each role row names a registered link whose end row at the role's end
    // names the role and the class holding it; each end of each of the
    // model's links is claimed by exactly one role row, on whatever class
    // (the data dictionary's too).
    std::map<std::pair<std::string, int>, int> claims;
    for (const Row& r : allRows()) {
        if (!adIsRoleRow(*r.row)) continue;
        const char* linkName = adRoleLinkClass(*r.row);
        const _classStruct* link = DSRegistration::findClass(linkName);
        ASSERT_NE(link, nullptr) << r.holder->className << "." << r.row->name << " names " << linkName;
        ASSERT_TRUE(isLink(link)) << linkName;
        const ADAttributeEntry& end = link->attributes[endOf(*r.row)];
        EXPECT_STREQ(end.inverse, r.row->name) << linkName;
        EXPECT_STREQ(end.type, r.holder->className) << linkName << " " << r.row->name;
        ++claims[{linkName, endOf(*r.row)}];
    }
    for (const _classStruct* c = ewswtarnClassTable; c->className; ++c) {
        if (!isLink(c)) continue;
        EXPECT_EQ((claims[{c->className, 0}]), 1) << c->className << " source";
        EXPECT_EQ((claims[{c->className, 1}]), 1) << c->className << " target";
    }
    for (const auto& [end, count] : claims) EXPECT_LE(count, 1) << end.first << " end " << end.second;
}

TEST(Catalogue, InverseRolesPointBackToEachOther) {
    // Over the roles of the model's links and the data dictionary's own. (The
    // platform's parts hold no role for the dictionary's links to shared
    // definitions and their aliases, so those two roles have no inverse row.)
    for (const Row& r : allRows()) {
        if (!adIsRoleRow(*r.row)) continue;
        Row back = findInChain(r.row->type, r.row->inverse);
        if (!back.row && std::strcmp(r.row->type, "KVPart") == 0) continue;
        ASSERT_NE(back.row, nullptr) << r.holder->className << "." << r.row->name << " -> " << r.row->type << "."
                                     << r.row->inverse;
        EXPECT_STREQ(back.row->inverse, r.row->name);
        EXPECT_STREQ(back.row->type, r.holder->className);
        EXPECT_STREQ(adRoleLinkClass(*back.row), adRoleLinkClass(*r.row));
        EXPECT_NE(endOf(*back.row), endOf(*r.row)) << r.row->name;
    }
}

TEST(Catalogue, AttributeTableChainFollowsTheClassTable) {
    // The implementation's chain (C++ inheritance) against the superclass
    // names of the class table (the registration record).
    for (const _classStruct* c = ewswtarnClassTable; c->className; ++c) {
        std::unique_ptr<ADObject> h(ewswtarnFactory(c->className, "V1", ADObject::defaultObjID()));
        ASSERT_TRUE(h && !h->isEmpty());
        _ADObject* impl = h->impl();
        ADAttributeEntry* t = impl->nextAttributeTable(nullptr);
        for (const _classStruct* s = c; s;
             s = s->superclassName ? DSRegistration::findClass(s->superclassName) : nullptr) {
            // A class without rows of its own (DSTechnologyObject) may hand straight on.
            if (!s->attributes[0].name && t != s->attributes) continue;
            ASSERT_EQ(t, s->attributes) << c->className << " at " << s->className;
            t = impl->nextAttributeTable(t);
        }
        EXPECT_EQ(t, nullptr) << c->className;
    }
    DSRegistrar::releaseAll();
}

TEST(Catalogue, ControllingAndOrderedEndsBehaveAsTheirRowsSay) {
    int ordered = 0, orderedRoles = 0;
    for (const _classStruct* c = ewswtarnClassTable; c->className; ++c) {
        if (!isLink(c)) continue;
        const ADAttributeEntry* t = c->attributes;
        std::unique_ptr<ADObject> h(ewswtarnFactory(c->className, "V1", ADObject::defaultObjID()));
        auto* link = static_cast<_ADLink*>(h->impl());
        EXPECT_EQ(link->sourceIsControlling() != 0, (t[0].flags & adFlagControlling) != 0) << c->className;
        EXPECT_EQ(link->targetIsControlling() != 0, (t[1].flags & adFlagControlling) != 0) << c->className;

        // Placing behind another link is offered exactly where the source row is ordered.
        bool isOrdered = (t[0].flags & adFlagOrdered) != 0;
        ordered += isOrdered;
        std::unique_ptr<ADObject> s(DSRegistration::create(t[0].type, "V1", ADObject::defaultObjID()));
        std::unique_ptr<ADObject> g(DSRegistration::create(t[1].type, "V1", ADObject::defaultObjID()));
        std::unique_ptr<ADLink> placed(ewswtarnCreateLink(c->className, s.get(), g.get(), nullptr, true));
        EXPECT_EQ(placed != nullptr, isOrdered) << c->className;
    }
    for (const Row& r : allRows())
        if (adIsRoleRow(*r.row) && (r.row->flags & adFlagOrdered)) {
            ++orderedRoles;
            EXPECT_EQ(endOf(*r.row), 0) << r.row->name << ": only a source's role keeps an order";
        }
    EXPECT_EQ(orderedRoles, ordered);
    DSRegistrar::releaseAll();
}

TEST(Catalogue, CountsFollowTheLists) {
    int objects = 0, links = 0;
    for (const _classStruct* c = ewswtarnClassTable; c->className; ++c) (isLink(c) ? links : objects)++;
    EXPECT_EQ(objects, kr::objectClassCount);
    EXPECT_EQ(links, kr::linkClassCount);
    EXPECT_EQ(ewswtarnClassCount, objects + links);
    EXPECT_EQ(objects, 27);
    EXPECT_EQ(links, 41);
}

// The typed accessors keep their types: a role's far end, and a link's ends.
static_assert(std::is_same_v<decltype(std::declval<_DSDBD&>()._getFirst_basedPCBs()), DSPCBbased*>);
static_assert(std::is_same_v<decltype(std::declval<_DSPCBbased&>()._getFirst_baseDBD()), DSDBD*>);
static_assert(std::is_same_v<decltype(std::declval<_DSSegment&>()._getFirst_physicalParent()), DSSegment*>);
static_assert(std::is_same_v<decltype(std::declval<_DSLChild&>()._getNext_pairedSegment()), DSSegmentComplex*>);
static_assert(std::is_same_v<decltype(std::declval<_DSSegmentComplex&>()._getFirst_pairedLogChild()), DSLChild*>);
static_assert(std::is_same_v<decltype(std::declval<_DSField&>()._getFirst_targetDataItem()), DSDataItem*>);
static_assert(std::is_same_v<decltype(std::declval<_DSSource&>()._get_source()), DSSegmentLogical*>);
static_assert(std::is_base_of_v<DSDBDdedb, DSDBDhdam> && std::is_base_of_v<_DSDBDdedb, _DSDBDhdam>);
static_assert(DSSource::ordered && !DSParent::ordered);

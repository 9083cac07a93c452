// ExpansionTest.cpp — DLLView_expand, the walk of a view tree over a live
// object graph, on small trees made for the case (built from outlines like the
// library's own) and on the library's delegating trees: values read through
// the attribute tables, roles walked by link class, the end-class rule, the
// delegation to another view and the stop where a view meets itself again.
#include <krmwtarn/platform/repository/DSRegistrar.h>
#include <krmwtarn/platform/views/DLLViewExpansion.h>
#include "tests/views/ViewTestSupport.h"
#include <krmwtarn/views/ViewTreeBuilder.h>

#include <krmwtarn/krmwtarn.h>

#include <string>

namespace {
using namespace viewrows;

// A view type over one of the test outlines, registered while it lives. Its
// tree is built at once, after the type is stored in `variable` (where other
// outlines, or its own, delegate to it).
template <std::size_t N>
struct TestView {
    TestView(const char* name, const char* root, const std::array<Row, N>& rows, DLLViewType** variable = nullptr)
        : outline{rows.data(), rows.size()}, rootClass(root), type(name, "", nullptr) {
        if (variable) *variable = &type;
        buildViewTree(&type, rootClass, outline);
    }
    DLLViewType* get() { return &type; }
    Outline outline;
    const char* rootClass;
    DLLViewType type;
};

// The entries of a node that one element contributed.
std::vector<const DLLViewEntry*> entriesOf(const DLLViewNode& node, const char* element) {
    std::vector<const DLLViewEntry*> out;
    for (const DLLViewEntry& e : node.entries)
        if (std::string(e.element->name) == element) out.push_back(&e);
    return out;
}

// The first item reached over each element of `path` in turn, or null.
const DLLViewNode* follow(const DLLViewNode& from, std::initializer_list<const char*> path) {
    const DLLViewNode* node = &from;
    for (const char* element : path) {
        std::vector<const DLLViewEntry*> entries = entriesOf(*node, element);
        if (entries.empty() || entries[0]->items.empty()) return nullptr;
        node = &entries[0]->items[0];
    }
    return node;
}

// The names of the far ends of every link of a role entry, in role order.
std::vector<std::string> farEndNames(const DLLViewEntry& role) {
    std::vector<std::string> names;
    for (const DLLViewNode& link : role.items)
        for (const DLLViewEntry& end : link.entries)
            for (const DLLViewNode& far : end.items)
                for (const DLLViewEntry& value : far.entries)
                    if (value.kind == DLLViewEntry::Value) names.push_back(value.value.text);
    return names;
}

class ExpansionTest : public ViewServiceTest {
protected:
    void TearDown() override { DSRegistrar::releaseAll(); }

    static DSDBD dbd(const char* name) {
        DSDBD d("V1", ADObject::defaultObjID(), 1);
        d->_set_strDBDName(name, omStore);
        return d;
    }
    template <class S>
    static S segment(DSDBD& dbd, const char* name) {
        S s("V1", ADObject::defaultObjID(), 1);
        s->_set_strSegmentName(name, omStore);
        DSContainsSegment(&dbd, &s, 1);
        return s;
    }
    // A DBD defined by an index access type, and that access type.
    static std::pair<DSDBD, DSDBDindex> indexDbd(const char* name) {
        DSDBD d = dbd(name);
        DSDBDindex access("V1", ADObject::defaultObjID(), 1);
        DSDefinedByAccess(&d, &access, 1);
        return {d, access};
    }
};

// clang-format off
constexpr auto valuesAndRoles = rows(
    attr(0, "strDBDName", "name"),
    attr(0, "versionString"),
    attr(0, "noSuchAttribute"),
    attr(0, "segments"),  // a role, named as an attribute: nothing to read
    role(0, "segments"),
      target(1, "DSSegment"),
        attr(2, "strSegmentName"));
// clang-format on

TEST_F(ExpansionTest, ReadsValuesThroughTheAttributeTablesAndWalksRoles) {
    TestView view("TESTVALUES", "DSDBD", valuesAndRoles);
    DSDBD d = dbd("HOSPDBD");
    segment<DSSegment>(d, "WARD");
    segment<DSSegment>(d, "PATIENT");

    const DLLViewNode node = DLLView_expand(view.get(), d.impl());
    EXPECT_EQ(node.object, d.impl());
    EXPECT_EQ(node.delegated, view.get());
    ASSERT_EQ(node.entries.size(), 3u);
    EXPECT_STREQ(node.entries[0].element->alias, "name");
    EXPECT_STREQ(node.entries[0].value.type, "string");
    EXPECT_FALSE(node.entries[0].value.isNull);
    EXPECT_EQ(node.entries[0].value.text, "HOSPDBD");
    EXPECT_STREQ(node.entries[1].element->name, "versionString");
    EXPECT_TRUE(node.entries[1].value.isNull);
    ASSERT_EQ(node.entries[2].kind, DLLViewEntry::Role);
    EXPECT_EQ(farEndNames(node.entries[2]), (std::vector<std::string>{"WARD", "PATIENT"}));
    for (const DLLViewNode& link : node.entries[2].items) EXPECT_STREQ(link.object->whoAmI(), "DSContainsSegment");
    // The DBD, two links, two segments.
    EXPECT_EQ(DLLView_nodeCount(node), 5u);
}

// clang-format off
constexpr auto segmentsByEndClass = rows(
    role(0, "segments"),
      target(1, "DSSegmentComplex"),
        attr(2, "strSegmentName"),
    role(0, "segments"),
      target(1, "DSSegment"),
        attr(2, "strSegmentName"),
    // A list that names no end keeps every link of the role.
    role(0, "segments"));
// clang-format on

TEST_F(ExpansionTest, EndIsFollowedOnlyWhenItsClassIsExactlyTheListsClass) {
    TestView view("TESTENDS", "DSDBD", segmentsByEndClass);
    DSDBD d = dbd("MIXED");
    segment<DSSegment>(d, "PLAIN");
    segment<DSSegmentComplex>(d, "COMPLEX");
    segment<DSSegmentDEDB>(d, "DEDB");

    const DLLViewNode node = DLLView_expand(view.get(), d.impl());
    ASSERT_EQ(node.entries.size(), 3u);
    // A complex or DEDB segment is a DSSegment, yet the DSSegment copy of the
    // role takes only the plain one: each copy takes the links whose far end it names.
    EXPECT_EQ(farEndNames(node.entries[0]), (std::vector<std::string>{"COMPLEX"}));
    EXPECT_EQ(farEndNames(node.entries[1]), (std::vector<std::string>{"PLAIN"}));
    EXPECT_EQ(node.entries[2].items.size(), 3u);
    for (const DLLViewNode& link : node.entries[2].items) EXPECT_TRUE(link.entries.empty());
}

TEST_F(ExpansionTest, RoleTakesOnlyLinksOfItsListsClass) {
    // Made by hand: the list under segments names another link class than the role's.
    DLLViewList* other = new DLLViewList("DSParent", nullptr, 0);
    DLLViewList* root = new DLLViewList("DSDBD", new DLLViewElem(nullptr, "segments", 0, other, nullptr), 0);
    DLLViewType view("TESTLINKCLASS", "", nullptr);
    view._set_adViewList(root);
    DSDBD d = dbd("ONE");
    segment<DSSegment>(d, "ROOT");

    const DLLViewNode node = DLLView_expand(&view, d.impl());
    EXPECT_EQ(node.list, root);
    EXPECT_TRUE(node.entries.empty());
}

DLLViewType* segmentView = nullptr;
DLLViewType* complexView = nullptr;

// clang-format off
constexpr auto segmentNames = rows(attr(0, "strSegmentName"));
constexpr auto delegating = rows(
    role(0, "segments"),
      targetView(1, &segmentView),
    role(0, "segments"),
      targetView(1, &complexView));
// clang-format on

TEST_F(ExpansionTest, DelegatedEndIsExpandedByItsViewWhenItIsOfTheViewsRootClass) {
    TestView segmentType("TESTSEGMENT", "DSSegment", segmentNames, &segmentView);
    TestView complexType("TESTCOMPLEX", "DSSegmentComplex", segmentNames, &complexView);
    TestView view("TESTDELEGATING", "DSDBD", delegating);
    DSDBD d = dbd("HOSPDBD");
    DSSegment plain = segment<DSSegment>(d, "PLAIN");
    segment<DSSegmentComplex>(d, "COMPLEX");

    const DLLViewNode node = DLLView_expand(view.get(), d.impl());
    ASSERT_EQ(node.entries.size(), 2u);
    // By the segment view: both segments, each expanded (the complex one is a
    // DSSegment), although that view is used once per segment.
    EXPECT_EQ(farEndNames(node.entries[0]), (std::vector<std::string>{"PLAIN", "COMPLEX"}));
    for (const DLLViewNode& link : node.entries[0].items) {
        const DLLViewNode& far = link.entries.at(0).items.at(0);
        EXPECT_EQ(far.delegated, segmentType.get());
        EXPECT_EQ(far.list, segmentType.type._get_adViewList());
    }
    // By the complex view: the plain segment is no DSSegmentComplex, so only
    // its identity is kept.
    ASSERT_EQ(node.entries[1].items.size(), 2u);
    const DLLViewNode& identity = node.entries[1].items[0].entries.at(0).items.at(0);
    EXPECT_EQ(identity.object, plain.impl());
    EXPECT_EQ(identity.delegated, complexType.get());
    EXPECT_EQ(identity.list, nullptr);
    EXPECT_TRUE(identity.entries.empty());
    EXPECT_EQ(farEndNames(node.entries[1]), (std::vector<std::string>{"COMPLEX"}));
}

DLLViewType* loopView = nullptr;

// clang-format off
// An index DBD, the DBDs that share its index, and theirs again by this view.
constexpr auto sharing = rows(
    role(0, "dliAccess"),
      target(1, "DSDBDindex"),
        role(2, "sharingDBDs"),
          source(3, "DSDBDindex"),
            role(4, "containingDBD"),
              sourceView(5, &loopView),
    attr(0, "strDBDName"));
// clang-format on

TEST_F(ExpansionTest, ViewMetAgainOnItsOwnPathKeepsOnlyTheIdentity) {
    TestView view("TESTLOOP", "DSDBD", sharing, &loopView);
    auto [sharedDbd, shared] = indexDbd("SHARED");
    auto [sharerDbd, sharer] = indexDbd("SHARER");
    DSSharesWith(&sharer, &shared, 1);

    const DLLViewNode node = DLLView_expand(view.get(), sharedDbd.impl());
    const DLLViewNode* again =
        follow(node, {"dliAccess", "adTarget", "sharingDBDs", "adSource", "containingDBD", "adSource"});
    ASSERT_NE(again, nullptr);
    EXPECT_EQ(again->object, sharerDbd.impl());
    EXPECT_EQ(again->delegated, view.get());
    EXPECT_EQ(again->list, nullptr);
    EXPECT_TRUE(again->entries.empty());
}

TEST_F(ExpansionTest, RootOfAnotherClassGivesANodeWithoutListOrEntries) {
    TestView view("TESTVALUES", "DSDBD", valuesAndRoles);
    DSDBD d = dbd("HOSPDBD");
    DSSegment s = segment<DSSegment>(d, "WARD");

    const DLLViewNode node = DLLView_expand(view.get(), s.impl());
    EXPECT_EQ(node.object, s.impl());
    EXPECT_EQ(node.list, nullptr);
    EXPECT_TRUE(node.entries.empty());
    EXPECT_EQ(DLLView_expand(nullptr, d.impl()).object, nullptr);
    EXPECT_EQ(DLLView_expand(view.get(), nullptr).object, nullptr);
}

// The library's own delegations, over graphs they are made for.
TEST_F(ExpansionTest, IndexViewStopsAtTheSharingDbdItExpandsByItself) {
    auto [sharedDbd, shared] = indexDbd("SHARED");
    auto [sharerDbd, sharer] = indexDbd("SHARER");
    DSSharesWith(&sharer, &shared, 1);

    const DLLViewNode node = DLLView_expand(v_CVQINDEXDBD, sharedDbd.impl());
    const DLLViewNode* stop =
        follow(node, {"dliAccess", "adTarget", "sharingDBDs", "adSource", "containingDBD", "adSource"});
    ASSERT_NE(stop, nullptr);
    EXPECT_EQ(stop->object, sharerDbd.impl());
    EXPECT_EQ(stop->delegated, v_CVQINDEXDBD);
    EXPECT_EQ(stop->list, nullptr);
    EXPECT_TRUE(stop->entries.empty());
}

TEST_F(ExpansionTest, PsbViewsExpandTheirPcbsByThePcbViews) {
    DSPSB psb("V1", ADObject::defaultObjID(), 1);
    psb->_set_adName("PSB1", omStore);
    DSPCB pcb("V1", ADObject::defaultObjID(), 1);
    pcb->_set_adName("PCB1", omStore);
    DSIncludesPCB(&psb, &pcb, 1);

    for (auto [psbView, pcbView] : {std::pair{v_CORVIAPSB, v_CORVIAPCB}, std::pair{v_CVRENAMEPSB, v_CVRENAMEPCB}}) {
        SCOPED_TRACE(psbView->name());
        const DLLViewNode node = DLLView_expand(psbView, psb.impl());
        const DLLViewNode* expanded = follow(node, {"listPCBs", "adTarget"});
        ASSERT_NE(expanded, nullptr);
        EXPECT_EQ(expanded->object, pcb.impl());
        EXPECT_EQ(expanded->delegated, pcbView);
        EXPECT_EQ(expanded->list, pcbView->_get_adViewList());
        const std::vector<const DLLViewEntry*> name = entriesOf(*expanded, "adName");
        ASSERT_EQ(name.size(), 1u);
        EXPECT_STREQ(name[0]->element->alias, "pcbName");
        EXPECT_EQ(name[0]->value.text, "PCB1");
    }
}

}  // namespace

// RecordsTest.cpp — the view records and the builder: the three element forms,
// lists and their chain order, the bottom-up creation order of a tree and what
// failed allocations leave behind, in trees and in the registration, and the
// link class a role's list takes from the catalogue.
#include "tests/views/ViewTestSupport.h"
#include <krmwtarn/views/ViewOutline.h>
#include <krmwtarn/views/ViewTreeBuilder.h>

namespace {
using namespace viewrows;

TEST(ViewRecords, ElementFormsKeepWhatTheirConstructorIsGiven) {
    DLLViewType view("SOMEVIEW", "", nullptr);
    DLLViewList list("DSSegment", nullptr, 0);
    DLLViewElem plain(nullptr, "versionString", 0, static_cast<const char*>(nullptr));
    DLLViewElem aliased(&plain, "adName", 0, "rootDBDname");
    DLLViewElem role(&aliased, "segments", 0, &list, nullptr);
    DLLViewElem delegating(&role, "adTarget", 1, &view, nullptr);

    EXPECT_STREQ(plain.alias, "versionString");
    EXPECT_STREQ(aliased.name, "adName");
    EXPECT_STREQ(aliased.alias, "rootDBDname");
    EXPECT_EQ(aliased.next, &plain);
    EXPECT_EQ(role.list, &list);
    EXPECT_EQ(role.viewType, nullptr);
    EXPECT_STREQ(role.alias, "segments");
    EXPECT_EQ(delegating.viewType, &view);
    EXPECT_EQ(delegating.list, nullptr);
    EXPECT_EQ(delegating.flags, 1);
    EXPECT_EQ(plain.list, nullptr);
    EXPECT_EQ(plain.viewType, nullptr);
}

TEST(ViewRecords, ListTakesTheChainInChainOrderAndStaysEmptyWithoutOne) {
    // Created last to first, as a tree is built: the chain runs the other way.
    DLLViewElem c(nullptr, "c", 0, static_cast<const char*>(nullptr));
    DLLViewElem b(&c, "b", 0, static_cast<const char*>(nullptr));
    DLLViewElem a(&b, "a", 0, static_cast<const char*>(nullptr));
    DLLViewList list("DSDBD", &a, 0);
    ASSERT_EQ(list.count(), 3);
    EXPECT_EQ(list.element(0), &a);
    EXPECT_EQ(list.element(2), &c);
    EXPECT_EQ(list.element(3), nullptr);
    EXPECT_STREQ(list.className, "DSDBD");

    DLLViewList empty("DSHasAlternate", nullptr, 0);
    EXPECT_EQ(empty.count(), 0);
}

// segments → DSContainsSegment { adTarget → DSSegment { strSegmentName }, x }, adName
constexpr auto sample = rows(role(0, "segments"), target(1, "DSSegment"), attr(2, "strSegmentName"), attr(1, "x"),
                             attr(0, "adName", "rootDBDname"));

// Refuses the allocation whose turn (counted from 1) is `refuse`; records how
// many allocations were asked for.
int allocations = 0;
int refuse = 0;
bool gate() { return ++allocations != refuse; }

DLLViewList* buildSampleRefusing(int turn) {
    allocations = 0;
    refuse = turn;
    DLLViewAllocGate previous = DLLView_setAllocGate(gate);
    DLLViewList* root = buildViewList("DSDBD", sample.data(), 0, sample.size(), 0);
    DLLView_setAllocGate(previous);
    return root;
}

TEST(ViewBuilder, BuildsEachChainBackToFrontAndEachNestedListBeforeItsElement) {
    DLLViewList* root = buildSampleRefusing(0);
    EXPECT_EQ(allocations, 8);
    EXPECT_EQ(viewOutline(root),
              "- segments → DSContainsSegment\n"
              "  - adTarget → DSSegment\n"
              "    - strSegmentName\n"
              "  - x\n"
              "- adName as rootDBDname\n");
    DLLView_releaseTree(root);
}

TEST(ViewBuilder, FailedAllocationsLeaveNullNodesAndBuildingGoesOn) {
    // Creation order: adName, x, strSegmentName, DSSegment list, adTarget,
    // DSContainsSegment list, segments, root list.
    struct Case {
        int refused;
        const char* outline;
    } cases[] = {
        // The root's last element fails: the chain ends at segments.
        {1, "- segments → DSContainsSegment\n  - adTarget → DSSegment\n    - strSegmentName\n  - x\n"},
        // The only element of the DSSegment list fails: the list stays empty.
        {3, "- segments → DSContainsSegment\n  - adTarget → DSSegment\n  - x\n- adName as rootDBDname\n"},
        // The DSSegment list fails: its role element carries a null list.
        {4, "- segments → DSContainsSegment\n  - adTarget\n  - x\n- adName as rootDBDname\n"},
        // The role element fails: x, built before it, is lost with it.
        {5, "- segments → DSContainsSegment\n- adName as rootDBDname\n"},
    };
    for (const Case& c : cases) {
        DLLViewList* root = buildSampleRefusing(c.refused);
        EXPECT_EQ(viewOutline(root), c.outline) << "allocation " << c.refused << " refused";
        DLLView_releaseTree(root);
    }
    EXPECT_EQ(buildSampleRefusing(8), nullptr);
}

TEST(ViewBuilder, RoleListTakesTheLinkClassTheCatalogueGivesTheRoleOnTheListsClass) {
    startViewService();
    // The same role name is another link on another class; inherited roles count.
    EXPECT_STREQ(viewRoleLinkClass("DSSegmentComplex", "containingDBD"), "DSContainsSegment");
    EXPECT_STREQ(viewRoleLinkClass("DSDBDindex", "containingDBD"), "DSDefinedByAccess");
    EXPECT_STREQ(viewRoleLinkClass("DSDBD", "dependsOn"), "ADLinkKVPartDependsOnKVPart");
    EXPECT_EQ(viewRoleLinkClass("DSDBD", "strDBDName"), nullptr);
    EXPECT_EQ(viewRoleLinkClass("DSDBD", "noSuchRole"), nullptr);
    EXPECT_EQ(viewRoleLinkClass("NoSuchClass", "segments"), nullptr);
}

// clang-format off
constexpr auto unknownRole = rows(
    role(0, "noSuchRole"),
      target(1, "DSSegment"),
        attr(2, "strSegmentName"),
    role(0, "strDBDName"),
    attr(0, "adName"));
// clang-format on

TEST(ViewBuilder, RoleTheCatalogueDoesNotKnowGetsNoNestedList) {
    startViewService();
    DLLViewList* root = buildViewList("DSDBD", unknownRole.data(), 0, unknownRole.size(), 0);
    EXPECT_EQ(viewOutline(root), "- noSuchRole\n- strDBDName\n- adName\n");
    DLLView_releaseTree(root);
}

bool refuseAll() { return false; }

// The library's registration object, with init() reachable from the test.
struct Registration : init_ewswtarn_views {
    using init_ewswtarn_views::init;
};

TEST(ViewRegistration, FailedViewTypeAllocationLeavesTheVariableNull) {
    startViewService();
    std::vector<DLLViewType*> saved;
    for (const EwswtarnView& v : ewswtarnViews) saved.push_back(*v.variable);
    {
        Registration again;
        DLLViewAllocGate previous = DLLView_setAllocGate(refuseAll);
        again.init();
        DLLView_setAllocGate(previous);
    }
    for (const EwswtarnView& v : ewswtarnViews) EXPECT_EQ(*v.variable, nullptr) << v.name;
    for (std::size_t i = 0; i < saved.size(); ++i) *ewswtarnViews[i].variable = saved[i];
}

}  // namespace

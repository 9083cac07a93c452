// NavigationTest.cpp — typed walking: isa/cast/dyn_cast follow the class
// hierarchy (a complex segment is a segment, not a logical one), and a role
// read as a range yields the far ends of its links in the role's order, typed
// by the link class, from either end, passing over nothing but empty ends.
#include <krmwtarn/krmwtarn.h>
#include <krmwtarn/model/framework/Navigation.h>

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {
class Navigation : public ::testing::Test {
protected:
    void TearDown() override { DSRegistrar::releaseAll(); }
};
}  // namespace

TEST_F(Navigation, IsaAndCastsFollowTheClassHierarchy) {
    DSSegmentComplex complex("V", "C", 1);
    _ADObject* o = complex.impl();
    EXPECT_TRUE(kr::isa<_DSSegmentComplex>(o));
    EXPECT_TRUE(kr::isa<_DSSegment>(o));
    EXPECT_FALSE(kr::isa<_DSSegmentLogical>(o));
    EXPECT_FALSE(kr::isa<_DSField>(o));
    EXPECT_FALSE(kr::isa<_DSSegment>(static_cast<_ADObject*>(nullptr)));
    EXPECT_EQ(kr::dyn_cast<_DSSegmentLogical>(o), nullptr);
    EXPECT_EQ(kr::dyn_cast<_DSSegment>(o), static_cast<_DSSegment*>(complex.operator->()));
    EXPECT_EQ(kr::cast<_DSSegmentComplex>(o), complex.operator->());
    DSDBDhdam hdam("V", "H", 1);  // an HDAM access is a DEDB access in the model
    EXPECT_TRUE(kr::isa<_DSDBDdedb>(hdam.impl()));
    EXPECT_FALSE(kr::isa<_DSDBDhidam>(hdam.impl()));
}

TEST_F(Navigation, ARoleReadsAsItsFarEndsInOrderFromEitherEnd) {
    DSDBD dbd("V", "D", 1);
    std::vector<DSSegment> segments;
    for (const char* n : {"A", "B", "C"}) {
        segments.emplace_back("V", n, 1);
        segments.back()->_set_strSegmentName(n, omStore);
        DSContainsSegment(&dbd, &segments.back(), 1);
    }
    std::string names;
    for (_DSSegment* s : kr::targetsOf<DSContainsSegment>(dbd->_get_segments())) names += s->_get_strSegmentName();
    EXPECT_EQ(names, "ABC");
    EXPECT_EQ(kr::targetsOf<DSContainsSegment>(dbd->_get_segments()).first(), segments[0].operator->());
    // From the segment's side the same links lead back to the DBD.
    EXPECT_EQ(kr::sourcesOf<DSContainsSegment>(segments[2]->_get_containingDBD()).first(), dbd.operator->());
    // A self link: parent and children through DSParent.
    DSParent(&segments[1], &segments[0], 1);
    DSParent(&segments[2], &segments[0], 1);
    names.clear();
    for (_DSSegment* child : kr::sourcesOf<DSParent>(segments[0]->_get_physicalChildren()))
        names += child->_get_strSegmentName();
    EXPECT_EQ(names, "BC");
    EXPECT_EQ(kr::targetsOf<DSParent>(segments[1]->_get_physicalParent()).first(), segments[0].operator->());
    EXPECT_TRUE(kr::targetsOf<DSParent>(segments[0]->_get_physicalParent()).empty());
    EXPECT_TRUE(kr::targetsOf<DSParent>(nullptr).empty());
}

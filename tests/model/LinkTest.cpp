// LinkTest.cpp — the link pattern: catalogue invariants that cross-check the
// link tables against the object classes' role rows, properties run over all 41
// link classes, the four failure cases, and realistic hierarchies walked from
// both ends.
#include "TestSupport.h"

#include <cstring>
#include <map>
#include <memory>

namespace {
std::vector<const _classStruct*> linkClasses() {
    std::vector<const _classStruct*> v;
    for (const _classStruct* c = ewswtarnClassTable; c->className; ++c)
        if (std::strcmp(c->superclassName, "ADLink") == 0) v.push_back(c);
    return v;
}

// An object of an end class: a link class end gets an unlinked link object.
std::unique_ptr<ADObject> endObject(const char* cls, const char* context = "V1") {
    return std::unique_ptr<ADObject>(DSRegistration::create(cls, context, ADObject::defaultObjID()));
}
}  // namespace

TEST(LinkCatalogue, EndRowsAgreeWithTheRoleRowsOfTheirClasses) {
    int sourceControlling = 0, targetControlling = 0, ordered = 0;
    auto links = linkClasses();
    ASSERT_EQ(links.size(), 41u);
    for (const _classStruct* link : links) {
        const ADAttributeEntry* t = link->attributes;
        ASSERT_STREQ(t[0].name, "source");
        ASSERT_STREQ(t[1].name, "target");
        // Cardinalities agree: 1:1 with 1:1, 1:n with n:1, m:n with m:n.
        std::uint32_t s = t[0].flags & 0xF000, g = t[1].flags & 0xF000;
        std::uint32_t mirror = s == adFlagOneToMany ? adFlagManyToOne : s == adFlagManyToOne ? adFlagOneToMany : s;
        EXPECT_EQ(g, mirror) << link->className;
        EXPECT_FALSE(t[1].flags & adFlagOrdered) << link->className;
        sourceControlling += (t[0].flags & adFlagControlling) != 0;
        targetControlling += (t[1].flags & adFlagControlling) != 0;
        ordered += (t[0].flags & adFlagOrdered) != 0;
        for (int end = 0; end < 2; ++end) {
            const ADAttributeEntry* role = findRow(t[end].type, t[end].inverse);
            ASSERT_NE(role, nullptr) << link->className << " " << t[end].type << "." << t[end].inverse;
            EXPECT_EQ(role->flags, t[end].flags | adFlagRole) << link->className << " " << role->name;
            EXPECT_STREQ(adRoleLinkClass(*role), link->className);
            EXPECT_STREQ(role->type, t[1 - end].type) << link->className;
            EXPECT_STREQ(role->inverse, t[1 - end].inverse) << link->className;
        }
    }
    EXPECT_EQ(sourceControlling, 16);
    EXPECT_EQ(targetControlling, 3);
    EXPECT_EQ(ordered, 5);
}

class EveryLink : public RepositoryTest, public ::testing::WithParamInterface<const _classStruct*> {};

TEST_P(EveryLink, CreatesJoinsBothRolesAndRefusesADuplicate) {
    const _classStruct* link = GetParam();
    const ADAttributeEntry* t = link->attributes;
    auto source = endObject(t[0].type), target = endObject(t[1].type), other = endObject(t[1].type);
    ASSERT_TRUE(source && target) << link->className;

    std::unique_ptr<ADLink> made(ewswtarnCreateLink(link->className, source.get(), target.get()));
    ASSERT_TRUE(made && !made->isEmpty());
    auto* impl = static_cast<_ADLink*>(made->impl());
    EXPECT_STREQ(impl->whoAmI(), link->className);
    EXPECT_TRUE(*impl->getSource() == *source);
    EXPECT_TRUE(*impl->getTarget() == *target);
    EXPECT_STREQ(impl->getRepositoryKey()->getVersionString(), "V1");
    // Plain constructor: the source end is marked changed, the target end not.
    EXPECT_EQ(impl->getChangeFlag("source"), 1u);
    EXPECT_EQ(impl->getChangeFlag("target"), 0u);
    const ADAttributeEntry* sourceRole = findRow(t[0].type, t[0].inverse);
    const ADAttributeEntry* targetRole = findRow(t[1].type, t[1].inverse);
    DSModelCollection* inSource = ((*source).impl()->*sourceRole->getter.role)();
    DSModelCollection* inTarget = ((*target).impl()->*targetRole->getter.role)();
    EXPECT_EQ(inSource->count(), 1);
    EXPECT_EQ(inTarget->count(), 1);
    EXPECT_TRUE(*inSource->first() == *made);

    auto dup = thrown([&] { delete ewswtarnCreateLink(link->className, source.get(), target.get()); });
    ASSERT_TRUE(dup);
    EXPECT_STREQ(dup->first(), "relSameTarget");
    EXPECT_EQ(dup->number(), 2441);
    EXPECT_STREQ(dup->text(0), link->className);
    EXPECT_STREQ(dup->text(1), "0");
    EXPECT_EQ(inSource->count(), 1);

    // Setting an end to the object it already holds sends nothing.
    notes.clear();
    static_cast<_KRLink*>(impl)->_set_target(target.get(), omStore | omSetChanged);
    EXPECT_TRUE(notes.empty());
    EXPECT_EQ(impl->getChangeFlag("target"), 0u);

    // Moving the target detaches from the old end and joins the new one.
    static_cast<_KRLink*>(impl)->_set_target(other.get(), omStore);
    EXPECT_EQ(inTarget->count(), 0);
    EXPECT_EQ((((*other).impl())->*targetRole->getter.role)()->count(), 1);
    EXPECT_EQ(notes.back().name, "target");
}

TEST_P(EveryLink, RefusesWrongClassOtherVersionAndMissingEnds) {
    const _classStruct* link = GetParam();
    const ADAttributeEntry* t = link->attributes;
    auto source = endObject(t[0].type), target = endObject(t[1].type);
    auto stranger = endObject("DSCompRoutine");
    auto elsewhere = endObject(t[1].type, "V2");
    std::unique_ptr<ADLink> made(ewswtarnCreateLink(link->className, source.get(), target.get()));
    auto* impl = static_cast<_KRLink*>(made->impl());

    if (std::strcmp(t[1].type, "DSCompRoutine") != 0) {
        auto e = thrown([&] { impl->_set_target(stranger.get(), omStore); });
        ASSERT_TRUE(e);
        EXPECT_EQ(e->number(), 2498);
        EXPECT_STREQ(e->text(0), t[1].type);
        EXPECT_STREQ(e->text(1), "DSCompRoutine");
        EXPECT_STREQ(e->text(2), (std::string("_") + link->className).c_str());
        EXPECT_STREQ(e->text(3), "target");
        EXPECT_TRUE(*impl->getTarget() == *target);
    }
    auto v = thrown([&] { impl->_set_target(elsewhere.get(), omStore); });
    ASSERT_TRUE(v);
    EXPECT_EQ(v->number(), 2510);
    EXPECT_STREQ(v->text(0), "V2");
    EXPECT_STREQ(v->text(1), "V1");

    auto nullEnd = thrown([&] { delete ewswtarnCreateLink(link->className, source.get(), nullptr); });
    ASSERT_TRUE(nullEnd);
    EXPECT_EQ(nullEnd->number(), 2498);
    ADObject empty;
    auto emptyEnd = thrown([&] { delete ewswtarnCreateLink(link->className, &empty, target.get()); });
    ASSERT_TRUE(emptyEnd);
    EXPECT_STREQ(emptyEnd->text(0), t[0].type);
}

INSTANTIATE_TEST_SUITE_P(Catalogue, EveryLink, ::testing::ValuesIn(linkClasses()),
                         [](const auto& info) { return std::string(info.param->className); });

using Links = RepositoryTest;

TEST_F(Links, ControllerTestKeepsASegmentInOneDBD) {
    auto dbd1 = make<DSDBD>(), dbd2 = make<DSDBD>();
    auto root = make<DSSegment>(), child = make<DSSegment>();
    DSContainsSegment a(&dbd1, &root, 1);
    auto e = thrown([&] { DSContainsSegment b(&dbd2, &root, 1); });
    ASSERT_TRUE(e);
    EXPECT_EQ(e->number(), 2514);
    EXPECT_STREQ(e->text(0), "DSContainsSegment");
    EXPECT_STREQ(e->text(1), "DSSegment");
    EXPECT_STREQ(e->text(2), "DSSegment");
    // Thrown by the target setter: the new link already stands in the DBD's
    // role with an empty target, and the segment is untouched.
    ASSERT_NE(dbd2->_getFirst_segments(), nullptr);
    EXPECT_TRUE(dbd2->_getFirst_segments()->isEmpty());
    EXPECT_EQ(root->_get_containingDBD()->count(), 1);

    // A field may join a second segment of the same DBD, not one of another DBD.
    DSContainsSegment c(&dbd1, &child, 1);
    auto field = make<DSField>();
    DSHasField f1(&root, &field, 1);
    DSHasField f2(&child, &field, 1);
    auto foreign = make<DSSegment>();
    DSContainsSegment d(&dbd2, &foreign, 1);
    EXPECT_TRUE(thrown([&] { DSHasField f3(&foreign, &field, 1); }));

    // A link made with check 0 is empty and joins nothing.
    DSContainsSegment unchecked(&dbd1, &root, 0);
    EXPECT_TRUE(unchecked.isEmpty());
}

TEST_F(Links, OneToOneBreachIsOnlyTraced) {
    std::vector<std::string> traced;
    TRACEFLAG = 1;
    auto old = krtrace::setSink([&](const char* m, int, const char*) { traced.push_back(m); });
    auto hidam = make<DSDBDhidam>();
    auto i1 = make<DSDBDindex>(), i2 = make<DSDBDindex>();
    DSIndex a(&hidam, &i1, 1);
    DSIndex b(&hidam, &i2, 1);
    EXPECT_EQ(hidam->_get_primaryIndex()->count(), 2);
    ASSERT_EQ(traced.size(), 1u);
    EXPECT_EQ(traced[0], "DSIndex:Cardinality violation!");
    EXPECT_TRUE(thrown([&] { DSIndex c(&hidam, &i1, 1); }));
    EXPECT_EQ(traced.back(), "DSIndex:Duplicate rel violation\n");
    krtrace::setSink(old);
    TRACEFLAG = 0;
}

TEST_F(Links, DBDHierarchyWalksFromBothEnds) {
    auto dbd = make<DSDBD>();
    dbd->_set_strDBDName("HOSPDBD", omStore);
    EXPECT_EQ(dbd->_getFirst_dliAccess(), nullptr);
    EXPECT_EQ(dbd->_getFirst_segments(), nullptr);
    auto hospital = make<DSSegmentComplex>(), ward = make<DSSegmentComplex>(), patient = make<DSSegmentComplex>();
    hospital->_set_strSegmentName("HOSPITAL", omStore);
    ward->_set_strSegmentName("WARD", omStore);
    patient->_set_strSegmentName("PATIENT", omStore);
    for (DSSegmentComplex* s : {&hospital, &ward, &patient}) DSContainsSegment(&dbd, s, 1);
    DSParent(&ward, &hospital, 1);
    DSParent(&patient, &ward, 1);
    EXPECT_EQ(changeFlags.front(), dbd.impl());

    std::vector<std::string> names;
    for (DSSegment* s = dbd->_getFirst_segments(); s; s = dbd->_getNext_segments())
        names.push_back((*s)->_get_strSegmentName());
    EXPECT_EQ(names, (std::vector<std::string>{"HOSPITAL", "WARD", "PATIENT"}));
    EXPECT_TRUE(*patient->_getFirst_containingDBD() == dbd);
    EXPECT_STREQ((*patient->_getFirst_physicalParent())->_get_strSegmentName(), "WARD");
    EXPECT_STREQ((*hospital->_getFirst_physicalChildren())->_get_strSegmentName(), "WARD");
    EXPECT_EQ(hospital->_getNext_physicalChildren(), nullptr);

    // A logical child paired with its counterpart: the pair hangs off the link.
    auto doctor = make<DSSegmentComplex>();
    DSLChild lchild(&doctor, &patient, 1);
    lchild->_set_strLPARENT("DOCTOR", omStore | omSetChanged);
    EXPECT_EQ(lchild->getChangeFlag("strLPARENT"), 0u);
    lchild->_set_counter(0, omStore | omSetChanged);
    EXPECT_EQ(lchild->getChangeFlag("counter"), 0u);
    lchild->_set_counter(1, omStore | omSetChanged);
    EXPECT_EQ(lchild->getChangeFlag("counter"), 1u);
    EXPECT_EQ(lchild->getChangeFlag(nullptr), 4u);
    DSHasPair pair(&lchild, &ward, 1);
    EXPECT_TRUE(*ward->_getFirst_pairedLogChild() == lchild);
    EXPECT_TRUE(*lchild->_getFirst_pairedSegment() == ward);
    EXPECT_TRUE(*patient->_getFirst_logParent() == doctor);
}

TEST_F(Links, OrderedSourcesOfALogicalSegment) {
    auto logical = make<DSSegmentLogical>();
    auto a = make<DSSegment>(), b = make<DSSegment>(), c = make<DSSegment>();
    DSSource first(&logical, &a, nullptr, 1);
    EXPECT_EQ(first->getChangeFlag("target"), 2u);  // the ordered constructor marks both ends
    DSSource third(&logical, &c, &first, 1);
    DSSource second(&logical, &b, &first, 1);
    auto order = [&] {
        std::vector<_ADObject*> v;
        for (DSSegment* s = logical->_getFirst_sourceSegments(); s; s = logical->_getNext_sourceSegments())
            v.push_back(s->impl());
        return v;
    };
    EXPECT_EQ(order(), (std::vector<_ADObject*>{a.impl(), b.impl(), c.impl()}));
    first->moveTargetAfter(&third, omSetChanged);
    EXPECT_EQ(order(), (std::vector<_ADObject*>{b.impl(), c.impl(), a.impl()}));
    EXPECT_EQ(notes.back().name, "source");
    second->_set_sourceAfter(&logical, nullptr, omStore);  // same source: nothing moves
    EXPECT_EQ(order().front(), b.impl());
}

TEST_F(Links, EndSetterModesAndDetaching) {
    auto dbd = make<DSDBD>();
    auto seg = make<DSSegment>(), other = make<DSSegment>();
    DSContainsSegment link(&dbd, &seg, 1);
    auto* impl = link.operator->();
    // The source end is marked changed by creation: 2|1 now does nothing...
    auto dbd2 = make<DSDBD>();
    notes.clear();
    impl->_set_source(&dbd2, omStore | omKeepChanged);
    EXPECT_TRUE(*impl->_get_source() == dbd);
    EXPECT_TRUE(notes.empty());
    // ...but the class test runs first whenever bit 1 is given.
    auto stranger = make<DSSegment>();
    DSDBD* notADBD = reinterpret_cast<DSDBD*>(&stranger);
    auto e = thrown([&] { impl->_set_source(notADBD, omStore | omKeepChanged); });
    ASSERT_TRUE(e);
    EXPECT_EQ(e->number(), 2498);
    EXPECT_STREQ(e->text(1), "DSSegment");

    // Clearing the mark lets the end move; the link leaves the old DBD's role.
    impl->_set_source(nullptr, omClearChanged);
    EXPECT_EQ(impl->getChangeFlag("source"), 0u);
    EXPECT_EQ(notes.size(), 0u);  // neither 1 nor 4: no notification
    impl->_set_source(&dbd2, omStore | omKeepChanged);
    EXPECT_EQ(dbd->_get_segments()->count(), 0);
    EXPECT_TRUE(*dbd2->_getFirst_segments() == seg);
    EXPECT_EQ(notes.back().name, "source");

    // moveTargetAfter on a link not in its source's role moves nothing but
    // still marks the source end and notifies.
    DSContainsSegment loose("V1", ADObject::defaultObjID(), 1);
    notes.clear();
    loose->moveTargetAfter(nullptr, omSetChanged);
    EXPECT_EQ(loose->getChangeFlag("source"), 1u);
    EXPECT_EQ(notes.size(), 1u);
    EXPECT_EQ(loose->getChangeFlag(nullptr), 0u);  // end bits are not the link's own change state
    EXPECT_STREQ(loose->_get_sourceAttribute(), "segments");
    EXPECT_STREQ(loose->_get_targetAttribute(), "containingDBD");
    EXPECT_EQ(loose->sourceIsControlling(), 1);
    EXPECT_EQ(loose->targetIsControlling(), 0);
}

// FrameworkTest.cpp — identity, sharing, the factory, the class table and the
// attribute rules (setters, change bits, lookups) over the object classes.
#include "TestSupport.h"

#include <cstring>
#include <memory>
#include <set>

using Framework = RepositoryTest;

TEST_F(Framework, IdentitySharesOneImplementationPerClassIdAndContext) {
    DSDBD a("V1", "DBD-A", 1);
    DSDBD b("V1", "DBD-A", 1);
    DSDBD other("V2", "DBD-A", 1);
    EXPECT_TRUE(a == b);
    EXPECT_EQ(a->_get_useCount(), 2);
    EXPECT_FALSE(a == other);
    EXPECT_EQ(DSRegistrar::findObj("DSDBD", "DBD-A", "V1"), a.impl());

    DSDBD n1 = make<DSDBD>(), n2 = make<DSDBD>();
    EXPECT_FALSE(n1 == n2);
    EXPECT_EQ(DSRegistrar::findObj("DSDBD", n1->objID(), "V1"), n1.impl());

    DSDBD none1("V1", "X", 0), none2("V1", "Y", 0);
    EXPECT_TRUE(none1.isEmpty());
    EXPECT_TRUE(none1 == none2);
}

TEST_F(Framework, LastHandleDeregistersUnlessDeleted) {
    {
        DSSegment s("V1", "SEG", 1);
        ASSERT_NE(DSRegistrar::findObj("DSSegment", "SEG", "V1"), nullptr);
    }
    EXPECT_EQ(DSRegistrar::findObj("DSSegment", "SEG", "V1"), nullptr);

    DSField f("V1", "F", 1);
    f->markDeleted(nullptr, 0);
    EXPECT_EQ(DSRegistrar::findObj("DSField", "F", "V1"), nullptr);
    EXPECT_EQ(f->getChangeFlag(nullptr), 8u);
}

TEST_F(Framework, FactoryAnswersEveryClassAndNullForUnknownHash) {
    int rows = 0;
    for (const _classStruct* c = ewswtarnClassTable; c->className; ++c, ++rows) {
        std::unique_ptr<ADObject> h(ewswtarnFactory(c->className, "V1", ADObject::defaultObjID()));
        ASSERT_TRUE(h && !h->isEmpty()) << c->className;
        EXPECT_STREQ((*h)->whoAmI(), c->className);
        std::unique_ptr<ADObject> copy((*h)->createNewHandle());
        EXPECT_TRUE(*copy == *h);
        // Every class is a kind of its superclass line, as the table says.
        for (const _classStruct* s = c; s;
             s = s->superclassName ? DSRegistration::findClass(s->superclassName) : nullptr)
            EXPECT_TRUE((*h)->isKindOf(s->className)) << c->className << " / " << s->className;
        int n = 0;
        while (c->attributes[n].name) ++n;
        EXPECT_EQ(c->attributes[n].flags, 0u);
    }
    EXPECT_EQ(rows, 68);
    EXPECT_EQ(ewswtarnFactory("NoSuchClass", "V1", ADObject::defaultObjID()), nullptr);
    EXPECT_EQ(DSRegistrar::hashFn("DSDBD"), 94502u);
    EXPECT_EQ(DSRegistrar::hashFn("DSIsPartOf"), 8489u);
    EXPECT_EQ(DSRegistrar::hashFn("DSArea"), 976059u);
}

TEST_F(Framework, IsKindOfFollowsTheDeliberateSuperclassLines) {
    auto hdam = make<DSDBDhdam>();
    auto hidam = make<DSDBDhidam>();
    auto pcbdb = make<DSPCBdb>();
    auto pcbtp = make<DSPCBtp>();
    auto dedbSeg = make<DSSegmentDEDB>();
    EXPECT_TRUE(hdam->isKindOf("DSDBDdedb"));
    EXPECT_TRUE(hdam->isKindOf("DSDBDaccess"));
    EXPECT_FALSE(hidam->isKindOf("DSDBDdedb"));
    for (const char* n : {"DSPCBdb", "DSPCBbased", "DSPCBtype", "ADObject"}) EXPECT_TRUE(pcbdb->isKindOf(n)) << n;
    EXPECT_FALSE(pcbtp->isKindOf("DSPCBbased"));
    EXPECT_FALSE(dedbSeg->isKindOf("DSSegmentComplex"));
    EXPECT_TRUE(dedbSeg->isKindOf("DSSegment"));
    EXPECT_FALSE(hdam->isKindOf(nullptr));
    // DSSegmentDEDB keeps DSSegment's operator->, reaching its own part by conversion.
    static_assert(std::is_same_v<decltype(dedbSeg.operator->()), _DSSegment*>);
}

TEST_F(Framework, AttributeTableWalkVisitsMostDerivedFirst) {
    auto hdam = make<DSDBDhdam>();
    std::vector<std::string> first;
    for (ADAttributeEntry* t = hdam->nextAttributeTable(nullptr); t; t = hdam->nextAttributeTable(t))
        first.push_back(t->name);
    EXPECT_EQ(first, (std::vector<std::string>{"relativeBlockNumber", "rmName", "containingDBD", "adName"}));
}

TEST_F(Framework, StringSetterStoresMarksAndNotifiesOnlyOnChange) {
    auto dbd = make<DSDBD>();
    dbd->_set_versionString("1.0", omStore | omSetChanged);
    EXPECT_STREQ(dbd->_get_versionString(), "1.0");
    EXPECT_EQ(dbd->getChangeFlag("versionString"), 64u);
    ASSERT_EQ(notes.size(), 1u);
    EXPECT_EQ(notes[0].name, "versionString");

    dbd->setChangeBit("versionString", omClearChanged);
    dbd->_set_versionString("1.0", omStore | omSetChanged);  // same text: nothing happens
    EXPECT_EQ(dbd->getChangeFlag("versionString"), 0u);
    EXPECT_EQ(notes.size(), 1u);

    dbd->_set_versionString(nullptr, omStore);
    EXPECT_EQ(dbd->_get_versionString(), nullptr);
    dbd->_set_versionString(nullptr, omStore);
    EXPECT_EQ(notes.size(), 2u);
}

TEST_F(Framework, NameAttributesNeverTouchTheirOwnBit) {
    auto dbd = make<DSDBD>();
    dbd->_set_strDBDName("X", omStore | omSetChanged);
    EXPECT_STREQ(dbd->_get_strDBDName(), "X");
    EXPECT_EQ(dbd->getChangeFlag("strDBDName"), 0u);
    EXPECT_EQ(notes.back().name, "strDBDName");
    dbd->setChangeBit("strDBDName", omSetChanged);
    dbd->_set_strDBDName("Y", omClearChanged);
    EXPECT_EQ(dbd->getChangeFlag("strDBDName"), 1u);
    dbd->_set_strDBDName("Y", omStore | omKeepChanged);  // bit 2 still tests the bit
    EXPECT_STREQ(dbd->_get_strDBDName(), "X");

    // Every 0x80004 row is a name attribute: its setter leaves the bit alone.
    for (const _classStruct* c = ewswtarnClassTable; c->className; ++c) {
        std::unique_ptr<ADObject> h(ewswtarnFactory(c->className, "V1", ADObject::defaultObjID()));
        for (ADAttributeEntry* row = c->attributes; row->name; ++row) {
            if (row->flags != adRowNameAttribute) continue;
            ((*h).impl()->*row->setter.str)("NAME", omStore | omSetChanged);
            EXPECT_EQ((*h)->getChangeFlag(row->name), 0u) << c->className << "." << row->name;
            EXPECT_STREQ(((*h).impl()->*row->getter.str)(), "NAME");
        }
    }
}

TEST_F(Framework, KeepChangedAndClearModes) {
    auto access = make<DSDBDaccess>();
    access->_set_dliAccess("X", omStore | omSetChanged);
    access->_set_dliAccess("Y", omStore | omKeepChanged);
    EXPECT_STREQ(access->_get_dliAccess(), "X");
    access->_set_dliAccess("Y", omClearChanged);
    EXPECT_STREQ(access->_get_dliAccess(), "X");
    EXPECT_EQ(access->getChangeFlag("dliAccess"), 0u);

    auto seg = make<DSSegment>();
    notes.clear();
    seg->_set_maximumLength(0, omStore | omSetChanged);  // equal to the start value
    EXPECT_EQ(seg->getChangeFlag("maximumLength"), 0u);
    EXPECT_TRUE(notes.empty());
    seg->_set_maximumLength(-5, omStore | omSetChanged);  // no value checks
    EXPECT_EQ(seg->_get_maximumLength(), -5);
    EXPECT_EQ(seg->getChangeFlag("maximumLength"), 0x04u);  // row 10: byte 1, bit 2
}

TEST_F(Framework, ChangeBitsCrossBytesAndChainUpward) {
    auto dbd = make<DSDBD>();
    EXPECT_EQ(dbd->setChangeBit("segments", 9), 1u);
    EXPECT_EQ(dbd->getChangeFlag("segments"), 32u);
    dbd->setChangeBit("segments", omClearChanged);
    EXPECT_EQ(dbd->getChangeFlag("segments"), 0u);

    auto field = make<DSField>();
    field->setChangeBit("sharedDataItem", 0);
    EXPECT_EQ(field->getChangeFlag("sharedDataItem"), 0x08u);
    field->_set_sequenceField(1, omSetChanged);
    EXPECT_EQ(field->getChangeFlag("sequenceField"), 0x80u);
    EXPECT_EQ(field->getChangeFlag("fields"), 0u);  // a name of another class

    auto senseg = make<DSSenSegment>();
    senseg->_set_subsetPointer8('Y', omStore | omSetChanged);
    EXPECT_EQ(senseg->getChangeFlag("subsetPointer8"), 32u);

    auto complex = make<DSSegmentComplex>();
    EXPECT_EQ(complex->getChangeFlag(nullptr), 0u);
    complex->setChangeBit("fields", omSetChanged);  // answered by the DSSegment part
    EXPECT_EQ(complex->getChangeFlag("fields"), 0x40u);
    EXPECT_EQ(complex->getChangeFlag(nullptr), 4u);
    complex->setStatus(adStatusNew);
    EXPECT_EQ(complex->getChangeFlag(nullptr), 1u);

    auto hdam = make<DSDBDhdam>();
    hdam->_set_rmName("RM", omStore | omSetChanged);
    EXPECT_EQ(hdam->getChangeFlag("rmName"), 1u);
    EXPECT_EQ(hdam->setChangeBit("nothing", omSetChanged), 0u);
}

TEST_F(Framework, OperationsWithoutBehaviourChangeNothing) {
    auto seg = make<DSSegmentComplex>();
    EXPECT_EQ(seg->realLength(), 0u);
    EXPECT_EQ(seg->validateSEGM(nullptr, 0, nullptr), 0);
    EXPECT_EQ(&seg->writeSEGM(), &DSmacro::empty());
    auto exitObj = make<DSExit>();
    EXPECT_EQ(exitObj->writeEXIT(), nullptr);
    auto dbd = make<DSDBD>();
    EXPECT_TRUE(dbd->getRootSegment().isEmpty());
    EXPECT_EQ(dbd->getChangeFlag(nullptr), 0u);
    EXPECT_TRUE(notes.empty());
}

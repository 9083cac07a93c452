// ScenarioTest.cpp — realistic definitions built end to end: a HIDAM DBD with
// its index, secondary index fields, datasets and areas, exits; a PSB with
// ordered PCBs, a database PCB with its SENSEG hierarchy mapped onto the DBD,
// SENFLDs, and a terminal PCB with destinations.
#include "TestSupport.h"

#include <memory>

namespace {
template <class H, class First, class Next>
std::vector<_ADObject*> walk(First first, Next next) {
    std::vector<_ADObject*> v;
    for (H* h = first(); h; h = next()) v.push_back(h->impl());
    return v;
}
}  // namespace

using Scenario = RepositoryTest;

TEST_F(Scenario, HidamDatabaseWithSecondaryIndexDatasetsAndExits) {
    auto dbd = make<DSDBD>();
    auto hidam = make<DSDBDhidam>();
    auto index = make<DSDBDindex>();
    auto secondary = make<DSDBDindex>();
    DSDefinedByAccess(&dbd, &hidam, 1);
    DSIndex(&hidam, &index, 1);
    EXPECT_TRUE(*index->_getFirst_primaryIndexTarget() == hidam);

    auto root = make<DSSegmentComplex>();
    DSContainsSegment(&dbd, &root, 1);
    auto key = make<DSField>(), name = make<DSField>(), city = make<DSField>();
    for (DSField* f : {&key, &name, &city}) DSHasField(&root, f, 1);
    DSHasRootSequence(&hidam, &key, 1);
    key->_set_sequenceField(1, omStore | omSetChanged);
    key->_set_uniqueSequence(1, omStore);
    EXPECT_TRUE(*key->_getFirst_isRootSequence() == hidam);

    // A secondary index: searched on two fields, subsequenced by one, one of
    // which serves as search field of a second XDFLD too (many-to-many).
    auto xd = make<DSXDFLD>(), xd2 = make<DSXDFLD>();
    xd->_set_xdfldName("XNAME", omStore | omSetChanged);
    EXPECT_EQ(xd->getChangeFlag("xdfldName"), 0x04u);
    DSHasIndex(&root, &xd, 1);
    DSHasIndexSource(&xd, &root, 1);
    DSIsUseOf(&xd, &secondary, 1);
    DSHasSearch(&xd, &name, 1);
    DSHasSearch(&xd, &city, 1);
    DSHasSearch(&xd2, &name, 1);
    DSHasSubsequence(&xd, &key, 1);
    DSHasDuplicateData(&xd, &city, 1);
    EXPECT_EQ(walk<DSField>([&] { return xd->_getFirst_search(); }, [&] { return xd->_getNext_search(); }),
              (std::vector<_ADObject*>{name.impl(), city.impl()}));
    EXPECT_EQ(walk<DSXDFLD>([&] { return name->_getFirst_isSearch(); }, [&] { return name->_getNext_isSearch(); }),
              (std::vector<_ADObject*>{xd.impl(), xd2.impl()}));
    EXPECT_TRUE(*secondary->_getFirst_secondaryIndexTarget() == xd);
    EXPECT_TRUE(*root->_getFirst_sourcedIndex() == xd);
    EXPECT_TRUE(*city->_getFirst_isDuplicateData() == xd);

    // A dataset group: the area and the dataset hang off the DSDSColl link.
    auto dd = make<DSTARNDDname>(), overflow = make<DSTARNDDname>();
    dd->_set_ddsName("HOSPDD", omStore);
    DSDSColl group(&dbd, &dd, nullptr, 1);
    group->_set_dsDevice("3390", omStore | omSetChanged);
    EXPECT_EQ(group->getChangeFlag(nullptr), 4u);
    EXPECT_EQ(group->_getFirst_areaAttributes(), nullptr);
    auto dataset = make<DSTARNDataset>();
    auto area = make<DSArea>();
    DSHasDataset(&group, &dataset, 1);
    DSHasArea(&group, &area, 1);
    DSHasOverflow(&dataset, &overflow, 1);
    DSIsPartOf(&root, &dataset, 1);
    dataset->_set_freeSpacePercentage(150, omStore | omSetChanged);  // no value checks
    EXPECT_EQ(dataset->_get_freeSpacePercentage(), 150);
    dataset->setChangeBit("size2", omSetChanged);
    EXPECT_EQ(dataset->getChangeFlag("size2"), 0x40u);
    EXPECT_EQ(dataset->setChangeBit("size2", omClearChanged), 1u);
    EXPECT_EQ(dataset->getChangeFlag("size2"), 0u);
    area->_set_uow(7, omStore | omSetChanged);
    EXPECT_EQ(area->getChangeFlag("uow"), 0x10u);

    EXPECT_TRUE(*dbd->_getFirst_datasets() == dd);
    DSDSColl reached(static_cast<_DSDSColl*>(dbd->_get_datasets()->first()->impl()));
    EXPECT_TRUE(*reached->_getFirst_datasetAttributes() == dataset);
    EXPECT_TRUE(*reached->_getFirst_areaAttributes() == area);
    EXPECT_TRUE(*dataset->_getFirst_collector() == group);
    EXPECT_TRUE(*dataset->_getFirst_dd2() == overflow);
    EXPECT_TRUE(*overflow->_getFirst_overflowedDBDs() == dataset);
    EXPECT_TRUE(*root->_getFirst_dataset() == dataset);
    EXPECT_TRUE(*dd->_getFirst_implementedDBDs() == dbd);
    // The dataset belongs to the group, so it cannot join a second group of another DBD.
    auto otherDbd = make<DSDBD>();
    auto otherDd = make<DSTARNDDname>();
    DSDSColl otherGroup(&otherDbd, &otherDd, nullptr, 1);
    EXPECT_TRUE(thrown([&] { DSHasDataset(&otherGroup, &dataset, 1); }));

    // An exit serves the DBD and two segments.
    auto capture = make<DSExit>();
    capture->_set_strExit("CAPTX", omStore | omSetChanged);
    EXPECT_EQ(capture->getChangeFlag("strExit"), 0u);
    auto child = make<DSSegmentComplex>();
    DSContainsSegment(&dbd, &child, 1);
    DSUsesDBDExit(&dbd, &capture, 1);
    DSUsesSEGMExit(&root, &capture, 1);
    DSUsesSEGMExit(&child, &capture, 1);
    EXPECT_EQ(capture->_get_capturedSegment()->count(), 2);
    EXPECT_TRUE(*capture->_getFirst_capturedDBD() == dbd);

    auto routine = make<DSCompRoutine>();
    DSCompressedBy(&root, &routine, 1);
    routine->setChangeBit("segment", omSetChanged);
    EXPECT_EQ(routine->getChangeFlag("segment"), 0x08u);
    EXPECT_TRUE(*routine->_getFirst_segment() == root);
}

TEST_F(Scenario, PsbWithOrderedPcbsSensitiveSegmentsAndDestinations) {
    auto dbd = make<DSDBD>();
    auto root = make<DSSegment>(), child = make<DSSegment>();
    DSContainsSegment(&dbd, &root, 1);
    DSContainsSegment(&dbd, &child, 1);
    auto field = make<DSField>();
    DSHasField(&child, &field, 1);

    auto psb = make<DSPSB>();
    psb->_set_strPSBName("HOSPPSB", omStore | omSetChanged);
    EXPECT_EQ(psb->getChangeFlag("strPSBName"), 0u);
    psb->_set_maximumQxCalls(65535, omStore | omSetChanged);
    EXPECT_EQ(psb->getChangeFlag("maximumQxCalls"), 0x80u);
    psb->_set_lockMaximum(-1, omStore);
    EXPECT_EQ(psb->_get_lockMaximum(), -1);
    EXPECT_EQ(psb->_getFirst_listPCBs(), nullptr);

    auto p1 = make<DSPCB>(), p2 = make<DSPCB>(), p3 = make<DSPCB>();
    DSIncludesPCB first(&psb, &p1, nullptr, 1);
    DSIncludesPCB third(&psb, &p3, &first, 1);
    DSIncludesPCB second(&psb, &p2, &first, 1);
    auto pcbs = [&] {
        return walk<DSPCB>([&] { return psb->_getFirst_listPCBs(); }, [&] { return psb->_getNext_listPCBs(); });
    };
    EXPECT_EQ(pcbs(), (std::vector<_ADObject*>{p1.impl(), p2.impl(), p3.impl()}));
    third->moveTargetAfter(nullptr, 0);
    EXPECT_EQ(pcbs(), (std::vector<_ADObject*>{p3.impl(), p1.impl(), p2.impl()}));
    EXPECT_TRUE(*p2->_getFirst_usingPSBs() == psb);

    // A database PCB based on the DBD, with a SENSEG hierarchy over its segments.
    auto dbType = make<DSPCBdb>();
    DSSpecifiedByType(&p1, &dbType, 1);
    EXPECT_TRUE(*p1->_getFirst_typeOfPCB() == dbType);
    EXPECT_TRUE(*dbType->_getFirst_typedPCB() == p1);
    DSBasedOn(&dbType, &dbd, 1);
    EXPECT_TRUE(*dbd->_getFirst_basedPCBs() == dbType);
    dbType->_set_keyLength(12, omStore | omSetChanged);
    EXPECT_EQ(dbType->getChangeFlag("keyLength"), 1u);
    dbType->setChangeBit("strPCBtype", omSetChanged);
    EXPECT_EQ(dbType->getChangeFlag("strPCBtype"), 1u);

    auto top = make<DSSenSegment>(), below = make<DSSenSegment>();
    DSHasSensitive topLink(&dbType, &top, nullptr, 1);
    DSHasSensitive(&dbType, &below, &topLink, 1);
    DSHasParentSenseg(&below, &top, 1);
    DSMapsTo(&top, &root, 1);
    DSMapsTo(&below, &child, 1);
    EXPECT_EQ(top->_getFirst_parentSenseg(), nullptr);
    EXPECT_TRUE(*below->_getFirst_parentSenseg() == top);
    EXPECT_TRUE(*top->_getFirst_childSenseg() == below);
    EXPECT_TRUE(*child->_getFirst_sensitiveSegments() == below);
    auto senfld = make<DSSenField>();
    DSUsesSENFLD(&below, &senfld, 1);
    DSUsedAsSENFLD(&senfld, &field, 1);
    EXPECT_TRUE(*field->_getFirst_senflds() == senfld);
    EXPECT_TRUE(*senfld->_getFirst_sourceSENSEG() == below);
    top->_set_strSensegName("ROOT", omSetChanged);
    EXPECT_EQ(top->getChangeFlag("strSensegName"), 0u);
    top->_set_procoptSENSEG("A", omStore | omSetChanged);
    EXPECT_EQ(top->getChangeFlag("procoptSENSEG"), 0x08u);

    // A SENSEG maps onto one DBD: not onto a segment of a DBD the PCB is not on.
    auto foreignDbd = make<DSDBD>();
    auto foreign = make<DSSegment>();
    DSContainsSegment(&foreignDbd, &foreign, 1);
    auto stray = make<DSSenSegment>();
    DSHasSensitive(&dbType, &stray, nullptr, 1);
    DSMapsTo(&stray, &foreign, 1);  // first mapping: nothing to compare with
    EXPECT_TRUE(*stray->_getFirst_targetSegment() == foreign);

    // A terminal PCB with two destinations.
    auto tpType = make<DSPCBtp>();
    DSSpecifiedByType(&p2, &tpType, 1);
    auto d1 = make<DSOutputDest>(), d2 = make<DSOutputDest>();
    d1->_set_strKeyWord("LTERM", omSetChanged);
    EXPECT_EQ(d1->getChangeFlag("strKeyWord"), 0u);
    DSRefersTo(&tpType, &d1, 1);
    DSRefersTo(&tpType, &d2, 1);
    EXPECT_EQ(tpType->_get_destination()->count(), 2);
    EXPECT_TRUE(*d2->_getFirst_isReferedToBy() == tpType);
    EXPECT_FALSE(tpType->isKindOf("DSPCBbased"));
}

// SampleModel.cpp — the built-in sample definitions. Object IDs are the
// definitions' names, so the sample is the same objects in every build.
#include <krmwtarn/sample/SampleModel.h>

#include <krmwtarn/model/framework/Navigation.h>

#include <cstring>
#include <memory>
#include <string>
#include <utility>

namespace sample {
namespace {
template <class H>
H named(const std::string& id) {
    return H(kVersion, id.c_str(), 1);
}

DSSegmentComplex segment(DSDBD& dbd, const std::string& name, DSSegment* parent, short length) {
    auto s = named<DSSegmentComplex>(std::string(dbd->_get_strDBDName()) + "." + name);
    s->_set_strSegmentName(name.c_str(), omStore);
    s->_set_maximumLength(length, omStore);
    s->_set_minimumLength(length, omStore);
    s->_set_frequency("10", omStore);
    DSContainsSegment(&dbd, &s, 1);
    if (parent) DSParent(&s, parent, 1);
    return s;
}

DSField field(DSSegment& seg, const std::string& name, bool sequence) {
    auto f = named<DSField>(std::string((*&seg)->_get_strSegmentName()) + "." + name + "@" + seg->objID());
    f->_set_strFieldName(name.c_str(), omStore);
    f->_set_sequenceField(sequence ? 1 : 0, omStore);
    f->_set_uniqueSequence(sequence ? 1 : 0, omStore);
    DSHasField(&seg, &f, 1);
    return f;
}

DSDBD dbd(const std::string& name) {
    auto d = named<DSDBD>(name);
    d->_set_strDBDName(name.c_str(), omStore);
    d->_set_adName(name.c_str(), omStore);
    d->_set_versionString("1.0", omStore);
    return d;
}

template <class Access>
Access access(DSDBD& d, const char* dli) {
    auto a = named<Access>(std::string(d->_get_strDBDName()) + ".ACCESS");
    a->_set_dliAccess(dli, omStore);
    a->_set_osAccess(1, omStore);
    DSDefinedByAccess(&d, &a, 1);
    return a;
}
}  // namespace

Model build() {
    Model m;
    // The dictionary: the ward segment's layout and a field's alias.
    m.wardText = named<DSDataStructureAlias>("WARD-TEXT");
    m.wardText->_set_adName("WARD-TEXT", omStore);
    m.nameText = named<DSDataElementAlias>("PATNAME-TEXT");
    m.nameText->_set_adName("PATNAME-TEXT", omStore);
    auto wardLayout = named<DSDataStructure>("WARD-LAYOUT");
    wardLayout->_set_adName("WARD-LAYOUT", omStore);
    auto patientName = named<DSDataItem>("PATIENT-NAME");
    patientName->_set_adName("PATIENT-NAME", omStore);

    // HIDAM hospital database: HOSPITAL > WARD > PATIENT, DOCTOR as logical parent.
    m.hospital = dbd("HOSPDBD");
    auto hidam = access<DSDBDhidam>(m.hospital, "HIDAM");
    auto hospital = segment(m.hospital, "HOSPITAL", nullptr, 60);
    auto ward = segment(m.hospital, "WARD", &hospital, 40);
    auto patient = segment(m.hospital, "PATIENT", &ward, 120);
    auto hospCode = field(hospital, "HOSPCODE", true);
    field(hospital, "HOSPNAME", false);
    field(ward, "WARDNO", true);
    auto patNo = field(patient, "PATNO", true);
    auto patName = field(patient, "PATNAME", false);
    DSHasRootSequence(&hidam, &hospCode, 1);
    DSHasTARNsegmName(&ward, &m.wardText, 1);
    DSMappedBy(&ward, &wardLayout, 1);
    DSHasTARNfldName(&patName, &m.nameText, 1);
    DSMakesUseOf(&patName, &patientName, 1);

    // Its primary index DBD.
    m.hospIndex = dbd("HOSPIDX");
    auto primary = access<DSDBDindex>(m.hospIndex, "INDEX");
    DSIndex(&hidam, &primary, 1);
    auto indexRoot = segment(m.hospIndex, "HOSPIDXS", nullptr, 12);
    field(indexRoot, "HOSPKEY", true);

    // A secondary index on patient names.
    m.nameIndex = dbd("NAMEIDX");
    auto secondary = access<DSDBDindex>(m.nameIndex, "INDEX");
    secondary->_set_protect(1, omStore);
    auto indexSeg = segment(m.nameIndex, "NAMEIDXS", nullptr, 30);
    field(indexSeg, "NAMEKEY", true);
    auto xdfld = named<DSXDFLD>("XPATNAME");
    xdfld->_set_xdfldName("XPATNAME", omStore);
    xdfld->_set_nullValue("BLANK", omStore);
    DSHasIndex(&patient, &xdfld, 1);
    DSHasIndexSource(&xdfld, &patient, 1);
    DSIsUseOf(&xdfld, &secondary, 1);
    DSHasSearch(&xdfld, &patName, 1);
    DSHasSubsequence(&xdfld, &patNo, 1);
    DSHasDuplicateData(&xdfld, &patNo, 1);

    // A logical relationship: DOCTOR is the logical parent of PATIENT's child TREATMNT.
    auto doctor = segment(m.hospital, "DOCTOR", &hospital, 50);
    auto treatment = segment(m.hospital, "TREATMNT", &patient, 30);
    DSLChild lchild(&doctor, &treatment, 1);
    lchild->_set_strLPARENT("DOCTOR", omStore);
    lchild->_set_lcPointer("SNGL", omStore);
    lchild->_set_rules("LLV", omStore);
    DSHasPair(&lchild, &patient, 1);

    // A logical DBD whose segment is built from two ordered sources.
    m.logical = dbd("HOSPLOG");
    access<DSDBDaccess>(m.logical, "LOGICAL");
    auto patDoc = named<DSSegmentLogical>("HOSPLOG.PATDOC");
    patDoc->_set_strSegmentName("PATDOC", omStore);
    patDoc->_set_segmentName("PATDOC", omStore);
    DSContainsSegment(&m.logical, &patDoc, 1);
    DSSource first(&patDoc, &treatment, nullptr, 1);
    first->_set_strSOURCE("TREATMNT", omStore);
    DSSource second(&patDoc, &doctor, &first, 1);
    second->_set_strSOURCE("DOCTOR", omStore);
    second->_set_dataAlso(1, omStore);

    // A DEDB with two areas in its dataset groups.
    m.dedb = dbd("ACCTDEDB");
    auto dedbAccess = access<DSDBDdedb>(m.dedb, "DEDB");
    dedbAccess->_set_rmName("DBFHDC40", omStore);
    auto account = named<DSSegmentDEDB>("ACCTDEDB.ACCOUNT");
    account->_set_strSegmentName("ACCOUNT", omStore);
    kr::cast<_DSSegmentDEDB>(account.impl())->_set_directDependent(0, omStore);
    DSContainsSegment(&m.dedb, &account, 1);
    for (const char* areaName : {"ACCTAR1", "ACCTAR2"}) {
        auto dd = named<DSTARNDDname>(areaName);
        dd->_set_ddsName(areaName, omStore);
        DSDSColl group(&m.dedb, &dd, nullptr, 1);
        group->_set_dsModel("3390", omStore);
        auto area = named<DSArea>(std::string(areaName) + ".AREA");
        area->_set_areaSize(4096, omStore);
        area->_set_uow(100, omStore);
        area->_set_root(80, omStore);
        DSHasArea(&group, &area, 1);
    }

    // An HDAM database with a primary and an overflow dataset and a capture exit.
    m.hdam = dbd("PARTDBD");
    auto hdamAccess = access<DSDBDhdam>(m.hdam, "HDAM");
    hdamAccess->_set_rmName("DFSHDC40", omStore);
    hdamAccess->_set_rootAnchorPoints(2, omStore);
    hdamAccess->_set_relativeBlockNumber(500, omStore);
    auto part = segment(m.hdam, "PARTROOT", nullptr, 50);
    field(part, "PARTNO", true);
    auto primaryDd = named<DSTARNDDname>("PARTPRIM"), overflowDd = named<DSTARNDDname>("PARTOVFL");
    primaryDd->_set_ddsName("PARTPRIM", omStore);
    overflowDd->_set_ddsName("PARTOVFL", omStore);
    DSDSColl group(&m.hdam, &primaryDd, nullptr, 1);
    group->_set_dsDevice("3390", omStore);
    auto dataset = named<DSTARNDataset>("PARTPRIM.DATASET");
    dataset->_set_datasetLabel("PARTS", omStore);
    dataset->_set_recordFormat("FB", omStore);
    dataset->_set_freeSpacePercentage(20, omStore);
    DSHasDataset(&group, &dataset, 1);
    DSHasOverflow(&dataset, &overflowDd, 1);
    DSIsPartOf(&part, &dataset, 1);
    auto captureExit = named<DSExit>("PARTDBD.PARTEXIT");
    captureExit->_set_strExit("PARTEXIT", omStore);
    captureExit->_set_captureRoutine("CAPTPART", omStore);
    captureExit->_set_exitKey(1, omStore);
    DSUsesDBDExit(&m.hdam, &captureExit, 1);
    DSUsesSEGMExit(&part, &captureExit, 1);
    auto compression = named<DSCompRoutine>("PARTCOMP");
    compression->_set_routine("CMPRPART", omStore);
    DSCompressedBy(&part, &compression, 1);

    // An MSDB.
    m.msdb = dbd("RATEMSDB");
    auto msdbAccess = access<DSDBDmsdb>(m.msdb, "MSDB");
    msdbAccess->_set_msdbType("NONTERM", omStore);
    auto rate = named<DSSegment>("RATEMSDB.RATE");
    rate->_set_strSegmentName("RATE", omStore);
    DSContainsSegment(&m.msdb, &rate, 1);

    // The PSB: two database PCBs and a terminal PCB, in this order.
    m.psb = named<DSPSB>("HOSPPSB");
    m.psb->_set_strPSBName("HOSPPSB", omStore);
    m.psb->_set_adName("HOSPPSB", omStore);
    m.psb->_set_language("COBOL", omStore);
    m.terminalPcb = named<DSPCB>("HOSPPSB.PCB3");
    m.hospitalPcb = named<DSPCB>("HOSPPSB.PCB1");
    m.indexPcb = named<DSPCB>("HOSPPSB.PCB2");
    DSIncludesPCB first3(&m.psb, &m.terminalPcb, nullptr, 1);
    DSIncludesPCB first1(&m.psb, &m.hospitalPcb, nullptr, 1);
    DSIncludesPCB then2(&m.psb, &m.indexPcb, &first1, 1);
    // Bring the terminal PCB last: PCB1, PCB2, PCB3.
    first3->moveTargetAfter(&then2, 0);

    auto dbPcb = [&](DSPCB& pcb, DSDBD& base, const char* name) {
        pcb->_set_strPCBAccessName(name, omStore);
        pcb->_set_adName(name, omStore);
        auto type = named<DSPCBdb>(std::string("HOSPPSB.") + name + ".TYPE");
        type->_set_strPCBtype("DB", omStore);
        type->_set_procoptPCB("G", omStore);
        type->_set_keyLength(20, omStore);
        DSSpecifiedByType(&pcb, &type, 1);
        DSBasedOn(&type, &base, 1);
        return type;
    };
    auto hospType = dbPcb(m.hospitalPcb, m.hospital, "HOSPPCB");
    auto top = named<DSSenSegment>("HOSPPSB.HOSPPCB.HOSPITAL");
    top->_set_strSensegName("HOSPITAL", omStore);
    top->_set_procoptSENSEG("G", omStore);
    DSHasSensitive topLink(&hospType, &top, nullptr, 1);
    DSMapsTo(&top, &hospital, 1);
    auto wardSense = named<DSSenSegment>("HOSPPSB.HOSPPCB.WARD");
    wardSense->_set_strSensegName("WARD", omStore);
    DSHasSensitive wardLink(&hospType, &wardSense, &topLink, 1);
    DSHasParentSenseg(&wardSense, &top, 1);
    DSMapsTo(&wardSense, &ward, 1);
    auto patSense = named<DSSenSegment>("HOSPPSB.HOSPPCB.PATIENT");
    patSense->_set_strSensegName("PATIENT", omStore);
    patSense->_set_subsetPointer1('R', omStore);
    DSHasSensitive(&hospType, &patSense, &wardLink, 1);
    DSHasParentSenseg(&patSense, &wardSense, 1);
    DSMapsTo(&patSense, &patient, 1);
    auto senfld = named<DSSenField>("HOSPPSB.HOSPPCB.PATIENT.PATNAME");
    senfld->_set_startPosition(1, omStore);
    DSUsesSENFLD(&patSense, &senfld, 1);
    DSUsedAsSENFLD(&senfld, &patName, 1);

    // The second PCB processes the hospital through the secondary index.
    auto indexType = dbPcb(m.indexPcb, m.hospital, "NAMEPCB");
    DSSequencedBy(&indexType, &secondary, 1);
    auto viaIndex = named<DSSenSegment>("HOSPPSB.NAMEPCB.PATIENT");
    viaIndex->_set_strSensegName("PATIENT", omStore);
    DSHasSensitive(&indexType, &viaIndex, nullptr, 1);
    DSIndexedBy(&viaIndex, &secondary, 1);

    // A terminal PCB with two destinations.
    m.terminalPcb->_set_strPCBAccessName("ALTPCB", omStore);
    m.terminalPcb->_set_adName("ALTPCB", omStore);
    auto tp = named<DSPCBtp>("HOSPPSB.ALTPCB.TYPE");
    tp->_set_strPCBtype("TP", omStore);
    tp->_set_express(1, omStore);
    DSSpecifiedByType(&m.terminalPcb, &tp, 1);
    for (const char* lterm : {"PRINTER1", "WARDTERM"}) {
        auto dest = named<DSOutputDest>(lterm);
        dest->_set_ltermName(lterm, omStore);
        dest->_set_destinationType("LTERM", omStore);
        DSRefersTo(&tp, &dest, 1);
    }
    return m;
}

_ADObject* defaultRoot(const Model& m, const char* rootClass) {
    for (const ADObject* o : {static_cast<const ADObject*>(&m.hospital), static_cast<const ADObject*>(&m.psb),
                              static_cast<const ADObject*>(&m.hospitalPcb), static_cast<const ADObject*>(&m.wardText),
                              static_cast<const ADObject*>(&m.nameText)})
        if (!o->isEmpty() && !std::strcmp((*o)->whoAmI(), rootClass)) return o->impl();
    return nullptr;
}

const char* defaultName(const char* rootClass) {
    static const std::pair<const char*, const char*> names[] = {{"DSDBD", "HOSPDBD"},
                                                                {"DSPSB", "HOSPPSB"},
                                                                {"DSPCB", "HOSPPSB.PCB1"},
                                                                {"DSDataStructureAlias", "WARD-TEXT"},
                                                                {"DSDataElementAlias", "PATNAME-TEXT"}};
    for (const auto& [cls, name] : names)
        if (rootClass && !std::strcmp(cls, rootClass)) return name;
    return nullptr;
}

std::vector<std::pair<const char*, _ADObject*>> documentRoots(const Model& m) {
    std::vector<std::pair<const char*, _ADObject*>> roots;
    for (const DSDBD* d : {&m.hospital, &m.hospIndex, &m.nameIndex, &m.logical, &m.dedb, &m.hdam, &m.msdb})
        roots.emplace_back("CORVIAPOPULATEDBD", d->impl());
    roots.emplace_back("CORVIAPSB", m.psb.impl());
    return roots;
}

}  // namespace sample

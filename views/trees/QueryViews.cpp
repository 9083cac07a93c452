// QueryViews.cpp — the trees of the CVQ views (registration numbers 1 to 28):
// selections of a DBD, PCB, PSB, segment text or field text whose values carry
// report-style aliases, distinct within each view (numbered where an attribute
// recurs). The fragments come first, then one outline per view in registration
// order; the outlines are handed to the registration at the end.
#include <krmwtarn/platform/views/DictionaryViews.h>
#include <krmwtarn/views/EwswtarnViews.h>
#include <krmwtarn/views/trees/Trees.h>

namespace viewtrees {
namespace {
// clang-format off

constexpr auto dbdAnnotation = annotation("dbdDescType", "dbdDescription");

// Names kept in the dictionary: a segment's or a field's alias object, by its name.
constexpr auto segmentName(const char* alias) {
    return rows(
        role(0, "segmName"),
          target(1, "DSDataStructureAlias"),
            attr(2, "adName", alias));
}

constexpr auto fieldName(const char* alias) {
    return rows(
        role(0, "fldName"),
          target(1, "DSDataElementAlias"),
            attr(2, "adName", alias));
}

// A segment by its name and its DBD's name.
constexpr auto segmentAndDbdNames(const char* segmentAlias, const char* dbdAlias) {
    return rows(
        use(0, segmentName(segmentAlias)),
        use(0, owningDbdName(dbdAlias)));
}

// The texts of a segment name and of a field name: what CVQSEGMENTTEXT and
// CVQFIELDTEXT show, and what the segment views show of each name.
constexpr auto segmentText = rows(
    use(0, annotation("segDescType", "segDescription")),
    attr(0, "adName", "tarnSegmentName"));

constexpr auto fieldText = rows(
    use(0, annotation("fldDescType", "fldDescription")),
    attr(0, "adName", "tarnFieldName"));

constexpr auto annotatedSegmentName = rows(
    role(0, "segmName"),
      target(1, "DSDataStructureAlias"),
        use(2, segmentText));

constexpr auto annotatedFieldName = rows(
    role(0, "fldName"),
      target(1, "DSDataElementAlias"),
        use(2, fieldText));

constexpr auto annotatedFields = rows(
    role(0, "fields"),
      target(1, "DSField"),
        use(2, annotatedFieldName));

// The PCBs of one class based on the DBD and the PSBs that include them, by name.
constexpr auto pcbUsage(const char* pcbClass, const char* psbAlias = "psbName", const char* pcbAlias = "pcbName") {
    return rows(
        role(0, "basedPCBs"),
          source(1, pcbClass),
            role(2, "typedPCB"),
              source(3, "DSPCB"),
                role(4, "usingPSBs"),
                  source(5, "DSPSB"),
                    attr(6, "adName", psbAlias),
                attr(4, "adName", pcbAlias));
}

// The dictionary objects the DBD depends on: one dependsOn per dictionary class.
constexpr auto dictionaryDependencies = rows(
    use(0, dependency("DSDataStructureAlias", "usesStructureAlias")),
    use(0, dependency("DSDataElementAlias", "usesElementAlias")),
    use(0, dependency("DSDataElement", "usesDataElement")),
    use(0, dependency("DSDataStructure", "usesDataStructure")));

// How the DBD views end: the DB PCBs based on the DBD, its name and version.
constexpr auto dbdClosing = rows(
    use(0, pcbUsage("DSPCBdb")),
    attr(0, "adName", "dbdName"),
    attr(0, "versionString"));

// A DBD's dataset groups: the group's DD name, what the view lists of the
// group's datasets or areas, then the group's model and device.
template <std::size_t N>
constexpr auto datasetGroups(const char* ddsAlias, const std::array<Row, N>& details) {
    return rows(
        role(0, "datasets"),
          target(1, "DSTARNDDname"),
            attr(2, "ddsName", ddsAlias),
          use(1, details),
          attr(1, "dsModel"),
          attr(1, "dsDevice"));
}

template <std::size_t N>
constexpr auto datasets(const std::array<Row, N>& values) {
    return rows(
        role(0, "datasetAttributes"),
          target(1, "DSTARNDataset"),
            use(2, values));
}

// Datasets with their overflow DD name (the group's own under ddsName1).
template <std::size_t N>
constexpr auto overflowDatasetGroups(const std::array<Row, N>& values) {
    return datasetGroups("ddsName1", datasets(rows(
        role(0, "dd2"),
          target(1, "DSTARNDDname"),
            attr(2, "ddsName", "ddsName2"),
        use(0, values))));
}

constexpr auto ddNames = datasetGroups(nullptr, rows());

constexpr auto datasetsWithOverflow = overflowDatasetGroups(rows(
    attr(0, "primaryBlockingFactor"),
    attr(0, "overflowBlockingFactor"),
    attr(0, "outputRecordLength"),
    attr(0, "inputRecordLength")));

// The segments that use a segment as a source, by their and their DBD's names.
constexpr auto logicalUses = rows(
    role(0, "logicalSegments"),
      source(1, "DSSegmentLogical"),
        use(2, segmentAndDbdNames("logicalSegmentName", "logicalDBDname")),
      attr(1, "dataAlso"));

constexpr auto physicalParent(const char* parentClass) {
    return rows(
        role(0, "physicalParent"),
          target(1, parentClass),
            use(2, segmentName("parentSegmentName")),
          attr(1, "pcPointer"));
}

// A data item's simple type with the first N of the type's values, under the
// given (numbered) aliases.
template <std::size_t N>
constexpr auto simpleType(const char* const (&aliases)[N]) {
    const char* names[] = {"dataType", "length",       "scale",    "signed",  "picture",
                           "usage",    "defaultValue", "minValue", "maxValue"};
    std::array<Row, N + 2> out{role(0, "dataDef"), target(1, "DSSimpleTypeDef")};
    for (std::size_t i = 0; i < N; ++i) out[i + 2] = attr(2, names[i], aliases[i]);
    return out;
}

// A field's data item as the segment views list it, over `roleName`: the
// dictionary entry it uses, by the dictionary's view `sdd` and by its alias
// object of class `aliasClass`, its simple type `type` and its own name.
template <std::size_t N>
constexpr auto dataItem(const char* roleName, DLLViewType* const* sdd, const char* aliasClass, const char* aliasAlias,
                        const std::array<Row, N>& type, const char* itemAlias) {
    return rows(
        role(0, roleName),
          target(1, "DSDataItem"),
            role(2, "sdd"),
              targetView(3, sdd),
            role(2, "sddAlias"),
              target(3, aliasClass),
                attr(4, "adName", aliasAlias),
            use(2, type),
            attr(2, "adName", itemAlias));
}

// The item the field uses (a data element) and the item it shares (a data structure).
template <std::size_t N>
constexpr auto elementItem(const std::array<Row, N>& type) {
    return dataItem("targetDataItem", &v_CVQDATAELEMENT, "DSDataElementAlias", "itemElementAlias", type,
                    "dataItemName");
}

template <std::size_t N>
constexpr auto structureItem(const std::array<Row, N>& type) {
    return dataItem("sharedDataItem", &v_CVQDATASTRUCTURE, "DSDataStructureAlias", "itemStructureAlias", type,
                    "sharedItemName");
}

constexpr auto fieldValues = rows(
    attr(0, "uniqueSequence"),
    attr(0, "sequenceField"),
    attr(0, "strFieldName"));

constexpr auto segmentValues = rows(
    attr(0, "rules"),
    attr(0, "minimumLength"),
    attr(0, "maximumLength"),
    attr(0, "frequency"),
    attr(0, "exitFlag"),
    attr(0, "strSegmentName"));

// What the HSAM and DEDB views list first of every segment.
constexpr auto sequentialSegment = rows(
    use(0, annotatedSegmentName),
    use(0, physicalParent("DSSegment")),
    role(0, "mappingStructure"),
      targetView(1, &v_CVQDATASTRUCTURE),
    use(0, logicalUses),
    role(0, "fields"),
      target(1, "DSField"),
        use(2, fieldName("tarnFieldName")),
        use(2, elementItem(simpleType({"dataType1", "length1", "scale1", "signed1"}))),
        use(2, structureItem(simpleType({"dataType2", "length2"}))),
        use(2, fieldValues));

constexpr auto segmentExits = exits({"segmExitName", "segmLogFlag", "segmExitPath", "segmExitKey",
                                            "segmExitData", "segmCascadePath", "segmCascadeKey",
                                            "segmCascadeData", "segmCascade", "segmCaptureRoutine"});

// The DBD-level part that the HSAM and HISAM views share.
constexpr auto sequentialDbd = rows(
    use(0, exits()),
    role(0, "dliAccess"),
      target(1, "DSDBDaccess"),
        use(2, accessAttributes),
    use(0, datasetsWithOverflow),
    use(0, dbdAnnotation));

// The fields and the segment a secondary index is built from, by name.
constexpr auto xdfldSources = rows(
    role(0, "search"),
      target(1, "DSField"),
        use(2, fieldName("searchFieldName")),
    role(0, "subseq"),
      target(1, "DSField"),
        use(2, fieldName("subseqFieldName")),
    role(0, "ddata"),
      target(1, "DSField"),
        use(2, fieldName("ddataFieldName")),
    role(0, "indexSource"),
      target(1, "DSSegmentComplex"),
        use(2, segmentName("indexSourceName")));

// The segments of a full-function DBD: names and texts, mapping structure,
// parent, logical relationships, compression, exits, dataset and secondary
// indexes down to the index DBD's segments. Shared by the three COMPLEX views.
constexpr auto complexSegments = rows(
    role(0, "segments"),
      target(1, "DSSegmentComplex"),
        use(2, annotatedSegmentName),
        role(2, "mappingStructure"),
          target(3, "DSDataStructure"),
            use(4, annotation("structDescType", "structDescription")),
            attr(4, "adName", "mappingStructureName"),
        use(2, physicalParent("DSSegmentComplex")),
        use(2, logicalUses),
        role(2, "compRoutine"),
          target(3, "DSCompRoutine"),
            attr(4, "routine"),
            attr(4, "initialization"),
            attr(4, "dataOnly"),
        role(2, "exits"),
          target(3, "DSExit"),
            attr(4, "strExit"),
            attr(4, "logFlag"),
            attr(4, "captureRoutine"),
        role(2, "dataset"),
          target(3, "DSTARNDataset"),
            role(4, "collector"),
              // The data set group is reached as the end of another link, so it
              // names both of its ends.
              source(5, "DSDSColl"),
                source(6, "DSDBD"),
                  attr(7, "adName", "datasetGroupDBDname"),
                target(6, "DSTARNDDname"),
                  attr(7, "ddsName"),
                attr(6, "dsModel"),
                attr(6, "dsDevice"),
            attr(4, "datasetLabel"),
        role(2, "logChildren"),
          target(3, "DSSegmentComplex"),
            use(4, segmentAndDbdNames("logChildName", "logChildDBDname")),
          role(3, "pairedSegment"),
            target(4, "DSSegmentComplex"),
              use(5, segmentAndDbdNames("pairedSegmentName", "pairedDBDname")),
          attr(3, "lcPointer"),
          attr(3, "counter"),
        role(2, "logParent"),
          source(3, "DSSegmentComplex"),
            use(4, segmentAndDbdNames("logParentName", "logParentDBDname")),
          attr(3, "strLPARENT"),
        role(2, "sourcedIndex"),
          source(3, "DSXDFLD"),
            attr(4, "xdfldName", "sourcedXdfldName"),
        role(2, "indices"),
          target(3, "DSXDFLD"),
            use(4, xdfldSources),
            use(4, indexDbd("targetDBDindex", segmentName("indexSegmentName"), rows(
                use(0, annotation("indexDescType", "indexDescription")),
                attr(0, "adName", "indexDBDname")))),
            use(4, xdfldValues),
        attr(2, "segmPointer"),
        attr(2, "replaceFlag"),
        attr(2, "insertFlag"),
        attr(2, "deleteFlag"),
        attr(2, "rules"),
        attr(2, "minimumLength"),
        attr(2, "maximumLength"));

// The HIDAM and HDAM COMPLEX views differ only in their access class.
constexpr auto complexView(const char* accessClass) {
    return rows(
        use(0, complexSegments),
        role(0, "dliAccess"),
          target(1, accessClass),
            use(2, accessAttributes),
        attr(0, "adName", "dbdName"),
        attr(0, "versionString"));
}

// A segment name by the dictionary's CVQDSALIAS view, as CVQDBDUSAGE names every segment.
constexpr auto aliasName = rows(
    role(0, "segmName"),
      targetView(1, &v_CVQDSALIAS));

constexpr auto usageLogicalSegments(const char* dbdAlias) {
    return rows(
        role(0, "logicalSegments"),
          source(1, "DSSegmentLogical"),
            use(2, aliasName),
            use(2, owningDbdName(dbdAlias)));
}

constexpr auto usageSegments(const char* segmentClass, const char* fieldAlias, const char* logicalDbdAlias) {
    return rows(
        role(0, "segments"),
          target(1, segmentClass),
            use(2, aliasName),
            role(2, "fields"),
              target(3, "DSField"),
                attr(4, "strFieldName", fieldAlias),
            use(2, usageLogicalSegments(logicalDbdAlias)));
}

// An access view: the DBD's DD names, its access type with the given values,
// its annotation and its name.
template <std::size_t N>
constexpr auto accessView(const char* accessClass, const std::array<Row, N>& values) {
    return rows(
        use(0, ddNames),
        role(0, "dliAccess"),
          target(1, accessClass),
            use(2, values),
        use(0, dbdAnnotation),
        attr(0, "adName", "rootDBDname"));
}

// The texts of every segment of one class and of its fields.
constexpr auto segmentTexts(const char* segmentClass) {
    return rows(
        role(0, "segments"),
          target(1, segmentClass),
            use(2, annotatedSegmentName),
            use(2, annotatedFields),
        attr(0, "adName", "rootDBDname"));
}

constexpr auto CVQDBD = rows(
    role(0, "segments"),
      target(1, "DSSegmentLogical"),
        role(2, "sourceSegments"),
          target(3, "DSSegment"),
            use(4, segmentName("sourceSegmentName")),
          attr(3, "dataAlso"),
        use(2, segmentName("logicalSegmentName")),
    role(0, "segments"),
      target(1, "DSSegmentComplex"),
        use(2, segmentName("complexSegmentName")),
        role(2, "fields"),
          target(3, "DSField"),
            use(4, fieldName("complexFieldName")),
            attr(4, "sequenceField", "complexSequenceField"),
        role(2, "logChildren"),
          target(3, "DSSegmentComplex"),
            use(4, segmentName("logChildName")),
        role(2, "indices"),
          target(3, "DSXDFLD"),
            role(4, "targetDBDindex"),
              target(5, "DSDBDindex"),
                use(6, owningDbdName("secondaryIndexDBDname")),
            attr(4, "xdfldName"),
    role(0, "segments"),
      target(1, "DSSegment"),
        use(2, segmentName("segmentName")),
        role(2, "fields"),
          target(3, "DSField"),
            use(4, fieldName("fieldName")),
            attr(4, "sequenceField"),
    role(0, "dliAccess"),
      target(1, "DSDBDindex"),
        use(2, indexedSegment(owningDbdName("indexedDBDname"))),
        attr(2, "dliAccess", "indexAccess"),
    role(0, "dliAccess"),
      target(1, "DSDBDhidam"),
        role(2, "primaryIndex"),
          target(3, "DSDBDindex"),
            use(4, owningDbdName("primaryIndexDBDname")),
        attr(2, "dliAccess", "hidamAccess"),
    role(0, "dliAccess"),
      target(1, "DSDBDaccess"),
        attr(2, "dliAccess"),
    role(0, "basedPCBs"),
      source(1, "DSPCBbased"),
        role(2, "typedPCB"),
          source(3, "DSPCB"),
            attr(4, "adName", "pcbName"),
    attr(0, "adName", "rootDBDname"));

constexpr auto CVQGSAMDBD = rows(
    role(0, "dliAccess"),
      target(1, "DSDBDaccess"),
        use(2, accessAttributes),
    use(0, overflowDatasetGroups(rows(
        attr(0, "recordFormat"),
        attr(0, "outputRecordLength"),
        attr(0, "inputRecordLength")))),
    use(0, dbdAnnotation),
    use(0, pcbUsage("DSPCBbased")),
    attr(0, "adName", "dbdName"),
    attr(0, "versionString"));

// The data items of an MSDB field: the dictionary entry by both dictionary
// views, and the item's whole simple type.
template <std::size_t N>
constexpr auto msdbItem(const char* roleName, const std::array<Row, N>& type, const char* itemAlias) {
    return rows(
        role(0, roleName),
          target(1, "DSDataItem"),
            role(2, "sdd"),
              targetView(3, &v_CVQDATAELEMENT),
            role(2, "sdd"),
              targetView(3, &v_CVQDATASTRUCTURE),
            use(2, type),
            attr(2, "adName", itemAlias));
}

constexpr auto msdbValues = rows(
    attr(0, "msdbType"),
    attr(0, "msdbField"),
    attr(0, "dliAccess"));

constexpr auto CVQMSDBDBD = rows(
    role(0, "segments"),
      target(1, "DSSegment"),
        use(2, annotatedSegmentName),
        role(2, "fields"),
          target(3, "DSField"),
            use(4, annotatedFieldName),
            use(4, msdbItem("targetDataItem", simpleType({"dataType1", "length1", "scale1", "signed1", "picture1",
                                                          "usage1", "defaultValue1", "minValue1", "maxValue1"}),
                            "dataItemName")),
            use(4, msdbItem("sharedDataItem", simpleType({"dataType2", "length2", "scale2", "signed2", "picture2",
                                                          "usage2", "defaultValue2", "minValue2", "maxValue2"}),
                            "sharedItemName")),
            use(4, fieldValues),
        use(2, segmentValues),
        attr(2, "adName", "segmentName"),
    role(0, "dliAccess"),
      target(1, "DSDBDmsdb"),
        use(2, msdbValues),
    use(0, dbdAnnotation),
    use(0, dbdClosing));

constexpr auto CVQHSAMDBD = rows(
    role(0, "segments"),
      target(1, "DSSegment"),
        use(2, sequentialSegment),
        use(2, segmentExits),
        use(2, segmentValues),
    use(0, sequentialDbd),
    use(0, dictionaryDependencies),
    use(0, dbdClosing));

// As the HSAM view, for a DEDB: DEDB segments with compression, areas for datasets.
constexpr auto CVQDEDBDBD = rows(
    role(0, "segments"),
      target(1, "DSSegmentDEDB"),
        use(2, sequentialSegment),
        role(2, "compRoutine"),
          target(3, "DSCompRoutine"),
            attr(4, "routine"),
            attr(4, "initialization"),
        use(2, segmentExits),
        attr(2, "subsetPointers"),
        attr(2, "directDependent"),
        attr(2, "rules"),
        attr(2, "minimumLength"),
        attr(2, "maximumLength"),
        attr(2, "exitFlag"),
        attr(2, "strSegmentName"),
    use(0, exits()),
    role(0, "dliAccess"),
      target(1, "DSDBDdedb"),
        attr(2, "extendedCall"),
        attr(2, "stage"),
        attr(2, "rmName"),
        use(2, accessAttributes),
    use(0, datasetGroups(nullptr, areas)),
    use(0, dbdAnnotation),
    use(0, dictionaryDependencies),
    use(0, dbdClosing));

constexpr auto CVQHDAMDBD = rows(
    use(0, exits()),
    role(0, "dliAccess"),
      target(1, "DSDBDhdam"),
        attr(2, "rmName"),
        attr(2, "rootMaxBytes"),
        attr(2, "rootAnchorPoints"),
        attr(2, "relativeBlockNumber"),
        use(2, accessAttributes),
    use(0, datasetGroups(nullptr, datasets(rows(
        attr(0, "size2"),
        attr(0, "size1"),
        attr(0, "searchAlgorithm"),
        attr(0, "scanCylinders"),
        attr(0, "freeSpacePercentage"),
        attr(0, "freeBlockFrequency"))))),
    use(0, dbdAnnotation),
    use(0, dbdClosing));

constexpr auto CVQHISAMDBD = rows(
    use(0, sequentialDbd),
    use(0, dbdClosing));

constexpr auto CVQHIDAMDBD = rows(
    use(0, exits()),
    role(0, "dliAccess"),
      target(1, "DSDBDhidam"),
        role(2, "rootSequenceField"),
          target(3, "DSField"),
            use(4, fieldName("tarnFieldName")),
            attr(4, "uniqueSequence"),
            attr(4, "sequenceField"),
        use(2, indexDbd("primaryIndex",
            rows(
                use(0, segmentName("tarnSegmentName")),
                attr(0, "minimumLength"),
                attr(0, "maximumLength")),
            rows(attr(0, "adName", "indexDBDname")))),
            // The index access type's own values.
            attr(4, "protect"),
            attr(4, "dosCompatibility"),
        use(2, accessAttributes),
    use(0, datasetGroups(nullptr, datasets(rows(
        attr(0, "primaryBlockingFactor"),
        attr(0, "inputRecordLength"),
        attr(0, "freeSpacePercentage"),
        attr(0, "freeBlockFrequency"))))),
    use(0, dbdAnnotation),
    use(0, dbdClosing));

constexpr auto CVQLOGICALDBD = rows(
    role(0, "segments"),
      target(1, "DSSegmentLogical"),
        role(2, "sourceSegments"),
          target(3, "DSSegment"),
            use(4, segmentAndDbdNames("sourceSegmentName", "sourceDBDname")),
          attr(3, "dataAlso"),
        use(2, annotatedSegmentName),
        role(2, "physicalParent"),
          target(3, "DSSegmentLogical"),
            use(4, segmentName("parentSegmentName")),
    role(0, "dliAccess"),
      target(1, "DSDBDaccess"),
        attr(2, "dliAccess"),
    use(0, dbdAnnotation),
    use(0, dbdClosing));

// A DBD sharing this index DBD is expanded by this same view: the adSource
// below sharingDBDs delegates to CVQINDEXDBD.
constexpr auto CVQINDEXDBD = rows(
    role(0, "segments"),
      target(1, "DSSegment"),
        use(2, annotatedSegmentName),
        role(2, "mappingStructure"),
          targetView(3, &v_CVQDATASTRUCTURE),
        use(2, logicalUses),
        role(2, "fields"),
          target(3, "DSField"),
            use(4, annotatedFieldName),
            use(4, elementItem(simpleType({"dataType1", "length1", "scale1"}))),
            use(4, structureItem(simpleType({"dataType2", "length2", "scale2"}))),
            use(4, fieldValues),
        use(2, segmentValues),
    role(0, "dliAccess"),
      target(1, "DSDBDindex"),
        role(2, "sharingDBDs"),
          source(3, "DSDBDindex"),
            role(4, "containingDBD"),
              sourceView(5, &v_CVQINDEXDBD),
        role(2, "primaryIndexTarget"),
          source(3, "DSDBDhidam"),
            role(4, "rootSequenceField"),
              target(5, "DSField"),
                use(6, fieldName("rootSequenceName")),
            role(4, "containingDBD"),
              source(5, "DSDBD"),
                role(6, "segments"),
                  target(7, "DSSegmentComplex"),
                    use(8, segmentName("targetSegmentName")),
                    role(8, "fields"),
                      target(9, "DSField"),
                        attr(10, "strFieldName", "targetFieldName"),
                attr(6, "adName", "targetDBDname"),
        role(2, "secondaryIndexTarget"),
          source(3, "DSXDFLD"),
            use(4, xdfldSources),
            role(4, "sourceSEGMcmpx"),
              source(5, "DSSegmentComplex"),
                use(6, segmentAndDbdNames("indexedSegmentName", "indexedDBDname")),
            use(4, xdfldValues),
        attr(2, "protect"),
        attr(2, "dosCompatibility"),
        use(2, accessAttributes),
    use(0, datasetsWithOverflow),
    use(0, dbdAnnotation),
    use(0, dictionaryDependencies),
    use(0, dbdClosing));

constexpr auto CVQHIDAMDBDCOMPLEX = complexView("DSDBDhidam");

constexpr auto CVQHDAMDBDCOMPLEX = complexView("DSDBDhdam");

// Unlike its two siblings, deliberately: the access class is DSDBDaccess,
// its list carries the segment attribute frequency, and versionString is missing.
constexpr auto CVQHISAMDBDCOMPLEX = rows(
    use(0, complexSegments),
    role(0, "dliAccess"),
      target(1, "DSDBDaccess"),
        use(2, accessAttributes),
        attr(2, "frequency"),
    attr(0, "adName", "dbdName"));

// Where the DBD is used: logical DBDs, logical children, secondary and primary
// indexes and PCBs, with every segment named through the dictionary's CVQDSALIAS.
constexpr auto CVQDBDUSAGE = rows(
    role(0, "segments"),
      target(1, "DSSegmentComplex"),
        use(2, aliasName),
        role(2, "logChildren"),
          target(3, "DSSegmentComplex"),
            use(4, aliasName),
            use(4, owningDbdName("logChildDBDname")),
        role(2, "indices"),
          target(3, "DSXDFLD"),
            use(4, indexDbd("targetDBDindex", aliasName, rows())),
        role(2, "fields"),
          target(3, "DSField"),
            attr(4, "strFieldName", "complexFieldName"),
        use(2, usageLogicalSegments("complexLogicalDBDname")),
        role(2, "logParent"),
          source(3, "DSSegmentComplex"),
            use(4, aliasName),
    role(0, "segments"),
      target(1, "DSSegmentLogical"),
        use(2, aliasName),
        role(2, "sourceSegments"),
          target(3, "DSSegment"),
            use(4, aliasName),
            use(4, owningDbdName("sourceDBDname")),
    use(0, usageSegments("DSSegmentDEDB", "dedbFieldName", "dedbLogicalDBDname")),
    use(0, usageSegments("DSSegment", "fieldName", "logicalDBDname")),
    role(0, "dliAccess"),
      target(1, "DSDBDindex"),
        use(2, indexedSegment(rows(
            use(0, aliasName),
            use(0, owningDbdName("indexedDBDname"))))),
        role(2, "sharingDBDs"),
          source(3, "DSDBDindex"),
            role(4, "containingDBD"),
              source(5, "DSDBD"),
                role(6, "segments"),
                  target(7, "DSSegment"),
                    use(8, aliasName),
                attr(6, "adName", "sharingDBDname"),
        role(2, "primaryIndexTarget"),
          source(3, "DSDBDhidam"),
            use(4, owningDbdName("hidamDBDname")),
        attr(2, "dliAccess", "indexAccess"),
    role(0, "dliAccess"),
      target(1, "DSDBDhidam"),
        use(2, indexDbd("primaryIndex", aliasName, rows(attr(0, "adName", "primaryIndexDBDname")))),
        role(2, "rootSequenceField"),
          target(3, "DSField"),
            attr(4, "strFieldName", "rootSequenceName"),
        attr(2, "dliAccess", "hidamAccess"),
    role(0, "dliAccess"),
      target(1, "DSDBDmsdb"),
        attr(2, "dliAccess", "msdbAccess"),
    role(0, "dliAccess"),
      target(1, "DSDBDdedb"),
        attr(2, "dliAccess", "dedbAccess"),
    role(0, "dliAccess"),
      target(1, "DSDBDaccess"),
        attr(2, "dliAccess"),
    use(0, pcbUsage("DSPCBdb", "dbPsbName", "dbPcbName")),
    use(0, pcbUsage("DSPCBbased")),
    role(0, "dependsOn"),
      targetView(1, &v_CVQDATAELEMENT),
    role(0, "dependsOn"),
      targetView(1, &v_CVQDATASTRUCTURE),
    attr(0, "adName", "rootDBDname"));

constexpr auto CVQPCB = rows(
    role(0, "typeOfPCB"),
      target(1, "DSPCBdb"),
        role(2, "senseg"),
          target(3, "DSSenSegment"),
            role(4, "targetSegment"),
              target(5, "DSSegment"),
                use(6, segmentName("tarnSegmentName")),
                attr(6, "strSegmentName"),
            role(4, "indices"),
              target(5, "DSDBDindex"),
                attr(6, "adName", "sensegIndexName"),
                attr(6, "dosCompatibility"),
            use(4, sensegValues),
        role(2, "procseq"),
          target(3, "DSDBDindex"),
            use(4, owningDbdName("procseqDBDname")),
        role(2, "baseDBD"),
          target(3, "DSDBD"),
            attr(4, "adName", "dbdName"),
        attr(2, "sequentialBuffering"),
        attr(2, "positioning"),
        attr(2, "keyLength"),
        attr(2, "procoptPCB"),
        attr(2, "strPCBtypeName"),
        attr(2, "strPCBtype"),
    role(0, "typeOfPCB"),
      target(1, "DSPCBbased"),
        role(2, "baseDBD"),
          target(3, "DSDBD"),
            attr(4, "adName", "basedDBDname"),
        attr(2, "procoptPCB", "basedProcopt"),
        attr(2, "strPCBtypeName", "basedTypeName"),
        attr(2, "strPCBtype", "basedType"),
    use(0, dependency("DSDBD", "usesDBD")),
    role(0, "usingPSBs"),
      source(1, "DSPSB"),
        attr(2, "adName", "psbName"),
        attr(2, "strPSBName"),
    use(0, annotation("pcbDescType", "pcbDescription")),
    attr(0, "adName", "pcbName"),
    attr(0, "list"));

constexpr auto CVQDBDACCESS = accessView("DSDBDaccess", accessAttributes);

constexpr auto CVQPSBGLOSSARY = rows(
    use(0, annotation("psbDescType", "psbDescription")),
    attr(0, "adName", "psbName"),
    use(0, psbAttributes));

constexpr auto CVQDBDSEGMENTS = segmentTexts("DSSegment");

constexpr auto CVQDBDSEGMDEDB = segmentTexts("DSSegmentDEDB");

constexpr auto CVQDBDSEGMCOMPLEX = segmentTexts("DSSegmentComplex");

// A logical segment has no fields of its own: only its text.
constexpr auto CVQDBDSEGMLOGICAL = rows(
    role(0, "segments"),
      target(1, "DSSegmentLogical"),
        use(2, annotatedSegmentName),
    attr(0, "adName", "rootDBDname"));

constexpr auto CVQDBDDEDBACCESS = accessView("DSDBDdedb", rows(
    attr(0, "extendedCall"),
    attr(0, "stage"),
    attr(0, "rmName"),
    attr(0, "dliAccess")));

// An MSDB has no dataset groups: no DD names.
constexpr auto CVQDBDMSDBACCESS = rows(
    role(0, "dliAccess"),
      target(1, "DSDBDmsdb"),
        use(2, msdbValues),
    use(0, dbdAnnotation),
    attr(0, "adName", "rootDBDname"));

constexpr auto CVQDBDHIDAMACCESS = accessView("DSDBDhidam", accessAttributes);

constexpr auto CVQDBDHDAMACCESS = accessView("DSDBDhdam", rows(
    attr(0, "rmName"),
    attr(0, "rootMaxBytes"),
    attr(0, "rootAnchorPoints"),
    attr(0, "relativeBlockNumber"),
    use(0, accessAttributes)));

constexpr auto CVQDBDINDEXACCESS = accessView("DSDBDindex", rows(
    attr(0, "protect"),
    attr(0, "dosCompatibility"),
    attr(0, "passwordFlag"),
    attr(0, "dliAccess")));

constexpr auto CVQSEGMENTTEXT = segmentText;

constexpr auto CVQFIELDTEXT = fieldText;

// clang-format on
}  // namespace

EWSWTARN_OUTLINE(CVQDBD)
EWSWTARN_OUTLINE(CVQGSAMDBD)
EWSWTARN_OUTLINE(CVQMSDBDBD)
EWSWTARN_OUTLINE(CVQHSAMDBD)
EWSWTARN_OUTLINE(CVQDEDBDBD)
EWSWTARN_OUTLINE(CVQHDAMDBD)
EWSWTARN_OUTLINE(CVQHISAMDBD)
EWSWTARN_OUTLINE(CVQHIDAMDBD)
EWSWTARN_OUTLINE(CVQLOGICALDBD)
EWSWTARN_OUTLINE(CVQINDEXDBD)
EWSWTARN_OUTLINE(CVQHIDAMDBDCOMPLEX)
EWSWTARN_OUTLINE(CVQHDAMDBDCOMPLEX)
EWSWTARN_OUTLINE(CVQHISAMDBDCOMPLEX)
EWSWTARN_OUTLINE(CVQDBDUSAGE)
EWSWTARN_OUTLINE(CVQPCB)
EWSWTARN_OUTLINE(CVQDBDACCESS)
EWSWTARN_OUTLINE(CVQPSBGLOSSARY)
EWSWTARN_OUTLINE(CVQDBDSEGMENTS)
EWSWTARN_OUTLINE(CVQDBDSEGMDEDB)
EWSWTARN_OUTLINE(CVQDBDSEGMCOMPLEX)
EWSWTARN_OUTLINE(CVQDBDSEGMLOGICAL)
EWSWTARN_OUTLINE(CVQDBDDEDBACCESS)
EWSWTARN_OUTLINE(CVQDBDMSDBACCESS)
EWSWTARN_OUTLINE(CVQDBDHIDAMACCESS)
EWSWTARN_OUTLINE(CVQDBDHDAMACCESS)
EWSWTARN_OUTLINE(CVQDBDINDEXACCESS)
EWSWTARN_OUTLINE(CVQSEGMENTTEXT)
EWSWTARN_OUTLINE(CVQFIELDTEXT)
}  // namespace viewtrees

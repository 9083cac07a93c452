// GraphViews.cpp — the trees of the CORVIA, CORVIADELETE and CVRENAME views
// (registration numbers 29 to 38): the whole object graph of a DBD, PCB or PSB,
// what deleting one must reach and what renaming one must revisit. Segment and
// field names belong to the dictionary and are delegated to its alias views;
// referring DBDs are named only by adName, under the alias adName1. The
// fragments come first, then one outline per view in registration order; the
// outlines are handed to the registration at the end.
#include <krmwtarn/platform/views/DictionaryViews.h>
#include <krmwtarn/views/EwswtarnViews.h>
#include <krmwtarn/views/trees/Trees.h>

namespace viewtrees {
namespace {
// clang-format off

constexpr auto segmentName = rows(
    role(0, "segmName"),
      targetView(1, &v_CORVIADSALIAS));

constexpr auto fieldName = rows(
    role(0, "fldName"),
      targetView(1, &v_CORVIADEALIAS));

// A segment by its name and the name of its DBD, which refers to it.
constexpr auto segmentNames = rows(
    use(0, segmentName),
    use(0, owningDbdName("adName1")));

// A field by its name and its own.
constexpr auto namedField = rows(
    target(0, "DSField"),
      use(1, fieldName),
      attr(1, "strFieldName"));

// The segments that use a segment as a source, by their names.
constexpr auto logicalUses = rows(
    role(0, "logicalSegments"),
      source(1, "DSSegmentLogical"),
        use(2, segmentNames),
      attr(1, "strSOURCE"));

// What deleting a DBD, PCB or PSB must reach: the dependent structure down to
// the logical segments, secondary indexes and index DBDs that refer back to it.
constexpr auto deleteFieldNames = rows(
    role(0, "fields"),
      target(1, "DSField"),
        use(2, fieldName));

constexpr auto deleteLogicalReferences = rows(
    role(0, "logicalSegments"),
      source(1, "DSSegmentLogical"),
        use(2, owningDbdName()),
      attr(1, "strSOURCE"));

constexpr auto deletePcb = rows(
    role(0, "typeOfPCB"),
      target(1, "DSPCBdb"),
        role(2, "baseDBD"),
          target(3, "DSDBD"),
            role(4, "segments"),
              target(5, "DSSegmentDEDB"),
                use(6, segmentName),
            role(4, "segments"),
              target(5, "DSSegmentComplex"),
                use(6, segmentName),
                role(6, "indices"),
                  target(7, "DSXDFLD"),
                    role(8, "targetDBDindex"),
                      target(9, "DSDBDindex"),
                        use(10, owningDbdName()),
                    attr(8, "xdfldName"),
                use(6, deleteLogicalReferences),
            role(4, "segments"),
              target(5, "DSSegmentLogical"),
                role(6, "sourceSegments"),
                  target(7, "DSSegment"),
                    use(8, segmentName),
                  attr(7, "strSOURCE"),
            role(4, "segments"),
              target(5, "DSSegment"),
                use(6, deleteLogicalReferences),
            role(4, "dliAccess"),
              target(5, "DSDBDhidam"),
                role(6, "primaryIndex"),
                  target(7, "DSDBDindex"),
                    use(8, owningDbdName()));

// A data item's simple type.
constexpr auto typeDefinition = rows(
    role(0, "dataDef"),
      target(1, "DSSimpleTypeDef"),
        attr(2, "scale"),
        attr(2, "length"),
        attr(2, "dataType"));

// A field's data item with the data element it uses (by the dictionary's
// view), then `details` of the item.
template <std::size_t N>
constexpr auto elementItem(const std::array<Row, N>& details) {
    return rows(
        role(0, "targetDataItem"),
          target(1, "DSDataItem"),
            role(2, "sdd"),
              targetView(3, &v_CORVIADATAELEMENT),
            use(2, details));
}

constexpr auto fullFields = rows(
    role(0, "fields"),
      target(1, "DSField"),
        use(2, fieldName),
        use(2, elementItem(rows(
            role(0, "sddAlias"),
              target(1, "DSDataElementAlias"),
                attr(2, "adName"),
            use(0, typeDefinition),
            attr(0, "adName")))),
        role(2, "sharedDataItem"),
          target(3, "DSDataItem"),
            role(4, "sddAlias"),
              target(5, "DSDataStructureAlias"),
                attr(6, "adName"),
            use(4, typeDefinition),
            attr(4, "adName"),
        attr(2, "strFieldName"));

constexpr auto segmentAttributes = rows(
    attr(0, "strSegmentName"),
    attr(0, "minimumLength"),
    attr(0, "maximumLength"));

// The whole graph of a segment of any kind, as CORVIADBD retrieves it.
constexpr auto segmentGraph = rows(
    use(0, segmentName),
    use(0, fullFields),
    role(0, "exits"),
      target(1, "DSExit"),
        attr(2, "strExit"),
        attr(2, "captureRoutine"),
    role(0, "compRoutine"),
      target(1, "DSCompRoutine"),
        attr(2, "routine"),
    role(0, "mappingStructure"),
      target(1, "DSDataStructure"),
        role(2, "structureDef"),
          target(3, "DSStructureDef"),
            attr(4, "structureType"),
        use(2, annotation()),
        attr(2, "adName"),
    role(0, "physicalParent"),
      target(1, "DSSegment"),
        use(2, segmentName),
      attr(1, "strPARENT"),
      attr(1, "pcPointer"),
    role(0, "sensitiveSegments"),
      source(1, "DSSenSegment"),
        role(2, "sourcePCB"),
          source(3, "DSPCBdb"),
            role(4, "typedPCB"),
              source(5, "DSPCB"),
                attr(6, "adName", "pcbName"),
        attr(2, "strSensegName"));

constexpr auto logicalReferences = rows(
    use(0, logicalUses),
      attr(1, "dataAlso"));

constexpr auto datasetValues = rows(
    attr(0, "datasetLabel"),
    attr(0, "size2"),
    attr(0, "size1"),
    attr(0, "searchAlgorithm"),
    attr(0, "scanCylinders"),
    attr(0, "recordFormat"),
    attr(0, "primaryBlockingFactor"),
    attr(0, "overflowBlockingFactor"),
    attr(0, "outputRecordLength"),
    attr(0, "inputRecordLength"),
    attr(0, "freeSpacePercentage"),
    attr(0, "freeBlockFrequency"));

// What the graph views list of an index DBD's segment.
constexpr auto typedIndexSegment = rows(
    use(0, segmentName),
    role(0, "fields"),
      target(1, "DSField"),
        use(2, fieldName),
        role(2, "targetDataItem"),
          target(3, "DSDataItem"),
            use(4, typeDefinition),
            attr(4, "adName"),
        attr(2, "strFieldName"));

constexpr auto namedIndexSegment = rows(
    use(0, segmentName),
    role(0, "fields"),
      use(1, namedField));

// What a full-function segment adds: dataset, secondary indexes (the index
// DBD is dependent, so it is expanded), logical children and parent.
constexpr auto complexGraph = rows(
    role(0, "dataset"),
      target(1, "DSTARNDataset"),
        role(2, "segments"),
          source(3, "DSSegmentComplex"),
            use(4, segmentName),
        attr(2, "datasetLabel"),
    role(0, "indices"),
      target(1, "DSXDFLD"),
        role(2, "search"),
          use(3, namedField),
        role(2, "subseq"),
          use(3, namedField),
        role(2, "ddata"),
          use(3, namedField),
        role(2, "indexSource"),
          target(3, "DSSegmentComplex"),
            use(4, segmentName),
        use(2, xdfldValues),
        use(2, indexDbd("targetDBDindex", typedIndexSegment, rows(attr(0, "adName")))),
    role(0, "logChildren"),
      target(1, "DSSegmentComplex"),
        use(2, segmentName),
      role(1, "pairedSegment"),
        target(2, "DSSegmentComplex"),
          use(3, segmentName),
      attr(1, "strLPARENT"),
      attr(1, "virtualParent"),
      attr(1, "rules"),
      attr(1, "ltwin"),
      attr(1, "lparent"),
      attr(1, "lcPointer"),
      attr(1, "counter"),
    role(0, "logParent"),
      source(1, "DSSegmentComplex"),
        use(2, segmentName),
      attr(1, "strLPARENT"),
    // Reached as the end of DSHasPair, the logical-child link names both ends.
    role(0, "pairedLogChild"),
      source(1, "DSLChild"),
        source(2, "DSSegmentComplex"),
          use(3, segmentName),
        target(2, "DSSegmentComplex"),
          use(3, segmentName),
        attr(2, "strLPARENT"),
    attr(0, "segmPointer"),
    attr(0, "replaceFlag"),
    attr(0, "insertFlag"),
    attr(0, "deleteFlag"));

constexpr auto logicalSegmentGraph = rows(
    use(0, segmentGraph),
    role(0, "sourceSegments"),
      target(1, "DSSegment"),
        use(2, segmentNames),
      attr(1, "strSOURCE"),
      attr(1, "dataAlso"),
    attr(0, "segmentName"),
    use(0, segmentAttributes));

constexpr auto dedbSegmentGraph = rows(
    use(0, segmentGraph),
    use(0, logicalReferences),
    attr(0, "subsetPointers"),
    attr(0, "directDependent"),
    use(0, segmentAttributes));

constexpr auto complexSegmentGraph = rows(
    use(0, segmentGraph),
    use(0, logicalReferences),
    use(0, complexGraph),
    use(0, segmentAttributes));

constexpr auto plainSegmentGraph = rows(
    use(0, segmentGraph),
    use(0, logicalReferences),
    // The alternate structures are kept as links only: the list names neither end.
    role(0, "alternateStructures"),
    use(0, segmentAttributes));

// The online access values that HDAM and DEDB share.
constexpr auto onlineAccessValues = rows(
    attr(0, "extendedCall"),
    attr(0, "stage"),
    attr(0, "rmName"),
    use(0, accessAttributes));

// Everything of the DBD but its segments: exits, access types, dataset groups,
// based PCBs, dependencies and annotation.
constexpr auto dbdGraph = rows(
    use(0, exits()),
    role(0, "dliAccess"),
      target(1, "DSDBDmsdb"),
        attr(2, "msdbType"),
        attr(2, "msdbField"),
        use(2, accessAttributes),
    role(0, "dliAccess"),
      target(1, "DSDBDindex"),
        role(2, "sharingDBDs"),
          source(3, "DSDBDindex"),
            use(4, owningDbdName("adName1")),
        role(2, "primaryIndexTarget"),
          source(3, "DSDBDhidam"),
            use(4, owningDbdName("adName1")),
        role(2, "secondaryIndexTarget"),
          source(3, "DSXDFLD"),
            role(4, "sourceSEGMcmpx"),
              source(5, "DSSegmentComplex"),
                use(6, segmentNames),
            attr(4, "xdfldName"),
        attr(2, "protect"),
        attr(2, "dosCompatibility"),
        use(2, accessAttributes),
    role(0, "dliAccess"),
      target(1, "DSDBDhidam"),
        role(2, "rootSequenceField"),
          use(3, namedField),
        use(2, indexDbd("primaryIndex", namedIndexSegment, rows(attr(0, "adName")))),
        use(2, accessAttributes),
    role(0, "dliAccess"),
      target(1, "DSDBDhdam"),
        attr(2, "rootMaxBytes"),
        attr(2, "rootAnchorPoints"),
        attr(2, "relativeBlockNumber"),
        use(2, onlineAccessValues),
    role(0, "dliAccess"),
      target(1, "DSDBDdedb"),
        use(2, onlineAccessValues),
    role(0, "dliAccess"),
      target(1, "DSDBDaccess"),
        use(2, accessAttributes),
    role(0, "datasets"),
      target(1, "DSTARNDDname"),
        role(2, "overflowedDBDs"),
          source(3, "DSTARNDataset"),
            attr(4, "datasetLabel"),
        attr(2, "ddsName"),
      use(1, areas),
      role(1, "datasetAttributes"),
        target(2, "DSTARNDataset"),
          role(3, "dd2"),
            target(4, "DSTARNDDname"),
              attr(5, "ddsName"),
          role(3, "segments"),
            source(4, "DSSegmentComplex"),
              use(5, segmentName),
          use(3, datasetValues),
      attr(1, "dsModel"),
      attr(1, "dsDevice"),
    role(0, "basedPCBs"),
      source(1, "DSPCBdb"),
        role(2, "senseg"),
          target(3, "DSSenSegment"),
            role(4, "targetSegment"),
              target(5, "DSSegment"),
                use(6, segmentName),
            attr(4, "strSensegName"),
            attr(4, "procoptSENSEG"),
        role(2, "typedPCB"),
          source(3, "DSPCB"),
            attr(4, "adName", "pcbName"),
        attr(2, "sequentialBuffering"),
        attr(2, "keyLength"),
        attr(2, "procoptPCB"),
    role(0, "basedPCBs"),
      source(1, "DSPCBbased"),
        role(2, "typedPCB"),
          source(3, "DSPCB"),
            attr(4, "adName", "pcbName"),
        attr(2, "procoptPCB"),
    use(0, dependency("DSDBD")),
    role(0, "dependsOn"),
      target(1, "DSDataStructureAlias"),
        use(2, annotation()),
        attr(2, "adName"),
    role(0, "dependsOn"),
      target(1, "DSDataElementAlias"),
        use(2, annotation()),
        attr(2, "adName"),
    use(0, dependency("DSDataElement")),
    role(0, "dependsOn"),
      target(1, "DSDataStructure"),
        role(2, "structureDef"),
          target(3, "DSStructureDef"),
            attr(4, "structureType"),
            attr(4, "length"),
        attr(2, "adName"),
    use(0, annotation()),
    attr(0, "adName", "rootDBDname"),
    attr(0, "versionString"));

// What populating adds to each segment: its physical children with their
// fields, data elements and mapping structures, and further segment values.
constexpr auto populateDetail = rows(
    role(0, "physicalChildren"),
      source(1, "DSSegment"),
        use(2, segmentName),
        role(2, "fields"),
          target(3, "DSField"),
            use(4, fieldName),
            use(4, elementItem(rows(attr(0, "adName")))),
            attr(4, "uniqueSequence"),
            attr(4, "sequenceField"),
            attr(4, "strFieldName"),
        role(2, "mappingStructure"),
          targetView(3, &v_CORVIADATASTRUCTURE),
        attr(2, "strSegmentName"),
        attr(2, "rules"),
        attr(2, "minimumLength"),
        attr(2, "maximumLength"),
        attr(2, "frequency"),
      attr(1, "strPARENT"),
      attr(1, "pcPointer"),
    attr(0, "rules"),
    attr(0, "frequency"),
    attr(0, "exitFlag"));

// A DBD's segments of each class, in the order the graph views list them, each
// with the rows given for its class.
template <std::size_t L, std::size_t D, std::size_t C, std::size_t S>
constexpr auto segmentsByClass(const std::array<Row, L>& logical, const std::array<Row, D>& dedb,
                               const std::array<Row, C>& complex, const std::array<Row, S>& plain) {
    return rows(
        role(0, "segments"),
          target(1, "DSSegmentLogical"),
            use(2, logical),
        role(0, "segments"),
          target(1, "DSSegmentDEDB"),
            use(2, dedb),
        role(0, "segments"),
          target(1, "DSSegmentComplex"),
            use(2, complex),
        role(0, "segments"),
          target(1, "DSSegment"),
            use(2, plain));
}

// What renaming a DBD must revisit: every name that refers to it or to its
// segments and fields, and the link statements that spell them.
constexpr auto renameIndexDbdName = rows(
    role(0, "targetDBDindex"),
      target(1, "DSDBDindex"),
        use(2, owningDbdName("adName1")));

constexpr auto renameSegment = rows(
    use(0, segmentName),
    role(0, "fields"),
      target(1, "DSField"),
        use(2, fieldName),
        role(2, "isSearch"),
          source(3, "DSXDFLD"),
            use(4, renameIndexDbdName),
        role(2, "sharedDataItem"),
          target(3, "DSDataItem"),
            role(4, "sddAlias"),
              targetView(5, &v_CORVIADSALIAS),
    role(0, "mappingStructure"),
      target(1, "DSDataStructure"),
        attr(2, "adName"),
    role(0, "physicalParent"),
      target(1, "DSSegment"),
        use(2, segmentName));

constexpr auto renameNamedField = rows(
    target(0, "DSField"),
      use(1, fieldName));

constexpr auto renameIndexSegment = rows(
    use(0, segmentName),
    role(0, "fields"),
      use(1, renameNamedField));

// What a PCB's view shows of a segment a SENSEG maps to: its dictionary name
// (by the dictionary's view) and its DBD's name, then its own name.
constexpr auto mappedSegment(const char* segmentClass, const char* nameAttribute) {
    return rows(
        role(0, "targetSegment"),
          target(1, segmentClass),
            use(2, segmentNames),
            attr(2, nameAttribute));
}

// A DBD a PCB is based on, with its segments' own names.
constexpr auto baseDbd = rows(
    role(0, "baseDBD"),
      target(1, "DSDBD"),
        role(2, "segments"),
          target(3, "DSSegment"),
            attr(4, "strSegmentName"),
        attr(2, "adName"));

constexpr auto CORVIADBD = rows(
    use(0, segmentsByClass(logicalSegmentGraph, dedbSegmentGraph, complexSegmentGraph, plainSegmentGraph)),
    use(0, dbdGraph));

constexpr auto CORVIAPOPULATEDBD = rows(
    use(0, segmentsByClass(rows(logicalSegmentGraph, populateDetail), rows(dedbSegmentGraph, populateDetail),
                           rows(complexSegmentGraph, populateDetail), rows(plainSegmentGraph, populateDetail))),
    use(0, dbdGraph));

constexpr auto CORVIAPCB = rows(
    role(0, "typeOfPCB"),
      target(1, "DSPCBdb"),
        role(2, "senseg"),
          target(3, "DSSenSegment"),
            use(4, mappedSegment("DSSegmentLogical", "segmentName")),
            use(4, mappedSegment("DSSegmentDEDB", "strSegmentName")),
            use(4, mappedSegment("DSSegmentComplex", "strSegmentName")),
            use(4, mappedSegment("DSSegment", "strSegmentName")),
            role(4, "senflds"),
              target(5, "DSSenField"),
                role(6, "targetFIELD"),
                  target(7, "DSField"),
                    use(8, fieldName),
                    role(8, "sourceSegment"),
                      source(9, "DSSegment"),
                        attr(10, "strSegmentName"),
                    attr(8, "strFieldName"),
                attr(6, "startPosition"),
                attr(6, "replace"),
            role(4, "parentSenseg"),
              target(5, "DSSenSegment"),
                role(6, "targetSegment"),
                  target(7, "DSSegment"),
                    attr(8, "strSegmentName"),
                attr(6, "strSensegName"),
            role(4, "indices"),
              target(5, "DSDBDindex"),
                use(6, owningDbdName()),
            use(4, sensegValues),
        role(2, "procseq"),
          target(3, "DSDBDindex"),
            use(4, owningDbdName()),
        use(2, baseDbd),
        attr(2, "keyLength"),
        attr(2, "procoptPCB"),
    role(0, "typeOfPCB"),
      target(1, "DSPCBtp"),
        role(2, "destination"),
          target(3, "DSOutputDest"),
            attr(4, "strKeyWord"),
            attr(4, "ltermName"),
        attr(2, "sameTerminal"),
        attr(2, "modify"),
        attr(2, "express"),
        attr(2, "alternateResponse"),
    role(0, "typeOfPCB"),
      target(1, "DSPCBbased"),
        use(2, baseDbd),
        attr(2, "procoptPCB"),
    role(0, "usingPSBs"),
      source(1, "DSPSB"),
        use(2, annotation()),
        attr(2, "adName", "psbName"),
    use(0, dependency("DSDBD", "basedOnDBD")),
    use(0, dependency("DSDataElement", "usesDataElement")),
    use(0, dependency("DSDataStructure", "usesDataStructure")),
    use(0, annotation()),
    attr(0, "adName", "pcbName"),
    attr(0, "list"));

// The PSB's PCBs are retrieved by CORVIAPCB.
constexpr auto CORVIAPSB = rows(
    role(0, "listPCBs"),
      targetView(1, &v_CORVIAPCB),
    use(0, dependency("DSDBD", "basedOnDBD")),
    use(0, dependency("DSPCB", "includesPCB")),
    use(0, dependency("DSDataElement", "usesDataElement")),
    use(0, dependency("DSDataStructure", "usesDataStructure")),
    use(0, annotation()),
    attr(0, "adName", "psbName"),
    use(0, psbAttributes));

constexpr auto deleteNames = rows(
    use(0, segmentName),
    use(0, deleteFieldNames));

constexpr auto CORVIADELETEDBD = rows(
    role(0, "segments"),
      target(1, "DSSegmentDEDB"),
        use(2, deleteNames),
    role(0, "segments"),
      target(1, "DSSegmentComplex"),
        use(2, deleteNames),
        role(2, "indices"),
          target(3, "DSXDFLD"),
            use(4, indexDbd("targetDBDindex", deleteNames, rows(attr(0, "adName")))),
        use(2, deleteLogicalReferences),
    role(0, "segments"),
      target(1, "DSSegmentLogical"),
        use(2, deleteNames),
        role(2, "sourceSegments"),
          target(3, "DSSegment"),
            use(4, owningDbdName()),
          attr(3, "strSOURCE"),
    role(0, "segments"),
      target(1, "DSSegment"),
        use(2, deleteNames),
        use(2, deleteLogicalReferences),
    role(0, "basedPCBs"),
      source(1, "DSPCBbased"),
        role(2, "typedPCB"),
          source(3, "DSPCB"),
            attr(4, "adName"),
    role(0, "dliAccess"),
      target(1, "DSDBDhidam"),
        use(2, indexDbd("primaryIndex", deleteNames, rows(attr(0, "adName")))));

constexpr auto CORVIADELETEPCB = deletePcb;

constexpr auto CORVIADELETEPSB = rows(
    role(0, "listPCBs"),
      target(1, "DSPCB"),
        use(2, deletePcb));

constexpr auto CVRENAMEDBD = rows(
    use(0, segmentsByClass(
        rows(
            use(0, renameSegment),
            role(0, "sourceSegments"),
              target(1, "DSSegment"),
                use(2, segmentNames),
              attr(1, "strSOURCE")),
        rows(
            use(0, renameSegment),
            use(0, logicalUses)),
        rows(
            use(0, renameSegment),
            use(0, logicalUses),
            role(0, "indices"),
              target(1, "DSXDFLD"),
                role(2, "search"),
                  use(3, renameNamedField),
                role(2, "subseq"),
                  use(3, renameNamedField),
                role(2, "ddata"),
                  use(3, renameNamedField),
                role(2, "indexSource"),
                  target(3, "DSSegmentComplex"),
                    use(4, segmentNames),
                use(2, indexDbd("targetDBDindex", renameIndexSegment, rows())),
            role(0, "sourcedIndex"),
              source(1, "DSXDFLD"),
                use(2, renameIndexDbdName),
            role(0, "logChildren"),
              target(1, "DSSegmentComplex"),
                use(2, segmentNames),
              role(1, "pairedSegment"),
                target(2, "DSSegmentComplex"),
                  use(3, segmentNames),
              attr(1, "strLPARENT"),
            role(0, "logParent"),
              source(1, "DSSegmentComplex"),
                use(2, segmentNames),
              attr(1, "strLPARENT"),
            // Reached as the end of DSHasPair, the logical-child link names both ends.
            role(0, "pairedLogChild"),
              source(1, "DSLChild"),
                source(2, "DSSegmentComplex"),
                  use(3, segmentNames),
                target(2, "DSSegmentComplex"),
                  use(3, segmentName)),
        rows(
            use(0, renameSegment),
            use(0, logicalUses),
            // The alternate structures are kept as links only: the list names neither end.
            role(0, "alternateStructures")))),
    role(0, "dliAccess"),
      target(1, "DSDBDindex"),
        role(2, "sharingDBDs"),
          source(3, "DSDBDindex"),
            use(4, owningDbdName("adName1")),
        role(2, "sharedDBD"),
          target(3, "DSDBDindex"),
            use(4, owningDbdName("adName1")),
        role(2, "primaryIndexTarget"),
          source(3, "DSDBDhidam"),
            use(4, owningDbdName("adName1")),
        use(2, indexedSegment(owningDbdName("adName1"))),
    role(0, "dliAccess"),
      target(1, "DSDBDhidam"),
        role(2, "rootSequenceField"),
          target(3, "DSField"),
            use(4, fieldName),
            use(4, elementItem(rows())),
        use(2, indexDbd("primaryIndex", renameIndexSegment, rows())),
    use(0, annotation()),
    attr(0, "adName", "rootDBDname"));

constexpr auto CVRENAMEPCB = rows(
    use(0, annotation()),
    attr(0, "adName", "pcbName"));

// The PSB's PCBs are revisited by CVRENAMEPCB.
constexpr auto CVRENAMEPSB = rows(
    role(0, "listPCBs"),
      targetView(1, &v_CVRENAMEPCB),
    use(0, annotation()),
    attr(0, "adName", "psbName"));

// clang-format on
}  // namespace

EWSWTARN_OUTLINE(CORVIADBD)
EWSWTARN_OUTLINE(CORVIAPOPULATEDBD)
EWSWTARN_OUTLINE(CORVIAPCB)
EWSWTARN_OUTLINE(CORVIAPSB)
EWSWTARN_OUTLINE(CORVIADELETEDBD)
EWSWTARN_OUTLINE(CORVIADELETEPCB)
EWSWTARN_OUTLINE(CORVIADELETEPSB)
EWSWTARN_OUTLINE(CVRENAMEDBD)
EWSWTARN_OUTLINE(CVRENAMEPCB)
EWSWTARN_OUTLINE(CVRENAMEPSB)
}  // namespace viewtrees

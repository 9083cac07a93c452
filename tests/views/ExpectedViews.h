// ExpectedViews.h — the views as the catalogue describes them, in registration
// order: root class, size row (lists, elements, depth, delegating elements),
// top level and class set of the views given by their top level, delegations
// per delegated-to view, and the outlines of the views given whole.
#pragma once

#include <map>
#include <string>
#include <vector>

struct ExpectedView {
    const char* name;
    const char* rootClass;
    int lists;
    int elements;
    int depth;
    int delegating;
    std::vector<std::string> topLevel;     // empty for the views given whole
    std::vector<std::string> classes;      // empty for the views given whole
    std::map<std::string, int> delegations;
    const char* outline;                   // null for the views given by their top level
};

// clang-format off
inline const std::vector<ExpectedView> expectedViews = {
    {"CVQDBD", "DSDBD", 55, 73, 9, 0,
     {"segments → DSContainsSegment → DSSegmentLogical", "segments → DSContainsSegment → DSSegmentComplex", "segments → DSContainsSegment → DSSegment", "dliAccess → DSDefinedByAccess → DSDBDindex", "dliAccess → DSDefinedByAccess → DSDBDhidam", "dliAccess → DSDefinedByAccess → DSDBDaccess", "basedPCBs → DSBasedOn", "adName as rootDBDname"},
     {"DSPCB", "DSSpecifiedByType", "DSPCBbased", "DSBasedOn", "DSDBDaccess", "DSDefinedByAccess", "DSDBD", "DSDBDindex", "DSIndex", "DSDBDhidam", "DSContainsSegment", "DSSegmentComplex", "DSHasIndex", "DSXDFLD", "DSIsUseOf", "DSDataElementAlias", "DSHasTARNfldName", "DSField", "DSHasField", "DSDataStructureAlias", "DSHasTARNsegmName", "DSSegment", "DSLChild", "DSSource", "DSSegmentLogical"},
     {},
     nullptr},
    {"CVQGSAMDBD", "DSDBD", 17, 32, 7, 0,
     {"dliAccess → DSDefinedByAccess → DSDBDaccess", "datasets → DSDSColl → DSTARNDDname", "pAnnotationText → ADLinkADAnnotObj2AnnotTxt → ADAnnotationText", "basedPCBs → DSBasedOn", "adName as dbdName", "versionString"},
     {"DSPSB", "DSIncludesPCB", "DSPCB", "DSSpecifiedByType", "DSPCBbased", "DSBasedOn", "ADAnnotationText", "ADLinkADAnnotObj2AnnotTxt", "DSTARNDDname", "DSHasOverflow", "DSTARNDataset", "DSHasDataset", "DSDSColl", "DSDBDaccess", "DSDefinedByAccess", "DSDBD"},
     {},
     nullptr},
    {"CVQMSDBDBD", "DSDBD", 35, 83, 9, 4,
     {"segments → DSContainsSegment → DSSegment", "dliAccess → DSDefinedByAccess → DSDBDmsdb", "pAnnotationText → ADLinkADAnnotObj2AnnotTxt → ADAnnotationText", "basedPCBs → DSBasedOn", "adName as dbdName", "versionString"},
     {"DSPSB", "DSIncludesPCB", "DSPCB", "DSSpecifiedByType", "DSPCBdb", "DSBasedOn", "ADAnnotationText", "ADLinkADAnnotObj2AnnotTxt", "DSDBDmsdb", "DSDefinedByAccess", "DSDataElementAlias", "DSHasTARNfldName", "DSSimpleTypeDef", "DSLinkDataItm2DataDef", "DSLinkDataItm2SDD", "DSDataItem", "DSSharesUseOf", "DSMakesUseOf", "DSField", "DSHasField", "DSDataStructureAlias", "DSHasTARNsegmName", "DSSegment", "DSContainsSegment", "DSDBD"},
     {{"CVQDATAELEMENT", 2}, {"CVQDATASTRUCTURE", 2}},
     nullptr},
    {"CVQHSAMDBD", "DSDBD", 64, 135, 9, 3,
     {"segments → DSContainsSegment → DSSegment", "exits → DSUsesDBDExit → DSExit", "dliAccess → DSDefinedByAccess → DSDBDaccess", "datasets → DSDSColl → DSTARNDDname", "pAnnotationText → ADLinkADAnnotObj2AnnotTxt → ADAnnotationText", "dependsOn → ADLinkKVPartDependsOnKVPart → DSDataStructureAlias", "dependsOn → ADLinkKVPartDependsOnKVPart → DSDataElementAlias", "dependsOn → ADLinkKVPartDependsOnKVPart → DSDataElement", "dependsOn → ADLinkKVPartDependsOnKVPart → DSDataStructure", "basedPCBs → DSBasedOn", "adName as dbdName", "versionString"},
     {"DSPSB", "DSIncludesPCB", "DSPCB", "DSSpecifiedByType", "DSPCBdb", "DSBasedOn", "DSDataStructure", "ADLinkKVPartDependsOnKVPart", "DSDataElement", "DSDataElementAlias", "DSDataStructureAlias", "ADAnnotationText", "ADLinkADAnnotObj2AnnotTxt", "DSTARNDDname", "DSHasOverflow", "DSTARNDataset", "DSHasDataset", "DSDSColl", "DSDBDaccess", "DSDefinedByAccess", "DSExit", "DSUsesDBDExit", "DSHasTARNsegmName", "DSDBD", "DSContainsSegment", "DSSegmentLogical", "DSSource", "DSUsesSEGMExit", "DSHasTARNfldName", "DSDataItem", "DSSharesUseOf", "DSLinkDataItm2SDDAlias", "DSSimpleTypeDef", "DSLinkDataItm2DataDef", "DSLinkDataItm2SDD", "DSMakesUseOf", "DSField", "DSHasField", "DSMappedBy", "DSSegment", "DSParent"},
     {{"CVQDATAELEMENT", 1}, {"CVQDATASTRUCTURE", 2}},
     nullptr},
    {"CVQDEDBDBD", "DSDBD", 64, 141, 9, 3,
     {"segments → DSContainsSegment → DSSegmentDEDB", "exits → DSUsesDBDExit → DSExit", "dliAccess → DSDefinedByAccess → DSDBDdedb", "datasets → DSDSColl → DSTARNDDname", "pAnnotationText → ADLinkADAnnotObj2AnnotTxt → ADAnnotationText", "dependsOn → ADLinkKVPartDependsOnKVPart → DSDataStructureAlias", "dependsOn → ADLinkKVPartDependsOnKVPart → DSDataElementAlias", "dependsOn → ADLinkKVPartDependsOnKVPart → DSDataElement", "dependsOn → ADLinkKVPartDependsOnKVPart → DSDataStructure", "basedPCBs → DSBasedOn", "adName as dbdName", "versionString"},
     {"DSPSB", "DSIncludesPCB", "DSPCB", "DSSpecifiedByType", "DSPCBdb", "DSBasedOn", "DSDataStructure", "ADLinkKVPartDependsOnKVPart", "DSDataElement", "DSDataElementAlias", "DSDataStructureAlias", "ADAnnotationText", "ADLinkADAnnotObj2AnnotTxt", "DSTARNDDname", "DSArea", "DSHasArea", "DSDSColl", "DSDBDdedb", "DSDefinedByAccess", "DSExit", "DSUsesDBDExit", "DSHasTARNsegmName", "DSDBD", "DSContainsSegment", "DSSegmentLogical", "DSSource", "DSCompRoutine", "DSCompressedBy", "DSUsesSEGMExit", "DSHasTARNfldName", "DSDataItem", "DSSharesUseOf", "DSLinkDataItm2SDDAlias", "DSSimpleTypeDef", "DSLinkDataItm2DataDef", "DSLinkDataItm2SDD", "DSMakesUseOf", "DSField", "DSHasField", "DSMappedBy", "DSSegment", "DSParent", "DSSegmentDEDB"},
     {{"CVQDATAELEMENT", 1}, {"CVQDATASTRUCTURE", 2}},
     nullptr},
    {"CVQHDAMDBD", "DSDBD", 17, 48, 7, 0,
     {"exits → DSUsesDBDExit → DSExit", "dliAccess → DSDefinedByAccess → DSDBDhdam", "datasets → DSDSColl → DSTARNDDname", "pAnnotationText → ADLinkADAnnotObj2AnnotTxt → ADAnnotationText", "basedPCBs → DSBasedOn", "adName as dbdName", "versionString"},
     {"DSPSB", "DSIncludesPCB", "DSPCB", "DSSpecifiedByType", "DSPCBdb", "DSBasedOn", "ADAnnotationText", "ADLinkADAnnotObj2AnnotTxt", "DSTARNDDname", "DSTARNDataset", "DSHasDataset", "DSDSColl", "DSDBDhdam", "DSDefinedByAccess", "DSExit", "DSUsesDBDExit", "DSDBD"},
     {},
     nullptr},
    {"CVQHISAMDBD", "DSDBD", 19, 45, 7, 0,
     {"exits → DSUsesDBDExit → DSExit", "dliAccess → DSDefinedByAccess → DSDBDaccess", "datasets → DSDSColl → DSTARNDDname", "pAnnotationText → ADLinkADAnnotObj2AnnotTxt → ADAnnotationText", "basedPCBs → DSBasedOn", "adName as dbdName", "versionString"},
     {"DSPSB", "DSIncludesPCB", "DSPCB", "DSSpecifiedByType", "DSPCBdb", "DSBasedOn", "ADAnnotationText", "ADLinkADAnnotObj2AnnotTxt", "DSTARNDDname", "DSHasOverflow", "DSTARNDataset", "DSHasDataset", "DSDSColl", "DSDBDaccess", "DSDefinedByAccess", "DSExit", "DSUsesDBDExit", "DSDBD"},
     {},
     nullptr},
    {"CVQHIDAMDBD", "DSDBD", 29, 63, 11, 0,
     {"exits → DSUsesDBDExit → DSExit", "dliAccess → DSDefinedByAccess → DSDBDhidam", "datasets → DSDSColl → DSTARNDDname", "pAnnotationText → ADLinkADAnnotObj2AnnotTxt → ADAnnotationText", "basedPCBs → DSBasedOn", "adName as dbdName", "versionString"},
     {"DSPSB", "DSIncludesPCB", "DSPCB", "DSSpecifiedByType", "DSPCBdb", "DSBasedOn", "ADAnnotationText", "ADLinkADAnnotObj2AnnotTxt", "DSTARNDDname", "DSTARNDataset", "DSHasDataset", "DSDSColl", "DSDataStructureAlias", "DSHasTARNsegmName", "DSSegment", "DSContainsSegment", "DSDBD", "DSDefinedByAccess", "DSDBDindex", "DSIndex", "DSDataElementAlias", "DSHasTARNfldName", "DSField", "DSHasRootSequence", "DSDBDhidam", "DSExit", "DSUsesDBDExit"},
     {},
     nullptr},
    {"CVQLOGICALDBD", "DSDBD", 27, 40, 7, 0,
     {"segments → DSContainsSegment → DSSegmentLogical", "dliAccess → DSDefinedByAccess → DSDBDaccess", "pAnnotationText → ADLinkADAnnotObj2AnnotTxt → ADAnnotationText", "basedPCBs → DSBasedOn", "adName as dbdName", "versionString"},
     {"DSPSB", "DSIncludesPCB", "DSPCB", "DSSpecifiedByType", "DSPCBdb", "DSBasedOn", "ADAnnotationText", "ADLinkADAnnotObj2AnnotTxt", "DSDBDaccess", "DSDefinedByAccess", "DSDataStructureAlias", "DSHasTARNsegmName", "DSSegmentLogical", "DSParent", "DSDBD", "DSContainsSegment", "DSSegment", "DSSource"},
     {},
     nullptr},
    {"CVQINDEXDBD", "DSDBD", 99, 168, 11, 4,
     {"segments → DSContainsSegment → DSSegment", "dliAccess → DSDefinedByAccess → DSDBDindex", "datasets → DSDSColl → DSTARNDDname", "pAnnotationText → ADLinkADAnnotObj2AnnotTxt → ADAnnotationText", "dependsOn → ADLinkKVPartDependsOnKVPart → DSDataStructureAlias", "dependsOn → ADLinkKVPartDependsOnKVPart → DSDataElementAlias", "dependsOn → ADLinkKVPartDependsOnKVPart → DSDataElement", "dependsOn → ADLinkKVPartDependsOnKVPart → DSDataStructure", "basedPCBs → DSBasedOn", "adName as dbdName", "versionString"},
     {"DSPSB", "DSIncludesPCB", "DSPCB", "DSSpecifiedByType", "DSPCBdb", "DSBasedOn", "DSDataStructure", "ADLinkKVPartDependsOnKVPart", "DSDataElement", "DSDataElementAlias", "DSDataStructureAlias", "ADAnnotationText", "ADLinkADAnnotObj2AnnotTxt", "DSTARNDDname", "DSHasOverflow", "DSTARNDataset", "DSHasDataset", "DSDSColl", "DSHasTARNfldName", "DSDBD", "DSContainsSegment", "DSHasTARNsegmName", "DSSegmentComplex", "DSHasField", "DSField", "DSHasRootSequence", "DSDBDhidam", "DSIndex", "DSHasDuplicateData", "DSHasSearch", "DSHasSubsequence", "DSHasIndexSource", "DSHasIndex", "DSXDFLD", "DSIsUseOf", "DSDefinedByAccess", "DSDBDindex", "DSSharesWith", "DSSegmentLogical", "DSSource", "DSDataItem", "DSSharesUseOf", "DSLinkDataItm2SDDAlias", "DSSimpleTypeDef", "DSLinkDataItm2DataDef", "DSLinkDataItm2SDD", "DSMakesUseOf", "DSMappedBy", "DSSegment"},
     {{"CVQDATAELEMENT", 1}, {"CVQDATASTRUCTURE", 2}, {"CVQINDEXDBD", 1}},
     nullptr},
    {"CVQHIDAMDBDCOMPLEX", "DSDBD", 81, 137, 13, 0,
     {"segments → DSContainsSegment → DSSegmentComplex", "dliAccess → DSDefinedByAccess → DSDBDhidam", "adName as dbdName", "versionString"},
     {"DSDBDhidam", "DSDefinedByAccess", "DSDataStructureAlias", "DSHasTARNsegmName", "DSDBD", "DSContainsSegment", "DSSegmentLogical", "DSSource", "DSCompRoutine", "DSCompressedBy", "DSTARNDDname", "DSDSColl", "DSHasDataset", "DSTARNDataset", "DSIsPartOf", "DSExit", "DSUsesSEGMExit", "DSDataElementAlias", "DSHasTARNfldName", "DSField", "DSHasDuplicateData", "DSHasSearch", "DSHasSubsequence", "DSSegmentComplex", "DSHasIndexSource", "DSSegment", "DSDBDindex", "DSIsUseOf", "DSXDFLD", "DSHasIndex", "DSHasPair", "DSLChild", "DSDataStructure", "DSMappedBy", "DSParent", "ADAnnotationText", "ADLinkADAnnotObj2AnnotTxt"},
     {},
     nullptr},
    {"CVQHDAMDBDCOMPLEX", "DSDBD", 81, 137, 13, 0,
     {"segments → DSContainsSegment → DSSegmentComplex", "dliAccess → DSDefinedByAccess → DSDBDhdam", "adName as dbdName", "versionString"},
     {"DSDBDhdam", "DSDefinedByAccess", "DSDataStructureAlias", "DSHasTARNsegmName", "DSDBD", "DSContainsSegment", "DSSegmentLogical", "DSSource", "DSCompRoutine", "DSCompressedBy", "DSTARNDDname", "DSDSColl", "DSHasDataset", "DSTARNDataset", "DSIsPartOf", "DSExit", "DSUsesSEGMExit", "DSDataElementAlias", "DSHasTARNfldName", "DSField", "DSHasDuplicateData", "DSHasSearch", "DSHasSubsequence", "DSSegmentComplex", "DSHasIndexSource", "DSSegment", "DSDBDindex", "DSIsUseOf", "DSXDFLD", "DSHasIndex", "DSHasPair", "DSLChild", "DSDataStructure", "DSMappedBy", "DSParent", "ADAnnotationText", "ADLinkADAnnotObj2AnnotTxt"},
     {},
     nullptr},
    {"CVQHISAMDBDCOMPLEX", "DSDBD", 81, 137, 13, 0,
     {"segments → DSContainsSegment → DSSegmentComplex", "dliAccess → DSDefinedByAccess → DSDBDaccess", "adName as dbdName"},
     {"DSDBDaccess", "DSDefinedByAccess", "DSDataStructureAlias", "DSHasTARNsegmName", "DSDBD", "DSContainsSegment", "DSSegmentLogical", "DSSource", "DSCompRoutine", "DSCompressedBy", "DSTARNDDname", "DSDSColl", "DSHasDataset", "DSTARNDataset", "DSIsPartOf", "DSExit", "DSUsesSEGMExit", "DSDataElementAlias", "DSHasTARNfldName", "DSField", "DSHasDuplicateData", "DSHasSearch", "DSHasSubsequence", "DSSegmentComplex", "DSHasIndexSource", "DSSegment", "DSDBDindex", "DSIsUseOf", "DSXDFLD", "DSHasIndex", "DSHasPair", "DSLChild", "DSDataStructure", "DSMappedBy", "DSParent", "ADAnnotationText", "ADLinkADAnnotObj2AnnotTxt"},
     {},
     nullptr},
    {"CVQDBDUSAGE", "DSDBD", 107, 145, 12, 16,
     {"segments → DSContainsSegment → DSSegmentComplex", "segments → DSContainsSegment → DSSegmentLogical", "segments → DSContainsSegment → DSSegmentDEDB", "segments → DSContainsSegment → DSSegment", "dliAccess → DSDefinedByAccess → DSDBDindex", "dliAccess → DSDefinedByAccess → DSDBDhidam", "dliAccess → DSDefinedByAccess → DSDBDmsdb", "dliAccess → DSDefinedByAccess → DSDBDdedb", "dliAccess → DSDefinedByAccess → DSDBDaccess", "basedPCBs → DSBasedOn", "basedPCBs → DSBasedOn", "dependsOn → ADLinkKVPartDependsOnKVPart → view CVQDATAELEMENT", "dependsOn → ADLinkKVPartDependsOnKVPart → view CVQDATASTRUCTURE", "adName as rootDBDname"},
     {"ADLinkKVPartDependsOnKVPart", "DSPSB", "DSIncludesPCB", "DSPCB", "DSSpecifiedByType", "DSPCBbased", "DSBasedOn", "DSPCBdb", "DSDBDaccess", "DSDefinedByAccess", "DSDBDdedb", "DSDBDmsdb", "DSHasTARNsegmName", "DSSegment", "DSContainsSegment", "DSDBD", "DSDBDindex", "DSIndex", "DSDBDhidam", "DSSegmentComplex", "DSHasField", "DSField", "DSHasRootSequence", "DSHasIndex", "DSXDFLD", "DSIsUseOf", "DSSharesWith", "DSSegmentLogical", "DSSource", "DSSegmentDEDB", "DSLChild"},
     {{"CVQDATAELEMENT", 1}, {"CVQDATASTRUCTURE", 1}, {"CVQDSALIAS", 14}},
     nullptr},
    {"CVQPCB", "DSPCB", 27, 59, 9, 0,
     {"typeOfPCB → DSSpecifiedByType → DSPCBdb", "typeOfPCB → DSSpecifiedByType → DSPCBbased", "dependsOn → ADLinkKVPartDependsOnKVPart → DSDBD", "usingPSBs → DSIncludesPCB", "pAnnotationText → ADLinkADAnnotObj2AnnotTxt → ADAnnotationText", "adName as pcbName", "list"},
     {"ADAnnotationText", "ADLinkADAnnotObj2AnnotTxt", "DSPSB", "DSIncludesPCB", "DSDBD", "ADLinkKVPartDependsOnKVPart", "DSBasedOn", "DSPCBbased", "DSSpecifiedByType", "DSDefinedByAccess", "DSDBDindex", "DSSequencedBy", "DSIndexedBy", "DSDataStructureAlias", "DSHasTARNsegmName", "DSSegment", "DSMapsTo", "DSSenSegment", "DSHasSensitive", "DSPCBdb", "DSPCB"},
     {},
     nullptr},
    {"CVQDBDACCESS", "DSDBD", 7, 15, 3, 0,
     {},
     {},
     {},
     R"(- datasets → DSDSColl
  - adTarget → DSTARNDDname
    - ddsName
  - dsModel
  - dsDevice
- dliAccess → DSDefinedByAccess
  - adTarget → DSDBDaccess
    - passwordFlag
    - osAccess
    - dliAccess
- pAnnotationText → ADLinkADAnnotObj2AnnotTxt
  - adTarget → ADAnnotationText
    - label as dbdDescType
    - contents as dbdDescription
- adName as rootDBDname
)"},
    {"CVQPSBGLOSSARY", "DSPSB", 3, 15, 3, 0,
     {},
     {},
     {},
     R"(- pAnnotationText → ADLinkADAnnotObj2AnnotTxt
  - adTarget → ADAnnotationText
    - label as psbDescType
    - contents as psbDescription
- adName as psbName
- writeToOperator
- ssaSize
- lockMaximum
- onlineImageCopy
- maximumQxCalls
- language
- ioErrorOption
- ioaSize
- hpPSBName
- compatibility
)"},
    {"CVQDBDSEGMENTS", "DSDBD", 13, 19, 9, 0,
     {},
     {},
     {},
     R"(- segments → DSContainsSegment
  - adTarget → DSSegment
    - segmName → DSHasTARNsegmName
      - adTarget → DSDataStructureAlias
        - pAnnotationText → ADLinkADAnnotObj2AnnotTxt
          - adTarget → ADAnnotationText
            - label as segDescType
            - contents as segDescription
        - adName as tarnSegmentName
    - fields → DSHasField
      - adTarget → DSField
        - fldName → DSHasTARNfldName
          - adTarget → DSDataElementAlias
            - pAnnotationText → ADLinkADAnnotObj2AnnotTxt
              - adTarget → ADAnnotationText
                - label as fldDescType
                - contents as fldDescription
            - adName as tarnFieldName
- adName as rootDBDname
)"},
    {"CVQDBDSEGMDEDB", "DSDBD", 13, 19, 9, 0,
     {},
     {},
     {},
     R"(- segments → DSContainsSegment
  - adTarget → DSSegmentDEDB
    - segmName → DSHasTARNsegmName
      - adTarget → DSDataStructureAlias
        - pAnnotationText → ADLinkADAnnotObj2AnnotTxt
          - adTarget → ADAnnotationText
            - label as segDescType
            - contents as segDescription
        - adName as tarnSegmentName
    - fields → DSHasField
      - adTarget → DSField
        - fldName → DSHasTARNfldName
          - adTarget → DSDataElementAlias
            - pAnnotationText → ADLinkADAnnotObj2AnnotTxt
              - adTarget → ADAnnotationText
                - label as fldDescType
                - contents as fldDescription
            - adName as tarnFieldName
- adName as rootDBDname
)"},
    {"CVQDBDSEGMCOMPLEX", "DSDBD", 13, 19, 9, 0,
     {},
     {},
     {},
     R"(- segments → DSContainsSegment
  - adTarget → DSSegmentComplex
    - segmName → DSHasTARNsegmName
      - adTarget → DSDataStructureAlias
        - pAnnotationText → ADLinkADAnnotObj2AnnotTxt
          - adTarget → ADAnnotationText
            - label as segDescType
            - contents as segDescription
        - adName as tarnSegmentName
    - fields → DSHasField
      - adTarget → DSField
        - fldName → DSHasTARNfldName
          - adTarget → DSDataElementAlias
            - pAnnotationText → ADLinkADAnnotObj2AnnotTxt
              - adTarget → ADAnnotationText
                - label as fldDescType
                - contents as fldDescription
            - adName as tarnFieldName
- adName as rootDBDname
)"},
    {"CVQDBDSEGMLOGICAL", "DSDBD", 7, 10, 7, 0,
     {},
     {},
     {},
     R"(- segments → DSContainsSegment
  - adTarget → DSSegmentLogical
    - segmName → DSHasTARNsegmName
      - adTarget → DSDataStructureAlias
        - pAnnotationText → ADLinkADAnnotObj2AnnotTxt
          - adTarget → ADAnnotationText
            - label as segDescType
            - contents as segDescription
        - adName as tarnSegmentName
- adName as rootDBDname
)"},
    {"CVQDBDDEDBACCESS", "DSDBD", 7, 16, 3, 0,
     {},
     {},
     {},
     R"(- datasets → DSDSColl
  - adTarget → DSTARNDDname
    - ddsName
  - dsModel
  - dsDevice
- dliAccess → DSDefinedByAccess
  - adTarget → DSDBDdedb
    - extendedCall
    - stage
    - rmName
    - dliAccess
- pAnnotationText → ADLinkADAnnotObj2AnnotTxt
  - adTarget → ADAnnotationText
    - label as dbdDescType
    - contents as dbdDescription
- adName as rootDBDname
)"},
    {"CVQDBDMSDBACCESS", "DSDBD", 5, 10, 3, 0,
     {},
     {},
     {},
     R"(- dliAccess → DSDefinedByAccess
  - adTarget → DSDBDmsdb
    - msdbType
    - msdbField
    - dliAccess
- pAnnotationText → ADLinkADAnnotObj2AnnotTxt
  - adTarget → ADAnnotationText
    - label as dbdDescType
    - contents as dbdDescription
- adName as rootDBDname
)"},
    {"CVQDBDHIDAMACCESS", "DSDBD", 7, 15, 3, 0,
     {},
     {},
     {},
     R"(- datasets → DSDSColl
  - adTarget → DSTARNDDname
    - ddsName
  - dsModel
  - dsDevice
- dliAccess → DSDefinedByAccess
  - adTarget → DSDBDhidam
    - passwordFlag
    - osAccess
    - dliAccess
- pAnnotationText → ADLinkADAnnotObj2AnnotTxt
  - adTarget → ADAnnotationText
    - label as dbdDescType
    - contents as dbdDescription
- adName as rootDBDname
)"},
    {"CVQDBDHDAMACCESS", "DSDBD", 7, 19, 3, 0,
     {},
     {},
     {},
     R"(- datasets → DSDSColl
  - adTarget → DSTARNDDname
    - ddsName
  - dsModel
  - dsDevice
- dliAccess → DSDefinedByAccess
  - adTarget → DSDBDhdam
    - rmName
    - rootMaxBytes
    - rootAnchorPoints
    - relativeBlockNumber
    - passwordFlag
    - osAccess
    - dliAccess
- pAnnotationText → ADLinkADAnnotObj2AnnotTxt
  - adTarget → ADAnnotationText
    - label as dbdDescType
    - contents as dbdDescription
- adName as rootDBDname
)"},
    {"CVQDBDINDEXACCESS", "DSDBD", 7, 16, 3, 0,
     {},
     {},
     {},
     R"(- datasets → DSDSColl
  - adTarget → DSTARNDDname
    - ddsName
  - dsModel
  - dsDevice
- dliAccess → DSDefinedByAccess
  - adTarget → DSDBDindex
    - protect
    - dosCompatibility
    - passwordFlag
    - dliAccess
- pAnnotationText → ADLinkADAnnotObj2AnnotTxt
  - adTarget → ADAnnotationText
    - label as dbdDescType
    - contents as dbdDescription
- adName as rootDBDname
)"},
    {"CVQSEGMENTTEXT", "DSDataStructureAlias", 3, 5, 3, 0,
     {},
     {},
     {},
     R"(- pAnnotationText → ADLinkADAnnotObj2AnnotTxt
  - adTarget → ADAnnotationText
    - label as segDescType
    - contents as segDescription
- adName as tarnSegmentName
)"},
    {"CVQFIELDTEXT", "DSDataElementAlias", 3, 5, 3, 0,
     {},
     {},
     {},
     R"(- pAnnotationText → ADLinkADAnnotObj2AnnotTxt
  - adTarget → ADAnnotationText
    - label as fldDescType
    - contents as fldDescription
- adName as tarnFieldName
)"},
    {"CORVIADBD", "DSDBD", 308, 581, 17, 38,
     {"segments → DSContainsSegment → DSSegmentLogical", "segments → DSContainsSegment → DSSegmentDEDB", "segments → DSContainsSegment → DSSegmentComplex", "segments → DSContainsSegment → DSSegment", "exits → DSUsesDBDExit → DSExit", "dliAccess → DSDefinedByAccess → DSDBDmsdb", "dliAccess → DSDefinedByAccess → DSDBDindex", "dliAccess → DSDefinedByAccess → DSDBDhidam", "dliAccess → DSDefinedByAccess → DSDBDhdam", "dliAccess → DSDefinedByAccess → DSDBDdedb", "dliAccess → DSDefinedByAccess → DSDBDaccess", "datasets → DSDSColl → DSTARNDDname", "basedPCBs → DSBasedOn", "basedPCBs → DSBasedOn", "dependsOn → ADLinkKVPartDependsOnKVPart → DSDBD", "dependsOn → ADLinkKVPartDependsOnKVPart → DSDataStructureAlias", "dependsOn → ADLinkKVPartDependsOnKVPart → DSDataElementAlias", "dependsOn → ADLinkKVPartDependsOnKVPart → DSDataElement", "dependsOn → ADLinkKVPartDependsOnKVPart → DSDataStructure", "pAnnotationText → ADLinkADAnnotObj2AnnotTxt → ADAnnotationText", "adName as rootDBDname", "versionString"},
     {"ADAnnotationText", "ADLinkADAnnotObj2AnnotTxt", "DSDataStructure", "ADLinkKVPartDependsOnKVPart", "DSDataElement", "DSDataElementAlias", "DSDataStructureAlias", "DSDBD", "DSPCB", "DSSpecifiedByType", "DSPCBbased", "DSBasedOn", "DSContainsSegment", "DSSegment", "DSMapsTo", "DSSenSegment", "DSHasSensitive", "DSPCBdb", "DSTARNDDname", "DSArea", "DSHasArea", "DSSegmentComplex", "DSIsPartOf", "DSHasOverflow", "DSTARNDataset", "DSHasDataset", "DSDSColl", "DSDBDaccess", "DSDefinedByAccess", "DSDBDdedb", "DSDBDhdam", "DSHasTARNsegmName", "DSDBDindex", "DSIndex", "DSHasTARNfldName", "DSField", "DSHasRootSequence", "DSDBDhidam", "DSHasField", "DSHasDuplicateData", "DSHasSearch", "DSHasSubsequence", "DSHasIndexSource", "DSHasIndex", "DSXDFLD", "DSIsUseOf", "DSSharesWith", "DSLinkDataItm2SDDAlias", "DSSimpleTypeDef", "DSLinkDataItm2DataDef", "DSLinkDataStrc2StrctDef", "DSStructureDef", "DSLinkDataItm2SDD", "DSDataItem", "DSMakesUseOf", "DSSharesUseOf", "DSMappedBy", "DSDBDmsdb", "DSExit", "DSUsesDBDExit", "DSSegmentLogical", "DSSource", "DSHasAlternate", "DSParent", "DSCompRoutine", "DSCompressedBy", "DSUsesSEGMExit", "DSHasPair", "DSLChild", "DSSegmentDEDB"},
     {{"CORVIADATAELEMENT", 4}, {"CORVIADEALIAS", 10}, {"CORVIADSALIAS", 24}},
     nullptr},
    {"CORVIAPOPULATEDBD", "DSDBD", 348, 693, 17, 54,
     {"segments → DSContainsSegment → DSSegmentLogical", "segments → DSContainsSegment → DSSegmentDEDB", "segments → DSContainsSegment → DSSegmentComplex", "segments → DSContainsSegment → DSSegment", "exits → DSUsesDBDExit → DSExit", "dliAccess → DSDefinedByAccess → DSDBDmsdb", "dliAccess → DSDefinedByAccess → DSDBDindex", "dliAccess → DSDefinedByAccess → DSDBDhidam", "dliAccess → DSDefinedByAccess → DSDBDhdam", "dliAccess → DSDefinedByAccess → DSDBDdedb", "dliAccess → DSDefinedByAccess → DSDBDaccess", "datasets → DSDSColl → DSTARNDDname", "basedPCBs → DSBasedOn", "basedPCBs → DSBasedOn", "dependsOn → ADLinkKVPartDependsOnKVPart → DSDBD", "dependsOn → ADLinkKVPartDependsOnKVPart → DSDataStructureAlias", "dependsOn → ADLinkKVPartDependsOnKVPart → DSDataElementAlias", "dependsOn → ADLinkKVPartDependsOnKVPart → DSDataElement", "dependsOn → ADLinkKVPartDependsOnKVPart → DSDataStructure", "pAnnotationText → ADLinkADAnnotObj2AnnotTxt → ADAnnotationText", "adName as rootDBDname", "versionString"},
     {"ADAnnotationText", "ADLinkADAnnotObj2AnnotTxt", "DSDataStructure", "ADLinkKVPartDependsOnKVPart", "DSDataElement", "DSDataElementAlias", "DSDataStructureAlias", "DSDBD", "DSPCB", "DSSpecifiedByType", "DSPCBbased", "DSBasedOn", "DSContainsSegment", "DSSegment", "DSMapsTo", "DSSenSegment", "DSHasSensitive", "DSPCBdb", "DSTARNDDname", "DSArea", "DSHasArea", "DSSegmentComplex", "DSIsPartOf", "DSHasOverflow", "DSTARNDataset", "DSHasDataset", "DSDSColl", "DSDBDaccess", "DSDefinedByAccess", "DSDBDdedb", "DSDBDhdam", "DSHasTARNsegmName", "DSDBDindex", "DSIndex", "DSHasTARNfldName", "DSField", "DSHasRootSequence", "DSDBDhidam", "DSHasField", "DSHasDuplicateData", "DSHasSearch", "DSHasSubsequence", "DSHasIndexSource", "DSHasIndex", "DSXDFLD", "DSIsUseOf", "DSSharesWith", "DSLinkDataItm2SDDAlias", "DSSimpleTypeDef", "DSLinkDataItm2DataDef", "DSLinkDataStrc2StrctDef", "DSStructureDef", "DSLinkDataItm2SDD", "DSDataItem", "DSMakesUseOf", "DSSharesUseOf", "DSMappedBy", "DSDBDmsdb", "DSExit", "DSUsesDBDExit", "DSSegmentLogical", "DSSource", "DSHasAlternate", "DSParent", "DSCompRoutine", "DSCompressedBy", "DSUsesSEGMExit", "DSHasPair", "DSLChild", "DSSegmentDEDB"},
     {{"CORVIADATAELEMENT", 8}, {"CORVIADATASTRUCTURE", 4}, {"CORVIADEALIAS", 14}, {"CORVIADSALIAS", 28}},
     nullptr},
    {"CORVIAPCB", "DSPCB", 70, 123, 11, 5,
     {"typeOfPCB → DSSpecifiedByType → DSPCBdb", "typeOfPCB → DSSpecifiedByType → DSPCBtp", "typeOfPCB → DSSpecifiedByType → DSPCBbased", "usingPSBs → DSIncludesPCB", "dependsOn → ADLinkKVPartDependsOnKVPart → DSDBD", "dependsOn → ADLinkKVPartDependsOnKVPart → DSDataElement", "dependsOn → ADLinkKVPartDependsOnKVPart → DSDataStructure", "pAnnotationText → ADLinkADAnnotObj2AnnotTxt → ADAnnotationText", "adName as pcbName", "list"},
     {"ADAnnotationText", "ADLinkADAnnotObj2AnnotTxt", "DSDataStructure", "ADLinkKVPartDependsOnKVPart", "DSDataElement", "DSDBD", "DSPSB", "DSIncludesPCB", "DSBasedOn", "DSPCBbased", "DSSpecifiedByType", "DSOutputDest", "DSRefersTo", "DSPCBtp", "DSDefinedByAccess", "DSDBDindex", "DSSequencedBy", "DSSenSegment", "DSHasParentSenseg", "DSIndexedBy", "DSSegment", "DSHasField", "DSSegmentDEDB", "DSSegmentComplex", "DSHasTARNfldName", "DSField", "DSUsedAsSENFLD", "DSSenField", "DSUsesSENFLD", "DSContainsSegment", "DSHasTARNsegmName", "DSMapsTo", "DSSegmentLogical", "DSHasSensitive", "DSPCBdb", "DSPCB"},
     {{"CORVIADEALIAS", 1}, {"CORVIADSALIAS", 4}},
     nullptr},
    {"CORVIAPSB", "DSPSB", 12, 29, 3, 1,
     {},
     {},
     {{"CORVIAPCB", 1}},
     R"(- listPCBs → DSIncludesPCB
  - adTarget, flag 1, expanded by view CORVIAPCB
- dependsOn → ADLinkKVPartDependsOnKVPart
  - adTarget → DSDBD
    - adName as basedOnDBD
- dependsOn → ADLinkKVPartDependsOnKVPart
  - adTarget → DSPCB
    - adName as includesPCB
- dependsOn → ADLinkKVPartDependsOnKVPart
  - adTarget → DSDataElement
    - adName as usesDataElement
- dependsOn → ADLinkKVPartDependsOnKVPart
  - adTarget → DSDataStructure
    - adName as usesDataStructure
- pAnnotationText → ADLinkADAnnotObj2AnnotTxt
  - adTarget → ADAnnotationText
    - label
    - contents
- adName as psbName
- writeToOperator
- ssaSize
- lockMaximum
- onlineImageCopy
- maximumQxCalls
- language
- ioErrorOption
- ioaSize
- hpPSBName
- compatibility
)"},
    {"CORVIADELETEDBD", "DSDBD", 65, 85, 14, 12,
     {"segments → DSContainsSegment → DSSegmentDEDB", "segments → DSContainsSegment → DSSegmentComplex", "segments → DSContainsSegment → DSSegmentLogical", "segments → DSContainsSegment → DSSegment", "basedPCBs → DSBasedOn", "dliAccess → DSDefinedByAccess → DSDBDhidam"},
     {"DSHasTARNfldName", "DSField", "DSHasField", "DSHasTARNsegmName", "DSSegment", "DSContainsSegment", "DSDBD", "DSDefinedByAccess", "DSDBDindex", "DSIndex", "DSDBDhidam", "DSPCB", "DSSpecifiedByType", "DSPCBbased", "DSBasedOn", "DSSegmentLogical", "DSSource", "DSIsUseOf", "DSXDFLD", "DSHasIndex", "DSSegmentComplex", "DSSegmentDEDB"},
     {{"CORVIADEALIAS", 6}, {"CORVIADSALIAS", 6}},
     nullptr},
    {"CORVIADELETEPCB", "DSPCB", 38, 48, 13, 3,
     {"typeOfPCB → DSSpecifiedByType → DSPCBdb"},
     {"DSDBD", "DSDefinedByAccess", "DSDBDindex", "DSIndex", "DSDBDhidam", "DSHasTARNsegmName", "DSContainsSegment", "DSSegmentLogical", "DSSource", "DSSegment", "DSIsUseOf", "DSXDFLD", "DSHasIndex", "DSSegmentComplex", "DSSegmentDEDB", "DSBasedOn", "DSPCBdb", "DSSpecifiedByType", "DSPCB"},
     {{"CORVIADSALIAS", 3}},
     nullptr},
    {"CORVIADELETEPSB", "DSPSB", 40, 50, 15, 3,
     {"listPCBs → DSIncludesPCB → DSPCB"},
     {"DSDBD", "DSDefinedByAccess", "DSDBDindex", "DSIndex", "DSDBDhidam", "DSHasTARNsegmName", "DSContainsSegment", "DSSegmentLogical", "DSSource", "DSSegment", "DSIsUseOf", "DSXDFLD", "DSHasIndex", "DSSegmentComplex", "DSSegmentDEDB", "DSBasedOn", "DSPCBdb", "DSSpecifiedByType", "DSPCB", "DSIncludesPCB", "DSPSB"},
     {{"CORVIADSALIAS", 3}},
     nullptr},
    {"CVRENAMEDBD", "DSDBD", 197, 262, 14, 35,
     {"segments → DSContainsSegment → DSSegmentLogical", "segments → DSContainsSegment → DSSegmentDEDB", "segments → DSContainsSegment → DSSegmentComplex", "segments → DSContainsSegment → DSSegment", "dliAccess → DSDefinedByAccess → DSDBDindex", "dliAccess → DSDefinedByAccess → DSDBDhidam", "pAnnotationText → ADLinkADAnnotObj2AnnotTxt → ADAnnotationText", "adName as rootDBDname"},
     {"ADAnnotationText", "ADLinkADAnnotObj2AnnotTxt", "DSHasTARNsegmName", "DSSegment", "DSContainsSegment", "DSDBD", "DSDefinedByAccess", "DSDBDindex", "DSIndex", "DSHasTARNfldName", "DSField", "DSHasRootSequence", "DSDBDhidam", "DSSegmentComplex", "DSHasField", "DSHasDuplicateData", "DSHasSearch", "DSHasSubsequence", "DSHasIndexSource", "DSHasIndex", "DSXDFLD", "DSIsUseOf", "DSSharesWith", "DSLinkDataItm2SDDAlias", "DSDataItem", "DSMakesUseOf", "DSDataStructure", "DSMappedBy", "DSSegmentLogical", "DSSource", "DSHasPair", "DSLChild", "DSParent", "DSHasAlternate", "DSSharesUseOf", "DSLinkDataItm2SDD", "DSSegmentDEDB"},
     {{"CORVIADATAELEMENT", 1}, {"CORVIADEALIAS", 10}, {"CORVIADSALIAS", 24}},
     nullptr},
    {"CVRENAMEPCB", "DSPCB", 3, 5, 3, 0,
     {},
     {},
     {},
     R"(- pAnnotationText → ADLinkADAnnotObj2AnnotTxt
  - adTarget → ADAnnotationText
    - label
    - contents
- adName as pcbName
)"},
    {"CVRENAMEPSB", "DSPSB", 4, 7, 3, 1,
     {},
     {},
     {{"CVRENAMEPCB", 1}},
     R"(- listPCBs → DSIncludesPCB
  - adTarget, flag 1, expanded by view CVRENAMEPCB
- pAnnotationText → ADLinkADAnnotObj2AnnotTxt
  - adTarget → ADAnnotationText
    - label
    - contents
- adName as psbName
)"},
};
// clang-format on

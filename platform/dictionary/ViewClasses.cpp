// ViewClasses.cpp — the class rows of the classes that only the views name, in
// the attribute-table form of every class (name, inverse, type, width, extra,
// getter, setter, reserved, flags). These classes have no accessors here, so
// their rows carry no getters or setters.
#include "platform/dictionary/ViewClasses.h"

#include <cstdint>

namespace {
// The per-row word that the repository client reserves for itself.
std::int32_t rowWords[30];

constexpr ADAttributeEntry attribute(const char* name, const char* type, std::int32_t width, int word) {
    return {name, nullptr, type, width, &rowWords[word], ADGetter{}, ADSetter{}, 0, 0x4};
}
constexpr ADAttributeEntry role(const char* name, const char* inverse, const char* other, const char* link,
                                std::uint32_t flags) {
    return {name, inverse, other, 4, link, ADGetter{}, ADSetter{}, 0, flags};
}
constexpr ADAttributeEntry end(const char* end, const char* role, const char* endClass, int word,
                               std::uint32_t flags) {
    return {end, role, endClass, 4, &rowWords[word], ADGetter{}, ADSetter{}, 0, flags};
}

// An annotation text belongs to one annotated part; a part has any number.
ADAttributeEntry annotationText[] = {
    role("annotatedObject", "pAnnotationText", "KVPart", "ADLinkADAnnotObj2AnnotTxt", 0x4007),
    attribute("contents", "string", 4, 0),
    attribute("label", "string", 4, 1),
    {},
};
ADAttributeEntry annotationLink[] = {
    end("source", "pAnnotationText", "KVPart", 2, 0x2a01),
    end("target", "annotatedObject", "ADAnnotationText", 3, 0x4005),
    {},
};
ADAttributeEntry dependencyLink[] = {
    end("source", "dependsOn", "KVPart", 4, 0x8801),
    end("target", "dependents", "KVPart", 5, 0x8005),
    {},
};
ADAttributeEntry dataElement[] = {
    attribute("dataType", "string", 4, 6),
    attribute("length", "long", 4, 7),
    attribute("scale", "short", 2, 8),
    {},
};
ADAttributeEntry simpleTypeDef[] = {
    role("dataItems", "dataDef", "DSDataItem", "DSLinkDataItm2DataDef", 0x2007),
    attribute("dataType", "string", 4, 9),
    attribute("defaultValue", "string", 4, 10),
    attribute("length", "long", 4, 11),
    attribute("maxValue", "string", 4, 12),
    attribute("minValue", "string", 4, 13),
    attribute("picture", "string", 4, 14),
    attribute("scale", "short", 2, 15),
    attribute("signed", "boolean", 4, 16),
    attribute("usage", "string", 4, 17),
    {},
};
ADAttributeEntry structureDef[] = {
    role("dataStructures", "structureDef", "DSDataStructure", "DSLinkDataStrc2StrctDef", 0x2007),
    attribute("length", "long", 4, 18),
    attribute("structureType", "string", 4, 19),
    {},
};
// A data item's type definition, its shared definition (a data element or a
// data structure) and that definition's alias; a structure's definition.
ADAttributeEntry itemToDataDef[] = {
    end("source", "dataDef", "DSDataItem", 20, 0x4801),
    end("target", "dataItems", "DSSimpleTypeDef", 21, 0x2005),
    {},
};
ADAttributeEntry itemToSdd[] = {
    end("source", "sdd", "DSDataItem", 22, 0x4801),
    end("target", "definedItems", "KVPart", 23, 0x2005),
    {},
};
ADAttributeEntry itemToSddAlias[] = {
    end("source", "sddAlias", "DSDataItem", 24, 0x4801),
    end("target", "aliasedItems", "KVPart", 25, 0x2005),
    {},
};
ADAttributeEntry structureToDef[] = {
    end("source", "structureDef", "DSDataStructure", 26, 0x4801),
    end("target", "dataStructures", "DSStructureDef", 27, 0x2005),
    {},
};

_classStruct viewClasses[] = {
    {"ADAnnotationText", "ADObject", annotationText},
    {"DSDataElement", "KVPart", dataElement},
    {"DSSimpleTypeDef", "KVPart", simpleTypeDef},
    {"DSStructureDef", "KVPart", structureDef},
    {"ADLinkADAnnotObj2AnnotTxt", "ADLink", annotationLink},
    {"ADLinkKVPartDependsOnKVPart", "ADLink", dependencyLink},
    {"DSLinkDataItm2DataDef", "ADLink", itemToDataDef},
    {"DSLinkDataItm2SDD", "ADLink", itemToSdd},
    {"DSLinkDataItm2SDDAlias", "ADLink", itemToSddAlias},
    {"DSLinkDataStrc2StrctDef", "ADLink", structureToDef},
    {nullptr, nullptr, nullptr},
};
}  // namespace

DSRegistration& DSDictionary_viewClasses() {
    static DSRegistration record(nullptr, viewClasses, "krmwsdd-views");
    return record;
}

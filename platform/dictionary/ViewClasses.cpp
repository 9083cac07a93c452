// ViewClasses.cpp — the class rows of the classes that only the views name, in
// the attribute-table form of every class (name, inverse, type, width, extra,
// getter, setter, reserved, flags), built by the shared row builders; the
// links' end rows and roles come from DictionaryLinks.def. These classes have
// no accessors here, so their rows carry no getters or setters.
#include <krmwtarn/platform/dictionary/ViewClasses.h>

#include <krmwtarn/platform/dictionary/DictionaryLinks.h>
#include <krmwtarn/platform/repository/ADReflection.h>

#include <cstdint>

namespace {
// The per-row word that the repository client reserves for itself.
std::int32_t rowWords[30];

// An attribute of value type T: its type name and width as the value types say.
template <class T>
constexpr ADAttributeEntry attribute(const char* name, int word) {
    return adAttributeRow(name, T::name, T::width, &rowWords[word], ADGetter{}, ADSetter{}, adRowAttribute);
}
// The role that a dictionary link joins at class `holder`; a role the
// catalogue does not put there does not compile.
consteval ADAttributeEntry role(const char* linkName, const char* name, const char* holder) {
    int end = adDictionaryRoleEnd(linkName, name, holder);
    if (end < 0) throw "DictionaryLinks.def puts no such role of that link on that class";
    return adRoleRow(adDictionaryLink(linkName), end, ADGetter{});
}
// The two end rows of a dictionary link, with their reserved words.
#define KR_END_ROWS(LINK, WORD)                                                          \
    adEndRow(adDictionaryLink(LINK), adSource, &rowWords[WORD], ADGetter{}, ADSetter{}), \
        adEndRow(adDictionaryLink(LINK), adTarget, &rowWords[(WORD) + 1], ADGetter{}, ADSetter{})

// An annotation text belongs to one annotated part; a part has any number.
constinit ADAttributeEntry annotationText[] = {
    role("ADLinkADAnnotObj2AnnotTxt", "annotatedObject", "ADAnnotationText"),
    attribute<adv::String>("contents", 0),
    attribute<adv::String>("label", 1),
    {},
};
constinit ADAttributeEntry annotationLink[] = {KR_END_ROWS("ADLinkADAnnotObj2AnnotTxt", 2), {}};
constinit ADAttributeEntry dependencyLink[] = {KR_END_ROWS("ADLinkKVPartDependsOnKVPart", 4), {}};
constinit ADAttributeEntry dataElement[] = {
    attribute<adv::String>("dataType", 6),
    attribute<adv::Long>("length", 7),
    attribute<adv::Short>("scale", 8),
    {},
};
constinit ADAttributeEntry structureDef[] = {
    role("DSLinkDataStrc2StrctDef", "dataStructures", "DSStructureDef"),
    attribute<adv::Long>("length", 18),
    attribute<adv::String>("structureType", 19),
    {},
};
// A data item's shared definition (a data element or a data structure) and
// that definition's alias; a structure's definition. (A data item's type
// definition and its link are made objects: DSDictionary.h and the model.)
constinit ADAttributeEntry itemToSdd[] = {KR_END_ROWS("DSLinkDataItm2SDD", 22), {}};
constinit ADAttributeEntry itemToSddAlias[] = {KR_END_ROWS("DSLinkDataItm2SDDAlias", 24), {}};
constinit ADAttributeEntry structureToDef[] = {KR_END_ROWS("DSLinkDataStrc2StrctDef", 26), {}};
#undef KR_END_ROWS

_classStruct viewClasses[] = {
    {"ADAnnotationText", "ADObject", annotationText},
    {"DSDataElement", "KVPart", dataElement},
    {"DSStructureDef", "KVPart", structureDef},
    {"ADLinkADAnnotObj2AnnotTxt", "ADLink", annotationLink},
    {"ADLinkKVPartDependsOnKVPart", "ADLink", dependencyLink},
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

// DSDictionary.h — the data-dictionary classes at the far end of the model's
// links: data items, data structures and their aliases. Each keeps the inverse
// role collections that the model's links join and leave, and its name in
// adName. They are parts (_KVPart), so they carry annotations and dependencies.
#pragma once

#include "platform/repository/ADIdentity.h"
#include "platform/techobj/DSTechnologyObject.h"

// One dictionary class: handle C, implementation _C below BASE, with the given
// role collections (declared by the DICT_ROLES list).
#define KR_DICTIONARY_CLASS(C, BASE, BASEHANDLE, ROLES)                                        \
    class _##C;                                                                                \
    class C : public BASEHANDLE {                                                              \
    public:                                                                                    \
        C() noexcept = default;                                                                \
        C(const char* context, const char* objID, int instantiate);                            \
        explicit C(_##C* impl) noexcept;                                                       \
        _##C* operator->() const noexcept;                                                     \
    };                                                                                         \
    class _##C : public BASE {                                                                 \
    public:                                                                                    \
        _##C(const char* context, const char* objID, int instantiate = 1);                     \
        ~_##C() override;                                                                      \
        const char* whoAmI() override;                                                         \
        ADObject* createNewHandle() override;                                                  \
        int isKindOf(const char* className) override;                                          \
        ADAttributeEntry* attributeTable() override;                                           \
        ADAttributeEntry* nextAttributeTable(ADAttributeEntry* previous) override;             \
        ROLES(KR_DICTIONARY_ACCESSOR)                                                          \
        static ADAttributeEntry table[];                                                       \
                                                                                               \
    private:                                                                                   \
        ROLES(KR_DICTIONARY_MEMBER)                                                            \
    };                                                                                         \
    inline _##C* C::operator->() const noexcept { return static_cast<_##C*>(impl_); }

#define KR_DICTIONARY_ACCESSOR(role, other, link, inverse, flags) \
    DSModelCollection* _get_##role() { return &role; }
#define KR_DICTIONARY_MEMBER(role, other, link, inverse, flags) DSModelCollection role;

#define KR_DSDATAITEM_ROLES(X)                                          \
    X(fieldsForTARN, DSField, DSMakesUseOf, targetDataItem, 0x2007)       \
    X(fieldsSharedByTARN, DSField, DSSharesUseOf, sharedDataItem, 0x2007) \
    X(dataDef, DSSimpleTypeDef, DSLinkDataItm2DataDef, dataItems, 0x4803) \
    X(sdd, KVPart, DSLinkDataItm2SDD, definedItems, 0x4803)               \
    X(sddAlias, KVPart, DSLinkDataItm2SDDAlias, aliasedItems, 0x4803)
#define KR_DSDATASTRUCTURE_ROLES(X)                                                 \
    X(tarnAlternateSegments, DSSegment, DSHasAlternate, alternateStructures, 0x8007) \
    X(tarnMappedSegments, DSSegment, DSMappedBy, mappingStructure, 0x2007)          \
    X(structureDef, DSStructureDef, DSLinkDataStrc2StrctDef, dataStructures, 0x4803)
#define KR_DSDATASTRUCTUREALIAS_ROLES(X) X(segmNames, DSSegment, DSHasTARNsegmName, segmName, 0x2007)
#define KR_DSSDDALIAS_ROLES(X) X(fieldNames, DSField, DSHasTARNfldName, fldName, 0x2007)

KR_DICTIONARY_CLASS(DSDataItem, _KVPart, ADObject, KR_DSDATAITEM_ROLES)
KR_DICTIONARY_CLASS(DSDataStructure, _KVPart, ADObject, KR_DSDATASTRUCTURE_ROLES)
KR_DICTIONARY_CLASS(DSDataStructureAlias, _KVPart, ADObject, KR_DSDATASTRUCTUREALIAS_ROLES)
KR_DICTIONARY_CLASS(DSSDDAlias, _KVPart, ADObject, KR_DSSDDALIAS_ROLES)

// A data element's alias: a kind of SDD alias with no roles of its own (a field
// names it through DSHasTARNfldName, whose target is any SDD alias).
class _DSDataElementAlias;
class DSDataElementAlias : public DSSDDAlias {
public:
    DSDataElementAlias() noexcept = default;
    DSDataElementAlias(const char* context, const char* objID, int instantiate);
    explicit DSDataElementAlias(_DSDataElementAlias* impl) noexcept;
    _DSDataElementAlias* operator->() const noexcept;
};
class _DSDataElementAlias : public _DSSDDAlias {
public:
    _DSDataElementAlias(const char* context, const char* objID, int instantiate = 1);
    ~_DSDataElementAlias() override;
    const char* whoAmI() override;
    ADObject* createNewHandle() override;
    int isKindOf(const char* className) override;
    ADAttributeEntry* attributeTable() override;
    ADAttributeEntry* nextAttributeTable(ADAttributeEntry* previous) override;
    static ADAttributeEntry table[];
};
inline _DSDataElementAlias* DSDataElementAlias::operator->() const noexcept {
    return static_cast<_DSDataElementAlias*>(impl_);
}

// The dictionary classes list of the platform's class description record.
#define KR_DICTIONARY_CLASSES(X)                              \
    X(DSDataItem, KVPart, KR_DSDATAITEM_ROLES)                \
    X(DSDataStructure, KVPart, KR_DSDATASTRUCTURE_ROLES)      \
    X(DSDataStructureAlias, KVPart, KR_DSDATASTRUCTUREALIAS_ROLES) \
    X(DSSDDAlias, KVPart, KR_DSSDDALIAS_ROLES)

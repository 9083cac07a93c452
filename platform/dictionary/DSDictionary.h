// DSDictionary.h — the data-dictionary classes at the far end of the model's
// links: data items, data structures and their aliases. Each keeps the inverse
// role collections that the model's links join and leave, and its name in
// adName. They are parts (_KVPart), so they carry annotations and dependencies.
#pragma once

#include "platform/dictionary/DictionaryLinks.h"
#include "platform/repository/ADIdentity.h"
#include "platform/techobj/DSTechnologyObject.h"

// The dictionary classes, each with its superclass and its roles in table
// order. A role list takes two macros and the class:
// - OWN(class, role, link): a role of one of the dictionary's own links; its
//   table row derives from the link's row in DictionaryLinks.def.
// - FOREIGN(class, role): a role that a link of another component joins (the
//   model's DSMakesUseOf at DSDataItem.fieldsForTARN, ...). The dictionary
//   states its name and collection only: the component whose catalogue states
//   the link describes the row (inverse role, far-end class, link class,
//   flags) when it loads, so that link stays stated once, in its catalogue.
#define KR_DSDATAITEM_ROLES(OWN, FOREIGN, C) \
    FOREIGN(C, fieldsForTARN)                \
    FOREIGN(C, fieldsSharedByTARN)           \
    OWN(C, dataDef, DSLinkDataItm2DataDef)   \
    OWN(C, sdd, DSLinkDataItm2SDD)           \
    OWN(C, sddAlias, DSLinkDataItm2SDDAlias)
#define KR_DSDATASTRUCTURE_ROLES(OWN, FOREIGN, C) \
    FOREIGN(C, tarnAlternateSegments)             \
    FOREIGN(C, tarnMappedSegments)                \
    OWN(C, structureDef, DSLinkDataStrc2StrctDef)
#define KR_DSDATASTRUCTUREALIAS_ROLES(OWN, FOREIGN, C) FOREIGN(C, segmNames)
#define KR_DSSDDALIAS_ROLES(OWN, FOREIGN, C) FOREIGN(C, fieldNames)

#define KR_DICTIONARY_CLASSES(X)                                   \
    X(DSDataItem, KVPart, KR_DSDATAITEM_ROLES)                     \
    X(DSDataStructure, KVPart, KR_DSDATASTRUCTURE_ROLES)           \
    X(DSDataStructureAlias, KVPart, KR_DSDATASTRUCTUREALIAS_ROLES) \
    X(DSSDDAlias, KVPart, KR_DSSDDALIAS_ROLES)

// One dictionary class: handle C, implementation _C below _SUPER, with a
// collection and accessor per role and the row numbers of its table
// (krRow_ and the role for a foreign role, krOwnRow_ and the role for an own
// one, which must be a role of this class in DictionaryLinks.def).
#define KR_DICTIONARY_CLASS(C, SUPER, ROLES)                                                   \
    class _##C;                                                                                \
    class C : public ADObject {                                                                \
    public:                                                                                    \
        C() noexcept = default;                                                                \
        C(const char* context, const char* objID, int instantiate);                            \
        explicit C(_##C* impl) noexcept;                                                       \
        _##C* operator->() const noexcept;                                                     \
    };                                                                                         \
    class _##C : public _##SUPER {                                                             \
    public:                                                                                    \
        _##C(const char* context, const char* objID, int instantiate = 1);                     \
        ~_##C() override;                                                                      \
        const char* whoAmI() override;                                                         \
        ADObject* createNewHandle() override;                                                  \
        int isKindOf(const char* className) override;                                          \
        ADAttributeEntry* attributeTable() override;                                           \
        ADAttributeEntry* nextAttributeTable(ADAttributeEntry* previous) override;             \
        ROLES(KR_DICTIONARY_OWN_ACCESSOR, KR_DICTIONARY_ACCESSOR, C)                           \
        enum KRRow : int { ROLES(KR_DICTIONARY_OWN_ROW_NUMBER, KR_DICTIONARY_ROW_NUMBER, C) krRowCount }; \
        static ADAttributeEntry table[];                                                       \
                                                                                               \
    private:                                                                                   \
        ROLES(KR_DICTIONARY_OWN_MEMBER, KR_DICTIONARY_MEMBER, C)                               \
    };                                                                                         \
    inline _##C* C::operator->() const noexcept { return static_cast<_##C*>(impl_); }

#define KR_DICTIONARY_ACCESSOR(C, role) \
    DSModelCollection* _get_##role() { return &role; }
#define KR_DICTIONARY_OWN_ACCESSOR(C, role, link)                                   \
    static_assert(adDictionaryRoleEnd(#link, #role, #C) >= 0,                       \
                  #C "." #role ": DictionaryLinks.def puts no such role of " #link " on " #C); \
    KR_DICTIONARY_ACCESSOR(C, role)
#define KR_DICTIONARY_ROW_NUMBER(C, role) krRow_##role,
#define KR_DICTIONARY_OWN_ROW_NUMBER(C, role, link) krOwnRow_##role,
// Each role's collection is made with its row of `table` (same order as ROLES).
#define KR_DICTIONARY_MEMBER(C, role) DSModelCollection role{&table[krRow_##role]};
#define KR_DICTIONARY_OWN_MEMBER(C, role, link) DSModelCollection role{&table[krOwnRow_##role]};

KR_DICTIONARY_CLASSES(KR_DICTIONARY_CLASS)

// DSDictionary.h — the data-dictionary classes at the far end of the model's
// links: data items, data structures and their aliases. Each keeps the inverse
// role collections that the model's links join and leave, and its name in
// adName. They are parts (_KVPart), so they carry annotations and dependencies.
#pragma once

#include <krmwtarn/platform/common/Export.h>

#include <krmwtarn/platform/dictionary/DictionaryLinks.h>
#include <krmwtarn/platform/repository/ADIdentity.h>
#include <krmwtarn/platform/repository/ADSetRule.h>
#include <krmwtarn/platform/techobj/DSTechnologyObject.h>

#include <cstdint>
#include <optional>
#include <string>

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
// A data element's alias is a kind of SDD alias with no roles of its own (a
// field names it through DSHasTARNfldName, whose target is any SDD alias).
#define KR_DSDATAELEMENTALIAS_ROLES(OWN, FOREIGN, C)
// A data item's type definition: the items that have it.
#define KR_DSSIMPLETYPEDEF_ROLES(OWN, FOREIGN, C) OWN(C, dataItems, DSLinkDataItm2DataDef)

// The attributes of each class, after its roles in table order:
// ATTR(class, type, name) with type string, long, short or boolean. A data item
// carries its offset in the record it belongs to (a field's START, from 1);
// its type definition carries the length in bytes (a field's BYTES) and the
// data type (a field's TYPE, one character such as C, X, P, Z, F or H).
#define KR_DSDATAITEM_ATTRS(ATTR, C) ATTR(C, long, offset)
#define KR_DSSIMPLETYPEDEF_ATTRS(ATTR, C) \
    ATTR(C, string, dataType)             \
    ATTR(C, string, defaultValue)         \
    ATTR(C, long, length)                 \
    ATTR(C, string, maxValue)             \
    ATTR(C, string, minValue)             \
    ATTR(C, string, picture)              \
    ATTR(C, short, scale)                 \
    ATTR(C, boolean, signed)              \
    ATTR(C, string, usage)
#define KR_NO_ATTRS(ATTR, C)

// Each row: the class, its superclass, the superclass's handle (the handle
// class a handle of C is a kind of), its roles and its attributes.
#define KR_DICTIONARY_CLASSES(X)                                                            \
    X(DSDataItem, KVPart, ADObject, KR_DSDATAITEM_ROLES, KR_DSDATAITEM_ATTRS)               \
    X(DSDataStructure, KVPart, ADObject, KR_DSDATASTRUCTURE_ROLES, KR_NO_ATTRS)             \
    X(DSDataStructureAlias, KVPart, ADObject, KR_DSDATASTRUCTUREALIAS_ROLES, KR_NO_ATTRS)   \
    X(DSSDDAlias, KVPart, ADObject, KR_DSSDDALIAS_ROLES, KR_NO_ATTRS)                       \
    X(DSDataElementAlias, DSSDDAlias, DSSDDAlias, KR_DSDATAELEMENTALIAS_ROLES, KR_NO_ATTRS) \
    X(DSSimpleTypeDef, KVPart, ADObject, KR_DSSIMPLETYPEDEF_ROLES, KR_DSSIMPLETYPEDEF_ATTRS)

// One dictionary class: handle C, implementation _C below _SUPER, with a
// collection and accessor per role and the row numbers of its table
// (krRow_ and the role for a foreign role, krOwnRow_ and the role for an own
// one, which must be a role of this class in DictionaryLinks.def), then an
// accessor pair and a row per attribute (krAttr_ and the attribute).
#define KR_DICTIONARY_CLASS(C, SUPER, SUPER_HANDLE, ROLES, ATTRS)                                                    \
    class _##C;                                                                                                      \
    class KRMWTARN_API C : public SUPER_HANDLE {                                                                     \
    public:                                                                                                          \
        C() noexcept = default;                                                                                      \
        C(const char* context, const char* objID, int instantiate);                                                  \
        explicit C(_##C* impl) noexcept;                                                                             \
        _##C* operator->() const noexcept;                                                                           \
    };                                                                                                               \
    class KRMWTARN_API _##C : public _##SUPER {                                                                      \
    public:                                                                                                          \
        _##C(const char* context, const char* objID, int instantiate = 1);                                           \
        ~_##C() override;                                                                                            \
        const char* whoAmI() override;                                                                               \
        ADObject* createNewHandle() override;                                                                        \
        int isKindOf(const char* className) override;                                                                \
        ADAttributeEntry* attributeTable() override;                                                                 \
        ADAttributeEntry* nextAttributeTable(ADAttributeEntry* previous) override;                                   \
        unsigned long getChangeFlag(const char* name) override;                                                      \
        unsigned long setChangeBit(const char* name, omSetProcessing how) override;                                  \
        ROLES(KR_DICTIONARY_OWN_ACCESSOR, KR_DICTIONARY_ACCESSOR, C)                                                 \
        ATTRS(KR_DICTIONARY_ATTR_ACCESSOR, C)                                                                        \
        enum KRRow : int {                                                                                           \
            ROLES(KR_DICTIONARY_OWN_ROW_NUMBER, KR_DICTIONARY_ROW_NUMBER, C) ATTRS(KR_DICTIONARY_ATTR_ROW_NUMBER, C) \
                krRowCount                                                                                           \
        };                                                                                                           \
        static ADAttributeEntry table[];                                                                             \
        static std::int32_t words[krRowCount + 1];                                                                   \
                                                                                                                     \
    private:                                                                                                         \
        /* The row of an own attribute by name; -1 for any other name. */                                            \
        static int attrRow(const char* name) noexcept;                                                               \
        bool attrChanged(int row) const noexcept { return (attrChanges_ >> row) & 1u; }                              \
        void markAttr(int row, bool on) noexcept {                                                                   \
            attrChanges_ = on ? (attrChanges_ | (1u << row)) : (attrChanges_ & ~(1u << row));                        \
        }                                                                                                            \
        std::uint32_t attrChanges_ = 0;                                                                              \
        ROLES(KR_DICTIONARY_OWN_MEMBER, KR_DICTIONARY_MEMBER, C)                                                     \
        ATTRS(KR_DICTIONARY_ATTR_MEMBER, C)                                                                          \
    };                                                                                                               \
    static_assert(_##C::krRowCount <= 32, #C ": the change bits of its attributes fit one word");                    \
    inline _##C* C::operator->() const noexcept { return static_cast<_##C*>(impl_); }

#define KR_DICTIONARY_ACCESSOR(C, role) \
    DSModelCollection* _get_##role() { return &role; }
#define KR_DICTIONARY_OWN_ACCESSOR(C, role, link)                                              \
    static_assert(adDictionaryRoleEnd(#link, #role, #C) >= 0,                                  \
                  #C "." #role ": DictionaryLinks.def puts no such role of " #link " on " #C); \
    KR_DICTIONARY_ACCESSOR(C, role)
#define KR_DICTIONARY_ROW_NUMBER(C, role) krRow_##role,
#define KR_DICTIONARY_OWN_ROW_NUMBER(C, role, link) krOwnRow_##role,
// Each role's collection is made with its row of `table` (same order as ROLES).
#define KR_DICTIONARY_MEMBER(C, role) DSModelCollection role{&table[krRow_##role]};
#define KR_DICTIONARY_OWN_MEMBER(C, role, link) DSModelCollection role{&table[krOwnRow_##role]};

// An attribute by its value type: the member, the getter's result and the
// setter's argument, the union member of a row's getter and setter, the width.
#define KR_DICTIONARY_MEMBER_string(n) std::optional<std::string> n##_;
#define KR_DICTIONARY_MEMBER_long(n) long n##_ = 0;
#define KR_DICTIONARY_MEMBER_short(n) short n##_ = 0;
#define KR_DICTIONARY_MEMBER_boolean(n) int n##_ = 0;
#define KR_DICTIONARY_GET_string char*
#define KR_DICTIONARY_GET_long long
#define KR_DICTIONARY_GET_short short
#define KR_DICTIONARY_GET_boolean int
#define KR_DICTIONARY_SET_string const char*
#define KR_DICTIONARY_SET_long long
#define KR_DICTIONARY_SET_short short
#define KR_DICTIONARY_SET_boolean int
#define KR_DICTIONARY_UNION_string str
#define KR_DICTIONARY_UNION_long longv
#define KR_DICTIONARY_UNION_short shortv
#define KR_DICTIONARY_UNION_boolean boolean
#define KR_DICTIONARY_WIDTH_string 4
#define KR_DICTIONARY_WIDTH_long 4
#define KR_DICTIONARY_WIDTH_short 2
#define KR_DICTIONARY_WIDTH_boolean 4
// A string attribute tells unset (null) from empty, as the model's do.
#define KR_DICTIONARY_VALUE_string(n) (n##_ ? n##_->data() : nullptr)
#define KR_DICTIONARY_VALUE_scalar(n) n##_
#define KR_DICTIONARY_VALUE_long KR_DICTIONARY_VALUE_scalar
#define KR_DICTIONARY_VALUE_short KR_DICTIONARY_VALUE_scalar
#define KR_DICTIONARY_VALUE_boolean KR_DICTIONARY_VALUE_scalar
#define KR_DICTIONARY_SAME_string(n, v) (n##_ ? (v) && *n##_ == (v) : !(v))
#define KR_DICTIONARY_SAME_scalar(n, v) (n##_ == (v))
#define KR_DICTIONARY_SAME_long KR_DICTIONARY_SAME_scalar
#define KR_DICTIONARY_SAME_short KR_DICTIONARY_SAME_scalar
#define KR_DICTIONARY_SAME_boolean KR_DICTIONARY_SAME_scalar
#define KR_DICTIONARY_STORE_string(n, v) ((v) ? void(n##_ = std::string(v)) : n##_.reset())
#define KR_DICTIONARY_STORE_scalar(n, v) (n##_ = (v))
#define KR_DICTIONARY_STORE_long KR_DICTIONARY_STORE_scalar
#define KR_DICTIONARY_STORE_short KR_DICTIONARY_STORE_scalar
#define KR_DICTIONARY_STORE_boolean KR_DICTIONARY_STORE_scalar

// The accessors of an attribute; its setter follows the rule of every
// attribute (ADSetRule.h), with the attribute's change bit in attrChanges_.
#define KR_DICTIONARY_ATTR_ACCESSOR(C, T, n)                                                          \
    KR_DICTIONARY_GET_##T _get_##n() { return KR_DICTIONARY_VALUE_##T(n); }                           \
    void _set_##n(KR_DICTIONARY_SET_##T value, omSetProcessing how) {                                 \
        adSetAttribute(                                                                               \
            this, how, attrChanged(krAttr_##n), #n, [&] { return KR_DICTIONARY_SAME_##T(n, value); }, \
            [&] { KR_DICTIONARY_STORE_##T(n, value); }, [&](bool on) { markAttr(krAttr_##n, on); });  \
    }
#define KR_DICTIONARY_ATTR_ROW_NUMBER(C, T, n) krAttr_##n,
#define KR_DICTIONARY_ATTR_MEMBER(C, T, n) KR_DICTIONARY_MEMBER_##T(n)

KR_DICTIONARY_CLASSES(KR_DICTIONARY_CLASS)

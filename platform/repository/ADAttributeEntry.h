// ADAttributeEntry.h — one row of a class's attribute table, the reflective
// description that the repository client reads to get, set and compare any
// object generically, and the one builder of each kind of row (attribute, role,
// link end). Rows end with an all-zero row. The getter and setter are typed
// member-function pointers; the row's type name says which member of the union
// is live, so generic code never casts between function types.
#pragma once

#include <krmwtarn/platform/common/Export.h>

#include <cstdint>
#include <string_view>

class _ADObject;
class ADObject;
class DSModelCollection;

// Processing bits passed to every setter and to setChangeBit:
// 1 store, 2 keep a changed value, 4 set the change bit, 8 clear it.
typedef unsigned int omSetProcessing;

enum : omSetProcessing {
    omStore = 1,
    omKeepChanged = 2,
    omSetChanged = 4,
    omClearChanged = 8,
};

// Getter of a row. An attribute's value type names its member (ValueTypes.def:
// "string" -> str, "ushort" -> ushortv, ...; ADReflection.h reads them); a
// role row of an object class -> role; the "source"/"target" rows -> end.
union ADGetter {
    char* (_ADObject::*str)();
    int (_ADObject::*boolean)();
    short (_ADObject::*shortv)();
    unsigned short (_ADObject::*ushortv)();
    long (_ADObject::*longv)();
    char (_ADObject::*charv)();
    DSModelCollection* (_ADObject::*role)();
    ADObject* (_ADObject::*end)();
};

// Setter of a row; null (all members zero) for the roles of object classes.
union ADSetter {
    void (_ADObject::*str)(const char*, omSetProcessing);
    void (_ADObject::*boolean)(int, omSetProcessing);
    void (_ADObject::*shortv)(short, omSetProcessing);
    void (_ADObject::*ushortv)(unsigned short, omSetProcessing);
    void (_ADObject::*longv)(long, omSetProcessing);
    void (_ADObject::*charv)(char, omSetProcessing);
    void (_ADObject::*end)(ADObject*, omSetProcessing);
};

struct KRMWTARN_API ADAttributeEntry {
    const char* name;     // attribute or role name
    const char* inverse;  // role name at the other end; null for an attribute
    const char* type;     // value type name, or the class at the other end
    std::int32_t width;   // 4, 2 or 1
    const void* extra;    // per-row reserved word, or the link class name of a role
    ADGetter getter;
    ADSetter setter;
    std::int32_t reserved;  // always zero
    std::uint32_t flags;
};

// Low four bits of a relationship row's flags.
enum : std::uint32_t {
    adRowAttribute = 0x4,
    adRowNameAttribute = 0x80004,
    adRowRoleAtSource = 0x3,
    adRowRoleAtTarget = 0x7,
    adRowLinkSource = 0x1,
    adRowLinkTarget = 0x5,
    adFlagRelationship = 0x1,
    adFlagRole = 0x2,
    adFlagTargetEnd = 0x4,
    adFlagControlling = 0x200,
    adFlagSourceEnd = 0x800,
    adFlagOneToOne = 0x1000,
    adFlagOneToMany = 0x2000,
    adFlagManyToOne = 0x4000,
    adFlagManyToMany = 0x8000,
    adFlagOrdered = 0x10000,
    adFlagName = 0x80000,
};

// The link class name carried by a role row of an object class.
inline const char* adRoleLinkClass(const ADAttributeEntry& row) { return static_cast<const char*>(row.extra); }

inline bool adIsRoleRow(const ADAttributeEntry& row) { return (row.flags & 0x3) == 0x3; }

inline bool adIsEndRow(const ADAttributeEntry& row) { return (row.flags & 0x3) == 0x1; }

// The two ends of a link: its "source" and "target" rows, in this order.
enum : int { adSource = 0, adTarget = 1 };

// A row's kind: the low four bits of its flags (adRowAttribute, adRowRoleAtSource,
// adRowRoleAtTarget, adRowLinkSource, adRowLinkTarget).
constexpr std::uint32_t adRowKindOf(std::uint32_t flags) noexcept { return flags & 0xF; }
constexpr std::uint32_t adRowKind(const ADAttributeEntry& row) noexcept { return adRowKindOf(row.flags); }

// An attribute row (the name attribute too), as opposed to a role or a link end.
constexpr bool adIsAttributeRow(const ADAttributeEntry& row) noexcept { return adRowKind(row) == adRowAttribute; }

// The end of its link at which the object holding a role row stands.
constexpr int adRoleEnd(const ADAttributeEntry& row) noexcept {
    return adRowKind(row) == adRowRoleAtSource ? adSource : adTarget;
}

// What a link catalogue states of one link class: its name, and per end the
// class there, the role that joins the link on an object of that class, and
// the end row's flags. Every row that describes the link derives from this.
struct KRMWTARN_API ADLinkFacts {
    const char* name;
    const char* endClass[2];
    const char* endRole[2];
    std::uint32_t endFlags[2];
};

// One end's cardinality mirrors the other's: 1:1 with 1:1, one-to-many with
// many-to-one, m:n with m:n.
constexpr bool adCardinalitiesMirror(std::uint32_t sourceFlags, std::uint32_t targetFlags) noexcept {
    std::uint32_t s = sourceFlags & 0xF000, t = targetFlags & 0xF000;
    std::uint32_t mirror = s == adFlagOneToMany ? adFlagManyToOne : s == adFlagManyToOne ? adFlagOneToMany : s;
    return s != 0 && t == mirror;
}

// What every catalogue row must satisfy: end rows flagged 0x1 and 0x5, two
// role names, only the source ordered, at most one end controlling, mirrored
// cardinalities.
constexpr bool adLinkWellFormed(const ADLinkFacts& link) noexcept {
    std::uint32_t s = link.endFlags[adSource], t = link.endFlags[adTarget];
    return adRowKindOf(s) == adRowLinkSource && adRowKindOf(t) == adRowLinkTarget &&
           std::string_view(link.endRole[adSource]) != link.endRole[adTarget] && !(t & adFlagOrdered) &&
           !((s & adFlagControlling) && (t & adFlagControlling)) && adCardinalitiesMirror(s, t);
}

// A role row's flags: its end row's flags and the role bit.
constexpr std::uint32_t adRoleFlags(std::uint32_t endFlags) noexcept { return endFlags | adFlagRole; }

// The end at which an object holds `role` of the link; -1 when neither end
// names it. (A link whose two roles had one name would be ambiguous here: the
// catalogues' checks refuse that.)
constexpr int adEndOfRole(const ADLinkFacts& link, std::string_view role) noexcept {
    if (role == link.endRole[adSource]) return adSource;
    if (role == link.endRole[adTarget]) return adTarget;
    return -1;
}

// A role getter of an implementation class, stored as the base's.
template <class Impl>
constexpr ADGetter adRoleGetter(DSModelCollection* (Impl::*get)()) noexcept {
    return ADGetter{.role = static_cast<DSModelCollection* (_ADObject::*)()>(get)};
}

// The builders of every row of every table.
// An attribute: value type name and width, its reserved word, accessors, flags.
constexpr ADAttributeEntry adAttributeRow(const char* name, const char* type, std::int32_t width, const void* word,
                                          ADGetter getter, ADSetter setter, std::uint32_t flags) noexcept {
    return ADAttributeEntry{name, nullptr, type, width, word, getter, setter, 0, flags};
}

// The role of an object at end `end` of a link: named by the link's role at
// that end; the inverse role and the class at the far end; the link class;
// the end row's flags with the role bit.
constexpr ADAttributeEntry adRoleRow(const ADLinkFacts& link, int end, ADGetter getter) noexcept {
    return ADAttributeEntry{link.endRole[end],
                            link.endRole[1 - end],
                            link.endClass[1 - end],
                            4,
                            link.name,
                            getter,
                            ADSetter{},
                            0,
                            adRoleFlags(link.endFlags[end])};
}

// A role that a link of another component joins, as the class holding it
// states it: its name and getter. The component whose catalogue states the
// link describes the rest when it loads (adDescribeRole).
constexpr ADAttributeEntry adForeignRoleRow(const char* name, ADGetter getter) noexcept {
    return ADAttributeEntry{name, nullptr, nullptr, 4, nullptr, getter, ADSetter{}, 0, 0};
}

// Describe a foreign role row from the link that joins it: everything
// adRoleRow says but the name, the getter and the setter, which stay the
// holding class's.
inline void adDescribeRole(ADAttributeEntry& row, const ADLinkFacts& link, int end) noexcept {
    ADAttributeEntry described = adRoleRow(link, end, ADGetter{});
    row.inverse = described.inverse;
    row.type = described.type;
    row.width = described.width;
    row.extra = described.extra;
    row.flags = described.flags;
}

// The "source" or "target" row of a link class: the role that joins it at
// that end, the class there, its reserved word, accessors and flags.
constexpr ADAttributeEntry adEndRow(const ADLinkFacts& link, int end, const void* word, ADGetter getter,
                                    ADSetter setter) noexcept {
    return ADAttributeEntry{end == adSource ? "source" : "target",
                            link.endRole[end],
                            link.endClass[end],
                            4,
                            word,
                            getter,
                            setter,
                            0,
                            link.endFlags[end]};
}

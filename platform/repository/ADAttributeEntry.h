// ADAttributeEntry.h — one row of a class's attribute table, the reflective
// description that the repository client reads to get, set and compare any
// object generically. Rows end with an all-zero row. The getter and setter are
// typed member-function pointers; the row's type name says which member of the
// union is live, so generic code never casts between function types.
#pragma once

#include <cstdint>

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

// Getter of a row. "string" -> str, "boolean" -> boolean, "short" -> shortv,
// "ushort" -> ushortv, "long" -> longv, "char" -> charv; a role row of an
// object class -> role; the "source"/"target" rows of a link class -> end.
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

struct ADAttributeEntry {
    const char* name;      // attribute or role name
    const char* inverse;   // role name at the other end; null for an attribute
    const char* type;      // value type name, or the class at the other end
    std::int32_t width;    // 4, 2 or 1
    const void* extra;     // per-row reserved word, or the link class name of a role
    ADGetter getter;
    ADSetter setter;
    std::int32_t reserved; // always zero
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
inline const char* adRoleLinkClass(const ADAttributeEntry& row) {
    return static_cast<const char*>(row.extra);
}

inline bool adIsRoleRow(const ADAttributeEntry& row) {
    return (row.flags & 0x3) == 0x3;
}

inline bool adIsEndRow(const ADAttributeEntry& row) {
    return (row.flags & 0x3) == 0x1;
}

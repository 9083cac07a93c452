// ADReflection.cpp — the run-time lookups of the generic access: a value type
// by its name, a row by its name in an object's or a class's table chain.
#include <krmwtarn/platform/repository/ADReflection.h>

#include <cstring>

const ADValueTypeInfo adValueTypes[adValueTypeCount] = {
#define AD_VALUE_TYPE(TAG, ...)                                           \
    {adv::TAG::name, adv::TAG::type, adv::TAG::width,     adv::TAG::form, \
     adv::TAG::low,  adv::TAG::high, adv::TAG::columnLow, adv::TAG::columnHigh},
#include <krmwtarn/platform/repository/ValueTypes.def>
#undef AD_VALUE_TYPE
};

const ADValueTypeInfo* adFindValueType(const char* name) noexcept {
    if (!name) return nullptr;
    for (const ADValueTypeInfo& info : adValueTypes)
        if (std::strcmp(info.name, name) == 0) return &info;
    return nullptr;
}

const ADAttributeEntry* adFindRow(_ADObject* o, const char* name) {
    if (!o || !name) return nullptr;
    for (ADAttributeEntry* t = o->nextAttributeTable(nullptr); t; t = o->nextAttributeTable(t))
        for (ADAttributeEntry* row = t; row->name; ++row)
            if (std::strcmp(row->name, name) == 0) return row;
    return nullptr;
}

const _classStruct* adSuperclass(const _classStruct* c) {
    return c && c->superclassName ? DSRegistration::findClass(c->superclassName) : nullptr;
}

const ADAttributeEntry* adFindClassRow(const char* className, const char* name) {
    if (!className || !name) return nullptr;
    const ADAttributeEntry* found = nullptr;
    for (const _classStruct* c = DSRegistration::findClass(className); c && !found; c = adSuperclass(c))
        for (const ADAttributeEntry* row = c->attributes; row && row->name && !found; ++row)
            if (std::strcmp(row->name, name) == 0) found = row;
    return found;
}

// ADReflection.h — generic access to any object through its attribute tables:
// the value types of ValueTypes.def as traits and as a runtime table, the walk
// of a class's or an object's table chain, the lookup of a row by name, and
// reading and assigning a row's value as its type says.
#pragma once

#include <krmwtarn/platform/common/Export.h>

#include <krmwtarn/platform/repository/ADObject.h>
#include <krmwtarn/platform/repository/DSRegistration.h>

#include <cstdint>
#include <type_traits>

// ---- value types ------------------------------------------------------------

enum class ADValueType : int {
#define AD_VALUE_TYPE(TAG, ...) TAG,
#include <krmwtarn/platform/repository/ValueTypes.def>
#undef AD_VALUE_TYPE
};

// How a value travels outside an object: a nullable string, one character (or
// none), or an integer.
enum class ADValueForm : int { Text, Char, Integer };

// One traits struct per value type: its C++ types, name, width, form, ranges,
// the union members of its accessors, and the typed call of a row's getter
// and setter.
namespace adv {
#define AD_VALUE_TYPE(TAG, NAME, VALUE, ARG, MEMBER, WIDTH, FORM, LOW, HIGH, COLUMN_LOW, COLUMN_HIGH)     \
    struct TAG {                                                                                          \
        using value = VALUE;                                                                              \
        using arg = ARG;                                                                                  \
        using Getter = VALUE (_ADObject::*)();                                                            \
        using Setter = void (_ADObject::*)(ARG, omSetProcessing);                                         \
        static constexpr ADValueType type = ADValueType::TAG;                                             \
        static constexpr const char* name = NAME;                                                         \
        static constexpr std::int32_t width = WIDTH;                                                      \
        static constexpr ADValueForm form = ADValueForm::FORM;                                            \
        static constexpr long long low = LOW, high = HIGH;                                                \
        static constexpr long long columnLow = COLUMN_LOW, columnHigh = COLUMN_HIGH;                      \
        static constexpr ADGetter getter(Getter g) noexcept { return ADGetter{.MEMBER = g}; }             \
        static constexpr ADSetter setter(Setter s) noexcept { return ADSetter{.MEMBER = s}; }             \
        static VALUE get(_ADObject* o, const ADAttributeEntry& row) { return (o->*row.getter.MEMBER)(); } \
        static void set(_ADObject* o, const ADAttributeEntry& row, ARG v, omSetProcessing how) {          \
            (o->*row.setter.MEMBER)(v, how);                                                              \
        }                                                                                                 \
    };
#include <krmwtarn/platform/repository/ValueTypes.def>
#undef AD_VALUE_TYPE
}  // namespace adv

// What a value type is, for code that learns it at run time.
struct ADValueTypeInfo {
    const char* name;
    ADValueType type;
    std::int32_t width;
    ADValueForm form;
    long long low, high;              // an Integer value's range
    long long columnLow, columnHigh;  // what an SQL column of the type admits
};

inline constexpr int adValueTypeCount = 0
#define AD_VALUE_TYPE(...) +1
#include <krmwtarn/platform/repository/ValueTypes.def>
#undef AD_VALUE_TYPE
    ;

// The list as a table, in ADValueType order: one table for every component.
extern KRMWTARN_API const ADValueTypeInfo adValueTypes[adValueTypeCount];

inline const ADValueTypeInfo& adValueTypeInfo(ADValueType type) noexcept {
    return adValueTypes[static_cast<int>(type)];
}

// The value type of a type name; null for any other name (the class at the
// other end of a role or a link end, or none).
KRMWTARN_API const ADValueTypeInfo* adFindValueType(const char* name) noexcept;

// Calls f(traits) with the traits struct of `type` and returns its result.
template <class F>
auto adDispatch(ADValueType type, F&& f) {
    using Result = decltype(f(adv::String{}));
    switch (type) {
#define AD_VALUE_TYPE(TAG, ...) \
    case ADValueType::TAG:      \
        return f(adv::TAG{});
#include <krmwtarn/platform/repository/ValueTypes.def>
#undef AD_VALUE_TYPE
    }
    if constexpr (!std::is_void_v<Result>) return Result{};
}

// Whether values of the type travel as text (strings and characters).
inline bool adIsTextForm(ADValueType type) noexcept { return adValueTypeInfo(type).form != ADValueForm::Integer; }

// ---- reading and assigning a row's value --------------------------------------

// Calls f(traits, value) with the value of attribute row `row` of `o`, whose
// type the caller already knows.
template <class F>
auto adVisitValue(_ADObject* o, const ADAttributeEntry& row, ADValueType type, F&& f) {
    return adDispatch(type, [&](auto tr) { return f(tr, decltype(tr)::get(o, row)); });
}

// The same, the type taken from the row; false (f not called) when the row's
// type name is none of the value types.
template <class F>
bool adVisitValue(_ADObject* o, const ADAttributeEntry& row, F&& f) {
    const ADValueTypeInfo* info = adFindValueType(row.type);
    if (!info) return false;
    adVisitValue(o, row, info->type, f);
    return true;
}

// Sets attribute row `row` of `o` to make(traits): `make` turns whatever the
// caller holds into the type's setter argument.
template <class Make>
void adAssignValue(_ADObject* o, const ADAttributeEntry& row, ADValueType type, omSetProcessing how, Make&& make) {
    adDispatch(type, [&](auto tr) {
        using T = decltype(tr);
        T::set(o, row, static_cast<typename T::arg>(make(tr)), how);
    });
}

template <class Make>
bool adAssignValue(_ADObject* o, const ADAttributeEntry& row, omSetProcessing how, Make&& make) {
    const ADValueTypeInfo* info = adFindValueType(row.type);
    if (!info) return false;
    adAssignValue(o, row, info->type, how, make);
    return true;
}

// A value's setter argument from its plain form: a null or missing text for a
// string, the first character of a text (or none) for a char, the number for
// the rest.
template <class T>
typename T::arg adFromPlain(bool null, const char* text, long long number) noexcept {
    if constexpr (T::form == ADValueForm::Text)
        return null ? nullptr : text;
    else if constexpr (T::form == ADValueForm::Char)
        return null || !text || !*text ? '\0' : text[0];
    else
        return static_cast<typename T::arg>(number);
}

// ---- table chains -------------------------------------------------------------

// Calls f(row) for every row of the object's table chain, its own table first.
template <class F>
void adForEachRow(_ADObject* o, F&& f) {
    for (ADAttributeEntry* t = o->nextAttributeTable(nullptr); t; t = o->nextAttributeTable(t))
        for (ADAttributeEntry* row = t; row->name; ++row) f(*row);
}

// The first row of the object's chain named `name`; null if none.
KRMWTARN_API const ADAttributeEntry* adFindRow(_ADObject* o, const char* name);

// A class's superclass as registered, or null.
KRMWTARN_API const _classStruct* adSuperclass(const _classStruct* c);

// Calls f(declaringClass, row) for every row of a class's chain as the class
// tables state it: its own rows, then its superclass's.
template <class F>
void adForEachClassRow(const _classStruct* c, F&& f) {
    for (int depth = 0; c && depth < 32; ++depth, c = adSuperclass(c))
        for (const ADAttributeEntry* row = c->attributes; row && row->name; ++row) f(*c, *row);
}

// The first row named `name` of a registered class's chain; null if none.
KRMWTARN_API const ADAttributeEntry* adFindClassRow(const char* className, const char* name);

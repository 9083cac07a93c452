// DSDictionary.cpp — the dictionary classes (among them the data element alias
// below the SDD alias) and the class descriptions of the
// platform's own classes (base objects, links, parts, technology objects and
// dictionary classes), registered so clients can look any class up by name.
#include <krmwtarn/platform/dictionary/DSDictionary.h>

#include <krmwtarn/platform/repository/ADLink.h>
#include <krmwtarn/platform/repository/DSRegistrar.h>
#include <krmwtarn/platform/repository/DSRegistration.h>

#include <cstring>
#include <new>

#define KR_DEFINE_DICTIONARY_CLASS(C, SUPER, SUPER_HANDLE, ROLES, ATTRS)                                           \
    C::C(const char* context, const char* objID, int instantiate) : SUPER_HANDLE(context, objID, 0) {              \
        adopt(adAcquire<_##C>(#C, context, objID, instantiate));                                                   \
    }                                                                                                              \
    C::C(_##C* impl) noexcept : SUPER_HANDLE(impl) {}                                                              \
    _##C::_##C(const char* context, const char* objID, int instantiate) : _##SUPER(context, objID, instantiate) {} \
    _##C::~_##C() { releaseLastHandle(); }                                                                         \
    const char* _##C::whoAmI() { return #C; }                                                                      \
    ADObject* _##C::createNewHandle() { return new (std::nothrow) C(this); }                                       \
    int _##C::isKindOf(const char* className) {                                                                    \
        if (className && std::strcmp(className, #C) == 0) return 1;                                                \
        return _##SUPER::isKindOf(className);                                                                      \
    }                                                                                                              \
    ADAttributeEntry* _##C::attributeTable() { return table; }                                                     \
    ADAttributeEntry* _##C::nextAttributeTable(ADAttributeEntry* previous) {                                       \
        if (!previous) return attributeTable();                                                                    \
        if (previous == table) return _##SUPER::attributeTable();                                                  \
        return _##SUPER::nextAttributeTable(previous);                                                             \
    }                                                                                                              \
    int _##C::attrRow(const char* name) noexcept {                                                                 \
        if (!name) return -1;                                                                                      \
        for (int row = 0; row < krRowCount; ++row)                                                                 \
            if (adIsAttributeRow(table[row]) && std::strcmp(table[row].name, name) == 0) return row;               \
        return -1;                                                                                                 \
    }                                                                                                              \
    unsigned long _##C::getChangeFlag(const char* name) {                                                          \
        if (!name) { /* the object: new (1) or deleted (8) as the base says, else changed (4) or not */            \
            unsigned long base = _##SUPER::getChangeFlag(nullptr);                                                 \
            return base == 1 || base == 8 ? base : (base || attrChanges_) ? 4 : 0;                                 \
        }                                                                                                          \
        int row = attrRow(name);                                                                                   \
        return row < 0 ? _##SUPER::getChangeFlag(name) : attrChanged(row);                                         \
    }                                                                                                              \
    unsigned long _##C::setChangeBit(const char* name, omSetProcessing how) {                                      \
        int row = attrRow(name);                                                                                   \
        if (row < 0) return _##SUPER::setChangeBit(name, how);                                                     \
        markAttr(row, how != omClearChanged);                                                                      \
        return 1;                                                                                                  \
    }                                                                                                              \
    std::int32_t _##C::words[krRowCount + 1] = {};                                                                 \
    constinit ADAttributeEntry _##C::table[] = {ROLES(KR_DICTIONARY_OWN_ROW, KR_DICTIONARY_FOREIGN_ROW, C)         \
                                                    ATTRS(KR_DICTIONARY_ATTR_ROW, C){}};

// The tables are constant-initialized (constinit) without their getters:
// converting a member pointer to the base's is no constant expression here.
// The getters are attached when the library loads, and that writes nothing
// but the getters, so it cannot undo (nor be undone by) the description of
// the foreign rows that the component owning those links writes at its load,
// whichever of the two runs first.
#define KR_DICTIONARY_OWN_ROW(C, R, LINK) \
    adRoleRow(adDictionaryLink(#LINK), adDictionaryRoleEnd(#LINK, #R, #C), ADGetter{}),
#define KR_DICTIONARY_FOREIGN_ROW(C, R) adForeignRoleRow(#R, ADGetter{}),
// An attribute row of class C (its accessors attached at load as well).
#define KR_DICTIONARY_ATTR_ROW(C, T, n)                                                                     \
    adAttributeRow(#n, #T, KR_DICTIONARY_WIDTH_##T, &_##C::words[_##C::krAttr_##n], ADGetter{}, ADSetter{}, \
                   adRowAttribute),

KR_DICTIONARY_CLASSES(KR_DEFINE_DICTIONARY_CLASS)

namespace {
bool attachGetters() {
#define KR_ATTACH_OWN(C, R, LINK) _##C::table[_##C::krOwnRow_##R].getter = adRoleGetter(&_##C::_get_##R);
#define KR_ATTACH_FOREIGN(C, R) _##C::table[_##C::krRow_##R].getter = adRoleGetter(&_##C::_get_##R);
#define KR_ATTACH_ATTR(C, T, n)                                               \
    _##C::table[_##C::krAttr_##n].getter.KR_DICTIONARY_UNION_##T =            \
        static_cast<KR_DICTIONARY_GET_##T (_ADObject::*)()>(&_##C::_get_##n); \
    _##C::table[_##C::krAttr_##n].setter.KR_DICTIONARY_UNION_##T =            \
        static_cast<void (_ADObject::*)(KR_DICTIONARY_SET_##T, omSetProcessing)>(&_##C::_set_##n);
#define KR_ATTACH(C, SUPER, SUPER_HANDLE, ROLES, ATTRS) \
    ROLES(KR_ATTACH_OWN, KR_ATTACH_FOREIGN, C) ATTRS(KR_ATTACH_ATTR, C)
    KR_DICTIONARY_CLASSES(KR_ATTACH)
#undef KR_ATTACH
#undef KR_ATTACH_OWN
#undef KR_ATTACH_FOREIGN
#undef KR_ATTACH_ATTR
    return true;
}
[[maybe_unused]] const bool gettersAttached = attachGetters();
}  // namespace

namespace {
ADObject* platformFactory(const char* className, const char* context, const char* objID) {
#define KR_MAKE(C, SUPER, SUPER_HANDLE, ROLES, ATTRS) \
    if (std::strcmp(className, #C) == 0) return new (std::nothrow) C(context, objID, 1);
    if (!className) return nullptr;
    KR_DICTIONARY_CLASSES(KR_MAKE)
#undef KR_MAKE
    return nullptr;
}

ADAttributeEntry noRows[] = {{}};

_classStruct platformClasses[] = {
    {"ADObject", nullptr, _ADObject::ownTable()},
    {"ADLink", "ADObject", _ADLink::ownTable()},
    {"KVPart", "ADObject", _KVPart::ownTable()},
    {"DSTechnologyObject", "KVPart", noRows},
#define KR_CLASS_ROW(C, SUPER, SUPER_HANDLE, ROLES, ATTRS) {#C, #SUPER, _##C::table},
    KR_DICTIONARY_CLASSES(KR_CLASS_ROW)
#undef KR_CLASS_ROW
        {nullptr, nullptr, nullptr},
};

DSRegistration platformRegistration(platformFactory, platformClasses, "krmrscli");
}  // namespace

// DSDictionary.cpp — the dictionary classes and the class descriptions of the
// platform's own classes (base objects, links, parts, technology objects and
// dictionary classes), registered so clients can look any class up by name.
#include "platform/dictionary/DSDictionary.h"

#include "platform/repository/ADLink.h"
#include "platform/repository/DSRegistrar.h"
#include "platform/repository/DSRegistration.h"

#include <cstring>
#include <new>

#define KR_DEFINE_DICTIONARY_CLASS(C, SUPER, ROLES)                                                        \
    C::C(const char* context, const char* objID, int instantiate) : ADObject(context, objID, 0) {          \
        adopt(adAcquire<_##C>(#C, context, objID, instantiate));                                           \
    }                                                                                                      \
    C::C(_##C* impl) noexcept : ADObject(impl) {}                                                          \
    _##C::_##C(const char* context, const char* objID, int instantiate)                                    \
        : _##SUPER(context, objID, instantiate) {}                                                         \
    _##C::~_##C() { releaseLastHandle(); }                                                                 \
    const char* _##C::whoAmI() { return #C; }                                                              \
    ADObject* _##C::createNewHandle() { return new (std::nothrow) C(this); }                               \
    int _##C::isKindOf(const char* className) {                                                            \
        if (className && std::strcmp(className, #C) == 0) return 1;                                        \
        return _##SUPER::isKindOf(className);                                                              \
    }                                                                                                      \
    ADAttributeEntry* _##C::attributeTable() { return table; }                                             \
    ADAttributeEntry* _##C::nextAttributeTable(ADAttributeEntry* previous) {                               \
        if (!previous) return attributeTable();                                                            \
        if (previous == table) return _##SUPER::attributeTable();                                          \
        return _##SUPER::nextAttributeTable(previous);                                                     \
    }                                                                                                      \
    constinit ADAttributeEntry _##C::table[] = {ROLES(KR_DICTIONARY_OWN_ROW, KR_DICTIONARY_FOREIGN_ROW, C){}};

// The tables are constant-initialized (constinit) without their getters:
// converting a member pointer to the base's is no constant expression here.
// The getters are attached when the library loads, and that writes nothing
// but the getters, so it cannot undo (nor be undone by) the description of
// the foreign rows that the component owning those links writes at its load,
// whichever of the two runs first.
#define KR_DICTIONARY_OWN_ROW(C, R, LINK) \
    adRoleRow(adDictionaryLink(#LINK), adDictionaryRoleEnd(#LINK, #R, #C), ADGetter{}),
#define KR_DICTIONARY_FOREIGN_ROW(C, R) adForeignRoleRow(#R, ADGetter{}),

KR_DICTIONARY_CLASSES(KR_DEFINE_DICTIONARY_CLASS)

namespace {
bool attachGetters() {
#define KR_ATTACH_OWN(C, R, LINK) _##C::table[_##C::krOwnRow_##R].getter = adRoleGetter(&_##C::_get_##R);
#define KR_ATTACH_FOREIGN(C, R) _##C::table[_##C::krRow_##R].getter = adRoleGetter(&_##C::_get_##R);
#define KR_ATTACH(C, SUPER, ROLES) ROLES(KR_ATTACH_OWN, KR_ATTACH_FOREIGN, C)
    KR_DICTIONARY_CLASSES(KR_ATTACH)
#undef KR_ATTACH
#undef KR_ATTACH_OWN
#undef KR_ATTACH_FOREIGN
    return true;
}
[[maybe_unused]] const bool gettersAttached = attachGetters();
}  // namespace

namespace {
ADObject* platformFactory(const char* className, const char* context, const char* objID) {
#define KR_MAKE(C, SUPER, ROLES) \
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
#define KR_CLASS_ROW(C, SUPER, ROLES) {#C, #SUPER, _##C::table},
    KR_DICTIONARY_CLASSES(KR_CLASS_ROW)
#undef KR_CLASS_ROW
    {nullptr, nullptr, nullptr},
};

DSRegistration platformRegistration(platformFactory, platformClasses, "krmrscli");
}  // namespace

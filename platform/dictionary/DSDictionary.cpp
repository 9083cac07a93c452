// DSDictionary.cpp — the dictionary classes (the data element alias below the
// SDD alias) and the class descriptions of the platform's own classes (base
// objects, links, parts, technology objects and dictionary classes),
// registered so clients can look any class up by name.
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
    _##C::_##C(const char* context, const char* objID, int instantiate) : _KVPart(context, objID, instantiate) {} \
    _##C::~_##C() { releaseLastHandle(); }                                                                 \
    const char* _##C::whoAmI() { return #C; }                                                              \
    ADObject* _##C::createNewHandle() { return new (std::nothrow) C(this); }                               \
    int _##C::isKindOf(const char* className) {                                                            \
        if (className && std::strcmp(className, #C) == 0) return 1;                                        \
        return _KVPart::isKindOf(className);                                                               \
    }                                                                                                      \
    ADAttributeEntry* _##C::attributeTable() { return table; }                                             \
    ADAttributeEntry* _##C::nextAttributeTable(ADAttributeEntry* previous) {                               \
        if (!previous) return attributeTable();                                                            \
        if (previous == table) return _KVPart::attributeTable();                                           \
        return _KVPart::nextAttributeTable(previous);                                                      \
    }                                                                                                      \
    ADAttributeEntry _##C::table[] = {KR_DICTIONARY_ROWS_OF(C, ROLES){}};

#define KR_DICTIONARY_ROWS_OF(C, ROLES) KR_DICTIONARY_ROWS_WITH(_##C, ROLES)
#define KR_DICTIONARY_ROWS_WITH(SELF, ROLES) ROLES(KR_DICTIONARY_ROW_##SELF)

// Each class's rows need its own implementation type in the getter.
#define KR_DICTIONARY_ROW__DSDataItem(r, o, l, i, f) KR_DICTIONARY_ROW_T(_DSDataItem, r, o, l, i, f)
#define KR_DICTIONARY_ROW__DSDataStructure(r, o, l, i, f) KR_DICTIONARY_ROW_T(_DSDataStructure, r, o, l, i, f)
#define KR_DICTIONARY_ROW__DSDataStructureAlias(r, o, l, i, f) KR_DICTIONARY_ROW_T(_DSDataStructureAlias, r, o, l, i, f)
#define KR_DICTIONARY_ROW__DSSDDAlias(r, o, l, i, f) KR_DICTIONARY_ROW_T(_DSSDDAlias, r, o, l, i, f)
#define KR_DICTIONARY_ROW_T(SELF, R, OTHER, LINK, INVERSE, FLAGS)                                           \
    {#R, #INVERSE, #OTHER, 4, #LINK, ADGetter{.role = static_cast<DSModelCollection* (_ADObject::*)()>(&SELF::_get_##R)}, \
     ADSetter{}, 0, FLAGS},

#define KR_DEFINE_ONE(C, SUPER, ROLES) KR_DEFINE_DICTIONARY_CLASS(C, SUPER, ROLES)
KR_DICTIONARY_CLASSES(KR_DEFINE_ONE)

DSDataElementAlias::DSDataElementAlias(const char* context, const char* objID, int instantiate) {
    adopt(adAcquire<_DSDataElementAlias>("DSDataElementAlias", context, objID, instantiate));
}
DSDataElementAlias::DSDataElementAlias(_DSDataElementAlias* impl) noexcept : DSSDDAlias(impl) {}
_DSDataElementAlias::_DSDataElementAlias(const char* context, const char* objID, int instantiate)
    : _DSSDDAlias(context, objID, instantiate) {}
_DSDataElementAlias::~_DSDataElementAlias() { releaseLastHandle(); }
const char* _DSDataElementAlias::whoAmI() { return "DSDataElementAlias"; }
ADObject* _DSDataElementAlias::createNewHandle() { return new (std::nothrow) DSDataElementAlias(this); }
int _DSDataElementAlias::isKindOf(const char* className) {
    if (className && std::strcmp(className, "DSDataElementAlias") == 0) return 1;
    return _DSSDDAlias::isKindOf(className);
}
ADAttributeEntry* _DSDataElementAlias::attributeTable() { return table; }
ADAttributeEntry* _DSDataElementAlias::nextAttributeTable(ADAttributeEntry* previous) {
    if (!previous) return attributeTable();
    if (previous == table) return _DSSDDAlias::table;
    return _DSSDDAlias::nextAttributeTable(previous);
}
ADAttributeEntry _DSDataElementAlias::table[] = {{}};

namespace {
ADObject* platformFactory(const char* className, const char* context, const char* objID) {
#define KR_MAKE(C, SUPER, ROLES) \
    if (std::strcmp(className, #C) == 0) return new (std::nothrow) C(context, objID, 1);
    if (!className) return nullptr;
    KR_DICTIONARY_CLASSES(KR_MAKE)
    KR_MAKE(DSDataElementAlias, DSSDDAlias, )
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
    KR_CLASS_ROW(DSDataElementAlias, DSSDDAlias, )
#undef KR_CLASS_ROW
    {nullptr, nullptr, nullptr},
};

DSRegistration platformRegistration(platformFactory, platformClasses, "krmrscli");
}  // namespace

// DSLinks.cpp — every link class's catalogue record, constructors and, for the
// links without attributes of their own, the attribute table of its two ends.
#include <krmwtarn/model/links/DSLinks.h>

#include <cstring>
#include <new>

#define KR_LINK_COMMON(C, S, SR, T, TR, SF, TF)                                                                   \
    const KRLinkInfo KR_IMPL(C)::krInfo = {                                                                       \
        kr::LinkRow<C>::facts,                                                                                    \
        "_" #C,                                                                                                   \
        {[](_ADObject* o) {                                                                                       \
             return kr::roleAt<C, krSource>(static_cast<KR_IMPL(S)*>(o), [](auto* i) { return i->_get_##SR(); }); \
         },                                                                                                       \
         [](_ADObject* o) {                                                                                       \
             return kr::roleAt<C, krTarget>(static_cast<KR_IMPL(T)*>(o), [](auto* i) { return i->_get_##TR(); }); \
         }},                                                                                                      \
        KR_IMPL(C)::krTable,                                                                                      \
        [](_ADObject* impl) -> ADObject* { return new (std::nothrow) C(static_cast<KR_IMPL(C)*>(impl)); }};       \
    std::int32_t KR_IMPL(C)::krEndWords[2] = {};                                                                  \
    KR_IMPL(C)::KR_IMPL(C)(const char* context, const char* objID) : KRLinkImpl(context, objID) {}                \
    KR_IMPL(C)::~KR_IMPL(C)() { releaseLastHandle(); }                                                            \
    const KRLinkInfo& KR_IMPL(C)::linkInfo() const noexcept { return krInfo; }                                    \
    C::C(S* source, T* target, int check) {                                                                       \
        if (check)                                                                                                \
            ADObject::operator=(                                                                                  \
                _KRLink::create(KR_IMPL(C)::krInfo, &kr::makeLink<KR_IMPL(C)>, source, target, nullptr, false));  \
    }                                                                                                             \
    void C::createAfter(S* source, T* target, C* after, int check) {                                              \
        if (check)                                                                                                \
            ADObject::operator=(                                                                                  \
                _KRLink::create(KR_IMPL(C)::krInfo, &kr::makeLink<KR_IMPL(C)>, source, target, after, true));     \
    }                                                                                                             \
    C::C(const char* context, const char* objID, int instantiate) : ADLink(context, objID, 0) {                   \
        adopt(adAcquire<KR_IMPL(C)>(#C, context, objID, instantiate));                                            \
    }                                                                                                             \
    C::C(KR_IMPL(C) * impl) noexcept : ADLink(impl) {}

// A link without attributes of its own: its table is its two end rows.
#define KR_LINK_TABLE(C, ...) \
    ADAttributeEntry KR_IMPL(C)::krTable[] = {kr::endRow<C>(krSource), kr::endRow<C>(krTarget), ADAttributeEntry{}};

#define KR_LINK(...) KR_LINK_TABLE(__VA_ARGS__) KR_LINK_COMMON(__VA_ARGS__)
#define KR_LINK_OPS(...) KR_LINK_TABLE(__VA_ARGS__) KR_LINK_COMMON(__VA_ARGS__)
#define KR_LINK_ROWS(...) KR_LINK_COMMON(__VA_ARGS__)
#include <krmwtarn/model/links/links.def>

// The dictionary's link from a data item to its type definition, by the same
// pattern; its ends and roles are its row of DictionaryLinks.def.
KR_LINK_TABLE(DSLinkDataItm2DataDef)
KR_LINK_COMMON(DSLinkDataItm2DataDef, DSDataItem, dataDef, DSSimpleTypeDef, dataItems, 0, 0)

namespace {
_classStruct madeLinks[] = {
    {"DSLinkDataItm2DataDef", "ADLink", _DSLinkDataItm2DataDef::krTable},
    {nullptr, nullptr, nullptr},
};
ADObject* makeDictionaryLink(const char* className, const char* context, const char* objID) {
    if (className && std::strcmp(className, "DSLinkDataItm2DataDef") == 0)
        return new (std::nothrow) DSLinkDataItm2DataDef(context, objID, 1);
    return nullptr;
}
[[maybe_unused]] DSRegistration& registeredAtLoad = DSDictionary_madeLinks();
}  // namespace

DSRegistration& DSDictionary_madeLinks() {
    static DSRegistration record(makeDictionaryLink, madeLinks, "krmwsdd-links");
    return record;
}

DSmacro& _DSIndex::writeINDEX() { return DSmacro::empty(); }
DSmacro& _DSIndex::writeLCHILD() { return DSmacro::empty(); }

// Registration.cpp — the class table and the factory, both expanded from the
// class list classes.def and the link catalogue links.def, and the description
// of the roles the catalogue's links join on data-dictionary classes. The
// factory finds a class by the registrar's hash of its name in a table sorted
// at compile time.
#include "model/framework/Registration.h"

#include "model/links/DSLinks.h"

#include <algorithm>
#include <array>
#include <new>

const char* const ewswtarnComponentName = "ewswtarn";

_classStruct ewswtarnClassTable[] = {
#define KR_OBJECT_CLASS(C, SUPER) {#C, #SUPER, KR_IMPL(C)::krTable},
#include "model/framework/classes.def"
#define KR_LINK(C, ...) {#C, "ADLink", KR_IMPL(C)::krTable},
#include "model/links/links.def"
    {nullptr, nullptr, nullptr},
};

namespace {
// The same hash as DSRegistrar::hashFn, at compile time.
constexpr unsigned long classHash(const char* name) {
    unsigned long h = 0;
    for (; *name; ++name) h = (h * 32 + static_cast<unsigned char>(*name)) % 1000003UL;
    return h;
}

struct FactoryEntry {
    unsigned long hash;
    ADObject* (*make)(const char* context, const char* objID);
};

template <class H>
ADObject* make(const char* context, const char* objID) {
    return new (std::nothrow) H(context, objID, 1);
}

constexpr auto sortedEntries() {
    std::array<FactoryEntry, ewswtarnClassCount> e{{
#define KR_OBJECT_CLASS(C, SUPER) {classHash(#C), &make<C>},
#include "model/framework/classes.def"
#define KR_LINK(C, ...) {classHash(#C), &make<C>},
#include "model/links/links.def"
    }};
    std::sort(e.begin(), e.end(), [](const FactoryEntry& a, const FactoryEntry& b) { return a.hash < b.hash; });
    return e;
}

constexpr auto entries = sortedEntries();

constexpr bool distinctHashes() {
    for (size_t i = 1; i < entries.size(); ++i)
        if (entries[i - 1].hash == entries[i].hash) return false;
    return true;
}
static_assert(distinctHashes(), "two class names share a hash: the factory could not tell them apart");
}  // namespace

ADObject* ewswtarnFactory(const char* className, const char* context, const char* objID) {
    unsigned long h = DSRegistrar::hashFn(className);
    auto it = std::lower_bound(entries.begin(), entries.end(), h,
                               [](const FactoryEntry& e, unsigned long v) { return e.hash < v; });
    if (it == entries.end() || it->hash != h) return nullptr;
    return it->make(context, objID);
}

namespace {
// The roles that this catalogue's links join on classes of another component
// (the data dictionary's): that component states each such row by its name
// and getter only (adForeignRoleRow) and numbers it krRow_ and the role, so a
// link naming a role the class does not leave to others does not compile.
// The rest of the row comes from the link's row here, once, when the library
// loads (the dictionary's own load writes only the rows' getters).
template <class L, int End, class Impl>
void describeForeignRole([[maybe_unused]] int row) {
    using E = kr::EndClass<L, End>;
    if constexpr (!kr::isObjectClass<E> && !kr::isLinkClass<E>)
        adDescribeRole(Impl::table[row], kr::LinkRow<L>::facts, End);
}

bool describeForeignRoles() {
#define KR_LINK(C, S, SR, T, TR, SF, TF)                                  \
    describeForeignRole<C, krSource, KR_IMPL(S)>(KR_IMPL(S)::krRow_##SR); \
    describeForeignRole<C, krTarget, KR_IMPL(T)>(KR_IMPL(T)::krRow_##TR);
#include "model/links/links.def"
    return true;
}

[[maybe_unused]] const bool foreignRolesDescribed = describeForeignRoles();

struct LinkMaker {
    const char* name;
    const KRLinkInfo* info;
    _KRLink* (*make)(const char* context);
};
const LinkMaker linkMakers[] = {
#define KR_LINK(C, ...) {#C, &KR_IMPL(C)::krInfo, &kr::makeLink<KR_IMPL(C)>},
#include "model/links/links.def"
};
}  // namespace

ADLink* ewswtarnCreateLink(const char* linkClass, ADObject* source, ADObject* target, ADObject* after,
                           bool placeAfter) {
    if (!linkClass) return nullptr;
    for (const LinkMaker& m : linkMakers) {
        if (std::strcmp(m.name, linkClass) != 0) continue;
        if (placeAfter && !m.info->ordered()) return nullptr;
        ADObject made = _KRLink::create(*m.info, m.make, source, target, after, placeAfter);
        return new ADLink(made.impl());
    }
    return nullptr;
}

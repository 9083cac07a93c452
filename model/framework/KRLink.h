// KRLink.h — the link pattern, written once. _KRLink holds every algorithm of a
// link (creation with the duplicate test, end setters with class, version and
// controller tests, ordered insertion, re-ordering, detaching, change flags);
// KRLinkImpl adds the typed ends. A link class is its catalogue row in
// links.def (kr::LinkRow, and KRLinkInfo built from it), from which the checks
// follow: the controller test sits on the setter opposite the controlling end,
// the one-to-one trace on both setters of a one-to-one link, ordering on a
// source row flagged 0x10000.
#pragma once

#include "model/framework/Catalogue.h"
#include "model/framework/KRAttributes.h"
#include "platform/repository/ADIdentity.h"
#include "platform/repository/ADLink.h"

#include <type_traits>
#include <utility>

class KVException;

// A link class's catalogue facts (name, end classes, roles and flags) and
// what its algorithms reach through them.
struct KRLinkInfo : ADLinkFacts {
    const char* implName;  // "_DSBasedOn"
    // The role collection of this link class on an object at each end.
    DSModelCollection* (*role[2])(_ADObject*);
    ADAttributeEntry* table;
    ADObject* (*makeHandle)(_ADObject*);

    bool ordered() const noexcept { return (endFlags[krSource] & adFlagOrdered) != 0; }
    bool controlling(int end) const noexcept { return (endFlags[end] & adFlagControlling) != 0; }
    bool oneToOne() const noexcept { return (endFlags[krSource] & adFlagOneToOne) != 0; }
    // The setter of `end` makes the controller test when the other end controls.
    bool controllerTest(int end) const noexcept { return controlling(1 - end); }
};

class _KRLink : public _ADLink {
public:
    _KRLink(const char* context, const char* objID);

    virtual const KRLinkInfo& linkInfo() const noexcept = 0;
    virtual ADObject& endSlot(int end) noexcept = 0;

    const char* whoAmI() override;
    ADObject* createNewHandle() override;
    int isKindOf(const char* className) override;
    ADAttributeEntry* attributeTable() override;
    ADAttributeEntry* nextAttributeTable(ADAttributeEntry* previous) override;
    unsigned long getChangeFlag(const char* name) override;
    unsigned long setChangeBit(const char* name, omSetProcessing how) override;
    // Deleting a link takes it out of both ends' roles first.
    void markDeleted(DSModelCollection* deleted, int flags) override;

    virtual const char* _get_sourceAttribute();
    virtual const char* _get_targetAttribute();
    ADObject* getSource() override;
    ADObject* getTarget() override;
    int sourceIsControlling() override;
    int targetIsControlling() override;

    // Untyped ends, for the attribute table and generic callers; the typed
    // accessors of each class forward to these.
    ADObject* _get_source() { return &endSlot(krSource); }
    ADObject* _get_target() { return &endSlot(krTarget); }
    void _set_source(ADObject* newSource, omSetProcessing how) { setEnd(krSource, newSource, how); }
    void _set_target(ADObject* newTarget, omSetProcessing how) { setEnd(krTarget, newTarget, how); }

    // Set one end: class test, keep-changed test, version test, same-end
    // shortcut, controller test where marked, detach, store, append, one-to-one
    // trace where marked, end change bit, notification.
    void setEnd(int end, ADObject* newEnd, omSetProcessing how);
    // Ordered links: set the source and place this link behind `after` in the
    // source's role (first for null). No class or version test.
    void setSourceAfter(ADObject* newSource, const ADObject* after, omSetProcessing how);
    // Ordered links: move this link behind `after` within its source's role.
    void moveAfterInSource(const ADObject* after, omSetProcessing how);

    // Creation from two ends (duplicate test, made in the source's version);
    // answers the first handle on the new link.
    static ADObject create(const KRLinkInfo& info, _KRLink* (*make)(const char* context), ADObject* source,
                           ADObject* target, const ADObject* after, bool placeAfter);

protected:
    // Take this link out of the role of one end and empty that end.
    virtual int remove_source();
    virtual int remove_target();
    int removeEnd(int end);
};

// Typed ends of the link class with handle class H: its source and target
// classes, and ordering, are its row of links.def.
template <class H>
class KRLinkImpl : public _KRLink {
    using S = typename kr::LinkRow<H>::Source;
    using T = typename kr::LinkRow<H>::Target;

public:
    using _KRLink::_KRLink;

    S* _get_source() noexcept { return &source; }
    T* _get_target() noexcept { return &target; }
    void _set_source(S* newSource, omSetProcessing how) { setEnd(krSource, newSource, how); }
    void _set_target(T* newTarget, omSetProcessing how) { setEnd(krTarget, newTarget, how); }
    void _set_sourceAfter(S* newSource, H* after, omSetProcessing how)
        requires kr::LinkRow<H>::ordered
    {
        setSourceAfter(newSource, after, how);
    }
    void moveTargetAfter(H* after, omSetProcessing how)
        requires kr::LinkRow<H>::ordered
    {
        moveAfterInSource(after, how);
    }

    ADObject& endSlot(int end) noexcept override {
        return end == krSource ? static_cast<ADObject&>(source) : static_cast<ADObject&>(target);
    }

    S source;
    T target;
};

namespace kr {
// The object at the far end of a link handle taken from a role, typed by the
// link class: its target when the role's object is the source, else its source.
template <class LinkImpl, bool AtSource>
auto farEnd(ADObject* link) noexcept {
    using R = decltype(std::declval<LinkImpl&>()._get_target());
    using L = decltype(std::declval<LinkImpl&>()._get_source());
    using Far = std::conditional_t<AtSource, R, L>;
    if (!link || link->isEmpty()) return static_cast<Far>(nullptr);
    auto* l = static_cast<LinkImpl*>(link->impl());
    if constexpr (AtSource)
        return l->_get_target();
    else
        return l->_get_source();
}
}  // namespace kr

namespace kr {
template <class Impl>
_KRLink* makeLink(const char* context) {
    return new (std::nothrow) Impl(context, ADObject::defaultObjID());
}

// The role collection of link class L on an object at end End: the member
// that the end class's role row for exactly this link and end declares
// (found by its tag, not by name). A class outside the catalogues (a data
// dictionary class) is reached by the role's name, through `byName`.
template <class L, int End, class Impl, class ByName>
DSModelCollection* roleAt(Impl* object, ByName byName) {
    using E = EndClass<L, End>;
    if constexpr (isObjectClass<E> || isLinkClass<E>) {
        static_assert(requires { object->krRole(EndTag<L, End>{}); },
                      "links.def names a role at this end that the end class's row list lacks");
        return object->krRole(EndTag<L, End>{});
    } else {
        return byName(object);
    }
}

// The "source" or "target" row that opens the table of link class C.
template <class C>
constexpr ADAttributeEntry endRow(int end) {
    using Impl = typename LinkRow<C>::Impl;
    return adEndRow(
        LinkRow<C>::facts, end, &Impl::krEndWords[end],
        ADGetter{.end = end == krSource ? static_cast<ADObject* (_ADObject::*)()>(&_KRLink::_get_source)
                                        : static_cast<ADObject* (_ADObject::*)()>(&_KRLink::_get_target)},
        ADSetter{.end = end == krSource
                            ? static_cast<void (_ADObject::*)(ADObject*, omSetProcessing)>(&_KRLink::_set_source)
                            : static_cast<void (_ADObject::*)(ADObject*, omSetProcessing)>(&_KRLink::_set_target)});
}
}  // namespace kr

// Declarations a link class expands to. A handle class C with its creating
// constructors (the ordered one only where the source row is ordered), and the
// members every link implementation declares.
#define KR_DECLARE_LINK_HANDLE(C, S, T)                                                        \
    class C : public ADLink {                                                                   \
    public:                                                                                     \
        static constexpr bool ordered = kr::LinkRow<C>::ordered;                                \
        C() noexcept = default;                                                                 \
        C(S* source, T* target, int check);                                                     \
        template <bool O = ordered>                                                             \
            requires O                                                                          \
        C(S* source, T* target, C* after, int check) {                                          \
            createAfter(source, target, after, check);                                          \
        }                                                                                       \
        C(const char* context, const char* objID, int instantiate);                             \
        explicit C(KR_IMPL(C) * impl) noexcept;                                                 \
        KR_IMPL(C) * operator->() const noexcept;                                               \
                                                                                                \
    private:                                                                                    \
        void createAfter(S* source, T* target, C* after, int check);                            \
    };

#define KR_LINK_IMPL_MEMBERS(C)                                                                 \
private:                                                                                        \
    using krBase = _KRLink;                                                                     \
                                                                                                \
public:                                                                                         \
    explicit KR_IMPL(C)(const char* context, const char* objID);                                \
    ~KR_IMPL(C)() override;                                                                     \
    const KRLinkInfo& linkInfo() const noexcept override;                                       \
    static const KRLinkInfo krInfo;                                                             \
    static std::int32_t krEndWords[2];

#define KR_DECLARE_LINK_IMPL(C)                                                                 \
    class KR_IMPL(C) final : public KRLinkImpl<C> {                                             \
        KR_LINK_IMPL_MEMBERS(C)                                                                 \
        static ADAttributeEntry krTable[];                                                      \
    };

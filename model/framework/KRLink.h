// KRLink.h — the link pattern, written once. _KRLink holds every algorithm of a
// link (creation with the duplicate test, end setters with class, version and
// controller tests, ordered insertion, re-ordering, detaching, change flags);
// KRLinkImpl adds the typed ends. A link class is its catalogue row
// (KRLinkInfo), from which the checks follow: the controller test sits on the
// setter opposite the controlling end, the one-to-one trace on both setters of
// a one-to-one link, ordering on a source row flagged 0x10000.
#pragma once

#include "model/framework/KRAttributes.h"
#include "platform/repository/ADIdentity.h"
#include "platform/repository/ADLink.h"

#include <type_traits>
#include <utility>

class KVException;

enum KREnd : int { krSource = 0, krTarget = 1 };

struct KRLinkInfo {
    const char* name;      // "DSBasedOn"
    const char* implName;  // "_DSBasedOn"
    const char* endClass[2];
    const char* endRole[2];
    std::uint32_t endFlags[2];
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

// Typed ends of a link class with handle class H, source S and target T.
template <class H, class S, class T, bool Ordered>
class KRLinkImpl : public _KRLink {
public:
    using _KRLink::_KRLink;

    S* _get_source() noexcept { return &source; }
    T* _get_target() noexcept { return &target; }
    void _set_source(S* newSource, omSetProcessing how) { setEnd(krSource, newSource, how); }
    void _set_target(T* newTarget, omSetProcessing how) { setEnd(krTarget, newTarget, how); }
    void _set_sourceAfter(S* newSource, H* after, omSetProcessing how)
        requires Ordered
    {
        setSourceAfter(newSource, after, how);
    }
    void moveTargetAfter(H* after, omSetProcessing how)
        requires Ordered
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

// The "source" or "target" row that opens a link class's table.
constexpr ADAttributeEntry endRow(int end, const char* role, const char* endClass, const void* word,
                                  std::uint32_t flags) {
    return ADAttributeEntry{
        end == krSource ? "source" : "target",
        role,
        endClass,
        4,
        word,
        ADGetter{.end = end == krSource ? static_cast<ADObject* (_ADObject::*)()>(&_KRLink::_get_source)
                                        : static_cast<ADObject* (_ADObject::*)()>(&_KRLink::_get_target)},
        ADSetter{.end = end == krSource
                            ? static_cast<void (_ADObject::*)(ADObject*, omSetProcessing)>(&_KRLink::_set_source)
                            : static_cast<void (_ADObject::*)(ADObject*, omSetProcessing)>(&_KRLink::_set_target)},
        0,
        flags};
}
}  // namespace kr

// Declarations a link class expands to. A handle class C with its creating
// constructors (the ordered one only where the source row is ordered), and the
// members every link implementation declares.
#define KR_DECLARE_LINK_HANDLE(C, S, T, SF)                                                    \
    class KR_IMPL(C);                                                                           \
    class C : public ADLink {                                                                   \
    public:                                                                                     \
        static constexpr bool ordered = ((SF)&adFlagOrdered) != 0;                              \
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
public:                                                                                         \
    explicit KR_IMPL(C)(const char* context, const char* objID);                                \
    ~KR_IMPL(C)() override;                                                                     \
    const KRLinkInfo& linkInfo() const noexcept override;                                       \
    static const KRLinkInfo krInfo;                                                             \
    static std::int32_t krEndWords[2];

#define KR_DECLARE_LINK_IMPL(C, S, T)                                                           \
    class KR_IMPL(C) final : public KRLinkImpl<C, S, T, C::ordered> {                           \
        KR_LINK_IMPL_MEMBERS(C)                                                                 \
        static ADAttributeEntry krTable[];                                                      \
    };

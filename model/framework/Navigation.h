// Navigation.h — walking the model with types for the layers above it: isa,
// cast and dyn_cast over the implementation classes (in the manner of LLVM's
// Casting.h, resting on the classes' own RTTI rather than on name strings),
// and a role as a range of the objects at its links' far ends, typed by the
// link class of the role.
#pragma once

#include <krmwtarn/model/framework/Catalogue.h>
#include <krmwtarn/platform/repository/ADObject.h>
#include <krmwtarn/platform/repository/DSModelCollection.h>

#include <cassert>
#include <type_traits>
#include <vector>

namespace kr {

// Whether `o` is a `To` (an implementation class or one of its bases).
template <class To, class From>
bool isa(From* o) noexcept {
    return o && dynamic_cast<const To*>(o) != nullptr;
}
// `o` as the `To` it is known to be.
template <class To, class From>
To* cast(From* o) noexcept {
    assert(isa<To>(o) && "cast to a class the object is not");
    return static_cast<To*>(o);
}
// `o` as a `To`, or null when it is none (or null).
template <class To, class From>
To* dyn_cast(From* o) noexcept {
    return o ? dynamic_cast<To*>(o) : nullptr;
}

// The implementation class behind a handle class.
template <class Handle>
using ImplOf = std::remove_pointer_t<decltype(std::declval<Handle&>().operator->())>;

// The objects at the far ends of a role's links: the role of an object that
// stands at end `End` of link class `Link` (krSource: its targets; krTarget:
// its sources), each as the far end's implementation class. An end left
// empty is passed over.
template <class Link, int End>
class FarEnds {
public:
    using Far = ImplOf<EndClass<Link, End == krSource ? krTarget : krSource>>;

    explicit FarEnds(DSModelCollection* role) noexcept : role_(role) {}

    class iterator {
    public:
        iterator(const ADObject* at, const ADObject* end) noexcept : at_(at), end_(end) { skipEmpty(); }
        Far* operator*() const noexcept { return far(*at_); }
        iterator& operator++() noexcept {
            ++at_;
            skipEmpty();
            return *this;
        }
        bool operator!=(const iterator& other) const noexcept { return at_ != other.at_; }

    private:
        static Far* far(const ADObject& link) noexcept {
            auto* l = static_cast<ImplOf<Link>*>(link.impl());
            ADObject* slot =
                End == krSource ? static_cast<ADObject*>(l->_get_target()) : static_cast<ADObject*>(l->_get_source());
            return slot->isEmpty() ? nullptr : static_cast<Far*>(slot->impl());
        }
        void skipEmpty() noexcept {
            while (at_ != end_ && (at_->isEmpty() || !far(*at_))) ++at_;
        }
        const ADObject* at_;
        const ADObject* end_;
    };

    iterator begin() const noexcept {
        return role_ ? iterator(role_->begin(), role_->end()) : iterator(nullptr, nullptr);
    }
    iterator end() const noexcept { return role_ ? iterator(role_->end(), role_->end()) : iterator(nullptr, nullptr); }
    bool empty() const noexcept { return !(begin() != end()); }
    // The first far end, or null.
    Far* first() const noexcept { return empty() ? nullptr : *begin(); }

private:
    DSModelCollection* role_;
};

// A role's links themselves, as their class (for a link's own attributes).
template <class Link>
class Links {
public:
    explicit Links(DSModelCollection* role) noexcept : role_(role) {}
    class iterator {
    public:
        explicit iterator(const ADObject* at) noexcept : at_(at) {}
        ImplOf<Link>* operator*() const noexcept { return cast<ImplOf<Link>>(at_->impl()); }
        iterator& operator++() noexcept {
            ++at_;
            return *this;
        }
        bool operator!=(const iterator& other) const noexcept { return at_ != other.at_; }

    private:
        const ADObject* at_;
    };
    iterator begin() const noexcept { return iterator(role_ ? role_->begin() : nullptr); }
    iterator end() const noexcept { return iterator(role_ ? role_->end() : nullptr); }

private:
    DSModelCollection* role_;
};
template <class Link>
Links<Link> linksOf(DSModelCollection* role) noexcept {
    return Links<Link>(role);
}

// The objects of a range gathered, for counting and searching.
template <class Range>
auto collect(const Range& range) {
    std::vector<std::remove_reference_t<decltype(*range.begin())>> out;
    for (auto* o : range) out.push_back(o);
    return out;
}

// The object at an end of a link in hand (`link->_get_target()`), typed as
// the end's class; null when that end is not set.
template <class Handle>
auto* endOf(Handle* end) noexcept {
    return end->operator->();
}

// The targets of a role held at the source end of `Link`, and the sources of
// one held at its target end.
template <class Link>
FarEnds<Link, krSource> targetsOf(DSModelCollection* role) noexcept {
    return FarEnds<Link, krSource>(role);
}
template <class Link>
FarEnds<Link, krTarget> sourcesOf(DSModelCollection* role) noexcept {
    return FarEnds<Link, krTarget>(role);
}

}  // namespace kr

// Catalogue.h — the class list classes.def and the link catalogue links.def as
// compile-time facts: every class they name declared, each object class's
// superclass, each link class's ends (classes, roles, flags), and the counts.
// Every class header, role row, link table and registration reads these, so a
// superclass or a link is stated once, in its row.
#pragma once

#include "platform/repository/ADAttributeEntry.h"

#include <iterator>
#include <string_view>
#include <type_traits>

class ADObject;
class _ADObject;
class DSTechnologyObject;
class _DSTechnologyObject;

// Every class the two lists name: handle and implementation.
#define KR_OBJECT_CLASS(C, SUPER) \
    class C;                      \
    class _##C;
#include "model/framework/classes.def"
#define KR_LINK(C, S, SR, T, TR, SF, TF) \
    class C;                             \
    class _##C;                          \
    class S;                             \
    class _##S;                          \
    class T;                             \
    class _##T;
#include "model/links/links.def"

enum KREnd : int { krSource = adSource, krTarget = adTarget };

namespace kr {

// An object class's row of classes.def (empty for any other class).
template <class C>
struct ClassRow {};
#define KR_OBJECT_CLASS(C, SUPER)   \
    template <>                     \
    struct ClassRow<C> {            \
        using SuperHandle = SUPER;  \
        using SuperImpl = _##SUPER; \
    };
#include "model/framework/classes.def"

// The superclass of an object class, as handle and as implementation.
template <class C>
using SuperHandle = typename ClassRow<C>::SuperHandle;
template <class C>
using SuperImpl = typename ClassRow<C>::SuperImpl;

// A link class's row of links.def (empty for any other class).
template <class L>
struct LinkRow {};
#define KR_LINK(C, S, SR, T, TR, SF, TF)                                        \
    template <>                                                                 \
    struct LinkRow<C> {                                                         \
        using Impl = _##C;                                                      \
        using Source = S;                                                       \
        using Target = T;                                                       \
        static constexpr ADLinkFacts facts{#C, {#S, #T}, {#SR, #TR}, {SF, TF}}; \
        static constexpr bool ordered = ((SF)&adFlagOrdered) != 0;              \
        static_assert(adLinkWellFormed(facts), #C                               \
                      " in links.def: end rows flagged 0x1 and 0x5, "           \
                      "two role names, only the source ordered, at most "       \
                      "one end controlling, mirrored cardinalities");           \
    };
#include "model/links/links.def"

template <class L, int End>
using EndClass = std::conditional_t<End == krSource, typename LinkRow<L>::Source, typename LinkRow<L>::Target>;

// The end of link class L at which an object holds the role named `role`; -1
// when the catalogue names it at neither end.
template <class L>
constexpr int endOfRole(std::string_view role) noexcept {
    return adEndOfRole(LinkRow<L>::facts, role);
}

// Names one end of one link class, so that an end class's accessor for that
// end's role is found by overload, not by role name.
template <class L, int End>
struct EndTag {};

// The class at the other end from `End`.
template <class L, int End>
using FarClass = EndClass<L, 1 - End>;

template <class C, class = void>
constexpr bool isObjectClass = false;
template <class C>
constexpr bool isObjectClass<C, std::void_t<typename ClassRow<C>::SuperHandle>> = true;
template <class C, class = void>
constexpr bool isLinkClass = false;
template <class C>
constexpr bool isLinkClass<C, std::void_t<typename LinkRow<C>::Impl>> = true;

// No two link ends put a role of one name on one class: each role row joins
// one end of one link.
constexpr bool endsHoldDistinctRoles() noexcept {
    const ADLinkFacts links[] = {
#define KR_LINK(C, ...) LinkRow<C>::facts,
#include "model/links/links.def"
    };
    constexpr int ends = 2 * static_cast<int>(std::size(links));
    for (int a = 0; a < ends; ++a)
        for (int b = a + 1; b < ends; ++b)
            if (std::string_view(links[a / 2].endClass[a % 2]) == links[b / 2].endClass[b % 2] &&
                std::string_view(links[a / 2].endRole[a % 2]) == links[b / 2].endRole[b % 2])
                return false;
    return true;
}
static_assert(endsHoldDistinctRoles(), "links.def puts one role name on one class at two link ends");

constexpr int objectClassCount = 0
#define KR_OBJECT_CLASS(C, SUPER) +1
#include "model/framework/classes.def"
    ;
constexpr int linkClassCount = 0
#define KR_LINK(...) +1
#include "model/links/links.def"
    ;

}  // namespace kr

// ViewRows.h — the declarative form of this library's view trees. A tree is an
// outline: one row per element, in list order, each with its nesting level (0
// for the root list), so a row reads like a line of the view catalogue. A row may
// splice in a shared fragment at a deeper level. Each view's rows are flattened
// at compile time; ViewTreeBuilder turns the flat rows into records.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

class DLLViewType;

namespace viewrows {

enum class Kind : std::uint8_t {
    Attribute,   // name [as alias]
    Role,        // name → nested list of class `listClass` (the rows one level deeper)
    Delegation,  // name (adTarget/adSource), described by the view type in `*view`, flag 1
    Fragment,    // the rows of `fragment`, one level deeper than their own levels say
};

struct Row {
    std::uint8_t level;
    Kind kind;
    const char* name;
    const char* alias;
    const char* listClass;
    DLLViewType* const* view;
    const Row* fragment;
    std::uint16_t fragmentSize;
};

// A row of a flattened tree: levels are absolute, fragments are spliced in.
struct FlatRow {
    std::uint8_t level;
    Kind kind;
    const char* name;
    const char* alias;
    const char* listClass;
    DLLViewType* const* view;
};

constexpr Row attr(int level, const char* name, const char* alias = nullptr) {
    return {static_cast<std::uint8_t>(level), Kind::Attribute, name, alias, nullptr, nullptr, nullptr, 0};
}
constexpr Row role(int level, const char* name, const char* linkClass) {
    return {static_cast<std::uint8_t>(level), Kind::Role, name, nullptr, linkClass, nullptr, nullptr, 0};
}
// The object at the link's target or source end, described by a nested list.
constexpr Row target(int level, const char* className) { return role(level, "adTarget", className); }
constexpr Row source(int level, const char* className) { return role(level, "adSource", className); }
// The object at the link's target or source end, described by another view type.
// `view` is the address of that view type's variable, read when the tree is built.
constexpr Row targetView(int level, DLLViewType* const* view) {
    return {static_cast<std::uint8_t>(level), Kind::Delegation, "adTarget", nullptr, nullptr, view, nullptr, 0};
}
constexpr Row sourceView(int level, DLLViewType* const* view) {
    return {static_cast<std::uint8_t>(level), Kind::Delegation, "adSource", nullptr, nullptr, view, nullptr, 0};
}
template <std::size_t N>
constexpr Row use(int level, const Row (&fragment)[N]) {
    return {static_cast<std::uint8_t>(level), Kind::Fragment, nullptr, nullptr, nullptr, nullptr, fragment,
            static_cast<std::uint16_t>(N)};
}

constexpr std::size_t flatSize(const Row* rows, std::size_t n) {
    std::size_t total = 0;
    for (std::size_t i = 0; i < n; ++i)
        total += rows[i].kind == Kind::Fragment ? flatSize(rows[i].fragment, rows[i].fragmentSize) : 1;
    return total;
}
template <std::size_t N>
constexpr std::size_t flatSize(const Row (&rows)[N]) {
    return flatSize(rows, N);
}

constexpr void flattenInto(FlatRow* out, std::size_t& k, const Row* rows, std::size_t n, int offset) {
    for (std::size_t i = 0; i < n; ++i) {
        const Row& r = rows[i];
        if (r.kind == Kind::Fragment) {
            flattenInto(out, k, r.fragment, r.fragmentSize, offset + r.level);
        } else {
            out[k++] = {static_cast<std::uint8_t>(r.level + offset), r.kind, r.name, r.alias, r.listClass, r.view};
        }
    }
}

template <std::size_t Flat, std::size_t N>
constexpr std::array<FlatRow, Flat> flatten(const Row (&rows)[N]) {
    std::array<FlatRow, Flat> out{};
    std::size_t k = 0;
    flattenInto(out.data(), k, rows, N, 0);
    return out;
}

// An outline is well formed when it starts at level 0, never goes more than one
// level deeper from one row to the next, and only goes deeper below a role.
template <std::size_t Flat>
constexpr bool wellFormed(const std::array<FlatRow, Flat>& rows) {
    int previous = -1;
    bool previousIsRole = true;
    for (const FlatRow& r : rows) {
        if (r.level > previous + 1) return false;
        if (r.level == previous + 1 && !previousIsRole) return false;
        previous = r.level;
        previousIsRole = r.kind == Kind::Role;
    }
    return Flat > 0;
}

}  // namespace viewrows

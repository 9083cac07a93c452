// ViewRows.h — the declarative form of this library's view trees. A tree is an
// outline: one row per element, in list order, each with its nesting level (0
// for the root list), so a row reads like a line of the view catalogue. A role
// row names only the role: its link class is the one the class catalogue gives
// that role, looked up when the tree is built. Fragments are row arrays written
// from level 0 (plain constants, or functions whose parameters are the aliases
// or classes that differ between uses); `use` places one at a deeper level and
// `rows` joins rows and fragments into one flat array at compile time.
#pragma once

#include <krmwtarn/platform/common/Export.h>

#include <array>
#include <cstddef>
#include <cstdint>

class DLLViewType;

namespace viewrows {

enum class Kind : std::uint8_t {
    Attribute,   // name [as alias]
    Role,        // name → nested list of the role's link class (the rows one level deeper)
    End,         // adTarget/adSource → nested list of class `endClass` (the rows one level deeper)
    Delegation,  // adTarget/adSource, described by the view type in `*view`, flag 1
};

struct KRMWTARN_API Row {
    std::uint8_t level = 0;
    Kind kind = Kind::Attribute;
    const char* name = nullptr;
    const char* alias = nullptr;         // null: the client sees the value under its name
    const char* endClass = nullptr;      // End rows
    DLLViewType* const* view = nullptr;  // Delegation rows: the address of the view type's variable
};

constexpr Row attr(int level, const char* name, const char* alias = nullptr) {
    return {static_cast<std::uint8_t>(level), Kind::Attribute, name, alias, nullptr, nullptr};
}
constexpr Row role(int level, const char* name) {
    return {static_cast<std::uint8_t>(level), Kind::Role, name, nullptr, nullptr, nullptr};
}
// The object at the link's target or source end, described by a nested list.
constexpr Row target(int level, const char* className) {
    return {static_cast<std::uint8_t>(level), Kind::End, "adTarget", nullptr, className, nullptr};
}
constexpr Row source(int level, const char* className) {
    return {static_cast<std::uint8_t>(level), Kind::End, "adSource", nullptr, className, nullptr};
}
// The object at the link's target or source end, described by another view type,
// whose variable is read when the tree is built.
constexpr Row targetView(int level, DLLViewType* const* view) {
    return {static_cast<std::uint8_t>(level), Kind::Delegation, "adTarget", nullptr, nullptr, view};
}
constexpr Row sourceView(int level, DLLViewType* const* view) {
    return {static_cast<std::uint8_t>(level), Kind::Delegation, "adSource", nullptr, nullptr, view};
}

template <class Part>
struct RowCount;
template <>
struct RowCount<Row> {
    static constexpr std::size_t value = 1;
};
template <std::size_t N>
struct RowCount<std::array<Row, N>> {
    static constexpr std::size_t value = N;
};

template <std::size_t N>
constexpr void append(std::array<Row, N>& out, std::size_t& k, const Row& row) {
    out[k++] = row;
}
template <std::size_t N, std::size_t M>
constexpr void append(std::array<Row, N>& out, std::size_t& k, const std::array<Row, M>& part) {
    for (const Row& row : part) out[k++] = row;
}

// Rows and fragments, joined in order into one array.
template <class... Parts>
constexpr auto rows(const Parts&... parts) {
    std::array<Row, (RowCount<Parts>::value + ... + 0)> out{};
    [[maybe_unused]] std::size_t k = 0;
    (append(out, k, parts), ...);
    return out;
}

// A fragment placed `level` levels deeper than its own rows say.
template <std::size_t N>
constexpr std::array<Row, N> use(int level, std::array<Row, N> fragment) {
    for (Row& row : fragment) row.level = static_cast<std::uint8_t>(row.level + level);
    return fragment;
}

// An outline is well formed when it starts at level 0, never goes more than one
// level deeper from one row to the next, and only goes deeper below a role or
// an end.
template <std::size_t N>
constexpr bool wellFormed(const std::array<Row, N>& rows) {
    int previous = -1;
    bool previousNests = true;
    for (const Row& r : rows) {
        if (r.level > previous + 1) return false;
        if (r.level == previous + 1 && !previousNests) return false;
        previous = r.level;
        previousNests = r.kind == Kind::Role || r.kind == Kind::End;
    }
    return N > 0;
}

// A view's finished outline, as the tree files hand it to the registration.
struct KRMWTARN_API Outline {
    const Row* rows;
    std::size_t count;
};

}  // namespace viewrows

// Defines outline_NAME, declared extern before, from the row array NAME of the
// same namespace, checked at compile time.
#define EWSWTARN_OUTLINE(NAME)                                                                \
    static_assert(viewrows::wellFormed(NAME), "the outline of " #NAME " is not well formed"); \
    constinit const viewrows::Outline outline_##NAME = {NAME.data(), NAME.size()};

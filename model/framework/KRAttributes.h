// KRAttributes.h — the value types an attribute row may have, the one setter
// algorithm every attribute of every class uses (keep-changed test, store on
// change, then the setter tail shared with link ends: change bit on 4 and 8,
// never for a name attribute, and notification), the change-flag lookups and
// the typed builders of attribute and role rows.
#pragma once

#include <krmwtarn/platform/common/Export.h>

#include <krmwtarn/model/framework/Catalogue.h>
#include <krmwtarn/platform/repository/ADObject.h>
#include <krmwtarn/platform/repository/ADReflection.h>
#include <krmwtarn/platform/repository/ADSetRule.h>

#include <cstdint>
#include <cstdlib>
#include <cstring>

namespace kr {

// An owned, nul-terminated heap copy (null when unset).
class KRMWTARN_API OwnedString {
public:
    OwnedString() noexcept = default;
    OwnedString(const OwnedString&) = delete;
    OwnedString& operator=(const OwnedString&) = delete;
    ~OwnedString() { std::free(p_); }
    char* get() const noexcept { return p_; }
    bool equals(const char* v) const noexcept {
        if (!p_ || !v) return !p_ && !v;
        return std::strcmp(p_, v) == 0;
    }
    void assign(const char* v) {
        std::free(p_);
        p_ = v ? strdup(v) : nullptr;  // a failed copy stores null
    }

private:
    char* p_ = nullptr;
};

// Row type traits: a value type of ValueTypes.def (C++ value and argument
// types, type name, width, the union members of ADGetter/ADSetter that carry
// the accessors) with how an object stores its value.
template <class V>
struct ScalarType : V {
    using storage = typename V::value;
    static typename V::value read(const storage& s) noexcept { return s; }
    static bool equals(const storage& s, typename V::arg v) noexcept { return s == v; }
    static void assign(storage& s, typename V::arg v) noexcept { s = v; }
};

struct KRMWTARN_API boolean_t : ScalarType<adv::Boolean> {};
struct KRMWTARN_API short_t : ScalarType<adv::Short> {};
struct KRMWTARN_API ushort_t : ScalarType<adv::UShort> {};
struct KRMWTARN_API long_t : ScalarType<adv::Long> {};
struct KRMWTARN_API char_t : ScalarType<adv::Char> {};

struct KRMWTARN_API string_t : adv::String {
    using storage = OwnedString;
    static value read(const storage& s) noexcept { return s.get(); }
    static bool equals(const storage& s, arg v) noexcept { return s.equals(v); }
    static void assign(storage& s, arg v) { s.assign(v); }
};

inline bool bitSet(const unsigned char* bits, int row) noexcept { return (bits[row / 8] & (1u << (row % 8))) != 0; }
inline void setBit(unsigned char* bits, int row, bool on) noexcept {
    unsigned char mask = static_cast<unsigned char>(1u << (row % 8));
    bits[row / 8] = static_cast<unsigned char>(on ? (bits[row / 8] | mask) : (bits[row / 8] & ~mask));
}

// The tail of every setter, of an attribute or of a link end (ADSetRule.h).
template <class Mark>
void finishSet(_ADObject* self, omSetProcessing how, const char* name, Mark mark) {
    adFinishSet(self, how, name, mark);
}

// The setter rule of every attribute (ADSetRule.h). A name attribute (flag
// 0x80004) stores and notifies but never touches its own change bit.
template <class Tr>
void setAttribute(_ADObject* self, unsigned char* bits, int row, typename Tr::storage& slot, typename Tr::arg value,
                  omSetProcessing how, bool nameAttribute, const char* name) {
    adSetAttribute(
        self, how, bitSet(bits, row), name, [&] { return Tr::equals(slot, value); }, [&] { Tr::assign(slot, value); },
        [&](bool on) {
            if (!nameAttribute) setBit(bits, row, on);
        });
}

// The row of an own table whose name matches, in table order; -1 if none.
inline int ownRow(const ADAttributeEntry* rows, int count, const char* name) noexcept {
    if (!name) return -1;
    for (int i = 0; i < count; ++i)
        if (std::strcmp(rows[i].name, name) == 0) return i;
    return -1;
}

// getChangeFlag of a class with its own rows; `up` answers for the superclass.
template <class Up>
unsigned long changeFlag(_ADObject* self, const ADAttributeEntry* rows, int count, const unsigned char* bits,
                         const char* name, Up up) {
    if (!name) {
        if (self->status() & adStatusNew) return 1;
        if (self->status() & adStatusDeleted) return 8;
        for (int i = 0; i < (count + 7) / 8; ++i)
            if (bits[i]) return 4;
        return up(nullptr) ? 4 : 0;
    }
    int row = ownRow(rows, count, name);
    if (row < 0) return up(name);
    return bits[row / 8] & (1u << (row % 8));
}

// setChangeBit: exactly 8 clears, any other value sets; 1 for an own row.
template <class Up>
unsigned long changeBit(const ADAttributeEntry* rows, int count, unsigned char* bits, const char* name,
                        omSetProcessing how, Up up) {
    int row = ownRow(rows, count, name);
    if (row < 0) return up(name, how);
    setBit(bits, row, how != omClearChanged);
    return 1;
}

inline int isNamed(const char* asked, const char* own) noexcept { return asked && std::strcmp(asked, own) == 0; }

// The table row of an attribute of value type Tr (flags 0x4, or 0x80004 for
// the name attribute).
template <class Tr, class Impl>
constexpr ADAttributeEntry attributeRow(const char* name, typename Tr::value (Impl::*get)(),
                                        void (Impl::*set)(typename Tr::arg, omSetProcessing), const void* word,
                                        std::uint32_t flags) {
    return adAttributeRow(name, Tr::name, Tr::width, word, Tr::getter(static_cast<typename Tr::Getter>(get)),
                          Tr::setter(static_cast<typename Tr::Setter>(set)), flags);
}

// The table row of the role an object of Impl holds at end End of link class
// L: everything but the getter comes from the link's catalogue row.
template <class L, int End, class Impl>
constexpr ADAttributeEntry roleRow(DSModelCollection* (Impl::*get)()) {
    return adRoleRow(LinkRow<L>::facts, End, adRoleGetter(get));
}

}  // namespace kr

#define KR_CAT_(a, b) a##b
#define KR_CAT(a, b) KR_CAT_(a, b)
#define KR_STR_(a) #a
#define KR_STR(a) KR_STR_(a)
#define KR_IMPL(C) KR_CAT(_, C)

// DictionaryLinks.h — the data dictionary's own link catalogue
// (DictionaryLinks.def) as compile-time facts, and the lookups that the
// dictionary classes' role rows and the link classes' end rows are built from.
#pragma once

#include "platform/repository/ADAttributeEntry.h"

#include <string_view>

inline constexpr ADLinkFacts adDictionaryLinks[] = {
#define AD_DICTIONARY_LINK(C, S, SR, T, TR, SF, TF) {#C, {#S, #T}, {#SR, #TR}, {SF, TF}},
#include "platform/dictionary/DictionaryLinks.def"
};

constexpr bool adDictionaryLinksWellFormed() noexcept {
    for (const ADLinkFacts& l : adDictionaryLinks)
        if (!adLinkWellFormed(l)) return false;
    return true;
}
static_assert(adDictionaryLinksWellFormed(), "DictionaryLinks.def: end rows flagged 0x1 and 0x5, two role names, "
                                             "only the source ordered, at most one end controlling, mirrored "
                                             "cardinalities");

// The row of a dictionary link class; -1 for a name the catalogue lacks.
constexpr int adDictionaryLinkIndex(std::string_view name) noexcept {
    for (int i = 0; i < static_cast<int>(std::size(adDictionaryLinks)); ++i)
        if (name == adDictionaryLinks[i].name) return i;
    return -1;
}

// A link of the catalogue by name; an unknown name does not compile.
consteval const ADLinkFacts& adDictionaryLink(std::string_view name) {
    int i = adDictionaryLinkIndex(name);
    if (i < 0) throw "no such link in DictionaryLinks.def";
    return adDictionaryLinks[i];
}

// The end at which class `holder` holds `role` of dictionary link `link`, or
// -1 when the catalogue puts that role on no end of that class.
constexpr int adDictionaryRoleEnd(std::string_view link, std::string_view role, std::string_view holder) noexcept {
    int i = adDictionaryLinkIndex(link);
    if (i < 0) return -1;
    int end = adEndOfRole(adDictionaryLinks[i], role);
    return end >= 0 && holder == adDictionaryLinks[i].endClass[end] ? end : -1;
}

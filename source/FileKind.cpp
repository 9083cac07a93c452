// FileKind.cpp — telling UTF-16 text, binary data and COBOL copybooks from
// decks (see FileKind.h). Only plain evidence counts: a deck with a stray
// control byte or two is still a deck, and its cards are reported one by one.
#include <krmwtarn/source/FileKind.h>

#include <krmwtarn/source/Cards.h>

#include <algorithm>
#include <cctype>

namespace krsource {
namespace {

constexpr std::size_t kSample = 64 * 1024;  // bytes looked at

std::string_view from(std::string_view t, std::size_t column) {
    return column - 1 < t.size() ? t.substr(column - 1) : std::string_view();
}

// `01  NAME.`, `05 X PIC X(8).`, `88 DONE VALUE 'Y'.`: a level number (01-49,
// 66, 77, 88), blanks, and a data name.
bool levelEntry(std::string_view t) {
    std::size_t p = t.find_first_not_of(' ');
    if (p == t.npos) return false;
    std::size_t digits = 0;
    while (p + digits < t.size() && std::isdigit(static_cast<unsigned char>(t[p + digits]))) ++digits;
    if (digits == 0 || digits > 2) return false;
    int level = std::stoi(std::string(t.substr(p, digits)));
    if (level < 1 || (level > 49 && level != 66 && level != 77 && level != 88)) return false;
    p += digits;
    if (p >= t.size() || t[p] != ' ') return false;
    p = t.find_first_not_of(' ', p);
    return p != t.npos && (std::isalnum(static_cast<unsigned char>(t[p])) || t[p] == '-');
}

}  // namespace

std::string bytesLookLike(std::string_view bytes) {
    if (bytes.substr(0, 2) == "\xff\xfe") return "UTF-16 text (byte-order mark FF FE)";
    if (bytes.substr(0, 2) == "\xfe\xff") return "UTF-16 text (byte-order mark FE FF)";
    std::string_view sample = bytes.substr(0, kSample);
    const std::size_t n = sample.size();
    std::size_t nulEven = 0, nulOdd = 0, control = 0;
    const bool ebcdic = detectEncoding(sample) != Encoding::Ascii;
    for (std::size_t i = 0; i < n; ++i) {
        unsigned char b = static_cast<unsigned char>(sample[i]);
        if (b == 0) ++(i % 2 ? nulOdd : nulEven);
        // Line ends, tabs, form feeds and the DOS end-of-file byte belong in text;
        // EBCDIC records have their own new-line bytes.
        bool text = b == '\t' || b == '\n' || b == '\r' || b == '\f' || b == 0x1a || (ebcdic && b == 0x15);
        if ((b < 0x20 && !text) || b == 0x7f) ++control;
    }
    // Text of one-byte characters in UTF-16 has a NUL in every other byte.
    std::size_t nul = nulEven + nulOdd;
    if (n >= 4 && nul * 4 >= n && std::max(nulEven, nulOdd) * 10 >= nul * 9)
        return "UTF-16 text (no byte-order mark, a NUL byte in every other position)";
    if (control >= 4 && control * 20 > n)
        return "binary data (" + std::to_string(control) + " NUL or control bytes in the first " + std::to_string(n) +
               ")";
    return {};
}

std::string cardsLookLike(const std::vector<std::string_view>& cards) {
    std::size_t significant = 0, levels = 0;
    for (std::string_view t : cards) {
        t = t.substr(0, 72);
        if (t.find_first_not_of(' ') == t.npos || t[0] == '*' || t.substr(0, 2) == ".*") continue;
        if (t.size() >= 7 && (t[6] == '*' || t[6] == '/')) continue;  // a COBOL comment line
        ++significant;
        bool level = levelEntry(from(t, 8)) || levelEntry(t);
        if (!level && levels == 0) return {};  // the first entry decides whether to look further
        levels += level;
    }
    if (levels > 0 && levels * 2 >= significant) return "a COBOL copybook (level-numbered data items)";
    return {};
}

}  // namespace krsource

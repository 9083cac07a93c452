// Refusals.cpp — the refusals' sentences of Refusals.def filled with the
// exception's texts.
#include <krmwtarn/platform/common/Refusals.h>

#include <cstring>

namespace kr {
namespace {

struct Refusal {
    const char* first;
    long number;
    int texts;
    const char* sentence;
};
constexpr Refusal kRefusals[] = {
#define REFUSAL(first, number, texts, sentence) {first, number, texts, sentence},
#include <krmwtarn/platform/common/Refusals.def>
};

// A class named as its implementation (_DSHasField) reads as the class.
std::string shown(const char* text) { return text[0] == '_' && text[1] == 'D' ? text + 1 : text; }

const Refusal* sentenceOf(const KVException& e) {
    for (const Refusal& r : kRefusals)
        if (r.number == e.number() && r.texts == e.textCount() && std::strcmp(r.first, e.first()) == 0) return &r;
    return nullptr;
}

}  // namespace

bool hasSentence(const KVException& e) { return sentenceOf(e) != nullptr; }

std::string describe(const KVException& e) {
    if (hasSentence(e)) return explain(e);
    return e.text(0) ? e.text(0) : e.message();
}

std::string explain(const KVException& e) {
    if (const Refusal* found = sentenceOf(e)) {
        const Refusal& r = *found;
        std::string out;
        for (const char* p = r.sentence; *p; ++p) {
            if (*p == '{' && p[1] >= '0' && p[1] <= '9' && p[2] == '}') {
                out += shown(e.text(p[1] - '0'));
                p += 2;
                continue;
            }
            out += *p;
        }
        return out + " (" + std::to_string(e.number()) + ")";
    }
    return e.message();
}

}  // namespace kr

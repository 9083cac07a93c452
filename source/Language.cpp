// Language.cpp — the rows of Statements.def as arrays, their lookups, and the
// README's table of them. Each statement's rows follow its STATEMENT line and
// one another; the arrays are checked for that when the library is built.
#include <krmwtarn/source/Language.h>

#include <array>
#include <cassert>

namespace krsource {
namespace {

constexpr KeywordRow kKeywords[] = {
#define KEYWORD(op, key, shape, lo, hi, words, keeps) \
    {Stmt::op, #key, Shape::shape, lo, hi, words, Keeps::keeps, false},
#define POSITIONAL(op, word, keeps) {Stmt::op, #word, Shape::Word, 0, 0, "", Keeps::keeps, true},
#include <krmwtarn/source/Statements.def>
};
static_assert(std::size(kKeywords) == kKeywordCount);
// The same spellings with their lengths, for lookups that compare lengths first.
constexpr std::string_view kKeywordNames[] = {
#define KEYWORD(op, key, shape, lo, hi, words, keeps) #key,
#define POSITIONAL(op, word, keeps) #word,
#include <krmwtarn/source/Statements.def>
};
constexpr std::string_view kStatementNames[] = {
#define STATEMENT(op, part, freeText) #op,
#include <krmwtarn/source/Statements.def>
};

struct AliasRow {
    Stmt statement;
    const char* alias;
    Kw key;
};
constexpr AliasRow kAliases[] = {
#define ALIAS(op, alias, key) {Stmt::op, #alias, Kw::op##_##key},
#include <krmwtarn/source/Statements.def>
};

struct StatementHead {
    const char* name;
    Part part;
    bool freeText;
};
constexpr StatementHead kHeads[] = {
#define STATEMENT(op, part, freeText) {#op, Part::part, freeText},
#include <krmwtarn/source/Statements.def>
};

constexpr std::array<StatementRow, kStatementCount> statementRows() {
    std::array<StatementRow, kStatementCount> rows{};
    for (std::size_t s = 0; s < kStatementCount; ++s) {
        rows[s] = {kHeads[s].name, kHeads[s].part, kHeads[s].freeText, 0, 0};
        std::size_t k = 0;
        while (k < kKeywordCount && static_cast<std::size_t>(kKeywords[k].statement) != s) ++k;
        rows[s].first = static_cast<std::uint16_t>(k);
        while (k < kKeywordCount && static_cast<std::size_t>(kKeywords[k].statement) == s) ++k;
        rows[s].count = static_cast<std::uint16_t>(k - rows[s].first);
    }
    return rows;
}
constexpr auto kStatements = statementRows();

// Every statement's rows stand together, so first..first+count are all of them.
constexpr bool rowsGrouped() {
    std::size_t total = 0;
    for (const StatementRow& s : kStatements) total += s.count;
    return total == kKeywordCount;
}
static_assert(rowsGrouped(), "Statements.def: a statement's KEYWORD rows must follow one another");

bool same(std::string_view a, const char* b) noexcept { return a == std::string_view(b); }

}  // namespace

const StatementRow& statementRow(Stmt s) noexcept {
    assert(s != Stmt::Unknown);
    return kStatements[static_cast<std::size_t>(s)];
}

const KeywordRow& keywordRow(Kw k) noexcept {
    assert(k != Kw::None);
    return kKeywords[static_cast<std::size_t>(k)];
}

Stmt statementNamed(std::string_view operation) noexcept {
    for (std::size_t s = 0; s < kStatementCount; ++s)
        if (operation == kStatementNames[s]) return static_cast<Stmt>(s);
    return Stmt::Unknown;
}

namespace {
Kw rowNamed(Stmt s, std::string_view name, bool positional) noexcept {
    if (s == Stmt::Unknown) return Kw::None;
    const StatementRow& st = statementRow(s);
    for (std::size_t k = st.first; k < std::size_t(st.first) + st.count; ++k)
        if (name == kKeywordNames[k] && kKeywords[k].positional == positional) return static_cast<Kw>(k);
    return Kw::None;
}
}  // namespace

Kw keywordNamed(Stmt s, std::string_view keyword) noexcept {
    Kw k = rowNamed(s, keyword, false);
    if (k != Kw::None) return k;
    for (const AliasRow& a : kAliases)
        if (a.statement == s && same(keyword, a.alias)) return a.key;
    return Kw::None;
}

Kw positionalNamed(Stmt s, std::string_view word) noexcept { return rowNamed(s, word, true); }

bool choiceHas(Kw k, std::string_view word) noexcept {
    std::string_view words = keywordRow(k).words;
    while (!words.empty()) {
        std::size_t bar = words.find('|');
        if (words.substr(0, bar) == word) return true;
        if (bar == std::string_view::npos) break;
        words.remove_prefix(bar + 1);
    }
    return false;
}

std::string choiceList(Kw k) {
    std::string words = keywordRow(k).words, out;
    std::size_t count = 1;
    for (char c : words) count += c == '|';
    std::size_t seen = 0;
    for (char c : words) {
        if (c != '|') {
            out += c;
            continue;
        }
        ++seen;
        out += seen + 1 == count ? " or " : ", ";
    }
    return out;
}

namespace {
struct OrganisationRow {
    const char* name;
    Access access;
};
constexpr OrganisationRow kOrganisations[] = {
#define ORGANISATION(name, access, ...) {#name, Access::access},
#include <krmwtarn/source/Statements.def>
};
}  // namespace

Access organisationAccess(std::string_view organisation) noexcept {
    for (const OrganisationRow& o : kOrganisations)
        if (same(organisation, o.name)) return o.access;
    return Access::Unknown;
}

std::string organisationList() {
    std::string out;
    for (const OrganisationRow& o : kOrganisations) out += (out.empty() ? "" : ", ") + std::string(o.name);
    return out;
}

std::string languageTable() {
    std::string out = "| statement | keywords the model keeps | read and passed over |\n|---|---|---|\n";
    auto aliasesOf = [](Kw k) {
        std::string a;
        for (const AliasRow& r : kAliases)
            if (r.key == k) a += std::string(" (also ") + r.alias + ")";
        return a;
    };
    for (std::size_t s = 0; s < kStatementCount; ++s) {
        const StatementRow& st = kStatements[s];
        std::string kept, passed;
        for (std::size_t k = st.first; k < std::size_t(st.first) + st.count; ++k) {
            const KeywordRow& row = kKeywords[k];
            std::string& list = row.keeps == Keeps::Nothing ? passed : kept;
            if (!list.empty()) list += ", ";
            list += std::string("`") + row.name + (row.positional ? "" : "=") + "`" + aliasesOf(static_cast<Kw>(k));
        }
        if (st.part == Part::Directive) passed = st.freeText ? "its operands (a directive)" : passed;
        if (st.part == Part::Unmodelled) passed = "the whole statement";
        out += std::string("| `") + st.name + "` | " + kept + " | " + passed + " |\n";
    }
    return out;
}

}  // namespace krsource

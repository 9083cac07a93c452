// Language.h — the generation language as data: the statements and keywords of
// Statements.def as enums and rows, looked up by the deck reader, walked in
// order by the deck writer, printed as the README's table of the language.
#pragma once

#include <krmwtarn/platform/common/Export.h>

#include <cstdint>
#include <string>
#include <string_view>

namespace krsource {

// The access class an organisation is kept in.
enum class Access : std::uint8_t { Hidam, Hdam, Dedb, Index, Msdb, Plain, Unknown };
// The organisation ACCESS= names (HIDAM, PSINDEX, ...), or Access::Unknown.
KRMWTARN_API Access organisationAccess(std::string_view organisation) noexcept;
// Every organisation's name, in the table's order, separated by ", ".
KRMWTARN_API std::string organisationList();

// Which kind of statement a row is (see Statements.def).
enum class Part : std::uint8_t { Dbd, Psb, Directive, Unmodelled };
// The shape of a keyword's value.
enum class Shape : std::uint8_t { Word, Text, Number, Choice, YesNo, Suffixed, List, Lists };
// What the model keeps of a keyword.
enum class Keeps : std::uint8_t { Attr, Link, Nothing };

// Every statement, by its operation.
enum class Stmt : std::uint8_t {
#define STATEMENT(op, part, freeText) op,
#include <krmwtarn/source/Statements.def>
    Unknown
};

// Every keyword row (and positional word) of every statement, named
// STATEMENT_KEYWORD, in the table's order.
enum class Kw : std::uint16_t {
#define KEYWORD(op, key, shape, lo, hi, words, keeps) op##_##key,
#define POSITIONAL(op, word, keeps) op##_##word,
#include <krmwtarn/source/Statements.def>
    None
};

struct KRMWTARN_API StatementRow {
    const char* name;
    Part part;
    bool freeText;
    std::uint16_t first;  // its first keyword row
    std::uint16_t count;  // how many rows follow from there
};

struct KRMWTARN_API KeywordRow {
    Stmt statement;
    const char* name;
    Shape shape;
    long lo, hi;        // a Number's range
    const char* words;  // a Choice's words, separated by '|'
    Keeps keeps;
    bool positional;  // a word standing alone (DATASET LOGICAL)
};

KRMWTARN_API const StatementRow& statementRow(Stmt s) noexcept;
KRMWTARN_API const KeywordRow& keywordRow(Kw k) noexcept;
inline const char* nameOf(Stmt s) noexcept { return statementRow(s).name; }
inline const char* nameOf(Kw k) noexcept { return keywordRow(k).name; }
inline constexpr std::size_t kStatementCount = static_cast<std::size_t>(Stmt::Unknown);
inline constexpr std::size_t kKeywordCount = static_cast<std::size_t>(Kw::None);

// The statement an operation names (upper case), or Stmt::Unknown.
KRMWTARN_API Stmt statementNamed(std::string_view operation) noexcept;
// A keyword of the statement by its spelling or an alias; Kw::None if the
// statement has no such keyword.
KRMWTARN_API Kw keywordNamed(Stmt s, std::string_view keyword) noexcept;
// A positional word of the statement; Kw::None if it has no such word.
KRMWTARN_API Kw positionalNamed(Stmt s, std::string_view word) noexcept;
// Whether `word` is one of a Choice's words.
KRMWTARN_API bool choiceHas(Kw k, std::string_view word) noexcept;
// "S, SINGLE, M or MULTIPLE": a Choice's words as a message lists them.
KRMWTARN_API std::string choiceList(Kw k);

// The README's table of the language: one line per statement with the
// keywords the model keeps and those read and passed over.
KRMWTARN_API std::string languageTable();

}  // namespace krsource

// Cards.h — the card format of the generation decks: decoding a deck's bytes
// (ASCII with any line ends, tabs and a DOS end-of-file byte, or EBCDIC code
// page 037/1047 in fixed 80-byte records) into cards, and assembling cards into
// statements: label, operation and operands (keywords, positional values,
// nested sublists, quoted strings, empty positions), with continuation in
// column 72, continued text from column 16, sequence columns 73-80 ignored,
// comment cards and remarks; decks inside job streams are found by JobStream.h.
#pragma once

#include <krmwtarn/platform/common/Export.h>

#include <krmwtarn/source/Diagnostics.h>
#include <krmwtarn/source/Language.h>

#include <string>
#include <string_view>
#include <vector>

namespace krsource {

// The encodings a deck can arrive in.
enum class Encoding { Ascii, Ebcdic037, Ebcdic1047 };

// One card image: its text (tabs expanded, no line end) and its number.
struct KRMWTARN_API Card {
    std::string text;
    int line = 0;
};

// Detects the encoding and splits the bytes into cards. EBCDIC decks are
// translated to ASCII; bytes without a printable counterpart become 0x1A,
// which the statement reader reports.
KRMWTARN_API std::vector<Card> decodeCards(std::string_view bytes, Encoding* detected = nullptr);
KRMWTARN_API Encoding detectEncoding(std::string_view bytes);

// An operand value: a plain word (`SEQ`, `X'40'`; `DECIMAL(15,2)` is one word
// as written whose items are its suffix's positions), a quoted string (its text
// without the quotes, `''` undone), a parenthesised sublist, or nothing.
struct KRMWTARN_API Value {
    enum Kind { Empty, Word, Quoted, List };
    Kind kind = Empty;
    std::string text;
    std::vector<Value> items;
    Location at;

    bool isEmpty() const noexcept { return kind == Empty; }
    // The n-th position of a sublist; a single value is its own first position.
    const Value* item(std::size_t n) const noexcept;
    std::size_t size() const noexcept { return kind == List ? items.size() : (kind == Empty ? 0 : 1); }
};

// `KEYWORD=value`, or a positional value (empty keyword).
struct KRMWTARN_API Operand {
    std::string keyword;  // upper case
    Value value;
    Location at;
};

struct KRMWTARN_API Statement {
    std::string label;
    std::string operation;      // upper case
    Stmt kind = Stmt::Unknown;  // the operation in the language table
    std::vector<Operand> operands;
    Location at;         // the operation
    Location labelAt;    // the label (column 1)
    std::string source;  // the operand field as written, for comparing definitions
    // The card rules or the operands failed (an error said so): the statement
    // stands in its place with the operands read before the fault, if any, so
    // that what belongs to it is not told again as having no statement.
    bool broken = false;
};

// Reads every statement of one deck, or of the decks in a job stream's in-stream
// data (with the job file's card numbers); problems of the card format go to
// `diags` with their place in `file` (which must outlive the statements). A file
// that is no deck (UTF-16 text, binary data, a COBOL copybook) is one error.
KRMWTARN_API std::vector<Statement> readStatements(const std::string& file, std::string_view bytes, Diagnostics& diags);

}  // namespace krsource

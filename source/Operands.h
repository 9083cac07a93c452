// Operands.h — one statement's operands taken by the rows of the language
// table: keywords and aliases found, keywords the model does not hold and
// unknown ones told as warnings, a keyword given twice an error, and values
// read by their row's shape (a one-element sublist is its element).
#pragma once

#include <krmwtarn/source/Cards.h>
#include <krmwtarn/source/Language.h>

#include <array>
#include <optional>
#include <string>

namespace krsource {

class Operands {
public:
    Operands(const Statement& st, Stmt statement, Diagnostics& diags);

    // The operand given for a row of this statement (a positional word too),
    // or null. Its value may be a sublist; value() unwraps one of one value.
    const Operand* operator[](Kw k) const noexcept { return given_[slot(k)]; }
    bool has(Kw k) const noexcept { return given_[slot(k)] != nullptr; }
    // The value given, with a one-element sublist taken as its element where
    // the row takes one value; null when not given or written empty.
    const Value* value(Kw k) const noexcept;
    // Where the keyword stands, or the statement when it is not given.
    Location at(Kw k) const noexcept;
    // The place of the value, or the statement.
    Location valueAt(Kw k) const noexcept;

    // A single value's text ("" when not given); a sublist of more than one
    // value was told when the operands were read and reads as not given.
    std::string text(Kw k) const;
    // The row's number within the row's range; an error for anything else.
    std::optional<long> number(Kw k);
    // YES or NO (Y, N); an error for anything else.
    std::optional<int> yesNo(Kw k);
    // One of a Choice row's words ("" when not given); an error for another.
    std::string choice(Kw k);
    // True when the keyword is given with a value; else an error that it is required.
    bool require(Kw k);

    // A position of a sublist value: its text (a nested one-element sublist
    // is its element; a longer one is an error) and a number in [lo, hi].
    std::string textAt(Kw k, const Value* v);
    std::optional<long> numberAt(Kw k, const Value* v, long lo, long hi);
    // The entries of a Lists row: its sublists, or the value itself when it
    // is one sublist or one word.
    std::vector<const Value*> entries(Kw k) const;

    // "SEGM BYTES", for messages.
    std::string name(Kw k) const;
    Stmt statement() const noexcept { return statement_; }
    const Statement& source() const noexcept { return st_; }
    Diagnostics& diagnostics() const noexcept { return diags_; }

private:
    static constexpr std::size_t kMaxRows = 24;
    std::size_t slot(Kw k) const noexcept;
    static bool single(Shape s) noexcept { return s != Shape::List && s != Shape::Lists; }

    const Statement& st_;
    Stmt statement_;
    Diagnostics& diags_;
    std::size_t first_ = 0;
    std::array<const Operand*, kMaxRows> given_{};
    std::array<bool, kMaxRows> refused_{};  // given in a shape the row does not take: told already
};

}  // namespace krsource

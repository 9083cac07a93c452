// Operands.cpp — reading a statement's operands by the language table (see
// Operands.h). Messages say what was found and what the row expects.
#include "Operands.h"

#include <cassert>

namespace krsource {
namespace {
// The value itself, or the one value inside a sublist of one (also nested).
const Value* unwrap(const Value* v) noexcept {
    while (v && v->kind == Value::List && v->items.size() == 1) v = &v->items[0];
    return v;
}
std::string shown(const Value& v) {
    if (v.kind == Value::List) return "a sublist of " + std::to_string(v.items.size()) + " values";
    if (v.kind == Value::Quoted) return "'" + v.text + "' in quotes";
    return "'" + v.text + "'";
}
}  // namespace

Operands::Operands(const Statement& st, Stmt statement, Diagnostics& diags)
    : st_(st), statement_(statement), diags_(diags) {
    const StatementRow& row = statementRow(statement);
    first_ = row.first;
    assert(row.count <= kMaxRows);
    const std::string stmt = row.name;
    for (const Operand& op : st.operands) {
        Kw k = Kw::None;
        if (op.keyword.empty()) {
            if (op.value.isEmpty()) continue;
            if (op.value.kind == Value::Word) k = positionalNamed(statement, op.value.text);
            if (k == Kw::None) {
                diags.warning(op.at,
                              stmt + ": positional operand " + shown(op.value) + " has no place in the model; ignored");
                continue;
            }
        } else {
            k = keywordNamed(statement, op.keyword);
            if (k == Kw::None) {
                diags.warning(op.at, stmt + " " + op.keyword + ": not a keyword of " + stmt + "; ignored");
                continue;
            }
        }
        const KeywordRow& kw = keywordRow(k);
        if (given_[slot(k)]) {
            diags.error(op.at, stmt + " " + kw.name + ": given twice");
            continue;
        }
        if (kw.keeps == Keeps::Nothing) {
            diags.warning(op.at, stmt + " " + kw.name + ": keyword has no place in the model; ignored");
            continue;
        }
        const Value* v = unwrap(&op.value);
        if (single(kw.shape) && v->kind == Value::List) {
            diags.error(op.value.at, stmt + " " + kw.name + ": one value is expected, not " + shown(*v));
            refused_[slot(k)] = true;
            continue;
        }
        given_[slot(k)] = &op;
    }
}

std::size_t Operands::slot(Kw k) const noexcept {
    std::size_t s = static_cast<std::size_t>(k) - first_;
    assert(static_cast<std::size_t>(k) >= first_ && s < statementRow(statement_).count &&
           "a keyword of another statement");
    return s;
}

const Value* Operands::value(Kw k) const noexcept {
    const Operand* op = given_[slot(k)];
    if (!op) return nullptr;
    // Written empty, or as a sublist holding nothing (`NAME=()`): no value.
    const Value* inner = unwrap(&op->value);
    if (inner->isEmpty() || (inner->kind == Value::List && inner->items.empty())) return nullptr;
    return single(keywordRow(k).shape) ? inner : &op->value;
}

Location Operands::at(Kw k) const noexcept {
    const Operand* op = given_[slot(k)];
    return op ? op->at : st_.at;
}

Location Operands::valueAt(Kw k) const noexcept {
    const Operand* op = given_[slot(k)];
    return op ? op->value.at : st_.at;
}

std::string Operands::name(Kw k) const { return std::string(nameOf(statement_)) + " " + nameOf(k); }

std::string Operands::text(Kw k) const {
    const Operand* op = given_[slot(k)];
    if (!op) return {};
    if (keywordRow(k).positional) return op->value.text;
    const Value* v = value(k);
    if (!v) return {};
    if (v->kind == Value::List) return unwrap(v->item(0)) ? unwrap(v->item(0))->text : std::string();
    return v->text;
}

std::optional<long> Operands::number(Kw k) {
    const KeywordRow& row = keywordRow(k);
    return numberAt(k, value(k), row.lo, row.hi);
}

std::optional<long> Operands::numberAt(Kw k, const Value* v, long lo, long hi) {
    v = unwrap(v);
    if (!v || v->isEmpty()) return std::nullopt;
    const std::string& t = v->text;
    bool digits = v->kind == Value::Word && !t.empty() && t.size() < 12;
    for (char c : t) digits = digits && c >= '0' && c <= '9';
    std::string expected = "a number from " + std::to_string(lo) + " to " + std::to_string(hi) + " is expected";
    if (!digits) {
        diags_.error(v->at, name(k) + ": " + expected + ", not " + shown(*v));
        return std::nullopt;
    }
    long n = std::stol(t);
    if (n < lo || n > hi) {
        diags_.error(v->at, name(k) + ": " + t + " is out of range (" + expected + ")");
        return std::nullopt;
    }
    return n;
}

std::optional<int> Operands::yesNo(Kw k) {
    const Value* v = value(k);
    if (!v) return std::nullopt;
    const std::string& t = v->text;
    if (v->kind == Value::Word && (t == "YES" || t == "Y")) return 1;
    if (v->kind == Value::Word && (t == "NO" || t == "N")) return 0;
    diags_.error(v->at, name(k) + ": YES or NO is expected, not " + shown(*v));
    return std::nullopt;
}

std::string Operands::choice(Kw k) {
    const Value* v = value(k);
    if (!v) return {};
    if (v->kind == Value::Word && choiceHas(k, v->text)) return v->text;
    diags_.error(v->at, name(k) + ": " + choiceList(k) + " is expected, not " + shown(*v));
    return {};
}

bool Operands::require(Kw k) {
    if (value(k)) return true;
    if (refused_[slot(k)]) return false;  // told when the operands were read
    diags_.error(at(k), name(k) + ": required");
    return false;
}

std::string Operands::textAt(Kw k, const Value* v) {
    v = unwrap(v);
    if (!v || v->isEmpty()) return {};
    if (v->kind == Value::List) {
        diags_.error(v->at, name(k) + ": one value is expected at this position, not " + shown(*v));
        return {};
    }
    return v->text;
}

std::vector<const Value*> Operands::entries(Kw k) const {
    std::vector<const Value*> list;
    const Value* v = value(k);
    if (!v) return list;
    if (v->kind == Value::List && !v->items.empty() && v->items[0].kind == Value::List)
        for (const Value& e : v->items) list.push_back(&e);
    else
        list.push_back(v);
    return list;
}

}  // namespace krsource

// Cards.cpp — decoding deck bytes into cards and cards into statements (see
// Cards.h for the format). Everything here is linear in the deck's size.
#include <krmwtarn/source/Cards.h>

#include <krmwtarn/source/FileKind.h>
#include <krmwtarn/source/JobStream.h>

#include <algorithm>
#include <array>
#include <cctype>

namespace krsource {
namespace {

constexpr int kStatementEnd = 71;  // last column of statement text
constexpr int kContinueColumn = 72;
constexpr int kContinuedText = 16;       // continued text starts here
constexpr int kMaxDepth = 16;            // sublists nested deeper are refused
constexpr std::size_t kMaxItems = 1000;  // and sublists of more positions
constexpr char kInvalid = '\x7f';        // stands for a byte with no printable counterpart

// EBCDIC code page 037 positions of the printable ASCII characters; 1047
// differs in the brackets and the circumflex.
std::array<char, 256> ebcdicTable(Encoding e) {
    std::array<char, 256> t;
    t.fill(kInvalid);
    auto set = [&](unsigned char code, char c) { t[code] = c; };
    set(0x40, ' ');
    const char* punct = ".<(+|&!$*);-/,%_>?`:#@'=\"";
    const unsigned char codes[] = {0x4B, 0x4C, 0x4D, 0x4E, 0x4F, 0x50, 0x5A, 0x5B, 0x5C, 0x5D, 0x5E, 0x60, 0x61,
                                   0x6B, 0x6C, 0x6D, 0x6E, 0x6F, 0x79, 0x7A, 0x7B, 0x7C, 0x7D, 0x7E, 0x7F};
    for (int i = 0; punct[i]; ++i) set(codes[i], punct[i]);
    for (int i = 0; i < 9; ++i) {
        set(0x81 + i, static_cast<char>('a' + i));
        set(0x91 + i, static_cast<char>('j' + i));
        set(0xC1 + i, static_cast<char>('A' + i));
        set(0xD1 + i, static_cast<char>('J' + i));
    }
    for (int i = 0; i < 8; ++i) {
        set(0xA2 + i, static_cast<char>('s' + i));
        set(0xE2 + i, static_cast<char>('S' + i));
    }
    for (int i = 0; i < 10; ++i) set(0xF0 + i, static_cast<char>('0' + i));
    set(0xA1, '~');
    set(0xC0, '{');
    set(0xD0, '}');
    set(0xE0, '\\');
    if (e == Encoding::Ebcdic1047) {
        set(0xAD, '[');
        set(0xBD, ']');
        set(0x5F, '^');
    } else {
        set(0xBA, '[');
        set(0xBB, ']');
        set(0xB0, '^');
    }
    return t;
}

// The decoded cards of a deck: every card's text back to back in one buffer,
// so a deck of many thousand cards costs one allocation rather than one each.
class CardTexts {
public:
    explicit CardTexts(std::size_t bytes) { buffer_.reserve(bytes + bytes / 8 + 16); }

    // Adds a card; tabs stop every 8 columns.
    void add(std::string_view text, int line) {
        std::size_t from = buffer_.size();
        if (text.find('\t') == std::string_view::npos) {
            buffer_.append(text);
        } else {
            for (char c : text) {
                if (c == '\t')
                    buffer_.append(8 - (buffer_.size() - from) % 8, ' ');
                else
                    buffer_.push_back(c);
                if (buffer_.size() - from > 80) break;
            }
        }
        spans_.push_back({from, buffer_.size() - from, line});
    }
    std::size_t size() const noexcept { return spans_.size(); }
    std::string_view text(std::size_t i) const noexcept {
        return std::string_view(buffer_).substr(spans_[i].from, spans_[i].length);
    }
    int line(std::size_t i) const noexcept { return spans_[i].line; }

private:
    struct Span {
        std::size_t from, length;
        int line;
    };
    std::string buffer_;
    std::vector<Span> spans_;
};

CardTexts decode(std::string_view bytes, Encoding* detected);

bool blank(char c) { return c == ' '; }

}  // namespace

const Value* Value::item(std::size_t n) const noexcept {
    if (kind == List) return n < items.size() ? &items[n] : nullptr;
    return n == 0 && kind != Empty ? this : nullptr;
}

Encoding detectEncoding(std::string_view bytes) {
    std::size_t high = 0, ebcdicBlank = 0, asciiBlank = 0, lineEnds = 0, open037 = 0, open1047 = 0;
    for (unsigned char b : bytes) {
        high += b >= 0x80;
        ebcdicBlank += b == 0x40;
        asciiBlank += b == 0x20;
        lineEnds += b == '\n';
        open037 += b == 0xBA || b == 0xBB;
        open1047 += b == 0xAD || b == 0xBD || b == 0x15;
    }
    // EBCDIC text is letters and digits above 0x80 and blanks at 0x40.
    if (bytes.empty() || (high + ebcdicBlank) * 2 < bytes.size() || ebcdicBlank <= asciiBlank ||
        lineEnds * 200 > bytes.size())
        return Encoding::Ascii;
    return open1047 > open037 ? Encoding::Ebcdic1047 : Encoding::Ebcdic037;
}

namespace {
CardTexts decode(std::string_view bytes, Encoding* detected) {
    CardTexts cards(bytes.size());
    Encoding e = detectEncoding(bytes);
    if (detected) *detected = e;
    if (e == Encoding::Ascii) {
        // A DOS end-of-file byte ends the deck.
        if (auto eof = bytes.find('\x1a'); eof != std::string_view::npos) bytes = bytes.substr(0, eof);
        int line = 0;
        std::size_t start = 0;
        while (start < bytes.size()) {
            std::size_t end = bytes.find('\n', start);
            std::string_view text = bytes.substr(start, end == std::string_view::npos ? end : end - start);
            if (!text.empty() && text.back() == '\r') text.remove_suffix(1);
            if (text.size() > 80) text = text.substr(0, 80);  // sequence columns and beyond
            cards.add(text, ++line);
            if (end == std::string_view::npos) break;
            start = end + 1;
        }
        return cards;
    }
    const std::array<char, 256> table = ebcdicTable(e);
    // Records are split by EBCDIC new-line bytes when there are any, else every 80 bytes.
    bool lineEnds = bytes.find('\x15') != std::string_view::npos || bytes.find('\x25') != std::string_view::npos;
    std::string text;
    int line = 0;
    for (std::size_t i = 0; i < bytes.size(); ++i) {
        unsigned char b = static_cast<unsigned char>(bytes[i]);
        if (lineEnds && (b == 0x15 || b == 0x25)) {
            cards.add(text, ++line);
            text.clear();
            continue;
        }
        if (text.size() < 80) text.push_back(table[b]);
        if (!lineEnds && text.size() == 80) {
            cards.add(text, ++line);
            text.clear();
        }
    }
    if (!text.empty()) cards.add(text, ++line);
    return cards;
}
}  // namespace

std::vector<Card> decodeCards(std::string_view bytes, Encoding* detected) {
    CardTexts texts = decode(bytes, detected);
    std::vector<Card> cards;
    cards.reserve(texts.size());
    for (std::size_t i = 0; i < texts.size(); ++i) cards.push_back({std::string(texts.text(i)), texts.line(i)});
    return cards;
}

namespace {

// One character of a statement's text with its place.
struct Ch {
    char c;
    int line;
    int column;
    int card;  // index of the card within the statement
};

class OperandParser {
public:
    OperandParser(const std::vector<Ch>& field, const std::string& file, Diagnostics& diags, const Location& end)
        : s_(field), file_(file), diags_(diags), end_(end) {}

    bool parse(std::vector<Operand>& out) {
        if (s_.empty()) return true;
        for (;;) {
            Operand op;
            op.at = here();
            std::size_t p = pos_;
            while (p < s_.size() && wordChar(s_[p].c)) ++p;
            if (p > pos_ && p < s_.size() && s_[p].c == '=') {
                for (std::size_t i = pos_; i < p; ++i)
                    op.keyword.push_back(static_cast<char>(std::toupper(static_cast<unsigned char>(s_[i].c))));
                pos_ = p + 1;
            }
            if (!value(op.value, 0, false)) return false;
            out.push_back(std::move(op));
            if (atEnd()) return true;
            if (s_[pos_].c == ',') {
                ++pos_;
                continue;
            }
            return fail(
                std::string("unexpected '") + s_[pos_].c + "' after an operand" +
                (s_[pos_].c == ')' ? " (unbalanced parentheses)" : ": a comma or the operands' end is expected"));
        }
    }

private:
    static bool wordChar(char c) {
        return std::isalnum(static_cast<unsigned char>(c)) || c == '#' || c == '@' || c == '$' || c == '_' ||
               c == '-' || c == '.' || c == '*' || c == '+' || c == '/' || c == ':' || c == '&';
    }
    bool atEnd() const { return pos_ >= s_.size(); }
    Location here() const {
        if (atEnd()) return end_;
        return {&file_, s_[pos_].line, s_[pos_].column};
    }
    bool fail(const std::string& message) {
        diags_.error(here(), message);
        return false;
    }

    bool quoted(std::string& text) {
        ++pos_;  // opening quote
        for (;;) {
            if (atEnd()) return fail("quoted string without its closing quote");
            char c = s_[pos_++].c;
            if (c == '\'') {
                if (!atEnd() && s_[pos_].c == '\'') {
                    text.push_back('\'');
                    ++pos_;
                    continue;
                }
                return true;
            }
            text.push_back(c);
        }
    }

    bool value(Value& v, int depth, bool inList) {
        v.at = here();
        if (atEnd() || s_[pos_].c == ',' || s_[pos_].c == ')') return true;
        char c = s_[pos_].c;
        if (c == '(') {
            v.kind = Value::List;
            return sublist(v.items, depth);
        }
        if (c == '\'') {
            v.kind = Value::Quoted;
            return quoted(v.text);
        }
        // A word; a quote inside it (X'40', C'A') is part of the word as written.
        v.kind = Value::Word;
        while (!atEnd()) {
            c = s_[pos_].c;
            if (c == '\'') {
                std::string inner;
                if (!quoted(inner)) return false;
                v.text += '\'';
                for (char q : inner) v.text += q == '\'' ? std::string("''") : std::string(1, q);
                v.text += '\'';
                continue;
            }
            if (wordChar(c) || (inList && c == '=')) {
                v.text.push_back(c);
                ++pos_;
                continue;
            }
            // A word with a parenthesised suffix (`DECIMAL(15,2)`) is one value:
            // its text as written, the suffix's positions as its items.
            if (c == '(' && !v.text.empty()) {
                std::size_t open = pos_;
                if (!sublist(v.items, depth)) return false;
                for (std::size_t i = open; i < pos_; ++i) v.text.push_back(s_[i].c);
            }
            break;
        }
        if (v.text.empty()) return fail(std::string("unexpected '") + c + "' where a value is expected");
        return true;
    }

    // The positions of a sublist, from its opening parenthesis to its closing one.
    bool sublist(std::vector<Value>& items, int depth) {
        if (depth >= kMaxDepth) return fail("sublists nested deeper than 16 levels");
        Location open = here();
        ++pos_;
        for (;;) {
            Value item;
            if (!value(item, depth + 1, true)) return false;
            if (items.size() == kMaxItems) return fail("a sublist of more than 1000 positions");
            items.push_back(std::move(item));
            if (atEnd()) {
                diags_.error(open, "unbalanced parentheses: this sublist is not closed");
                return false;
            }
            if (s_[pos_].c == ',') {
                ++pos_;
                continue;
            }
            if (s_[pos_].c == ')') {
                ++pos_;
                return true;
            }
            return fail(std::string("unexpected '") + s_[pos_].c + "' in a sublist: a comma or ')' is expected");
        }
    }

    const std::vector<Ch>& s_;
    const std::string& file_;
    Diagnostics& diags_;
    Location end_;
    std::size_t pos_ = 0;
};

// Operations whose operand field is free text or absent: what follows them is
// not parsed.

// The first word of a continuation card's text (from column 16) when the card
// is a generation statement with its operands (`SEGM NAME=...`), else empty.
std::string_view statementOnCard(std::string_view t) {
    t = t.substr(0, kStatementEnd);
    std::size_t from = t.find_first_not_of(' ', kContinuedText - 1);
    if (from == t.npos) return {};
    std::size_t to = std::min(t.find(' ', from), t.size());
    std::string op;
    for (char c : t.substr(from, to - from))
        op.push_back(static_cast<char>(std::toupper(static_cast<unsigned char>(c))));
    Stmt kind = statementNamed(op);
    if (!generationOperation(op) || statementRow(kind).part == Part::Directive) return {};
    std::size_t operands = t.find_first_not_of(' ', to);
    if (operands != t.npos && t.substr(operands, t.find(' ', operands) - operands).find('=') == t.npos) return {};
    return t.substr(from, to - from);
}

// A misplaced card that begins a statement of its own (a label, a comment or an
// operation word) rather than continuing operands written too far left.
bool beginsStatement(std::string_view t) {
    std::size_t from = t.find_first_not_of(' ');
    if (from == 0) return true;
    std::size_t to = std::min(t.find(' ', from), std::min<std::size_t>(t.size(), kStatementEnd));
    return t.substr(from, to - from).find_first_of("=(),'") == t.npos;
}

// Reads the statements of cards [begin, end).
void readCards(const CardTexts& cards, std::size_t begin, std::size_t endCard, const std::string& file,
               Diagnostics& diags, std::vector<Statement>& statements) {
    std::vector<Ch> text;
    std::vector<Ch> field;
    // The statement before broke or was cut short: cards after it that hold
    // only operands belong to its fault and are passed over.
    bool openBefore = false;
    for (std::size_t i = begin; i < endCard && !diags.full(); ++i) {
        std::string_view t = cards.text(i);
        const int firstLine = cards.line(i);
        // A card blank in its statement columns (1-72) is a blank card, whatever
        // its sequence field (73-80) holds.
        std::size_t used = t.find_first_not_of(' ');
        if (used == std::string::npos || used >= static_cast<std::size_t>(kContinueColumn)) continue;
        if (t[0] == '*' || (t.size() > 1 && t[0] == '.' && t[1] == '*')) continue;

        // The statement's cards: this one and every card a column-72 mark continues to.
        std::size_t last = i;
        bool truncated = false, misplaced = false, cutShort = false;
        while (cards.text(last).size() >= kContinueColumn && !blank(cards.text(last)[kContinueColumn - 1])) {
            if (last + 1 == endCard) {
                diags.error({&file, cards.line(last), kContinueColumn},
                            "continuation mark in column 72 on the last card: the statement is incomplete");
                truncated = true;
                break;
            }
            std::string_view next = cards.text(last + 1);
            std::size_t at = next.find_first_not_of(' ');
            if (!misplaced && at < static_cast<std::size_t>(kContinuedText - 1)) {
                diags.error({&file, cards.line(last + 1), static_cast<int>(at) + 1},
                            "continuation card: text found in column " + std::to_string(at + 1) +
                                ", where continued text begins in column 16 (column 72 of the card before is "
                                "not blank)");
                // A card of its own is read as such after this statement;
                // operands written too far left leave the statement unread.
                if (beginsStatement(next)) {
                    cutShort = true;
                    break;
                }
                misplaced = true;
            }
            ++last;
        }
        text.clear();
        bool invalid = false;
        for (std::size_t k = i; k <= last; ++k) {
            std::string_view ct = cards.text(k);
            int from = k == i ? 1 : kContinuedText;
            int to = std::min<int>(kStatementEnd, static_cast<int>(ct.size()));
            // The last card's trailing blanks end the statement whatever they
            // are; left out, most cards cost their text rather than 71 columns.
            if (k == last)
                while (to >= from && ct[to - 1] == ' ') --to;
            for (int col = from; col <= to; ++col) {
                char c = ct[col - 1];
                unsigned char u = static_cast<unsigned char>(c);
                if ((u < 0x20 || u >= 0x7f) && !invalid) {
                    char hex[8];
                    std::snprintf(hex, sizeof hex, "0x%02X", u);
                    diags.error({&file, cards.line(k), col},
                                std::string("invalid character ") + hex +
                                    " in the statement: cards hold printable characters only");
                    invalid = true;
                }
                text.push_back({c, cards.line(k), col, static_cast<int>(k - i)});
            }
        }
        const std::size_t first = i;
        i = last;
        if (text.empty()) continue;
        const bool broken = invalid || truncated || misplaced;

        Statement st;
        std::size_t p = 0;
        auto skipBlanks = [&] {
            while (p < text.size() && blank(text[p].c)) ++p;
        };
        auto token = [&] {
            std::string w;
            while (p < text.size() && !blank(text[p].c) && text[p].card == 0) w.push_back(text[p++].c);
            return w;
        };
        if (!blank(text[0].c)) {
            st.labelAt = {&file, text[0].line, 1};
            st.label = token();
        }
        skipBlanks();
        if (p >= text.size() || text[p].card != 0) {
            if (broken) continue;  // its fault is told
            diags.error({&file, firstLine, 1},
                        "a label without an operation: an operation is expected after the label");
            continue;
        }
        st.at = {&file, text[p].line, text[p].column};
        for (char c : token()) st.operation.push_back(static_cast<char>(std::toupper(static_cast<unsigned char>(c))));
        if (openBefore && st.label.empty() && st.operation.find_first_of("=(',") != std::string::npos) continue;
        openBefore = broken;
        if (broken) {
            st.broken = true;
            statements.push_back(std::move(st));
            continue;
        }
        // A generation statement on a continuation card past the operands is
        // read as a remark: said, since the statement would be lost unseen.
        auto remarkStatement = [&](std::size_t after) {
            for (std::size_t k = after + 1; k <= last; ++k) {
                std::string_view op = statementOnCard(cards.text(k));
                if (op.empty()) continue;
                diags.error({&file, cards.line(k), static_cast<int>(op.data() - cards.text(k).data()) + 1},
                            "continuation card: the " + std::string(op) +
                                " statement on it is read as a remark, as column 72 of the card before is not "
                                "blank");
                return;
            }
        };
        st.kind = statementNamed(st.operation);
        if (st.kind != Stmt::Unknown && statementRow(st.kind).freeText) {
            remarkStatement(first);
            statements.push_back(std::move(st));
            continue;
        }
        skipBlanks();
        // The operand field: up to the first blank outside quotes; a blank after a
        // comma on a continued card moves on to the next card's column 16.
        field.clear();
        bool inQuote = false;
        Location end = st.at;
        while (p < text.size()) {
            const Ch& ch = text[p];
            if (!inQuote && blank(ch.c)) {
                int card = ch.card;
                bool nextCard = card < text.back().card;
                if (nextCard && !field.empty() && field.back().c == ',') {
                    while (p < text.size() && text[p].card == card) ++p;
                    while (p < text.size() && blank(text[p].c)) ++p;
                    continue;
                }
                break;
            }
            if (ch.c == '\'') inQuote = !inQuote;
            field.push_back(ch);
            end = {&file, ch.line, ch.column + 1};
            ++p;
        }
        st.source.reserve(field.size());
        std::size_t commas = 0;
        for (const Ch& ch : field) {
            st.source.push_back(ch.c);
            commas += ch.c == ',';
        }
        st.operands.reserve(commas + 1);  // as many as there are operands, or more
        remarkStatement(first + (field.empty() ? 0 : field.back().card));
        // A mark in column 73 alone (no sequence number around it) on a card
        // not continued in column 72: the mark one column too far right. The
        // statement it leaves open (a comma at the end, a sublist not closed)
        // is told as that one fault.
        std::string_view lastCard = cards.text(last);
        bool markIn73 = lastCard.size() > kContinueColumn && blank(lastCard[kContinueColumn - 1]) &&
                        !blank(lastCard[kContinueColumn]) &&
                        lastCard.find_first_not_of(' ', kContinueColumn + 1) == std::string_view::npos;
        // Cut short by a card that begins a statement of its own: that fault is
        // told, so what the cut leaves unbalanced is not told again.
        Diagnostics muted;
        OperandParser parser(field, file, cutShort || markIn73 ? muted : diags, end);
        st.broken = !parser.parse(st.operands);
        bool open = st.broken || (!field.empty() && field.back().c == ',');
        if (markIn73 && open) {
            diags.error({&file, cards.line(last), kContinueColumn + 1},
                        "continuation mark in column 73: the statement goes on, but only a mark in column 72 "
                        "continues it");
            st.broken = true;
        } else if (markIn73 && st.broken) {
            for (const Diagnostic& d : muted.all()) diags.error({&file, d.line, d.column}, d.message);
        }
        openBefore = st.broken;
        statements.push_back(std::move(st));
    }
}

}  // namespace

std::vector<Statement> readStatements(const std::string& file, std::string_view bytes, Diagnostics& diags) {
    std::vector<Statement> statements;
    auto notADeck = [&](const std::string& looks) {
        diags.error({&file, 0, 0}, "this is not a generation deck: it looks like " + looks);
        return statements;
    };
    if (std::string looks = bytesLookLike(bytes); !looks.empty()) return notADeck(looks);
    CardTexts cards = decode(bytes, nullptr);
    std::vector<std::string_view> texts;
    texts.reserve(cards.size());
    for (std::size_t i = 0; i < cards.size(); ++i) texts.push_back(cards.text(i));
    if (std::string looks = cardsLookLike(texts); !looks.empty()) return notADeck(looks);
    if (!isJobStream(texts)) {
        statements.reserve(cards.size());  // at most one a card
        readCards(cards, 0, cards.size(), file, diags, statements);
        return statements;
    }
    // A job stream: the decks are its in-stream data sets that open with a
    // generation statement; other data and the job control are passed over.
    bool decks = false;
    for (CardRange r : inStreamData(texts)) {
        if (!opensDeck(texts, r)) continue;
        decks = true;
        readCards(cards, r.begin, r.end, file, diags, statements);
    }
    if (!decks) diags.warning({&file, 0, 0}, "a job stream without DBD or PSB generation statements");
    return statements;
}

}  // namespace krsource

// Cards.cpp — decoding deck bytes into cards and cards into statements (see
// Cards.h for the format). Everything here is linear in the deck's size.
#include <krmwtarn/source/Cards.h>

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
            return fail(std::string("unexpected '") + s_[pos_].c + "' in the operands" +
                        (s_[pos_].c == ')' ? " (unbalanced parentheses)" : ""));
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
            if (depth >= kMaxDepth) return fail("sublists nested deeper than 16 levels");
            v.kind = Value::List;
            ++pos_;
            for (;;) {
                Value item;
                if (!value(item, depth + 1, true)) return false;
                if (v.items.size() == kMaxItems) return fail("a sublist of more than 1000 positions");
                v.items.push_back(std::move(item));
                if (atEnd()) {
                    diags_.error(v.at, "unbalanced parentheses: this sublist is not closed");
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
                return fail(std::string("unexpected '") + s_[pos_].c + "' in a sublist");
            }
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
            break;
        }
        if (v.text.empty()) return fail(std::string("unexpected '") + c + "' in the operands");
        return true;
    }

    const std::vector<Ch>& s_;
    const std::string& file_;
    Diagnostics& diags_;
    Location end_;
    std::size_t pos_ = 0;
};

// Operations whose operand field is free text or absent: what follows them is
// not parsed.
bool freeText(const std::string& op) {
    return op == "TITLE" || op == "PRINT" || op == "EJECT" || op == "SPACE" || op == "END" || op == "FINISH" ||
           op == "DBDGEN";
}

}  // namespace

std::vector<Statement> readStatements(const std::string& file, std::string_view bytes, Diagnostics& diags) {
    std::vector<Statement> statements;
    CardTexts cards = decode(bytes, nullptr);
    statements.reserve(cards.size());  // at most one a card
    std::vector<Ch> text;
    std::vector<Ch> field;
    for (std::size_t i = 0; i < cards.size() && !diags.full(); ++i) {
        std::string_view t = cards.text(i);
        const int firstLine = cards.line(i);
        // A card blank in its statement columns (1-72) is a blank card, whatever
        // its sequence field (73-80) holds.
        std::size_t used = t.find_first_not_of(' ');
        if (used == std::string::npos || used >= static_cast<std::size_t>(kContinueColumn)) continue;
        if (t[0] == '*' || (t.size() > 1 && t[0] == '.' && t[1] == '*')) continue;

        // The statement's cards: this one and every card a column-72 mark continues to.
        std::size_t last = i;
        bool truncated = false;
        while (cards.text(last).size() >= kContinueColumn && !blank(cards.text(last)[kContinueColumn - 1])) {
            if (last + 1 == cards.size()) {
                diags.error({&file, cards.line(last), kContinueColumn},
                            "continuation mark in column 72 on the last card: the statement is incomplete");
                truncated = true;
                break;
            }
            ++last;
        }
        text.clear();
        bool invalid = false;
        for (std::size_t k = i; k <= last; ++k) {
            std::string_view ct = cards.text(k);
            int from = k == i ? 1 : kContinuedText;
            if (k > i && ct.find_first_not_of(' ') < static_cast<std::size_t>(kContinuedText - 1) &&
                ct.find_first_not_of(' ') != std::string::npos)
                diags.warning({&file, cards.line(k), static_cast<int>(ct.find_first_not_of(' ')) + 1},
                              "continuation card: text before column 16 is ignored");
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
                                std::string("invalid character ") + hex + " in the statement");
                    invalid = true;
                }
                text.push_back({c, cards.line(k), col, static_cast<int>(k - i)});
            }
        }
        i = last;
        if (invalid || truncated || text.empty()) continue;

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
            diags.error({&file, firstLine, 1}, "a label without an operation");
            continue;
        }
        st.at = {&file, text[p].line, text[p].column};
        for (char c : token()) st.operation.push_back(static_cast<char>(std::toupper(static_cast<unsigned char>(c))));
        if (freeText(st.operation)) {
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
        OperandParser parser(field, file, diags, end);
        if (!parser.parse(st.operands)) continue;
        statements.push_back(std::move(st));
    }
    return statements;
}

}  // namespace krsource

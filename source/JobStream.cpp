// JobStream.cpp — finding the in-stream data sets of a job stream (see
// JobStream.h). Job-control statements are read only as far as a DD statement's
// `*` or `DATA` and its `DLM=`; everything else on them is passed over.
#include <krmwtarn/source/JobStream.h>

#include <krmwtarn/source/Language.h>

#include <algorithm>
#include <array>
#include <cctype>
#include <string>

namespace krsource {
namespace {

constexpr std::size_t kStatementEnd = 71;  // job-control text ends in column 71 too

bool startsWith(std::string_view t, std::string_view prefix) { return t.substr(0, prefix.size()) == prefix; }
bool jobControl(std::string_view t) { return startsWith(t, "//"); }
bool jobComment(std::string_view t) { return startsWith(t, "//*"); }
bool blankCard(std::string_view t) { return t.substr(0, kStatementEnd + 1).find_first_not_of(' ') == t.npos; }

std::string upper(std::string_view t) {
    std::string u(t);
    for (char& c : u) c = static_cast<char>(std::toupper(static_cast<unsigned char>(c)));
    return u;
}

// The operand field of a job-control card from `from`: up to the first blank
// outside quotes, within the statement columns.
std::string_view operandField(std::string_view t, std::size_t from) {
    t = t.substr(0, kStatementEnd);
    from = t.find_first_not_of(' ', std::min(from, t.size()));
    if (from == t.npos) return {};
    bool quoted = false;
    std::size_t end = from;
    for (; end < t.size() && (quoted || t[end] != ' '); ++end)
        if (t[end] == '\'') quoted = !quoted;
    return t.substr(from, end - from);
}

// The operands of a job-control statement split at commas outside quotes and
// parentheses.
std::vector<std::string> splitOperands(const std::string& field) {
    std::vector<std::string> out(1);
    int depth = 0;
    bool quoted = false;
    for (char c : field) {
        if (c == '\'') quoted = !quoted;
        if (!quoted && c == '(') ++depth;
        if (!quoted && c == ')' && depth > 0) --depth;
        if (!quoted && depth == 0 && c == ',') {
            out.emplace_back();
            continue;
        }
        out.back().push_back(c);
    }
    return out;
}

// A DD statement that opens in-stream data: whether it does, whether it is
// `DATA` (which only its delimiter ends), and the delimiter.
struct InStream {
    bool opens = false;
    bool data = false;
    std::string delimiter = "/*";
};

// Reads the job-control statement at card `i` with its continuation cards;
// `next` is the card after it.
InStream readJobStatement(const std::vector<std::string_view>& cards, std::size_t i, std::size_t& next) {
    std::string_view t = cards[i].substr(0, kStatementEnd);
    // `//NAME OPERATION OPERANDS`: the name (possibly none) ends at the first blank.
    std::size_t at = t.find(' ', 2);
    std::size_t opFrom = at == t.npos ? t.size() : t.find_first_not_of(' ', at);
    std::size_t opEnd = opFrom == t.npos ? t.size() : std::min(t.find(' ', opFrom), t.size());
    std::string op = opFrom == t.npos ? std::string() : upper(t.substr(opFrom, opEnd - opFrom));
    std::string field(operandField(t, opEnd));
    next = i + 1;
    // A field ending in a comma goes on from the next job-control card's column 4-16.
    while (!field.empty() && field.back() == ',' && next < cards.size() && jobControl(cards[next]) &&
           !jobComment(cards[next]))
        field += operandField(cards[next++], 2);

    InStream s;
    if (op != "DD") return s;
    std::vector<std::string> operands = splitOperands(field);
    std::string first = upper(operands.front());
    if (first != "*" && first != "DATA") return s;
    s.opens = true;
    s.data = first == "DATA";
    for (const std::string& o : operands) {
        if (upper(o.substr(0, 4)) != "DLM=") continue;
        std::string d = o.substr(4);
        if (d.size() >= 2 && d.front() == '\'' && d.back() == '\'') d = d.substr(1, d.size() - 2);
        if (!d.empty()) s.delimiter = d.substr(0, 2);
    }
    return s;
}

// The end of the in-stream data from card `from`: the index of the card that
// ends it (cards.size() at the end of the file).
std::size_t dataEnd(const std::vector<std::string_view>& cards, std::size_t from, const InStream& s) {
    std::size_t k = from;
    while (k < cards.size() && !startsWith(cards[k], s.delimiter) && (s.data || !jobControl(cards[k]))) ++k;
    return k;
}

}  // namespace

bool isJobStream(const std::vector<std::string_view>& cards) {
    for (std::size_t i = 0; i < cards.size(); ++i) {
        std::string_view t = cards[i];
        if (blankCard(t)) continue;
        if (jobControl(t)) return true;
        // JES control cards (`/*JOBPARM`, `/*ROUTE`) may come before the JOB card.
        if (!startsWith(t, "/*") || t.size() < 3 || !std::isalpha(static_cast<unsigned char>(t[2]))) return false;
    }
    return false;
}

std::vector<CardRange> inStreamData(const std::vector<std::string_view>& cards) {
    std::vector<CardRange> out;
    std::size_t i = 0;
    while (i < cards.size()) {
        std::string_view t = cards[i];
        if (blankCard(t) || jobComment(t) || startsWith(t, "/*")) {
            ++i;
            continue;
        }
        InStream s;
        std::size_t from = i;
        if (jobControl(t)) {
            s = readJobStatement(cards, i, from);
            if (!s.opens) {
                i = from;
                continue;
            }
        } else {
            s.opens = true;  // data with no DD statement before it: SYSIN DD *
        }
        std::size_t end = dataEnd(cards, from, s);
        out.push_back({from, end});
        // The delimiter card is passed over; a job-control card that ends DD *
        // data is read as the next statement.
        i = end < cards.size() && startsWith(cards[end], s.delimiter) ? end + 1 : end;
    }
    return out;
}

bool generationOperation(std::string_view op) {
    // Any statement of the language but the catalog's own (DFSMARSH, ...) and
    // the ends of an assembly, which open no deck.
    Stmt s = statementNamed(op);
    return s != Stmt::Unknown && s != Stmt::END && s != Stmt::FINISH && statementRow(s).part != Part::Unmodelled;
}

bool opensDeck(const std::vector<std::string_view>& cards, CardRange range) {
    for (std::size_t i = range.begin; i < range.end && i < cards.size(); ++i) {
        std::string_view t = cards[i].substr(0, kStatementEnd);
        if (blankCard(t) || t[0] == '*' || startsWith(t, ".*")) continue;
        std::size_t from = t[0] == ' ' ? 0 : t.find(' ');  // past the label
        from = from == t.npos ? t.npos : t.find_first_not_of(' ', from);
        if (from == t.npos) return false;
        return generationOperation(upper(t.substr(from, std::min(t.find(' ', from), t.size()) - from)));
    }
    return false;
}

}  // namespace krsource

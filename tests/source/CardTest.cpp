// CardTest.cpp — the card format: encodings and line ends, continuation,
// comments, remarks, quoting and nested sublists, and what the reader makes of
// text it cannot take.
#include "DeckTestSupport.h"

#include <gtest/gtest.h>

using krsource::Diagnostics;
using krsource::Statement;
using krsource::Value;

namespace {
std::vector<Statement> read(const std::string& bytes, Diagnostics& d) {
    static const std::string file = "deck";
    return krsource::readStatements(file, bytes, d);
}

std::string card(const std::string& text, bool continued) {
    std::string c = text;
    c.resize(71, ' ');
    return c + (continued ? "X" : "");
}

// ASCII text as EBCDIC 037 or 1047 fixed 80-byte records.
std::string ebcdic(const std::vector<std::string>& cards, bool cp1047) {
    std::string out;
    for (std::string c : cards) {
        c.resize(80, ' ');
        for (char ch : c) {
            unsigned char e = 0x40;
            if (ch >= 'A' && ch <= 'I')
                e = 0xC1 + (ch - 'A');
            else if (ch >= 'J' && ch <= 'R')
                e = 0xD1 + (ch - 'J');
            else if (ch >= 'S' && ch <= 'Z')
                e = 0xE2 + (ch - 'S');
            else if (ch >= '0' && ch <= '9')
                e = 0xF0 + (ch - '0');
            else if (ch == '=')
                e = 0x7E;
            else if (ch == ',')
                e = 0x6B;
            else if (ch == '(')
                e = 0x4D;
            else if (ch == ')')
                e = 0x5D;
            else if (ch == '\'')
                e = 0x7D;
            else if (ch == '*')
                e = 0x5C;
            else if (ch == '[')
                e = cp1047 ? 0xAD : 0xBA;
            out.push_back(static_cast<char>(e));
        }
    }
    return out;
}
}  // namespace

TEST(Cards, OperandsKeepSublistsEmptyPositionsAndQuotes) {
    Diagnostics d;
    auto st = read("LBL      SEGM  RULES=(,HERE),EXIT=(*,KEY,(NOCASCADE)),V=,P='it''s a,b'\n", d);
    ASSERT_EQ(st.size(), 1u);
    EXPECT_FALSE(d.hasErrors());
    EXPECT_EQ(st[0].label, "LBL");
    EXPECT_EQ(st[0].operation, "SEGM");
    const auto& ops = st[0].operands;
    ASSERT_EQ(ops.size(), 4u);
    EXPECT_EQ(ops[0].value.items.size(), 2u);
    EXPECT_TRUE(ops[0].value.items[0].isEmpty());
    EXPECT_EQ(ops[1].value.items[2].kind, Value::List);
    EXPECT_EQ(ops[1].value.items[2].items[0].text, "NOCASCADE");
    EXPECT_TRUE(ops[2].value.isEmpty());
    EXPECT_EQ(ops[3].value.kind, Value::Quoted);
    EXPECT_EQ(ops[3].value.text, "it's a,b");
    EXPECT_EQ(ops[3].value.at.column, 60);
}

TEST(Cards, ContinuationJoinsAtColumn16AndSequenceColumnsAreIgnored) {
    std::string quoted = "         FIELD NAME=(X,SEQ,U),CONST='A QUOTED TEXT";
    std::string deck = card("         SEGM  NAME=A,PARENT=((B,SNGL),", true) + "00000010\n" +
                       card("               (C,PHYSICAL,D)),BYTES=4   REMARK", false) + " 00000020\n" +
                       card(quoted, true) + "\n" + "               SEVENTY-ONE'\n";
    Diagnostics d;
    auto st = read(deck, d);
    ASSERT_EQ(st.size(), 2u) << d.all().size();
    EXPECT_FALSE(d.hasErrors());
    ASSERT_EQ(st[0].operands.size(), 3u);
    EXPECT_EQ(st[0].operands[1].value.items[1].items[1].text, "PHYSICAL");
    EXPECT_EQ(st[0].operands[1].value.items[1].at.line, 2);
    EXPECT_EQ(st[0].operands[2].value.text, "4");
    EXPECT_EQ(st[1].operands[1].value.text, "A QUOTED TEXT" + std::string(71 - quoted.size(), ' ') + "SEVENTY-ONE");

    // A card blank in columns 1-72 is a blank card, sequence number or not
    // (tabs can carry text past column 72 too).
    deck = std::string(72, ' ') + "00000030\n" + "\t\t\t\t\t\t\t\t\t\tSTRAY\n" + card("         DBDGEN", false) + "\n";
    Diagnostics blank;
    st = read(deck, blank);
    ASSERT_EQ(st.size(), 1u);
    EXPECT_EQ(st[0].operation, "DBDGEN");
    EXPECT_FALSE(blank.hasErrors());
}

TEST(Cards, LineEndsTabsCommentsAndEndOfFileByte) {
    Diagnostics d;
    auto st = read("* comment\r\n.* another\r\n\tdbd\tNAME=X,ACCESS=GSAM\r\n\r\n         dbdgen\r\n\x1agarbage", d);
    ASSERT_EQ(st.size(), 2u);
    EXPECT_EQ(st[0].operation, "DBD");
    EXPECT_EQ(st[0].at.column, 9);
    EXPECT_EQ(st[1].operation, "DBDGEN");
    EXPECT_FALSE(d.hasErrors());
}

class Encodings : public ::testing::TestWithParam<bool> {};

TEST_P(Encodings, EbcdicRecordsWithoutLineEndsAreDetectedAndRead) {
    std::string bytes =
        ebcdic({"* COMMENT [", "         DBD   NAME=HIST,ACCESS=(GSAM,BSAM)", "         DBDGEN"}, GetParam());
    krsource::Encoding e;
    auto cards = krsource::decodeCards(bytes, &e);
    EXPECT_EQ(e, GetParam() ? krsource::Encoding::Ebcdic1047 : krsource::Encoding::Ebcdic037);
    ASSERT_EQ(cards.size(), 3u);
    EXPECT_EQ(cards[0].text.substr(0, 11), "* COMMENT [");
    Diagnostics d;
    auto st = read(bytes, d);
    ASSERT_EQ(st.size(), 2u);
    EXPECT_EQ(st[0].operands[1].value.items[1].text, "BSAM");
}
INSTANTIATE_TEST_SUITE_P(CodePages, Encodings, ::testing::Values(false, true));

// Malformed card text: the message and its place.
struct BadCards {
    std::string deck;
    int line, column;
    const char* message;
};
class Malformed : public ::testing::TestWithParam<BadCards> {};

TEST_P(Malformed, IsALocatedError) {
    Diagnostics d;
    read(GetParam().deck, d);
    ASSERT_TRUE(d.hasErrors());
    const auto& first = d.all().front();
    EXPECT_EQ(first.line, GetParam().line);
    EXPECT_EQ(first.column, GetParam().column);
    EXPECT_NE(first.message.find(GetParam().message), std::string::npos) << first.text();
}
INSTANTIATE_TEST_SUITE_P(Cards, Malformed,
                         ::testing::Values(BadCards{"         SEGM  NAME=(A,B\n", 1, 21, "unbalanced parentheses"},
                                           BadCards{"         SEGM  NAME=A)\n", 1, 22, "unbalanced parentheses"},
                                           BadCards{"         SEGM  NAME='ABC\n", 1, 25, "closing quote"},
                                           BadCards{card("         SEGM  NAME=A,", true) + "\n", 1, 72, "last card"},
                                           BadCards{"         SEGM  NAME=\x01\n", 1, 21, "invalid character 0x01"},
                                           BadCards{"         SEGM  X=((((((((((((((((((A))))))))))))))))))\n", 1, 34,
                                                    "nested deeper"},
                                           BadCards{"LABELONLY\n", 1, 1, "without an operation"}));

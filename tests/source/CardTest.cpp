// CardTest.cpp — the card format: encodings and line ends, continuation,
// comments, remarks, quoting, nested sublists and suffixed values, what the
// reader makes of text it cannot take, and files that are no deck at all.
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
                                           BadCards{"LABELONLY\n", 1, 1, "without an operation"},
                                           BadCards{"         FIELD X=CHAR(10\n", 1, 22, "unbalanced parentheses"},
                                           BadCards{"         FIELD X=CHAR(1)(2)\n", 1, 25, "a comma or the operands"},
                                           BadCards{"         FIELD X==A\n", 1, 18, "'=' where a value"}));

TEST(Cards, AWordWithAParenthesisedSuffixIsOneValue) {
    Diagnostics d;
    auto st = read("         FIELD DATATYPE=DECIMAL(15,2),X=CHAR(10),Y=(A,B(1,(2,3))),Z=(4)\n", d);
    ASSERT_EQ(st.size(), 1u);
    EXPECT_FALSE(d.hasErrors());
    const auto& ops = st[0].operands;
    ASSERT_EQ(ops.size(), 4u);
    EXPECT_EQ(ops[0].value.kind, Value::Word);
    EXPECT_EQ(ops[0].value.text, "DECIMAL(15,2)");
    ASSERT_EQ(ops[0].value.items.size(), 2u);
    EXPECT_EQ(ops[0].value.items[1].text, "2");
    EXPECT_EQ(ops[0].value.items[1].at.column, 36);
    EXPECT_EQ(ops[1].value.text, "CHAR(10)");
    // Inside a sublist, with a nested sublist in the suffix.
    const Value& b = ops[2].value.items[1];
    EXPECT_EQ(b.text, "B(1,(2,3))");
    ASSERT_EQ(b.items.size(), 2u);
    EXPECT_EQ(b.items[1].kind, Value::List);
    EXPECT_EQ(b.items[1].items[1].text, "3");
    // A parenthesis opening a value is a sublist still.
    EXPECT_EQ(ops[3].value.kind, Value::List);
}

// A continuation mark with a card that does not continue: one error at the
// card, and the card is not lost.
TEST(Cards, MisplacedContinuationCardsAreErrorsAtTheCard) {
    Diagnostics d;
    auto st =
        read(card("         SEGM  NAME=A,PARENT=0", true) + "\n         DATASET DD1=X\n         FIELD NAME=B\n", d);
    ASSERT_EQ(d.all().size(), 1u);
    EXPECT_EQ(d.all()[0].text(),
              "deck:2:10: error: continuation card: text found in column 10, where continued text begins in column 16 "
              "(column 72 of the card before is not blank)");
    ASSERT_EQ(st.size(), 3u);
    EXPECT_EQ(st[1].operation, "DATASET");

    // Operands continued too far left: the statement stands broken, unread,
    // nothing else said.
    Diagnostics left;
    st = read(card("         SEGM  NAME=A,", true) + "\n          PARENT=0\n         FIELD NAME=B\n", left);
    ASSERT_EQ(left.all().size(), 1u);
    EXPECT_EQ(left.all()[0].line, 2);
    EXPECT_EQ(left.all()[0].column, 11);
    ASSERT_EQ(st.size(), 2u);
    EXPECT_TRUE(st[0].broken);
    EXPECT_EQ(st[0].operation, "SEGM");
    EXPECT_EQ(st[1].operation, "FIELD");
    EXPECT_FALSE(st[1].broken);

    // A statement continued into from column 16 is read as a remark: an error
    // naming it; a remark continued is none.
    Diagnostics remark;
    read(card("         SEGM  NAME=A,PARENT=0", true) + "\n               FIELD NAME=B\n" +
             card("         DBDGEN", true) + "\n               SEGM  NAME=C\n",
         remark);
    ASSERT_EQ(remark.all().size(), 2u);
    EXPECT_EQ(remark.all()[0].text(),
              "deck:2:16: error: continuation card: the FIELD statement on it is read as a remark, as column 72 of "
              "the card before is not blank");
    EXPECT_EQ(remark.all()[1].line, 4);
    Diagnostics fine;
    read(card("         SEGM  NAME=A    THE ROOT,", true) + "\n               FIELD NAMES FOLLOW\n", fine);
    EXPECT_TRUE(fine.all().empty());
}

// Files that are no deck: one error for the file, nothing for its cards.
struct NotADeck {
    const char* name;
    std::string bytes;
    const char* looks;
};
class NotDecks : public ::testing::TestWithParam<NotADeck> {};

std::string utf16(const std::string& text, bool bom) {
    std::string out = bom ? "\xff\xfe" : "";
    for (char c : text) out += std::string(1, c) + '\0';
    return out;
}

TEST_P(NotDecks, GiveOneErrorForTheFile) {
    Diagnostics d;
    auto st = read(GetParam().bytes, d);
    EXPECT_TRUE(st.empty());
    ASSERT_EQ(d.all().size(), 1u);
    EXPECT_EQ(d.all()[0].text(),
              std::string("deck: error: this is not a generation deck: it looks like ") + GetParam().looks);
}
INSTANTIATE_TEST_SUITE_P(
    Cards, NotDecks,
    ::testing::Values(NotADeck{"Utf16WithMark", utf16("         DBD   NAME=X\r\n", true),
                               "UTF-16 text (byte-order mark FF FE)"},
                      NotADeck{"Utf16WithoutMark", "\0" + utf16("         DBD   NAME=X\r\n", false).substr(0, 40),
                               "UTF-16 text (no byte-order mark, a NUL byte in every other position)"},
                      NotADeck{"Binary",
                               std::string("\x7f"
                                           "ELF\x02\x01\x01\0\0\0\0\0\0\0\0\0\x03\0>\0\x01\0\0\0",
                                           24) +
                                   std::string(200, 'A'),
                               "binary data (20 NUL or control bytes in the first 224)"},
                      NotADeck{"Copybook",
                               "000100* ORDER RECORD\n000200 01  ORDER-REC.\n000300     05  ORD-NO     PIC 9(8).\n"
                               "000400     05  ORD-TEXT   PIC X(30)\n000500                    VALUE SPACES.\n"
                               "000600     05  ORD-FLAG   PIC X.\n000700         88  ORD-OPEN   VALUE 'O'.\n",
                               "a COBOL copybook (level-numbered data items)"}),
    [](const auto& info) { return std::string(info.param.name); });

// A continuation mark one column too far right (column 73, nothing after it):
// one error at the mark for the statement it leaves open, and the operand
// cards after it are part of that fault. A sequence number there is no mark.
TEST(Cards, AMarkInColumn73IsOneErrorAtTheMark) {
    auto mark73 = [](const std::string& text) {
        std::string c = text;
        c.resize(72, ' ');
        return c + "X";
    };
    Diagnostics d;
    auto st = read(mark73("         XDFLD NAME=XA,") + "\n               SRCH=(A,B),\n               SUBSEQ=(C)\n" +
                       mark73("         SEGM  NAME=B,PARENT=((A,SNGL),") + "\n               (L,PHYSICAL,D))\n" +
                       "         FIELD NAME=F\n",
                   d);
    ASSERT_EQ(d.all().size(), 2u);
    EXPECT_EQ(d.all()[0].text(),
              "deck:1:73: error: continuation mark in column 73: the statement goes on, but only a mark in column 72 "
              "continues it");
    EXPECT_EQ(d.all()[1].line, 4);
    ASSERT_EQ(st.size(), 3u);
    EXPECT_TRUE(st[0].broken && st[1].broken);
    EXPECT_EQ(st[1].operation, "SEGM");
    EXPECT_EQ(st[2].operation, "FIELD");
    // Sequence numbers in 73-80 and a complete statement: nothing to say.
    Diagnostics seq;
    std::string numbered = "         SEGM  NAME=B,PARENT=A";
    numbered.resize(72, ' ');
    read(numbered + "00000010\n" + mark73("         FIELD NAME=F") + "\n", seq);
    EXPECT_TRUE(seq.all().empty()) << seq.all()[0].text();
}

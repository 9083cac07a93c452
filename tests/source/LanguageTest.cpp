// LanguageTest.cpp — the language table as the reader, the writer and the
// README use it: every row is found by its spelling and aliases, the writer
// puts a statement's operands in the table's order whatever order a deck gave
// them in, and the README's table of the language is the table's.
#include "DeckTestSupport.h"

#include <krmwtarn/source/Language.h>

#include <gtest/gtest.h>

#include <sstream>

using namespace krsource;

TEST(Language, EveryRowIsFoundByItsSpellingAndNoOtherStatementsRow) {
    for (std::size_t s = 0; s < kStatementCount; ++s) {
        const StatementRow& st = statementRow(Stmt(s));
        EXPECT_EQ(statementNamed(st.name), Stmt(s));
        for (std::size_t k = st.first; k < std::size_t(st.first) + st.count; ++k) {
            const KeywordRow& row = keywordRow(Kw(k));
            EXPECT_EQ(row.statement, Stmt(s)) << row.name;
            Kw found = row.positional ? positionalNamed(Stmt(s), row.name) : keywordNamed(Stmt(s), row.name);
            EXPECT_EQ(found, Kw(k)) << st.name << " " << row.name;
            if (row.shape == Shape::Number) {
                EXPECT_LE(row.lo, row.hi) << row.name;
            }
            if (row.shape == Shape::Choice) {
                EXPECT_TRUE(row.words[0]) << row.name;
            }
        }
    }
    EXPECT_EQ(keywordNamed(Stmt::SEGM, "PTR"), Kw::SEGM_POINTER);
    EXPECT_EQ(keywordNamed(Stmt::LCHILD, "PTR"), Kw::LCHILD_POINTER);
    EXPECT_EQ(keywordNamed(Stmt::FIELD, "PTR"), Kw::None);
    EXPECT_EQ(keywordNamed(Stmt::DATASET, "LOGICAL"), Kw::None);  // a positional word, not a keyword
    EXPECT_EQ(positionalNamed(Stmt::DATASET, "LOGICAL"), Kw::DATASET_LOGICAL);
    EXPECT_EQ(statementNamed("SEGMENT"), Stmt::Unknown);
    EXPECT_EQ(choiceList(Kw::PCB_POS), "S, SINGLE, M or MULTIPLE");
    EXPECT_TRUE(choiceHas(Kw::PCB_TYPE, "GSAM"));
    EXPECT_FALSE(choiceHas(Kw::PCB_TYPE, "GSA"));
    EXPECT_EQ(organisationAccess("PHIDAM"), Access::Hidam);
    EXPECT_EQ(organisationAccess("PSINDEX"), Access::Index);
    EXPECT_EQ(organisationAccess("HIDAMX"), Access::Unknown);
}

// A deck that gives every statement's operands back to front is written with
// them in the table's order.
TEST(Language, TheWriterPutsOperandsInTheTablesOrder) {
    const char* deck =
        "         DBD   RMNAME=(DFSHDC40,3,100),ACCESS=(HDAM,OSAM),NAME=ORD\n"
        "         DATASET SCAN=3,SIZE=(2048),DEVICE=3390,DD1=ORDDD\n"
        "         SEGM  FREQ=10,BYTES=(40),PARENT=0,NAME=ROOT\n"
        "         FIELD TYPE=P,BYTES=4,START=1,NAME=(KEY,SEQ,U)\n"
        "         DBDGEN\n"
        "         PCB   PCBNAME=P1,KEYLEN=4,PROCOPT=G,DBDNAME=ORD,TYPE=DB\n"
        "         SENSEG PROCOPT=G,NAME=ROOT\n"
        "         PSBGEN PSBNAME=ORDPSB,LANG=COBOL\n";
    LoadResult r = loadDecks({{"ord.dbd", deck}});
    ASSERT_TRUE(r.ok()) << decktest::report(r);
    std::string written = writeDbdDeck(r.dbds[0].operator->()) + writePsbDeck(r.psbs[0].operator->());
    std::vector<Statement> statements;
    Diagnostics diags;
    std::string file = "written";
    statements = readStatements(file, written, diags);
    ASSERT_FALSE(diags.hasErrors());
    std::size_t checked = 0;
    for (const Statement& st : statements) {
        Stmt s = statementNamed(st.operation);
        Kw previous = Kw::None;
        for (const Operand& op : st.operands) {
            Kw k = op.keyword.empty() ? positionalNamed(s, op.value.text) : keywordNamed(s, op.keyword);
            ASSERT_NE(k, Kw::None) << st.operation << " " << op.keyword;
            if (previous != Kw::None) {
                EXPECT_LT(previous, k) << st.operation << " " << op.keyword;
            }
            previous = k;
            ++checked;
        }
    }
    EXPECT_GE(checked, 20u);
    DSRegistrar::releaseAll();
}

TEST(Language, TheReadmeListsTheLanguageAsTheTableHasIt) {
    std::string readme = decktest::readFile(KRMWTARN_README);
    std::string table = languageTable();
    EXPECT_NE(readme.find(table), std::string::npos) << "the README's table of the language should read:\n" << table;
}

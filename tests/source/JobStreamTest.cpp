// JobStreamTest.cpp — decks inside job streams: where in-stream data sets begin
// and end, which of them are decks, diagnostics placed on the job file's lines,
// a job without a deck, and the job streams of the shared corpus.
#include "DeckTestSupport.h"

#include <krmwtarn/source/JobStream.h>

#include <gtest/gtest.h>

#include <filesystem>

using krsource::CardRange;
using krsource::Diagnostics;
using krsource::Statement;

namespace {

std::vector<std::string_view> views(const std::vector<std::string>& cards) {
    return std::vector<std::string_view>(cards.begin(), cards.end());
}

// The data sets as "first-last" card indices, ends excluded.
std::vector<std::string> ranges(const std::vector<std::string>& cards) {
    std::vector<std::string> out;
    for (CardRange r : krsource::inStreamData(views(cards)))
        out.push_back(std::to_string(r.begin) + "-" + std::to_string(r.end));
    return out;
}

const Statement* find(const std::vector<Statement>& sts, const std::string& op) {
    for (const Statement& st : sts)
        if (st.operation == op) return &st;
    return nullptr;
}

}  // namespace

TEST(JobStream, DataSetsEndWhereTheirKindSays) {
    using V = std::vector<std::string>;
    // DD * ends at /* (passed over) or at the next job-control card (read as such).
    EXPECT_EQ(ranges({"//J JOB", "//IN DD *", "A", "/*", "//IN2 DD  *", "B", "C", "//S EXEC PGM=X", "//IN3 DD *", "D"}),
              (V{"2-3", "5-7", "9-10"}));
    // DD DATA passes job-control cards and ends only at its delimiter.
    EXPECT_EQ(ranges({"//J JOB", "//IN DD DATA", "//X DD *", "A", "/*", "//N DD DATA,DLM=$$", "/*", "$$"}),
              (V{"2-4", "6-7"}));
    // DLM= (quoted or not, on a continuation card too) replaces /*; DD * still
    // ends at a job-control card.
    EXPECT_EQ(ranges({"//J JOB", "//IN DD *,DLM='##'", "/*", "##", "//IN DD *,", "//   DLM=@@", "/*", "//S EXEC"}),
              (V{"2-3", "6-7"}));
    // Cards without a DD statement before them are a data set of their own;
    // JES cards, comments and other statements are no data.
    EXPECT_EQ(ranges({"/*JOBPARM L=1", "//J JOB", "//*  IN DD *", "//O DD SYSOUT=*", "A", "B", "//S EXEC"}),
              (V{"4-6"}));
    EXPECT_TRUE(krsource::isJobStream(views({"", "/*JOBPARM L=1", "//J JOB"})));
    EXPECT_FALSE(krsource::isJobStream(views({"* //J JOB", "//J JOB"})));
    EXPECT_FALSE(krsource::isJobStream(views({"/* NOT A JES CARD", "//J JOB"})));
}

TEST(JobStream, InStreamDecksAreReadWithTheJobFilesLineNumbers) {
    std::string job = decktest::readFile(KRMWTARN_JOBS_DIR "/orders.jcl");
    Diagnostics d;
    static const std::string file = "orders.jcl";
    auto sts = krsource::readStatements(file, job, d);
    EXPECT_TRUE(d.all().empty()) << d.all().front().text();
    std::string ops;
    for (const Statement& st : sts) ops += st.operation + "@" + std::to_string(st.at.line) + " ";
    // The COBOL program's data set (with a job-control card and a SEGM in it)
    // and the program's input are passed over.
    EXPECT_EQ(ops,
              "PRINT@5 DBD@6 DATASET@7 SEGM@8 FIELD@9 SEGM@10 FIELD@11 DBDGEN@12 FINISH@13 END@14 "
              "PCB@20 SENSEG@21 SENSEG@22 PSBGEN@23 END@24 ");

    krsource::LoadResult r = krsource::loadDecks({{"orders.jcl", job}});
    EXPECT_TRUE(r.ok()) << decktest::report(r);
    EXPECT_EQ(r.dbds.size(), 1u);
    EXPECT_EQ(r.psbs.size(), 1u);
    r = krsource::LoadResult();
    DSRegistrar::releaseAll();
}

TEST(JobStream, OnlyTheDecksSpeak) {
    // Job control of any shape says nothing; a fault in a deck is placed on
    // the job file's line.
    static const std::string file = "job.jcl";
    Diagnostics d;
    krsource::readStatements(file,
                             "//J JOB ((((,'UNCLOSED\n//S EXEC PGM=ASMA90,PARM=)(\n//SYSIN DD *\n"
                             "         DBD   NAME=D,ACCESS=HSAM\n         SEGM  NAME=(A\n/*\n",
                             d);
    ASSERT_EQ(d.all().size(), 1u);
    EXPECT_EQ(d.all()[0].text(), "job.jcl:5:21: error: unbalanced parentheses: this sublist is not closed");

    // A job whose data sets hold no deck: one warning for the file.
    Diagnostics none;
    auto sts = krsource::readStatements(
        file, "//J JOB\n//C EXEC PGM=IGYCRCTL\n//SYSIN DD *\n       IDENTIFICATION DIVISION.\n/*\n", none);
    EXPECT_TRUE(sts.empty());
    ASSERT_EQ(none.all().size(), 1u);
    EXPECT_EQ(none.all()[0].text(), "job.jcl: warning: a job stream without DBD or PSB generation statements");
}

TEST(JobStream, CorpusJobsYieldTheirDecks) {
    const std::filesystem::path dir = KRMWTARN_CORPUS_DIR "/decks/niu-cs466";
    if (!std::filesystem::exists(dir / "prog1.jcl"))
        GTEST_SKIP() << "the shared corpus is absent (" << dir.string() << "): its job streams are not read";
    static const std::string file = "prog1.jcl";
    Diagnostics d;
    auto sts = krsource::readStatements(file, decktest::readFile((dir / file).string()), d);
    EXPECT_FALSE(d.hasErrors()) << d.all().front().text();
    const Statement* dbd = find(sts, "DBD");
    ASSERT_NE(dbd, nullptr);
    ASSERT_FALSE(dbd->operands.empty());
    EXPECT_EQ(dbd->operands[0].value.text, "BUSDBD");
    EXPECT_EQ(dbd->at.line, 74);
    const Statement* psbgen = find(sts, "PSBGEN");
    ASSERT_NE(psbgen, nullptr);
    EXPECT_EQ(psbgen->at.line, 141);
    EXPECT_EQ(psbgen->source, "LANG=COBOL,PSBNAME=BUSPSB");

    // The other jobs hold versions of the PSB alone; none of their cards is an error.
    for (const char* other : {"prog2.jcl", "prog3.jcl"}) {
        Diagnostics od;
        auto os = krsource::readStatements(file, decktest::readFile((dir / other).string()), od);
        EXPECT_FALSE(od.hasErrors()) << other << ": " << od.all().front().text();
        EXPECT_NE(find(os, "PSBGEN"), nullptr) << other;
    }
}

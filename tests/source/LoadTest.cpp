// LoadTest.cpp — loading decks: the hand-written decks load with exactly the
// warnings they should give; operands reach their attributes and links;
// hostile decks give located diagnostics and leave the repository as it was.
#include "DeckTestSupport.h"

#include <gtest/gtest.h>

#include <algorithm>

using krsource::Deck;
using krsource::LoadResult;

namespace {
class Load : public ::testing::Test {
protected:
    void TearDown() override { DSRegistrar::releaseAll(); }
};

const char* kHospital =
    "         DBD   NAME=H,ACCESS=(HIDAM,VSAM)\n"
    "         SEGM  NAME=ROOT,BYTES=10\n"
    "         FIELD NAME=(KEY,SEQ,U),BYTES=4,START=1\n"
    "         SEGM  NAME=CHILD,PARENT=ROOT,BYTES=10\n"
    "         DBDGEN\n";
}  // namespace

TEST_F(Load, HandWrittenDecksLoadWithTheirWarnings) {
    LoadResult r = krsource::loadDecks(decktest::handWrittenDecks());
    ASSERT_TRUE(r.ok()) << decktest::report(r);
    EXPECT_EQ(r.dbds.size(), 9u);
    EXPECT_EQ(r.psbs.size(), 2u);
    std::string all = decktest::report(r);
    EXPECT_NE(all.find("hospital.dbd:15:47: warning: FIELD DATATYPE: keyword has no place in the model; ignored"),
              std::string::npos)
        << all;
    EXPECT_NE(all.find("hospital.dbd:16:16: warning: FIELD PATTERN: not a keyword of FIELD; ignored"),
              std::string::npos);
}

TEST_F(Load, OperandsReachTheirAttributesAndLinks) {
    LoadResult r = krsource::loadDecks(decktest::handWrittenDecks());
    ASSERT_TRUE(r.ok());
    const char* v = krsource::kDeckVersion;
    auto hdam = static_cast<_DSDBDhdam*>(DSRegistrar::findObj("DSDBDhdam", "PARTDBD.ACCESS", v));
    ASSERT_NE(hdam, nullptr);
    EXPECT_STREQ(hdam->_get_rmName(), "DFSHDC40");
    EXPECT_EQ(hdam->_get_rootAnchorPoints(), 5);
    EXPECT_EQ(hdam->_get_relativeBlockNumber(), 800);
    EXPECT_EQ(hdam->_get_rootMaxBytes(), 2000);
    EXPECT_EQ(hdam->_get_osAccess(), 0);  // OSAM
    auto capt = static_cast<_DSExit*>(DSRegistrar::findObj("DSExit", "PARTDBD.CAPTPART", v));
    ASSERT_NE(capt, nullptr);
    EXPECT_EQ(
        capt->_get_exitKey() * 1000 + capt->_get_exitData() * 100 + capt->_get_exitPath() * 10 + capt->_get_logFlag(),
        1011);
    EXPECT_EQ(capt->_get_cascade() + capt->_get_cascadeKey() + capt->_get_cascadeData() + capt->_get_cascadePath(), 3);
    // EXIT=(*,...) on the root stands for the DBD's two exits.
    auto root = static_cast<_DSSegmentComplex*>(DSRegistrar::findObj("DSSegmentComplex", "PARTDBD.PARTROOT", v));
    EXPECT_EQ(root->_get_exits()->count(), 2);
    auto ds = static_cast<_DSTARNDataset*>(DSRegistrar::findObj("DSTARNDataset", "PARTPRIM.DATASET", v));
    EXPECT_STREQ(ds->_get_datasetLabel(), "PARTS");
    EXPECT_EQ(ds->_get_size1() + ds->_get_size2(), 6144);
    EXPECT_EQ(ds->_get_freeSpacePercentage(), 20);
    EXPECT_EQ(ds->_get_searchAlgorithm(), '1');
    EXPECT_EQ(root->_getFirst_dataset()->impl(), ds);
    auto treat = static_cast<_DSSegmentComplex*>(DSRegistrar::findObj("DSSegmentComplex", "HOSPDBD.TREATMNT", v));
    ASSERT_EQ(treat->_get_logParent()->count(), 1);
    auto rel = static_cast<_DSLChild*>(treat->_get_logParent()->at(0)->impl());
    EXPECT_STREQ(rel->_get_strLPARENT(), "DOCTOR");
    EXPECT_STREQ(rel->_get_virtualParent(), "PHYSICAL");
    EXPECT_STREQ(rel->_get_ltwin(), "LTWIN");
    EXPECT_EQ(rel->_get_lparent() + rel->_get_counter(), 2);
    EXPECT_STREQ(treat->_get_segmPointer(), "TWIN");
    EXPECT_EQ(treat->_get_insertFlag(), 'V');
    EXPECT_STREQ(treat->_get_rules(), "FIRST");
    auto hidam = static_cast<_DSDBDhidam*>(DSRegistrar::findObj("DSDBDhidam", "HOSPDBD.ACCESS", v));
    EXPECT_STREQ(hidam->_getFirst_rootSequenceField()->operator->()->_get_strFieldName(), "HOSPCODE");
    EXPECT_EQ(hidam->_getFirst_primaryIndex()->impl(), DSRegistrar::findObj("DSDBDindex", "HOSPIDX.ACCESS", v));
    auto x = static_cast<_DSXDFLD*>(DSRegistrar::findObj("DSXDFLD", "XPATNAME", v));
    EXPECT_EQ(x->_get_ddata()->count(), 2);
    EXPECT_STREQ(x->_get_constant(), "X'C1'");
    auto psb = static_cast<_DSPSB*>(DSRegistrar::findObj("DSPSB", "HOSPPSB", v));
    EXPECT_EQ(psb->_get_listPCBs()->count(), 7);
    EXPECT_EQ(psb->_get_ioErrorOption(), 451);
    EXPECT_EQ(psb->_get_writeToOperator(), 1);
    auto patient = static_cast<_DSSenSegment*>(DSRegistrar::findObj("DSSenSegment", "HOSPPSB.HOSPPCB.PATIENT", v));
    EXPECT_EQ(patient->_get_subsetPointer1(), 'R');
    EXPECT_EQ(patient->_get_subsetPointer3(), 'U');
    EXPECT_EQ(patient->_get_senflds()->count(), 2);
    auto named = static_cast<_DSPCBdb*>(DSRegistrar::findObj("DSPCBdb", "HOSPPSB.NAMEPCB.TYPE", v));
    EXPECT_EQ(named->_getFirst_procseq()->impl(), DSRegistrar::findObj("DSDBDindex", "NAMEIDX.ACCESS", v));
}

TEST_F(Load, TheSameDeckTwiceSharesItsObjects) {
    LoadResult r = krsource::loadDecks({{"a.dbd", kHospital}, {"b.dbd", kHospital}});
    ASSERT_TRUE(r.ok()) << decktest::report(r);
    EXPECT_EQ(r.dbds.size(), 1u);
    std::size_t objects = DSRegistrar::count();
    LoadResult again = krsource::loadDecks({{"c.dbd", kHospital}});
    EXPECT_TRUE(again.ok());
    EXPECT_EQ(DSRegistrar::count(), objects);
    ASSERT_EQ(again.diagnostics.size(), 1u);
    EXPECT_NE(again.diagnostics[0].message.find("already in the repository"), std::string::npos);
    // Another version keeps them apart.
    LoadResult other = krsource::loadDecks({{"c.dbd", kHospital}}, "V2");
    EXPECT_TRUE(other.ok());
    EXPECT_GT(DSRegistrar::count(), objects);
}

// A statement that opens a group (SEGM, PCB, SENSEG) and fails is told once:
// its members do not add "no ... before it" for the same fault, while members
// with no opener at all are still told.
TEST(LoadErrors, AFailedOpenerIsToldOnceAndATrueOrphanStill) {
    auto errors = [](const std::vector<Deck>& decks) {
        LoadResult r = krsource::loadDecks(decks);
        std::vector<std::string> e;
        for (const auto& d : r.diagnostics)
            if (d.severity == krsource::Severity::Error) e.push_back(d.text());
        DSRegistrar::releaseAll();
        return e;
    };
    using V = std::vector<std::string>;
    EXPECT_EQ(errors({{"p.psb",
                       "         PCB   TYPE=DB,DBDNAME=NODBD\n         SENSEG NAME=A\n         SENFLD NAME=F\n"
                       "         SENSEG NAME=B,PARENT=A\n         PSBGEN PSBNAME=P\n"}}),
              (V{"p.psb:1:32: error: PCB DBDNAME: no DBD named NODBD"}));
    EXPECT_EQ(errors({{"d.dbd",
                       "         DBD   NAME=D,ACCESS=HISAM\n         SEGM  NAME=A,BYTES=(1X)\n"
                       "         FIELD NAME=F,START=1,BYTES=1\n         DBDGEN\n"}}),
              (V{"d.dbd:2:30: error: SEGM BYTES: a number from 0 to 32767 is expected, not '1X'"}));
    EXPECT_EQ(errors({{"t.psb",
                       "         PCB   TYPE=TP,NAME=OUT\n         SENSEG NAME=A\n         SENFLD NAME=F\n"
                       "         PSBGEN PSBNAME=T\n"}}),
              (V{"t.psb:2:10: error: SENSEG: no database PCB before it"}));
}

// Physical pairing across two databases: each LCHILD's PAIR names the logical
// child that lives under the LCHILD's own segment, in the LCHILD's own DBD.
TEST(LoadPairs, PhysicalPairingAcrossTwoDbdsLoads) {
    LoadResult r =
        krsource::loadDecks({{"a.dbd",
                              "         DBD   NAME=A,ACCESS=HIDAM\n         SEGM  NAME=PA,BYTES=8\n"
                              "         LCHILD NAME=(CB,B),PAIR=CA,POINTER=DBLE\n"
                              "         SEGM  NAME=CA,BYTES=8,PARENT=((PA),(PB,PHYSICAL,B))\n         DBDGEN\n"},
                             {"b.dbd",
                              "         DBD   NAME=B,ACCESS=HIDAM\n         SEGM  NAME=PB,BYTES=8\n"
                              "         LCHILD NAME=(CA,A),PAIR=CB,POINTER=DBLE\n"
                              "         SEGM  NAME=CB,BYTES=8,PARENT=((PB),(PA,PHYSICAL,A))\n         DBDGEN\n"}});
    ASSERT_TRUE(r.ok()) << decktest::report(r);
    auto pairOf = [](const char* dbd, const char* seg) {
        auto* s = static_cast<_DSSegmentComplex*>(
            DSRegistrar::findObj("DSSegmentComplex", (std::string(dbd) + "." + seg).c_str(), krsource::kDeckVersion));
        EXPECT_NE(s, nullptr) << dbd << "." << seg;
        return s;
    };
    EXPECT_NE(pairOf("A", "CA"), nullptr);
    EXPECT_NE(pairOf("B", "CB"), nullptr);
    std::size_t pairs = 0;
    DSRegistrar::forEach([&](_ADObject* o) { pairs += o->isKindOf("DSHasPair") ? 1 : 0; });
    EXPECT_EQ(pairs, 2u);
    // Written back, the decks load to the same pairs.
    std::vector<Deck> written;
    for (const DSDBD& d : r.dbds)
        written.push_back({std::string(d->objID()) + ".dbd", krsource::writeDbdDeck(d.operator->())});
    r = LoadResult();
    DSRegistrar::releaseAll();
    LoadResult again = krsource::loadDecks(written);
    ASSERT_TRUE(again.ok()) << decktest::report(again);
    pairs = 0;
    DSRegistrar::forEach([&](_ADObject* o) { pairs += o->isKindOf("DSHasPair") ? 1 : 0; });
    EXPECT_EQ(pairs, 2u);
    again = LoadResult();
    DSRegistrar::releaseAll();
}

// A hostile deck set: the first error it must give (file:line:column: message).
struct Hostile {
    const char* name;
    std::vector<Deck> decks;
    const char* error;
};
class HostileDecks : public ::testing::TestWithParam<Hostile> {
protected:
    void TearDown() override { DSRegistrar::releaseAll(); }
};

TEST_P(HostileDecks, GiveALocatedErrorAndLeaveTheRepositoryAsItWas) {
    LoadResult base = krsource::loadDecks({{"base.dbd", kHospital}}, "BASE");
    ASSERT_TRUE(base.ok());
    std::size_t before = DSRegistrar::count();
    LoadResult r = krsource::loadDecks(GetParam().decks);
    EXPECT_FALSE(r.ok());
    EXPECT_TRUE(r.dbds.empty() && r.psbs.empty());
    std::string all = decktest::report(r);
    EXPECT_NE(all.find(GetParam().error), std::string::npos) << all;
    r = LoadResult();
    EXPECT_EQ(DSRegistrar::count(), before) << all;
}

std::string card71(std::string text) {
    text.resize(71, ' ');
    return text + "X\n";
}

std::string manySegments() {
    std::string d = "         DBD   NAME=M,ACCESS=HISAM\n";
    for (int i = 0; i < 300; ++i) d += "         SEGM  NAME=S" + std::to_string(i) + "\n";
    return d + "         DBDGEN\n";
}

// A deck of `dbds` five-card DBDs; the last one repeats its root segment.
std::string big(std::size_t dbds) {
    std::string d;
    for (std::size_t i = 0; i < dbds; ++i)
        d += "         DBD   NAME=D" + std::to_string(i) + ",ACCESS=HISAM\n         SEGM  NAME=ROOT,BYTES=8\n" +
             "         FIELD NAME=(K,SEQ,U),START=1,BYTES=4\n         FIELD NAME=F,START=5,BYTES=4\n         DBDGEN\n";
    return d +
           "         DBD   NAME=BIG,ACCESS=HISAM\n         SEGM  NAME=ROOT,BYTES=8\n         SEGM  NAME=ROOT,BYTES=8\n "
           "        DBDGEN\n";
}

INSTANTIATE_TEST_SUITE_P(
    Decks, HostileDecks,
    ::testing::Values(
        Hostile{"Truncated",
                {{"t.dbd", "         DBD   NAME=T,ACCESS=HISAM\n         SEGM  NAME=A,BYTES=4\n"}},
                "t.dbd:2:1: error: DBD T: the deck ends before DBDGEN"},
        Hostile{"UnbalancedParentheses",
                {{"u.dbd", std::string(kHospital) + "         SEGM  NAME=(X,PARENT=ROOT\n"}},
                "u.dbd:6:21: error: unbalanced parentheses"},
        Hostile{"ContinuationOnTheLastCard",
                {{"c.dbd", std::string(kHospital) + card71("         SEGM  NAME=X,")}},
                "c.dbd:6:72: error: continuation mark in column 72 on the last card"},
        Hostile{"UnknownStatement",
                {{"s.dbd", std::string(kHospital) + "         FROB  NAME=X\n"}},
                "s.dbd:6:10: error: unknown statement 'FROB'"},
        Hostile{
            "MissingSegmentInAnotherDeck",
            {{"h.dbd", kHospital},
             {"p.psb",
              "         PCB   TYPE=DB,DBDNAME=H,PCBNAME=P1\n         SENSEG NAME=NOSUCH\n         PSBGEN PSBNAME=P\n"}},
            "p.psb:2:22: error: SENSEG NAME: no segment NOSUCH in DBD H"},
        Hostile{"MissingDbd",
                {{"p.psb", "         PCB   TYPE=DB,DBDNAME=NODBD\n         PSBGEN PSBNAME=P\n"}},
                "p.psb:1:32: error: PCB DBDNAME: no DBD named NODBD"},
        Hostile{"MissingLogicalParent",
                {{"l.dbd",
                  "         DBD   NAME=L,ACCESS=HIDAM\n         SEGM  NAME=A\n         SEGM  "
                  "NAME=B,PARENT=((A),(Z,PHYSICAL,OTHER))\n         DBDGEN\n"}},
                "l.dbd:3:35: error: SEGM PARENT: no segment Z of a physical DBD OTHER"},
        Hostile{"DuplicateSegment",
                {{"d.dbd", big(0)}},
                "d.dbd:3:21: error: SEGM NAME: segment ROOT is defined twice in DBD BIG"},
        Hostile{"DuplicateDefinitionDiffering",
                {{"a.dbd", kHospital}, {"b.dbd", "         DBD   NAME=H,ACCESS=HISAM\n         DBDGEN\n"}},
                "b.dbd:1:10: error: DBD H: defined again differently (first at a.dbd:1:10)"},
        Hostile{"NameAsASublist",
                {{"s.dbd", "         DBD   NAME=S,ACCESS=HISAM\n         SEGM  NAME=(A,B),BYTES=4\n         DBDGEN\n"}},
                "s.dbd:2:21: error: SEGM NAME: one value is expected, not a sublist of 2 values"},
        Hostile{"OwnParent",
                {{"o.dbd",
                  "         DBD   NAME=O,ACCESS=HISAM\n         SEGM  NAME=A,BYTES=4\n"
                  "         SEGM  NAME=B,PARENT=B,BYTES=4\n         DBDGEN\n"}},
                "o.dbd:3:30: error: SEGM PARENT: no segment B before B in DBD O"},
        Hostile{"BadNumber",
                {{"n.dbd", "         DBD   NAME=N,ACCESS=HISAM\n         SEGM  NAME=A,BYTES=(12X)\n         DBDGEN\n"}},
                "n.dbd:2:30: error: SEGM BYTES: a number from 0 to 32767 is expected, not '12X'"},
        Hostile{"HundredThousandCards",
                {{"big.dbd", big(20000)}},
                "big.dbd:100003:21: error: SEGM NAME: segment ROOT is defined twice"},
        Hostile{"TooManySegments",
                {{"m.dbd", manySegments()}},
                "m.dbd:257:10: error: SEGM: a DBD holds at most 255 segments"},
        Hostile{
            "BinaryGarbage",
            {{"g.dbd", std::string("\x00\x01\xff\xfe garbage \x7f\x80", 14) + "\n" + std::string(kHospital) + "\x02"}},
            "g.dbd:1:1: error: invalid character 0x00"}),
    [](const auto& info) { return std::string(info.param.name); });

// A statement that broke the card rules or was refused is told once: its
// members, and what names it from other statements and decks, stay quiet.
TEST(LoadErrors, WhatNamesAFailedDefinitionIsNotToldAgain) {
    std::string cut = "         SEGM  NAME=B,PARENT=A,BYTES=(4";
    cut.resize(71, ' ');
    cut += "X";
    std::vector<Deck> decks = {
        {"a.dbd",
         "         DBD   NAME=D,ACCESS=HIDAM\n         SEGM  NAME=A,BYTES=4\n"
         "         FIELD NAME=(K,SEQ,U),BYTES=4,START=1\n" +
             cut +
             "\n         FIELD NAME=F,BYTES=1,START=1\n         SEGM  NAME=C,PARENT=B,BYTES=2\n"
             "         DBDGEN\n"},
        {"b.dbd", "         DBD   NAME=E,ACCESS=HIDAM,BAD=(\n         SEGM  NAME=R,BYTES=4\n         DBDGEN\n"},
        {"p.psb",
         "         PCB   TYPE=DB,DBDNAME=D\n         SENSEG NAME=A\n         SENSEG NAME=B,PARENT=A\n"
         "         SENSEG NAME=C,PARENT=B\n         PCB   TYPE=DB,DBDNAME=E\n         SENSEG NAME=R\n"
         "         PSBGEN PSBNAME=P\n"}};
    LoadResult r = krsource::loadDecks(decks);
    std::vector<std::string> errors;
    for (const auto& d : r.diagnostics)
        if (d.severity == krsource::Severity::Error) errors.push_back(d.text());
    // The SEGM cut short by the FIELD card, the DBD statement with an open sublist.
    ASSERT_EQ(errors.size(), 2u) << decktest::report(r);
    EXPECT_EQ(errors[0].rfind("a.dbd:5:10: error: continuation card", 0), 0u) << errors[0];
    EXPECT_EQ(errors[1].rfind("b.dbd:1:", 0), 0u) << errors[1];
    EXPECT_EQ(r.dbds.size(), 0u);
    DSRegistrar::releaseAll();
}

// A value in a shape its keyword does not take is one error, not also a
// keyword missing.
TEST(LoadErrors, AValueOfTheWrongShapeIsToldOnce) {
    LoadResult r = krsource::loadDecks(
        {{"s.dbd", "         DBD   NAME=S,ACCESS=HISAM\n         SEGM  NAME=(A,B),BYTES=4\n         DBDGEN\n"}});
    std::size_t errors = 0;
    for (const auto& d : r.diagnostics) errors += d.severity == krsource::Severity::Error;
    EXPECT_EQ(errors, 1u) << decktest::report(r);
    DSRegistrar::releaseAll();
}

// CheckTest.cpp — every rule of the table has a minimal deck that triggers it,
// and the finding carries the rule's code and severity and the place of the
// statement at fault; the decks they start from, the hand-written decks and
// the built-in sample have no errors; findings read as the tool prints them.
#include <krmwtarn/check/Rules.h>
#include "tools/sample/SampleModel.h"

#include <gtest/gtest.h>

#include <fstream>
#include <map>
#include <sstream>

namespace {
// A DBD and a PSB over it that break no rule, each at the edge where it could:
// HDAM with its randomizer, a keyed root, three levels, a field and a SENFLD
// ending on the segment's last byte, an 8-character name, KEYLEN the exact
// concatenated key; a TP PCB first, a DB PCB sensitive to every level.
const std::string kDbd =
    "         DBD   NAME=BASEDBD,ACCESS=HDAM,RMNAME=(DFSHDC40,1,10)\n"
    "         SEGM  NAME=ROOT,PARENT=0,BYTES=20\n"
    "         FIELD NAME=(KEY,SEQ,U),START=1,BYTES=6\n"
    "         FIELD NAME=TEXT,START=7,BYTES=14\n"
    "         SEGM  NAME=CHILD,PARENT=ROOT,BYTES=20\n"
    "         FIELD NAME=(CKEY@#$8,SEQ,U),START=1,BYTES=4\n"
    "         SEGM  NAME=GRAND,PARENT=CHILD,BYTES=20\n"
    "         DBDGEN\n";
const std::string kPsb =
    "         PCB   TYPE=TP,NAME=OUT\n"
    "         PCB   TYPE=DB,DBDNAME=BASEDBD,PROCOPT=G,KEYLEN=10,PCBNAME=P1\n"
    "         SENSEG NAME=ROOT,PARENT=0\n"
    "         SENFLD NAME=TEXT,START=7\n"
    "         SENSEG NAME=CHILD,PARENT=ROOT\n"
    "         SENSEG NAME=GRAND,PARENT=CHILD\n"
    "         PSBGEN LANG=COBOL,PSBNAME=BASEPSB\n";

std::string replaced(std::string text, const std::string& from, const std::string& to) {
    std::size_t at = text.find(from);
    EXPECT_NE(at, std::string::npos) << from;
    return at == std::string::npos ? text : text.replace(at, from.size(), to);
}

// Sixteen segments, each the child of the one before.
std::string sixteenLevels() {
    std::string d = "         DBD   NAME=DEEPDBD,ACCESS=HDAM,RMNAME=(DFSHDC40,1,10)\n";
    for (int i = 1; i <= 16; ++i)
        d += "         SEGM  NAME=S" + std::to_string(i) + ",PARENT=" + (i == 1 ? "0" : "S" + std::to_string(i - 1)) +
             ",BYTES=10\n         FIELD NAME=(K" + std::to_string(i) + ",SEQ,U),START=1,BYTES=2\n";
    return d + "         DBDGEN\n";
}

std::string readFile(const std::string& path) {
    std::ifstream in(path, std::ios::binary);
    std::ostringstream s;
    s << in.rdbuf();
    return s.str();
}

// A rule's triggering decks, and the card (its deck and a text on it) of the
// statement the finding must point at.
struct Trigger {
    std::vector<krsource::Deck> decks;
    std::string file;
    std::string card;
};

std::map<std::string, Trigger> triggers() {
    auto dbd = [](std::string d, const std::string& card) {
        return Trigger{{{"t.dbd", std::move(d)}, {"t.psb", kPsb}}, "t.dbd", card};
    };
    auto psb = [](std::string p, const std::string& card) {
        return Trigger{{{"t.dbd", kDbd}, {"t.psb", std::move(p)}}, "t.psb", card};
    };
    const std::string decks = KRMWTARN_DECKS_DIR;
    std::vector<krsource::Deck> hospital;
    for (const char* f : {"hospital.dbd", "hospidx.dbd", "nameidx.dbd", "hosplog.dbd", "parts.dbd", "history.dbd"})
        hospital.push_back({f, readFile(decks + "/" + f)});
    hospital.push_back(
        {"hospital.psb", replaced(readFile(decks + "/hospital.psb"), "PROCSEQ=NAMEIDX", "PROCSEQ=HOSPIDX")});
    return {
        {"NAME-FORM", dbd(replaced(kDbd, "NAME=(CKEY@#$8,", "NAME=(CKEY@#$89,"), "CKEY@#$89")},
        {"SEG-LEVELS", {{{"deep.dbd", sixteenLevels()}}, "deep.dbd", "NAME=S16"}},
        {"SEG-ROOT", dbd(replaced(kDbd, "NAME=GRAND,PARENT=CHILD", "NAME=GRAND,PARENT=0"), "NAME=GRAND")},
        {"FLD-RANGE", dbd(replaced(kDbd, "NAME=TEXT,START=7,BYTES=14", "NAME=TEXT,START=7,BYTES=15"), "NAME=TEXT")},
        {"SEG-SEQ", dbd(replaced(kDbd, "NAME=TEXT,", "NAME=(TEXT,SEQ,M),"), "NAME=(TEXT")},
        {"ROOT-SEQ", dbd(replaced(replaced(kDbd, "ACCESS=HDAM,RMNAME=(DFSHDC40,1,10)", "ACCESS=HISAM"),
                                  "NAME=(KEY,SEQ,U)", "NAME=KEY"),
                         "NAME=ROOT")},
        {"ROOT-UNKEYED", dbd(replaced(kDbd, "NAME=(KEY,SEQ,U)", "NAME=KEY"), "NAME=ROOT")},
        {"HIDAM-INDEX", dbd(replaced(kDbd, "ACCESS=HDAM,RMNAME=(DFSHDC40,1,10)", "ACCESS=HIDAM"), "DBD ")},
        {"RANDOMIZER", dbd(replaced(kDbd, ",RMNAME=(DFSHDC40,1,10)", ""), "DBD ")},
        {"DEDB-AREAS",
         dbd(replaced(kDbd, "ACCESS=HDAM,RMNAME=(DFSHDC40,1,10)", "ACCESS=DEDB,RMNAME=DBFHDC44"), "DBD ")},
        {"LOGICAL-SOURCE",
         {{{"l.dbd",
            "         DBD   NAME=LOGDBD,ACCESS=LOGICAL\n         SEGM  NAME=LROOT,PARENT=0\n         DBDGEN\n"}},
          "l.dbd",
          "NAME=LROOT"}},
        {"PSB-NAME", psb(replaced(kPsb, "PSBNAME=BASEPSB", "PSBNAME=BASEPSBXY"), "PSBGEN")},
        {"TP-FIRST", psb(replaced(replaced(kPsb, "         PCB   TYPE=TP,NAME=OUT\n", ""), "         PSBGEN",
                                  "         PCB   TYPE=TP,NAME=OUT\n         PSBGEN"),
                         "TYPE=TP")},
        {"SENSEG-ROOT",
         psb(replaced(replaced(kPsb, "         SENSEG NAME=ROOT,PARENT=0\n         SENFLD NAME=TEXT,START=7\n", ""),
                      "NAME=CHILD,PARENT=ROOT", "NAME=CHILD,PARENT=0"),
             "NAME=CHILD")},
        {"SENSEG-PARENT", psb(replaced(kPsb, "NAME=GRAND,PARENT=CHILD", "NAME=GRAND,PARENT=ROOT"), "NAME=GRAND")},
        {"PCB-KEYLEN", psb(replaced(kPsb, "KEYLEN=10", "KEYLEN=9"), "KEYLEN=9")},
        {"PROCOPT", psb(replaced(kPsb, "PROCOPT=G,", "PROCOPT=GZ,"), "PROCOPT=GZ")},
        {"PROCSEQ-INDEX", {hospital, "hospital.psb", "KEYLEN=38"}},  // the PCB's first card
        {"SENFLD-FIT", psb(replaced(kPsb, "NAME=TEXT,START=7", "NAME=TEXT,START=8"), "NAME=TEXT")},
    };
}

// The card (from 1) of `deck` that holds `text` first.
int cardOf(const std::string& deck, const std::string& text) {
    std::size_t at = deck.find(text);
    if (at == std::string::npos) return 0;
    return 1 + static_cast<int>(std::count(deck.begin(), deck.begin() + static_cast<std::ptrdiff_t>(at), '\n'));
}

std::string all(const std::vector<krcheck::Finding>& findings) {
    std::string s;
    for (const krcheck::Finding& f : findings) s += f.text() + "\n";
    return s;
}

class Check : public ::testing::Test {
protected:
    void TearDown() override { DSRegistrar::releaseAll(); }
};

class EveryRule : public ::testing::TestWithParam<std::size_t> {
protected:
    void TearDown() override { DSRegistrar::releaseAll(); }
};
}  // namespace

TEST_P(EveryRule, HasADeckThatTriggersItAtTheStatement) {
    const krcheck::Rule& rule = krcheck::rules()[GetParam()];
    auto all_ = triggers();
    auto it = all_.find(rule.code);
    ASSERT_NE(it, all_.end()) << rule.code << " has no triggering deck";
    const Trigger& t = it->second;
    krsource::LoadResult loaded = krsource::loadDecks(t.decks);
    std::string diagnostics;
    for (const krsource::Diagnostic& d : loaded.diagnostics) diagnostics += d.text() + "\n";
    ASSERT_TRUE(loaded.ok()) << rule.code << ": the deck does not load\n" << diagnostics;
    std::vector<krcheck::Finding> findings = krcheck::check(loaded);
    std::string deck;
    for (const krsource::Deck& d : t.decks)
        if (d.name == t.file) deck = d.bytes;
    int line = cardOf(deck, t.card);
    ASSERT_GT(line, 0) << t.card;
    bool found = false;
    for (const krcheck::Finding& f : findings) {
        if (f.code != rule.code) continue;
        found = true;
        EXPECT_EQ(f.severity, rule.severity);
        EXPECT_EQ(f.file, t.file) << f.text();
        EXPECT_EQ(f.line, line) << f.text();
        EXPECT_EQ(f.column, 10) << f.text();  // the statement's operation
    }
    EXPECT_TRUE(found) << rule.code << " not reported; findings:\n" << all(findings);
}

INSTANTIATE_TEST_SUITE_P(Rules, EveryRule, ::testing::Range<std::size_t>(0, krcheck::rules().size()),
                         [](const ::testing::TestParamInfo<std::size_t>& info) {
                             std::string name = krcheck::rules()[info.param].code;
                             std::replace(name.begin(), name.end(), '-', '_');
                             return name;
                         });

TEST_F(Check, TheTriggersStartFromDecksWithoutFindings) {
    krsource::LoadResult loaded = krsource::loadDecks({{"t.dbd", kDbd}, {"t.psb", kPsb}});
    ASSERT_TRUE(loaded.ok());
    EXPECT_EQ(all(krcheck::check(loaded)), "");
}

TEST_F(Check, HandWrittenDecksHaveNoErrors) {
    std::vector<krsource::Deck> decks;
    for (const char* f : {"accounts.dbd", "accounts.psb", "history.dbd", "hospidx.dbd", "hospital.dbd", "hospital.psb",
                          "hosplog.dbd", "nameidx.dbd", "orders.dbd", "parts.dbd", "rates.dbd"})
        decks.push_back({f, readFile(std::string(KRMWTARN_DECKS_DIR) + "/" + f)});
    krsource::LoadResult loaded = krsource::loadDecks(decks);
    ASSERT_TRUE(loaded.ok());
    std::vector<krcheck::Finding> findings = krcheck::check(loaded);
    EXPECT_FALSE(krcheck::hasErrors(findings)) << all(findings);
}

// The sample was built through the interface: no deck, so findings name paths.
TEST_F(Check, TheSampleHasNoErrorsAndItsFindingsNamePaths) {
    sample::Model m = sample::build();
    std::vector<ADObject> roots;
    for (const auto& [view, root] : sample::documentRoots(m)) roots.emplace_back(root);
    std::vector<krcheck::Finding> findings = krcheck::check(roots);
    EXPECT_FALSE(krcheck::hasErrors(findings)) << all(findings);
    for (const krcheck::Finding& f : findings) {
        EXPECT_FALSE(f.located());
        EXPECT_EQ(f.text().rfind(f.path + ": warning: [" + f.code + "] ", 0), 0u) << f.text();
    }
}

TEST_F(Check, ALocatedFindingReadsAsTheToolPrintsIt) {
    krcheck::Finding f{krcheck::Severity::Error, "SEG-ROOT", "D/S", "segment S is a second root", "d.dbd", 3, 10};
    EXPECT_EQ(f.text(), "d.dbd:3:10: error: [SEG-ROOT] segment S is a second root");
}

TEST_F(Check, RuleCodesAreDistinctAndEachRuleHasOneKind) {
    std::map<std::string, int> codes;
    for (const krcheck::Rule& r : krcheck::rules()) {
        EXPECT_EQ(++codes[r.code], 1) << r.code;
        EXPECT_NE(!r.onDbd, !r.onPsb) << r.code;
        EXPECT_EQ(std::string(r.description).find('\n'), std::string::npos) << r.code;
    }
}

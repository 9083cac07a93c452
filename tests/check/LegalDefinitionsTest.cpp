// LegalDefinitionsTest.cpp — what the database manager accepts, check accepts:
// each organisation asked only what it needs and named as ACCESS writes it,
// the fields the manager fills for a secondary index, overlapping fields, a
// GSAM database of one bare segment, and decks of every organisation's usual
// statements.
#include <krmwtarn/check/Rules.h>

#include <gtest/gtest.h>

#include <map>
#include <set>

namespace {
std::string all(const std::vector<krcheck::Finding>& findings) {
    std::string s;
    for (const krcheck::Finding& f : findings) s += f.text() + "\n";
    return s;
}

// The findings of a load that must succeed.
std::vector<krcheck::Finding> checked(const std::vector<krsource::Deck>& decks) {
    krsource::LoadResult loaded = krsource::loadDecks(decks);
    std::string diagnostics;
    for (const krsource::Diagnostic& d : loaded.diagnostics) diagnostics += d.text() + "\n";
    EXPECT_TRUE(loaded.ok()) << diagnostics;
    return loaded.ok() ? krcheck::check(loaded) : std::vector<krcheck::Finding>{};
}

// A one-segment DBD of organisation `org`, its root keyed or not.
std::string oneRoot(const std::string& org, bool keyed) {
    return "         DBD   NAME=ORGDBD,ACCESS=" + org +
           "\n"
           "         SEGM  NAME=ROOT,PARENT=0,BYTES=20\n"
           "         FIELD NAME=" +
           (keyed ? "(KEY,SEQ,U)" : "KEY") +
           ",START=1,BYTES=6\n"
           "         DBDGEN\n";
}

class Legal : public ::testing::Test {
protected:
    void TearDown() override { DSRegistrar::releaseAll(); }
};
}  // namespace

// A DBD of each organisation, with no RMNAME, no primary index, no AREA and no
// SOURCE: the codes reported with the root keyed and unkeyed. A partitioned
// organisation gets its randomizer and its primary index elsewhere.
TEST_F(Legal, EachOrganisationIsAskedOnlyWhatItNeeds) {
    using Codes = std::set<std::string>;
    const std::map<std::string, std::pair<Codes, Codes>> expected = {
        // organisation   keyed root                       unkeyed root
        {"HDAM", {{"RANDOMIZER"}, {"RANDOMIZER", "ROOT-UNKEYED"}}},
        {"PHDAM", {{}, {"ROOT-UNKEYED"}}},
        {"HIDAM", {{"HIDAM-INDEX"}, {"HIDAM-INDEX", "ROOT-SEQ"}}},
        {"PHIDAM", {{}, {"ROOT-SEQ"}}},
        {"HISAM", {{}, {"ROOT-SEQ"}}},
        {"SHISAM", {{}, {"ROOT-SEQ"}}},
        {"HSAM", {{}, {}}},
        {"SHSAM", {{}, {}}},
        {"INDEX", {{"INDEX-TARGET"}, {"INDEX-TARGET", "ROOT-SEQ"}}},
        {"PSINDEX", {{"INDEX-TARGET"}, {"INDEX-TARGET", "ROOT-SEQ"}}},
        {"DEDB", {{"RANDOMIZER", "DEDB-AREAS"}, {"RANDOMIZER", "DEDB-AREAS", "ROOT-UNKEYED"}}},
        {"MSDB", {{}, {}}},
        {"GSAM", {{}, {}}},
        {"LOGICAL", {{"LOGICAL-SOURCE"}, {"LOGICAL-SOURCE"}}},
    };
    ASSERT_EQ(expected.size(), std::size(krcheck::kOrganisations));
    for (const krcheck::Organisation& o : krcheck::kOrganisations) {
        std::string org(o.name);
        ASSERT_TRUE(expected.count(org)) << org;
        for (bool keyed : {true, false}) {
            std::vector<krcheck::Finding> findings = checked({{"o.dbd", oneRoot(org, keyed)}});
            Codes codes;
            for (const krcheck::Finding& f : findings) {
                codes.insert(f.code);
                // A message that names the organisation names it as written.
                for (const krcheck::Organisation& other : krcheck::kOrganisations)
                    for (const char* after : {" database", " DBD"}) {
                        std::string said = std::string(other.name) + after;
                        std::size_t at = f.message.find(said);
                        bool word = at != std::string::npos && (at == 0 || f.message[at - 1] == ' ');
                        EXPECT_TRUE(!word || other.name == o.name) << org << ": " << f.message;
                    }
            }
            const Codes& want = keyed ? expected.at(org).first : expected.at(org).second;
            EXPECT_EQ(codes, want) << org << (keyed ? " keyed" : " unkeyed") << "\n" << all(findings);
            DSRegistrar::releaseAll();
        }
    }
}

TEST_F(Legal, MessagesNameThePartitionedOrganisations) {
    std::string text = all(checked({{"o.dbd", oneRoot("PHIDAM", false)}}));
    EXPECT_NE(text.find("root segment ROOT of a PHIDAM database needs a unique sequence field"), std::string::npos)
        << text;
    DSRegistrar::releaseAll();
    text = all(checked({{"o.dbd", oneRoot("PSINDEX", true)}}));
    EXPECT_NE(text.find("PSINDEX DBD ORGDBD indexes nothing: no XDFLD names it"), std::string::npos) << text;
}

// An access object made through the model whose class holds no primary index
// or randomizer, though its organisation asks for one: reported, not read.
TEST_F(Legal, AnAccessOfAnotherClassLacksWhatItsOrganisationNeeds) {
    for (const char* org : {"HIDAM", "HDAM"}) {
        std::string name = std::string(org) + "DB";
        DSDBD d("CHECK", name.c_str(), 1);
        d->_set_strDBDName(name.c_str(), omStore);
        DSDBDaccess a("CHECK", (name + ".ACCESS").c_str(), 1);
        a->_set_dliAccess(org, omStore);
        DSDefinedByAccess(&d, &a, 1);
        // Without segments it is also an empty DBD.
        std::string text = all(krcheck::check(d.operator->()));
        EXPECT_EQ(text,
                  (std::string(org) == "HIDAM"
                       ? "HIDAMDB: error: [HIDAM-INDEX] HIDAM database HIDAMDB has no primary index "
                         "(LCHILD ...,POINTER=INDX)\n"
                       : "HDAMDB: error: [RANDOMIZER] HDAM database HDAMDB names no randomizing module (RMNAME)\n") +
                      name + ": error: [DBD-EMPTY] DBD " + name + " has no segments (SEGM statements)\n");
    }
}

// /SXn and /CKn on the source segment of a secondary index are the manager's
// own fields; a /CK field's bytes lie in the concatenated key (10 bytes here,
// more than the segment's 6), not in the segment.
namespace {
const std::string kIndexed =
    "         DBD   NAME=CUSTDB,ACCESS=HIDAM\n"
    "         SEGM  NAME=CUST,PARENT=0,BYTES=20\n"
    "         FIELD NAME=(CUSTNO,SEQ,U),START=1,BYTES=6\n"
    "         FIELD NAME=CUSTNAME,START=7,BYTES=14\n"
    "         LCHILD NAME=(CIDXS,CUSTIDX),POINTER=INDX\n"
    "         SEGM  NAME=ORDER,PARENT=CUST,BYTES=6\n"
    "         FIELD NAME=(ORDNO,SEQ,U),START=1,BYTES=4\n"
    "         FIELD NAME=ORDDATE,START=3,BYTES=4\n"
    "         FIELD NAME=/SX1\n"
    "         FIELD NAME=/CK1,START=1,BYTES=10\n"
    "         DBDGEN\n"
    "         DBD   NAME=CUSTIDX,ACCESS=INDEX\n"
    "         SEGM  NAME=CIDXS,BYTES=6\n"
    "         FIELD NAME=(CIKEY,SEQ,U),START=1,BYTES=6\n"
    "         LCHILD NAME=(CUST,CUSTDB),INDEX=CUSTNO,POINTER=INDX\n"
    "         DBDGEN\n";

std::string replaced(std::string text, const std::string& from, const std::string& to) {
    std::size_t at = text.find(from);
    EXPECT_NE(at, std::string::npos) << from;
    return at == std::string::npos ? text : text.replace(at, from.size(), to);
}
}  // namespace

TEST_F(Legal, SystemRelatedFieldsAreNamesAndTheirKeyIsTheConcatenatedKey) {
    EXPECT_EQ(all(checked({{"c.dbd", kIndexed}})), "");
    DSRegistrar::releaseAll();
    std::string beyond =
        all(checked({{"c.dbd", replaced(kIndexed, "/CK1,START=1,BYTES=10", "/CK1,START=2,BYTES=10")}}));
    EXPECT_NE(beyond.find("[FLD-RANGE] field /CK1 ends at byte 11, beyond the 10 bytes of the concatenated key of "
                          "segment ORDER"),
              std::string::npos)
        << beyond;
}

TEST_F(Legal, OtherNamesStartingWithASlashAreNoFieldNames) {
    for (const char* name : {"/SX", "/CK", "/SXA", "/SX1A", "/XX1", "/CK1234567"}) {
        std::string deck = replaced(kIndexed, "NAME=/SX1\n", std::string("NAME=") + name + "\n");
        krsource::LoadResult loaded = krsource::loadDecks({{"c.dbd", deck}});
        if (!loaded.ok()) continue;  // the reader refused it already
        std::string text = all(krcheck::check(loaded));
        EXPECT_NE(text.find(std::string("[NAME-FORM] field name '") + name + "'"), std::string::npos) << name << text;
        loaded = krsource::LoadResult();
        DSRegistrar::releaseAll();
    }
}

// Fields may overlap: a field over the whole segment, one across two others.
TEST_F(Legal, OverlappingFieldsAreLegal) {
    EXPECT_EQ(all(checked({{"o.dbd",
                            "         DBD   NAME=OVERDB,ACCESS=HDAM,RMNAME=(DFSHDC40,1,5)\n"
                            "         SEGM  NAME=ROOT,PARENT=0,BYTES=20\n"
                            "         FIELD NAME=(KEY,SEQ,U),START=1,BYTES=6\n"
                            "         FIELD NAME=ALL,START=1,BYTES=20\n"
                            "         FIELD NAME=ACROSS,START=4,BYTES=6\n"
                            "         FIELD NAME=TEXT,START=7,BYTES=14\n"
                            "         DBDGEN\n"}})),
              "");
}

// Each organisation's usual statements: HISAM with its overflow data set,
// GSAM over BSAM with its record format and one bare segment, HDAM with its
// randomizer's parameters, HIDAM with its index keyed by a root field, a PSB
// with a GSAM PCB after its database PCB.
TEST_F(Legal, UsualDecksOfEachOrganisationHaveNoFindings) {
    std::string hisam =
        "         DBD   NAME=HISDB,ACCESS=(HISAM,VSAM)\n"
        "         DATASET DD1=HISDD,OVFLW=HISOV\n"
        "         SEGM  NAME=ROOT,PARENT=0,BYTES=20\n"
        "         FIELD NAME=(KEY,SEQ,U),START=1,BYTES=6\n"
        "         SEGM  NAME=CHILD,PARENT=ROOT,BYTES=10\n"
        "         DBDGEN\n";
    std::string gsam =
        "         DBD   NAME=GSDB,ACCESS=(GSAM,BSAM)\n"
        "         DATASET DD1=GSIN,DD2=GSOUT,RECFM=FB\n"
        "         SEGM  NAME=GREC,BYTES=80\n"
        "         DBDGEN\n";
    std::string hdam =
        "         DBD   NAME=HDDB,ACCESS=HDAM,RMNAME=(DFSHDC40,1,5)\n"
        "         DATASET DD1=HDDD\n"
        "         SEGM  NAME=ROOT,PARENT=0,BYTES=20\n"
        "         FIELD NAME=(KEY,SEQ,U),START=1,BYTES=6\n"
        "         DBDGEN\n";
    std::string psb =
        "         PCB   TYPE=DB,DBDNAME=HISDB,PROCOPT=A,KEYLEN=6\n"
        "         SENSEG NAME=ROOT,PARENT=0\n"
        "         SENSEG NAME=CHILD,PARENT=ROOT\n"
        "         PCB   TYPE=GSAM,DBDNAME=GSDB,PROCOPT=LS\n"
        "         PSBGEN LANG=COBOL,PSBNAME=USUALPSB\n";
    EXPECT_EQ(all(checked(
                  {{"hisam.dbd", hisam}, {"gsam.dbd", gsam}, {"hdam.dbd", hdam}, {"c.dbd", kIndexed}, {"u.psb", psb}})),
              "");
}

// ConstructTest.cpp — one small deck for each construct of the generation
// language that libraries use and a reader easily gets wrong: DATASET LOGICAL,
// one-element sublists, suffixed values, fields known by their external name,
// the forms of PCB, exits, system-related fields, the organisations beyond
// the usual ones, and a library read as a set whatever the order of its files.
#include "DeckTestSupport.h"

#include <krmwtarn/check/Check.h>
#include <krmwtarn/source/FieldGeometry.h>
#include <krmwtarn/model/framework/Navigation.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <cctype>
#include <map>

using krsource::Deck;
using krsource::LoadResult;
using krsource::Severity;

namespace {
class Construct : public ::testing::Test {
protected:
    void TearDown() override { DSRegistrar::releaseAll(); }
};

// The diagnostics of one severity, as text.
std::vector<std::string> told(const LoadResult& r, Severity s) {
    std::vector<std::string> out;
    for (const auto& d : r.diagnostics)
        if (d.severity == s) out.push_back(d.text());
    return out;
}

// The documents of every definition the decks load, keyed by the
// definition's identity (each numbered on its own, so the order the load
// hands them over in does not count); the repository is emptied afterwards.
// With `writtenBack`, the definitions written as decks.
std::map<std::string, nlohmann::json> loaded(const std::vector<Deck>& decks, std::vector<Deck>* writtenBack = nullptr) {
    LoadResult r = krsource::loadDecks(decks);
    EXPECT_TRUE(r.ok()) << decktest::report(r);
    std::map<std::string, nlohmann::json> byRoot;
    for (const DSDBD& d : r.dbds) byRoot[d->objID()] = decktest::documents({d}, {})[0];
    for (const DSPSB& p : r.psbs) byRoot[p->objID()] = decktest::documents({}, {p})[0];
    if (writtenBack) *writtenBack = decktest::written(r.dbds, r.psbs);
    r = LoadResult();
    DSRegistrar::releaseAll();
    return byRoot;
}

// The decks written back from what they load read again to the same
// documents; the repository is emptied first, as the caller leaves it.
void expectRoundTrip(LoadResult& r, const std::vector<Deck>& decks) {
    r = LoadResult();
    DSRegistrar::releaseAll();
    std::vector<Deck> back;
    auto first = loaded(decks, &back);
    EXPECT_EQ(loaded(back), first);
}

template <class T>
T* found(const char* cls, const std::string& id) {
    return static_cast<T*>(DSRegistrar::findObj(cls, id.c_str(), krsource::kDeckVersion));
}

// A statement on two cards: `first` marked in column 72, `rest` from column 16.
std::string continued(std::string first, const std::string& rest) {
    first.resize(71, ' ');
    return first + "X\n" + std::string(15, ' ') + rest + "\n";
}

// A physical DBD every other deck here may lean on.
const char* kShop = R"(         DBD   NAME=SHOPDB,ACCESS=HISAM
         DATASET DD1=SHOPDD,OVFLW=SHOPOV
         SEGM  NAME=SHOP,PARENT=0,BYTES=24
         FIELD NAME=(SHOPNO,SEQ,U),START=1,BYTES=5
         FIELD NAME=TOWN,START=6,BYTES=19
         SEGM  NAME=SALE,PARENT=SHOP,BYTES=12
         FIELD NAME=(SALENO,SEQ,U),START=1,BYTES=4
         DBDGEN
)";
}  // namespace

// A logical DBD's one dataset statement is DATASET LOGICAL: read without a
// word, written back, and refused in a DBD of stored data.
TEST_F(Construct, DatasetLogical) {
    const char* view = R"(         DBD   NAME=SHOPVIEW,ACCESS=LOGICAL
         DATASET LOGICAL
         SEGM  NAME=VSHOP,SOURCE=((SHOP,DATA,SHOPDB))
         SEGM  NAME=VSALE,PARENT=VSHOP,SOURCE=((SALE,DATA,SHOPDB))
         DBDGEN
)";
    LoadResult r = krsource::loadDecks({{"shop.dbd", kShop}, {"view.dbd", view}});
    ASSERT_TRUE(r.ok()) << decktest::report(r);
    EXPECT_EQ(decktest::report(r), "");
    auto* v = found<_DSDBD>("DSDBD", "SHOPVIEW");
    ASSERT_NE(v, nullptr);
    std::string written = krsource::writeDbdDeck(v);
    EXPECT_NE(written.find("DATASET LOGICAL"), std::string::npos) << written;
    expectRoundTrip(r, {{"shop.dbd", kShop}, {"view.dbd", view}});

    std::string stored = kShop;
    stored.insert(stored.find("         SEGM"), "         DATASET LOGICAL\n");
    r = krsource::loadDecks({{"stored.dbd", stored}});
    EXPECT_EQ(told(r, Severity::Error),
              std::vector<std::string>{
                  "stored.dbd:3:18: error: DATASET LOGICAL: only a logical DBD (ACCESS=LOGICAL) has it"});
}

// Where one value is taken, a sublist of one value is that value: each card
// written both ways loads to the same model; a sublist of two is one error
// that says what it found.
TEST_F(Construct, OneElementSublistsAreTheirElement) {
    const char* bare = R"(         DBD   NAME=TOWNDB,ACCESS=(HISAM,VSAM)
         DATASET DD1=TOWNDD,OVFLW=TOWNOV,SIZE=4096
         SEGM  NAME=TOWN,PARENT=0,BYTES=30
         FIELD NAME=(TKEY,SEQ,U),START=1,BYTES=6
         FIELD NAME=CITY,START=7,BYTES=10
         SEGM  NAME=MAYOR,PARENT=TOWN,BYTES=12
         FIELD NAME=(MKEY,SEQ,U),START=1,BYTES=4
         LCHILD NAME=TWIN,POINTER=SNGL
         SEGM  NAME=TWIN,PARENT=((TOWN),(MAYOR,PHYSICAL)),BYTES=8
         DBDGEN
)";
    const char* wrapped = R"(         DBD   NAME=(TOWNDB),ACCESS=(HISAM,VSAM)
         DATASET DD1=(TOWNDD),OVFLW=TOWNOV,SIZE=(4096)
         SEGM  NAME=(TOWN),PARENT=0,BYTES=(30)
         FIELD NAME=(TKEY,SEQ,U),START=(1),BYTES=(6)
         FIELD NAME=(CITY),START=7,BYTES=((10))
         SEGM  NAME=MAYOR,PARENT=((TOWN)),BYTES=12
         FIELD NAME=(MKEY,SEQ,U),START=1,BYTES=4
         LCHILD NAME=(TWIN),POINTER=(SNGL)
         SEGM  NAME=TWIN,PARENT=((TOWN),(MAYOR,PHYSICAL)),BYTES=(8)
         DBDGEN
)";
    const char* psbBare =
        "         PCB   TYPE=DB,NAME=TOWNDB,PROCOPT=G\n"
        "         SENSEG NAME=TOWN,PARENT=0\n"
        "         PSBGEN LANG=COBOL,PSBNAME=TOWNPSB\n";
    const char* psbWrapped =
        "         PCB   TYPE=(DB),NAME=(TOWNDB),PROCOPT=(G)\n"
        "         SENSEG NAME=(TOWN),PARENT=(0)\n"
        "         PSBGEN LANG=COBOL,PSBNAME=(TOWNPSB)\n";
    auto plain = loaded({{"t.dbd", bare}, {"t.psb", psbBare}});
    ASSERT_EQ(plain.size(), 2u);
    EXPECT_EQ(loaded({{"t.dbd", wrapped}, {"t.psb", psbWrapped}}), plain);

    std::string two = bare;
    two.replace(two.find("BYTES=10"), 8, "BYTES=(10,12)");
    LoadResult r = krsource::loadDecks({{"two.dbd", two}});
    EXPECT_EQ(
        told(r, Severity::Error),
        std::vector<std::string>{"two.dbd:5:40: error: FIELD BYTES: one value is expected, not a sublist of 2 values"});
}

// A keyword whose value carries a parenthesised suffix is one value: the only
// word about it is that the model has no place for it.
TEST_F(Construct, SuffixedValue) {
    std::string deck = kShop;
    deck.replace(deck.find("BYTES=19"), 8, "BYTES=19,DATATYPE=DECIMAL(15,2)");
    LoadResult r = krsource::loadDecks({{"d.dbd", deck}});
    EXPECT_TRUE(r.ok());
    EXPECT_EQ(decktest::report(r), "d.dbd:5:43: warning: FIELD DATATYPE: keyword has no place in the model; ignored\n");
}

// A field described by its external name alone is a field of its segment
// with its geometry, known in the dictionary by that name; a segment's
// external name likewise. Both are written back and read again.
TEST_F(Construct, ExternalNames) {
    const char* deck = R"(         DBD   NAME=CLUBDB,ACCESS=HISAM
         DATASET DD1=CLUBDD,OVFLW=CLUBOV
         SEGM  NAME=MEMBER,PARENT=0,BYTES=40,EXTERNALNAME=CLUB_MEMBER
         FIELD NAME=(MEMNO,SEQ,U),START=1,BYTES=8
         FIELD EXTERNALNAME=MEMBER_HOME_TOWN,START=9,BYTES=20,TYPE=C
         DBDGEN
)";
    LoadResult r = krsource::loadDecks({{"club.dbd", deck}});
    ASSERT_TRUE(r.ok()) << decktest::report(r);
    EXPECT_EQ(decktest::report(r), "");
    auto* member = found<_DSSegment>("DSSegmentComplex", "CLUBDB.MEMBER");
    ASSERT_NE(member, nullptr);
    ASSERT_NE(member->_getFirst_segmName(), nullptr);
    EXPECT_STREQ((*member->_getFirst_segmName())->_get_adName(), "CLUB_MEMBER");
    ASSERT_EQ(member->_get_fields()->count(), 2);
    _DSField* town = nullptr;
    for (DSField* f = member->_getFirst_fields(); f; f = member->_getNext_fields())
        if (!(*f)->_get_strFieldName() || !*(*f)->_get_strFieldName()) town = f->operator->();
    ASSERT_NE(town, nullptr);
    ASSERT_NE(town->_getFirst_fldName(), nullptr);
    EXPECT_STREQ((*town->_getFirst_fldName())->_get_adName(), "MEMBER_HOME_TOWN");
    krsource::FieldGeometry g = krsource::fieldGeometry(town);
    EXPECT_EQ(g.start, 9);
    EXPECT_EQ(g.bytes, 20);
    EXPECT_EQ(g.type, "C");
    std::string written = krsource::writeDbdDeck(found<_DSDBD>("DSDBD", "CLUBDB"));
    EXPECT_NE(written.find("EXTERNALNAME=MEMBER_HOME_TOWN"), std::string::npos) << written;
    EXPECT_NE(written.find("EXTERNALNAME=CLUB_MEMBER"), std::string::npos) << written;
    expectRoundTrip(r, {{"club.dbd", deck}});
}

// Every form of PCB: a database PCB naming its DBD by NAME= is the same PCB as
// by DBDNAME=; a GSAM PCB by NAME=; teleprocessing PCBs with a logical
// terminal and with a destination's name.
TEST_F(Construct, PcbForms) {
    const char* gsam = R"(         DBD   NAME=SEQIO,ACCESS=(GSAM,BSAM)
         DATASET DD1=SEQIN,DD2=SEQOUT,RECFM=F,RECORD=80
         SEGM  NAME=SEQREC,BYTES=80
         DBDGEN
)";
    const char* psb = R"(TERMIO   PCB   TYPE=TP,LTERM=CONSOLE
ALTOUT   PCB   TYPE=TP,NAME=TRANOUT,MODIFY=YES
SHOPS    PCB   TYPE=DB,NAME=SHOPDB,PROCOPT=G,KEYLEN=9
         SENSEG NAME=SHOP,PARENT=0
         SENSEG NAME=SALE,PARENT=SHOP
SEQS     PCB   TYPE=GSAM,NAME=SEQIO,PROCOPT=LS
         PSBGEN LANG=COBOL,PSBNAME=MIXPSB
)";
    LoadResult r = krsource::loadDecks({{"shop.dbd", kShop}, {"seq.dbd", gsam}, {"mix.psb", psb}});
    ASSERT_TRUE(r.ok()) << decktest::report(r);
    EXPECT_EQ(decktest::report(r), "");
    auto* db = found<_DSPCBdb>("DSPCBdb", "MIXPSB.SHOPS.TYPE");
    ASSERT_NE(db, nullptr);
    ASSERT_NE(db->_getFirst_baseDBD(), nullptr);
    EXPECT_EQ(db->_getFirst_baseDBD()->impl(), found<_ADObject>("DSDBD", "SHOPDB"));
    EXPECT_EQ(db->_get_senseg()->count(), 2);
    auto* seq = found<_DSPCBbased>("DSPCBbased", "MIXPSB.SEQS.TYPE");
    ASSERT_NE(seq, nullptr);
    EXPECT_STREQ(seq->_get_strPCBtype(), "GSAM");
    ASSERT_NE(seq->_getFirst_baseDBD(), nullptr);
    EXPECT_EQ(seq->_getFirst_baseDBD()->impl(), found<_ADObject>("DSDBD", "SEQIO"));
    auto destination = [](const char* id) {
        auto* tp = found<_DSPCBtp>("DSPCBtp", id);
        EXPECT_NE(tp, nullptr) << id;
        if (!tp || tp->_get_destination()->count() != 1) return std::string("?");
        _DSOutputDest* d = tp->_getFirst_destination()->operator->();
        const char* type = d->_get_destinationType();
        return std::string(d->_get_ltermName()) + "/" + (type ? type : "");
    };
    EXPECT_EQ(destination("MIXPSB.TERMIO.TYPE"), "CONSOLE/LTERM");
    EXPECT_EQ(destination("MIXPSB.ALTOUT.TYPE"), "TRANOUT/");
    r = LoadResult();
    DSRegistrar::releaseAll();

    std::string byDbdName = psb;
    byDbdName.replace(byDbdName.find("TYPE=DB,NAME="), 13, "TYPE=DB,DBDNAME=");
    EXPECT_EQ(loaded({{"shop.dbd", kShop}, {"seq.dbd", gsam}, {"mix.psb", psb}}),
              loaded({{"shop.dbd", kShop}, {"seq.dbd", gsam}, {"mix.psb", byDbdName}}));
}

// A PCB's name (its label or PCBNAME) is unique within its PSB: two PSBs may
// use the same names; one PSB using a name twice is one error naming both.
TEST_F(Construct, PcbNamesAreUniqueWithinTheirPsb) {
    auto psb = [](const std::string& name) {
        return "SHOPS    PCB   TYPE=DB,DBDNAME=SHOPDB,PROCOPT=G\n"
               "         SENSEG NAME=SHOP,PARENT=0\n"
               "         PCB   TYPE=DB,DBDNAME=SHOPDB,PCBNAME=SALES\n"
               "         SENSEG NAME=SHOP,PARENT=0\n"
               "         PSBGEN LANG=PLI,PSBNAME=" +
               name + "\n";
    };
    LoadResult r = krsource::loadDecks({{"shop.dbd", kShop}, {"one.psb", psb("ONEPSB")}, {"two.psb", psb("TWOPSB")}});
    ASSERT_TRUE(r.ok()) << decktest::report(r);
    EXPECT_EQ(r.psbs.size(), 2u);
    EXPECT_NE(found<_DSPCBdb>("DSPCBdb", "ONEPSB.SALES.TYPE"), nullptr);
    EXPECT_NE(found<_DSPCBdb>("DSPCBdb", "TWOPSB.SALES.TYPE"), nullptr);
    r = LoadResult();
    DSRegistrar::releaseAll();

    std::string labels =
        "SHOPS    PCB   TYPE=DB,DBDNAME=SHOPDB\n"
        "         SENSEG NAME=SHOP\n"
        "SHOPS    PCB   TYPE=DB,DBDNAME=SHOPDB\n"
        "         SENSEG NAME=SHOP\n"
        "         PSBGEN PSBNAME=DUPPSB\n";
    r = krsource::loadDecks({{"shop.dbd", kShop}, {"dup.psb", labels}});
    EXPECT_EQ(told(r, Severity::Error),
              std::vector<std::string>{
                  "dup.psb:3:1: error: PCB PCBNAME: PSB DUPPSB names two PCBs SHOPS (the first at dup.psb:1:1)"});
    r = LoadResult();
    DSRegistrar::releaseAll();
    // The label of one PCB and the PCBNAME of another are the same name.
    std::string mixed =
        "SHOPS    PCB   TYPE=DB,DBDNAME=SHOPDB\n"
        "         SENSEG NAME=SHOP\n"
        "         PCB   TYPE=DB,DBDNAME=SHOPDB,PCBNAME=SHOPS\n"
        "         SENSEG NAME=SHOP\n"
        "         PSBGEN PSBNAME=DUPPSB\n";
    r = krsource::loadDecks({{"shop.dbd", kShop}, {"dup.psb", mixed}});
    EXPECT_EQ(told(r, Severity::Error),
              std::vector<std::string>{
                  "dup.psb:3:47: error: PCB PCBNAME: PSB DUPPSB names two PCBs SHOPS (the first at dup.psb:1:1)"});
}

// A DBD's exit `*` logs changes and names no routine: an exit of that DBD
// alone. A segment's EXIT=NONE has none. Both read back the same.
TEST_F(Construct, LoggingExitAndNone) {
    const std::string deck =
        continued("         DBD   NAME=LOGDB,ACCESS=HISAM,", "EXIT=(*,KEY,DATA,NOPATH,(NOCASCADE),LOG)") +
        R"(         DATASET DD1=LOGDD,OVFLW=LOGOV
         SEGM  NAME=LROOT,PARENT=0,BYTES=10,EXIT=NONE
         FIELD NAME=(LKEY,SEQ,U),START=1,BYTES=4
         SEGM  NAME=LKID,PARENT=LROOT,BYTES=10,EXIT=*
         DBDGEN
)";
    LoadResult r = krsource::loadDecks({{"log.dbd", deck}});
    ASSERT_TRUE(r.ok()) << decktest::report(r);
    EXPECT_EQ(decktest::report(r), "");
    auto* dbd = found<_DSDBD>("DSDBD", "LOGDB");
    ASSERT_NE(dbd, nullptr);
    ASSERT_EQ(dbd->_get_exits()->count(), 1);
    _DSExit* x = dbd->_getFirst_exits()->operator->();
    EXPECT_STREQ(x->_get_strExit(), "*");
    EXPECT_TRUE(!x->_get_captureRoutine() || !*x->_get_captureRoutine());
    EXPECT_EQ(std::vector<int>(
                  {x->_get_exitKey(), x->_get_exitData(), x->_get_exitPath(), x->_get_logFlag(), x->_get_cascade()}),
              std::vector<int>({1, 1, 0, 1, 0}));
    EXPECT_EQ(found<_DSSegment>("DSSegmentComplex", "LOGDB.LROOT")->_get_exits()->count(), 0);
    auto* kid = found<_DSSegment>("DSSegmentComplex", "LOGDB.LKID");
    ASSERT_EQ(kid->_get_exits()->count(), 1);
    EXPECT_EQ(kid->_getFirst_exits()->impl(), x);
    expectRoundTrip(r, {{"log.dbd", deck}});
}

// The fields the manager fills for a secondary index (/SXn with no place of
// its own, /CKn within the concatenated key) serve as the index's subsequence
// fields; the DBDs load and check clean.
TEST_F(Construct, SystemRelatedFieldsOfASecondaryIndex) {
    const char* shop = R"(         DBD   NAME=SHOPDB,ACCESS=HISAM
         DATASET DD1=SHOPDD,OVFLW=SHOPOV
         SEGM  NAME=SHOP,PARENT=0,BYTES=24
         FIELD NAME=(SHOPNO,SEQ,U),START=1,BYTES=5
         FIELD NAME=TOWN,START=6,BYTES=19
         LCHILD NAME=(TIDX,SHOPTX),POINTER=INDX
         XDFLD NAME=XDAY,SEGMENT=SALE,SRCH=SALEDAY,SUBSEQ=(/CK1,/SX1)
         SEGM  NAME=SALE,PARENT=SHOP,BYTES=12
         FIELD NAME=(SALENO,SEQ,U),START=1,BYTES=4
         FIELD NAME=SALEDAY,START=5,BYTES=8
         FIELD NAME=/SX1
         FIELD NAME=/CK1,BYTES=9,START=1
         DBDGEN
)";
    const char* index = R"(         DBD   NAME=SHOPTX,ACCESS=(INDEX,VSAM)
         DATASET DD1=SHOPTXDD
         SEGM  NAME=TIDX,PARENT=0,BYTES=21
         FIELD NAME=(TIKEY,SEQ,U),START=1,BYTES=21
         LCHILD NAME=(SHOP,SHOPDB),INDEX=XDAY,POINTER=SNGL
         DBDGEN
)";
    LoadResult r = krsource::loadDecks({{"shop.dbd", shop}, {"shoptx.dbd", index}});
    ASSERT_TRUE(r.ok()) << decktest::report(r);
    EXPECT_EQ(decktest::report(r), "");
    auto* x = found<_DSXDFLD>("DSXDFLD", "XDAY");
    ASSERT_NE(x, nullptr);
    EXPECT_EQ(x->_get_search()->count(), 1);
    ASSERT_EQ(x->_get_subseq()->count(), 2);
    std::vector<std::string> subseq;
    for (DSField* f = x->_getFirst_subseq(); f; f = x->_getNext_subseq()) subseq.push_back((*f)->_get_strFieldName());
    EXPECT_EQ(subseq, (std::vector<std::string>{"/CK1", "/SX1"}));
    std::string findings;
    for (const krcheck::Finding& f : krcheck::check(r))
        if (f.severity == krcheck::Severity::Error) findings += f.text() + "\n";
    EXPECT_EQ(findings, "");
}

// The organisations beyond the usual ones: DEDB dependents, the partitioned
// ones (whose extra keywords are only told as having no place), SHISAM, GSAM
// and MSDB; each in its access class, its root the segment without PARENT.
TEST_F(Construct, Organisations) {
    const char* decks = R"(         DBD   NAME=FASTDB,ACCESS=DEDB,RMNAME=DBFHDC44
         AREA  DD1=FASTA1,SIZE=4096,UOW=(20,5),ROOT=(30,10)
         SEGM  NAME=FROOT,BYTES=(40,20)
         FIELD NAME=(FKEY,SEQ,U),START=1,BYTES=8
         SEGM  NAME=FSEQ,PARENT=FROOT,TYPE=SEQ,BYTES=30
         SEGM  NAME=FDIR,PARENT=FROOT,TYPE=DIR,BYTES=30,SSPTR=3
         DBDGEN
         DBD   NAME=PARTH,ACCESS=PHIDAM
         DATASET DD1=PARTHA,DSGROUP=A
         SEGM  NAME=PROOT,BYTES=20
         FIELD NAME=(PKEY,SEQ,U),START=1,BYTES=6
         FIELD NAME=PNAME,START=7,BYTES=10
         LCHILD NAME=(PSX,PARTSX),POINTER=INDX
         XDFLD NAME=XPNAME,SRCH=PNAME
         DBDGEN
         DBD   NAME=PARTSX,ACCESS=PSINDEX
         DATASET DD1=PARTSXA
         SEGM  NAME=PSX,BYTES=10
         FIELD NAME=(PSXKEY,SEQ,U),START=1,BYTES=10
         LCHILD NAME=(PROOT,PARTH),INDEX=XPNAME,RKSIZE=10
         DBDGEN
         DBD   NAME=PARTR,ACCESS=PHDAM
         DATASET DD1=PARTRA
         SEGM  NAME=RROOT,BYTES=16
         FIELD NAME=(RKEY,SEQ,U),START=1,BYTES=4
         DBDGEN
         DBD   NAME=SIMPLE,ACCESS=SHISAM
         DATASET DD1=SIMPDD
         SEGM  NAME=SREC,BYTES=50
         FIELD NAME=(SKEY,SEQ,U),START=1,BYTES=10
         DBDGEN
         DBD   NAME=SEQIO,ACCESS=(GSAM,BSAM)
         DATASET DD1=SEQIN,DD2=SEQOUT,RECFM=F,RECORD=80
         SEGM  NAME=SEQREC,BYTES=80
         DBDGEN
         DBD   NAME=MAINST,ACCESS=MSDB
         DATASET REL=(NO)
         SEGM  NAME=MREC,BYTES=32
         FIELD NAME=(MKEY,SEQ,U),START=1,BYTES=8
         DBDGEN
)";
    LoadResult r = krsource::loadDecks({{"orgs.dbd", decks}});
    ASSERT_TRUE(r.ok()) << decktest::report(r);
    EXPECT_EQ(told(r, Severity::Warning),
              (std::vector<std::string>{
                  "orgs.dbd:9:29: warning: DATASET DSGROUP: keyword has no place in the model; ignored",
                  "orgs.dbd:20:49: warning: LCHILD RKSIZE: keyword has no place in the model; ignored"}));
    struct Org {
        const char* dbd;
        const char* accessClass;
        const char* segmentClass;
        const char* root;
    };
    for (const Org& o :
         {Org{"FASTDB", "DSDBDdedb", "DSSegmentDEDB", "FROOT"}, Org{"PARTH", "DSDBDhidam", "DSSegmentComplex", "PROOT"},
          Org{"PARTSX", "DSDBDindex", "DSSegmentComplex", "PSX"},
          Org{"PARTR", "DSDBDhdam", "DSSegmentComplex", "RROOT"},
          Org{"SIMPLE", "DSDBDaccess", "DSSegmentComplex", "SREC"}, Org{"SEQIO", "DSDBDaccess", "DSSegment", "SEQREC"},
          Org{"MAINST", "DSDBDmsdb", "DSSegment", "MREC"}}) {
        auto* access = found<_DSDBDaccess>(o.accessClass, std::string(o.dbd) + ".ACCESS");
        ASSERT_NE(access, nullptr) << o.dbd;
        EXPECT_STREQ(access->getClassName(), o.accessClass) << o.dbd;
        auto* root = found<_DSSegment>(o.segmentClass, std::string(o.dbd) + "." + o.root);
        ASSERT_NE(root, nullptr) << o.dbd;
        EXPECT_EQ(root->_get_physicalParent()->count(), 0) << o.dbd;
    }
    EXPECT_STREQ(found<_DSDBDaccess>("DSDBDhidam", "PARTH.ACCESS")->_get_dliAccess(), "PHIDAM");
    EXPECT_STREQ(found<_DSDBDaccess>("DSDBDindex", "PARTSX.ACCESS")->_get_dliAccess(), "PSINDEX");
    EXPECT_STREQ(found<_DSDBDaccess>("DSDBDaccess", "SIMPLE.ACCESS")->_get_dliAccess(), "SHISAM");
    auto* seqDep = found<_DSSegmentDEDB>("DSSegmentDEDB", "FASTDB.FSEQ");
    auto* dirDep = found<_DSSegmentDEDB>("DSSegmentDEDB", "FASTDB.FDIR");
    ASSERT_TRUE(seqDep && dirDep);
    EXPECT_EQ(seqDep->_get_physicalParent()->count(), 1);
    EXPECT_EQ(seqDep->_get_directDependent(), 0);
    EXPECT_EQ(dirDep->_get_directDependent(), 1);
    EXPECT_EQ(dirDep->_get_subsetPointers(), 3);
    auto* seqIn = found<_DSTARNDataset>("DSTARNDataset", "SEQIN.DATASET");
    ASSERT_NE(seqIn, nullptr);
    EXPECT_STREQ(seqIn->_get_recordFormat(), "F");
    EXPECT_EQ(seqIn->_get_inputRecordLength(), 80);
    ASSERT_NE(seqIn->_getFirst_dd2(), nullptr);
    EXPECT_STREQ((*seqIn->_getFirst_dd2())->_get_ddsName(), "SEQOUT");
    EXPECT_STREQ(found<_DSDBDmsdb>("DSDBDmsdb", "MAINST.ACCESS")->_get_msdbType(), "NO");
    expectRoundTrip(r, {{"orgs.dbd", decks}});
}

// A library is a set of decks: an exit routine of one DBD used by a segment of
// another, a logical
// relationship across them, two PSBs on one DBD, given in any order of files,
// load to the same model.
TEST_F(Construct, ALibraryIsASetOfDecks) {
    std::vector<Deck> decks = {{"alpha.dbd", R"(         DBD   NAME=ALPHA,ACCESS=HISAM,EXIT=(AUDITX,KEY,LOG)
         DATASET DD1=ALPHADD,OVFLW=ALPHAOV
         SEGM  NAME=AROOT,PARENT=0,BYTES=12
         FIELD NAME=(AKEY,SEQ,U),START=1,BYTES=6
         LCHILD NAME=(BLNK,BETA),POINTER=SNGL
         DBDGEN
)"},
                               {"beta.dbd", R"(         DBD   NAME=BETA,ACCESS=HISAM
         DATASET DD1=BETADD,OVFLW=BETAOV
         SEGM  NAME=BROOT,PARENT=0,BYTES=12,EXIT=(AUDITX,KEY,LOG)
         FIELD NAME=(BKEY,SEQ,U),START=1,BYTES=6
         SEGM  NAME=BLNK,PARENT=((BROOT),(AROOT,PHYSICAL,ALPHA))
         FIELD NAME=(BLKEY,SEQ,U),START=1,BYTES=6
         DBDGEN
)"},
                               {"reader.psb", R"(AREAD    PCB   TYPE=DB,DBDNAME=ALPHA,PROCOPT=G
         SENSEG NAME=AROOT,PARENT=0
         PSBGEN LANG=COBOL,PSBNAME=READPSB
)"},
                               {"writer.psb", R"(AWRITE   PCB   TYPE=DB,DBDNAME=ALPHA,PROCOPT=A
         SENSEG NAME=AROOT,PARENT=0
BREAD    PCB   TYPE=DB,DBDNAME=BETA,PROCOPT=G
         SENSEG NAME=BROOT,PARENT=0
         SENSEG NAME=BLNK,PARENT=BROOT
         PSBGEN LANG=COBOL,PSBNAME=WRITEPSB
)"}};
    auto forward = loaded(decks);
    ASSERT_EQ(forward.size(), 4u);
    std::reverse(decks.begin(), decks.end());
    EXPECT_EQ(loaded(decks), forward);
    std::rotate(decks.begin(), decks.begin() + 1, decks.end());
    EXPECT_EQ(loaded(decks), forward);
    // An exit belongs to the DBD that names it: the other DBD's segment
    // naming the same routine has an exit of its own.
    LoadResult r = krsource::loadDecks(decks);
    ASSERT_TRUE(r.ok());
    auto* x = found<_DSExit>("DSExit", "ALPHA.AUDITX");
    ASSERT_NE(x, nullptr);
    EXPECT_EQ(x->_get_capturedDBD()->count(), 1);
    EXPECT_EQ(x->_get_capturedSegment()->count(), 0);
    auto* own = found<_DSExit>("DSExit", "BETA.BROOT.AUDITX");
    ASSERT_NE(own, nullptr);
    EXPECT_EQ(own->_get_capturedSegment()->count(), 1);
}

// A DBD's exit belongs to that DBD and its options are each use's own: two
// DBDs naming one routine load (the model lets an exit serve one DBD), and a
// segment naming its DBD's routine shares the DBD's exit only with the same
// options; with others it has one of its own and the DBD's stays as written.
TEST_F(Construct, DbdsShareAnExitRoutineWithTheirOwnOptions) {
    const char* alpha =
        "         DBD   NAME=ALPHA,ACCESS=HSAM,EXIT=(AUDITX,KEY,LOG)\n"
        "         SEGM  NAME=AR,BYTES=8\n         DBDGEN\n";
    const char* beta =
        "         DBD   NAME=BETA,ACCESS=HSAM,EXIT=(AUDITX,NOKEY,DATA)\n"
        "         SEGM  NAME=BR,BYTES=8,EXIT=(AUDITX,NOKEY,DATA)\n         DBDGEN\n";
    LoadResult r = krsource::loadDecks({{"a.dbd", alpha}, {"b.dbd", beta}});
    ASSERT_TRUE(r.ok()) << decktest::report(r);
    std::string written = krsource::writeDbdDeck(found<_DSDBD>("DSDBD", "ALPHA"));
    EXPECT_NE(written.find("EXIT=(AUDITX,KEY,LOG)"), std::string::npos) << written;
    auto* betaExit = found<_DSExit>("DSExit", "BETA.AUDITX");
    ASSERT_NE(betaExit, nullptr);
    EXPECT_EQ(betaExit->_get_capturedSegment()->count(), 1);  // same options: shared with BR
    DSRegistrar::releaseAll();
    const char* gamma =
        "         DBD   NAME=GAMMA,ACCESS=HSAM,EXIT=(AUDITX,KEY)\n"
        "         SEGM  NAME=GR,BYTES=8,EXIT=(AUDITX,KEY,DATA)\n         DBDGEN\n";
    r = krsource::loadDecks({{"g.dbd", gamma}});
    ASSERT_TRUE(r.ok()) << decktest::report(r);
    EXPECT_EQ(found<_DSExit>("DSExit", "GAMMA.AUDITX")->_get_exitData(), 0);
    EXPECT_EQ(found<_DSExit>("DSExit", "GAMMA.GR.AUDITX")->_get_exitData(), 1);
}

// A sublist holding nothing (`NAME=()`) gives no value: a name written so is
// a name missing, not a definition, segment, field or PCB without a name.
TEST_F(Construct, AnEmptySublistIsNoValue) {
    const std::string head = "         DBD   NAME=EMPTY,ACCESS=HSAM\n";
    const std::string seg = "         SEGM  NAME=ER,BYTES=8\n";
    const std::string end = "         DBDGEN\n";
    struct Case {
        std::string deck;
        std::string error;
    };
    for (const Case& c :
         {Case{"         DBD   NAME=(),ACCESS=HSAM\n" + seg + end, "e.dbd:1:16: error: DBD NAME: required"},
          Case{head + "         SEGM  NAME=(),BYTES=8\n" + end, "e.dbd:2:16: error: SEGM NAME: required"},
          Case{head + seg + "         FIELD NAME=(),START=1,BYTES=2\n" + end,
               "e.dbd:3:16: error: FIELD NAME: required (or EXTERNALNAME for a field known by that alone)"},
          Case{head + seg + end + "         PCB   TYPE=DB,NAME=()\n         PSBGEN PSBNAME=EMPTYPSB\n",
               "e.dbd:4:10: error: PCB DBDNAME: required (the DBD the PCB is based on; NAME= also names it)"}}) {
        LoadResult r = krsource::loadDecks({{"e.dbd", c.deck}});
        EXPECT_EQ(told(r, Severity::Error), std::vector<std::string>{c.error}) << c.deck;
        r = LoadResult();
        DSRegistrar::releaseAll();
    }
}

// A segment that is the logical parent of segments in several DBDs lists its
// logical children in the order of their DBDs' names, whatever order the
// files come in; every segment may use one compression routine (the model
// gives each its own routine object).
TEST_F(Construct, WhatDbdsShareListsThemByNameInAnyFileOrder) {
    auto dbd = [](const char* name) {
        return std::string("         DBD   NAME=") + name + ",ACCESS=HDAM,RMNAME=(DFSHDC40,1,10)\n" +
               "         SEGM  NAME=S" + name + ",BYTES=8,COMPRTN=(SQUEEZE,DATA)\n         SEGM  NAME=T" + name +
               ",PARENT=((S" + name + "),(P,PHYSICAL,PAR)),BYTES=8\n         DBDGEN\n";
    };
    std::vector<Deck> decks = {{"c.dbd", dbd("CEE")},
                               {"p.dbd",
                                "         DBD   NAME=PAR,ACCESS=HDAM,RMNAME=(DFSHDC40,1,10)\n"
                                "         SEGM  NAME=P,BYTES=8\n         DBDGEN\n"},
                               {"a.dbd", dbd("AAA")},
                               {"b.dbd", dbd("BEE")}};
    for (int turn = 0; turn < 4; ++turn) {
        LoadResult r = krsource::loadDecks(decks);
        ASSERT_TRUE(r.ok()) << decktest::report(r);
        std::string order;
        for (_DSSegmentComplex* child :
             kr::targetsOf<DSLChild>(found<_DSSegmentComplex>("DSSegmentComplex", "PAR.P")->_get_logChildren()))
            order += std::string(child->_get_strSegmentName()) + " ";
        EXPECT_EQ(order, "TAAA TBEE TCEE ") << "turn " << turn;
        EXPECT_STREQ(found<_DSCompRoutine>("DSCompRoutine", "BEE.SBEE.SQUEEZE")->_get_routine(), "SQUEEZE");
        // The definitions are handed over in the order of the files.
        std::string files, handed;
        for (const Deck& d : decks) files += d.name.substr(0, 1);
        for (const DSDBD& d : r.dbds) handed += static_cast<char>(std::tolower(d->_get_strDBDName()[0]));
        EXPECT_EQ(handed, files);
        r = LoadResult();
        DSRegistrar::releaseAll();
        std::rotate(decks.begin(), decks.begin() + 1, decks.end());
    }
}

// CheckTest.cpp — every rule of the table has a minimal input that triggers it:
// a deck, and the finding carries the rule's code and severity and the place
// of the statement at fault; or, for what the deck reader refuses earlier, a
// definition built through the model, and the finding names the object's path.
// The decks they start from, decks at the rules' edges, the hand-written decks
// and the built-in sample have no errors; findings read as the tool prints them.
#include <krmwtarn/check/Rules.h>
#include <krmwtarn/model/framework/Navigation.h>
#include <krmwtarn/sample/SampleModel.h>

#include <gtest/gtest.h>

#include <fstream>
#include <functional>
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

// Physical pairing both ways (OI under ORD with the logical parent ITM, IO
// under ITM with the logical parent ORD, each the other's PAIR), logical DBDs
// that reach a segment through its physical parent, through a concatenated
// segment's destination parent and through its logical parent, and an XDFLD
// whose search field is its source segment's, not the indexed one's.
const std::string kPairDbd =
    "         DBD   NAME=PD,ACCESS=HDAM,RMNAME=(DFSHDC40,1,10)\n"
    "         SEGM  NAME=TOP,PARENT=0,BYTES=10\n"
    "         FIELD NAME=(TKEY,SEQ,U),START=1,BYTES=4\n"
    "         LCHILD NAME=(XIDXS,XIDX),POINTER=INDX\n"
    "         XDFLD NAME=XONO,SEGMENT=ORD,SRCH=ONO\n"
    "         SEGM  NAME=ORD,PARENT=TOP,BYTES=10\n"
    "         FIELD NAME=(ONO,SEQ,U),START=1,BYTES=4\n"
    "         LCHILD NAME=(IO,PD),POINTER=SNGL,PAIR=OI\n"
    "         SEGM  NAME=OI,PARENT=((ORD,SNGL),(ITM,PHYSICAL,PD)),BYTES=10\n"
    "         SEGM  NAME=ITM,PARENT=TOP,BYTES=10\n"
    "         FIELD NAME=(INO,SEQ,U),START=1,BYTES=4\n"
    "         LCHILD NAME=(OI,PD),POINTER=SNGL,PAIR=IO\n"
    "         SEGM  NAME=IO,PARENT=((ITM,SNGL),(ORD,PHYSICAL,PD)),BYTES=10\n"
    "         SEGM  NAME=STK,PARENT=ITM,BYTES=10\n"
    "         DBDGEN\n"
    "         DBD   NAME=XIDX,ACCESS=INDEX\n"
    "         SEGM  NAME=XIDXS,BYTES=4\n"
    "         FIELD NAME=(XKEY,SEQ,U),START=1,BYTES=4\n"
    "         LCHILD NAME=(TOP,PD),INDEX=XONO\n"
    "         DBDGEN\n"
    "         DBD   NAME=ORDLOG,ACCESS=LOGICAL\n"
    "         SEGM  NAME=LO,SOURCE=((ORD,DATA,PD))\n"
    "         SEGM  NAME=LOI,PARENT=LO,SOURCE=((OI,KEY,PD),(ITM,DATA,PD))\n"
    "         SEGM  NAME=LSTK,PARENT=LOI,SOURCE=((STK,DATA,PD))\n"
    "         DBDGEN\n"
    "         DBD   NAME=ITEMLOG,ACCESS=LOGICAL\n"
    "         SEGM  NAME=LI,SOURCE=((ITM,DATA,PD))\n"
    "         SEGM  NAME=LIO,PARENT=LI,SOURCE=((OI,KEY,PD),(ORD,DATA,PD))\n"
    "         DBDGEN\n";

// BASEDBD as a HIDAM database with its primary index.
const std::string kIndexDbd =
    "         DBD   NAME=BASEIDX,ACCESS=INDEX\n"
    "         SEGM  NAME=BASEIDXS,BYTES=6\n"
    "         FIELD NAME=(IKEY,SEQ,U),START=1,BYTES=6\n"
    "         LCHILD NAME=(ROOT,BASEDBD),INDEX=KEY,POINTER=INDX\n"
    "         DBDGEN\n";

// An MSDB of one root keyed by its first 8 bytes.
const std::string kMsdb =
    "         DBD   NAME=RATEMSDB,ACCESS=MSDB\n"
    "         DATASET REL=(FIXED,RATEKEY)\n"
    "         SEGM  NAME=RATE,BYTES=32\n"
    "         FIELD NAME=(RATEKEY,SEQ,U),BYTES=8,START=1\n"
    "         DBDGEN\n";

// A GSAM database, and a PCB of it.
const std::string kGsamDbd =
    "         DBD   NAME=GSAMDB,ACCESS=(GSAM,BSAM)\n"
    "         DATASET DD1=GSAMIN,DD2=GSAMOUT,RECORD=(200),RECFM=F\n"
    "         DBDGEN\n";
const std::string kGsamPcb = "         PCB   TYPE=GSAM,DBDNAME=GSAMDB,PROCOPT=LS\n";

std::string replaced(std::string text, const std::string& from, const std::string& to) {
    std::size_t at = text.find(from);
    EXPECT_NE(at, std::string::npos) << from;
    return at == std::string::npos ? text : text.replace(at, from.size(), to);
}

// BASEDBD as a HIDAM database, its primary index BASEIDX (kIndexDbd).
std::string hidam() {
    return replaced(replaced(kDbd, "ACCESS=HDAM,RMNAME=(DFSHDC40,1,10)", "ACCESS=HIDAM"), "BYTES=20\n",
                    "BYTES=20\n         LCHILD NAME=(BASEIDXS,BASEIDX),POINTER=INDX\n");
}

// Sixteen segments, each the child of the one before.
std::string sixteenLevels() {
    std::string d = "         DBD   NAME=DEEPDBD,ACCESS=HDAM,RMNAME=(DFSHDC40,1,10)\n";
    for (int i = 1; i <= 16; ++i)
        d += "         SEGM  NAME=S" + std::to_string(i) + ",PARENT=" + (i == 1 ? "0" : "S" + std::to_string(i - 1)) +
             ",BYTES=10\n         FIELD NAME=(K" + std::to_string(i) + ",SEQ,U),START=1,BYTES=2\n";
    return d + "         DBDGEN\n";
}

// A DBD of a keyed root and `children` segments under it, ACCESS=`access`.
std::string wideDbd(const std::string& access, int children) {
    std::string d =
        "         DBD   NAME=WIDEDBD,ACCESS=" + access + "\n" +
        (access.rfind("DEDB", 0) == 0 ? "         AREA  DD1=WIDEAR1,SIZE=4096,UOW=(100,10),ROOT=(80,5)\n" : "") +
        "         SEGM  NAME=WROOT,PARENT=0,BYTES=20\n         FIELD NAME=(WKEY,SEQ,U),START=1,BYTES=4\n";
    for (int i = 1; i <= children; ++i) d += "         SEGM  NAME=W" + std::to_string(i) + ",PARENT=WROOT,BYTES=10\n";
    return d + "         DBDGEN\n";
}

// BASEDBD's root with `count` fields of one byte each (its key the first).
std::string manyFields(int count) {
    std::string fields;
    for (int i = 3; i <= count; ++i) fields += "         FIELD NAME=F" + std::to_string(i) + ",START=7,BYTES=1\n";
    return replaced(kDbd, "BYTES=14\n", "BYTES=14\n" + fields);
}

std::string readFile(const std::string& path) {
    std::ifstream in(path, std::ios::binary);
    std::ostringstream s;
    s << in.rdbuf();
    return s.str();
}

// Definitions built through the model, and the path of the object at fault.
struct Built {
    std::vector<ADObject> definitions;
    std::string path;
};

// A rule's triggering decks, and the card (its deck and a text on it) of the
// statement the finding must point at; or, for what decks cannot hold, the
// definitions to build instead.
struct Trigger {
    std::vector<krsource::Deck> decks = {};
    std::string file = {};
    std::string card = {};
    std::function<Built()> build = nullptr;
};

template <class H>
H made(const std::string& id, const char* name = nullptr) {
    H h("CHECK", id.c_str(), 1);
    if (name) {
        if constexpr (std::is_same_v<H, DSDBD>) h->_set_strDBDName(name, omStore);
        if constexpr (std::is_same_v<H, DSPSB>) h->_set_strPSBName(name, omStore);
        if constexpr (std::is_base_of_v<DSSegment, H>) h->_set_strSegmentName(name, omStore);
        if constexpr (std::is_same_v<H, DSField>) h->_set_strFieldName(name, omStore);
    }
    return h;
}

// A DBD of `count` segments, each the child of the first, the first with
// `rootFields` fields and each other with `fields`.
Built segments(int count, int fields = 0, int rootFields = 0) {
    auto d = made<DSDBD>("BIGDBD", "BIGDBD");
    DSSegment root;
    for (int i = 1; i <= count; ++i) {
        std::string name = "S" + std::to_string(i);
        auto s = made<DSSegment>("BIGDBD." + name, name.c_str());
        DSContainsSegment(&d, &s, 1);
        if (root.isEmpty())
            root = s;
        else
            DSParent(&s, &root, 1);
        for (int j = 0; j < (i == 1 ? rootFields : fields); ++j) {
            std::string field = "F" + std::to_string(j);
            auto f = made<DSField>("BIGDBD." + name + "." + field, field.c_str());
            DSHasField(&s, &f, 1);
        }
    }
    return {{d}, "BIGDBD"};
}

// A PSB of `pcbs` PCBs (database PCBs when they have SENSEGs), each with
// `sensegs` SENSEGs, each with `senflds` SENFLDs.
Built bigPsb(const std::string& name, int pcbs, int sensegs, int senflds) {
    auto p = made<DSPSB>(name, name.c_str());
    auto dbd = made<DSDBD>(name + ".DBD", "LIMITDBD");
    for (int i = 0; i < pcbs; ++i) {
        std::string id = name + ".PCB" + std::to_string(i);
        auto pcb = made<DSPCB>(id);
        DSIncludesPCB(&p, &pcb, nullptr, 1);
        if (!sensegs) continue;
        auto db = made<DSPCBdb>(id + ".DB");
        DSSpecifiedByType(&pcb, &db, 1);
        DSBasedOn(&db, &dbd, 1);
        for (int j = 0; j < sensegs; ++j) {
            auto s = made<DSSenSegment>(id + ".S" + std::to_string(j));
            DSHasSensitive(&db, &s, nullptr, 1);
            for (int k = 0; k < senflds; ++k) {
                auto f = made<DSSenField>(id + ".S" + std::to_string(j) + ".F" + std::to_string(k));
                DSUsesSENFLD(&s, &f, 1);
            }
        }
    }
    return {{p}, name};
}

// A DBD made through the model: ROOT with its field KEY, CHILD under it with
// its field CKEY.
struct RootAndChild {
    DSDBD dbd;
    DSSegmentComplex root, child;
    DSField key, childKey;
    explicit RootAndChild(const std::string& name)
        : dbd(made<DSDBD>(name, name.c_str())),
          root(made<DSSegmentComplex>(name + ".ROOT", "ROOT")),
          child(made<DSSegmentComplex>(name + ".CHILD", "CHILD")),
          key(made<DSField>(name + ".ROOT.KEY", "KEY")),
          childKey(made<DSField>(name + ".CHILD.CKEY", "CKEY")) {
        DSContainsSegment(&dbd, &root, 1);
        DSContainsSegment(&dbd, &child, 1);
        DSParent(&child, &root, 1);
        DSHasField(&root, &key, 1);
        DSHasField(&child, &childKey, 1);
    }
};

// ROOT with a second field named KEY.
Built twiceNamed() {
    RootAndChild d("TWICEDBD");
    auto again = made<DSField>("TWICEDBD.ROOT.KEY2", "KEY");
    DSHasField(&d.root, &again, 1);
    return {{d.dbd}, "TWICEDBD/ROOT/KEY"};
}

// A DEDB segment with one subset pointer beyond what SSPTR allows.
Built subsetPointers() {
    auto d = made<DSDBD>("SSPDBD", "SSPDBD");
    auto s = made<DSSegmentDEDB>("SSPDBD.ROOT", "ROOT");
    kr::cast<_DSSegmentDEDB>(s.impl())->_set_subsetPointers(9, omStore);
    DSContainsSegment(&d, &s, 1);
    return {{d}, "SSPDBD/ROOT"};
}

// CHILD a logical child whose logical parent LPARENT is in no DBD.
Built orphanChild() {
    RootAndChild d("ORPHDBD");
    auto parent = made<DSSegmentComplex>("LPARENT", "LPARENT");
    DSLChild(&parent, &d.child, 1);
    return {{d.dbd}, "ORPHDBD/CHILD"};
}

// An XDFLD on ROOT, its source ROOT, searching ROOT's field and subsequenced by CHILD's.
Built strayXdfld() {
    RootAndChild d("XDBD");
    auto x = made<DSXDFLD>("XSTRAY");
    x->_set_xdfldName("XSTRAY", omStore);
    DSHasIndex(&d.root, &x, 1);
    DSHasIndexSource(&x, &d.root, 1);
    DSHasSearch(&x, &d.key, 1);
    DSHasSubsequence(&x, &d.childKey, 1);
    return {{d.dbd}, "XDBD/ROOT/XSTRAY"};
}

// A database PCB without its DBD.
Built pcbWithoutDbd() {
    auto p = made<DSPSB>("NODBDPSB", "NODBDPSB");
    auto pcb = made<DSPCB>("NODBDPSB.PCB1");
    pcb->_set_strPCBAccessName("NODBD", omStore);
    DSIncludesPCB(&p, &pcb, nullptr, 1);
    auto db = made<DSPCBdb>("NODBDPSB.PCB1.DB");
    DSSpecifiedByType(&pcb, &db, 1);
    return {{p}, "NODBDPSB/NODBD"};
}

// Two PCBs of one PSB with one name.
Built twoPcbsNamedAlike() {
    auto p = made<DSPSB>("TWOPSB", "TWOPSB");
    for (const char* id : {"TWOPSB.PCB1", "TWOPSB.PCB2"}) {
        auto pcb = made<DSPCB>(id);
        pcb->_set_strPCBAccessName("SAME", omStore);
        DSIncludesPCB(&p, &pcb, nullptr, 1);
    }
    return {{p}, "TWOPSB/SAME"};
}

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
        {"LOGICAL-HIERARCHY",
         {{{"t.dbd", kDbd},
           {"l.dbd",
            "         DBD   NAME=LOGDBD,ACCESS=LOGICAL\n"
            "         SEGM  NAME=LROOT,SOURCE=((ROOT,DATA,BASEDBD))\n"
            "         SEGM  NAME=LGRAND,PARENT=LROOT,SOURCE=((GRAND,DATA,BASEDBD))\n"
            "         DBDGEN\n"}},
          "l.dbd",
          "NAME=LGRAND"}},
        {"LCHILD-PAIR", {{{"p.dbd", replaced(kPairDbd, "PAIR=OI", "PAIR=STK")}}, "p.dbd", "NAME=ITM,"}},
        {"LOGICAL-PARENT", {.build = orphanChild}},
        {"XDFLD-FIELDS", {.build = strayXdfld}},
        {"INDEX-PRIMARY",
         {{{"t.dbd", replaced(hidam(), "BYTES=4\n",
                              "BYTES=4\n         LCHILD NAME=(BASEIDXS,BASEIDX),POINTER=INDX\n"
                              "         XDFLD NAME=XCKEY,SRCH=CKEY@#$8\n")},
           {"i.dbd", kIndexDbd}},
          "t.dbd",
          "DBD "}},
        {"INDEX-TARGET", {{{"t.dbd", kDbd}, {"i.dbd", kIndexDbd}}, "i.dbd", "DBD "}},
        {"SEG-COUNT", {.build = [] { return segments(int(krsource::kMaxSegments) + 1); }}},
        {"DBD-EMPTY",
         {{{"e.dbd", "         DBD   NAME=EMPTYDB,ACCESS=HDAM,RMNAME=(DFSHDC40,1,10)\n         DBDGEN\n"}},
          "e.dbd",
          "DBD "}},
        {"FLD-COUNT", dbd(manyFields(256), "NAME=ROOT")},
        {"FLD-NAME", {.build = twiceNamed}},
        {"SEQ-FIRST", dbd(replaced(kDbd, "         FIELD NAME=(KEY,SEQ,U),START=1,BYTES=6\n",
                                   "         FIELD NAME=TEXT0,START=7,BYTES=1\n"
                                   "         FIELD NAME=(KEY,SEQ,U),START=1,BYTES=6\n"),
                          "NAME=(KEY")},
        {"DEDB-SEGMENTS", {{{"w.dbd", wideDbd("DEDB,RMNAME=DBFHDC44", 127)}}, "w.dbd", "DBD "}},
        {"DEDB-SSPTR", {.build = subsetPointers}},
        {"MSDB-SEGMENTS", {{{"m.dbd", replaced(kMsdb, "BYTES=32", "BYTES=(32,16)")}}, "m.dbd", "SEGM  NAME=RATE"}},
        {"SHISAM-SEGMENT", {{{"w.dbd", wideDbd("SHISAM", 1)}}, "w.dbd", "NAME=W1"}},
        {"GSAM-SEGMENT", {{{"w.dbd", wideDbd("GSAM", 1)}}, "w.dbd", "NAME=W1"}},
        {"PCB-NAME", {.build = twoPcbsNamedAlike}},
        {"GSAM-LAST",
         {{{"t.dbd", kDbd},
           {"g.dbd", kGsamDbd},
           {"t.psb", replaced(kPsb, "         PCB   TYPE=DB", kGsamPcb + "         PCB   TYPE=DB")}},
          "t.psb",
          "TYPE=DB"}},
        {"SENFLD-SENSEG",
         {.build =
              [] {
                  return Built{bigPsb("BIGPSB", 1, 1, 256).definitions, "BIGPSB/PCB1/"};
              }}},
        {"SENFLD-KEY", psb(replaced(kPsb, "NAME=ROOT,PARENT=0\n", "NAME=ROOT,PARENT=0,PROCOPT=K\n"), "SENFLD")},
        {"PCB-COUNT", {.build = [] { return bigPsb("BIGPSB", krsource::kMaxPCBs + 1, 0, 0); }}},
        {"SENSEG-COUNT", {.build = [] { return bigPsb("BIGPSB", 100, krsource::kMaxSensegs / 100 + 1, 0); }}},
        {"SENFLD-COUNT", {.build = [] { return bigPsb("BIGPSB", 1, 100, krsource::kMaxSenflds / 100 + 1); }}},
        {"PCB-DBD", {.build = pcbWithoutDbd}},
        {"LOGICAL-SOURCE",
         {{{"l.dbd",
            "         DBD   NAME=LOGDBD,ACCESS=LOGICAL\n         SEGM  NAME=LROOT,PARENT=0\n         DBDGEN\n"}},
          "l.dbd",
          "NAME=LROOT"}},
        {"PSB-NAME", psb(replaced(kPsb, "PSBNAME=BASEPSB", "PSBNAME=BASEPSBXY"), "PSBGEN")},
        {"PSB-DBD-NAME", psb(replaced(kPsb, "PSBNAME=BASEPSB", "PSBNAME=BASEDBD"), "PSBGEN")},
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
    if (t.build) {
        Built built = t.build();
        std::vector<krcheck::Finding> findings = krcheck::check(built.definitions);
        bool found = false;
        for (const krcheck::Finding& f : findings) {
            if (f.code != rule.code) continue;
            found = true;
            EXPECT_EQ(f.severity, rule.severity);
            EXPECT_FALSE(f.located()) << f.text();
            EXPECT_EQ(f.path, built.path) << f.text();
        }
        EXPECT_TRUE(found) << rule.code << " not reported; findings:\n" << all(findings);
        return;
    }
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

// A PSB and a DBD may not share a name: with a load or a repository, every
// DBD checked with the PSB is known; a PSB checked alone knows only its PCBs'.
TEST_F(Check, APsbNamedLikeADbdIsFoundAmongTheDbdsCheckedWithIt) {
    const std::string other = replaced(kDbd, "NAME=BASEDBD", "NAME=OTHERDB");
    krsource::LoadResult loaded = krsource::loadDecks(
        {{"t.dbd", kDbd}, {"o.dbd", other}, {"t.psb", replaced(kPsb, "PSBNAME=BASEPSB", "PSBNAME=OTHERDB")}});
    ASSERT_TRUE(loaded.ok());
    EXPECT_NE(all(krcheck::check(loaded)).find("[PSB-DBD-NAME] PSB OTHERDB has the name of a DBD"), std::string::npos);
    std::vector<ADObject> definitions(loaded.dbds.begin(), loaded.dbds.end());
    definitions.emplace_back(loaded.psbs.front());
    EXPECT_NE(all(krcheck::check(definitions)).find("[PSB-DBD-NAME]"), std::string::npos);
    EXPECT_EQ(all(krcheck::check(loaded.psbs.front().operator->())), "");
}

// Each rule's edge that must pass: physical pairing both ways, logical
// hierarchies through physical, destination and logical parents, an XDFLD on
// another segment's field, a HIDAM with its primary index; a DEDB of 127
// segment types, a SHISAM and a GSAM database of one segment, a GSAM one of
// none, an MSDB, a segment of 255 fields.
TEST_F(Check, DecksAtTheRulesEdgesHaveNoFindings) {
    const std::string gsamLast = replaced(replaced(kPsb, "         PSBGEN", kGsamPcb + "         PSBGEN"),
                                          "NAME=CHILD,PARENT=ROOT", "NAME=CHILD,PARENT=ROOT,PROCOPT=K");
    for (const std::vector<krsource::Deck>& decks : {std::vector<krsource::Deck>{{"p.dbd", kPairDbd}},
                                                     {{"t.dbd", hidam()}, {"i.dbd", kIndexDbd}},
                                                     {{"w.dbd", wideDbd("DEDB,RMNAME=DBFHDC44", 126)}},
                                                     {{"w.dbd", wideDbd("SHISAM", 0)}},
                                                     {{"w.dbd", wideDbd("GSAM", 0)}},
                                                     {{"g.dbd", kGsamDbd}},
                                                     {{"t.dbd", kDbd}, {"g.dbd", kGsamDbd}, {"t.psb", gsamLast}},
                                                     {{"m.dbd", kMsdb}},
                                                     {{"t.dbd", manyFields(255)}}}) {
        krsource::LoadResult loaded = krsource::loadDecks(decks);
        std::string diagnostics;
        for (const krsource::Diagnostic& d : loaded.diagnostics) diagnostics += d.text() + "\n";
        ASSERT_TRUE(loaded.ok()) << diagnostics;
        EXPECT_EQ(all(krcheck::check(loaded)), "") << decks.front().bytes;
        DSRegistrar::releaseAll();
    }
}

// Definitions at the limits, made through the model, are not beyond them.
TEST_F(Check, DefinitionsAtTheLimitsHaveNoFindings) {
    std::vector<ADObject> at = segments(int(krsource::kMaxSegments)).definitions;
    for (const Built& b :
         {bigPsb("PCBPSB", krsource::kMaxPCBs, 0, 0), bigPsb("SENSEGS", 100, krsource::kMaxSensegs / 100, 0)})
        at.push_back(b.definitions.front());
    EXPECT_EQ(all(krcheck::check(at)), "");
    DSRegistrar::releaseAll();
    EXPECT_EQ(all(krcheck::check(bigPsb("SENFLDS", 1, 100, krsource::kMaxSenflds / 100).definitions)), "");
    DSRegistrar::releaseAll();
    EXPECT_EQ(all(krcheck::check(bigPsb("SENSEG", 1, 1, 255).definitions)), "");
}

// A DBD's fields are counted over all its segments.
TEST_F(Check, FieldsAreCountedOverTheDbd) {
    EXPECT_EQ(all(krcheck::check(segments(5, 250).definitions)), "");
    DSRegistrar::releaseAll();
    EXPECT_EQ(all(krcheck::check(segments(5, 250, 1).definitions)),
              "BIGDBD: error: [FLD-COUNT] DBD BIGDBD has 1001 fields and XDFLDs; at most 1000 are allowed\n");
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
    krcheck::Finding f{"d.dbd", 3, 10, krcheck::Severity::Error, "segment S is a second root", "SEG-ROOT", "D/S"};
    EXPECT_EQ(f.text(), "d.dbd:3:10: error: [SEG-ROOT] segment S is a second root");
}

// A HIDAM whose primary index is the access of no DBD and whose index key is
// a field of another segment: what only the model's interface can make.
TEST_F(Check, APrimaryIndexOutsideADbdOrKeyedOffTheRootIsReported) {
    RootAndChild d("HDBD");
    auto hidam = made<DSDBDhidam>("HDBD.ACCESS");
    DSDefinedByAccess(&d.dbd, &hidam, 1);
    d.key->_set_sequenceField(1, omStore);
    d.key->_set_uniqueSequence(1, omStore);
    auto index = made<DSDBDindex>("LOOSE.ACCESS");
    DSIndex(&hidam, &index, 1);
    DSHasRootSequence(&hidam, &d.childKey, 1);
    EXPECT_EQ(all(krcheck::check(d.dbd.operator->())),
              "HDBD: error: [INDEX-PRIMARY] the primary index of HIDAM database HDBD is the index of no DBD\n"
              "HDBD: error: [INDEX-PRIMARY] the primary index's key CKEY is not a field of root segment ROOT\n");
}

// The README's rules table is the rule table's rows, in its order.
TEST_F(Check, TheReadmeListsEveryRuleAsTheTableHasIt) {
    std::string readme = readFile(KRMWTARN_README), rows;
    for (const krcheck::Rule& r : krcheck::rules())
        rows += std::string("| `") + r.code + "` | " + (r.severity == krcheck::Severity::Error ? "error" : "warning") +
                " | " + r.description + " |\n";
    std::size_t at = readme.find("| code | severity | rule |\n|---|---|---|\n");
    ASSERT_NE(at, std::string::npos);
    at = readme.find("\n", readme.find("\n", at) + 1) + 1;
    EXPECT_EQ(readme.substr(at, readme.find("\n\n", at) + 1 - at), rows);
}

TEST_F(Check, RuleCodesAreDistinctAndEachRuleHasOneKind) {
    std::map<std::string, int> codes;
    for (const krcheck::Rule& r : krcheck::rules()) {
        EXPECT_EQ(++codes[r.code], 1) << r.code;
        EXPECT_NE(!r.onDbd, !r.onPsb) << r.code;
        EXPECT_EQ(std::string(r.description).find('\n'), std::string::npos) << r.code;
    }
}

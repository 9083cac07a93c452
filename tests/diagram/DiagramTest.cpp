// DiagramTest.cpp — the DOT pictures checked against the model they draw: the
// sample's HIDAM DBD (every segment once, every parent, logical, source and
// index edge, nothing else), its PSB (each PCB over its DBD, the sensitive
// segments marked, the others greyed), several names in one picture, names
// that DOT must escape, byte-identical output, and Graphviz's dot taking it
// all (and its failures reported, not crashed on). Expectations come from the
// model's typed role accessors (_getFirst_/_getNext_), not from the writer's walk.
#include <gtest/gtest.h>

#include <krmwtarn/source/DeckLoader.h>
#include <krmwtarn/source/DeckWriter.h>

#include <krmwtarn/diagram/DotWriter.h>
#include <krmwtarn/diagram/Graphviz.h>
#include <krmwtarn/sample/SampleModel.h>

#include <cstdlib>
#include <filesystem>
#include <map>
#include <set>
#include <string>
#include <tuple>
#include <vector>

namespace {

// ---- reading back what the writer wrote ------------------------------------

struct Node {
    std::string cls, label;
};
using EdgeKey = std::tuple<std::string, std::string, std::string>;  // from, to, class

struct Dot {
    std::map<std::string, Node> nodes;
    std::multiset<EdgeKey> edges;
    std::map<EdgeKey, std::string> edgeLabels;
    int repeatedNodes = 0;
};

// A quoted string at text[at]: its unescaped content; `at` moves past it.
std::string readQuoted(const std::string& text, std::size_t& at) {
    std::string out;
    EXPECT_EQ(text[at], '"') << text;
    for (++at; at < text.size() && text[at] != '"'; ++at) {
        if (text[at] == '\\' && text[at + 1] == 'n') {
            out += '\n';  // a line break in a label
            ++at;
            continue;
        }
        if (text[at] == '\\') ++at;
        out += text[at];
    }
    ++at;
    return out;
}
std::string attribute(const std::string& line, const std::string& name) {
    std::size_t at = line.find(" " + name + "=\"");
    if (at == std::string::npos) at = line.find("[" + name + "=\"");
    if (at == std::string::npos) return {};
    at += name.size() + 2;
    return readQuoted(line, at);
}

// The node and edge statements: one a line, `"ID" [...]` or `"A" -> "B" [...]`.
Dot parse(const std::string& dot) {
    Dot d;
    std::size_t from = 0;
    while (from < dot.size()) {
        std::size_t end = dot.find('\n', from);
        std::string line = dot.substr(from, end - from);
        from = end == std::string::npos ? dot.size() : end + 1;
        std::size_t at = line.find_first_not_of(' ');
        if (at == std::string::npos || line[at] != '"') continue;
        std::string first = readQuoted(line, at);
        if (line.compare(at, 4, " -> ") == 0) {
            at += 4;
            std::string second = readQuoted(line, at);
            EdgeKey key{first, second, attribute(line, "class")};
            d.edges.insert(key);
            d.edgeLabels[key] = attribute(line, "label");
        } else {
            Node n{attribute(line, "class"), attribute(line, "label")};
            if (!d.nodes.emplace(first, n).second) ++d.repeatedNodes;
        }
    }
    return d;
}

// ---- the model, read through the typed role accessors ------------------------

std::string name(DSSegment* s) { return (*s)->_get_strSegmentName(); }

_DSDBD* dbdOf(DSSegment* s) {
    DSDBD* d = (*s)->_getFirst_containingDBD();
    return d ? d->operator->() : nullptr;
}
std::string nodeOf(DSSegment* s) { return std::string(dbdOf(s)->_get_strDBDName()) + "." + name(s); }

std::vector<DSSegment*> segmentsOf(_DSDBD* d) {
    std::vector<DSSegment*> all;
    for (DSSegment* s = d->_getFirst_segments(); s; s = d->_getNext_segments()) all.push_back(s);
    return all;
}
DSSegment* rootOf(_DSDBD* d) {
    for (DSSegment* s : segmentsOf(d))
        if (!(*s)->_getFirst_physicalParent()) return s;
    return nullptr;
}
_DSDBD* dbdOfIndex(DSDBDindex* index) { return (*index)->_getFirst_containingDBD()->operator->(); }

// Every segment of DBDS once, every parent edge: what a DBD's cluster holds.
void expectHierarchies(const Dot& dot, const std::vector<_DSDBD*>& dbds, std::multiset<EdgeKey>& expected) {
    std::size_t segments = 0;
    for (_DSDBD* d : dbds)
        for (DSSegment* s : segmentsOf(d)) {
            ++segments;
            ASSERT_TRUE(dot.nodes.count(nodeOf(s))) << nodeOf(s);
            EXPECT_EQ(dot.nodes.at(nodeOf(s)).cls, "segment") << nodeOf(s);
            EXPECT_EQ(dot.nodes.at(nodeOf(s)).label.rfind(name(s), 0), 0u) << nodeOf(s);
            if (DSSegment* p = (*s)->_getFirst_physicalParent()) expected.insert({nodeOf(p), nodeOf(s), "parent"});
        }
    EXPECT_EQ(dot.nodes.size(), segments);
    EXPECT_EQ(dot.repeatedNodes, 0);
}

class SamplePicture : public ::testing::Test {
protected:
    void TearDown() override { DSRegistrar::releaseAll(); }
    sample::Model m = sample::build();
};

TEST_F(SamplePicture, DbdHasEverySegmentOnceAndEveryTieToTheOtherDbds) {
    Dot dot = parse(krdiagram::writeDot({m.hospital.impl()}));
    _DSDBD* hosp = m.hospital.operator->();
    // HOSPDBD is tied to its primary index, its secondary index and the logical DBD built on it.
    std::multiset<EdgeKey> expected;
    expectHierarchies(dot, {hosp, m.hospIndex.operator->(), m.nameIndex.operator->(), m.logical.operator->()},
                      expected);
    for (DSSegment* s : segmentsOf(hosp)) {
        for (DSSegmentLogical* l = (*s)->_getFirst_logicalSegments(); l; l = (*s)->_getNext_logicalSegments())
            expected.insert({nodeOf(s), nodeOf(l), "source"});
        if (!(*s)->isKindOf("DSSegmentComplex")) continue;
        auto* cx = static_cast<_DSSegmentComplex*>(s->impl());
        for (DSSegmentComplex* c = cx->_getFirst_logChildren(); c; c = cx->_getNext_logChildren())
            expected.insert({nodeOf(s), nodeOf(c), "lchild"});
        for (DSLChild* l = cx->_getFirst_pairedLogChild(); l; l = cx->_getNext_pairedLogChild())
            expected.insert({nodeOf((*l)->_get_target()), nodeOf(s), "pair"});
        for (DSXDFLD* x = cx->_getFirst_indices(); x; x = cx->_getNext_indices()) {
            EdgeKey index{nodeOf(rootOf(dbdOfIndex((*x)->_getFirst_targetDBDindex()))), nodeOf(s), "xdfld"};
            expected.insert(index);
            // Labelled with the XDFLD and, on a line of their own, its search fields.
            std::string search = (*(*x)->_getFirst_search())->_get_strFieldName();
            EXPECT_EQ(dot.edgeLabels[index], "XDFLD " + std::string((*x)->_get_xdfldName()) + "\nSRCH=" + search);
            DSSegmentComplex* source = (*x)->_getFirst_indexSource();
            if (source && source->impl() != s->impl()) expected.insert({nodeOf(s), nodeOf(source), "indexsource"});
        }
    }
    auto* hidam = static_cast<_DSDBDhidam*>(hosp->_getFirst_dliAccess()->impl());
    expected.insert(
        {nodeOf(rootOf(dbdOfIndex(hidam->_getFirst_primaryIndex()))), nodeOf(rootOf(hosp)), "primaryindex"});
    EXPECT_EQ(dot.edges, expected);
    // The sample has one of each tie; the walk above found them all.
    for (const char* kind : {"lchild", "pair", "xdfld", "primaryindex", "source"}) {
        int n = 0;
        for (const EdgeKey& e : expected) n += std::get<2>(e) == kind;
        EXPECT_GE(n, 1) << kind;
    }
    EXPECT_NE(dot.nodes.at("HOSPDBD.HOSPITAL").label.find("key HOSPCODE (U)"), std::string::npos);
    EXPECT_NE(dot.nodes.at("HOSPDBD.PATIENT").label.find("120 bytes"), std::string::npos);
}

TEST_F(SamplePicture, PsbShowsEachPcbOverItsDbdWithTheSensitiveSegmentsMarked) {
    Dot dot = parse(krdiagram::writeDot({m.psb.impl()}));
    std::multiset<EdgeKey> expected;
    std::size_t nodes = 0;
    int number = 0;
    for (DSPCB* pcb = m.psb->_getFirst_listPCBs(); pcb; pcb = m.psb->_getNext_listPCBs()) {
        std::string pcbNode = "HOSPPSB/" + std::to_string(++number);
        ASSERT_TRUE(dot.nodes.count(pcbNode)) << pcbNode;
        EXPECT_EQ(dot.nodes.at(pcbNode).cls, "pcb");
        ++nodes;
        DSPCBtype* type = (*pcb)->_getFirst_typeOfPCB();
        if (!(*type)->isKindOf("DSPCBdb")) {
            EXPECT_NE(dot.nodes.at(pcbNode).label.find("TP PCB"), std::string::npos);
            continue;
        }
        auto* db = static_cast<_DSPCBdb*>(type->impl());
        EXPECT_NE(dot.nodes.at(pcbNode).label.find(std::string("PROCOPT=") + db->_get_procoptPCB()), std::string::npos);
        _DSDBD* base = db->_getFirst_baseDBD()->operator->();
        // A SENSEG stands for the segment it maps to, or (mapping none) the one of its name.
        std::map<std::string, _DSSenSegment*> sensitive;
        for (DSSenSegment* s = db->_getFirst_senseg(); s; s = db->_getNext_senseg()) {
            DSSegment* target = (*s)->_getFirst_targetSegment();
            sensitive[target ? name(target) : std::string((*s)->_get_strSensegName())] = s->operator->();
        }
        for (DSSegment* s : segmentsOf(base)) {
            std::string id = pcbNode + "/" + nodeOf(s);
            ASSERT_TRUE(dot.nodes.count(id)) << id;
            ++nodes;
            bool isSensitive = sensitive.count(name(s)) > 0;
            EXPECT_EQ(dot.nodes.at(id).cls, isSensitive ? "sensitive" : "insensitive") << id;
            if (isSensitive && sensitive[name(s)]->_get_procoptSENSEG()) {
                EXPECT_NE(dot.nodes.at(id).label.find(sensitive[name(s)]->_get_procoptSENSEG()), std::string::npos);
            }
            DSSegment* p = (*s)->_getFirst_physicalParent();
            expected.insert({p ? pcbNode + "/" + nodeOf(p) : pcbNode, id, p ? "parent" : "pcbroot"});
        }
        EXPECT_FALSE(sensitive.empty());
    }
    EXPECT_EQ(number, 3);
    EXPECT_EQ(dot.nodes.size(), nodes);
    EXPECT_EQ(dot.edges, expected);
    // The SENFLD and the processing sequence are shown where they belong.
    EXPECT_NE(dot.nodes.at("HOSPPSB/1/HOSPDBD.PATIENT").label.find("SENFLD PATNAME"), std::string::npos);
    EXPECT_NE(dot.nodes.at("HOSPPSB/2").label.find("PROCSEQ=NAMEIDX"), std::string::npos);
    EXPECT_NE(dot.nodes.at("HOSPPSB/3").label.find("to PRINTER1, WARDTERM"), std::string::npos);
}

TEST_F(SamplePicture, SeveralNamesJoinEachPcbToTheDbdsItUses) {
    Dot dot = parse(krdiagram::writeDot({m.psb.impl(), m.hdam.impl()}));
    // The PSB's DBD is drawn beside it, with the DBDs tied to it, and the named HDAM DBD.
    for (const char* n : {"HOSPDBD.HOSPITAL", "NAMEIDX.NAMEIDXS", "PARTDBD.PARTROOT", "HOSPPSB/1/HOSPDBD.WARD"})
        EXPECT_TRUE(dot.nodes.count(n)) << n;
    EXPECT_EQ(dot.edges.count({"HOSPPSB/1", "HOSPDBD.HOSPITAL", "dbd"}), 1u);
    EXPECT_EQ(dot.edges.count({"HOSPPSB/2", "HOSPDBD.HOSPITAL", "dbd"}), 1u);
    EXPECT_EQ(dot.edges.count({"HOSPPSB/2", "NAMEIDX.NAMEIDXS", "procseq"}), 1u);
    // A name given twice is drawn once.
    EXPECT_EQ(krdiagram::writeDot({m.psb.impl(), m.hdam.impl(), m.psb.impl()}),
              krdiagram::writeDot({m.psb.impl(), m.hdam.impl()}));
}

TEST_F(SamplePicture, EveryPictureIsRenderedByDot) {
    for (const std::vector<_ADObject*>& subjects : std::vector<std::vector<_ADObject*>>{
             {m.hospital.impl()}, {m.psb.impl()}, {m.hospIndex.impl(), m.psb.impl(), m.dedb.impl(), m.msdb.impl()}}) {
        krdiagram::Rendering r = krdiagram::renderWithDot(krdiagram::writeDot(subjects), "svg");
        ASSERT_EQ(r.outcome, krdiagram::Rendering::rendered) << r.reason;
        EXPECT_NE(r.output.find("<svg"), std::string::npos);
        EXPECT_NE(r.output.find("</svg>"), std::string::npos);
    }
}

// Every DBD and PSB of the hand-written decks (HISAM, HDAM, DEDB, MSDB, GSAM,
// index and logical DBDs; DB, TP and GSAM PCBs): its own segments or PCBs each
// drawn once, and dot takes the picture.
TEST(DeckPictures, DrawEveryDefinitionOfTheDecksAndDotTakesThem) {
    std::vector<std::string> paths;
    for (const auto& e : std::filesystem::directory_iterator(KRMWTARN_DECKS_DIR)) paths.push_back(e.path().string());
    krsource::LoadResult r = krsource::loadDeckFiles(paths);
    ASSERT_TRUE(r.ok());
    std::vector<_ADObject*> all;
    for (const DSDBD& d : r.dbds) {
        all.push_back(d.impl());
        Dot dot = parse(krdiagram::writeDot({d.impl()}));
        EXPECT_EQ(dot.repeatedNodes, 0);
        for (DSSegment* s : segmentsOf(d.operator->())) EXPECT_EQ(dot.nodes.count(nodeOf(s)), 1u) << nodeOf(s);
    }
    int gsam = 0, tp = 0;
    for (const DSPSB& p : r.psbs) {
        all.push_back(p.impl());
        std::string text = krdiagram::writeDot({p.impl()});
        Dot dot = parse(text);
        int number = 0;
        for (DSPCB* pcb = p->_getFirst_listPCBs(); pcb; pcb = p->_getNext_listPCBs()) {
            std::string id = std::string(p->_get_strPSBName()) + "/" + std::to_string(++number);
            ASSERT_EQ(dot.nodes.count(id), 1u) << id;
            gsam += dot.nodes.at(id).label.find("GSAM PCB") != std::string::npos;
            tp += dot.nodes.at(id).label.find("TP PCB") != std::string::npos;
        }
        krdiagram::Rendering picture = krdiagram::renderWithDot(text, "svg");
        EXPECT_EQ(picture.outcome, krdiagram::Rendering::rendered) << picture.reason;
    }
    EXPECT_GE(gsam, 1);
    EXPECT_GE(tp, 1);
    // All of them in one picture.
    krdiagram::Rendering picture = krdiagram::renderWithDot(krdiagram::writeDot(all), "svg");
    EXPECT_EQ(picture.outcome, krdiagram::Rendering::rendered) << picture.reason;
    DSRegistrar::releaseAll();
}

// A SENSEG that matches no segment of its PCB's DBD is drawn on its own,
// under its parent SENSEG, not lost and not put on another segment.
TEST(PcbPicture, DrawsASensegWithoutItsSegmentUnderItsParent) {
    DSDBD dbd("V", "D", 1);
    dbd->_set_strDBDName("DB", omStore);
    DSSegment root("V", "R", 1);
    root->_set_strSegmentName("ROOT", omStore);
    DSContainsSegment(&dbd, &root, 1);
    DSPSB psb("V", "P", 1);
    psb->_set_strPSBName("PS", omStore);
    DSPCB pcb("V", "C", 1);
    DSIncludesPCB(&psb, &pcb, 1);
    DSPCBdb type("V", "T", 1);
    DSSpecifiedByType(&pcb, &type, 1);
    DSBasedOn(&type, &dbd, 1);
    DSSenSegment top("V", "S1", 1), lost("V", "S2", 1);
    top->_set_strSensegName("ROOT", omStore);
    lost->_set_strSensegName("GONE", omStore);
    DSHasSensitive(&type, &top, 1);
    DSHasSensitive(&type, &lost, 1);
    DSHasParentSenseg(&lost, &top, 1);
    Dot dot = parse(krdiagram::writeDot({psb.impl()}));
    EXPECT_EQ(dot.nodes.at("PS/1/DB.ROOT").cls, "sensitive");
    ASSERT_EQ(dot.nodes.count("PS/1/GONE"), 1u);
    EXPECT_EQ(dot.nodes.at("PS/1/GONE").cls, "senseg");
    EXPECT_EQ(dot.edges.count({"PS/1/DB.ROOT", "PS/1/GONE", "sensegparent"}), 1u);
    DSRegistrar::releaseAll();
}

// ---- the same model, the same text ----------------------------------------------

TEST(DiagramOutput, IsByteIdenticalForTheSameDefinitions) {
    std::string first, again, fromDecks;
    {
        sample::Model m = sample::build();
        first = krdiagram::writeDot({m.hospital.impl(), m.psb.impl()});
        again = krdiagram::writeDot({m.hospital.impl(), m.psb.impl()});
        // The sample written as decks and read back in another version.
        std::vector<krsource::Deck> decks;
        for (const DSDBD* d : {&m.hospital, &m.hospIndex, &m.nameIndex, &m.logical, &m.dedb, &m.hdam, &m.msdb})
            decks.push_back({std::string((*d)->_get_strDBDName()) + ".dbd", krsource::writeDbdDeck(d->operator->())});
        decks.push_back({"HOSPPSB.psb", krsource::writePsbDeck(m.psb.operator->())});
        krsource::LoadResult r = krsource::loadDecks(decks, "DECKS");
        ASSERT_TRUE(r.ok());
        _ADObject* hosp = nullptr;
        for (const DSDBD& d : r.dbds)
            if (std::string(d->_get_strDBDName()) == "HOSPDBD") hosp = d.impl();
        ASSERT_TRUE(hosp && !r.psbs.empty());
        fromDecks = krdiagram::writeDot({hosp, r.psbs.front().impl()});
    }
    DSRegistrar::releaseAll();
    sample::Model m = sample::build();
    EXPECT_EQ(first, again);
    EXPECT_EQ(first, krdiagram::writeDot({m.hospital.impl(), m.psb.impl()}));
    EXPECT_EQ(first, fromDecks);
    DSRegistrar::releaseAll();
}

// ---- names that DOT must escape ------------------------------------------------

class HostileNames : public ::testing::TestWithParam<std::string> {
protected:
    void TearDown() override { DSRegistrar::releaseAll(); }
};

TEST_P(HostileNames, AreQuotedSoThatDotReadsThemBackAsTheyAre) {
    const std::string n = GetParam();
    DSDBD dbd("V", "D", 1);
    dbd->_set_strDBDName(n.c_str(), omStore);
    DSSegment root("V", "R", 1), child("V", "C", 1);
    root->_set_strSegmentName(n.c_str(), omStore);
    child->_set_strSegmentName((n + "2").c_str(), omStore);
    DSContainsSegment(&dbd, &root, 1);
    DSContainsSegment(&dbd, &child, 1);
    DSParent(&child, &root, 1);
    std::string text = krdiagram::writeDot({dbd.impl()});
    Dot dot = parse(text);
    // Printable UTF-8 comes back as it is; anything else was replaced, but a node is still a node.
    bool printable = true;
    for (unsigned char c : n) printable = printable && c >= 0x20 && c < 0x7F;
    ASSERT_EQ(dot.nodes.size(), 2u);
    if (printable) {
        // Without a name an object is shown by its object ID.
        std::string dbdShown = n.empty() ? "D" : n, root = dbdShown + "." + (n.empty() ? "R" : n);
        EXPECT_TRUE(dot.nodes.count(root)) << text;
        EXPECT_EQ(dot.edges.count({root, dbdShown + "." + n + "2", "parent"}), 1u) << text;
    }
    krdiagram::Rendering r = krdiagram::renderWithDot(text, "svg");
    EXPECT_EQ(r.outcome, krdiagram::Rendering::rendered) << r.reason << "\n" << text;
}

INSTANTIATE_TEST_SUITE_P(Names, HostileNames,
                         ::testing::Values("A\"B", "back\\slash", "ends\\", "\\n", "x -> y", "{}[];=,", "<b>html</b>",
                                           "&amp;", "node", "subgraph", "cluster_x", "line\nbreak", "tab\there",
                                           std::string("nul\0in", 6), "\xff\xfe", "caf\xc3\xa9", "\xe2\x82",
                                           "\xed\xa0\x80", "", "  "));

// Two segments whose node names would be the same get names of their own.
TEST(DiagramNames, ThatWouldRepeatAreMadeDistinct) {
    DSDBD a("V", "A", 1), b("V", "B", 1);
    a->_set_strDBDName("X.Y", omStore);
    b->_set_strDBDName("X", omStore);
    DSSegment s1("V", "S1", 1), s2("V", "S2", 1);
    s1->_set_strSegmentName("Z", omStore);
    s2->_set_strSegmentName("Y.Z", omStore);
    DSContainsSegment(&a, &s1, 1);
    DSContainsSegment(&b, &s2, 1);
    Dot dot = parse(krdiagram::writeDot({a.impl(), b.impl()}));
    EXPECT_EQ(dot.repeatedNodes, 0);
    EXPECT_EQ(dot.nodes.count("X.Y.Z"), 1u);
    EXPECT_EQ(dot.nodes.count("X.Y.Z~2"), 1u);
    DSRegistrar::releaseAll();
}

// ---- running dot ------------------------------------------------------------------

TEST(Graphviz, ReportsWhatDotSaysAboutBadInput) {
    krdiagram::Rendering r = krdiagram::renderWithDot("digraph { a -> }\n", "svg");
    EXPECT_EQ(r.outcome, krdiagram::Rendering::dotFailed);
    EXPECT_NE(r.reason.find("syntax error"), std::string::npos) << r.reason;
    // dot gives up on a bad start long before reading megabytes: the tool neither hangs nor dies of SIGPIPE.
    r = krdiagram::renderWithDot("}}}\n" + std::string(8 << 20, ' '), "svg");
    EXPECT_EQ(r.outcome, krdiagram::Rendering::dotFailed);
    r = krdiagram::renderWithDot("digraph {}", "no-such-format");
    EXPECT_EQ(r.outcome, krdiagram::Rendering::dotFailed);
    EXPECT_NE(r.reason.find("no-such-format"), std::string::npos) << r.reason;
}

TEST(Graphviz, SaysWhenDotIsNotOnThePath) {
    std::string saved = std::getenv("PATH") ? std::getenv("PATH") : "";
    ::setenv("PATH", "/nonexistent-krmwtarn-path", 1);
    krdiagram::Rendering r = krdiagram::renderWithDot("digraph {}", "svg");
    ::setenv("PATH", saved.c_str(), 1);
    EXPECT_EQ(r.outcome, krdiagram::Rendering::dotMissing);
    EXPECT_EQ(r.reason, "No such file or directory");
}

}  // namespace

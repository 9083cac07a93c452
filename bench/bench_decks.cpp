// bench_decks.cpp — reading and writing generation decks against building the
// same model through the interface, in one run (`X` against `X_Baseline`):
// decks that describe the largest model (one DBD with 255 segments over 15
// levels and 1,000 fields; one PSB with 2,500 database PCBs, 30,000 SENSEGs and
// 10,000 SENFLDs). Reading includes resolving the PSB's names; the baseline
// makes the same objects by the same identities with the same names and links.
#include <benchmark/benchmark.h>
#include <krmwtarn/krmwtarn.h>

#include "source/DeckLoader.h"
#include "source/DeckWriter.h"

#include <algorithm>
#include <cstdio>
#include <string>
#include <vector>

namespace {

constexpr int kSegments = 255, kLevels = 15, kFields = 1000;
constexpr int kPCBs = 2500, kSensegs = 30000, kSenflds = 10000;
const char* const kVersion = "BENCH";

int parentOf(int i) { return i < kLevels ? i - 1 : i % (kLevels - 1); }
// SENSEG i belongs to PCB i % kPCBs and maps segment i % kSegments (distinct
// within a PCB); SENFLD i belongs to SENSEG 3i and names that segment's first field.
int senfldSenseg(int i) { return 3 * i; }

std::string name(char prefix, int i) { return prefix + std::to_string(i); }

std::vector<krsource::Deck> largestDecks() {
    std::vector<std::vector<std::string>> fieldsOf(kSegments);
    for (int f = 0; f < kFields; ++f) fieldsOf[f % kSegments].push_back(name('F', f));
    std::string text;
    auto add = [&](const std::string& op, const std::vector<std::string>& operands) {
        for (const std::string& c : krsource::formatStatement("", op, operands)) text += c + "\n";
    };
    add("DBD", {"NAME=BIGDBD", "ACCESS=HISAM"});
    for (int s = 0; s < kSegments; ++s) {
        std::vector<std::string> ops = {"NAME=" + name('S', s), "BYTES=100"};
        if (s > 0) ops.push_back("PARENT=" + name('S', parentOf(s)));
        add("SEGM", ops);
        for (const std::string& f : fieldsOf[s]) add("FIELD", {"NAME=" + f, "START=1", "BYTES=4"});
    }
    add("DBDGEN", {});
    krsource::Deck dbdDeck{"BIGDBD.dbd", text};
    text.clear();
    std::vector<std::vector<int>> sensegsOf(kPCBs);
    for (int i = 0; i < kSensegs; ++i) sensegsOf[i % kPCBs].push_back(i);
    std::vector<int> senfldOf(kSensegs, -1);
    for (int i = 0; i < kSenflds; ++i) senfldOf[senfldSenseg(i)] = i;
    for (int p = 0; p < kPCBs; ++p) {
        add("PCB", {"TYPE=DB", "DBDNAME=BIGDBD", "PROCOPT=G", "PCBNAME=" + name('P', p)});
        for (int i : sensegsOf[p]) {
            add("SENSEG", {"NAME=" + name('S', i % kSegments)});
            if (senfldOf[i] >= 0) add("SENFLD", {"NAME=" + name('F', i % kSegments), "START=1"});
        }
    }
    add("PSBGEN", {"PSBNAME=BIGPSB"});
    return {dbdDeck, {"BIGPSB.psb", text}};
}

template <class H>
H named(const std::string& id) {
    return H(kVersion, id.c_str(), 1);
}

// The same model through the interface, object by object as the loader makes it.
void buildThroughInterface() {
    auto dbd = named<DSDBD>("BIGDBD");
    dbd->_set_strDBDName("BIGDBD", omStore);
    dbd->_set_adName("BIGDBD", omStore);
    auto access = named<DSDBDaccess>("BIGDBD.ACCESS");
    access->_set_dliAccess("HISAM", omStore);
    DSDefinedByAccess(&dbd, &access, 1);
    std::vector<DSSegmentComplex> segments;
    segments.reserve(kSegments);
    for (int s = 0; s < kSegments; ++s) {
        std::string n = name('S', s);
        segments.push_back(named<DSSegmentComplex>("BIGDBD." + n));
        auto& seg = segments.back();
        seg->_set_strSegmentName(n.c_str(), omStore);
        seg->_set_maximumLength(100, omStore);
        seg->_set_minimumLength(100, omStore);
        DSSegment plain(seg.operator->());
        DSContainsSegment(&dbd, &plain, 1);
        if (s > 0) {
            DSSegment parent(segments[parentOf(s)].operator->());
            DSParent(&plain, &parent, 1);
        }
    }
    std::vector<DSField> fields;
    fields.reserve(kFields);
    for (int f = 0; f < kFields; ++f) {
        auto& seg = segments[f % kSegments];
        std::string n = name('F', f);
        fields.push_back(named<DSField>(std::string(seg->_get_strSegmentName()) + "." + n + "@" + seg->objID()));
        fields.back()->_set_strFieldName(n.c_str(), omStore);
        DSSegment plain(seg.operator->());
        DSHasField(&plain, &fields.back(), 1);
    }
    auto psb = named<DSPSB>("BIGPSB");
    psb->_set_strPSBName("BIGPSB", omStore);
    psb->_set_adName("BIGPSB", omStore);
    std::vector<DSPCBdb> types;
    types.reserve(kPCBs);
    for (int p = 0; p < kPCBs; ++p) {
        std::string n = name('P', p);
        auto pcb = named<DSPCB>("BIGPSB.PCB" + std::to_string(p + 1));
        pcb->_set_strPCBAccessName(n.c_str(), omStore);
        pcb->_set_adName(n.c_str(), omStore);
        DSIncludesPCB(&psb, &pcb, 1);
        types.push_back(named<DSPCBdb>(n + ".TYPE"));
        types.back()->_set_strPCBtype("DB", omStore);
        types.back()->_set_procoptPCB("G", omStore);
        DSSpecifiedByType(&pcb, &types.back(), 1);
        DSBasedOn(&types.back(), &dbd, 1);
    }
    std::vector<int> senfldOf(kSensegs, -1);
    for (int i = 0; i < kSenflds; ++i) senfldOf[senfldSenseg(i)] = i;
    for (int i = 0; i < kSensegs; ++i) {
        int p = i % kPCBs, s = i % kSegments;
        std::string seg = name('S', s);
        auto sense = named<DSSenSegment>(name('P', p) + "." + seg);
        sense->_set_strSensegName(seg.c_str(), omStore);
        DSHasSensitive(&types[p], &sense, 1);
        DSSegment target(segments[s].operator->());
        DSMapsTo(&sense, &target, 1);
        if (senfldOf[i] >= 0) {
            std::string f = name('F', s);
            auto senfld = named<DSSenField>(name('P', p) + "." + seg + "." + f);
            senfld->_set_startPosition(1, omStore);
            DSUsesSENFLD(&sense, &senfld, 1);
            DSUsedAsSENFLD(&senfld, &fields[s], 1);
        }
    }
}

void ReadDecks(benchmark::State& state) {
    std::vector<krsource::Deck> decks = largestDecks();
    for (auto _ : state) {
        krsource::LoadResult r = krsource::loadDecks(decks, kVersion);
        state.PauseTiming();
        if (!r.ok()) state.SkipWithError(r.diagnostics.front().text().c_str());
        r = krsource::LoadResult();
        DSRegistrar::releaseAll();
        state.ResumeTiming();
    }
    state.counters["cards"] = static_cast<double>(std::count(decks[0].bytes.begin(), decks[0].bytes.end(), '\n') +
                                                  std::count(decks[1].bytes.begin(), decks[1].bytes.end(), '\n'));
}
BENCHMARK(ReadDecks)->Unit(benchmark::kMillisecond);

void ReadDecks_Baseline(benchmark::State& state) {
    for (auto _ : state) {
        buildThroughInterface();
        state.PauseTiming();
        DSRegistrar::releaseAll();
        state.ResumeTiming();
    }
}
BENCHMARK(ReadDecks_Baseline)->Unit(benchmark::kMillisecond);

void WriteDecks(benchmark::State& state) {
    krsource::LoadResult r = krsource::loadDecks(largestDecks(), kVersion);
    std::size_t bytes = 0;
    for (auto _ : state) {
        std::string dbd = krsource::writeDbdDeck(r.dbds.at(0).operator->());
        std::string psb = krsource::writePsbDeck(r.psbs.at(0).operator->());
        bytes = dbd.size() + psb.size();
        benchmark::DoNotOptimize(bytes);
    }
    state.counters["bytes"] = static_cast<double>(bytes);
    r = krsource::LoadResult();
    DSRegistrar::releaseAll();
}
BENCHMARK(WriteDecks)->Unit(benchmark::kMillisecond);

// Writing is measured against the same interface build as reading.
void WriteDecks_Baseline(benchmark::State& state) { ReadDecks_Baseline(state); }
BENCHMARK(WriteDecks_Baseline)->Unit(benchmark::kMillisecond);

}  // namespace

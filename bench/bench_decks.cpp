// bench_decks.cpp — reading and writing generation decks against building the
// same model through the interface, in one run (`X` against `X_Baseline`):
// decks that describe the largest model (one DBD with 255 segments over 15
// levels and 1,000 fields; one PSB with 2,500 database PCBs, 30,000 SENSEGs and
// 10,000 SENFLDs). Reading includes resolving the PSB's names; the baseline
// makes the same objects by the same identities with the same names and links.
#include <benchmark/benchmark.h>
#include <krmwtarn/krmwtarn.h>

#include <krmwtarn/source/DeckLoader.h>
#include <krmwtarn/source/DeckWriter.h>
#include "bench/LargestDecks.h"

#include <algorithm>
#include <cstdio>
#include <string>
#include <vector>

namespace {
using namespace largest;

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
        // START=1,BYTES=4: the data item and its type definition.
        auto item = named<DSDataItem>(fields.back()->objID());
        auto def = named<DSSimpleTypeDef>(fields.back()->objID());
        item->_set_offset(1, omStore);
        def->_set_length(4, omStore);
        def->_set_dataType("C", omStore);
        DSMakesUseOf(&fields.back(), &item, 1);
        DSLinkDataItm2DataDef(&item, &def, 1);
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
        types.push_back(named<DSPCBdb>("BIGPSB." + n + ".TYPE"));
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
        auto sense = named<DSSenSegment>("BIGPSB." + name('P', p) + "." + seg);
        sense->_set_strSensegName(seg.c_str(), omStore);
        DSHasSensitive(&types[p], &sense, 1);
        DSSegment target(segments[s].operator->());
        DSMapsTo(&sense, &target, 1);
        if (senfldOf[i] >= 0) {
            std::string f = name('F', s);
            auto senfld = named<DSSenField>("BIGPSB." + name('P', p) + "." + seg + "." + f);
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

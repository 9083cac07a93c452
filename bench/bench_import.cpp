// bench_import.cpp — the cost of importing documents against the size of one
// role in them: a file with one DBD whose 40,000 segments all stand in its
// `segments` role (`ImportOneLargeRole`), against a file with the same 40,000
// segments in eight DBDs of 5,000 (`ImportOneLargeRole_Baseline`). The work
// and the amount of data are the same but for the size of the role, so the
// ratio is near 1 when import time grows linearly with a role, and near 8 when
// it grows with its square. `ImportSegments` gives the time per segment of a
// DBD at 5,000, 20,000 and 40,000 segments.
#include <krmwtarn/json/ViewDocument.h>

#include <benchmark/benchmark.h>
#include <krmwtarn/krmwtarn.h>

#include <string>

namespace {
using nlohmann::json;

// A DBD document of the populate view with `segments` root segments, as the
// export writes it.
json dbdDocument(const std::string& name, int segments) {
    json items = json::array();
    for (int i = 0; i < segments; ++i) {
        std::string s = "S" + std::to_string(i);
        json segment = {{"@class", "DSSegmentComplex"},
                        {"@id", name + "." + s},
                        {"@version", "V"},
                        {"deleteFlag", ""},
                        {"exitFlag", 0},
                        {"frequency", "10"},
                        {"insertFlag", ""},
                        {"maximumLength", 40},
                        {"minimumLength", 40},
                        {"replaceFlag", ""},
                        {"rules", nullptr},
                        {"segmPointer", nullptr},
                        {"strSegmentName", s}};
        items.push_back({{"@class", "DSContainsSegment"},
                         {"@id", name + ".L" + std::to_string(i)},
                         {"@version", "V"},
                         {"adTarget", std::move(segment)}});
    }
    return {{"view", "CORVIAPOPULATEDBD"},
            {"root",
             {{"@class", "DSDBD"},
              {"@id", name},
              {"@version", "V"},
              {"rootDBDname", name},
              {"segments", std::move(items)},
              {"versionString", "1.0"}}}};
}

// A file of `dbds` such documents.
json file(int dbds, int segments) {
    json docs = json::array();
    for (int d = 0; d < dbds; ++d) docs.push_back(dbdDocument("DBD" + std::to_string(d), segments));
    return {{"documents", std::move(docs)}};
}

void importAll(benchmark::State& state, const json& file) {
    DLLView_init::initAll();
    for (auto _ : state) {
        try {
            benchmark::DoNotOptimize(viewdoc::importDocuments(file));
        } catch (const viewdoc::DocumentError& e) {
            state.SkipWithError(e.what());
            break;
        }
        state.PauseTiming();
        DSRegistrar::releaseAll();
        state.ResumeTiming();
    }
}

void BM_ImportOneLargeRole(benchmark::State& state) {
    static const json docs = file(1, 40000);
    importAll(state, docs);
    state.SetItemsProcessed(state.iterations() * 40000);
}
BENCHMARK(BM_ImportOneLargeRole)->Unit(benchmark::kMillisecond);

void BM_ImportOneLargeRole_Baseline(benchmark::State& state) {
    static const json docs = file(8, 5000);
    importAll(state, docs);
    state.SetItemsProcessed(state.iterations() * 40000);
}
BENCHMARK(BM_ImportOneLargeRole_Baseline)->Unit(benchmark::kMillisecond);

void BM_ImportSegments(benchmark::State& state) {
    const int segments = static_cast<int>(state.range(0));
    const json docs = file(1, segments);
    importAll(state, docs);
    state.counters["per_segment"] = benchmark::Counter(
        static_cast<double>(segments), benchmark::Counter::kIsIterationInvariantRate | benchmark::Counter::kInvert);
}
BENCHMARK(BM_ImportSegments)->Arg(5000)->Arg(20000)->Arg(40000)->Unit(benchmark::kMillisecond);
}  // namespace

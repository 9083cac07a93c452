// bench_views.cpp — building the view trees: all 38 of this library's trees,
// each into a fresh view type (released outside the timing), beside a baseline
// that builds only the smallest tree, so the ratio shows the per-tree cost.
#include <krmwtarn/platform/views/DLLView.h>
#include <krmwtarn/views/EwswtarnViews.h>

#include <benchmark/benchmark.h>

#include <memory>
#include <vector>

namespace {
void BM_BuildAllViewTrees(benchmark::State& state) {
    DLLView_init::initAll();
    std::vector<std::unique_ptr<DLLViewType>> types;
    types.reserve(ewswtarnViewCount);
    for (auto _ : state) {
        for (const EwswtarnView& v : ewswtarnViews) {
            types.emplace_back(new DLLViewType(v.name, "", v.build));
            benchmark::DoNotOptimize(types.back()->_get_adViewList());
        }
        state.PauseTiming();
        types.clear();
        state.ResumeTiming();
    }
    state.SetItemsProcessed(state.iterations() * ewswtarnViewCount);
}
BENCHMARK(BM_BuildAllViewTrees)->Unit(benchmark::kMicrosecond);

void BM_BuildSmallestViewTree(benchmark::State& state) {
    DLLView_init::initAll();
    for (auto _ : state) {
        DLLViewType type("CVQSEGMENTTEXT", "", _init_CVQSEGMENTTEXT);
        benchmark::DoNotOptimize(type._get_adViewList());
    }
}
BENCHMARK(BM_BuildSmallestViewTree)->Unit(benchmark::kMicrosecond);
}  // namespace

// bench_check.cpp — checking the largest DBD and PSB (255 segments, 1,000
// fields; 2,500 PCBs, 30,000 SENSEGs, 10,000 SENFLDs) against loading them
// from their decks, in one run (`CheckDecks` against `CheckDecks_Baseline`):
// checking should cost at most what loading does.
#include <benchmark/benchmark.h>
#include <krmwtarn/krmwtarn.h>

#include <krmwtarn/check/Check.h>
#include "bench/LargestDecks.h"

namespace {

void CheckDecks(benchmark::State& state) {
    krsource::LoadResult r = krsource::loadDecks(largest::largestDecks(), largest::kVersion);
    if (!r.ok()) state.SkipWithError(r.diagnostics.front().text().c_str());
    std::size_t findings = 0;
    for (auto _ : state) {
        std::vector<krcheck::Finding> found = krcheck::check(r);
        findings = found.size();
        benchmark::DoNotOptimize(found);
    }
    state.counters["findings"] = static_cast<double>(findings);
    r = krsource::LoadResult();
    DSRegistrar::releaseAll();
}
BENCHMARK(CheckDecks)->Unit(benchmark::kMillisecond);

// Loading the same decks, names resolved.
void CheckDecks_Baseline(benchmark::State& state) {
    std::vector<krsource::Deck> decks = largest::largestDecks();
    for (auto _ : state) {
        krsource::LoadResult r = krsource::loadDecks(decks, largest::kVersion);
        state.PauseTiming();
        if (!r.ok()) state.SkipWithError(r.diagnostics.front().text().c_str());
        r = krsource::LoadResult();
        DSRegistrar::releaseAll();
        state.ResumeTiming();
    }
}
BENCHMARK(CheckDecks_Baseline)->Unit(benchmark::kMillisecond);

}  // namespace

// TimedStores.h — the repository benchmarks' common loops. A store: per
// iteration, `prepare` makes a fresh repository and the model to store
// (untimed), then storing every unit into the repository at `location` is
// timed, and the repository is closed and the model released (untimed). A
// retrieve: opening the repository and retrieving every unit is timed; that
// `objects` objects and links came back is checked and they are released
// (untimed). Both report the largest model's counts and objects per second.
#pragma once

#include <krmwtarn/platform/repository/DSRegistrar.h>
#include <krmwtarn/store/Repository.h>

#include <benchmark/benchmark.h>

#include <cstddef>
#include <string>

// The largest model (tests/store/LargestModel.h): its objects and links.
constexpr long kObjects = 46257, kLinks = 89009;

inline void counters(benchmark::State& state) {
    state.counters["objects"] = kObjects;
    state.counters["links"] = kLinks;
    state.counters["objects_per_s"] =
        benchmark::Counter(static_cast<double>(kObjects + kLinks) * state.iterations(), benchmark::Counter::kIsRate);
}

template <class Prepare>
void timedStores(benchmark::State& state, const std::string& location, Prepare&& prepare) {
    for (auto _ : state) {
        state.PauseTiming();
        prepare();
        auto repository = krstore::Repository::open(location);
        state.ResumeTiming();
        repository->storeAll();
        state.PauseTiming();
        repository.reset();
        DSRegistrar::releaseAll();
        state.ResumeTiming();
    }
}

inline void timedRetrieves(benchmark::State& state, const std::string& location, std::size_t objects) {
    for (auto _ : state) {
        auto repository = krstore::Repository::open(location);
        repository->retrieveAll();
        state.PauseTiming();
        if (DSRegistrar::count() != objects) state.SkipWithError("not every object came back");
        repository.reset();
        DSRegistrar::releaseAll();
        state.ResumeTiming();
    }
}

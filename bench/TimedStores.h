// TimedStores.h — the store benchmarks' common loop: per iteration, `prepare`
// makes a fresh repository and the model to store (untimed), then storing
// every unit into the repository at `location` is timed, and the repository
// is closed and the model released (untimed).
#pragma once

#include <krmwtarn/platform/repository/DSRegistrar.h>
#include <krmwtarn/store/Repository.h>

#include <benchmark/benchmark.h>

#include <string>

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

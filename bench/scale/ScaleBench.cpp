// ScaleBench.cpp — cost per object as a repository grows from thousands to a
// million objects. The repository holds `copies` copies, each in its own
// version, of a realistic pair of definitions: the largest DBD (255 segments
// over 15 levels, 1,000 fields) and a PSB of 25 database PCBs over it (12
// SENSEGs each, a SENFLD on every third). Each benchmark reports its time per
// object (objects and links, as the registry counts them) at each size, so one
// run shows whether the cost per object stays flat:
//   build, lookup by identity, view expansion (CORVIAPOPULATEDBD and CORVIAPSB
//   over every copy), JSON export of every copy, store and retrieve of the
//   whole repository in an embedded file, and release.
// scripts/scale.sh runs it and draws the curves.
#include <krmwtarn/store/Repository.h>
#include "bench/TimedStores.h"
#include "tests/store/LargestModel.h"
#include <krmwtarn/json/ViewDocument.h>

#include <benchmark/benchmark.h>
#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <algorithm>
#include <random>
#include <string>
#include <vector>

namespace {

constexpr int kPcbsPerCopy = 25;

std::string versionOf(int copy) { return "S" + std::to_string(copy); }

// Builds the copies; answers the number of objects and links made.
double buildCopies(int copies) {
    for (int c = 0; c < copies; ++c) storetest::buildLargest(versionOf(c).c_str(), kPcbsPerCopy);
    return static_cast<double>(DSRegistrar::count());
}

// per_object: the time of an iteration over the objects it covered (a rate of
// objects per second, inverted: seconds, shown with its unit prefix).
void perObject(benchmark::State& state, double objects) {
    state.counters["objects"] = objects;
    state.counters["per_object"] = benchmark::Counter(objects * static_cast<double>(state.iterations()),
                                                      benchmark::Counter::kIsRate | benchmark::Counter::kInvert);
}

void Build(benchmark::State& state) {
    double objects = 0;
    for (auto _ : state) {
        objects = buildCopies(static_cast<int>(state.range(0)));
        state.PauseTiming();
        DSRegistrar::releaseAll();
        state.ResumeTiming();
    }
    perObject(state, objects);
}

void Release(benchmark::State& state) {
    double objects = 0;
    for (auto _ : state) {
        state.PauseTiming();
        objects = buildCopies(static_cast<int>(state.range(0)));
        state.ResumeTiming();
        DSRegistrar::releaseAll();
    }
    perObject(state, objects);
}

// Identities of every registered object, looked up in a random order.
void Lookup(benchmark::State& state) {
    double objects = buildCopies(static_cast<int>(state.range(0)));
    struct Key {
        std::string cls, id, version;
    };
    std::vector<Key> keys;
    keys.reserve(static_cast<std::size_t>(objects));
    DSRegistrar::forEach([&](_ADObject* o) { keys.push_back({o->whoAmI(), o->objID(), o->context()}); });
    std::shuffle(keys.begin(), keys.end(), std::mt19937(42));
    for (auto _ : state) {
        for (const Key& k : keys)
            benchmark::DoNotOptimize(DSRegistrar::findObj(k.cls.c_str(), k.id.c_str(), k.version.c_str()));
    }
    keys.clear();
    DSRegistrar::releaseAll();
    perObject(state, objects);
}

// Runs f(view, dbd, psb) over every copy's roots.
template <class F>
void overCopies(int copies, F&& f) {
    DLLViewType* dbdView = DLLViewType::find("CORVIAPOPULATEDBD");
    DLLViewType* psbView = DLLViewType::find("CORVIAPSB");
    for (int c = 0; c < copies; ++c) {
        std::string v = versionOf(c);
        f(dbdView, DSRegistrar::findObj("DSDBD", "BIGDBD", v.c_str()));
        f(psbView, DSRegistrar::findObj("DSPSB", "BIGPSB", v.c_str()));
    }
}

void Expand(benchmark::State& state) {
    DLLView_init::initAll();
    int copies = static_cast<int>(state.range(0));
    double objects = buildCopies(copies);
    for (auto _ : state)
        overCopies(copies, [](DLLViewType* view, _ADObject* root) {
            DLLViewNode node = DLLView_expand(view, root);
            benchmark::DoNotOptimize(node.entries.data());
        });
    DSRegistrar::releaseAll();
    perObject(state, objects);
}

void ExportJson(benchmark::State& state) {
    DLLView_init::initAll();
    int copies = static_cast<int>(state.range(0));
    double objects = buildCopies(copies);
    std::size_t bytes = 0;
    for (auto _ : state) {
        bytes = 0;
        overCopies(copies,
                   [&](DLLViewType* view, _ADObject* root) { bytes += viewdoc::exportView(view, root).dump().size(); });
    }
    state.counters["bytes"] = static_cast<double>(bytes);
    DSRegistrar::releaseAll();
    perObject(state, objects);
}

std::string scratch() {
    const char* dir = std::getenv("TMPDIR");
    return std::string(dir ? dir : "/tmp") + "/krmwtarn_scale_" + std::to_string(getpid()) + ".db";
}

void removeFile(const std::string& path) {
    std::remove(path.c_str());
    std::remove((path + "-journal").c_str());
    std::remove((path + "-wal").c_str());
}

void Store(benchmark::State& state) {
    std::string path = scratch();
    double objects = 0;
    timedStores(state, path, [&] {
        removeFile(path);
        objects = buildCopies(static_cast<int>(state.range(0)));
    });
    removeFile(path);
    perObject(state, objects);
}

void Retrieve(benchmark::State& state) {
    std::string path = scratch();
    removeFile(path);
    double objects = buildCopies(static_cast<int>(state.range(0)));
    krstore::Repository::open(path)->storeAll();
    DSRegistrar::releaseAll();
    timedRetrieves(state, path, static_cast<std::size_t>(objects));
    removeFile(path);
    perObject(state, objects);
}

// The sizes, in copies of about 4,100 objects and links each: from about 10^3.6
// to nearly 10^6. The small sizes run more iterations, so that each size takes
// comparable time.
const bool registered = [] {
    struct Named {
        const char* name;
        void (*run)(benchmark::State&);
    };
    for (Named b :
         {Named{"Build", Build}, Named{"Lookup", Lookup}, Named{"Expand", Expand}, Named{"ExportJson", ExportJson},
          Named{"Store", Store}, Named{"Retrieve", Retrieve}, Named{"Release", Release}})
        for (int copies : {1, 10, 100, 240})
            benchmark::RegisterBenchmark(b.name, b.run)
                ->Arg(copies)
                ->Iterations(copies == 1    ? 20
                             : copies == 10 ? 4
                                            : 1)
                ->Unit(benchmark::kMillisecond)
                ->UseRealTime();
    return true;
}();

}  // namespace

// LongRun.cpp — the long randomized run: `random_long [--seed S] [--operations N]
// [--runs R]` runs R runs of N operations each, from seed S, S+1, ... (a seed
// from the machine when none is given). A failing run prints its seed and the
// command that replays it, and the program answers 1.
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <random>
#include <string>

#include "RandomModel.h"

int main(int argc, char** argv) {
    std::uint64_t seed = std::random_device{}();
    std::uint64_t operations = 1000000, runs = 1;
    for (int i = 1; i + 1 < argc; i += 2) {
        std::uint64_t v = std::strtoull(argv[i + 1], nullptr, 10);
        if (!std::strcmp(argv[i], "--seed"))
            seed = v;
        else if (!std::strcmp(argv[i], "--operations"))
            operations = v;
        else if (!std::strcmp(argv[i], "--runs"))
            runs = v;
        else {
            std::fprintf(stderr, "usage: %s [--seed S] [--operations N] [--runs R]\n", argv[0]);
            return 2;
        }
    }
    krrandom::Tally total;
    auto start = std::chrono::steady_clock::now();
    for (std::uint64_t r = 0; r < runs; ++r, ++seed) {
        std::printf("seed %llu: %llu operations\n", static_cast<unsigned long long>(seed),
                    static_cast<unsigned long long>(operations));
        std::fflush(stdout);
        std::string failure = krrandom::runSeeded(seed, operations, &total);
        if (!failure.empty()) {
            std::printf("FAILED %s\n", failure.c_str());
            return 1;
        }
    }
    double seconds = std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
    std::printf("%s\nno fault in %.1f s\n", total.summary().c_str(), seconds);
    return 0;
}

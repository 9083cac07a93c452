// Fuzz.cpp — libFuzzer entry over the randomized operations: the input's bytes
// make the choices, every operation is checked as in the seeded runs, and a
// broken invariant aborts with its description.
#include <cstdio>
#include <cstdlib>

#include "RandomModel.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    krrandom::ByteChoices choices(data, size);
    {
        krrandom::Driver driver(choices);
        for (int i = 0; i < 4096 && !choices.exhausted() && driver.step(); ++i) {
        }
        driver.finish();
        if (!driver.failure().empty()) {
            std::fprintf(stderr, "%s\n", driver.failure().c_str());
            std::abort();
        }
    }
    return 0;
}

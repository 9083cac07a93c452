// DeckFuzz.cpp — libFuzzer entry over the deck reader and loader: any bytes
// are a DBD deck and a PSB deck; a failing check aborts.
#include "DeckFuzzCheck.h"

#include <cstdint>
#include <cstdlib>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (!deckfuzz::check(std::string_view(reinterpret_cast<const char*>(data), size))) std::abort();
    return 0;
}

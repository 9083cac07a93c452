// ImportFuzz.cpp — libFuzzer entry over the import. The first byte chooses
// between two kinds of input: the rest as the text of a file of documents, or
// as the choices that mutate the sample's documents (in an order they pick,
// some of them imported beforehand). Every input is checked as in the seeded
// runs; a broken rule aborts with its description.
#include "ImportCheck.h"

#include <cstdio>
#include <cstdlib>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size == 0) return 0;
    DLLView_init::initAll();
    importcheck::sampleDocuments();  // made once, in an empty repository
    nlohmann::json file;
    if (data[0] & 1) {
        file = nlohmann::json::parse(data + 1, data + size, nullptr, false);
        if (file.is_discarded()) return 0;
    } else {
        importcheck::ByteChoices choices(data + 1, size - 1);
        std::vector<nlohmann::json> docs = importcheck::shuffledSample(choices);
        std::size_t before = choices.below(static_cast<std::uint32_t>(docs.size()));
        viewdoc::importDocuments(importcheck::file({docs.begin(), docs.begin() + before}));
        std::vector<nlohmann::json> rest(docs.begin() + before, docs.end());
        if (choices.below(4) == 0) rest.push_back(importcheck::viewDocuments()[choices.below(38)]);
        file = importcheck::file(std::move(rest));
        for (std::uint32_t n = 1 + choices.below(4); n > 0 && !choices.exhausted(); --n) importcheck::mutate(file, choices);
    }
    std::string failure = importcheck::importAndCheck(file);
    DSRegistrar::releaseAll();
    if (!failure.empty()) {
        std::fprintf(stderr, "%s\n", failure.c_str());
        std::abort();
    }
    return 0;
}

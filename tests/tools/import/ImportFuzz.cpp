// ImportFuzz.cpp — libFuzzer entry over the import. The first byte chooses
// between two kinds of input: the rest as the text of a file of documents, or
// as the choices that mutate views' documents or the sample's documents (in an
// order they pick, some of them imported beforehand). Every input is checked
// as in the seeded runs; a broken rule aborts with its description.
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
        std::vector<nlohmann::json> docs;
        if (choices.below(2)) {
            // One or two views' documents, the quicker kind.
            const auto& views = importcheck::viewDocuments();
            for (std::uint32_t n = 1 + choices.below(2); n > 0; --n)
                docs.push_back(views[choices.below(static_cast<std::uint32_t>(views.size()))]);
        } else {
            docs = importcheck::shuffledSample(choices);
            std::size_t before = choices.below(static_cast<std::uint32_t>(docs.size()));
            viewdoc::importDocuments(importcheck::file({docs.begin(), docs.begin() + before}));
            docs.erase(docs.begin(), docs.begin() + before);
        }
        file = importcheck::file(std::move(docs));
        for (std::uint32_t n = 1 + choices.below(4); n > 0 && !choices.exhausted(); --n)
            importcheck::mutate(file, choices);
    }
    std::string failure = importcheck::importAndCheck(file);
    DSRegistrar::releaseAll();
    if (!failure.empty()) {
        std::fprintf(stderr, "%s\n", failure.c_str());
        std::abort();
    }
    return 0;
}

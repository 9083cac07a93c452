// ImportCheck.h — what the import tests and the import fuzz entry share: the
// sample's documents, a snapshot of the whole repository, the check of one
// import (either every document comes back unchanged, or the import is refused
// at a place in the file and the repository is exactly as before), and the
// mutations that turn exported documents into hostile ones.
#pragma once

#include <krmwtarn/json/ViewDocument.h>

#include <krmwtarn/krmwtarn.h>

#include <cstddef>
#include <cstdint>
#include <random>
#include <string>
#include <vector>

namespace importcheck {

// Every registered object, one line each, sorted: identity, use count, status,
// every attribute value with its change bit, every role's links in order, a
// link's ends with their change bits.
std::vector<std::string> snapshot();

// The sample's documents (every DBD by CORVIAPOPULATEDBD, the PSB by
// CORVIAPSB) and each view's document over the sample's default root, made
// once in an empty repository that is released again.
const std::vector<nlohmann::json>& sampleDocuments();
const std::vector<nlohmann::json>& viewDocuments();

// A file of documents: {"documents": [...]}.
nlohmann::json file(std::vector<nlohmann::json> documents);

// Imports `file` into the repository as it stands and checks the outcome.
// Answers an empty text, or what went wrong: an accepted file whose documents
// do not come back unchanged, a refusal whose place is not a JSON pointer into
// the file (its parent must exist there), or a refusal that changed the
// repository. `imported` tells which way it went.
std::string importAndCheck(const nlohmann::json& file, bool* imported = nullptr);

// Where a mutation takes its choices from: a seeded generator or fuzz bytes.
class Choices {
public:
    virtual ~Choices() = default;
    // A number below `bound` (0 when bound is 0).
    virtual std::uint32_t below(std::uint32_t bound) = 0;
    virtual bool exhausted() const { return false; }
};

class SeededChoices : public Choices {
public:
    explicit SeededChoices(std::uint32_t seed) : engine_(seed) {}
    std::uint32_t below(std::uint32_t bound) override;

private:
    std::mt19937 engine_;
};

class ByteChoices : public Choices {
public:
    ByteChoices(const std::uint8_t* data, std::size_t size) : data_(data), size_(size) {}
    std::uint32_t below(std::uint32_t bound) override;
    bool exhausted() const override { return at_ >= size_; }

private:
    const std::uint8_t* data_;
    std::size_t size_;
    std::size_t at_ = 0;
};

// One hostile change of `file`: swaps, copies or drops array elements, keys or
// documents; replaces identities, versions, classes, views and values with
// others from the file or with edge cases (NUL, the default ID, numbers out of
// range, keys that need escaping); moves objects to other places.
void mutate(nlohmann::json& file, Choices& choices);

// The sample documents in an order the choices pick.
std::vector<nlohmann::json> shuffledSample(Choices& choices);

}  // namespace importcheck

// Definitions.h — what the view commands (demo, expand, export, graph) work
// on: the built-in sample, the definitions read from generation decks
// (--decks DECK...), or every unit retrieved from a repository (--repo).
// Building, loading or retrieving happens in the constructor; the destructor
// releases the whole in-memory repository again.
#pragma once

#include <krmwtarn/krmwtarn.h>

#include <krmwtarn/sample/SampleModel.h>

#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace krstore {
class Repository;
}

namespace krmwtarn {

class Definitions {
public:
    // Decks win over the repository; neither: the sample. A deck load is all
    // or nothing and prints its diagnostics; a repository that cannot be read
    // prints why. Either failure leaves `ok()` false.
    Definitions(const std::vector<std::string>& decks, const std::string& repo);
    ~Definitions();
    Definitions(const Definitions&) = delete;
    Definitions& operator=(const Definitions&) = delete;

    bool ok() const { return ok_; }
    // "the sample", "what the decks define" or "the repository", as messages
    // name what was searched.
    const char* origin() const { return origin_; }
    // The DBDs, then the PSBs.
    const std::vector<ADObject>& roots() const { return roots_; }
    // An object of class `cls` by name (its object ID or its adName), or with
    // no name the usual root of a view over that class: the sample's, else the
    // first DBD or PSB, or the first PCB of the first PSB.
    _ADObject* find(const char* cls, const char* name) const;

private:
    std::optional<sample::Model> sample_;
    std::unique_ptr<krstore::Repository> repository_;
    std::vector<ADObject> roots_;
    const char* origin_ = "the sample";
    bool ok_ = true;
};

}  // namespace krmwtarn

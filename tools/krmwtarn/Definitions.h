// Definitions.h — what the view commands (demo, expand, export, graph) work
// on: the built-in sample, or the definitions read from generation decks
// (--decks DECK...). Building or loading happens in the constructor; the
// destructor releases the whole repository again.
#pragma once

#include <krmwtarn/krmwtarn.h>

#include "tools/sample/SampleModel.h"

#include <optional>
#include <string>
#include <vector>

namespace krmwtarn {

class Definitions {
public:
    // No decks: the sample. Decks: loaded all or nothing; a load with errors
    // prints its diagnostics and leaves `ok()` false.
    explicit Definitions(const std::vector<std::string>& decks);
    ~Definitions();
    Definitions(const Definitions&) = delete;
    Definitions& operator=(const Definitions&) = delete;

    bool ok() const { return ok_; }
    // "the sample" or "what the decks define", as messages name what was searched.
    const char* origin() const { return sample_ ? "the sample" : "what the decks define"; }
    // The DBDs, then the PSBs, in the order they were defined.
    const std::vector<ADObject>& roots() const { return roots_; }
    // An object of class `cls` by name (its identity in the definitions'
    // version), or with no name the usual root of a view over that class.
    _ADObject* find(const char* cls, const char* name) const;

private:
    std::optional<sample::Model> sample_;
    std::vector<ADObject> roots_;
    const char* version_;
    bool ok_ = true;
};

}  // namespace krmwtarn

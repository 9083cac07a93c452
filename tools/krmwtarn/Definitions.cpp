// Definitions.cpp — the sample, the loaded decks or the retrieved repository as
// the view commands' definitions, and how a view's root is found in them.
#include "Definitions.h"

#include <krmwtarn/model/framework/Navigation.h>
#include <krmwtarn/platform/common/Refusals.h>
#include <krmwtarn/source/DeckLoader.h>
#include <krmwtarn/store/Repository.h>

#include <algorithm>
#include <cstring>
#include <iostream>
#include <tuple>

namespace krmwtarn {
namespace {
bool named(_ADObject* o, const char* name) {
    return !std::strcmp(o->objID(), name) || (o->_get_adName() && !std::strcmp(o->_get_adName(), name));
}
}  // namespace

Definitions::Definitions(const std::vector<std::string>& decks, const std::string& repo) {
    if (!decks.empty()) {
        origin_ = "what the decks define";
        krsource::LoadResult r = krsource::loadDeckFiles(decks);
        for (const krsource::Diagnostic& d : r.diagnostics) std::cerr << d.text() << "\n";
        ok_ = r.ok();
        if (!ok_) return;
        for (const DSDBD& d : r.dbds) roots_.emplace_back(d.impl());
        for (const DSPSB& p : r.psbs) roots_.emplace_back(p.impl());
        return;
    }
    if (!repo.empty()) {
        origin_ = "the repository";
        if (auto refused = kr::refusalOf([&] {
                repository_ = krstore::Repository::open(repo);
                repository_->retrieveAll();
            })) {
            std::cerr << "krmwtarn: " << kr::describe(*refused) << "\n";
            ok_ = false;
            return;
        }
        DSRegistrar::forEach([&](_ADObject* o) {
            if (kr::isa<_DSDBD>(o) || kr::isa<_DSPSB>(o)) roots_.emplace_back(o);
        });
        // DBDs before PSBs, each by version and ID, so every run lists them alike.
        auto order = [](const ADObject& o) {
            return std::make_tuple(!kr::isa<_DSDBD>(o.impl()), std::string(o->context()), std::string(o->objID()));
        };
        std::sort(roots_.begin(), roots_.end(),
                  [&](const ADObject& a, const ADObject& b) { return order(a) < order(b); });
        return;
    }
    sample_ = sample::build();
    for (const auto& [view, root] : sample::documentRoots(*sample_)) roots_.emplace_back(root);
}

Definitions::~Definitions() {
    roots_.clear();
    sample_.reset();
    DSRegistrar::releaseAll();
    repository_.reset();
}

_ADObject* Definitions::find(const char* cls, const char* name) const {
    if (!name && sample_) return sample::defaultRoot(*sample_, cls);
    // By name; with none, the sample's usual root if the sample is here.
    const char* wanted = name ? name : sample::defaultName(cls);
    _ADObject* found = nullptr;
    if (wanted)
        DSRegistrar::forEach([&](_ADObject* o) {
            if (!found && o->isKindOf(cls) && named(o, wanted)) found = o;
        });
    if (found || name) return found;
    for (const ADObject& r : roots_) {
        if (r->isKindOf(cls)) return r.impl();
        if (auto* psb = kr::dyn_cast<_DSPSB>(r.impl()); psb && !std::strcmp(cls, "DSPCB"))
            if (_DSPCB* pcb = kr::targetsOf<DSIncludesPCB>(psb->_get_listPCBs()).first()) return pcb;
    }
    return nullptr;
}

}  // namespace krmwtarn

// Definitions.cpp — the sample, the loaded decks or the retrieved repository as
// the view commands' definitions, and how a view's root is found in them.
#include "tools/krmwtarn/Definitions.h"

#include "platform/common/KVException.h"
#include "source/DeckLoader.h"
#include "store/Repository.h"

#include <algorithm>
#include <cstring>
#include <iostream>
#include <tuple>

namespace krmwtarn {
namespace {
// The sample's usual roots: its HIDAM DBD, its PSB and first PCB, and the
// dictionary objects that describe the patient segment.
const char* usualName(const char* cls) {
    return !std::strcmp(cls, "DSDBD")                  ? "HOSPDBD"
           : !std::strcmp(cls, "DSPSB")                ? "HOSPPSB"
           : !std::strcmp(cls, "DSPCB")                ? "HOSPPSB.PCB1"
           : !std::strcmp(cls, "DSDataStructureAlias") ? "WARD-TEXT"
                                                       : "PATNAME-TEXT";
}

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
        try {
            repository_ = krstore::Repository::open(repo);
            repository_->retrieveAll();
        } catch (KVException* e) {
            std::cerr << "krmwtarn: " << (e->text(0) ? e->text(0) : e->message().c_str()) << "\n";
            delete e;
            ok_ = false;
            return;
        }
        DSRegistrar::forEach([&](_ADObject* o) {
            if (!std::strcmp(o->whoAmI(), "DSDBD") || !std::strcmp(o->whoAmI(), "DSPSB")) roots_.emplace_back(o);
        });
        // DBDs before PSBs, each by version and ID, so every run lists them alike.
        auto order = [](const ADObject& o) {
            return std::make_tuple(std::strcmp(o->whoAmI(), "DSDBD") != 0, std::string(o->context()),
                                   std::string(o->objID()));
        };
        std::sort(roots_.begin(), roots_.end(), [&](const ADObject& a, const ADObject& b) { return order(a) < order(b); });
        return;
    }
    sample_ = sample::build();
    const sample::Model& m = *sample_;
    for (const DSDBD* d : {&m.hospital, &m.hospIndex, &m.nameIndex, &m.logical, &m.dedb, &m.hdam, &m.msdb})
        roots_.emplace_back(d->impl());
    roots_.emplace_back(m.psb.impl());
}

Definitions::~Definitions() {
    roots_.clear();
    sample_.reset();
    DSRegistrar::releaseAll();
    repository_.reset();
}

_ADObject* Definitions::find(const char* cls, const char* name) const {
    const char* wanted = name ? name : usualName(cls);
    _ADObject* found = nullptr;
    DSRegistrar::forEach([&](_ADObject* o) {
        if (!found && o->isKindOf(cls) && named(o, wanted)) found = o;
    });
    // The field-text view is rooted in a dictionary element alias.
    if (!found && !std::strcmp(cls, "DSDataElementAlias"))
        DSRegistrar::forEach([&](_ADObject* o) {
            if (!found && !std::strcmp(o->whoAmI(), "DSSDDAlias") && named(o, wanted)) found = o;
        });
    if (found || name) return found;
    for (const ADObject& r : roots_) {
        if (r->isKindOf(cls)) return r.impl();
        if (!std::strcmp(cls, "DSPCB") && r->isKindOf("DSPSB")) {
            DSPCB* pcb = static_cast<_DSPSB*>(r.impl())->_getFirst_listPCBs();
            if (pcb) return pcb->impl();
        }
    }
    return nullptr;
}

}  // namespace krmwtarn

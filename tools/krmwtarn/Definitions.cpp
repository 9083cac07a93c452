// Definitions.cpp — the sample or the loaded decks as the view commands'
// definitions, and how a view's root is found in them.
#include "tools/krmwtarn/Definitions.h"

#include <krmwtarn/source/DeckLoader.h>

#include <cstring>
#include <iostream>

namespace krmwtarn {

Definitions::Definitions(const std::vector<std::string>& decks) {
    if (decks.empty()) {
        sample_ = sample::build();
        version_ = sample::kVersion;
        const sample::Model& m = *sample_;
        for (const DSDBD* d : {&m.hospital, &m.hospIndex, &m.nameIndex, &m.logical, &m.dedb, &m.hdam, &m.msdb})
            roots_.emplace_back(d->impl());
        roots_.emplace_back(m.psb.impl());
        return;
    }
    version_ = krsource::kDeckVersion;
    krsource::LoadResult r = krsource::loadDeckFiles(decks);
    for (const krsource::Diagnostic& d : r.diagnostics) std::cerr << d.text() << "\n";
    ok_ = r.ok();
    if (!ok_) return;
    for (const DSDBD& d : r.dbds) roots_.emplace_back(d.impl());
    for (const DSPSB& p : r.psbs) roots_.emplace_back(p.impl());
}

Definitions::~Definitions() {
    roots_.clear();
    sample_.reset();
    DSRegistrar::releaseAll();
}

_ADObject* Definitions::find(const char* cls, const char* name) const {
    if (name) return DSRegistrar::findObj(cls, name, version_);
    if (sample_) {
        // The sample's usual roots: its HIDAM DBD, its PSB and first PCB, and
        // the dictionary objects that describe the patient segment.
        const char* usual = !std::strcmp(cls, "DSDBD")                  ? "HOSPDBD"
                            : !std::strcmp(cls, "DSPSB")                ? "HOSPPSB"
                            : !std::strcmp(cls, "DSPCB")                ? "HOSPPSB.PCB1"
                            : !std::strcmp(cls, "DSDataStructureAlias") ? "WARD-TEXT"
                                                                        : "PATNAME-TEXT";
        _ADObject* found = DSRegistrar::findObj(cls, usual, version_);
        // The field-text view is rooted in a dictionary element alias.
        if (!found && !std::strcmp(cls, "DSDataElementAlias")) found = DSRegistrar::findObj("DSSDDAlias", usual, version_);
        return found;
    }
    // Loaded decks: the first DBD or PSB, or the first PCB of the first PSB.
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

// StoreSupport.h — what the store tests and the probe program share: the
// documents of every DBD and PSB in the registry (the export a round trip must
// give back), the largest model, and a fresh repository path.
#pragma once

#include "tools/json/ViewDocument.h"

#include <krmwtarn/krmwtarn.h>

#include <algorithm>
#include <map>
#include <string>
#include <vector>

namespace storetest {

// Every DBD by CORVIAPOPULATEDBD and every PSB by CORVIAPSB, in ID order.
inline nlohmann::json documents() {
    DLLView_init::initAll();
    std::vector<_ADObject*> dbds, psbs;
    DSRegistrar::forEach([&](_ADObject* o) {
        if (!std::strcmp(o->whoAmI(), "DSDBD")) dbds.push_back(o);
        if (!std::strcmp(o->whoAmI(), "DSPSB")) psbs.push_back(o);
    });
    auto byID = [](_ADObject* a, _ADObject* b) {
        return std::string(a->objID()) + a->context() < std::string(b->objID()) + b->context();
    };
    std::sort(dbds.begin(), dbds.end(), byID);
    std::sort(psbs.begin(), psbs.end(), byID);
    nlohmann::json docs = nlohmann::json::array();
    for (_ADObject* d : dbds) docs.push_back(viewdoc::exportView(DLLViewType::find("CORVIAPOPULATEDBD"), d));
    for (_ADObject* p : psbs) docs.push_back(viewdoc::exportView(DLLViewType::find("CORVIAPSB"), p));
    return docs;
}

// The documents with generated identities ("#N") renumbered in order of first
// appearance: two processes that build the same definitions generate different
// numbers for the same links.
inline std::string renumbered(const nlohmann::json& docs) {
    std::string text = docs.dump(), out;
    std::map<std::string, int> seen;
    for (size_t i = 0; i < text.size();) {
        if (text.compare(i, 2, "\"#") == 0) {
            size_t end = text.find('"', i + 1);
            std::string id = text.substr(i, end - i);
            auto [it, added] = seen.emplace(id, static_cast<int>(seen.size()) + 1);
            out += "\"#" + std::to_string(it->second);
            i = end;
        } else {
            out += text[i++];
        }
    }
    return out;
}

// The largest model (as the model benchmark builds it), with names so a
// second build makes the same identities: one DBD with 255 segments over 15
// levels and 1,000 fields, one PSB with `pcbs` PCBs, 12 SENSEGs per PCB and a
// SENFLD on every third SENSEG.
inline void buildLargest(const char* version = "V1", int pcbs = 2500) {
    constexpr int kSegments = 255, kLevels = 15, kFields = 1000;
    const int sensegCount = pcbs * 12, senfldCount = pcbs * 4;
    auto id = [](const char* prefix, int i) { return std::string(prefix) + std::to_string(i); };
    DSDBD dbd(version, "BIGDBD", 1);
    dbd->_set_strDBDName("BIGDBD", omStore);
    std::vector<DSSegment> segments;
    segments.reserve(kSegments);
    for (int i = 0; i < kSegments; ++i) {
        segments.emplace_back(version, id("SEG", i).c_str(), 1);
        DSContainsSegment(&dbd, &segments[i], 1);
        if (i > 0) DSParent(&segments[i], &segments[i < kLevels ? i - 1 : i % (kLevels - 1)], 1);
    }
    std::vector<DSField> fields;
    fields.reserve(kFields);
    for (int i = 0; i < kFields; ++i) {
        fields.emplace_back(version, id("FLD", i).c_str(), 1);
        DSHasField(&segments[i % kSegments], &fields[i], 1);
    }
    DSPSB psb(version, "BIGPSB", 1);
    psb->_set_strPSBName("BIGPSB", omStore);
    std::vector<DSPCBdb> types;
    types.reserve(pcbs);
    for (int i = 0; i < pcbs; ++i) {
        DSPCB pcb(version, id("PCB", i).c_str(), 1);
        DSIncludesPCB(&psb, &pcb, 1);
        types.emplace_back(version, id("PCBT", i).c_str(), 1);
        DSSpecifiedByType(&pcb, &types[i], 1);
        DSBasedOn(&types[i], &dbd, 1);
    }
    std::vector<DSSenSegment> sensegs;
    sensegs.reserve(sensegCount);
    for (int i = 0; i < sensegCount; ++i) {
        sensegs.emplace_back(version, id("SS", i).c_str(), 1);
        DSHasSensitive(&types[i % pcbs], &sensegs[i], 1);
        DSMapsTo(&sensegs[i], &segments[i % kSegments], 1);
    }
    for (int i = 0; i < senfldCount; ++i) {
        DSSenField senfld(version, id("SF", i).c_str(), 1);
        DSUsesSENFLD(&sensegs[i * 3], &senfld, 1);
        DSUsedAsSENFLD(&senfld, &fields[i % kFields], 1);
    }
}

}  // namespace storetest

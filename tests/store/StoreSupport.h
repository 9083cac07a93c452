// StoreSupport.h — what the store tests and the probe program share: the
// documents of every DBD and PSB in the registry (the export a round trip must
// give back), and the largest model.
#pragma once

#include "tests/store/LargestModel.h"
#include <krmwtarn/json/ViewDocument.h>

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

}  // namespace storetest

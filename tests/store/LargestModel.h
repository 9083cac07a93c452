// LargestModel.h — the largest model, as the model benchmark builds it but
// with names, so that a second build (or a second process) makes the same
// identities. Shared by the store tests and the store benchmark.
#pragma once

#include <krmwtarn/krmwtarn.h>

#include <string>
#include <vector>

namespace storetest {

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

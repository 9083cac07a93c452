// LargestDecks.h — generation decks that describe the largest model of the
// quality benchmark (one DBD with 255 segments over 15 levels and 1,000 fields;
// one PSB with 2,500 database PCBs, 30,000 SENSEGs and 10,000 SENFLDs), for
// the benchmarks that read them and those that check what they define.
#pragma once

#include <krmwtarn/source/DeckLoader.h>
#include <krmwtarn/source/DeckWriter.h>

#include <string>
#include <vector>

namespace largest {

inline constexpr int kSegments = 255, kLevels = 15, kFields = 1000;
inline constexpr int kPCBs = 2500, kSensegs = 30000, kSenflds = 10000;
inline const char* const kVersion = "BENCH";

inline int parentOf(int i) { return i < kLevels ? i - 1 : i % (kLevels - 1); }
// SENSEG i belongs to PCB i % kPCBs and maps segment i % kSegments (distinct
// within a PCB); SENFLD i belongs to SENSEG 3i and names that segment's first field.
inline int senfldSenseg(int i) { return 3 * i; }

inline std::string name(char prefix, int i) { return prefix + std::to_string(i); }

inline std::vector<krsource::Deck> largestDecks() {
    std::vector<std::vector<std::string>> fieldsOf(kSegments);
    for (int f = 0; f < kFields; ++f) fieldsOf[f % kSegments].push_back(name('F', f));
    std::string text;
    auto add = [&](const std::string& op, const std::vector<std::string>& operands) {
        for (const std::string& c : krsource::formatStatement("", op, operands)) text += c + "\n";
    };
    add("DBD", {"NAME=BIGDBD", "ACCESS=HISAM"});
    for (int s = 0; s < kSegments; ++s) {
        std::vector<std::string> ops = {"NAME=" + name('S', s), "BYTES=100"};
        if (s > 0) ops.push_back("PARENT=" + name('S', parentOf(s)));
        add("SEGM", ops);
        for (const std::string& f : fieldsOf[s]) add("FIELD", {"NAME=" + f, "START=1", "BYTES=4"});
    }
    add("DBDGEN", {});
    krsource::Deck dbdDeck{"BIGDBD.dbd", text};
    text.clear();
    std::vector<std::vector<int>> sensegsOf(kPCBs);
    for (int i = 0; i < kSensegs; ++i) sensegsOf[i % kPCBs].push_back(i);
    std::vector<int> senfldOf(kSensegs, -1);
    for (int i = 0; i < kSenflds; ++i) senfldOf[senfldSenseg(i)] = i;
    for (int p = 0; p < kPCBs; ++p) {
        add("PCB", {"TYPE=DB", "DBDNAME=BIGDBD", "PROCOPT=G", "PCBNAME=" + name('P', p)});
        for (int i : sensegsOf[p]) {
            add("SENSEG", {"NAME=" + name('S', i % kSegments)});
            if (senfldOf[i] >= 0) add("SENFLD", {"NAME=" + name('F', i % kSegments), "START=1"});
        }
    }
    add("PSBGEN", {"PSBNAME=BIGPSB"});
    return {dbdDeck, {"BIGPSB.psb", text}};
}

}  // namespace largest

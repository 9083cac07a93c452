// Rules.h — the rule table: every rule the checks apply, one row each (code,
// severity, what it checks in one line, the function), and the facts a rule
// reads (a DBD's segments with their parents, depths and fields; a PSB's PCBs
// with their SENSEGs), gathered once per definition. The table is the one list
// of rules: the README's list and the tests iterate over it.
#pragma once

#include <krmwtarn/platform/common/Export.h>

#include <krmwtarn/check/Check.h>
#include <krmwtarn/check/Organisations.h>
#include <krmwtarn/source/FieldGeometry.h>

#include <functional>
#include <memory>
#include <span>
#include <string>
#include <unordered_map>
#include <unordered_set>
#include <vector>

namespace krcheck {

struct FieldFacts {
    _DSField* field;
    std::string name;  // the FIELD's NAME, or its EXTERNALNAME where it has only that
    krsource::FieldGeometry geometry;
    bool externalOnly = false;  // described for the catalog by its EXTERNALNAME alone
};

struct SegmentFacts {
    _DSSegment* segment;
    std::string name;
    std::string path;  // DBD/SEGMENT
    int parent = -1;   // index of the physical parent; -1 for a root
    int depth = 1;     // the root is at level 1
    std::vector<FieldFacts> fields;
    long keyBytes = 0;         // the length of its sequence field, 0 without one
    long concatenatedKey = 0;  // the key lengths of it and every segment above it
};

struct DbdFacts {
    _DSDBD* dbd;
    std::string name;
    _DSDBDaccess* access = nullptr;     // the access object, null when none is linked
    std::string organisation;           // as ACCESS writes it: HIDAM, PHDAM, GSAM, ...
    const Organisation* org = nullptr;  // what that organisation is; null for one the table lacks
    std::vector<SegmentFacts> segments;
    std::unordered_map<const _ADObject*, int> segmentIndex;
    explicit DbdFacts(_DSDBD* d);
    const SegmentFacts* of(const _ADObject* segment) const {
        auto it = segmentIndex.find(segment);
        return it == segmentIndex.end() ? nullptr : &segments[static_cast<std::size_t>(it->second)];
    }
};

struct SensegFacts {
    _DSSenSegment* senseg;
    std::string name;
    std::string path;
    _DSSegment* segment = nullptr;  // the segment it maps to
    int parent = -1;                // index of its parent SENSEG in the PCB
    std::vector<_DSSenField*> senflds;
};

struct PcbFacts {
    _DSPCB* pcb;
    std::string path;              // PSB/PCBNAME, or PSB/PCBn without a name
    std::string kind;              // TP, DB or GSAM
    _DSPCBbased* based = nullptr;  // a DB or GSAM PCB's type
    _DSDBD* dbd = nullptr;         // the DBD it is based on
    const DbdFacts* dbdFacts = nullptr;
    _DSDBDindex* procseq = nullptr;  // its processing sequence
    std::vector<SensegFacts> sensegs;
};

struct PsbFacts {
    _DSPSB* psb;
    std::string name;
    std::vector<PcbFacts> pcbs;
    // The names of every DBD checked with the PSB (a load's, a repository's);
    // null when the PSB is checked alone, and only its PCBs' DBDs are known.
    const std::unordered_set<std::string>* dbdNames = nullptr;
    explicit PsbFacts(_DSPSB* p);

private:
    std::vector<std::unique_ptr<DbdFacts>> dbds_;  // the facts of every DBD a PCB names, once each
};

// What a rule reports through: the finding about an object (located when the
// object came from a deck).
class Report {
public:
    virtual ~Report() = default;
    virtual void operator()(const _ADObject* object, const std::string& path, std::string message) = 0;
};

struct KRMWTARN_API Rule {
    const char* code;
    Severity severity;
    const char* description;                  // one line, as the README lists it
    void (*onDbd)(const DbdFacts&, Report&);  // null for a PSB rule
    void (*onPsb)(const PsbFacts&, Report&);  // null for a DBD rule
};

// Every rule, DBD rules first, in the order findings are reported.
KRMWTARN_API std::span<const Rule> rules() noexcept;

// A name of the generation language: 1 to 8 letters, digits, @, # or $, the
// first not a digit.
bool validName(const std::string& name) noexcept;

}  // namespace krcheck

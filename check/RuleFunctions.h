// RuleFunctions.h — the functions of the rule table (Rules.cpp): the DBD rules
// (DbdRules.cpp) and the PSB rules (PsbRules.cpp), each over the facts of one
// definition, and the little they share.
#pragma once

#include <krmwtarn/check/Rules.h>

#include <krmwtarn/model/framework/Navigation.h>
#include <krmwtarn/source/Language.h>

#include <string>

namespace krcheck::rule {

// What one definition may hold, counted by the generation utilities.
inline constexpr long kMaxFieldsPerSegment = 255;  // FIELD and XDFLD statements of one segment
inline constexpr long kMaxFieldsPerDbd = 1000;     // FIELD and XDFLD statements of one DBD
inline constexpr long kMaxDedbSegments = 127;      // segment types of a DEDB
inline constexpr long kMaxMsdbBytes = 32000;       // an MSDB segment's length
inline constexpr long kMaxMsdbKeyBytes = 240;      // an MSDB segment's key
inline constexpr long kMaxSenfldsPerSenseg = 255;  // SENFLDs of one SENSEG

inline std::string str(const char* s) { return s ? std::string(s) : std::string(); }
inline std::string n(long v) { return std::to_string(v); }

// What a definition holds beyond a limit of the generation utilities, reported at the definition.
inline void beyond(const _ADObject* object, const std::string& path, const std::string& what, long count, long limit,
                   const std::string& things, Report& report) {
    if (count > limit)
        report(object, path, what + " has " + n(count) + " " + things + "; at most " + n(limit) + " are allowed");
}

void nameForm(const DbdFacts&, Report&);
void segLevels(const DbdFacts&, Report&);
void segRoot(const DbdFacts&, Report&);
void fieldRange(const DbdFacts&, Report&);
void segSequence(const DbdFacts&, Report&);
void rootSequence(const DbdFacts&, Report&);
void rootUnkeyed(const DbdFacts&, Report&);
void hidamIndex(const DbdFacts&, Report&);
void randomizer(const DbdFacts&, Report&);
void dedbAreas(const DbdFacts&, Report&);
void logicalSource(const DbdFacts&, Report&);
void lchildPair(const DbdFacts&, Report&);
void logicalParent(const DbdFacts&, Report&);
void xdfldFields(const DbdFacts&, Report&);
void primaryIndex(const DbdFacts&, Report&);
void indexTarget(const DbdFacts&, Report&);
void logicalHierarchy(const DbdFacts&, Report&);
void segmentCount(const DbdFacts&, Report&);
void dbdSegments(const DbdFacts&, Report&);
void fieldCount(const DbdFacts&, Report&);
void fieldNames(const DbdFacts&, Report&);
void sequenceFirst(const DbdFacts&, Report&);
void dedbSegments(const DbdFacts&, Report&);
void subsetPointers(const DbdFacts&, Report&);
void msdbSegments(const DbdFacts&, Report&);
void shisamSegments(const DbdFacts&, Report&);
void gsamSegments(const DbdFacts&, Report&);

void psbName(const PsbFacts&, Report&);
void tpFirst(const PsbFacts&, Report&);
void sensegRoot(const PsbFacts&, Report&);
void sensegParent(const PsbFacts&, Report&);
void keyLength(const PsbFacts&, Report&);
void procopt(const PsbFacts&, Report&);
void procseqIndex(const PsbFacts&, Report&);
void senfldFit(const PsbFacts&, Report&);
void pcbCount(const PsbFacts&, Report&);
void sensegCount(const PsbFacts&, Report&);
void senfldCount(const PsbFacts&, Report&);
void pcbDbd(const PsbFacts&, Report&);
void psbNamedLikeDbd(const PsbFacts&, Report&);
void pcbNames(const PsbFacts&, Report&);
void gsamLast(const PsbFacts&, Report&);
void senfldsPerSenseg(const PsbFacts&, Report&);
void senfldKeyOnly(const PsbFacts&, Report&);

}  // namespace krcheck::rule

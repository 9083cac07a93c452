// Rules.cpp — the rule table (Rules.h): every rule, its code, severity and
// description, and the function that applies it (DbdRules.cpp, PsbRules.cpp).
#include "RuleFunctions.h"

namespace krcheck {

bool validName(const std::string& name) noexcept {
    if (name.empty() || name.size() > 8 || (name[0] >= '0' && name[0] <= '9')) return false;
    for (char c : name)
        if (!((c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') || c == '@' || c == '#' || c == '$')) return false;
    return true;
}

namespace {
using namespace rule;
constexpr Severity E = Severity::Error, W = Severity::Warning;
const Rule table[] = {
    {"NAME-FORM", E,
     "DBD, segment and field names are 1 to 8 letters, digits, @, # or $, not starting with a digit; a field may be a "
     "secondary index's /SXn or /CKn",
     nameForm, nullptr},
    {"SEG-LEVELS", E, "a DBD has at most 15 levels of segments", segLevels, nullptr},
    {"SEG-ROOT", E, "a DBD with segments has exactly one root segment", segRoot, nullptr},
    {"FLD-RANGE", E,
     "a field lies within its segment, a /CKn field within its concatenated key: START + BYTES - 1 is at most that "
     "length",
     fieldRange, nullptr},
    {"SEG-SEQ", E, "a segment has at most one sequence field", segSequence, nullptr},
    {"ROOT-SEQ", E, "the root of a HIDAM, PHIDAM, HISAM, SHISAM, INDEX or PSINDEX database has a unique sequence field",
     rootSequence, nullptr},
    {"ROOT-UNKEYED", W,
     "the root of an HDAM, PHDAM or DEDB database without a sequence field is found by sequential scan only",
     rootUnkeyed, nullptr},
    {"HIDAM-INDEX", E,
     "a HIDAM database names its primary index DBD (LCHILD ...,POINTER=INDX); the manager makes a PHIDAM's", hidamIndex,
     nullptr},
    {"RANDOMIZER", E,
     "HDAM and DEDB databases name their randomizing module (RMNAME); a PHDAM may name it per partition", randomizer,
     nullptr},
    {"DEDB-AREAS", E, "a DEDB has areas, each with its size", dedbAreas, nullptr},
    {"LOGICAL-SOURCE", E, "each segment of a logical DBD names its source segments (SOURCE)", logicalSource, nullptr},
    {"LOGICAL-HIERARCHY", E,
     "a logical segment's sources are segments of physical DBDs, and its parent's source is the physical or logical "
     "parent of its source",
     logicalHierarchy, nullptr},
    {"LCHILD-PAIR", E, "where an LCHILD's PAIR names a logical child, that child's relationship pairs back with it",
     lchildPair, nullptr},
    {"LOGICAL-PARENT", E, "a logical child's logical parent is a segment of a DBD", logicalParent, nullptr},
    {"XDFLD-FIELDS", E, "an XDFLD has search fields, and its SRCH, SUBSEQ and DDATA fields are its source segment's",
     xdfldFields, nullptr},
    {"INDEX-PRIMARY", E,
     "a HIDAM's (or PHIDAM's) primary index belongs to an INDEX DBD that no XDFLD also uses, keyed by a root field",
     primaryIndex, nullptr},
    {"INDEX-TARGET", E,
     "an INDEX DBD is a HIDAM's primary index or an XDFLD's secondary index; a PSINDEX DBD an XDFLD's", indexTarget,
     nullptr},
    {"SEG-COUNT", E, "a DBD holds at most 255 segments", segmentCount, nullptr},
    {"DBD-EMPTY", E, "a DBD other than GSAM has at least one segment", dbdSegments, nullptr},
    {"FLD-COUNT", E, "a segment holds at most 255 fields and a DBD 1,000, XDFLDs counted as fields", fieldCount,
     nullptr},
    {"FLD-NAME", E, "a field's name is unique within its segment", fieldNames, nullptr},
    {"SEQ-FIRST", E, "a segment's sequence field is its first field", sequenceFirst, nullptr},
    {"DEDB-SEGMENTS", E, "a DEDB has at most 127 segment types", dedbSegments, nullptr},
    {"DEDB-SSPTR", E, "a DEDB segment type has at most 8 subset pointers (SSPTR)", subsetPointers, nullptr},
    {"MSDB-SEGMENTS", E,
     "MSDB segments are roots of fixed length, at most 32,000 bytes, keyed by at most 240, without LCHILD or XDFLD",
     msdbSegments, nullptr},
    {"SHISAM-SEGMENT", E,
     "a SHISAM database is one root segment of fixed length, without secondary index, logical relationship or "
     "compression",
     shisamSegments, nullptr},
    {"GSAM-SEGMENT", E, "a GSAM database has at most one segment", gsamSegments, nullptr},
    {"PCB-COUNT", E, "a PSB holds at most 2,500 PCBs", nullptr, pcbCount},
    {"SENSEG-COUNT", E, "a PSB holds at most 30,000 SENSEGs", nullptr, sensegCount},
    {"SENFLD-COUNT", E, "a PSB holds at most 10,000 SENFLDs", nullptr, senfldCount},
    {"PCB-DBD", E, "a database or GSAM PCB is based on a DBD (DBDNAME)", nullptr, pcbDbd},
    {"PSB-NAME", E, "the PSB's and its PCBs' names are 1 to 8 letters, digits, @, # or $, not starting with a digit",
     nullptr, psbName},
    {"TP-FIRST", W, "TP PCBs come before the database and GSAM PCBs", nullptr, tpFirst},
    {"SENSEG-ROOT", E, "the first SENSEG of a PCB without PROCSEQ is its DBD's root", nullptr, sensegRoot},
    {"SENSEG-PARENT", E, "each SENSEG's parent is its segment's parent in the DBD", nullptr, sensegParent},
    {"PCB-KEYLEN", E, "KEYLEN is at least the longest concatenated key of the sensitive segments", nullptr, keyLength},
    {"PROCOPT", E, "processing options are letters of GIRDAPONTELSHK, each once, at most four", nullptr, procopt},
    {"PROCSEQ-INDEX", E, "PROCSEQ names a secondary index of the PCB's DBD", nullptr, procseqIndex},
    {"SENFLD-FIT", E, "a SENFLD names a field of its segment and fits in that segment", nullptr, senfldFit},
    {"PCB-NAME", E, "a PCB's name is unique within its PSB", nullptr, pcbNames},
    {"PSB-DBD-NAME", W, "a PSB is not named like a DBD: the control-block generation holds both in one library",
     nullptr, psbNamedLikeDbd},
    {"GSAM-LAST", E, "GSAM PCBs come after the database PCBs", nullptr, gsamLast},
    {"SENFLD-SENSEG", E, "a SENSEG has at most 255 SENFLDs", nullptr, senfldsPerSenseg},
    {"SENFLD-KEY", E, "a SENSEG sensitive to its key alone (PROCOPT=K) has no SENFLD", nullptr, senfldKeyOnly},
};
}  // namespace

std::span<const Rule> rules() noexcept { return table; }

}  // namespace krcheck

// Trees.h — what the tree files share, private to the library: the outline of
// every view of ViewCatalog.def (defined in QueryViews.cpp or GraphViews.cpp,
// built by EwswtarnViews.cpp) and the fragments that both families use.
#pragma once

#include <krmwtarn/views/ViewRows.h>

namespace viewtrees {
using namespace viewrows;

#define EWSWTARN_VIEW(NAME, ROOT) extern constinit const Outline outline_##NAME;
#include <krmwtarn/views/ViewCatalog.def>

// clang-format off

// Annotation: pAnnotationText → ADLinkADAnnotObj2AnnotTxt → adTarget →
// ADAnnotationText, its label and contents under the given aliases (none: their names).
constexpr auto annotation(const char* labelAlias = nullptr, const char* contentsAlias = nullptr) {
    return rows(
        role(0, "pAnnotationText"),
          target(1, "ADAnnotationText"),
            attr(2, "label", labelAlias),
            attr(2, "contents", contentsAlias));
}

// The PSB statement's values, in the order the PSB views list them.
inline constexpr auto psbAttributes = rows(
    attr(0, "writeToOperator"),
    attr(0, "ssaSize"),
    attr(0, "lockMaximum"),
    attr(0, "onlineImageCopy"),
    attr(0, "maximumQxCalls"),
    attr(0, "language"),
    attr(0, "ioErrorOption"),
    attr(0, "ioaSize"),
    attr(0, "hpPSBName"),
    attr(0, "compatibility"));

// What every access type has (DSDBDaccess), in the order the access views list it.
inline constexpr auto accessAttributes = rows(
    attr(0, "passwordFlag"),
    attr(0, "osAccess"),
    attr(0, "dliAccess"));

// A DBD's or segment's exits (the link class follows from the class the
// fragment stands in) with all their values, under the given aliases (none:
// their names).
constexpr auto exits(const char* const (&aliases)[10]) {
    return rows(
        role(0, "exits"),
          target(1, "DSExit"),
            attr(2, "strExit", aliases[0]),
            attr(2, "logFlag", aliases[1]),
            attr(2, "exitPath", aliases[2]),
            attr(2, "exitKey", aliases[3]),
            attr(2, "exitData", aliases[4]),
            attr(2, "cascadePath", aliases[5]),
            attr(2, "cascadeKey", aliases[6]),
            attr(2, "cascadeData", aliases[7]),
            attr(2, "cascade", aliases[8]),
            attr(2, "captureRoutine", aliases[9]));
}
constexpr auto exits() {
    return exits({nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr});
}

// The DBD that contains a segment, or that an access type belongs to (the link
// class follows from the class the fragment stands in), by its name.
constexpr auto owningDbdName(const char* alias = nullptr) {
    return rows(
        role(0, "containingDBD"),
          source(1, "DSDBD"),
            attr(2, "adName", alias));
}

// An index DBD reached over `roleName` (an XDFLD's targetDBDindex, a HIDAM
// access type's primaryIndex): the DBD the index access type belongs to, with
// `segment` listed of each of its segments and then `dbd` of the DBD itself.
template <std::size_t S, std::size_t D>
constexpr auto indexDbd(const char* roleName, const std::array<Row, S>& segment, const std::array<Row, D>& dbd) {
    return rows(
        role(0, roleName),
          target(1, "DSDBDindex"),
            role(2, "containingDBD"),
              source(3, "DSDBD"),
                role(4, "segments"),
                  target(5, "DSSegment"),
                    use(6, segment),
                use(4, dbd));
}

// The segment that a secondary index using an index DBD is built on, with
// `segment` listed of it.
template <std::size_t N>
constexpr auto indexedSegment(const std::array<Row, N>& segment) {
    return rows(
        role(0, "secondaryIndexTarget"),
          source(1, "DSXDFLD"),
            role(2, "sourceSEGMcmpx"),
              source(3, "DSSegmentComplex"),
                use(4, segment));
}

// Something that depends on a dictionary object or a DBD: that object by its name.
constexpr auto dependency(const char* className, const char* alias = nullptr) {
    return rows(
        role(0, "dependsOn"),
          target(1, className),
            attr(2, "adName", alias));
}

// A secondary index's own values.
inline constexpr auto xdfldValues = rows(
    attr(0, "xdfldName"),
    attr(0, "symbolic"),
    attr(0, "nullValue"),
    attr(0, "exitRoutine"),
    attr(0, "constant"));

// A SENSEG's values, in the order the PCB views list them.
inline constexpr auto sensegValues = rows(
    attr(0, "strSensegName"),
    attr(0, "subsetPointer8"),
    attr(0, "subsetPointer7"),
    attr(0, "subsetPointer6"),
    attr(0, "subsetPointer5"),
    attr(0, "subsetPointer4"),
    attr(0, "subsetPointer3"),
    attr(0, "subsetPointer2"),
    attr(0, "subsetPointer1"),
    attr(0, "procoptSENSEG"));

// The areas of a DEDB's dataset group with their values.
inline constexpr auto areas = rows(
    role(0, "areaAttributes"),
      target(1, "DSArea"),
        attr(2, "uowOverflow"),
        attr(2, "uow"),
        attr(2, "rootOverflow"),
        attr(2, "root"),
        attr(2, "areaSize"));

// clang-format on
}  // namespace viewtrees

// RoleRowProbe.cpp — a row list expanded as a class header expands it, with one
// role row chosen by KR_PROBE, compiled (syntax only) by ctest: the rows that
// contradict links.def must not compile, the row that agrees must.
//   1 agrees: DSDBD holds basedPCBs, DSBasedOn's target role
//   2 names a role that the link has at neither end
//   3 puts a link's role on a class that is not that end's class
//   4 a link end whose class's row list lacks that end's role
#include "model/framework/KRLink.h"
#include "platform/repository/DSModelCollection.h"

#if KR_PROBE == 4
// DSBasedOn's target is DSDBD; a DSDBD whose rows lack basedPCBs offers the
// link no role collection there.
struct RowsWithoutTheRole : _ADObject {
    using _ADObject::_ADObject;
};
DSModelCollection* probe(RowsWithoutTheRole* o) {
    return kr::roleAt<DSBasedOn, krTarget>(o, [](auto*) { return static_cast<DSModelCollection*>(nullptr); });
}
#else
struct Probe : _ADObject {
    using _ADObject::_ADObject;
#if KR_PROBE == 3
#define KR_CLASS DSField
#else
#define KR_CLASS DSDBD
#endif
#define KR_ROWS "tests/model/compile/RoleRowProbe.inc"
#include "model/framework/RowsBody.inc"
};
#endif

// SampleModel.h — a realistic set of definitions for the database manager,
// built through the library as a client would: an HIDAM hospital database with
// its primary index, a secondary index and a logical relationship; a logical
// DBD; a DEDB with areas; an HDAM DBD with datasets and an exit; an MSDB; and a
// PSB with database PCBs and a terminal PCB.
#pragma once

#include <krmwtarn/krmwtarn.h>

#include <utility>
#include <vector>

namespace sample {

// The version every sample object lives in.
inline constexpr const char* kVersion = "SAMPLE";

struct Model {
    DSDBD hospital;   // HIDAM
    DSDBD hospIndex;  // its primary index
    DSDBD nameIndex;  // secondary index on patient names
    DSDBD logical;    // logical DBD over the hospital
    DSDBD dedb;       // DEDB with areas
    DSDBD hdam;       // HDAM with datasets and an exit
    DSDBD msdb;       // MSDB
    DSPSB psb;
    DSPCB hospitalPcb;
    DSPCB indexPcb;
    DSPCB terminalPcb;
    DSDataStructureAlias wardText;  // dictionary objects the views are rooted in
    DSDataElementAlias nameText;
};

// Builds the sample in the current repository (objects by their names, so a
// second build shares the first one's objects).
KRMWTARN_API Model build();

// The sample object a view rooted in `rootClass` is expanded over when no
// other is named: the HIDAM DBD, the PSB, its first PCB, or a dictionary
// alias. Null for a class the sample has no such object of.
KRMWTARN_API _ADObject* defaultRoot(const Model& m, const char* rootClass);
// That object's ID (for a sample stored in and retrieved from a repository);
// null for a class the sample has no such object of.
KRMWTARN_API const char* defaultName(const char* rootClass);

// The whole sample as documents: every DBD by CORVIAPOPULATEDBD, the PSB by
// CORVIAPSB, as (view name, root) pairs in this order.
KRMWTARN_API std::vector<std::pair<const char*, _ADObject*>> documentRoots(const Model& m);

}  // namespace sample

// Organisations.h — the organisations a DBD's ACCESS names, as the statement
// writes them, and what the generation asks of each: the one place the rules
// learn what a HIDAM, a PHDAM or a GSAM database is. A rule reads a property
// here and names the organisation as written in its message.
#pragma once

#include <string_view>

namespace krcheck {

enum class Family {
    Direct,             // HDAM, PHDAM: roots placed by a randomizing module
    Indexed,            // HIDAM, PHIDAM: roots found through a primary index
    IndexedSequential,  // HISAM, SHISAM: roots kept in key order
    Sequential,         // HSAM, SHSAM: records in the order written
    Index,              // INDEX, PSINDEX: the index of another database
    DataEntry,          // DEDB: areas, roots placed by a randomizing module
    MainStorage,        // MSDB
    Gsam,               // GSAM: a sequential data set of one segment
    Logical,            // LOGICAL: a view over physical databases
};

struct Organisation {
    std::string_view name;  // as ACCESS writes it
    Family family;
    bool partitioned;        // a HALDB organisation: its data sets are named per partition
    bool index;              // an index database
    bool rootSequence;       // the root needs a unique sequence field
    bool randomizer;         // its roots are placed by a randomizing module
    bool randomizerNamed;    // the DBD itself names that module (RMNAME)
    bool primaryIndexNamed;  // the DBD itself names its primary index (LCHILD ...,POINTER=INDX)
};

// The rows of the language table, where the reader also learns each organisation.
inline constexpr Organisation kOrganisations[] = {
#define ORGANISATION(name, access, family, partitioned, index, rootSequence, randomizer, randomizerNamed, \
                     primaryIndexNamed)                                                                   \
    {#name, Family::family, partitioned, index, rootSequence, randomizer, randomizerNamed, primaryIndexNamed},
#include <krmwtarn/source/Statements.def>
};

// The organisation named `name` as ACCESS writes it; null for a name the table lacks.
constexpr const Organisation* organisationNamed(std::string_view name) noexcept {
    for (const Organisation& o : kOrganisations)
        if (o.name == name) return &o;
    return nullptr;
}

}  // namespace krcheck

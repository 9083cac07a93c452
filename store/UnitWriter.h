// UnitWriter.h — the rows of units written in one write transaction: each
// object's and link's row into its class's table (a link with its ends and its
// positions in both ends' roles), in place of the rows the units held before.
// Rows go in bulk where the database has a bulk path; a row refused there is
// not named by the database, so the store is tried again row by row to name it.
#pragma once

#include <krmwtarn/store/LinkPositions.h>
#include <krmwtarn/store/Sql.h>
#include <krmwtarn/store/Units.h>

#include <array>
#include <functional>
#include <string>
#include <unordered_map>
#include <utility>
#include <vector>

namespace krstore {

class Schema;
struct Table;

// A row the database refused and named: the object whose row it was.
class RowRefused : public SqlError {
public:
    RowRefused(const SqlError& e, const Table& table, _ADObject* object)
        : SqlError(e), table_(table), object_(object) {}
    const Table& table() const noexcept { return table_; }
    _ADObject* object() const noexcept { return object_; }

private:
    const Table& table_;
    _ADObject* object_;
};

class UnitWriter {
public:
    // A unit's row in the unit table, as the store claims it.
    struct Claim {
        long long id = 0;
        bool storedBefore = false;  // its earlier rows are replaced
    };
    // Claims every unit's row, in the units' order, inside the transaction
    // (and refuses, by throwing, what may not be stored).
    using Claimer = std::function<std::vector<Claim>()>;

    // Sorts the units' objects and links by their class's table; refuses a
    // class that has none.
    UnitWriter(Connection& db, const Schema& schema, const std::vector<UnitContent>& units);
    UnitWriter(const UnitWriter&) = delete;
    UnitWriter& operator=(const UnitWriter&) = delete;

    // Writes the units in one transaction that serializes on `keys`. A row the
    // database refuses is thrown as RowRefused; other failures as they come,
    // with doing() saying what was being done.
    void write(const std::vector<std::string>& keys, const Claimer& claim);
    const char* doing() const noexcept { return doing_; }
    // Once written: every object's change bits off, each link's positions kept.
    void settle(LinkPositions& positions);

private:
    // Every table's rows, one unit_id per unit, in bulk or one by one.
    void writeRows(const std::vector<long long>& ids, bool bulk);
    void replace(const std::vector<Claim>& claims);
    long positionOf(_ADObject* link, int end) const;

    Connection& db_;
    const Schema& schema_;
    const std::vector<UnitContent>& units_;
    // Every link's position in both ends' roles, from the roles of the units' objects.
    std::unordered_map<_ADObject*, std::array<long, 2>> positions_;
    // Per table, its rows' objects with the index of their unit.
    std::vector<std::vector<std::pair<_ADObject*, std::size_t>>> byTable_;
    const char* doing_ = "store";
    // The row being written and whether a failure would name it.
    const Table* failedTable_ = nullptr;
    _ADObject* failedObject_ = nullptr;
    bool rowNamed_ = true;
};

}  // namespace krstore

// UnitsTable.h — the repository's table of units: a row per unit with its
// identity, its root's name, its revision, who stored it and when, and its lock
// (on a server also the session that holds the lock). Its DDL and every
// statement over it are written here and nowhere else; what the rows mean
// (revisions, locks) is the repository's business.
#pragma once

#include <krmwtarn/store/Repository.h>
#include <krmwtarn/store/Sql.h>

#include <array>
#include <memory>
#include <string>
#include <vector>

namespace krstore {

class UnitsTable {
public:
    // The table's name, as class tables refer to it.
    static constexpr const char* kName = "units";
    // The CREATE TABLE statement in a database's SQL.
    static std::string ddl(Dialect dialect);
    // What a class table's unit column references.
    static std::string reference() { return std::string(kName) + "(unit_id)"; }
    // The time rows are stamped with (stored_at, locked_at): UTC, to the second.
    static std::string now();

    // `lockSessions`: locks name the server session that took them.
    UnitsTable(Connection& db, bool lockSessions);
    UnitsTable(const UnitsTable&) = delete;
    UnitsTable& operator=(const UnitsTable&) = delete;

    // The unit of this key, into `into`; false when there is none.
    bool find(const UnitKey& key, UnitInfo& into);
    // Every unit, in key order whatever the database's collation.
    std::vector<UnitInfo> all();
    // The row of one unit (every row for `unitID` < 0), bound and not yet
    // stepped, for a fetch beside other statements; read() reads its rows.
    Statement& select(long long unitID);
    static UnitInfo read(Statement& s);
    // Adds a unit with its name, revision and stamp; answers its unit_id.
    long long insert(const UnitInfo& unit);
    // Sets a stored unit's revision, name and stamp.
    void restamp(const UnitInfo& unit);
    void lock(long long unitID, const LockOwner& owner, const std::string& at);
    void unlock(long long unitID);
    // Removes a unit; the rows of its objects and links go with it.
    void remove(long long unitID);
    long long count();

private:
    enum Query { kFind, kAll, kEvery, kOne, kInsert, kRestamp, kLock, kUnlock, kRemove, kCount, kQueries };
    Statement& statement(Query q);

    Connection& db_;
    bool lockSessions_;
    std::array<std::string, kQueries> sql_;
    std::array<std::unique_ptr<Statement>, kQueries> prepared_;
};

}  // namespace krstore

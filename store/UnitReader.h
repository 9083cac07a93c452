// UnitReader.h — units' rows read back in one read transaction: every object
// made by identity (or the live one shared) with its stored values, every
// link's row handed to the link attacher, which makes the link once its ends
// are live. From a server, all tables' rows come in one round trip, and a link
// table's rows are attached while the server sends the next tables.
#pragma once

#include <krmwtarn/platform/repository/ADObject.h>
#include <krmwtarn/store/LinkAttacher.h>
#include <krmwtarn/store/Repository.h>

#include <string>
#include <utility>
#include <vector>

namespace krstore {

class Connection;
class Schema;
class StatementCache;
class Statement;
class UnitsTable;

class UnitReader {
public:
    // `location` names the repository in messages.
    UnitReader(Connection& db, const Schema& schema, UnitsTable& units, StatementCache& statements, LinkAttacher& links,
               const std::string& location)
        : db_(db), schema_(schema), units_(units), statements_(statements), links_(links), location_(location) {}

    struct Loaded {
        std::vector<UnitInfo> units;  // the units' rows as read
        // What the load made or shared, held until the caller has a hold of
        // the units (the links hold their ends by then).
        std::vector<ADObject> held;
    };
    // Loads these units (every unit for `all`); a refresh drops unstored
    // changes, a retrieve keeps them. A load that fails leaves the links it
    // made behind it undone.
    Loaded load(const std::vector<long long>& unitIDs, bool all, bool refresh);

private:
    // A table's current row: an object by identity with its values, or a link
    // row that waits until its ends are live.
    void readRow(const Table& table, Statement& s, omSetProcessing how, Loaded& into, LinkRows& links);

    Connection& db_;
    const Schema& schema_;
    UnitsTable& units_;
    StatementCache& statements_;
    LinkAttacher& links_;
    const std::string& location_;
    const Table* lastEnd_[2] = {nullptr, nullptr};  // the class tables of the last link row's ends
};

}  // namespace krstore

// Sql.h — the database connection the repository is written against: prepared
// statements, write transactions, the schema version, and failures sorted by
// what they mean to a user. SQLite implements it (SqliteConnection.cpp); a
// server backend implements the same interface.
#pragma once

#include <krmwtarn/platform/common/Export.h>

#include <memory>
#include <stdexcept>
#include <string>
#include <string_view>

namespace krstore {

// What went wrong, as far as a user can act on it.
enum class SqlFault {
    NotARepository,  // the file is no database at all
    Damaged,         // truncated or corrupted
    ReadOnly,        // the file or its directory cannot be written
    Full,            // no room left on the disk (or the size limit)
    Busy,            // another process held the database too long
    CannotOpen,      // missing directory, no permission
    Constraint,      // a row broke a key or a check of the schema
    Other,
};

class KRMWTARN_API SqlError : public std::runtime_error {
public:
    SqlError(SqlFault fault, const std::string& what) : std::runtime_error(what), fault_(fault) {}
    SqlFault fault() const noexcept { return fault_; }

private:
    SqlFault fault_;
};

// A prepared statement; parameters and columns count from 0.
class KRMWTARN_API Statement {
public:
    virtual ~Statement() = default;
    virtual void bindNull(int i) = 0;
    virtual void bindInt(int i, long long value) = 0;
    virtual void bindText(int i, std::string_view value) = 0;
    // Runs to the next row: true while there is one.
    virtual bool step() = 0;
    // Ready for new parameters.
    virtual void reset() = 0;
    virtual bool isNull(int column) = 0;
    virtual long long getInt(int column) = 0;
    // Null for a NULL column; valid until the next step or reset.
    virtual const char* getText(int column) = 0;
};

class KRMWTARN_API Connection {
public:
    virtual ~Connection() = default;
    virtual std::unique_ptr<Statement> prepare(const std::string& sql) = 0;
    virtual void exec(const std::string& sql) = 0;
    // A write transaction that holds the database's write lock from its start.
    virtual void beginWrite() = 0;
    virtual void commit() = 0;
    virtual void rollback() noexcept = 0;
    // The path or URL, for messages.
    virtual const std::string& where() const = 0;
    // Whether the database holds any table yet.
    virtual bool isEmpty() = 0;
    // The schema version recorded in the database (0 for none) and its mark
    // that the database is a repository of this kind.
    virtual int schemaVersion() = 0;
    virtual bool isRepository() = 0;
    virtual void markRepository(int version) = 0;
    // Whether writes are refused (a read-only file).
    virtual bool readOnly() = 0;
    // Limit the database's size in pages (tests of a full disk); 0 leaves it.
    virtual void limitPages(long pages) = 0;
};

// Opens (or, when `create`, makes) an SQLite database file.
KRMWTARN_API std::unique_ptr<Connection> openSqlite(const std::string& path, bool create);

}  // namespace krstore

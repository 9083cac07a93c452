// Sql.h — the database connection the repository is written against: prepared
// statements, rows written in bulk, read and write transactions, the schema
// version, the server session that holds a lock, and failures sorted by what
// they mean to a user. SQLite implements it (SqliteConnection.cpp) and so does
// a PostgreSQL server through libpq (PostgresConnection.cpp).
#pragma once

#include <krmwtarn/platform/common/Export.h>

#include <memory>
#include <stdexcept>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace krstore {

// What went wrong, as far as a user can act on it.
enum class SqlFault {
    NotARepository,  // the file is no database at all
    Damaged,         // truncated or corrupted
    ReadOnly,        // the file or its directory cannot be written, or the server refuses writes
    Full,            // no room left on the disk (or the size limit)
    Busy,            // another process held the database too long, or a deadlock was broken
    CannotOpen,      // missing directory, no permission, no server, no such database
    Duplicate,       // a row's key is taken already
    Constraint,      // a row broke another rule of the schema (a range check)
    Other,
};

// The SQL a database speaks where the two differ (DDL, transactions, identifiers).
enum class Dialect { Sqlite, Postgres };

class KRMWTARN_API SqlError : public std::runtime_error {
public:
    SqlError(SqlFault fault, const std::string& what) : std::runtime_error(what), fault_(fault) {}
    SqlFault fault() const noexcept { return fault_; }

private:
    SqlFault fault_;
};

// Values given to a statement or a row writer; positions count from 0.
class KRMWTARN_API Parameters {
public:
    Parameters() = default;
    Parameters(const Parameters&) = delete;
    Parameters& operator=(const Parameters&) = delete;
    virtual ~Parameters() = default;
    virtual void bindNull(int i) = 0;
    virtual void bindInt(int i, long long value) = 0;
    virtual void bindText(int i, std::string_view value) = 0;
};

// A prepared statement; parameters (written ?) and columns count from 0.
class KRMWTARN_API Statement : public Parameters {
public:
    // Runs to the next row: true while there is one.
    virtual bool step() = 0;
    // Ready for new parameters.
    virtual void reset() = 0;
    virtual bool isNull(int column) = 0;
    virtual long long getInt(int column) = 0;
    // Null for a NULL column; valid until the next step or reset.
    virtual const char* getText(int column) = 0;
};

// Rows into one table: bind a row's values, end the row, and finish when the
// last is written. Rows may be sent in batches, so a refused row may be
// reported by a later endRow or only by finish.
class KRMWTARN_API RowWriter : public Parameters {
public:
    virtual void endRow() = 0;
    virtual void finish() = 0;
    // Whether a failure names the row that caused it (rows sent one by one).
    virtual bool rowByRow() const = 0;
};

class KRMWTARN_API Connection {
public:
    Connection() = default;
    Connection(const Connection&) = delete;
    Connection& operator=(const Connection&) = delete;
    virtual ~Connection() = default;
    virtual Dialect dialect() const = 0;
    virtual std::unique_ptr<Statement> prepare(const std::string& sql) = 0;
    virtual void exec(const std::string& sql) = 0;
    // Runs these bound statements, in one round trip where the database is a
    // server; each then steps through its own rows. (A file's statements run
    // as they are stepped: nothing to do.)
    virtual void fetch(const std::vector<Statement*>& statements) { (void)statements; }
    // Whether the rows of fetched statements arrive while this program works
    // on earlier ones (a server sends them; a file's are read as stepped).
    virtual bool sendsMeanwhile() const noexcept { return false; }
    // While this program works between the rows of fetched statements: takes
    // in what a server has sent so far, so that it goes on sending.
    virtual void poll() noexcept {}
    // Rows into a table (quoted name and columns): a prepared INSERT per row,
    // or, where `bulk` pays and the database has it, its bulk path.
    virtual std::unique_ptr<RowWriter> writeRows(const std::string& table, const std::vector<std::string>& columns,
                                                 bool bulk);
    // A write transaction. Writers of the same unit never interleave: SQLite
    // holds the whole file's write lock from the start; a server takes a lock
    // per unit through serialize().
    virtual void beginWrite() = 0;
    // A read transaction that sees one state of the database throughout.
    virtual void beginRead() = 0;
    virtual void commit() = 0;
    virtual void rollback() noexcept = 0;
    // Makes every other write transaction that serializes on one of these keys
    // wait until this one ends (keys are taken in sorted order, so two writers
    // never wait for each other). Nothing to do where writers wait for the
    // whole database.
    virtual void serialize(std::vector<std::string> keys) { (void)keys; }
    // The path or URL, for messages (a URL without its password).
    virtual const std::string& where() const = 0;
    // Whether the database holds any table yet.
    virtual bool isEmpty() = 0;
    // The schema version recorded in the database (0 for none) and its mark
    // that the database is a repository of this kind.
    virtual int schemaVersion() = 0;
    virtual bool isRepository() = 0;
    virtual void markRepository(int version) = 0;
    // Whether writes are refused (a read-only file or server).
    virtual bool readOnly() = 0;
    // Limit the database's size in pages (tests of a full disk); 0 leaves it.
    virtual void limitPages(long pages) = 0;

    // Locks that end with their session. On a server, a lock of unit `unit`
    // records the session (backend process) that took it, and that session
    // holds a mark the server drops when the session ends, however it ends.
    // Without sessions (an embedded file), session() is 0 and a lock lasts
    // until it is unlocked.
    virtual long session() { return 0; }
    virtual void holdMark(long long unit) { (void)unit; }
    virtual void dropMark(long long unit) { (void)unit; }
    // Whether `session` still holds the mark of `unit`.
    virtual bool holdsMark(long session, long long unit) {
        (void)session;
        (void)unit;
        return true;
    }
};

// The deleter of an owner (std::unique_ptr) of what a C library hands out:
// calls the library's function that releases it.
template <auto Release>
struct Releaser {
    template <class T>
    void operator()(T* p) const noexcept {
        Release(p);
    }
};

// A transaction that rolls back unless committed.
class KRMWTARN_API Transaction {
public:
    Transaction(Connection& db, bool write) : db_(db) {
        if (write)
            db.beginWrite();
        else
            db.beginRead();
    }
    Transaction(const Transaction&) = delete;
    Transaction& operator=(const Transaction&) = delete;
    ~Transaction() {
        if (!done_) db_.rollback();
    }
    void commit() {
        db_.commit();
        done_ = true;
    }

private:
    Connection& db_;
    bool done_ = false;
};

// Statements prepared once each, kept by their SQL, and handed out reset.
class KRMWTARN_API StatementCache {
public:
    explicit StatementCache(Connection& db) : db_(db) {}
    StatementCache(const StatementCache&) = delete;
    StatementCache& operator=(const StatementCache&) = delete;
    Statement& operator()(const std::string& sql);

private:
    Connection& db_;
    std::unordered_map<std::string, std::unique_ptr<Statement>> statements_;
};

// Opens (or, when `create`, makes) an SQLite database file.
KRMWTARN_API std::unique_ptr<Connection> openSqlite(const std::string& path, bool create);

// Connects to a PostgreSQL database given by a postgresql:// (or postgres://) URL.
KRMWTARN_API std::unique_ptr<Connection> openPostgres(const std::string& url);

// Whether a repository location names a PostgreSQL database.
KRMWTARN_API bool isPostgresURL(const std::string& location);

// The URL as messages show it: without its password.
KRMWTARN_API std::string withoutPassword(const std::string& url);

}  // namespace krstore

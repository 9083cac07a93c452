// SqliteConnection.cpp — the repository's embedded default: one SQLite file in
// rollback-journal mode (every store is one atomic transaction; a process killed
// in the middle leaves the journal, which the next opener rolls back). Error
// codes are sorted into the faults of Sql.h.
#include <krmwtarn/store/Sql.h>

#include <sqlite3.h>

#include <memory>

#include <unistd.h>

namespace krstore {
namespace {

// The application id SQLite keeps in the file header: "KRMW".
constexpr int kApplicationId = 0x4b524d57;

SqlFault faultOf(int code) {
    switch (code & 0xff) {
        case SQLITE_NOTADB:
            return SqlFault::NotARepository;
        case SQLITE_CORRUPT:
            return SqlFault::Damaged;
        case SQLITE_READONLY:
            return SqlFault::ReadOnly;
        case SQLITE_FULL:
            return SqlFault::Full;
        case SQLITE_BUSY:
        case SQLITE_LOCKED:
            return SqlFault::Busy;
        case SQLITE_CANTOPEN:
            return SqlFault::CannotOpen;
        case SQLITE_CONSTRAINT:
            return code == SQLITE_CONSTRAINT_PRIMARYKEY || code == SQLITE_CONSTRAINT_UNIQUE ? SqlFault::Duplicate
                                                                                            : SqlFault::Constraint;
        case SQLITE_IOERR:
            // A short read is what a truncated file gives.
            return code == SQLITE_IOERR_SHORT_READ ? SqlFault::Damaged : SqlFault::Other;
        default:
            return SqlFault::Other;
    }
}

// Owners of what SQLite hands out: a prepared statement and a connection.
using StatementHandle = std::unique_ptr<sqlite3_stmt, Releaser<sqlite3_finalize>>;
using DatabaseHandle = std::unique_ptr<sqlite3, Releaser<sqlite3_close_v2>>;

[[noreturn]] void fail(sqlite3* db, int code) {
    const char* text = db ? sqlite3_errmsg(db) : sqlite3_errstr(code);
    throw SqlError(faultOf(code), text ? text : sqlite3_errstr(code));
}

class SqliteStatement final : public Statement {
public:
    SqliteStatement(sqlite3* db, StatementHandle stmt) : db_(db), stmt_(std::move(stmt)) {}

    void bindNull(int i) override { check(sqlite3_bind_null(stmt_.get(), i + 1)); }
    void bindInt(int i, long long value) override { check(sqlite3_bind_int64(stmt_.get(), i + 1, value)); }
    void bindText(int i, std::string_view value) override {
        check(sqlite3_bind_text(stmt_.get(), i + 1, value.data(), static_cast<int>(value.size()), SQLITE_TRANSIENT));
    }
    bool step() override {
        int rc = sqlite3_step(stmt_.get());
        if (rc == SQLITE_ROW) return true;
        if (rc == SQLITE_DONE) return false;
        sqlite3_reset(stmt_.get());
        fail(db_, rc);
    }
    void reset() override {
        sqlite3_reset(stmt_.get());
        sqlite3_clear_bindings(stmt_.get());
    }
    bool isNull(int column) override { return sqlite3_column_type(stmt_.get(), column) == SQLITE_NULL; }
    long long getInt(int column) override { return sqlite3_column_int64(stmt_.get(), column); }
    const char* getText(int column) override {
        return reinterpret_cast<const char*>(sqlite3_column_text(stmt_.get(), column));
    }

private:
    void check(int rc) {
        if (rc != SQLITE_OK) fail(db_, rc);
    }
    sqlite3* db_;
    StatementHandle stmt_;
};

class SqliteConnection final : public Connection {
public:
    // A connection that fails part way is closed by its owner as the
    // constructor throws (SQLite makes one even when the open fails).
    SqliteConnection(const std::string& path, bool create) : path_(path) {
        int flags = SQLITE_OPEN_READWRITE | (create ? SQLITE_OPEN_CREATE : 0) | SQLITE_OPEN_NOMUTEX;
        sqlite3* opened = nullptr;
        int rc = sqlite3_open_v2(path.c_str(), &opened, flags, nullptr);
        db_.reset(opened);
        if (rc != SQLITE_OK) throw SqlError(faultOf(rc), db_.get() ? sqlite3_errmsg(db_.get()) : sqlite3_errstr(rc));
        sqlite3_extended_result_codes(db_.get(), 1);
        // Writers wait for each other instead of failing at once.
        sqlite3_busy_timeout(db_.get(), 10000);
        // The first read of the header tells a file that is no database.
        exec("PRAGMA foreign_keys = ON");
        exec("SELECT count(*) FROM sqlite_schema");
    }

    Dialect dialect() const override { return Dialect::Sqlite; }
    std::unique_ptr<Statement> prepare(const std::string& sql) override {
        sqlite3_stmt* made = nullptr;
        int rc = sqlite3_prepare_v3(db_.get(), sql.c_str(), static_cast<int>(sql.size()), SQLITE_PREPARE_PERSISTENT,
                                    &made, nullptr);
        StatementHandle stmt(made);
        if (rc != SQLITE_OK) fail(db_.get(), rc);
        return std::make_unique<SqliteStatement>(db_.get(), std::move(stmt));
    }
    void exec(const std::string& sql) override {
        int rc = sqlite3_exec(db_.get(), sql.c_str(), nullptr, nullptr, nullptr);
        if (rc != SQLITE_OK) fail(db_.get(), rc);
    }
    void beginWrite() override { exec("BEGIN IMMEDIATE"); }
    void beginRead() override { exec("BEGIN"); }
    void commit() override { exec("COMMIT"); }
    void rollback() noexcept override {
        if (!sqlite3_get_autocommit(db_.get())) sqlite3_exec(db_.get(), "ROLLBACK", nullptr, nullptr, nullptr);
    }
    const std::string& where() const override { return path_; }
    bool isEmpty() override { return intOf("SELECT count(*) FROM sqlite_schema") == 0; }
    int schemaVersion() override { return static_cast<int>(intOf("PRAGMA user_version")); }
    bool isRepository() override { return intOf("PRAGMA application_id") == kApplicationId; }
    void markRepository(int version) override {
        exec("PRAGMA application_id = " + std::to_string(kApplicationId));
        exec("PRAGMA user_version = " + std::to_string(version));
    }
    bool readOnly() override { return sqlite3_db_readonly(db_.get(), "main") == 1 || access(path_.c_str(), W_OK) != 0; }
    void limitPages(long pages) override {
        if (pages > 0) exec("PRAGMA max_page_count = " + std::to_string(pages));
    }

private:
    long long intOf(const char* sql) {
        auto s = prepare(sql);
        return s->step() ? s->getInt(0) : 0;
    }
    std::string path_;
    DatabaseHandle db_;
};

}  // namespace

std::unique_ptr<Connection> openSqlite(const std::string& path, bool create) {
    return std::make_unique<SqliteConnection>(path, create);
}

}  // namespace krstore

// PostgresConnection.cpp — the repository on a PostgreSQL server, through libpq:
// statements prepared on the server (? becomes $n), rows written with COPY,
// snapshot reads, writers of the same unit serialized by transaction-level
// advisory locks, and unit locks tied to the server session that took them
// (a session-level advisory lock as the mark, dropped by the server when the
// session ends). SQLSTATEs are sorted into the faults of Sql.h.
#include <libpq-fe.h>

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <deque>
#include <memory>

#include <krmwtarn/store/Sql.h>
#include <krmwtarn/store/UnitsTable.h>

namespace krstore {

bool isPostgresURL(const std::string& location) {
    return location.rfind("postgresql://", 0) == 0 || location.rfind("postgres://", 0) == 0;
}

std::string withoutPassword(const std::string& url) {
    std::string out = url;
    std::size_t scheme = out.find("://");
    if (scheme == std::string::npos) return out;
    std::size_t start = scheme + 3;
    std::size_t end = out.find_first_of("/?", start);
    if (end == std::string::npos) end = out.size();
    std::size_t at = out.rfind('@', end);
    if (at != std::string::npos && at >= start) {
        std::size_t colon = out.find(':', start);
        if (colon != std::string::npos && colon < at) out.erase(colon, at - colon);
    }
    // A password given as a parameter goes too.
    std::size_t query = out.find('?');
    for (std::size_t p = query; p != std::string::npos && p < out.size();) {
        std::size_t next = out.find('&', p + 1);
        std::string_view param(out.data() + p + 1, (next == std::string::npos ? out.size() : next) - p - 1);
        if (param.rfind("password=", 0) == 0) {
            out.erase(p + 1, param.size() + (next == std::string::npos ? 0 : 1));
            if (p + 1 >= out.size()) out.erase(p);  // nothing left behind the separator
            continue;
        }
        p = next;
    }
    return out;
}

namespace {

// Owners of what libpq hands out: a result, a connection, memory it allocated.
using Result = std::unique_ptr<PGresult, Releaser<PQclear>>;
using ConnectionHandle = std::unique_ptr<PGconn, Releaser<PQfinish>>;
using Literal = std::unique_ptr<char, Releaser<PQfreemem>>;

// The next result of what was sent (null once they are all taken).
Result nextResult(PGconn* conn) { return Result(PQgetResult(conn)); }

// Runs a statement whose outcome does not matter (what is left to do as a
// connection or a transaction ends).
void runQuietly(PGconn* conn, const char* sql) noexcept { Result(PQexec(conn, sql)); }

SqlFault faultOf(const char* state) {
    if (!state) return SqlFault::Other;
    std::string_view s(state);
    if (s == "23505") return SqlFault::Duplicate;
    if (s.substr(0, 2) == "23") return SqlFault::Constraint;
    if (s == "25006" || s == "42501") return SqlFault::ReadOnly;
    if (s == "53100") return SqlFault::Full;
    if (s == "40P01" || s == "40001" || s == "55P03" || s == "57014") return SqlFault::Busy;
    if (s == "XX001" || s == "XX002") return SqlFault::Damaged;
    if (s.substr(0, 2) == "08" || s.substr(0, 2) == "28" || s == "3D000" || s == "3F000" || s == "57P03")
        return SqlFault::CannotOpen;
    return SqlFault::Other;
}

// libpq's messages end in a newline and may span lines (a hint on an
// indented line): one line for ours, its parts joined by "; ".
std::string oneLine(const char* text) {
    std::string out;
    bool broken = false;
    for (const char* p = text ? text : ""; *p; ++p) {
        if (*p == '\n') {
            broken = true;
        } else if (broken && (*p == '\t' || *p == ' ')) {
            continue;
        } else {
            if (broken && !out.empty()) out += "; ";
            broken = false;
            out += *p;
        }
    }
    return out.empty() ? "the server gave no reason" : out;
}

// The failure a result tells (or, without one, the connection).
[[noreturn]] void fail(PGconn* conn, const PGresult* result = nullptr) {
    const char* state = result ? PQresultErrorField(result, PG_DIAG_SQLSTATE) : nullptr;
    const char* primary = result ? PQresultErrorField(result, PG_DIAG_MESSAGE_PRIMARY) : nullptr;
    throw SqlError(faultOf(state), oneLine(primary ? primary : PQerrorMessage(conn)));
}

// Runs a statement whose result is no rows or rows it does not need.
void run(PGconn* conn, const char* sql) {
    Result r(PQexec(conn, sql));
    ExecStatusType st = PQresultStatus(r.get());
    if (st != PGRES_COMMAND_OK && st != PGRES_TUPLES_OK) fail(conn, r.get());
}

// The statement with its ? placeholders numbered as the server takes them
// ($1, $2, ...), outside quoted strings and names; answers their count.
int numbered(const std::string& sql, std::string& out) {
    int n = 0;
    char quote = 0;
    out.reserve(sql.size() + 16);
    for (char c : sql) {
        if (quote) {
            if (c == quote) quote = 0;
            out += c;
        } else if (c == '\'' || c == '"') {
            quote = c;
            out += c;
        } else if (c == '?') {
            out += '$';
            out += std::to_string(++n);
        } else {
            out += c;
        }
    }
    return n;
}

class PgStatement;

// Statements sent together, in one round trip, whose results are taken in
// order as each is first stepped: this program reads one table's rows while
// the server sends the next. Anything else said on the connection first takes
// what is still to come.
class Pipeline {
public:
    explicit Pipeline(PGconn* conn) : conn_(conn) {}
    Pipeline(const Pipeline&) = delete;
    Pipeline& operator=(const Pipeline&) = delete;
    void start(const std::vector<Statement*>& statements);
    // Takes results up to and including this statement's.
    void receive(PgStatement* statement);
    // Takes every result still to come (each kept by its statement).
    void settle() noexcept;
    // Reads what the server has sent so far into the connection's buffer,
    // without waiting: while this program builds from one result, the server
    // goes on writing the next ones instead of stopping at a full socket.
    void drain() noexcept {
        if (open_) PQconsumeInput(conn_);
    }

private:
    Result next();
    // Takes the next result into the statement it belongs to; answers that statement.
    PgStatement* takeNext();
    void close() noexcept;
    PGconn* conn_;
    std::deque<PgStatement*> queue_;
    bool open_ = false;
};

// A statement runs unnamed the first time and is prepared on the server when
// it runs again, so statements run once cost one round trip.
class PgStatement final : public Statement {
public:
    PgStatement(PGconn* conn, Pipeline& pipeline, std::string sql, std::string name, int params)
        : conn_(conn),
          pipeline_(pipeline),
          sql_(std::move(sql)),
          name_(std::move(name)),
          values_(static_cast<std::size_t>(params)),
          null_(static_cast<std::size_t>(params), true) {}
    ~PgStatement() override {
        if (awaiting_) pipeline_.settle();
    }

    void bindNull(int i) override { null_.at(static_cast<std::size_t>(i)) = true; }
    void bindInt(int i, long long value) override { bindText(i, std::to_string(value)); }
    void bindText(int i, std::string_view value) override {
        values_.at(static_cast<std::size_t>(i)).assign(value);
        null_[static_cast<std::size_t>(i)] = false;
    }
    bool step() override {
        if (awaiting_) {
            pipeline_.receive(this);
        } else if (!result_) {
            pipeline_.settle();
            std::vector<const char*> params = parameters();
            int n = static_cast<int>(params.size());
            if (!prepared_ && runs_ > 0) {
                Result r(PQprepare(conn_, name_.c_str(), sql_.c_str(), n, nullptr));
                if (PQresultStatus(r.get()) != PGRES_COMMAND_OK) fail(conn_, r.get());
                prepared_ = true;
            }
            ++runs_;
            take(Result(prepared_ ? PQexecPrepared(conn_, name_.c_str(), n, params.data(), nullptr, nullptr, 0)
                                  : PQexecParams(conn_, sql_.c_str(), n, nullptr, params.data(), nullptr, nullptr, 0)));
        } else if (started_) {
            ++row_;
            if ((row_ & 1023) == 0) pipeline_.drain();
        }
        started_ = true;
        return row_ < rows_;
    }
    // Sends the statement in a pipeline; its result comes later to take().
    bool send() {
        std::vector<const char*> params = parameters();
        int n = static_cast<int>(params.size());
        ++runs_;
        awaiting_ = true;
        return (prepared_
                    ? PQsendQueryPrepared(conn_, name_.c_str(), n, params.data(), nullptr, nullptr, 0)
                    : PQsendQueryParams(conn_, sql_.c_str(), n, nullptr, params.data(), nullptr, nullptr, 0)) == 1;
    }
    // The statement's result: its rows are stepped through from the first.
    void take(Result r) {
        awaiting_ = false;
        ExecStatusType st = PQresultStatus(r.get());
        if (st != PGRES_TUPLES_OK && st != PGRES_COMMAND_OK) fail(conn_, r.get());
        rows_ = st == PGRES_TUPLES_OK ? PQntuples(r.get()) : 0;
        result_ = std::move(r);
        row_ = 0;
        started_ = false;
    }
    void reset() override {
        if (awaiting_) pipeline_.settle();
        result_.reset();
        rows_ = row_ = 0;
        std::fill(null_.begin(), null_.end(), true);
    }
    bool isNull(int column) override { return !result_ || PQgetisnull(result_.get(), row_, column); }
    long long getInt(int column) override {
        return isNull(column) ? 0 : std::strtoll(PQgetvalue(result_.get(), row_, column), nullptr, 10);
    }
    const char* getText(int column) override {
        return isNull(column) ? nullptr : PQgetvalue(result_.get(), row_, column);
    }

private:
    std::vector<const char*> parameters() const {
        std::vector<const char*> params(values_.size());
        for (std::size_t i = 0; i < values_.size(); ++i) params[i] = null_[i] ? nullptr : values_[i].c_str();
        return params;
    }
    PGconn* conn_;
    Pipeline& pipeline_;
    std::string sql_, name_;
    std::vector<std::string> values_;
    std::vector<bool> null_;
    Result result_;
    int rows_ = 0, row_ = 0;
    long runs_ = 0;
    bool prepared_ = false;
    bool started_ = false;   // the first step was taken on the result
    bool awaiting_ = false;  // sent in a pipeline, its result not taken yet
};

void Pipeline::start(const std::vector<Statement*>& statements) {
    settle();
    if (PQenterPipelineMode(conn_) != 1) fail(conn_);
    open_ = true;
    for (Statement* s : statements) {
        auto* p = static_cast<PgStatement*>(s);
        queue_.push_back(p);
        if (!p->send()) {
            settle();
            fail(conn_);
        }
    }
    if (PQpipelineSync(conn_) != 1) {
        settle();
        fail(conn_);
    }
}

Result Pipeline::next() {
    queue_.pop_front();
    Result r = nextResult(conn_);
    // The end of this statement's results.
    while (nextResult(conn_)) {
    }
    if (queue_.empty()) close();
    return r;
}

PgStatement* Pipeline::takeNext() {
    PgStatement* p = queue_.front();
    p->take(next());
    return p;
}

void Pipeline::receive(PgStatement* statement) {
    while (!queue_.empty()) {
        PgStatement* p = nullptr;
        try {
            p = takeNext();
        } catch (...) {
            settle();
            throw;
        }
        if (p == statement) return;
    }
}

void Pipeline::settle() noexcept {
    while (!queue_.empty()) {
        try {
            takeNext();
        } catch (...) {
            // A failure is told by the statement that was stepped.
        }
    }
    close();
}

void Pipeline::close() noexcept {
    if (!open_) return;
    open_ = false;
    while (Result r = nextResult(conn_))
        if (PQresultStatus(r.get()) == PGRES_PIPELINE_SYNC) break;
    PQexitPipelineMode(conn_);
}

// Rows through COPY ... FROM STDIN in its text format, sent in batches of
// about 256 kB; the server reports a refused row when the copy ends.
class CopyWriter final : public RowWriter {
public:
    CopyWriter(PGconn* conn, const std::string& table, const std::vector<std::string>& columns)
        : conn_(conn), fields_(columns.size()), null_(columns.size(), true) {
        std::string names;
        for (const std::string& c : columns) names += (names.empty() ? "" : ", ") + c;
        Result r(PQexec(conn_, ("COPY " + table + " (" + names + ") FROM STDIN").c_str()));
        if (PQresultStatus(r.get()) != PGRES_COPY_IN) fail(conn_, r.get());
        open_ = true;
        buffer_.reserve(kBatch + 4096);
    }
    ~CopyWriter() override {
        if (!open_) return;
        // Abandoned (an exception on the way): the server drops what it took.
        PQputCopyEnd(conn_, "abandoned");
        while (nextResult(conn_)) {
        }
    }
    void bindNull(int i) override { null_.at(static_cast<std::size_t>(i)) = true; }
    void bindInt(int i, long long value) override { bindText(i, std::to_string(value)); }
    void bindText(int i, std::string_view value) override {
        std::string& f = fields_.at(static_cast<std::size_t>(i));
        f.clear();
        for (char c : value) {
            switch (c) {
                case '\\':
                    f += "\\\\";
                    break;
                case '\t':
                    f += "\\t";
                    break;
                case '\n':
                    f += "\\n";
                    break;
                case '\r':
                    f += "\\r";
                    break;
                default:
                    f += c;
            }
        }
        null_[static_cast<std::size_t>(i)] = false;
    }
    void endRow() override {
        for (std::size_t i = 0; i < fields_.size(); ++i) {
            if (i) buffer_ += '\t';
            if (null_[i])
                buffer_ += "\\N";
            else
                buffer_ += fields_[i];
            null_[i] = true;
        }
        buffer_ += '\n';
        if (buffer_.size() >= kBatch) send();
    }
    void finish() override {
        send();
        open_ = false;
        if (PQputCopyEnd(conn_, nullptr) != 1) fail(conn_);
        // The first failure is told, once every result is taken.
        Result failed;
        while (Result r = nextResult(conn_))
            if (PQresultStatus(r.get()) != PGRES_COMMAND_OK && !failed) failed = std::move(r);
        if (failed) fail(conn_, failed.get());
    }
    bool rowByRow() const override { return false; }

private:
    static constexpr std::size_t kBatch = 256 * 1024;
    void send() {
        if (buffer_.empty()) return;
        if (PQputCopyData(conn_, buffer_.data(), static_cast<int>(buffer_.size())) != 1) fail(conn_);
        buffer_.clear();
    }
    PGconn* conn_;
    std::vector<std::string> fields_;
    std::vector<bool> null_;
    std::string buffer_;
    bool open_ = false;
};

void quiet(void*, const char*) {}

class PgConnection final : public Connection {
public:
    // A connection that fails part way is closed by its owner as the
    // constructor throws.
    explicit PgConnection(const std::string& url)
        : owner_(PQconnectdb(url.c_str())), conn_(owner_.get()), pipeline_(conn_), where_(withoutPassword(url)) {
        if (!conn_ || PQstatus(conn_) != CONNECTION_OK)
            throw SqlError(SqlFault::CannotOpen, oneLine(conn_ ? PQerrorMessage(conn_) : "out of memory"));
        // Notices (a table that exists already, ...) are no news to a user.
        PQsetNoticeProcessor(conn_, quiet, nullptr);
        // A writer waits for another writer of the same unit, but not forever.
        run(conn_, "SET lock_timeout = '60s'");
        auto s = prepare("SELECT pg_is_in_recovery() OR current_setting('transaction_read_only') = 'on'");
        readOnly_ = s->step() && s->getText(0) && *s->getText(0) == 't';
    }
    ~PgConnection() override {
        pipeline_.settle();
        // The marks go now rather than when the server has ended the session
        // (which it does a moment after the connection closes).
        if (marked_) runQuietly(conn_, "SELECT pg_advisory_unlock_all()");
        statements_.clear();
    }

    Dialect dialect() const override { return Dialect::Postgres; }
    std::unique_ptr<Statement> prepare(const std::string& sql) override {
        std::string text;
        int params = numbered(sql, text);
        std::string name = std::to_string(++prepared_);
        name.insert(name.begin(), 'k');
        return std::make_unique<PgStatement>(conn_, pipeline_, std::move(text), std::move(name), params);
    }
    void exec(const std::string& sql) override {
        pipeline_.settle();
        run(conn_, sql.c_str());
    }
    void fetch(const std::vector<Statement*>& statements) override {
        if (statements.size() > 1) pipeline_.start(statements);  // one statement runs at its first step
    }
    bool sendsMeanwhile() const noexcept override { return true; }
    void poll() noexcept override { pipeline_.drain(); }
    std::unique_ptr<RowWriter> writeRows(const std::string& table, const std::vector<std::string>& columns,
                                         bool bulk) override {
        if (!bulk) return Connection::writeRows(table, columns, false);
        pipeline_.settle();
        return std::make_unique<CopyWriter>(conn_, table, columns);
    }
    void beginWrite() override { exec("BEGIN"); }
    void beginRead() override { exec("BEGIN ISOLATION LEVEL REPEATABLE READ READ ONLY"); }
    void commit() override { exec("COMMIT"); }
    void rollback() noexcept override {
        pipeline_.settle();
        PGTransactionStatusType st = PQtransactionStatus(conn_);
        if (st == PQTRANS_INTRANS || st == PQTRANS_INERROR) runQuietly(conn_, "ROLLBACK");
    }
    void serialize(std::vector<std::string> keys) override {
        std::sort(keys.begin(), keys.end());
        keys.erase(std::unique(keys.begin(), keys.end()), keys.end());
        // One round trip: the locks are taken in the order of the statements.
        std::string sql;
        for (const std::string& k : keys) {
            Literal literal(PQescapeLiteral(conn_, k.data(), k.size()));
            if (!literal) fail(conn_);
            sql += std::string("SELECT pg_advisory_xact_lock(hashtextextended(") + literal.get() + ", 0));";
        }
        if (!sql.empty()) exec(sql);
    }
    const std::string& where() const override { return where_; }
    bool isEmpty() override {
        return intOf(
                   "SELECT count(*) FROM pg_class c JOIN pg_namespace n ON n.oid = c.relnamespace"
                   " WHERE n.nspname = current_schema() AND c.relkind IN ('r', 'p', 'v', 'm', 'f')") == 0;
    }
    int schemaVersion() override {
        if (!hasMeta()) return 0;
        return static_cast<int>(intOf("SELECT value::integer FROM repository_meta WHERE key = 'schema_version'"));
    }
    bool isRepository() override {
        return hasMeta() &&
               intOf("SELECT count(*) FROM repository_meta WHERE key = 'application' AND value = 'KRMWTARN'") == 1;
    }
    void markRepository(int version) override {
        exec("INSERT INTO repository_meta VALUES ('application', 'KRMWTARN'), ('schema_version', '" +
             std::to_string(version) + "')");
    }
    bool readOnly() override { return readOnly_; }
    void limitPages(long) override {}

    long session() override { return PQbackendPID(conn_); }
    void holdMark(long long unit) override {
        markCall("SELECT pg_advisory_lock_shared(?::integer, ?::integer)", unit);
        marked_ = true;
    }
    void dropMark(long long unit) override {
        markCall("SELECT pg_advisory_unlock_shared(?::integer, ?::integer)", unit);
    }
    bool holdsMark(long session, long long unit) override {
        auto& s = cached(
            "SELECT count(*) FROM pg_locks WHERE locktype = 'advisory' AND database ="
            " (SELECT oid FROM pg_database WHERE datname = current_database())"
            " AND classid = ?::bigint::oid AND objid = ?::bigint::oid AND objsubid = 2 AND pid = ?::integer AND "
            "granted");
        s.bindInt(0, markSpace());
        s.bindInt(1, unit);
        s.bindInt(2, session);
        bool held = s.step() && s.getInt(0) > 0;
        s.reset();
        return held;
    }

private:
    long long intOf(const char* sql) {
        auto s = prepare(sql);
        return s->step() ? s->getInt(0) : 0;
    }
    bool hasMeta() { return intOf("SELECT count(*) FROM pg_class WHERE oid = to_regclass('repository_meta')") == 1; }
    Statement& cached(const char* sql) {
        auto it = std::find_if(statements_.begin(), statements_.end(),
                               [&](const auto& p) { return std::strcmp(p.first, sql) == 0; });
        if (it != statements_.end()) return *it->second;
        statements_.emplace_back(sql, prepare(sql));
        return *statements_.back().second;
    }
    // The first key of a unit's mark: the unit table's own object number, so
    // repositories in several schemas of one database keep their marks apart.
    long long markSpace() {
        if (markSpace_ < 0)
            markSpace_ =
                intOf(("SELECT '" + std::string(UnitsTable::kName) + "'::regclass::oid::bigint % 2147483648").c_str());
        return markSpace_;
    }
    void markCall(const char* sql, long long unit) {
        auto& s = cached(sql);
        s.bindInt(0, markSpace());
        s.bindInt(1, unit);
        s.step();
        s.reset();
    }
    // Declared first, closed last: the statements and the pipeline use it to the end.
    ConnectionHandle owner_;
    PGconn* conn_;
    Pipeline pipeline_;
    std::string where_;
    bool readOnly_ = false;
    long prepared_ = 0;
    long long markSpace_ = -1;
    bool marked_ = false;  // this session took a mark
    std::vector<std::pair<const char*, std::unique_ptr<Statement>>> statements_;
};

}  // namespace

std::unique_ptr<Connection> openPostgres(const std::string& url) { return std::make_unique<PgConnection>(url); }

}  // namespace krstore

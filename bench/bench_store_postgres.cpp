// bench_store_postgres.cpp — the repository on a PostgreSQL server: storing and
// retrieving the largest model (46,257 objects, 89,009 links, 2,502 units),
// each against a baseline in the same run on the same server and schema: the
// same rows sent with one plain COPY per table in one transaction, and the
// same rows read with one plain SELECT per table. The server is the one named
// by KRMWTARN_TEST_PG (scripts/bench.sh starts one with scripts/with-postgres.sh).
#include <benchmark/benchmark.h>
#include <libpq-fe.h>

#include <cstdlib>
#include <string>
#include <vector>

#include <krmwtarn/store/Repository.h>
#include <krmwtarn/store/Schema.h>
#include "bench/TimedStores.h"
#include "tests/store/LargestModel.h"

namespace {

const char* server() {
    const char* url = std::getenv("KRMWTARN_TEST_PG");
    return url && *url ? url : nullptr;
}

std::string inSchema(const std::string& schema) {
    std::string url = server();
    return url + (url.find('?') == std::string::npos ? "?" : "&") + "options=-csearch_path%3D" + schema;
}

void run(PGconn* conn, const std::string& sql) {
    PGresult* r = PQexec(conn, sql.c_str());
    PQclear(r);
}

// A fresh schema with the repository's tables and nothing stored.
void freshRepository(const std::string& schema) {
    PGconn* conn = PQconnectdb(server());
    run(conn,
        "SET client_min_messages = warning; DROP SCHEMA IF EXISTS " + schema + " CASCADE; CREATE SCHEMA " + schema);
    PQfinish(conn);
    krstore::Repository::open(inSchema(schema));
}

// The largest model stored once, as the retrieve benchmarks read it.
const std::string& storedModel() {
    static const std::string schema = [] {
        std::string s = "bench_stored";
        freshRepository(s);
        storetest::buildLargest();
        krstore::Repository::open(inSchema(s))->storeAll();
        DSRegistrar::releaseAll();
        return s;
    }();
    return schema;
}

struct TableRows {
    std::string copy;                            // COPY name (columns) FROM STDIN
    std::vector<std::vector<const char*>> rows;  // values as text, null for NULL
    PGresult* result = nullptr;                  // owns the values
};

// Every row of the stored model, table by table (units first), read back from the server.
const std::vector<TableRows>& modelRows() {
    static const std::vector<TableRows> all = [] {
        std::vector<TableRows> tables;
        PGconn* conn = PQconnectdb(inSchema(storedModel()).c_str());
        std::vector<std::string> names{"units"};
        for (const krstore::Table& t : krstore::Schema::current(krstore::Dialect::Postgres).tables())
            names.push_back(t.name);
        for (const std::string& name : names) {
            TableRows t;
            t.result = PQexec(conn, ("SELECT * FROM " + name).c_str());
            int columns = PQnfields(t.result);
            std::string list;
            for (int c = 0; c < columns; ++c) list += (c ? ", " : "") + std::string(PQfname(t.result, c));
            t.copy = "COPY " + name + " (" + list + ") FROM STDIN";
            for (int r = 0; r < PQntuples(t.result); ++r) {
                std::vector<const char*> row;
                for (int c = 0; c < columns; ++c)
                    row.push_back(PQgetisnull(t.result, r, c) ? nullptr : PQgetvalue(t.result, r, c));
                t.rows.push_back(std::move(row));
            }
            if (t.rows.empty())
                PQclear(t.result);
            else
                tables.push_back(std::move(t));
        }
        PQfinish(conn);
        return tables;
    }();
    return all;
}

bool haveServer(benchmark::State& state) {
    if (server()) return true;
    state.SkipWithError("no PostgreSQL server: KRMWTARN_TEST_PG is not set (scripts/bench.sh starts one)");
    for (auto _ : state) {
    }
    return false;
}

void StorePostgres(benchmark::State& state) {
    if (!haveServer(state)) return;
    timedStores(state, inSchema("bench_store"), [] {
        freshRepository("bench_store");
        storetest::buildLargest();
    });
    counters(state);
}
BENCHMARK(StorePostgres)->Unit(benchmark::kMillisecond)->Iterations(3);

// The same rows in COPY's text format, one COPY per table, one transaction.
void StorePostgres_Baseline(benchmark::State& state) {
    if (!haveServer(state)) return;
    const std::vector<TableRows>& tables = modelRows();
    for (auto _ : state) {
        state.PauseTiming();
        freshRepository("bench_store");
        PGconn* conn = PQconnectdb(inSchema("bench_store").c_str());
        state.ResumeTiming();
        run(conn, "BEGIN");
        std::string buffer;
        for (const TableRows& t : tables) {
            run(conn, t.copy);
            for (const auto& row : t.rows) {
                for (std::size_t c = 0; c < row.size(); ++c) {
                    if (c) buffer += '\t';
                    if (!row[c]) {
                        buffer += "\\N";
                        continue;
                    }
                    for (const char* p = row[c]; *p; ++p) {
                        switch (*p) {
                            case '\\':
                                buffer += "\\\\";
                                break;
                            case '\t':
                                buffer += "\\t";
                                break;
                            case '\n':
                                buffer += "\\n";
                                break;
                            case '\r':
                                buffer += "\\r";
                                break;
                            default:
                                buffer += *p;
                        }
                    }
                }
                buffer += '\n';
                if (buffer.size() >= 256 * 1024) {
                    PQputCopyData(conn, buffer.data(), static_cast<int>(buffer.size()));
                    buffer.clear();
                }
            }
            if (!buffer.empty()) PQputCopyData(conn, buffer.data(), static_cast<int>(buffer.size()));
            buffer.clear();
            PQputCopyEnd(conn, nullptr);
            while (PGresult* r = PQgetResult(conn)) {
                if (PQresultStatus(r) != PGRES_COMMAND_OK) state.SkipWithError(PQresultErrorMessage(r));
                PQclear(r);
            }
        }
        run(conn, "COMMIT");
        state.PauseTiming();
        PQfinish(conn);
        state.ResumeTiming();
    }
    counters(state);
}
BENCHMARK(StorePostgres_Baseline)->Unit(benchmark::kMillisecond)->Iterations(3);

void RetrievePostgres(benchmark::State& state) {
    if (!haveServer(state)) return;
    timedRetrieves(state, inSchema(storedModel()), static_cast<std::size_t>(kObjects + kLinks));
    counters(state);
}
BENCHMARK(RetrievePostgres)->Unit(benchmark::kMillisecond)->Iterations(3);

// The same rows with one plain SELECT per table, in one snapshot, every value read.
void RetrievePostgres_Baseline(benchmark::State& state) {
    if (!haveServer(state)) return;
    std::string url = inSchema(storedModel());
    const auto& tables = krstore::Schema::current(krstore::Dialect::Postgres).tables();
    for (auto _ : state) {
        PGconn* conn = PQconnectdb(url.c_str());
        long long rows = 0, bytes = 0;
        run(conn, "BEGIN ISOLATION LEVEL REPEATABLE READ READ ONLY");
        for (const krstore::Table& t : tables) {
            PGresult* r = PQexec(conn, t.selectAll.c_str());
            int n = PQntuples(r), columns = PQnfields(r);
            for (int i = 0; i < n; ++i, ++rows)
                for (int c = 0; c < columns; ++c) bytes += PQgetlength(r, i, c) + *PQgetvalue(r, i, c);
            PQclear(r);
        }
        run(conn, "COMMIT");
        PQfinish(conn);
        benchmark::DoNotOptimize(bytes);
        if (rows != kObjects + kLinks) state.SkipWithError("not every row was read");
    }
    counters(state);
}
BENCHMARK(RetrievePostgres_Baseline)->Unit(benchmark::kMillisecond)->Iterations(3);

}  // namespace

// bench_store.cpp — the repository on its embedded default (SQLite): storing
// and retrieving the largest model (46,257 objects, 89,009 links, 2,502 units),
// each against a baseline in the same run on the same schema and settings:
// the same rows inserted with one prepared statement per table in one
// transaction, and the same rows read with one plain SELECT per table.
#include <krmwtarn/store/Repository.h>
#include <krmwtarn/store/Schema.h>
#include "bench/TimedStores.h"
#include "tests/store/LargestModel.h"

#include <benchmark/benchmark.h>
#include <sqlite3.h>

#include <cstdio>
#include <string>
#include <variant>
#include <vector>

namespace {

std::string scratch(const char* name) {
    return (std::string(std::getenv("TMPDIR") ? std::getenv("TMPDIR") : "/tmp") + "/krmwtarn_bench_" + name + "_" +
            std::to_string(getpid()) + ".db");
}

void removeFile(const std::string& path) {
    std::remove(path.c_str());
    std::remove((path + "-journal").c_str());
}

// A fresh repository file with the schema and nothing stored.
void freshRepository(const std::string& path) {
    removeFile(path);
    krstore::Repository::open(path);
}

// The largest model stored once, as the retrieve benchmarks read it.
const std::string& storedModel() {
    static const std::string path = [] {
        std::string p = scratch("stored");
        freshRepository(p);
        storetest::buildLargest();
        krstore::Repository::open(p)->storeAll();
        DSRegistrar::releaseAll();
        return p;
    }();
    return path;
}

using Value = std::variant<std::monostate, long long, std::string>;
struct TableRows {
    std::string insert;
    std::vector<std::vector<Value>> rows;
};

// Every row of the stored model, table by table (units first), read back from its file.
const std::vector<TableRows>& modelRows() {
    static const std::vector<TableRows> all = [] {
        std::vector<TableRows> tables;
        sqlite3* db = nullptr;
        sqlite3_open(storedModel().c_str(), &db);
        std::vector<std::string> names{"units"};
        for (const krstore::Table& t : krstore::Schema::current().tables()) names.push_back(t.className);
        for (const std::string& name : names) {
            TableRows t;
            sqlite3_stmt* s = nullptr;
            sqlite3_prepare_v2(db, ("SELECT * FROM \"" + name + "\"").c_str(), -1, &s, nullptr);
            int columns = sqlite3_column_count(s);
            std::string params;
            for (int c = 0; c < columns; ++c) params += c ? ", ?" : "?";
            t.insert = "INSERT INTO \"" + name + "\" VALUES (" + params + ")";
            while (sqlite3_step(s) == SQLITE_ROW) {
                std::vector<Value> row;
                for (int c = 0; c < columns; ++c) {
                    switch (sqlite3_column_type(s, c)) {
                        case SQLITE_NULL:
                            row.emplace_back();
                            break;
                        case SQLITE_INTEGER:
                            row.emplace_back(sqlite3_column_int64(s, c));
                            break;
                        default:
                            row.emplace_back(std::string(reinterpret_cast<const char*>(sqlite3_column_text(s, c))));
                    }
                }
                t.rows.push_back(std::move(row));
            }
            sqlite3_finalize(s);
            if (!t.rows.empty()) tables.push_back(std::move(t));
        }
        sqlite3_close(db);
        return tables;
    }();
    return all;
}

void StoreLargestModel(benchmark::State& state) {
    std::string path = scratch("store");
    timedStores(state, path, [&] {
        freshRepository(path);
        storetest::buildLargest();
    });
    removeFile(path);
    counters(state);
}
BENCHMARK(StoreLargestModel)->Unit(benchmark::kMillisecond)->Iterations(3);

void StoreLargestModel_Baseline(benchmark::State& state) {
    std::string path = scratch("store_baseline");
    const std::vector<TableRows>& tables = modelRows();
    for (auto _ : state) {
        state.PauseTiming();
        freshRepository(path);
        sqlite3* db = nullptr;
        sqlite3_open(path.c_str(), &db);
        sqlite3_exec(db, "PRAGMA foreign_keys = ON", nullptr, nullptr, nullptr);
        state.ResumeTiming();
        sqlite3_exec(db, "BEGIN IMMEDIATE", nullptr, nullptr, nullptr);
        for (const TableRows& t : tables) {
            sqlite3_stmt* s = nullptr;
            sqlite3_prepare_v2(db, t.insert.c_str(), -1, &s, nullptr);
            for (const auto& row : t.rows) {
                for (size_t c = 0; c < row.size(); ++c) {
                    int i = static_cast<int>(c) + 1;
                    if (const auto* n = std::get_if<long long>(&row[c]))
                        sqlite3_bind_int64(s, i, *n);
                    else if (const auto* text = std::get_if<std::string>(&row[c]))
                        sqlite3_bind_text(s, i, text->data(), static_cast<int>(text->size()), SQLITE_TRANSIENT);
                    else
                        sqlite3_bind_null(s, i);
                }
                sqlite3_step(s);
                sqlite3_reset(s);
            }
            sqlite3_finalize(s);
        }
        sqlite3_exec(db, "COMMIT", nullptr, nullptr, nullptr);
        state.PauseTiming();
        sqlite3_close(db);
        state.ResumeTiming();
    }
    removeFile(path);
    counters(state);
}
BENCHMARK(StoreLargestModel_Baseline)->Unit(benchmark::kMillisecond)->Iterations(3);

void RetrieveLargestModel(benchmark::State& state) {
    timedRetrieves(state, storedModel(), static_cast<std::size_t>(kObjects + kLinks));
    counters(state);
}
BENCHMARK(RetrieveLargestModel)->Unit(benchmark::kMillisecond)->Iterations(3);

void RetrieveLargestModel_Baseline(benchmark::State& state) {
    const std::string& path = storedModel();
    for (auto _ : state) {
        sqlite3* db = nullptr;
        sqlite3_open(path.c_str(), &db);
        long long rows = 0, bytes = 0;
        sqlite3_exec(db, "BEGIN", nullptr, nullptr, nullptr);
        for (const krstore::Table& t : krstore::Schema::current().tables()) {
            sqlite3_stmt* s = nullptr;
            sqlite3_prepare_v2(db, t.selectAll.c_str(), -1, &s, nullptr);
            int columns = sqlite3_column_count(s);
            while (sqlite3_step(s) == SQLITE_ROW) {
                ++rows;
                for (int c = 0; c < columns; ++c) {
                    if (sqlite3_column_type(s, c) == SQLITE_TEXT)
                        bytes += sqlite3_column_bytes(s, c);
                    else
                        bytes += sqlite3_column_int64(s, c);
                }
            }
            sqlite3_finalize(s);
        }
        sqlite3_exec(db, "COMMIT", nullptr, nullptr, nullptr);
        sqlite3_close(db);
        benchmark::DoNotOptimize(bytes);
        if (rows != kObjects + kLinks) state.SkipWithError("not every row was read");
    }
    counters(state);
}
BENCHMARK(RetrieveLargestModel_Baseline)->Unit(benchmark::kMillisecond)->Iterations(3);

}  // namespace

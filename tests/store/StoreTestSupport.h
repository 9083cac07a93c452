// StoreTestSupport.h — the fixture of the store tests, over each backend: a
// fresh SQLite file, or a fresh schema in the PostgreSQL database named by
// KRMWTARN_TEST_PG (scripts/with-postgres.sh starts a throwaway server and
// sets it; without it the server's tests are skipped). The registry is
// released after each test; the probe program runs as a second process.
#pragma once

#include <gtest/gtest.h>

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <memory>
#include <string>

#include <krmwtarn/store/Repository.h>
#include <krmwtarn/store/Sql.h>
#include "tests/store/StoreSupport.h"
#include <krmwtarn/sample/SampleModel.h>

enum class Backend { Sqlite, Postgres };

inline std::string backendName(const ::testing::TestParamInfo<Backend>& info) {
    return info.param == Backend::Sqlite ? "sqlite" : "postgres";
}

class StoreTest : public ::testing::TestWithParam<Backend> {
protected:
    void SetUp() override {
        const auto* info = ::testing::UnitTest::GetInstance()->current_test_info();
        std::string name = info->name();
        for (char& c : name)
            if (c == '/') c = '_';
        dir_ = std::filesystem::temp_directory_path() / ("krmwtarn_store_" + std::to_string(getpid()) + "_" + name);
        std::filesystem::remove_all(dir_);
        std::filesystem::create_directories(dir_);
        if (GetParam() == Backend::Sqlite) {
            path_ = (dir_ / "repo.db").string();
            return;
        }
        const char* server = std::getenv("KRMWTARN_TEST_PG");
        if (!server || !*server)
            GTEST_SKIP() << "no PostgreSQL server: KRMWTARN_TEST_PG is not set "
                            "(bash scripts/with-postgres.sh ctest --preset debug runs the tests beside one)";
        server_ = server;
        static int next = 0;
        schema_ = "test_" + std::to_string(getpid()) + "_" + std::to_string(++next);
        path_ = inSchema(schema_);
        admin("DROP SCHEMA IF EXISTS " + schema_ + " CASCADE; CREATE SCHEMA " + schema_);
    }
    void TearDown() override {
        DSRegistrar::releaseAll();
        std::filesystem::remove_all(dir_);
        if (!schema_.empty()) admin("DROP SCHEMA IF EXISTS " + schema_ + " CASCADE");
    }
    bool onServer() const { return GetParam() == Backend::Postgres; }
    // The server's URL with a schema of its own as the place of the tables.
    std::string inSchema(const std::string& schema) const {
        return server_ + (server_.find('?') == std::string::npos ? "?" : "&") + "options=-csearch_path%3D" + schema;
    }
    // Runs statements on the server's database, outside any repository.
    void admin(const std::string& sql) const { krstore::openPostgres(server_)->exec(sql); }
    // Runs one statement on the repository's database and answers the first
    // column of its first row ("" for none or NULL).
    std::string query(const std::string& sql) const {
        auto db = onServer() ? krstore::openPostgres(path_) : krstore::openSqlite(path_, false);
        auto s = db->prepare(sql);
        return s->step() && s->getText(0) ? s->getText(0) : "";
    }
    std::unique_ptr<krstore::Repository> open(krstore::OpenOptions options = {}) {
        return krstore::Repository::open(path_, options);
    }
    // Builds the sample, stores all of it and releases it again; answers its
    // export documents as they were before the store.
    nlohmann::json storedSample() {
        nlohmann::json documents;
        {
            sample::Model m = sample::build();
            documents = storetest::documents();
            open()->storeAll();
        }
        DSRegistrar::releaseAll();
        return documents;
    }
    // Runs the probe; answers its exit status, its output in `out`.
    int probe(const std::string& args, std::string* out = nullptr) {
        std::string command = std::string(STORE_PROBE) + " " + args + " 2>&1";
        FILE* p = popen(command.c_str(), "r");
        std::string text;
        char buffer[4096];
        size_t n;
        while ((n = fread(buffer, 1, sizeof buffer, p)) > 0) text.append(buffer, n);
        int status = pclose(p);
        if (out) *out = text;
        return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    }
    // The repository's location quoted for the probe's command line.
    std::string repo() const { return "'" + path_ + "'"; }
    // The message of the KVException an action throws ("" when none).
    template <class F>
    static std::string refusal(F&& f) {
        try {
            f();
        } catch (KVException* e) {
            std::string m = e->text(0) ? e->text(0) : "";
            delete e;
            return m;
        }
        return "";
    }
    std::filesystem::path dir_;
    std::string path_;    // the repository: a file, or a URL
    std::string server_;  // the server's database URL
    std::string schema_;  // the test's own schema on the server
};

// Suites whose every test holds on both backends.
#define STORE_ON_BOTH_BACKENDS(Suite) \
    INSTANTIATE_TEST_SUITE_P(Backends, Suite, ::testing::Values(Backend::Sqlite, Backend::Postgres), backendName)

// StoreTestSupport.h — the fixture of the store tests: a fresh repository file
// per test, the registry released after it, and a runner for the probe program.
#pragma once

#include <krmwtarn/store/Repository.h>
#include "tests/store/StoreSupport.h"
#include "tools/sample/SampleModel.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <filesystem>
#include <memory>
#include <string>

class StoreTest : public ::testing::Test {
protected:
    void SetUp() override {
        const auto* info = ::testing::UnitTest::GetInstance()->current_test_info();
        dir_ = std::filesystem::temp_directory_path() /
               ("krmwtarn_store_" + std::to_string(getpid()) + "_" + info->name());
        std::filesystem::remove_all(dir_);
        std::filesystem::create_directories(dir_);
        path_ = (dir_ / "repo.db").string();
    }
    void TearDown() override {
        DSRegistrar::releaseAll();
        std::filesystem::remove_all(dir_);
    }
    std::unique_ptr<krstore::Repository> open(krstore::OpenOptions options = {}) {
        return krstore::Repository::open(path_, options);
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
    std::string path_;
};

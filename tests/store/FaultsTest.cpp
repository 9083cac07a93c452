// FaultsTest.cpp — bad files and interrupted work: a file that is no
// repository, a truncated or corrupted one, a full disk, a read-only file (the
// SQLite file's own faults); on both backends, another schema version, a
// process killed at random points while storing the largest model, two
// processes storing at once, a lock left by a killed process.
#include "tests/store/StoreTestSupport.h"

#include <sqlite3.h>

#include <csignal>
#include <fcntl.h>
#include <sys/wait.h>
#include <unistd.h>
#include <filesystem>
#include <fstream>
#include <random>
#include <thread>

// The faults of an SQLite file.
class FileStoreTest : public StoreTest {};
INSTANTIATE_TEST_SUITE_P(Backends, FileStoreTest, ::testing::Values(Backend::Sqlite), backendName);

namespace {
// Runs one SQL statement on the file and answers the first column of the first row.
std::string sql(const std::string& path, const std::string& statement) {
    sqlite3* db = nullptr;
    sqlite3_open(path.c_str(), &db);
    sqlite3_stmt* s = nullptr;
    std::string answer;
    if (sqlite3_prepare_v2(db, statement.c_str(), -1, &s, nullptr) == SQLITE_OK && sqlite3_step(s) == SQLITE_ROW &&
        sqlite3_column_text(s, 0))
        answer = reinterpret_cast<const char*>(sqlite3_column_text(s, 0));
    sqlite3_finalize(s);
    sqlite3_close(db);
    return answer;
}
}  // namespace

TEST_P(FileStoreTest, AFileThatIsNoRepositoryIsRefused) {
    std::ofstream(path_) << "DBD NAME=HOSPDBD,ACCESS=HIDAM\n" << std::string(5000, 'x');
    EXPECT_EQ(refusal([&] { open(); }), path_ + " is not a KRMWTARN repository (not a database file)");
    std::filesystem::remove(path_);
    sql(path_, "CREATE TABLE accounts (id INTEGER)");
    EXPECT_EQ(refusal([&] { open(); }), path_ + " is not a KRMWTARN repository (a database of another kind)");
    EXPECT_EQ(refusal([&] {
                  krstore::OpenOptions o;
                  o.create = false;
                  krstore::Repository::open(path_ + ".none", o);
              }).rfind("cannot open repository " + path_ + ".none", 0),
              0u);
}

// A repository of the previous layout (version 1, before the field geometry's
// dictionary tables) and one of a later program are refused by their version,
// before their tables are compared.
TEST_P(StoreTest, AnotherSchemaVersionIsRefused) {
    open();
    for (int other : {1, 99}) {
        if (onServer())
            admin("UPDATE " + schema_ + ".repository_meta SET value = '" + std::to_string(other) +
                  "' WHERE key = 'schema_version'");
        else
            sql(path_, "PRAGMA user_version = " + std::to_string(other));
        EXPECT_EQ(refusal([&] { open(); }), "repository " + path_ + " has schema version " + std::to_string(other) +
                                                "; this program reads version 2");
    }
}

TEST_P(FileStoreTest, TruncatedAndCorruptedFilesAreReportedAsDamaged) {
    storedSample();
    auto size = std::filesystem::file_size(path_);
    std::filesystem::copy_file(path_, path_ + ".good");
    std::filesystem::resize_file(path_, size / 2);
    std::string truncated = refusal([&] { open()->retrieveAll(); });
    EXPECT_EQ(truncated.rfind("repository " + path_ + " is damaged (truncated or corrupted)", 0), 0u) << truncated;
    DSRegistrar::releaseAll();
    // Garbage over the pages past the first: the header still reads.
    std::filesystem::copy_file(path_ + ".good", path_, std::filesystem::copy_options::overwrite_existing);
    {
        std::fstream f(path_, std::ios::in | std::ios::out | std::ios::binary);
        f.seekp(4096);
        std::string junk(static_cast<size_t>(size) - 8192, '\x5a');
        f.write(junk.data(), static_cast<std::streamsize>(junk.size()));
    }
    std::string corrupted = refusal([&] { open()->retrieveAll(); });
    EXPECT_NE(corrupted.find(" is damaged (truncated or corrupted)"), std::string::npos) << corrupted;
}

TEST_P(FileStoreTest, AFullDiskLosesNothingStoredBefore) {
    nlohmann::json expected = storedSample();
    long pages = std::stol(sql(path_, "PRAGMA page_count"));
    {
        storetest::buildLargest("V1", 50);
        krstore::OpenOptions limited;
        limited.maxPages = pages + 4;
        auto r = open(limited);
        std::string message = refusal([&] { r->storeAll(); });
        EXPECT_EQ(message,
                  "repository " + path_ + ": the disk is full: store was not done; what was stored before is kept");
        EXPECT_EQ(DSRegistrar::count() > 0, true);  // memory as it was
    }
    DSRegistrar::releaseAll();
    EXPECT_EQ(sql(path_, "PRAGMA integrity_check"), "ok");
    auto r = open();
    r->retrieveAll();
    EXPECT_EQ(storetest::documents(), expected);
    EXPECT_EQ(r->units().size(), 14u);
}

TEST_P(FileStoreTest, AReadOnlyRepositoryIsReadButNotWritten) {
    storedSample();
    if (geteuid() == 0) {
        // Root writes any file: read it as an unprivileged user instead.
        std::filesystem::permissions(dir_, std::filesystem::perms::all);
        std::filesystem::permissions(path_, std::filesystem::perms::owner_read | std::filesystem::perms::group_read |
                                                std::filesystem::perms::others_read);
        std::string out;
        int status = probe("", &out);  // the probe runs at all
        (void)status;
        if (std::system("command -v setpriv >/dev/null") != 0) GTEST_SKIP() << "setpriv is missing";
        std::string as = "setpriv --reuid=65534 --regid=65534 --clear-groups ";
        std::string command = as + STORE_PROBE + " store-sample " + path_ + " 2>&1";
        FILE* p = popen(command.c_str(), "r");
        char buffer[4096];
        size_t n;
        out.clear();
        while ((n = fread(buffer, 1, sizeof buffer, p)) > 0) out.append(buffer, n);
        int code = pclose(p);
        EXPECT_EQ(WEXITSTATUS(code), 3) << out;
        EXPECT_EQ(out, "repository " + path_ + " is read-only: cannot store\n");
        command = as + STORE_PROBE + " export " + path_ + " 2>&1 >/dev/null";
        EXPECT_EQ(std::system(command.c_str()), 0);
        return;
    }
    std::filesystem::permissions(path_, std::filesystem::perms::owner_read);
    sample::Model m = sample::build();
    auto r = open();
    r->retrieveAll();
    EXPECT_EQ(refusal([&] { r->storeAll(); }), "repository " + path_ + " is read-only: cannot store");
}

// Stores of the largest model, killed at random moments: the file stays
// sound and every unit holds one whole revision (the loop writes the revision
// number into every segment and SENSEG of every unit it stores).
TEST_P(StoreTest, KilledDuringStoresEveryUnitStaysAtAStoredRevision) {
    const char* env = std::getenv("KRMWTARN_KILL_PCBS");
    std::string pcbs = env ? env : "300";
    std::string out;
    ASSERT_EQ(probe("store-largest " + repo() + " " + pcbs, &out), 0) << out;
    std::mt19937 random(20240601);
    for (int round = 0; round < 4; ++round) {
        pid_t child = fork();
        if (child == 0) {
            int null = ::open("/dev/null", O_WRONLY);
            dup2(null, 1);
            execl(STORE_PROBE, STORE_PROBE, "restore-loop", path_.c_str(), static_cast<char*>(nullptr));
            _exit(127);
        }
        std::this_thread::sleep_for(std::chrono::milliseconds(500 + random() % 2500));
        kill(child, SIGKILL);
        int status = 0;
        waitpid(child, &status, 0);
        ASSERT_TRUE(WIFSIGNALED(status));
        if (!onServer()) {
            ASSERT_EQ(sql(path_, "PRAGMA integrity_check"), "ok");
        }
        // One value per unit, and it is the unit's revision (revision 1 holds none).
        EXPECT_EQ(query("SELECT count(*) FROM (SELECT unit FROM DSSegment GROUP BY unit"
                        " HAVING count(DISTINCT coalesce(frequency, '1')) <> 1) AS mixed"),
                  "0");
        EXPECT_EQ(query("SELECT count(*) FROM DSSegment s JOIN units u ON s.unit = u.unit_id"
                        " WHERE coalesce(s.frequency, '1') <> CAST(u.revision AS TEXT)"),
                  "0");
        EXPECT_EQ(query("SELECT count(*) FROM DSSenSegment s JOIN units u ON s.unit = u.unit_id"
                        " WHERE coalesce(s.procoptSENSEG, '1') <> CAST(u.revision AS TEXT)"),
                  "0");
        EXPECT_EQ(query("SELECT count(*) FROM DSSenSegment"), std::to_string(std::stoi(pcbs) * 12));
    }
    std::cout << "revision after the kills: " << query("SELECT max(revision) FROM units") << "\n";
}

TEST_P(StoreTest, TwoProcessesStoringAtOnce) {
    storedSample();
    std::string go = (dir_ / "go").string();
    auto run = [&](const std::string& unit, std::string& out, int& status) {
        status = probe("store-after " + repo() + " " + unit + " " + go, &out);
    };
    // Both probes have read the repository (each leaves GO.ready.PID): only
    // then is GO given, however long a loaded machine takes to start them.
    auto bothReady = [&] {
        auto deadline = std::chrono::steady_clock::now() + std::chrono::seconds(120);
        for (;;) {
            int ready = 0;
            for (const auto& f : std::filesystem::directory_iterator(dir_))
                ready += f.path().filename().string().rfind("go.ready.", 0) == 0;
            if (ready >= 2 || std::chrono::steady_clock::now() > deadline) break;
            std::this_thread::sleep_for(std::chrono::milliseconds(5));
        }
        for (const auto& f : std::filesystem::directory_iterator(dir_))
            if (f.path().filename().string().rfind("go.ready.", 0) == 0) std::filesystem::remove(f.path());
    };
    // Different units: both land.
    {
        std::string a, b;
        int sa = -1, sb = -1;
        std::thread ta(run, "HOSPDBD", std::ref(a), std::ref(sa)), tb(run, "HOSPPSB", std::ref(b), std::ref(sb));
        bothReady();
        std::ofstream(go).put('\n');
        ta.join();
        tb.join();
        EXPECT_EQ(sa, 0) << a;
        EXPECT_EQ(sb, 0) << b;
        auto r = open();
        EXPECT_EQ(r->findUnit("HOSPDBD").revision, 2);
        EXPECT_EQ(r->findUnit("HOSPPSB").revision, 2);
    }
    std::filesystem::remove(go);
    // The same unit: exactly one wins, the other is told it was stored meanwhile.
    {
        std::string a, b;
        int sa = -1, sb = -1;
        std::thread ta(run, "HOSPDBD", std::ref(a), std::ref(sa)), tb(run, "HOSPDBD", std::ref(b), std::ref(sb));
        bothReady();
        std::ofstream(go).put('\n');
        ta.join();
        tb.join();
        EXPECT_EQ((sa == 0) + (sb == 0), 1) << a << b;
        const std::string& loser = sa == 0 ? b : a;
        EXPECT_NE(loser.find("was stored meanwhile by"), std::string::npos) << loser;
        EXPECT_EQ(open()->findUnit("HOSPDBD").revision, 3);
    }
}

// On a file, the lock stays with its owner's name until it is broken with
// --force; on a server, it ends with the killed program's session.
TEST_P(StoreTest, ALockOfAKilledProcessIsReportedAndBrokenWithForce) {
    storedSample();
    int fds[2];
    ASSERT_EQ(pipe(fds), 0);
    pid_t child = fork();
    if (child == 0) {
        dup2(fds[1], 1);
        setenv("KRMWTARN_USER", "carol", 1);
        execl(STORE_PROBE, STORE_PROBE, "lock-and-wait", path_.c_str(), "HOSPPSB", static_cast<char*>(nullptr));
        _exit(127);
    }
    close(fds[1]);
    char buffer[16] = {};
    ASSERT_GT(read(fds[0], buffer, sizeof buffer - 1), 0);
    close(fds[0]);
    EXPECT_STREQ(buffer, "locked\n");
    auto r = open();
    krstore::UnitInfo u = r->findUnit("HOSPPSB");
    ASSERT_TRUE(u.locked);
    EXPECT_EQ(u.lockOwner.user, "carol");
    EXPECT_EQ(u.lockOwner.pid, static_cast<long>(child));
    EXPECT_EQ(u.lockOwner.session != 0, onServer());
    kill(child, SIGKILL);
    waitpid(child, nullptr, 0);
    std::string out;
    if (onServer()) {
        // The server ends the session as the program's connection closes: the
        // lock is gone without anyone breaking it (its row still names carol).
        bool released = false;
        for (int i = 0; i < 100 && !released; ++i) {
            released = !r->findUnit("HOSPPSB").locked;
            if (!released) std::this_thread::sleep_for(std::chrono::milliseconds(50));
        }
        EXPECT_TRUE(released);
        EXPECT_EQ(query("SELECT lock_user FROM units WHERE obj_id = 'HOSPPSB'"), "carol");
        r->retrieveAll();
        EXPECT_EQ(refusal([&] { r->storeAll(); }), "");
        EXPECT_EQ(probe("unlock " + repo() + " HOSPPSB", &out), 0) << out;
        return;
    }
    u = r->findUnit("HOSPPSB");
    ASSERT_TRUE(u.locked);
    EXPECT_EQ(probe("unlock " + repo() + " HOSPPSB", &out), 3);
    EXPECT_NE(out.find("unit DSPSB HOSPPSB (SAMPLE) is locked by carol@"), std::string::npos) << out;
    EXPECT_NE(out.find("(pid " + std::to_string(child) + ")"), std::string::npos) << out;
    EXPECT_EQ(probe("unlock " + repo() + " HOSPPSB --force", &out), 0) << out;
    EXPECT_FALSE(r->findUnit("HOSPPSB").locked);
}

// A retrieve refused part way (at a link row naming no known class; from a
// server, read after other link tables were already attached) takes back every
// link it made, so nothing it read stays live.
TEST_P(StoreTest, ARetrieveRefusedPartWayLeavesNothingBehind) {
    storedSample();
    query(std::string("UPDATE ") + (onServer() ? "\"dsusessenfld\"" : "\"DSUsesSENFLD\"") +
          " SET source_class = 'NoSuchClass'");
    std::string refused = refusal([&] { open()->retrieveAll(); });
    EXPECT_NE(refused.find("names an unknown class NoSuchClass"), std::string::npos) << refused;
    EXPECT_EQ(DSRegistrar::count(), 0u);
}

// RepoCommands.cpp — the repository commands of the krmwtarn tool over the
// store layer; refusals of the repository are printed as their message.
#include "RepoCommands.h"

#include "CommandLine.h"
#include "Commands.h"

#include <krmwtarn/platform/common/Refusals.h>
#include <krmwtarn/store/Repository.h>
#include <krmwtarn/store/Sql.h>
#include <krmwtarn/store/Units.h>
#include <krmwtarn/json/ViewDocument.h>
#include <krmwtarn/sample/SampleModel.h>

#include <algorithm>
#include <cstring>
#include <filesystem>
#include <iomanip>
#include <unordered_set>
#include <iostream>

namespace repocmd {
namespace {

// Runs an action on the opened repository; a refusal is reported and answers 1.
template <class F>
int withRepository(const std::string& repo, std::ostream& err, F&& f) {
    int status = 1;
    if (auto refused = kr::refusalOf([&] {
            std::unique_ptr<krstore::Repository> r = krstore::Repository::open(repo);
            status = f(*r);
        }))
        err << "krmwtarn: " << kr::describe(*refused) << "\n";
    DSRegistrar::releaseAll();
    return status;
}

}  // namespace

int storeSample(const std::string& repo, std::ostream& out, std::ostream& err) {
    return withRepository(repo, err, [&](krstore::Repository& r) {
        sample::Model m = sample::build();
        r.storeAll();
        out << "stored the sample in " << r.location() << ": " << r.units().size() << " units\n";
        return 0;
    });
}

int storeMade(const std::string& repo, bool quiet, std::ostream& out, std::ostream& err,
              const std::function<int(krstore::Repository&, std::vector<_ADObject*>& roots)>& make) {
    // A repository file that this command makes and then stores nothing in
    // (the load or import was refused) is taken away again.
    std::string file;
    if (!krstore::isPostgresURL(repo)) {
        file = repo.rfind("file://", 0) == 0 ? repo.substr(7) : repo.rfind("file:", 0) == 0 ? repo.substr(5) : repo;
        std::error_code ec;
        if (std::filesystem::exists(file, ec) || ec) file.clear();
    }
    int status = withRepository(repo, err, [&](krstore::Repository& r) {
        std::vector<_ADObject*> roots;
        int status = make(r, roots);
        if (status != 0) return status;
        // The definitions made, and every unit new to the repository that
        // making them brought along (a PSB's PCBs, dictionary objects); units
        // read from the repository and left alone are not written again.
        krstore::UnitResolver resolver;
        std::unordered_set<_ADObject*> units;
        std::vector<_ADObject*> store;
        for (_ADObject* o : roots)
            if (units.insert(resolver.rootOf(o)).second) store.push_back(o);
        DSRegistrar::forEach([&](_ADObject* o) {
            _ADObject* root = resolver.rootOf(o);
            if (units.insert(root).second && r.knownRevision(r.unitKeyOf(root)) == 0) store.push_back(root);
        });
        r.storeUnits(store);
        if (!quiet) out << "stored " << store.size() << " unit(s) in " << r.location() << "\n";
        return 0;
    });
    if (status != 0 && !file.empty()) {
        std::error_code ec;
        for (const char* suffix : {"", "-journal", "-wal", "-shm"}) std::filesystem::remove(file + suffix, ec);
    }
    return status;
}

namespace {
int list(const std::string& repo, std::ostream& out, std::ostream& err) {
    return withRepository(repo, err, [&](krstore::Repository& r) {
        out << std::left << std::setw(22) << "class" << std::setw(22) << "name" << std::setw(12) << "version"
            << std::setw(10) << "revision"
            << "lock owner\n";
        for (const krstore::UnitInfo& u : r.units())
            out << std::setw(22) << u.key.className << std::setw(22) << (u.name.empty() ? u.key.objID : u.name)
                << std::setw(12) << u.key.version << std::setw(10) << u.revision
                << (u.locked ? u.lockOwner.text() + " since " + u.lockedAt : "-") << "\n";
        return 0;
    });
}

int remove(const std::string& repo, const std::string& name, std::ostream& out, std::ostream& err) {
    return withRepository(repo, err, [&](krstore::Repository& r) {
        krstore::UnitInfo u = r.findUnit(name);
        r.deleteUnit(u.key);
        out << "deleted unit " << u.key.text() << "\n";
        return 0;
    });
}

int lock(const std::string& repo, const std::string& name, std::ostream& out, std::ostream& err) {
    return withRepository(repo, err, [&](krstore::Repository& r) {
        krstore::UnitInfo u = r.findUnit(name);
        r.lockUnit(u.key);
        out << "locked unit " << u.key.text() << " for " << r.owner().text() << "\n";
        if (r.locksEndWithSession()) {
            // On a server the lock ends with this session: held until the
            // command's input ends or the command is interrupted.
            out << "the lock lasts while this command runs: end its input (Ctrl-D) or interrupt it to release it"
                << std::endl;
            while (std::cin.get() != EOF) {
            }
            r.unlockUnit(u.key);
            out << "unlocked unit " << u.key.text() << "\n";
        }
        return 0;
    });
}

int unlock(const std::string& repo, const std::string& name, bool force, std::ostream& out, std::ostream& err) {
    return withRepository(repo, err, [&](krstore::Repository& r) {
        krstore::UnitInfo u = r.findUnit(name);
        r.unlockUnit(u.key, force);
        out << "unlocked unit " << u.key.text() << "\n";
        return 0;
    });
}

int copyRepository(const std::string& repo, const std::string& target, std::ostream& out, std::ostream& err) {
    return withRepository(repo, err, [&](krstore::Repository& r) {
        std::unique_ptr<krstore::Repository> into = krstore::Repository::open(target);
        std::size_t units = r.copyInto(*into);
        out << "copied " << units << " units from " << r.location() << " into " << into->location() << "\n";
        return 0;
    });
}
}  // namespace
}  // namespace repocmd

namespace krmwtarn {
namespace {
// A repository command on one unit, NAME (its name or ID).
CLI::App* unitCommand(CommandLine& cli, const char* name, const char* description, std::string& unit) {
    CLI::App* command = cli.app.add_subcommand(name, description);
    positional(command, "NAME", unit, "The unit's name or ID")->required();
    return command;
}
}  // namespace

void addSample(CommandLine& cli) {
    CLI::App* command = cli.app.add_subcommand("sample", "Store the built-in sample in the repository");
    cli.runsOnRepository(command, [&cli] { return repocmd::storeSample(cli.repo, std::cout, std::cerr); });
}

void addList(CommandLine& cli) {
    CLI::App* command =
        cli.app.add_subcommand("list", "List the repository's units: class, name, version, revision, lock owner");
    cli.runsOnRepository(command, [&cli] { return repocmd::list(cli.repo, std::cout, std::cerr); });
}

void addDelete(CommandLine& cli) {
    std::string& name = cli.keep<std::string>();
    CLI::App* command = unitCommand(cli, "delete", "Remove a unit from the repository", name);
    cli.runsOnRepository(command, [&cli, &name] { return repocmd::remove(cli.repo, name, std::cout, std::cerr); });
}

void addLock(CommandLine& cli) {
    std::string& name = cli.keep<std::string>();
    CLI::App* command = unitCommand(
        cli, "lock", "Lock a unit of the repository for this user (on a server: while the command runs)", name);
    cli.runsOnRepository(command, [&cli, &name] { return repocmd::lock(cli.repo, name, std::cout, std::cerr); });
}

void addUnlock(CommandLine& cli) {
    struct Arguments {
        std::string name;
        bool force = false;
    };
    auto& a = cli.keep<Arguments>();
    CLI::App* command = unitCommand(cli, "unlock", "Unlock a unit of the repository", a.name);
    command->add_flag("--force", a.force, "Break a lock whose process is gone");
    cli.runsOnRepository(command,
                         [&cli, &a] { return repocmd::unlock(cli.repo, a.name, a.force, std::cout, std::cerr); });
}

void addCopyRepo(CommandLine& cli) {
    std::string& target = cli.keep<std::string>();
    CLI::App* command = cli.app.add_subcommand(
        "copy-repo", "Copy every unit of the repository into another, empty one (file or server)");
    positional(command, "TARGET", target, "The repository to copy into: an SQLite file or a postgresql:// URL")
        ->required();
    cli.runsOnRepository(command,
                         [&cli, &target] { return repocmd::copyRepository(cli.repo, target, std::cout, std::cerr); });
}
}  // namespace krmwtarn

// Probe.cpp — the second process of the store tests. Each command opens the
// repository given (a file or a postgresql:// URL), does one thing, prints what
// it did on standard output and a refusal's message on standard error (exit
// status 3 for a refusal).
//   store-sample PATH          build the sample and store every unit
//   export PATH                retrieve every unit and print the documents
//   store-largest PATH PCBS    build the largest model and store every unit
//   restore-loop PATH          retrieve every unit, then store them again and
//                              again, each time with the next revision written
//                              into every segment and SENSEG ("stored R")
//   store-after PATH NAME GO   retrieve every unit, change the named unit's
//                              root, say so in the file GO.ready.PID, wait for
//                              the file GO, store that unit
//   lock-and-wait PATH NAME    lock a unit, print "locked", wait to be killed
//   unlock PATH NAME [--force] unlock a unit
//   team-client PATH N SECONDS one of a team sharing the units SHARED0 and
//                              SHARED1 (DBDs of version TEAM): store its own
//                              DBD OWN<N>, then until SECONDS are up take the
//                              shared ones by turns (every fourth time under a
//                              lock), write "N.I" into every segment of it and
//                              of OWN<N> and store both in one store. Prints
//                              "stored UNIT REVISION VALUE" for each unit of a
//                              store that succeeded, "refused MESSAGE" else.
#include <krmwtarn/store/Repository.h>
#include "tests/store/StoreSupport.h"
#include <krmwtarn/sample/SampleModel.h>

#include <chrono>
#include <cstdio>
#include <cstring>
#include <fstream>
#include <iostream>
#include <thread>

#include <sys/stat.h>

namespace {

using krstore::Repository;

void retrieveAll(Repository& r) { r.retrieveAll(); }

// Writes a value into every segment of a DBD.
void writeSegments(_ADObject* dbd, const std::string& value) {
    for (const ADObject& h : *static_cast<_DSDBD*>(dbd)->_get_segments())
        static_cast<_DSSegment*>((*static_cast<_ADLink*>(h.impl())->getTarget()).impl())
            ->_set_frequency(value.c_str(), omStore | omSetChanged);
}

int teamClient(const std::string& path, int n, double seconds) {
    auto deadline = std::chrono::steady_clock::now() + std::chrono::milliseconds(static_cast<long>(seconds * 1000));
    krstore::OpenOptions o;
    o.create = false;
    auto r = Repository::open(path, o);
    std::string own = "OWN" + std::to_string(n);
    {
        DSDBD dbd("TEAM", own.c_str(), 1);
        dbd->_set_strDBDName(own.c_str(), omStore);
        // Links named too: generated IDs ("#N") are unique within one process only.
        for (int i = 0; i < 8; ++i) {
            DSSegment segment("TEAM", (own + ".S" + std::to_string(i)).c_str(), 1);
            DSContainsSegment link("TEAM", (own + ".L" + std::to_string(i)).c_str(), 1);
            link->_set_source(&dbd, omStore);
            link->_set_target(&segment, omStore);
        }
    }
    ADObject mine(DSRegistrar::findObj("DSDBD", own.c_str(), "TEAM"));
    r->storeUnits({mine.impl()});
    std::cout << "stored " << own << " 1 -" << std::endl;
    krstore::UnitKey shared[2] = {{"DSDBD", "SHARED0", "TEAM"}, {"DSDBD", "SHARED1", "TEAM"}};
    ADObject roots[2] = {r->retrieveUnit(shared[0]), r->retrieveUnit(shared[1])};
    for (int i = 1; std::chrono::steady_clock::now() < deadline; ++i) {
        int k = i % 2;
        bool locking = i % 4 == 0, locked = false;
        std::string value = std::to_string(n) + "." + std::to_string(i);
        try {
            // Lock first, then take the stored unit: nobody stores it between.
            if (locking) {
                r->lockUnit(shared[k]);
                locked = true;
            }
            r->refreshUnit(roots[k].impl());
            writeSegments(roots[k].impl(), value);
            writeSegments(mine.impl(), value);
            r->storeUnits({mine.impl(), roots[k].impl()});
            std::cout << "stored SHARED" << k << " " << r->knownRevision(shared[k]) << " " << value << "\n"
                      << "stored " << own << " " << r->knownRevision({"DSDBD", own, "TEAM"}) << " " << value
                      << std::endl;
            if (locked) r->unlockUnit(shared[k]);
        } catch (KVException* e) {
            std::cout << "refused " << (e->text(0) ? e->text(0) : "") << std::endl;
            delete e;
            if (locked) r->unlockUnit(shared[k]);
        }
    }
    return 0;
}

krstore::OpenOptions existing() {
    krstore::OpenOptions o;
    o.create = false;
    return o;
}

int run(int argc, char** argv) {
    std::string command = argv[1], path = argv[2];
    if (command == "store-sample") {
        sample::Model m = sample::build();
        auto r = Repository::open(path);
        r->storeAll();
        std::cout << "stored " << r->units().size() << " units\n";
        return 0;
    }
    if (command == "export") {
        auto r = Repository::open(path, existing());
        retrieveAll(*r);
        std::cout << storetest::documents().dump(1) << "\n";
        return 0;
    }
    if (command == "store-largest") {
        storetest::buildLargest("V1", argc > 3 ? std::atoi(argv[3]) : 2500);
        auto r = Repository::open(path);
        r->storeAll();
        std::cout << "stored " << r->units().size() << " units\n";
        return 0;
    }
    if (command == "restore-loop") {
        auto r = Repository::open(path, existing());
        retrieveAll(*r);
        for (;;) {
            long next = r->knownRevision({"DSDBD", "BIGDBD", "V1"}) + 1;
            std::string value = std::to_string(next);
            DSRegistrar::forEach([&](_ADObject* o) {
                if (!std::strcmp(o->whoAmI(), "DSSegment"))
                    static_cast<_DSSegment*>(o)->_set_frequency(value.c_str(), omStore | omSetChanged);
                if (!std::strcmp(o->whoAmI(), "DSSenSegment"))
                    static_cast<_DSSenSegment*>(o)->_set_procoptSENSEG(value.c_str(), omStore | omSetChanged);
            });
            r->storeAll();
            std::cout << "stored " << next << std::endl;
        }
    }
    if (command == "store-after") {
        auto r = Repository::open(path, existing());
        retrieveAll(*r);
        krstore::UnitInfo u = r->findUnit(argv[3]);
        ADObject root(DSRegistrar::findObj(u.key.className.c_str(), u.key.objID.c_str(), u.key.version.c_str()));
        root->_set_adName(std::to_string(getpid()).c_str(), omStore | omSetChanged);
        std::ofstream(std::string(argv[4]) + ".ready." + std::to_string(getpid())).put('\n');
        struct stat st;
        while (stat(argv[4], &st) != 0) std::this_thread::sleep_for(std::chrono::milliseconds(2));
        r->storeUnits({root.impl()});
        std::cout << "stored " << u.key.text() << "\n";
        return 0;
    }
    if (command == "team-client") return teamClient(path, std::atoi(argv[3]), std::atof(argv[4]));
    if (command == "lock-and-wait") {
        auto r = Repository::open(path, existing());
        r->lockUnit(r->findUnit(argv[3]).key);
        std::cout << "locked" << std::endl;
        for (;;) std::this_thread::sleep_for(std::chrono::seconds(1));
    }
    if (command == "unlock") {
        auto r = Repository::open(path, existing());
        r->unlockUnit(r->findUnit(argv[3]).key, argc > 4 && !std::strcmp(argv[4], "--force"));
        std::cout << "unlocked\n";
        return 0;
    }
    std::cerr << "store_probe: unknown command " << command << "\n";
    return 2;
}

}  // namespace

int main(int argc, char** argv) {
    if (argc < 3) {
        std::cerr << "usage: store_probe COMMAND PATH [ARGS]\n";
        return 2;
    }
    int status;
    try {
        status = run(argc, argv);
    } catch (KVException* e) {
        std::cerr << e->text(0) << "\n";
        delete e;
        status = 3;
    }
    DSRegistrar::releaseAll();
    return status;
}

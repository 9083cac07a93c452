// RepoCommands.cpp — the repository commands of the krmwtarn tool over the
// store layer; refusals of the repository are printed as their message.
#include "tools/krmwtarn/RepoCommands.h"

#include "platform/common/KVException.h"
#include "store/Repository.h"
#include "tools/json/ViewDocument.h"
#include "tools/sample/SampleModel.h"

#include <algorithm>
#include <cstring>
#include <iomanip>
#include <iostream>

namespace repocmd {
namespace {

// Runs an action on the opened repository; a refusal is reported and answers 1.
template <class F>
int withRepository(const std::string& repo, std::ostream& err, F&& f) {
    int status = 1;
    try {
        std::unique_ptr<krstore::Repository> r = krstore::Repository::open(repo);
        status = f(*r);
    } catch (KVException* e) {
        err << "krmwtarn: " << (e->text(0) ? e->text(0) : e->message().c_str()) << "\n";
        delete e;
    }
    DSRegistrar::releaseAll();
    return status;
}

nlohmann::json documents() {
    DLLView_init::initAll();
    std::vector<_ADObject*> roots;
    DSRegistrar::forEach([&](_ADObject* o) {
        if (!std::strcmp(o->whoAmI(), "DSDBD") || !std::strcmp(o->whoAmI(), "DSPSB")) roots.push_back(o);
    });
    // DBDs before PSBs, each by version and ID.
    std::sort(roots.begin(), roots.end(), [](_ADObject* a, _ADObject* b) {
        return std::make_tuple(std::strcmp(a->whoAmI(), "DSDBD") != 0, std::string(a->context()), std::string(a->objID())) <
               std::make_tuple(std::strcmp(b->whoAmI(), "DSDBD") != 0, std::string(b->context()), std::string(b->objID()));
    });
    nlohmann::json docs = nlohmann::json::array();
    for (_ADObject* r : roots)
        docs.push_back(viewdoc::exportView(
            DLLViewType::find(!std::strcmp(r->whoAmI(), "DSDBD") ? "CORVIAPOPULATEDBD" : "CORVIAPSB"), r));
    return nlohmann::json{{"documents", docs}};
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

int list(const std::string& repo, std::ostream& out, std::ostream& err) {
    return withRepository(repo, err, [&](krstore::Repository& r) {
        out << std::left << std::setw(22) << "class" << std::setw(22) << "name" << std::setw(12) << "version"
            << std::setw(10) << "revision" << "lock owner\n";
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

int exportAll(const std::string& repo, std::ostream& out, std::ostream& err) {
    return withRepository(repo, err, [&](krstore::Repository& r) {
        r.retrieveAll();
        out << documents().dump(2) << "\n";
        return 0;
    });
}

int expand(const std::string& repo, const std::string& viewName, const std::string& root, std::ostream& out,
           std::ostream& err) {
    return withRepository(repo, err, [&](krstore::Repository& r) {
        DLLView_init::initAll();
        DLLViewType* view = DLLViewType::find(viewName.c_str());
        if (!view) {
            err << "krmwtarn: no view named '" << viewName << "' (see 'krmwtarn views')\n";
            return 1;
        }
        r.retrieveAll();
        const char* cls = view->_get_adViewList() ? view->_get_adViewList()->className : "";
        _ADObject* found = nullptr;
        DSRegistrar::forEach([&](_ADObject* o) {
            if (!found && o->isKindOf(cls) && (root == o->objID() || (o->_get_adName() && root == o->_get_adName())))
                found = o;
        });
        if (!found) {
            err << "krmwtarn: the repository has no " << cls << " named '" << root << "'\n";
            return 1;
        }
        out << viewdoc::exportView(view, found).dump(2) << "\n";
        return 0;
    });
}

}  // namespace repocmd

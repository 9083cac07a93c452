// Repository.cpp — the unit operations over a Connection and what they mean:
// a unit's revision (a store of a unit stored meanwhile by another program is
// refused), its lock (a unit locked by another owner is neither stored nor
// deleted; on a server a lock lasts while its session), and the messages of
// every refusal. Opening a repository is in RepositoryOpen.cpp, copying units
// in RepositoryCopy.cpp; the rows are the business of the rooms beside them:
// the unit table (UnitsTable), the rows written (UnitWriter) and read back
// (UnitReader), and the links made live (LinkAttacher). The same code serves an
// SQLite file and a PostgreSQL server; where they differ, the Connection says
// how (transactions, bulk rows, lock sessions).
#include <krmwtarn/store/Repository.h>

#include <krmwtarn/model/framework/GraphCheck.h>
#include <krmwtarn/platform/repository/DSRegistrar.h>
#include <krmwtarn/store/LinkAttacher.h>
#include <krmwtarn/store/Refusal.h>
#include <krmwtarn/store/Schema.h>
#include <krmwtarn/store/Sql.h>
#include <krmwtarn/store/UnitReader.h>
#include <krmwtarn/store/UnitWriter.h>
#include <krmwtarn/store/Units.h>
#include <krmwtarn/store/UnitsTable.h>

#include <algorithm>
#include <cassert>
#include <cerrno>
#include <csignal>
#include <cstring>
#include <unordered_set>

#include <unistd.h>

namespace krstore {

namespace {

// The root's name: its first name attribute that holds a string.
std::string nameOf(_ADObject* o) {
    for (ADAttributeEntry* t = o->nextAttributeTable(nullptr); t; t = o->nextAttributeTable(t))
        for (ADAttributeEntry* row = t; row->name; ++row)
            if ((row->flags & adFlagName) && adIsAttributeRow(*row) && row->getter.str &&
                std::strcmp(row->type, adv::String::name) == 0) {
                const char* n = adv::String::get(o, *row);
                return n ? n : "";
            }
    return "";
}

UnitKey keyOf(_ADObject* o) { return {o->whoAmI(), o->objID(), o->context()}; }

bool processGone(const LockOwner& o, const std::string& host) {
    if (o.host != host) return true;  // cannot be seen from here: the user decides
    return o.pid <= 0 || (::kill(static_cast<pid_t>(o.pid), 0) != 0 && errno == ESRCH);
}

// Whether a unit is locked by an owner other than this one (a user on a host:
// the same user's other programs there share the lock).
bool lockedByAnother(const UnitInfo& u, const LockOwner& owner) {
    return u.locked && (u.lockOwner.user != owner.user || u.lockOwner.host != owner.host);
}

}  // namespace

std::string UnitKey::text() const { return className + " " + objID + " (" + version + ")"; }

std::string LockOwner::text() const {
    return user + "@" + host + " (pid " + std::to_string(pid) +
           (session ? ", session " + std::to_string(session) : std::string()) + ")";
}

[[noreturn]] void Repository::raise(const std::exception& e, const std::string& doing) {
    const auto* sql = dynamic_cast<const SqlError*>(&e);
    if (!sql) refuse(errDatabase, "repository " + location_ + ": " + doing + ": " + e.what());
    switch (sql->fault()) {
        case SqlFault::NotARepository:
            refuse(errNotARepository, location_ + " is not a KRMWTARN repository (not a database file)");
        case SqlFault::Damaged:
            refuse(errDamaged, "repository " + location_ + " is damaged (truncated or corrupted): " + sql->what());
        case SqlFault::ReadOnly:
            refuse(errReadOnly, "repository " + location_ + " is read-only: cannot " + doing);
        case SqlFault::Full:
            refuse(errFull, "repository " + location_ + ": the disk is full: " + doing +
                                " was not done; what was stored before is kept");
        case SqlFault::Busy:
            refuse(errBusy, "repository " + location_ + " is busy (another program held it too long): " + doing +
                                " was not done");
        case SqlFault::CannotOpen:
            refuse(errCannotOpen, "cannot open repository " + location_ + ": " + sql->what());
        case SqlFault::Duplicate:
        case SqlFault::Constraint:
            refuse(errValueRefused, "repository " + location_ + ": " + doing + ": " + sql->what());
        case SqlFault::Other:
            break;
    }
    refuse(errDatabase, "repository " + location_ + ": " + doing + ": " + sql->what());
}

// ---- the units ------------------------------------------------------------

void Repository::settleLock(UnitInfo& u) {
    if (!u.locked || !u.lockOwner.session || db_->holdsMark(u.lockOwner.session, u.id)) return;
    u.locked = false;
    u.lockOwner = {};
    u.lockedAt.clear();
}

bool Repository::lookupUnit(const UnitKey& key, UnitInfo& into) {
    if (!units_->find(key, into)) return false;
    settleLock(into);
    return true;
}

UnitInfo Repository::storedUnit(const UnitKey& key) {
    UnitInfo u;
    if (!lookupUnit(key, u)) refuse(errNotStored, "unit " + key.text() + " is not in repository " + location_);
    assert(u.id > 0 && u.revision > 0);
    return u;
}

long long Repository::unitHolding(const char* className, const char* objID, const char* version) {
    const Table* t = schema_->table(className);
    if (!t) return 0;
    Statement& s = (*statements_)(t->selectUnit);
    s.bindText(0, objID);
    s.bindText(1, version);
    long long unit = s.step() ? s.getInt(0) : 0;
    s.reset();
    return unit;
}

std::vector<UnitInfo> Repository::units() {
    std::vector<UnitInfo> all;
    try {
        all = units_->all();
        for (UnitInfo& u : all) settleLock(u);
    } catch (const std::exception& e) {
        raise(e, "list the units");
    }
    return all;
}

UnitInfo Repository::findUnit(const std::string& nameOrID) {
    std::vector<UnitInfo> found;
    for (UnitInfo& u : units())
        if (u.key.objID == nameOrID || u.name == nameOrID) found.push_back(u);
    if (found.empty()) refuse(errNotStored, "no unit named " + nameOrID + " in repository " + location_);
    if (found.size() > 1) {
        std::string all;
        for (const UnitInfo& u : found) all += (all.empty() ? "" : ", ") + u.key.text();
        refuse(errAmbiguous, nameOrID + " names several units: " + all);
    }
    return found.front();
}

UnitKey Repository::unitKeyOf(_ADObject* object) {
    UnitResolver resolver;
    return keyOf(resolver.rootOf(object));
}

long Repository::knownRevision(const UnitKey& key) const {
    auto it = revisions_.find(key);
    return it == revisions_.end() ? 0 : it->second;
}

// ---- store ----------------------------------------------------------------

void Repository::storeUnits(const std::vector<_ADObject*>& objects) {
    UnitResolver resolver;
    std::vector<UnitContent> units;
    std::unordered_set<_ADObject*> roots;
    for (_ADObject* o : objects) {
        _ADObject* root = resolver.rootOf(o);
        if (roots.insert(root).second) units.push_back(collectUnit(root, resolver));
    }
    write(units);
}

void Repository::storeAll() {
    UnitResolver resolver;
    std::vector<UnitContent> units = collectAllUnits(resolver);
    write(units);
}

void Repository::write(const std::vector<UnitContent>& units) {
    if (units.empty()) return;
    if (db_->readOnly()) refuse(errReadOnly, "repository " + location_ + " is read-only: cannot store");
    UnitWriter writer(*db_, *schema_, units);
    std::vector<UnitKey> keys;
    std::vector<std::string> serialized;
    for (const UnitContent& u : units) {
        keys.push_back(keyOf(u.root));
        serialized.push_back(keys.back().text());
    }
    std::vector<long> revisions(units.size());
    // Inside the store's transaction, each unit's row: a unit stored before
    // goes to its next revision unless another owner locked it or another
    // program stored it since this one read it; a new unit starts at 1.
    auto claim = [&] {
        std::string stamp = UnitsTable::now();
        std::vector<UnitWriter::Claim> claims(units.size());
        for (std::size_t i = 0; i < units.size(); ++i) {
            const UnitKey& key = keys[i];
            UnitInfo u;
            if (lookupUnit(key, u)) {
                if (lockedByAnother(u, owner_))
                    refuse(errLocked, "unit " + key.text() + " is locked by " + u.lockOwner.text() + " since " +
                                          u.lockedAt + "; not stored");
                if (knownRevision(key) != u.revision)
                    refuse(errStale, "unit " + key.text() + " was stored meanwhile by " + u.storedBy + " at revision " +
                                         std::to_string(u.revision) + " (" + u.storedAt +
                                         "); retrieve or refresh it before storing");
                claims[i].storedBefore = true;
            } else {
                u = {};
                u.key = key;
            }
            u.revision = revisions[i] = u.revision + 1;
            u.name = nameOf(units[i].root);
            u.storedBy = owner_.text();
            u.storedAt = stamp;
            if (claims[i].storedBefore)
                units_->restamp(u);
            else
                u.id = units_->insert(u);
            claims[i].id = u.id;
        }
        return claims;
    };
    try {
        writer.write(serialized, claim);
    } catch (const RowRefused& e) {
        refuseRow(e);
    } catch (const SqlError& e) {
        raise(e, writer.doing());
    }
    for (std::size_t i = 0; i < units.size(); ++i) {
        assert(revisions[i] > knownRevision(keys[i]));
        revisions_[keys[i]] = revisions[i];
    }
    writer.settle(links_->positions());
}

void Repository::refuseRow(const RowRefused& e) {
    _ADObject* o = e.object();
    std::string what = std::string(o->whoAmI()) + " " + o->objID() + " (" + o->context() + ")";
    if (e.fault() == SqlFault::Duplicate) {
        std::string claimed;
        try {
            long long holder = unitHolding(e.table().className.c_str(), o->objID(), o->context());
            for (const UnitInfo& u : units_->all())
                if (u.id == holder) claimed = u.key.text();
        } catch (const std::exception&) {
        }
        UnitResolver resolver;
        refuse(errClaimedTwice, what + " belongs to unit " + (claimed.empty() ? "stored earlier" : claimed) +
                                    "; unit " + keyOf(resolver.rootOf(o)).text() + " claims it too; nothing stored");
    }
    refuse(errValueRefused,
           "cannot store " + what + ": a value is out of its column's range (" + e.what() + "); nothing stored");
}

// ---- retrieve -------------------------------------------------------------

ADObject Repository::retrieveUnit(const UnitKey& key) {
    UnitInfo info;
    try {
        if (!lookupUnit(key, info)) {
            // A member of a unit: load the unit that holds it.
            long long holder = unitHolding(key.className.c_str(), key.objID.c_str(), key.version.c_str());
            if (!holder) refuse(errNotStored, "unit " + key.text() + " is not in repository " + location_);
            info.id = holder;
        }
    } catch (const SqlError& e) {
        raise(e, "retrieve " + key.text());
    }
    load({info.id}, false, false);
    _ADObject* o = DSRegistrar::findObj(key.className.c_str(), key.objID.c_str(), key.version.c_str());
    return o ? ADObject(o) : ADObject();
}

void Repository::retrieveAll() { load({}, true, false); }

void Repository::load(const std::vector<long long>& unitIDs, bool all, bool refresh) {
    KR_ASSERT_GRAPH_ON_EXIT(refresh ? "a refresh from the repository" : "a retrieve from the repository");
    UnitReader reader(*db_, *schema_, *units_, *statements_, *links_, location_);
    UnitReader::Loaded loaded;
    try {
        loaded = reader.load(unitIDs, all, refresh);
    } catch (const SqlError& e) {
        raise(e, "retrieve");
    }
    // The revisions read, and a hold of each unit's root for this session.
    for (const UnitInfo& u : loaded.units) {
        const UnitKey& key = u.key;
        revisions_[key] = u.revision;
        if (_ADObject* root = DSRegistrar::findObj(key.className.c_str(), key.objID.c_str(), key.version.c_str()))
            roots_[key] = ADObject(root);
    }
}

void Repository::refreshUnit(_ADObject* object) {
    UnitResolver resolver;
    _ADObject* root = resolver.rootOf(object);
    UnitKey key = keyOf(root);
    UnitInfo info;
    try {
        if (!lookupUnit(key, info)) refuse(errNotStored, "unit " + key.text() + " is not in repository " + location_);
    } catch (const SqlError& e) {
        raise(e, "refresh " + key.text());
    }
    ADObject keep(root);
    UnitContent unit = collectUnit(root, resolver);
    // The unit's links go; the stored ones come back in their stored order.
    std::vector<ADObject> links;
    for (_ADObject* l : unit.links) links.emplace_back(l);
    for (ADObject& l : links) {
        links_->positions().erase(l.impl());
        l->markDeleted(nullptr, 0);
    }
    links.clear();
    load({info.id}, false, true);
}

void Repository::touchUnit(_ADObject* object) {
    UnitResolver resolver;
    resolver.rootOf(object)->setChangeBit("adName", omSetChanged);
}

std::vector<ADObject> Repository::deleteList(_ADObject* object) {
    UnitResolver resolver;
    UnitContent unit = collectUnit(resolver.rootOf(object), resolver);
    std::vector<ADObject> list;
    std::unordered_set<_ADObject*> in;
    for (_ADObject* l : unit.links)
        if (in.insert(l).second) list.emplace_back(l);
    // Links of other units that reach this unit's objects go with them.
    for (_ADObject* o : unit.objects)
        forEachRole(o, [&](const ADAttributeEntry&, DSModelCollection* role) {
            for (const ADObject& h : *role)
                if (in.insert(h.impl()).second) list.push_back(h);
        });
    for (_ADObject* o : unit.objects) list.emplace_back(o);
    return list;
}

// ---- locks, delete --------------------------------------------------------

void Repository::lockUnit(const UnitKey& key) {
    try {
        Transaction t(*db_, true);
        db_->serialize({key.text()});
        UnitInfo u = storedUnit(key);
        if (lockedByAnother(u, owner_))
            refuse(errLocked, "unit " + key.text() + " is locked by " + u.lockOwner.text() + " since " + u.lockedAt);
        // On a server the lock names this session, whose mark keeps it in force.
        units_->lock(u.id, owner_, UnitsTable::now());
        if (owner_.session && std::find(marks_.begin(), marks_.end(), u.id) == marks_.end()) {
            db_->holdMark(u.id);
            marks_.push_back(u.id);
        }
        t.commit();
    } catch (const SqlError& e) {
        raise(e, "lock " + key.text());
    }
}

void Repository::unlockUnit(const UnitKey& key, bool force) {
    try {
        Transaction t(*db_, true);
        db_->serialize({key.text()});
        UnitInfo u = storedUnit(key);
        // Only a server's session holds marks.
        assert(owner_.session || marks_.empty());
        // This session's mark goes whoever holds the lock now (it may have been broken).
        auto mark = std::find(marks_.begin(), marks_.end(), u.id);
        if (mark != marks_.end()) {
            db_->dropMark(u.id);
            marks_.erase(mark);
        }
        if (!u.locked) {
            t.commit();
            return;
        }
        bool mine = u.lockOwner.user == owner_.user && u.lockOwner.host == owner_.host;
        if (!mine && !force)
            refuse(errLocked, "unit " + key.text() + " is locked by " + u.lockOwner.text() + " since " + u.lockedAt +
                                  "; unlock --force breaks a lock whose process is gone");
        if (!mine && !processGone(u.lockOwner, owner_.host))
            refuse(errLockNotBroken, "unit " + key.text() + " is locked by " + u.lockOwner.text() +
                                         ", whose process is still running; the lock is not broken");
        units_->unlock(u.id);
        t.commit();
    } catch (const SqlError& e) {
        raise(e, "unlock " + key.text());
    }
}

void Repository::forgetUnit(const UnitKey& key) {
    revisions_.erase(key);
    roots_.erase(key);
}

void Repository::deleteUnit(const UnitKey& key) {
    if (db_->readOnly()) refuse(errReadOnly, "repository " + location_ + " is read-only: cannot delete " + key.text());
    try {
        Transaction t(*db_, true);
        db_->serialize({key.text()});
        UnitInfo u = storedUnit(key);
        if (lockedByAnother(u, owner_))
            refuse(errLocked, "unit " + key.text() + " is locked by " + u.lockOwner.text() + " since " + u.lockedAt +
                                  "; not deleted");
        long known = knownRevision(key);
        if (known && known != u.revision)
            refuse(errStale, "unit " + key.text() + " was stored meanwhile by " + u.storedBy + " at revision " +
                                 std::to_string(u.revision) + "; not deleted");
        units_->remove(u.id);
        t.commit();
    } catch (const SqlError& e) {
        raise(e, "delete " + key.text());
    }
    // In memory, the unit goes with what its delete list names.
    if (_ADObject* root = DSRegistrar::findObj(key.className.c_str(), key.objID.c_str(), key.version.c_str())) {
        ADObject keep(root);
        std::vector<ADObject> list = deleteList(root);
        for (ADObject& o : list)
            if (o->isRelationshipObject()) {
                links_->positions().erase(o.impl());
                o->markDeleted(nullptr, 0);
            }
        for (ADObject& o : list)
            if (!o->isRelationshipObject()) o->markDeleted(nullptr, 0);
    }
    forgetUnit(key);
}

// ---- the platform's unit operations ---------------------------------------

// Each answers 0 when done; refusals are thrown.
int Repository::store(_ADObject* object) {
    storeUnits({object});
    return 0;
}
int Repository::retrieve(_ADObject* object) {
    retrieveUnit(keyOf(object));
    return 0;
}
int Repository::refresh(_ADObject* object) {
    refreshUnit(object);
    return 0;
}
int Repository::lock(_ADObject* object) {
    lockUnit(unitKeyOf(object));
    return 0;
}
int Repository::unlock(_ADObject* object) {
    unlockUnit(unitKeyOf(object), false);
    return 0;
}
int Repository::touch(_ADObject* object) {
    touchUnit(object);
    return 0;
}
int Repository::deleteFromRepository(_ADObject* object) {
    deleteUnit(unitKeyOf(object));
    return 0;
}
int Repository::getDeleteList(_ADObject* object, DSModelCollection* into) {
    for (const ADObject& h : deleteList(object)) into->addLast(h);
    return 0;
}
int Repository::copy(_ADObject* object) {
    if (copyVersion_.empty())
        refuse(errNoCopyVersion, "no version to copy " + unitKeyOf(object).text() + " into (setCopyVersion)");
    copyUnit(unitKeyOf(object), copyVersion_);
    return 0;
}

}  // namespace krstore
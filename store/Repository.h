// Repository.h — a repository that persists units: open one by path (or a
// file: URL: an SQLite file) or by a postgresql:// URL (a database on a
// PostgreSQL server), make it the current one, and store, retrieve, refresh,
// touch, lock, unlock, delete and copy units. Each unit carries a revision; a
// store of a unit that another program stored meanwhile is refused, and so is a
// store or delete of a unit locked by another owner. On a server a lock lasts
// while the session that took it. Failures are thrown as KVException* (source
// "krmwtarn_store") whose message says what happened.
#pragma once

#include <krmwtarn/platform/common/Export.h>

#include <krmwtarn/platform/repository/ADObject.h>
#include <krmwtarn/platform/techobj/DSRepositoryClient.h>

#include <map>
#include <memory>
#include <string>
#include <tuple>
#include <vector>

namespace krstore {

class Connection;
class LinkAttacher;
class RowRefused;
class Schema;
class StatementCache;
class UnitsTable;
struct UnitContent;

// Message numbers of the store's KVExceptions.
enum StoreError : long {
    errNotARepository = 7001,
    errDamaged = 7002,
    errReadOnly = 7003,
    errFull = 7004,
    errSchemaVersion = 7005,
    errCannotOpen = 7006,
    errBusy = 7007,
    errStale = 7010,
    errLocked = 7011,
    errClaimedTwice = 7012,
    errNotStored = 7013,
    errLockNotBroken = 7014,
    errValueRefused = 7015,
    errAmbiguous = 7016,
    errCopyExists = 7017,
    errNoCopyVersion = 7018,
    errNotEmpty = 7019,
    errDatabase = 7020,
};

// The identity of a unit: its root's class, object ID and version.
struct KRMWTARN_API UnitKey {
    std::string className, objID, version;
    bool operator<(const UnitKey& o) const {
        return std::tie(className, objID, version) < std::tie(o.className, o.objID, o.version);
    }
    std::string text() const;  // "DSDBD HOSPDBD (SAMPLE)"
};

struct KRMWTARN_API LockOwner {
    std::string user, host;
    long pid = 0;
    long session = 0;          // the server session (backend process) holding the lock; 0 for a file
    std::string text() const;  // "user@host (pid 123)", "user@host (pid 123, session 456)"
};

struct KRMWTARN_API UnitInfo {
    long long id = 0;
    UnitKey key;
    std::string name;
    long revision = 0;
    std::string storedBy, storedAt;
    bool locked = false;
    LockOwner lockOwner;
    std::string lockedAt;
};

struct KRMWTARN_API OpenOptions {
    bool create = true;  // make the file when it is missing
    std::string user;    // lock owner; default $KRMWTARN_USER, then $USER
    long maxPages = 0;   // size limit in pages (0: none), for tests of a full disk
};

class KRMWTARN_API Repository final : public DSRepositoryBackend {
public:
    // Opens the repository at a path or file: URL, or in the PostgreSQL
    // database of a postgresql:// (or postgres://) URL.
    static std::unique_ptr<Repository> open(const std::string& location, const OpenOptions& options = {});
    ~Repository() override;
    Repository(const Repository&) = delete;
    Repository& operator=(const Repository&) = delete;

    // Make this the repository behind the technology objects' unit operations.
    void makeCurrent();
    const std::string& location() const noexcept { return location_; }
    const LockOwner& owner() const noexcept { return owner_; }
    // Whether locks end with the session that took them (a server), rather
    // than lasting until they are unlocked (a file).
    bool locksEndWithSession() const noexcept { return owner_.session != 0; }

    // Store the units of these objects in one transaction (each unit once).
    void storeUnits(const std::vector<_ADObject*>& objects);
    // Store every unit of the live registry in one transaction.
    void storeAll();
    // Load a unit into the registry; answers its root.
    ADObject retrieveUnit(const UnitKey& key);
    // Load every unit of the repository.
    void retrieveAll();
    // Reload the unit of an object from the repository, dropping unstored changes.
    void refreshUnit(_ADObject* object);
    // Mark the unit of an object changed.
    void touchUnit(_ADObject* object);
    // What deleting the unit of an object removes from memory: its objects and
    // links, and the links of other units that reach them.
    std::vector<ADObject> deleteList(_ADObject* object);

    // Units in the repository.
    std::vector<UnitInfo> units();
    // The unit whose root has this object ID or name (refused when none or several).
    UnitInfo findUnit(const std::string& nameOrID);
    void lockUnit(const UnitKey& key);
    // Releases this owner's lock; `force` breaks another owner's lock whose
    // process is gone (or runs on another host).
    void unlockUnit(const UnitKey& key, bool force = false);
    // Removes a unit from the repository (and, when live, from memory).
    void deleteUnit(const UnitKey& key);
    // Copies a stored unit into another version of the repository.
    void copyUnit(const UnitKey& key, const std::string& toVersion);
    // The version the technology objects' copy() copies into.
    void setCopyVersion(std::string version) { copyVersion_ = std::move(version); }
    // Copies every unit of this repository, with its revision and who stored
    // it, into `target`, which must hold no unit yet (locks stay behind: they
    // belong to this repository's owners). Answers the number of units copied.
    std::size_t copyInto(Repository& target);

    // The unit key of the unit an object belongs to.
    UnitKey unitKeyOf(_ADObject* object);
    // The revision this program last stored or retrieved of a unit (0: none).
    long knownRevision(const UnitKey& key) const;

    // DSRepositoryBackend
    int store(_ADObject* object) override;
    int retrieve(_ADObject* object) override;
    int refresh(_ADObject* object) override;
    int lock(_ADObject* object) override;
    int unlock(_ADObject* object) override;
    int touch(_ADObject* object) override;
    int deleteFromRepository(_ADObject* object) override;
    int getDeleteList(_ADObject* object, DSModelCollection* into) override;
    int copy(_ADObject* object) override;

private:
    Repository(std::unique_ptr<Connection> connection, std::string location, LockOwner owner);
    void openSchema();
    void write(const std::vector<UnitContent>& units);
    [[noreturn]] void refuseRow(const RowRefused& e);
    // Drops the lock of a unit read from the repository when the session that
    // took it has ended.
    void settleLock(UnitInfo& unit);
    void load(const std::vector<long long>& unitIDs, bool all, bool refresh);
    bool lookupUnit(const UnitKey& key, UnitInfo& into);
    // The unit of this key; refused when it is not stored.
    UnitInfo storedUnit(const UnitKey& key);
    long long unitHolding(const char* className, const char* objID, const char* version);
    [[noreturn]] void raise(const std::exception& e, const std::string& doing);
    void forgetUnit(const UnitKey& key);

    std::unique_ptr<Connection> db_;
    const Schema* schema_;
    std::string location_;
    LockOwner owner_;
    std::string copyVersion_;
    // Over db_, and gone before it.
    std::unique_ptr<StatementCache> statements_;
    std::unique_ptr<UnitsTable> units_;
    // Links retrieved: their stored positions, and the rows that wait for their ends.
    std::unique_ptr<LinkAttacher> links_;
    // What this program knows of units: the revision it stored or retrieved,
    // and the roots it retrieved (held so a unit stays live with its session).
    std::map<UnitKey, long> revisions_;
    std::map<UnitKey, ADObject> roots_;
    // Units whose lock mark this program's session holds.
    std::vector<long long> marks_;
};

// Opens a repository and makes it the current one; closes it with the scope.
class KRMWTARN_API CurrentRepository {
public:
    explicit CurrentRepository(const std::string& location, const OpenOptions& options = {});
    ~CurrentRepository();
    Repository& operator*() const { return *repository_; }
    Repository* operator->() const { return repository_.get(); }

private:
    std::unique_ptr<Repository> repository_;
    DSRepositoryBackend* previous_;
};

}  // namespace krstore

// Repository.cpp — the unit operations over a Connection: units written in one
// transaction with their revision and lock checks, loaded by identity with every
// role's order restored, cross-unit links resolved when both ends are live.
// The same code serves an SQLite file and a PostgreSQL server; where they
// differ, the Connection says how (transactions, bulk rows, lock sessions).
#include <krmwtarn/store/Repository.h>

#include <krmwtarn/model/framework/KRLink.h>
#include <krmwtarn/platform/common/KVException.h>
#include <krmwtarn/platform/repository/DSRegistrar.h>
#include <krmwtarn/platform/repository/DSRegistration.h>
#include <krmwtarn/store/Schema.h>
#include <krmwtarn/store/Sql.h>
#include <krmwtarn/store/Units.h>

#include <algorithm>
#include <cerrno>
#include <csignal>
#include <cstdlib>
#include <cstring>
#include <ctime>
#include <map>
#include <unordered_set>

#include <pwd.h>
#include <unistd.h>

namespace krstore {

// ---- values ---------------------------------------------------------------

namespace {

struct Value {
    bool null = true;
    long long number = 0;
    std::string text;
};

// A column's value as its type reads it: text for strings and characters, a
// number for the rest (neither database is asked to convert the other way).
Value read(Statement& s, int column, ColumnType type) {
    Value v;
    if (s.isNull(column)) return v;
    v.null = false;
    if (adIsTextForm(type)) {
        if (const char* t = s.getText(column)) v.text = t;
    } else {
        v.number = s.getInt(column);
    }
    return v;
}

// A null string and the character 0 are bound as null.
void bindColumn(Parameters& s, int i, _ADObject* o, const Column& c) {
    adVisitValue(o, *c.row, c.type, [&](auto tr, auto value) {
        using T = decltype(tr);
        if constexpr (T::form == ADValueForm::Text) {
            if (value)
                s.bindText(i, value);
            else
                s.bindNull(i);
        } else if constexpr (T::form == ADValueForm::Char) {
            if (value)
                s.bindText(i, std::string_view(&value, 1));
            else
                s.bindNull(i);
        } else {
            s.bindInt(i, value);
        }
    });
}

// Sets one attribute from a value: a null text (or none at all) clears a
// string; `text` is the value's text when it has one.
void apply(_ADObject* o, const Column& c, const Value& v, omSetProcessing how, const char* text) {
    if (!c.row->setter.str) return;
    adAssignValue(o, *c.row, c.type, how, [&](auto tr) { return adFromPlain<decltype(tr)>(v.null, text, v.number); });
}
void apply(_ADObject* o, const Column& c, const Value& v, omSetProcessing how) { apply(o, c, v, how, v.text.c_str()); }
// Sets one attribute straight from the statement's current row, no copy made.
void apply(_ADObject* o, const Column& c, Statement& s, int column, omSetProcessing how) {
    Value v;
    v.null = s.isNull(column);
    const char* text = nullptr;
    if (!v.null) {
        if (adIsTextForm(c.type))
            text = s.getText(column);
        else
            v.number = s.getInt(column);
    }
    apply(o, c, v, how, text);
}

// Every change bit of an object off: attributes and roles by name, link ends.
void clearChanges(_ADObject* o) {
    if (o->isRelationshipObject()) static_cast<_ADLink*>(o)->setEndChanged(adEndSource | adEndTarget, false);
    if (!o->getChangeFlag(nullptr)) return;
    adForEachRow(o, [o](const ADAttributeEntry& row) {
        if (!adIsEndRow(row)) o->setChangeBit(row.name, omClearChanged);
    });
}

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

std::string now() {
    std::time_t t = std::time(nullptr);
    char text[32];
    std::tm tm{};
    gmtime_r(&t, &tm);
    std::strftime(text, sizeof text, "%Y-%m-%dT%H:%M:%SZ", &tm);
    return text;
}

[[noreturn]] void refuse(long number, const std::string& message) {
    throw new KVException("krmwtarn_store", number, message.c_str());
}

bool processGone(const LockOwner& o, const std::string& host) {
    if (o.host != host) return true;  // cannot be seen from here: the user decides
    return o.pid <= 0 || (::kill(static_cast<pid_t>(o.pid), 0) != 0 && errno == ESRCH);
}

// A transaction that rolls back unless committed.
class Transaction {
public:
    explicit Transaction(Connection& db, bool write) : db_(db) {
        if (write)
            db.beginWrite();
        else
            db.beginRead();
    }
    ~Transaction() {
        if (!done_) db_.rollback();
    }
    void commit() {
        db_.commit();
        done_ = true;
    }

private:
    Connection& db_;
    bool done_ = false;
};

// Inserts a link handle into a role at its stored position: behind every
// element stored before it (elements of unknown position count as before).
void insertAt(DSModelCollection* role, const ADObject& link, long position, int end, const LinkPositions& positions) {
    auto storedAt = [&](const ADObject& h) {
        const LinkPositions::Positions* at = positions.find(h.impl());
        return at ? (*at)[end] : -1;
    };
    long n = role->count();
    if (n == 0 || storedAt(*role->at(n - 1)) <= position) {
        role->addLast(link);
        return;
    }
    long k = 0;
    for (const ADObject& h : *role) {
        if (storedAt(h) > position) break;
        ++k;
    }
    role->addAfter(link, k - 1);
}

}  // namespace

struct Repository::LinkRow {
    // What attaching reads of every row, in position order and so all over
    // memory, lies in the row's first 64 bytes.
    long position[2] = {0, 0};
    // Resolved while attaching: the ends once live, the link once made.
    _ADObject* end[2] = {nullptr, nullptr};
    _KRLink* link = nullptr;
    const Table* table = nullptr;
    const char* endClass[2] = {nullptr, nullptr};
    std::string id, version;
    std::string endID[2];
    std::vector<Value> values;  // the attribute columns
};

std::string UnitKey::text() const { return className + " " + objID + " (" + version + ")"; }

std::string LockOwner::text() const {
    return user + "@" + host + " (pid " + std::to_string(pid) +
           (session ? ", session " + std::to_string(session) : std::string()) + ")";
}

// ---- opening --------------------------------------------------------------

namespace {
std::string pathOf(const std::string& location) {
    if (location.rfind("file://", 0) == 0) return location.substr(7);
    if (location.rfind("file:", 0) == 0) return location.substr(5);
    return location;
}

LockOwner ownerFor(const OpenOptions& options) {
    LockOwner o;
    o.user = options.user;
    if (o.user.empty())
        if (const char* u = std::getenv("KRMWTARN_USER")) o.user = u;
    if (o.user.empty())
        if (const char* u = std::getenv("USER")) o.user = u;
    if (o.user.empty())
        if (passwd* p = getpwuid(getuid())) o.user = p->pw_name;
    char host[256] = {};
    gethostname(host, sizeof host - 1);
    o.host = host;
    o.pid = static_cast<long>(getpid());
    return o;
}
}  // namespace

Repository::Repository(std::unique_ptr<Connection> connection, std::string location, LockOwner owner)
    : db_(std::move(connection)),
      schema_(&Schema::current(db_->dialect())),
      location_(std::move(location)),
      owner_(std::move(owner)) {
    owner_.session = db_->session();
    unitColumns_ =
        "unit_id, class, obj_id, version, name, revision, stored_by, stored_at, lock_user, lock_host, lock_pid,"
        " locked_at";
    unitColumns_ += owner_.session ? ", lock_session" : ", NULL";
}

Repository::~Repository() {
    if (dsrepository::current() == this) dsrepository::install(nullptr);
    pending_.clear();
    roots_.clear();
    statements_.clear();
}

std::unique_ptr<Repository> Repository::open(const std::string& location, const OpenOptions& options) {
    bool server = isPostgresURL(location);
    // A URL is shown without its password.
    std::string path = server ? withoutPassword(location) : pathOf(location);
    std::unique_ptr<Connection> db;
    try {
        db = server ? openPostgres(location) : openSqlite(path, options.create);
    } catch (const SqlError& e) {
        if (e.fault() == SqlFault::NotARepository)
            refuse(errNotARepository, path + " is not a KRMWTARN repository (not a database file)");
        if (e.fault() == SqlFault::Damaged)
            refuse(errDamaged, "repository " + path + " is damaged (truncated or corrupted): " + e.what());
        refuse(errCannotOpen, "cannot open repository " + path + ": " + e.what());
    }
    std::unique_ptr<Repository> r(new Repository(std::move(db), path, ownerFor(options)));
    r->openSchema();
    r->db_->limitPages(options.maxPages);
    return r;
}

void Repository::openSchema() {
    const Schema& schema = *schema_;
    std::string ddl;
    for (const std::string& s : schema.ddl()) ddl += s + ";\n";
    try {
        if (db_->isEmpty()) {
            if (db_->readOnly()) refuse(errReadOnly, "repository " + location_ + " is read-only and empty");
            Transaction t(*db_, true);
            // Two programs opening an empty database at once: the second finds the schema made.
            db_->serialize({"schema"});
            if (!db_->isEmpty()) {
                t.commit();
                openSchema();
                return;
            }
            db_->exec(ddl);
            db_->exec("CREATE TABLE repository_meta (key TEXT PRIMARY KEY, value TEXT)");
            auto s = db_->prepare("INSERT INTO repository_meta VALUES ('schema', ?)");
            s->bindText(0, ddl);
            s->step();
            db_->markRepository(Schema::kVersion);
            t.commit();
            return;
        }
        if (!db_->isRepository())
            refuse(errNotARepository, location_ + " is not a KRMWTARN repository (a database of another kind)");
        int version = db_->schemaVersion();
        if (version != Schema::kVersion)
            refuse(errSchemaVersion, "repository " + location_ + " has schema version " + std::to_string(version) +
                                         "; this program reads version " + std::to_string(Schema::kVersion));
        auto s = db_->prepare("SELECT value FROM repository_meta WHERE key = 'schema'");
        if (!s->step() || !s->getText(0) || ddl != s->getText(0))
            refuse(errSchemaVersion,
                   "repository " + location_ +
                       " was made for other classes: its tables differ from this program's class tables");
    } catch (const std::exception& e) {
        raise(e, "open");
    }
}

void Repository::makeCurrent() { dsrepository::install(this); }

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

CurrentRepository::CurrentRepository(const std::string& location, const OpenOptions& options)
    : repository_(Repository::open(location, options)), previous_(dsrepository::install(repository_.get())) {}

CurrentRepository::~CurrentRepository() {
    dsrepository::install(previous_);
    repository_.reset();
}

Statement& Repository::statement(const std::string& sql) {
    auto& s = statements_[sql];
    if (!s) s = db_->prepare(sql);
    s->reset();
    return *s;
}

// ---- the unit table -------------------------------------------------------

namespace {
// A unit's row, read by the columns of unitColumns_.
UnitInfo unitFrom(Statement& s) {
    UnitInfo u;
    auto text = [&](int c) { return std::string(s.getText(c) ? s.getText(c) : ""); };
    u.id = s.getInt(0);
    u.key = {text(1), text(2), text(3)};
    u.name = text(4);
    u.revision = static_cast<long>(s.getInt(5));
    u.storedBy = text(6);
    u.storedAt = text(7);
    u.locked = !s.isNull(8);
    u.lockOwner = {text(8), text(9), static_cast<long>(s.getInt(10)), static_cast<long>(s.getInt(12))};
    u.lockedAt = text(11);
    return u;
}
}  // namespace

void Repository::settleLock(UnitInfo& u) {
    if (!u.locked || !u.lockOwner.session || db_->holdsMark(u.lockOwner.session, u.id)) return;
    u.locked = false;
    u.lockOwner = {};
    u.lockedAt.clear();
}

bool Repository::lookupUnit(const UnitKey& key, UnitInfo& into) {
    Statement& s = statement("SELECT " + unitColumns_ + " FROM units WHERE class = ? AND obj_id = ? AND version = ?");
    s.bindText(0, key.className);
    s.bindText(1, key.objID);
    s.bindText(2, key.version);
    if (!s.step()) return false;
    into = unitFrom(s);
    s.reset();
    settleLock(into);
    return true;
}

long long Repository::unitHolding(const char* className, const char* objID, const char* version) {
    const Table* t = schema_->table(className);
    if (!t) return 0;
    Statement& s = statement("SELECT unit FROM " + t->name + " WHERE obj_id = ? AND version = ?");
    s.bindText(0, objID);
    s.bindText(1, version);
    long long unit = s.step() ? s.getInt(0) : 0;
    s.reset();
    return unit;
}

std::vector<UnitInfo> Repository::units() {
    std::vector<UnitInfo> all;
    try {
        Statement& s = statement("SELECT " + unitColumns_ + " FROM units ORDER BY class, obj_id, version");
        while (s.step()) all.push_back(unitFrom(s));
        s.reset();
        for (UnitInfo& u : all) settleLock(u);
        // In the same order from every database, whatever its collation.
        std::sort(all.begin(), all.end(), [](const UnitInfo& a, const UnitInfo& b) { return a.key < b.key; });
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

void Repository::write(std::vector<UnitContent>& units) {
    if (units.empty()) return;
    if (db_->readOnly()) refuse(errReadOnly, "repository " + location_ + " is read-only: cannot store");
    const Schema& schema = *schema_;
    // Every link's position in both ends' roles, from the roles of the units' objects.
    std::unordered_map<_ADObject*, std::array<long, 2>> positions;
    std::size_t links = 0;
    for (const UnitContent& u : units) links += u.links.size();
    positions.reserve(links);
    auto note = [&](_ADObject* o) {
        forEachRole(o, [&](const ADAttributeEntry& row, DSModelCollection* role) {
            int end = adRoleEnd(row);
            long i = 0;
            for (const ADObject& h : *role) {
                auto [it, added] = positions.try_emplace(h.impl(), std::array<long, 2>{-1, -1});
                it->second[end] = i++;
            }
        });
    };
    for (UnitContent& u : units) {
        for (_ADObject* o : u.objects) note(o);
        for (_ADObject* l : u.links) note(l);
    }
    auto positionOf = [&](_ADObject* link, int end) {
        auto it = positions.find(link);
        long p = it == positions.end() ? -1 : it->second[end];
        return p >= 0 ? p : positionInEnd(link, end);
    };
    // Rows table by table (each table's rows are written together): objects
    // and links sorted by their class's table.
    std::unordered_map<const char*, const Table*> tableOf;
    std::vector<std::vector<std::pair<_ADObject*, std::size_t>>> byTable(schema.tables().size());
    auto sort = [&](_ADObject* o, std::size_t unit) {
        const char* cls = o->whoAmI();
        auto [it, added] = tableOf.try_emplace(cls, nullptr);
        if (added) it->second = schema.table(cls);
        if (!it->second) refuse(errDatabase, std::string("class ") + cls + " has no table in the repository");
        byTable[static_cast<std::size_t>(it->second - schema.tables().data())].emplace_back(o, unit);
    };
    for (std::size_t i = 0; i < units.size(); ++i) {
        for (_ADObject* o : units[i].objects) sort(o, i);
        for (_ADObject* l : units[i].links) sort(l, i);
    }
    std::vector<UnitKey> keys;
    std::vector<std::string> serialized;
    for (const UnitContent& u : units) {
        keys.push_back(keyOf(u.root));
        serialized.push_back(keys.back().text());
    }
    std::vector<long> revisions(units.size());
    // Rows go in bulk where the database has a bulk path; a row refused there
    // is not named by the database, so the store is tried again row by row to
    // name it (the first attempt left nothing behind).
    for (bool bulk = true;; bulk = false) {
        std::string doing = "store";
        const Table* failedTable = nullptr;
        _ADObject* failedObject = nullptr;
        bool rowNamed = true;
        try {
            Transaction t(*db_, true);
            db_->serialize(serialized);
            std::string stamp = now();
            db_->exec("CREATE TEMP TABLE IF NOT EXISTS restored (id INTEGER PRIMARY KEY)");
            db_->exec("DELETE FROM restored");
            bool anyRestored = false;
            std::vector<long long> ids(units.size());
            for (std::size_t i = 0; i < units.size(); ++i) {
                _ADObject* root = units[i].root;
                const UnitKey& key = keys[i];
                UnitInfo stored;
                if (lookupUnit(key, stored)) {
                    if (stored.locked && (stored.lockOwner.user != owner_.user || stored.lockOwner.host != owner_.host))
                        refuse(errLocked, "unit " + key.text() + " is locked by " + stored.lockOwner.text() +
                                              " since " + stored.lockedAt + "; not stored");
                    if (knownRevision(key) != stored.revision)
                        refuse(errStale, "unit " + key.text() + " was stored meanwhile by " + stored.storedBy +
                                             " at revision " + std::to_string(stored.revision) + " (" +
                                             stored.storedAt + "); retrieve or refresh it before storing");
                    ids[i] = stored.id;
                    revisions[i] = stored.revision + 1;
                    Statement& u = statement(
                        "UPDATE units SET revision = ?, name = ?, stored_by = ?, stored_at = ? WHERE unit_id = ?");
                    u.bindInt(0, revisions[i]);
                    u.bindText(1, nameOf(root));
                    u.bindText(2, owner_.text());
                    u.bindText(3, stamp);
                    u.bindInt(4, stored.id);
                    u.step();
                    Statement& r = statement("INSERT INTO restored VALUES (?)");
                    r.bindInt(0, stored.id);
                    r.step();
                    anyRestored = true;
                } else {
                    Statement& u = statement(
                        "INSERT INTO units (class, obj_id, version, name, revision, stored_by, stored_at)"
                        " VALUES (?, ?, ?, ?, 1, ?, ?) RETURNING unit_id");
                    u.bindText(0, key.className);
                    u.bindText(1, key.objID);
                    u.bindText(2, key.version);
                    u.bindText(3, nameOf(root));
                    u.bindText(4, owner_.text());
                    u.bindText(5, stamp);
                    u.step();
                    ids[i] = u.getInt(0);
                    u.reset();
                    revisions[i] = 1;
                }
            }
            if (anyRestored) {
                // The rows stored before go, every table in one go.
                std::string clear;
                for (const Table& table : schema.tables())
                    clear += "DELETE FROM " + table.name + " WHERE unit IN (SELECT id FROM restored);\n";
                db_->exec(clear);
            }
            for (std::size_t ti = 0; ti < byTable.size(); ++ti) {
                if (byTable[ti].empty()) continue;
                const Table* table = &schema.tables()[ti];
                std::unique_ptr<RowWriter> w = db_->writeRows(table->name, table->columnNames, bulk);
                failedTable = table;
                rowNamed = w->rowByRow();
                const auto& rows = byTable[ti];
                for (std::size_t r = 0; r < rows.size(); ++r) {
                    // The rows' objects lie all over memory: each is fetched a
                    // few rows ahead, and a link's ends once the link is in.
                    if (r + 8 < rows.size()) {
                        __builtin_prefetch(rows[r + 8].first);
                        __builtin_prefetch(reinterpret_cast<const char*>(rows[r + 8].first) + 64);
                    }
                    if (table->isLink && r + 4 < rows.size()) {
                        auto* ahead = static_cast<_ADLink*>(rows[r + 4].first);
                        __builtin_prefetch(ahead->getSource()->impl());
                        __builtin_prefetch(ahead->getTarget()->impl());
                    }
                    auto [o, unit] = rows[r];
                    failedObject = o;
                    w->bindText(Table::kId, o->objID());
                    w->bindText(Table::kVersion, o->context());
                    w->bindInt(Table::kUnit, ids[unit]);
                    if (table->isLink) {
                        auto* l = static_cast<_ADLink*>(o);
                        _ADObject* ends[2] = {l->getSource()->impl(), l->getTarget()->impl()};
                        for (int end = 0; end < 2; ++end) {
                            int base = end == 0 ? Table::kSourceClass : Table::kTargetClass;
                            w->bindText(base, ends[end]->whoAmI());
                            w->bindText(base + 1, ends[end]->objID());
                            w->bindInt(base + 2, positionOf(o, end));
                        }
                    }
                    int c = table->firstAttribute();
                    for (const Column& col : table->columns) bindColumn(*w, c++, o, col);
                    w->endRow();
                }
                w->finish();
                rowNamed = true;
            }
            failedObject = nullptr;
            doing = "commit the store";
            t.commit();
            break;
        } catch (const SqlError& e) {
            bool refusedRow = e.fault() == SqlFault::Duplicate || e.fault() == SqlFault::Constraint;
            if (refusedRow && failedObject && !rowNamed && bulk) continue;
            if (refusedRow && failedObject) {
                std::string what = std::string(failedObject->whoAmI()) + " " + failedObject->objID() + " (" +
                                   failedObject->context() + ")";
                if (e.fault() == SqlFault::Duplicate) {
                    long long holder = 0;
                    std::string claimed;
                    try {
                        holder =
                            unitHolding(failedTable->className.c_str(), failedObject->objID(), failedObject->context());
                        for (const UnitInfo& u : this->units())
                            if (u.id == holder) claimed = u.key.text();
                    } catch (const std::exception&) {
                    }
                    UnitResolver resolver;
                    refuse(errClaimedTwice,
                           what + " belongs to unit " + (claimed.empty() ? "stored earlier" : claimed) + "; unit " +
                               keyOf(resolver.rootOf(failedObject)).text() + " claims it too; nothing stored");
                }
                refuse(errValueRefused, "cannot store " + what + ": a value is out of its column's range (" + e.what() +
                                            "); nothing stored");
            }
            raise(e, doing);
        }
    }
    for (std::size_t i = 0; i < units.size(); ++i) {
        revisions_[keys[i]] = revisions[i];
        for (_ADObject* o : units[i].objects) clearChanges(o);
        for (_ADObject* l : units[i].links) {
            clearChanges(l);
            positions_.set(l, {positionOf(l, 0), positionOf(l, 1)});
        }
    }
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
    const Schema& schema = *schema_;
    omSetProcessing how = refresh ? (omStore | omClearChanged) : (omStore | omKeepChanged);
    std::vector<ADObject> held;  // what this load made or shared, until the links hold it
    std::vector<std::unique_ptr<LinkRow>> links;
    std::vector<ADObject> madeLinks;  // the links this load made
    std::vector<std::pair<UnitKey, long>> loaded;
    // A load that fails takes its links out again: the objects it made go
    // with `held`, and what was live before is as it was.
    auto undoLinks = [&] {
        for (auto it = madeLinks.rbegin(); it != madeLinks.rend(); ++it) {
            positions_.erase(it->impl());
            (*it)->markDeleted(nullptr, 0);
        }
        madeLinks.clear();
    };
    try {
        Transaction t(*db_, false);
        // A table's row: an object by identity with its values, or a link row
        // that waits until its ends are live.
        const Table* lastEnd[2] = {nullptr, nullptr};
        auto tableRow = [&](const Table& table, Statement& s) {
            int first = table.firstAttribute();
            if (!table.isLink) {
                const char* id = s.getText(Table::kId);
                const char* version = s.getText(Table::kVersion);
                ADObject* made = DSRegistration::create(table.className.c_str(), version, id);
                if (!made || made->isEmpty()) {
                    delete made;
                    refuse(errDamaged, "repository " + location_ + " holds an object of class " + table.className +
                                           ", which no loaded component makes");
                }
                held.emplace_back(std::move(*made));
                delete made;
                _ADObject* o = held.back().impl();
                int c = first;
                for (const Column& col : table.columns) apply(o, col, s, c++, how);
                return;
            }
            auto row = std::make_unique<LinkRow>();
            row->table = &table;
            row->id = s.getText(Table::kId);
            row->version = s.getText(Table::kVersion);
            for (int end = 0; end < 2; ++end) {
                int base = end == 0 ? Table::kSourceClass : Table::kTargetClass;
                // A link table's rows mostly name the same end classes one after another.
                const char* endName = s.getText(base);
                const Table*& endTable = lastEnd[end];
                if (!endTable || !endName || endTable->className != endName) endTable = schema.table(endName);
                const char* endID = s.getText(base + 1);
                if (!endTable || !endID)
                    refuse(errDamaged, "repository " + location_ + " names an unknown class " +
                                           (endName ? endName : "(none)") + " or no object at a link end");
                row->endClass[end] = endTable->className.c_str();
                row->endID[end] = endID;
                row->position[end] = static_cast<long>(s.getInt(base + 2));
            }
            row->values.reserve(table.columns.size());
            int c = first;
            for (const Column& col : table.columns) row->values.push_back(read(s, c++, col.type));
            links.push_back(std::move(row));
        };
        // Every unit's rows (or one unit's), all tables in one round trip.
        std::vector<long long> rounds = all ? std::vector<long long>{-1} : unitIDs;
        for (long long id : rounds) {
            auto bound = [&](const std::string& select, const char* unitColumn) -> Statement* {
                if (id < 0) return &statement(select);
                Statement& s = statement(select + " WHERE " + unitColumn + " = ?");
                s.bindInt(0, id);
                return &s;
            };
            std::vector<Statement*> batch{bound("SELECT " + unitColumns_ + " FROM units", "unit_id")};
            for (const Table& table : schema.tables()) batch.push_back(bound(table.selectAll, "unit"));
            db_->fetch(batch);
            for (std::size_t i = 0; i < batch.size(); ++i) {
                Statement& s = *batch[i];
                while (s.step()) {
                    if (i == 0) {
                        UnitInfo u = unitFrom(s);
                        loaded.emplace_back(u.key, u.revision);
                    } else {
                        tableRow(schema.tables()[i - 1], s);
                    }
                }
                s.reset();
                // From a server, a link table's rows are attached as soon as
                // they are in, while the server sends the next tables. (From
                // a file nothing runs meanwhile: the rows wait for the end,
                // where they are attached together.)
                if (db_->sendsMeanwhile() && i > 0 && schema.tables()[i - 1].isLink && !links.empty())
                    attachPending(links, madeLinks);
            }
        }
        t.commit();
    } catch (const SqlError& e) {
        undoLinks();
        raise(e, "retrieve");
    } catch (...) {
        undoLinks();
        throw;
    }
    if (refresh) {
        // Unstored changes go: the attribute setters cleared their bits; roles and ends follow.
        for (const ADObject& h : held) clearChanges(h.impl());
    }
    for (auto& [key, revision] : loaded) {
        revisions_[key] = revision;
        if (_ADObject* root = DSRegistrar::findObj(key.className.c_str(), key.objID.c_str(), key.version.c_str()))
            roots_[key] = ADObject(root);
    }
    // Links: first every link object by identity (links may be ends of links),
    // then the source ends in source-role order, then the target ends.
    for (auto& row : links) pending_.push_back(std::move(row));
    attachPending(pending_, madeLinks);
}

void Repository::attachPending(std::vector<std::unique_ptr<LinkRow>>& rows, std::vector<ADObject>& made) {
    // A link row whose ends are live is made now; the others wait for their
    // units. A link made now may be the end of another, so rows whose end is
    // missing are looked at again while links are being made.
    std::vector<LinkRow*> ready;
    // Rows go in groups: the group's missing ends and the links' own
    // identities are looked up together (which also brings the registry slots
    // that making the links touches into the cache), then the links are made.
    constexpr std::size_t kGroup = 64;
    std::vector<DSRegistrar::Key> keys;
    std::vector<_ADObject**> into;
    std::vector<_ADObject*> found;
    _ADObject* linkItself = nullptr;
    for (bool progress = true; progress;) {
        progress = false;
        for (std::size_t first = 0; first < rows.size(); first += kGroup) {
            std::size_t last = std::min(rows.size(), first + kGroup);
            if (first % (16 * kGroup) == 0) db_->poll();
            keys.clear();
            into.clear();
            for (std::size_t r = first; r < last; ++r) {
                LinkRow& row = *rows[r];
                if (row.link) continue;
                for (int end = 0; end < 2; ++end)
                    if (!row.end[end]) {
                        keys.push_back({row.endClass[end], row.endID[end].c_str(), row.version.c_str()});
                        into.push_back(&row.end[end]);
                    }
                keys.push_back({row.table->className.c_str(), row.id.c_str(), row.version.c_str()});
                into.push_back(&linkItself);
            }
            found.resize(keys.size());
            DSRegistrar::findObjs(keys.size(), keys.data(), found.data());
            for (std::size_t i = 0; i < keys.size(); ++i) *into[i] = found[i];
            for (std::size_t r = first; r < last; ++r) {
                LinkRow& row = *rows[r];
                if (row.link || !row.end[0] || !row.end[1]) continue;
                ADObject* h = DSRegistration::create(row.table->className.c_str(), row.version.c_str(), row.id.c_str());
                if (h && !h->isEmpty() && h->impl()->isRelationshipObject()) {
                    row.link = static_cast<_KRLink*>(h->impl());
                    made.emplace_back(std::move(*h));
                    ready.push_back(&row);
                    progress = true;
                }
                delete h;
            }
        }
    }
    positions_.reserve(positions_.size() + ready.size());
    // Whether an end object fits its link's end depends on its class alone:
    // asked once per stored class and declared end class (the stored names
    // are the schema's own strings, so their addresses tell them apart).
    std::map<std::pair<const char*, const char*>, bool> fits;
    auto endFits = [&fits](const char* storedClass, _ADObject* o, const char* declared) {
        auto [it, fresh] = fits.try_emplace({storedClass, declared}, false);
        if (fresh) it->second = o->isKindOf(declared) != 0;
        return it->second;
    };
    // Each end's pass takes the rows by their stored position at that end,
    // ties in the order the previous pass left. A position is a place in a
    // role, so they are small: a counting sort over a contiguous copy of them
    // orders the rows in linear time. Positions out of that range (only a
    // damaged repository has them) are sorted by comparison.
    std::vector<long> positionOf(ready.size());
    std::vector<std::size_t> counts;
    std::vector<std::pair<long, std::size_t>> byPosition;
    std::vector<LinkRow*> sorted(ready.size());
    for (int end = 0; end < 2; ++end) {
        const long limit = 4 * static_cast<long>(ready.size()) + 1024;
        long most = -1;
        bool small = true;
        for (std::size_t i = 0; i < ready.size(); ++i) {
            long p = positionOf[i] = ready[i]->position[end];
            small = small && p >= 0 && p <= limit;
            most = std::max(most, p);
        }
        if (small) {
            counts.assign(static_cast<std::size_t>(most) + 2, 0);
            for (long p : positionOf) ++counts[static_cast<std::size_t>(p) + 1];
            for (std::size_t k = 1; k < counts.size(); ++k) counts[k] += counts[k - 1];
            for (std::size_t i = 0; i < ready.size(); ++i)
                sorted[counts[static_cast<std::size_t>(positionOf[i])]++] = ready[i];
        } else {
            byPosition.resize(ready.size());
            for (std::size_t i = 0; i < ready.size(); ++i) byPosition[i] = {positionOf[i], i};
            std::sort(byPosition.begin(), byPosition.end());
            for (std::size_t i = 0; i < ready.size(); ++i) sorted[i] = ready[byPosition[i].second];
        }
        ready.swap(sorted);
        // Position order visits rows, links and end objects all over memory:
        // each is fetched a few rows ahead of its use, in stages: the row, then
        // the link and the end object, then the link's end slot and the end's
        // role, whose places are known once the objects' first lines are in.
        constexpr std::size_t kAhead = 8;
        for (std::size_t i = 0; i < ready.size(); ++i) {
            if (i + 3 * kAhead < ready.size()) __builtin_prefetch(ready[i + 3 * kAhead]);
            if (i + 2 * kAhead < ready.size()) {
                const LinkRow* ahead = ready[i + 2 * kAhead];
                __builtin_prefetch(ahead->link);
                __builtin_prefetch(ahead->end[end]);
            }
            if (i + kAhead < ready.size()) {
                const LinkRow* ahead = ready[i + kAhead];
                __builtin_prefetch(&ahead->link->endSlot(end));
                __builtin_prefetch(ahead->link->linkInfo().role[end](ahead->end[end]));
                if (end == 0) positions_.prefetch(ahead->link);
            }
            if (i % 1024 == 0) db_->poll();
            LinkRow* row = ready[i];
            _KRLink* link = row->link;
            if (end == 0) {
                // A live link keeps its changed values; a new one takes the stored ones.
                int c = 0;
                for (const Column& col : row->table->columns)
                    apply(link, col, row->values[c++], omStore | omKeepChanged);
                positions_.set(link, {row->position[0], row->position[1]});
            }
            ADObject& slot = link->endSlot(end);
            if (!slot.isEmpty()) continue;
            _ADObject* o = row->end[end];
            const KRLinkInfo& info = link->linkInfo();
            if (!endFits(row->endClass[end], o, info.endClass[end])) continue;
            slot = o;
            insertAt(info.role[end](o), ADObject(link), row->position[end], end, positions_);
        }
    }
    rows.erase(
        std::remove_if(rows.begin(), rows.end(), [](const std::unique_ptr<LinkRow>& r) { return r->link != nullptr; }),
        rows.end());
    // What still waits is looked up afresh next time: its live end may go meanwhile.
    for (auto& row : rows) row->end[0] = row->end[1] = nullptr;
}

// ---- refresh, touch, delete list ------------------------------------------

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
        positions_.erase(l.impl());
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

// ---- locks, delete, copy --------------------------------------------------

void Repository::lockUnit(const UnitKey& key) {
    try {
        Transaction t(*db_, true);
        db_->serialize({key.text()});
        UnitInfo u;
        if (!lookupUnit(key, u)) refuse(errNotStored, "unit " + key.text() + " is not in repository " + location_);
        if (u.locked && (u.lockOwner.user != owner_.user || u.lockOwner.host != owner_.host))
            refuse(errLocked, "unit " + key.text() + " is locked by " + u.lockOwner.text() + " since " + u.lockedAt);
        // On a server the lock names this session, whose mark keeps it in force.
        Statement& s =
            statement(std::string("UPDATE units SET lock_user = ?, lock_host = ?, lock_pid = ?, locked_at = ?") +
                      (owner_.session ? ", lock_session = ?" : "") + " WHERE unit_id = ?");
        int i = 0;
        s.bindText(i++, owner_.user);
        s.bindText(i++, owner_.host);
        s.bindInt(i++, owner_.pid);
        s.bindText(i++, now());
        if (owner_.session) s.bindInt(i++, owner_.session);
        s.bindInt(i, u.id);
        s.step();
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
        UnitInfo u;
        if (!lookupUnit(key, u)) refuse(errNotStored, "unit " + key.text() + " is not in repository " + location_);
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
        Statement& s = statement(
            std::string("UPDATE units SET lock_user = NULL, lock_host = NULL, lock_pid = NULL, locked_at = NULL") +
            (owner_.session ? ", lock_session = NULL" : "") + " WHERE unit_id = ?");
        s.bindInt(0, u.id);
        s.step();
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
        UnitInfo u;
        if (!lookupUnit(key, u)) refuse(errNotStored, "unit " + key.text() + " is not in repository " + location_);
        if (u.locked && (u.lockOwner.user != owner_.user || u.lockOwner.host != owner_.host))
            refuse(errLocked, "unit " + key.text() + " is locked by " + u.lockOwner.text() + " since " + u.lockedAt +
                                  "; not deleted");
        long known = knownRevision(key);
        if (known && known != u.revision)
            refuse(errStale, "unit " + key.text() + " was stored meanwhile by " + u.storedBy + " at revision " +
                                 std::to_string(u.revision) + "; not deleted");
        Statement& s = statement("DELETE FROM units WHERE unit_id = ?");
        s.bindInt(0, u.id);
        s.step();
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
                positions_.erase(o.impl());
                o->markDeleted(nullptr, 0);
            }
        for (ADObject& o : list)
            if (!o->isRelationshipObject()) o->markDeleted(nullptr, 0);
    }
    forgetUnit(key);
}

void Repository::copyUnit(const UnitKey& key, const std::string& toVersion) {
    if (db_->readOnly()) refuse(errReadOnly, "repository " + location_ + " is read-only: cannot copy " + key.text());
    UnitKey to{key.className, key.objID, toVersion};
    try {
        Transaction t(*db_, true);
        db_->serialize({key.text(), to.text()});
        UnitInfo u, exists;
        if (!lookupUnit(key, u)) refuse(errNotStored, "unit " + key.text() + " is not in repository " + location_);
        if (lookupUnit(to, exists))
            refuse(errCopyExists, "unit " + to.text() + " is already in the repository; not copied");
        Statement& s = statement(
            "INSERT INTO units (class, obj_id, version, name, revision, stored_by, stored_at)"
            " VALUES (?, ?, ?, ?, 1, ?, ?) RETURNING unit_id");
        s.bindText(0, to.className);
        s.bindText(1, to.objID);
        s.bindText(2, to.version);
        s.bindText(3, u.name);
        s.bindText(4, owner_.text());
        s.bindText(5, now());
        s.step();
        long long id = s.getInt(0);
        s.reset();
        for (const Table& table : schema_->tables()) {
            Statement& c = statement(table.copyUnit);
            c.bindText(0, toVersion);
            c.bindInt(1, id);
            c.bindInt(2, u.id);
            c.step();
        }
        t.commit();
    } catch (const SqlError& e) {
        if (e.fault() == SqlFault::Duplicate || e.fault() == SqlFault::Constraint)
            refuse(errClaimedTwice, "unit " + key.text() + " cannot be copied into version " + toVersion +
                                        ": an object of it is already there in another unit (" + e.what() + ")");
        raise(e, "copy " + key.text());
    }
}

// ---- a whole repository into another ---------------------------------------

std::size_t Repository::copyInto(Repository& target) {
    const Schema& from = *schema_;
    const Schema& to = *target.schema_;
    if (target.db_->readOnly())
        refuse(errReadOnly, "repository " + target.location_ + " is read-only: cannot copy into it");
    std::size_t copied = 0;
    try {
        Transaction reading(*db_, false);
        Transaction writing(*target.db_, true);
        target.db_->serialize({"schema"});
        Statement& count = target.statement("SELECT count(*) FROM units");
        long long there = count.step() ? count.getInt(0) : 0;
        count.reset();
        if (there > 0)
            refuse(errNotEmpty, "repository " + target.location_ + " is not empty (" + std::to_string(there) +
                                    " units); units are copied into an empty repository only");
        // Units first, each with the number the target gives it.
        std::unordered_map<long long, long long> ids;
        Statement& units =
            statement("SELECT unit_id, class, obj_id, version, name, revision, stored_by, stored_at FROM units");
        Statement& add = target.statement(
            "INSERT INTO units (class, obj_id, version, name, revision, stored_by, stored_at)"
            " VALUES (?, ?, ?, ?, ?, ?, ?) RETURNING unit_id");
        while (units.step()) {
            for (int c = 1; c <= 7; ++c) {
                if (c == 5)
                    add.bindInt(c - 1, units.getInt(c));
                else if (const char* text = units.getText(c))
                    add.bindText(c - 1, text);
                else
                    add.bindNull(c - 1);
            }
            add.step();
            ids[units.getInt(0)] = add.getInt(0);
            add.reset();
            ++copied;
        }
        units.reset();
        // Then every table's rows as they are, in bulk.
        for (std::size_t ti = 0; ti < from.tables().size(); ++ti) {
            const Table& a = from.tables()[ti];
            const Table* b = to.table(a.className.c_str());
            if (!b || b->columns.size() != a.columns.size())
                refuse(errSchemaVersion, "repository " + target.location_ + " was made for other classes (" +
                                             a.className + "); nothing copied");
            Statement& rows = statement(a.selectAll);
            std::unique_ptr<RowWriter> w;
            while (rows.step()) {
                if (!w) w = target.db_->writeRows(b->name, b->columnNames, true);
                int columns = a.firstAttribute() + static_cast<int>(a.columns.size());
                for (int c = 0; c < columns; ++c) {
                    bool number = c == Table::kUnit || (a.isLink && (c == Table::kSourcePos || c == Table::kTargetPos));
                    if (c >= a.firstAttribute()) {
                        number = !adIsTextForm(a.columns[static_cast<std::size_t>(c - a.firstAttribute())].type);
                    }
                    if (rows.isNull(c))
                        w->bindNull(c);
                    else if (c == Table::kUnit)
                        w->bindInt(c, ids.at(rows.getInt(c)));
                    else if (number)
                        w->bindInt(c, rows.getInt(c));
                    else
                        w->bindText(c, rows.getText(c));
                }
                w->endRow();
            }
            rows.reset();
            if (w) w->finish();
        }
        writing.commit();
        reading.commit();
    } catch (const SqlError& e) {
        target.raise(e, "copy the units of " + location_);
    }
    return copied;
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

// RepositoryOpen.cpp — a repository opened by path, file: URL or postgresql://
// URL: its owner for locks taken from the environment, its schema made in an
// empty database (once, however many programs open it at once) or checked
// against this program's class tables.
#include <krmwtarn/store/Repository.h>

#include <krmwtarn/platform/repository/DSRegistrar.h>
#include <krmwtarn/store/LinkAttacher.h>
#include <krmwtarn/store/Refusal.h>
#include <krmwtarn/store/Schema.h>
#include <krmwtarn/store/Sql.h>
#include <krmwtarn/store/UnitsTable.h>

#include <cstdlib>

#include <pwd.h>
#include <unistd.h>

namespace krstore {

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
    statements_ = std::make_unique<StatementCache>(*db_);
    units_ = std::make_unique<UnitsTable>(*db_, owner_.session != 0);
    links_ = std::make_unique<LinkAttacher>(*db_);
}

Repository::~Repository() {
    if (dsrepository::current() == this) dsrepository::install(nullptr);
    links_->clearWaiting();
    roots_.clear();
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

CurrentRepository::CurrentRepository(const std::string& location, const OpenOptions& options)
    : repository_(Repository::open(location, options)), previous_(dsrepository::install(repository_.get())) {}

CurrentRepository::~CurrentRepository() {
    dsrepository::install(previous_);
    repository_.reset();
}

}  // namespace krstore

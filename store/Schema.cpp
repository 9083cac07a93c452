// Schema.cpp — generation of the repository's tables from the class tables:
// type names map to column types with range checks (string TEXT; boolean, short,
// ushort and long INTEGER within their ranges; char TEXT of one character),
// in SQLite's or PostgreSQL's SQL.
#include <krmwtarn/store/Schema.h>

#include <krmwtarn/platform/repository/DSRegistration.h>
#include <krmwtarn/store/UnitsTable.h>

#include <algorithm>
#include <cctype>
#include <cstring>
#include <set>

namespace krstore {

std::string quoted(const std::string& name) { return "\"" + name + "\""; }

std::string identifier(const std::string& name, Dialect dialect) {
    if (dialect == Dialect::Sqlite) return quoted(name);
    std::string lower = name;
    for (char& c : lower) c = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
    return quoted(lower);
}

namespace {

// Text for strings, one character of text for a char, an integer within
// the range the type's column admits for the rest.
std::string columnDefinition(const Column& c, Dialect dialect) {
    std::string q = identifier(c.name, dialect);
    const ADValueTypeInfo& type = adValueTypeInfo(c.type);
    switch (type.form) {
        case ADValueForm::Text:
            return q + " TEXT";
        case ADValueForm::Char:
            return q + " TEXT CHECK (length(" + q + ") = 1)";
        case ADValueForm::Integer:
            return q + " INTEGER CHECK (" + q + " BETWEEN " + std::to_string(type.columnLow) + " AND " +
                   std::to_string(type.columnHigh) + ")";
    }
    return q;
}

bool isLinkClass(const _classStruct* c) {
    for (int depth = 0; c && depth < 32; ++depth) {
        if (std::strcmp(c->className, "ADLink") == 0) return true;
        c = adSuperclass(c);
    }
    return false;
}

Table tableOf(const _classStruct* cls, Dialect dialect) {
    auto id = [dialect](const std::string& name) { return identifier(name, dialect); };
    Table t;
    t.className = cls->className;
    t.isLink = isLinkClass(cls);
    std::set<std::string> names = {"obj_id", "version", "unit"};
    if (t.isLink)
        for (const char* n : {"source_class", "source_id", "source_pos", "target_class", "target_id", "target_pos"})
            names.insert(n);
    // The attribute-table chain: the class's own rows, then its superclass's.
    adForEachClassRow(cls, [&](const _classStruct& c, const ADAttributeEntry& row) {
        const ADValueTypeInfo* type = adFindValueType(row.type);
        if (!adIsAttributeRow(row) || !type) return;
        std::string name = row.name;
        // A name the chain already uses is qualified by the class that declares it.
        if (!names.insert(name).second) name = std::string(c.className) + "_" + name;
        names.insert(name);
        t.columns.push_back({name, type->type, &row});
    });

    std::string q = id(t.className);
    t.name = q;
    std::string cols = "obj_id, version, unit";
    t.columnNames = {"obj_id", "version", "unit"};
    std::string def = "obj_id TEXT NOT NULL, version TEXT NOT NULL, unit INTEGER NOT NULL REFERENCES " +
                      UnitsTable::reference() + " ON DELETE CASCADE";
    if (t.isLink) {
        cols += ", source_class, source_id, source_pos, target_class, target_id, target_pos";
        for (const char* n : {"source_class", "source_id", "source_pos", "target_class", "target_id", "target_pos"})
            t.columnNames.push_back(n);
        def +=
            ", source_class TEXT NOT NULL, source_id TEXT NOT NULL, source_pos INTEGER NOT NULL"
            ", target_class TEXT NOT NULL, target_id TEXT NOT NULL, target_pos INTEGER NOT NULL";
    }
    // The version and unit of a copy are parameters whose type the server
    // cannot tell from a select list: cast.
    std::string copyCols = "obj_id, CAST(? AS TEXT), CAST(? AS INTEGER)";
    if (t.isLink) copyCols += ", source_class, source_id, source_pos, target_class, target_id, target_pos";
    for (const Column& col : t.columns) {
        copyCols += ", " + id(col.name);
        cols += ", " + id(col.name);
        t.columnNames.push_back(id(col.name));
        def += ", " + columnDefinition(col, dialect);
    }
    t.create = "CREATE TABLE " + q + " (" + def + ", PRIMARY KEY (obj_id, version))" +
               (dialect == Dialect::Sqlite ? " WITHOUT ROWID" : "") + ";\n" + "CREATE INDEX " +
               id(t.className + "_unit") + " ON " + q + " (unit);";
    if (t.isLink)
        t.create += "\nCREATE INDEX " + id(t.className + "_source") + " ON " + q +
                    " (source_id, version);\nCREATE INDEX " + id(t.className + "_target") + " ON " + q +
                    " (target_id, version);";
    std::string params = "?";
    for (std::size_t i = 1; i < static_cast<std::size_t>(t.firstAttribute()) + t.columns.size(); ++i) params += ", ?";
    t.insert = "INSERT INTO " + q + " (" + cols + ") VALUES (" + params + ")";
    t.selectAll = "SELECT " + cols + " FROM " + q;
    t.selectByUnit = t.selectAll + " WHERE unit = ?";
    t.copyUnit = "INSERT INTO " + q + " (" + cols + ") SELECT " + copyCols + " FROM " + q + " WHERE unit = ?";
    t.deleteByUnit = "DELETE FROM " + q + " WHERE unit = ?";
    t.selectUnit = "SELECT unit FROM " + q + " WHERE obj_id = ? AND version = ?";
    return t;
}

}  // namespace

Schema::Schema(Dialect dialect) {
    ddl_.push_back(UnitsTable::ddl(dialect));
    // Components that make objects (a factory), in name order: the schema does
    // not depend on which components loaded first or which only describe classes.
    std::vector<DSRegistration*> components;
    for (DSRegistration* r : DSRegistration::all())
        if (r->factory()) components.push_back(r);
    std::sort(components.begin(), components.end(), [](DSRegistration* a, DSRegistration* b) {
        return std::strcmp(a->componentName(), b->componentName()) < 0;
    });
    for (DSRegistration* r : components)
        for (const _classStruct* c = r->classTable(); c && c->className; ++c) {
            if (byName_.count(c->className)) continue;
            byName_.emplace(c->className, tables_.size());
            tables_.push_back(tableOf(c, dialect));
            ddl_.push_back(tables_.back().create);
        }
}

const Schema& Schema::current(Dialect dialect) {
    if (dialect == Dialect::Postgres) {
        static const Schema server(Dialect::Postgres);
        return server;
    }
    static const Schema embedded(Dialect::Sqlite);
    return embedded;
}

const Table* Schema::table(const char* className) const {
    if (!className) return nullptr;
    auto it = byName_.find(std::string_view(className));
    return it == byName_.end() ? nullptr : &tables_[it->second];
}

}  // namespace krstore

// Schema.h — the repository's tables, generated from the registered class
// tables and attribute tables (nothing is written per class): one table per
// class with identity and unit columns and one typed column per attribute of
// its attribute-table chain; a link class's table adds both ends by identity
// and the link's position in each end's role. The same tables are written in
// each database's SQL: on PostgreSQL, names are in lower case so that a
// person's unquoted query finds them.
#pragma once

#include <krmwtarn/platform/common/Export.h>

#include <krmwtarn/platform/repository/ADReflection.h>
#include <krmwtarn/store/Sql.h>

#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace krstore {

// Value type of an attribute column, from its row's type name.
using ColumnType = ADValueType;

struct KRMWTARN_API Column {
    std::string name;
    ColumnType type;
    const ADAttributeEntry* row;
};

struct KRMWTARN_API Table {
    std::string className;
    std::string name;  // the table's name in statements (quoted)
    bool isLink = false;
    std::vector<Column> columns;           // the attribute columns, in chain order
    std::vector<std::string> columnNames;  // every column in statements (quoted), in insert order
    std::string create;                    // CREATE TABLE and its unit index
    std::string insert;                    // every column, in column order
    std::string selectAll;                 // every column, every row
    std::string selectByUnit;              // every column, rows of one unit
    std::string copyUnit;                  // rows of a unit (3rd parameter) into a version (1st) and unit (2nd)
    std::string deleteByUnit;
    std::string selectUnit;  // the unit of a row by identity (object ID, version)
    // Column positions in insert and select: identity first, then the ends.
    static constexpr int kId = 0, kVersion = 1, kUnit = 2;
    static constexpr int kSourceClass = 3, kSourceId = 4, kSourcePos = 5;
    static constexpr int kTargetClass = 6, kTargetId = 7, kTargetPos = 8;
    int firstAttribute() const noexcept { return isLink ? 9 : 3; }
};

class KRMWTARN_API Schema {
public:
    // The layout this program writes; a repository of another version is refused.
    // Version 2: the field geometry's data dictionary tables and columns.
    static constexpr int kVersion = 2;

    // The schema of every class registered now, in a database's SQL (built on first use).
    static const Schema& current(Dialect dialect = Dialect::Sqlite);

    // The table of a class, or null.
    const Table* table(const char* className) const;
    const std::vector<Table>& tables() const noexcept { return tables_; }
    // Statements that make the whole schema (the unit table first, as UnitsTable writes it).
    const std::vector<std::string>& ddl() const noexcept { return ddl_; }

private:
    explicit Schema(Dialect dialect);
    std::vector<Table> tables_;
    // Looked up by any string without making one: a class name per link end per row.
    struct NameHash {
        using is_transparent = void;
        std::size_t operator()(std::string_view s) const noexcept { return std::hash<std::string_view>{}(s); }
    };
    std::unordered_map<std::string, std::size_t, NameHash, std::equal_to<>> byName_;
    std::vector<std::string> ddl_;
};

// Identifiers in statements are quoted: attribute names are not checked
// against the SQL keywords.
KRMWTARN_API std::string quoted(const std::string& name);

// The quoted name of a table, column or index in a database's SQL.
KRMWTARN_API std::string identifier(const std::string& name, Dialect dialect);

}  // namespace krstore

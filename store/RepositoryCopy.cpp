// RepositoryCopy.cpp — units copied: one unit into another version of the same
// repository, or every unit of a repository into another, empty one (on the
// same backend or the other), with its revision and who stored it.
#include <krmwtarn/store/Repository.h>

#include <krmwtarn/store/Refusal.h>
#include <krmwtarn/store/Schema.h>
#include <krmwtarn/store/Sql.h>
#include <krmwtarn/store/UnitsTable.h>

#include <unordered_map>

namespace krstore {

void Repository::copyUnit(const UnitKey& key, const std::string& toVersion) {
    if (db_->readOnly()) refuse(errReadOnly, "repository " + location_ + " is read-only: cannot copy " + key.text());
    UnitKey to{key.className, key.objID, toVersion};
    try {
        Transaction t(*db_, true);
        db_->serialize({key.text(), to.text()});
        UnitInfo u = storedUnit(key), exists;
        if (lookupUnit(to, exists))
            refuse(errCopyExists, "unit " + to.text() + " is already in the repository; not copied");
        UnitInfo copy;
        copy.key = to;
        copy.name = u.name;
        copy.revision = 1;
        copy.storedBy = owner_.text();
        copy.storedAt = UnitsTable::now();
        long long id = units_->insert(copy);
        for (const Table& table : schema_->tables()) {
            Statement& c = (*statements_)(table.copyUnit);
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
        long long there = target.units_->count();
        if (there > 0)
            refuse(errNotEmpty, "repository " + target.location_ + " is not empty (" + std::to_string(there) +
                                    " units); units are copied into an empty repository only");
        // Units first, each with the number the target gives it.
        std::unordered_map<long long, long long> ids;
        Statement& units = units_->select(-1);
        std::vector<UnitInfo> all;
        while (units.step()) all.push_back(UnitsTable::read(units));
        units.reset();
        for (const UnitInfo& u : all) {
            ids[u.id] = target.units_->insert(u);
            ++copied;
        }
        // Then every table's rows as they are, in bulk.
        for (std::size_t ti = 0; ti < from.tables().size(); ++ti) {
            const Table& a = from.tables()[ti];
            const Table* b = to.table(a.className.c_str());
            if (!b || b->columns.size() != a.columns.size())
                refuse(errSchemaVersion, "repository " + target.location_ + " was made for other classes (" +
                                             a.className + "); nothing copied");
            Statement& rows = (*statements_)(a.selectAll);
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

}  // namespace krstore

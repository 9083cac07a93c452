// UnitWriter.cpp — the store's rows: sorted by table once, then written table
// by table in one transaction, the rows' objects fetched into the cache a few
// rows ahead of their use.
#include <krmwtarn/store/UnitWriter.h>

#include <krmwtarn/platform/repository/ADLink.h>
#include <krmwtarn/store/Columns.h>
#include <krmwtarn/store/Refusal.h>
#include <krmwtarn/store/Repository.h>
#include <krmwtarn/store/Schema.h>

#include <cassert>

namespace krstore {

UnitWriter::UnitWriter(Connection& db, const Schema& schema, const std::vector<UnitContent>& units)
    : db_(db), schema_(schema), units_(units), byTable_(schema.tables().size()) {
    std::size_t links = 0;
    for (const UnitContent& u : units) links += u.links.size();
    positions_.reserve(links);
    auto note = [&](_ADObject* o) {
        forEachRole(o, [&](const ADAttributeEntry& row, DSModelCollection* role) {
            int end = adRoleEnd(row);
            long i = 0;
            for (const ADObject& h : *role) {
                auto [it, added] = positions_.try_emplace(h.impl(), std::array<long, 2>{-1, -1});
                it->second[end] = i++;
            }
        });
    };
    for (const UnitContent& u : units) {
        for (_ADObject* o : u.objects) note(o);
        for (_ADObject* l : u.links) note(l);
    }
    // Rows table by table (each table's rows are written together): objects
    // and links sorted by their class's table.
    std::unordered_map<const char*, const Table*> tableOf;
    auto sort = [&](_ADObject* o, std::size_t unit) {
        const char* cls = o->whoAmI();
        auto [it, added] = tableOf.try_emplace(cls, nullptr);
        if (added) it->second = schema.table(cls);
        if (!it->second) refuse(errDatabase, std::string("class ") + cls + " has no table in the repository");
        byTable_[static_cast<std::size_t>(it->second - schema.tables().data())].emplace_back(o, unit);
    };
    for (std::size_t i = 0; i < units.size(); ++i) {
        for (_ADObject* o : units[i].objects) sort(o, i);
        for (_ADObject* l : units[i].links) sort(l, i);
    }
}

long UnitWriter::positionOf(_ADObject* link, int end) const {
    auto it = positions_.find(link);
    long p = it == positions_.end() ? -1 : it->second[end];
    return p >= 0 ? p : positionInEnd(link, end);
}

void UnitWriter::write(const std::vector<std::string>& keys, const Claimer& claim) {
    // The first attempt goes in bulk; it leaves nothing behind when a row is
    // refused, so the second may name the row.
    for (bool bulk = true;; bulk = false) {
        doing_ = "store";
        failedTable_ = nullptr;
        failedObject_ = nullptr;
        rowNamed_ = true;
        try {
            Transaction t(db_, true);
            db_.serialize(keys);
            std::vector<Claim> claims = claim();
            assert(claims.size() == units_.size());
            replace(claims);
            std::vector<long long> ids(claims.size());
            for (std::size_t i = 0; i < claims.size(); ++i) ids[i] = claims[i].id;
            writeRows(ids, bulk);
            failedObject_ = nullptr;
            doing_ = "commit the store";
            t.commit();
            return;
        } catch (const SqlError& e) {
            bool refusedRow = e.fault() == SqlFault::Duplicate || e.fault() == SqlFault::Constraint;
            if (refusedRow && failedObject_ && !rowNamed_ && bulk) continue;
            if (refusedRow && failedObject_) throw RowRefused(e, *failedTable_, failedObject_);
            throw;
        }
    }
}

void UnitWriter::replace(const std::vector<Claim>& claims) {
    bool any = false;
    for (const Claim& c : claims) any = any || c.storedBefore;
    if (!any) return;
    // The rows stored before go, every table in one go.
    db_.exec("CREATE TEMP TABLE IF NOT EXISTS restored (id INTEGER PRIMARY KEY)");
    db_.exec("DELETE FROM restored");
    std::unique_ptr<Statement> r = db_.prepare("INSERT INTO restored VALUES (?)");
    for (const Claim& c : claims)
        if (c.storedBefore) {
            r->bindInt(0, c.id);
            r->step();
            r->reset();
        }
    std::string clear;
    for (const Table& table : schema_.tables())
        clear += "DELETE FROM " + table.name + " WHERE unit IN (SELECT id FROM restored);\n";
    db_.exec(clear);
}

void UnitWriter::writeRows(const std::vector<long long>& ids, bool bulk) {
    for (std::size_t ti = 0; ti < byTable_.size(); ++ti) {
        if (byTable_[ti].empty()) continue;
        const Table* table = &schema_.tables()[ti];
        std::unique_ptr<RowWriter> w = db_.writeRows(table->name, table->columnNames, bulk);
        failedTable_ = table;
        rowNamed_ = w->rowByRow();
        const auto& rows = byTable_[ti];
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
            assert(unit < ids.size() && ids[unit] > 0);
            failedObject_ = o;
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
        rowNamed_ = true;
    }
}

void UnitWriter::settle(LinkPositions& positions) {
    for (const UnitContent& u : units_) {
        for (_ADObject* o : u.objects) clearChanges(o);
        for (_ADObject* l : u.links) {
            clearChanges(l);
            positions.set(l, {positionOf(l, 0), positionOf(l, 1)});
        }
    }
}

}  // namespace krstore

// UnitReader.cpp — the retrieve's rows into live objects.
#include <krmwtarn/store/UnitReader.h>

#include <krmwtarn/platform/repository/DSRegistration.h>
#include <krmwtarn/store/Columns.h>
#include <krmwtarn/store/Refusal.h>
#include <krmwtarn/store/Schema.h>
#include <krmwtarn/store/Sql.h>
#include <krmwtarn/store/Units.h>
#include <krmwtarn/store/UnitsTable.h>

#include <cassert>
#include <memory>

namespace krstore {

void UnitReader::readRow(const Table& table, Statement& s, omSetProcessing how, Loaded& into, LinkRows& links) {
    int first = table.firstAttribute();
    if (!table.isLink) {
        const char* id = s.getText(Table::kId);
        const char* version = s.getText(Table::kVersion);
        std::unique_ptr<ADObject> made(DSRegistration::create(table.className.c_str(), version, id));
        if (!made || made->isEmpty())
            refuse(errDamaged, "repository " + location_ + " holds an object of class " + table.className +
                                   ", which no loaded component makes");
        into.held.push_back(std::move(*made));
        _ADObject* o = into.held.back().impl();
        int c = first;
        for (const Column& col : table.columns) applyColumn(o, col, s, c++, how);
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
        const Table*& endTable = lastEnd_[end];
        if (!endTable || !endName || endTable->className != endName) endTable = schema_.table(endName);
        const char* endID = s.getText(base + 1);
        if (!endTable || !endID)
            refuse(errDamaged, "repository " + location_ + " names an unknown class " + (endName ? endName : "(none)") +
                                   " or no object at a link end");
        row->endClass[end] = endTable->className.c_str();
        row->endID[end] = endID;
        row->position[end] = static_cast<long>(s.getInt(base + 2));
    }
    row->values.reserve(table.columns.size());
    int c = first;
    for (const Column& col : table.columns) row->values.push_back(readValue(s, c++, col.type));
    links.push_back(std::move(row));
}

UnitReader::Loaded UnitReader::load(const std::vector<long long>& unitIDs, bool all, bool refresh) {
    omSetProcessing how = refresh ? (omStore | omClearChanged) : (omStore | omKeepChanged);
    Loaded loaded;
    LinkRows links;
    // Taken out again unless the load gets through.
    MadeLinks made(links_.positions());
    {
        Transaction t(db_, false);
        lastEnd_[0] = lastEnd_[1] = nullptr;
        // Every unit's rows (or one unit's), all tables in one round trip.
        std::vector<long long> rounds = all ? std::vector<long long>{-1} : unitIDs;
        for (long long id : rounds) {
            std::vector<Statement*> batch{&units_.select(id)};
            for (const Table& table : schema_.tables()) {
                if (id < 0) {
                    batch.push_back(&statements_(table.selectAll));
                } else {
                    Statement& s = statements_(table.selectByUnit);
                    s.bindInt(0, id);
                    batch.push_back(&s);
                }
            }
            // The unit table's rows first, then one statement per class table.
            assert(batch.size() == schema_.tables().size() + 1);
            db_.fetch(batch);
            for (std::size_t i = 0; i < batch.size(); ++i) {
                Statement& s = *batch[i];
                while (s.step()) {
                    if (i == 0)
                        loaded.units.push_back(UnitsTable::read(s));
                    else
                        readRow(schema_.tables()[i - 1], s, how, loaded, links);
                }
                s.reset();
                // From a server, a link table's rows are attached as soon as
                // they are in, while the server sends the next tables. (From
                // a file nothing runs meanwhile: the rows wait for the end,
                // where they are attached together.)
                if (db_.sendsMeanwhile() && i > 0 && schema_.tables()[i - 1].isLink && !links.empty())
                    links_.attach(links, made);
            }
        }
        t.commit();
    }
    if (refresh) {
        // Unstored changes go: the attribute setters cleared their bits; roles and ends follow.
        for (const ADObject& h : loaded.held) clearChanges(h.impl());
    }
    // Links: first every link object by identity (links may be ends of links),
    // then the source ends in source-role order, then the target ends.
    links_.attachWaiting(links, made);
    made.keep();
    return loaded;
}

}  // namespace krstore

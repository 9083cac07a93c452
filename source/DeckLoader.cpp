// DeckLoader.cpp — the load driver. Every deck is split into its definitions
// (DBD to DBDGEN, PCBs to PSBGEN); the DBDs are built in the order of their
// names, then what names something in another definition is resolved, then
// the PSBs are built in the order of theirs, so the repository a library makes
// does not depend on the order its files are given in. Any error undoes
// everything the load made. The statements themselves are read in
// DbdStatements.cpp, SegmentStatements.cpp and PsbStatements.cpp.
#include "Loader.h"

#include <krmwtarn/model/framework/GraphCheck.h>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <iterator>

namespace krsource {

bool LoadResult::ok() const noexcept {
    for (const Diagnostic& d : diagnostics)
        if (d.severity == Severity::Error) return false;
    return true;
}

const Place* LoadResult::placeOf(const _ADObject* object) const {
    auto it = std::lower_bound(places.begin(), places.end(), object,
                               [](const auto& entry, const _ADObject* o) { return entry.first < o; });
    return it == places.end() || it->first != object ? nullptr : &it->second;
}

std::string where(const Location& at) {
    return (at.file ? *at.file : std::string()) + ":" + std::to_string(at.line) + ":" + std::to_string(at.column);
}

std::string operandText(const Statement& st, const char* keyword) {
    for (const Operand& op : st.operands) {
        if (op.keyword != keyword) continue;
        const Value* v = &op.value;
        while (v->kind == Value::List && v->items.size() == 1) v = &v->items[0];
        return v->kind == Value::List ? std::string() : v->text;
    }
    return {};
}

void Loader::splitDeck(int file, const std::vector<Statement>& statements, std::vector<Definition>& out) {
    Definition dbd, psb;
    bool dbdOpen = false;
    auto closeDbd = [&](const Location& at, bool byDbdgen, const Statement* end) {
        if (!dbdOpen) return;
        if (!byDbdgen) diags_.error(at, "DBD " + dbd.name + ": the deck ends before DBDGEN");
        dbd.end = end;
        out.push_back(std::move(dbd));
        dbd = Definition();
        dbdOpen = false;
    };
    Location last{};
    for (const Statement& st : statements) {
        last = st.at;
        const Stmt kind = st.kind;
        if (kind == Stmt::Unknown) {
            if (!st.broken) diags_.error(st.at, "unknown statement '" + st.operation + "'");
            continue;
        }
        const StatementRow& row = statementRow(kind);
        if (kind == Stmt::DBD) {
            closeDbd(st.at, false, nullptr);
            if (!psb.statements.empty()) {
                diags_.error(st.at, "DBD: the PCBs before it are not ended by PSBGEN");
                psb = Definition();
            }
            dbdOpen = true;
            dbd.part = Part::Dbd;
            dbd.file = file;
            dbd.name = operandText(st, "NAME");
            dbd.statements.push_back(&st);
        } else if (kind == Stmt::DBDGEN) {
            if (!dbdOpen) diags_.error(st.at, "DBDGEN: no DBD statement before it");
            closeDbd(st.at, true, &st);
        } else if (row.part == Part::Unmodelled) {
            diags_.warning(st.at, st.operation + ": statement has no place in the model; skipped");
        } else if (row.part == Part::Directive) {
            continue;
        } else if (row.part == Part::Dbd) {
            if (!dbdOpen)
                diags_.error(st.at, st.operation + ": outside a DBD (no DBD statement before it)");
            else
                dbd.statements.push_back(&st);
        } else {
            closeDbd(st.at, false, nullptr);
            psb.statements.push_back(&st);
            if (kind == Stmt::PSBGEN) {
                psb.part = Part::Psb;
                psb.file = file;
                psb.end = &st;
                psb.statements.pop_back();
                psb.name = operandText(st, "PSBNAME");
                out.push_back(std::move(psb));
                psb = Definition();
            }
        }
        if (diags_.full()) return;
    }
    if (dbdOpen) closeDbd(Location{last.file, last.line, 1}, false, nullptr);
    if (!psb.statements.empty()) diags_.error(psb.statements.front()->at, "PCB: the deck ends before PSBGEN");
}

void Loader::resolve(const std::vector<const Definition*>& psbs) {
    // The DBDs' references first (they may add index targets that PCBs name),
    // then the PSBs.
    for (std::size_t i = 0; i < deferred_.size() && !diags_.full(); ++i) deferred_[i]();
    for (const Definition* p : psbs) {
        if (diags_.full()) break;
        buildPsb(*p);
    }
}

void Loader::undo() {
    for (auto it = madeLinks_.rbegin(); it != madeLinks_.rend(); ++it) (*it)->markDeleted(nullptr, 0);
    for (auto it = made_.rbegin(); it != made_.rend(); ++it) (*it)->markDeleted(nullptr, 0);
    // Objects the load made may still hold each other through roles the undone
    // links left; drop those handles so every made object goes.
    std::vector<ADObject> held;
    for (ADObject& o : made_) o->dropReferences(held);
    held.clear();
    madeLinks_.clear();
    made_.clear();
    places_.clear();
    loadedDbds_.clear();
    loadedPsbs_.clear();
}

void Loader::keep(LoadResult& result, const std::vector<std::string>& files) {
    result.files = files;
    // Built in the order of their names, handed over in the order of the decks.
    auto inDeckOrder = [&](auto& list, auto& out) {
        std::stable_sort(list.begin(), list.end(), [&](const auto& a, const auto& b) {
            return std::make_pair(a.first.file - files.data(), a.first.line) <
                   std::make_pair(b.first.file - files.data(), b.first.line);
        });
        out.reserve(list.size());
        for (auto& [at, definition] : list) out.push_back(std::move(definition));
        list.clear();
    };
    inDeckOrder(loadedDbds_, result.dbds);
    inDeckOrder(loadedPsbs_, result.psbs);
    // A sorted list: one allocation and a sort cost less than a hash table
    // of tens of thousands of entries, and a lookup is a binary search.
    result.places.reserve(places_.size());
    for (const auto& [object, at] : places_)
        result.places.emplace_back(object, Place{static_cast<int>(at.file - files.data()), at.line, at.column});
    std::sort(result.places.begin(), result.places.end(),
              [](const auto& a, const auto& b) { return a.first < b.first; });
    places_.clear();
    madeLinks_.clear();
    made_.clear();
}

LoadResult loadDecks(const std::vector<Deck>& decks, const char* version) {
    Diagnostics diags;
    LoadResult result;
    // The statements refer to their file names; both live until the load ends.
    std::vector<std::string> names;
    names.reserve(decks.size());
    std::vector<std::vector<Statement>> statements;
    statements.reserve(decks.size());
    for (const Deck& d : decks) {
        names.push_back(d.name);
        statements.push_back(readStatements(names.back(), d.bytes, diags));
    }
    {
        Loader loader(version ? version : kDeckVersion, diags);
        std::vector<Definition> definitions;
        for (std::size_t i = 0; i < decks.size() && !diags.full(); ++i)
            loader.splitDeck(static_cast<int>(i), statements[i], definitions);
        // The canonical order: by name, a name given twice by file name and card.
        std::vector<const Definition*> dbds, psbs;
        for (const Definition& d : definitions) (d.part == Part::Dbd ? dbds : psbs).push_back(&d);
        auto byName = [&](const Definition* a, const Definition* b) {
            const Location &la = a->statements.empty() ? a->end->at : a->statements.front()->at,
                           &lb = b->statements.empty() ? b->end->at : b->statements.front()->at;
            return std::tie(a->name, names[a->file], la.line) < std::tie(b->name, names[b->file], lb.line);
        };
        std::stable_sort(dbds.begin(), dbds.end(), byName);
        std::stable_sort(psbs.begin(), psbs.end(), byName);
        for (const Definition* d : dbds) {
            if (loader.full()) break;
            loader.buildDbd(*d);
        }
        loader.resolve(psbs);
        if (diags.hasErrors())
            loader.undo();
        else
            loader.keep(result, names);
    }
    KR_ASSERT_GRAPH(diags.hasErrors() ? "a load of decks, undone" : "a load of decks");
    result.diagnostics = diags.take();
    // Messages in reading order: by the order of the files given, then by place.
    std::unordered_map<std::string, std::size_t> order;
    for (std::size_t i = 0; i < names.size(); ++i) order.emplace(names[i], i);
    std::stable_sort(result.diagnostics.begin(), result.diagnostics.end(),
                     [&](const Diagnostic& a, const Diagnostic& b) {
                         auto fa = order.find(a.file), fb = order.find(b.file);
                         std::size_t ia = fa == order.end() ? names.size() : fa->second,
                                     ib = fb == order.end() ? names.size() : fb->second;
                         return std::tie(ia, a.line, a.column) < std::tie(ib, b.line, b.column);
                     });
    return result;
}

LoadResult loadDeckFiles(const std::vector<std::string>& paths, const char* version) {
    std::vector<Deck> decks;
    LoadResult failed;
    for (const std::string& path : paths) {
        auto refuse = [&](const std::string& why) {
            failed.diagnostics.push_back({path, 0, 0, Severity::Error, "cannot read the deck: " + why, {}, {}});
        };
        std::error_code ec;
        if (std::filesystem::is_directory(path, ec)) {
            refuse("it is a folder");
            continue;
        }
        errno = 0;
        std::ifstream in(path, std::ios::binary);
        if (!in) {
            refuse(errno ? std::strerror(errno) : "it cannot be opened");
            continue;
        }
        std::string bytes{std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>()};
        if (in.bad()) {
            refuse("reading failed");
            continue;
        }
        decks.push_back({path, std::move(bytes)});
    }
    if (!failed.diagnostics.empty()) return failed;
    return loadDecks(decks, version);
}

}  // namespace krsource

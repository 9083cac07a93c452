// LinkAttacher.cpp — retrieved links made live in their stored role order. Rows
// go in groups through the registry; the links made are placed end by end, in
// the order of their stored positions at that end, every row, link and end
// object fetched into the cache a few rows ahead of its use.
#include <krmwtarn/store/LinkAttacher.h>

#include <krmwtarn/model/framework/KRLink.h>
#include <krmwtarn/platform/repository/DSRegistrar.h>
#include <krmwtarn/platform/repository/DSRegistration.h>
#include <krmwtarn/store/Schema.h>
#include <krmwtarn/store/Sql.h>

#include <algorithm>
#include <cassert>
#include <map>

namespace krstore {

namespace {

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

MadeLinks::~MadeLinks() {
    if (kept_) return;
    for (auto it = links_.rbegin(); it != links_.rend(); ++it) {
        positions_.erase(it->impl());
        (*it)->markDeleted(nullptr, 0);
    }
}

void LinkAttacher::attach(LinkRows& rows, MadeLinks& made) {
    std::vector<LinkRow*> ready = make(rows, made);
    place(ready);
    rows.erase(
        std::remove_if(rows.begin(), rows.end(), [](const std::unique_ptr<LinkRow>& r) { return r->link != nullptr; }),
        rows.end());
    // What still waits is looked up afresh next time: its live end may go meanwhile.
    for (auto& row : rows) row->end[0] = row->end[1] = nullptr;
}

void LinkAttacher::attachWaiting(LinkRows& rows, MadeLinks& made) {
    for (auto& row : rows) waiting_.push_back(std::move(row));
    rows.clear();
    attach(waiting_, made);
}

std::vector<LinkRow*> LinkAttacher::make(LinkRows& rows, MadeLinks& made) {
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
            if (first % (16 * kGroup) == 0) db_.poll();
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
                // A class whose component makes no link leaves the row waiting.
                std::unique_ptr<ADObject> h(
                    DSRegistration::create(row.table->className.c_str(), row.version.c_str(), row.id.c_str()));
                if (h && !h->isEmpty() && h->impl()->isRelationshipObject()) {
                    row.link = static_cast<_KRLink*>(h->impl());
                    made.add(std::move(*h));
                    ready.push_back(&row);
                    progress = true;
                }
            }
        }
    }
    return ready;
}

void LinkAttacher::place(std::vector<LinkRow*>& ready) {
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
            if (i % 1024 == 0) db_.poll();
            LinkRow* row = ready[i];
            _KRLink* link = row->link;
            // Only rows whose link was made and whose ends are live come here.
            assert(link && row->end[0] && row->end[1]);
            assert(row->values.size() == row->table->columns.size());
            if (end == 0) {
                // A live link keeps its changed values; a new one takes the stored ones.
                int c = 0;
                for (const Column& col : row->table->columns)
                    applyValue(link, col, row->values[c++], omStore | omKeepChanged);
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
}

}  // namespace krstore

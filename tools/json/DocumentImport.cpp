// DocumentImport.cpp — the second pass of an import: the plan's objects made,
// its links' ends set through the link classes' end setters (so every rule of
// the model applies), its values stored, and every document expanded again
// from the built graph and compared with what was read. A refusal on the way
// undoes all of it: the repository is left exactly as it was.
#include <krmwtarn/json/DocumentPlan.h>

#include <krmwtarn/model/framework/GraphCheck.h>
#include <krmwtarn/model/framework/KRLink.h>
#include <krmwtarn/platform/common/Refusals.h>
#include <krmwtarn/platform/repository/ADLink.h>
#include <krmwtarn/platform/repository/ADReflection.h>
#include <krmwtarn/platform/repository/DSRegistration.h>

#include <cstdint>
#include <cstring>
#include <memory>
#include <unordered_map>
#include <unordered_set>

using nlohmann::json;

namespace viewdoc::plan {
namespace {
long long integer(const json& v) {
    return v.is_number_unsigned() ? static_cast<long long>(v.get<std::uint64_t>()) : v.get<std::int64_t>();
}

// Stores a value read from a document (its range already checked).
void store(_ADObject* o, const ADAttributeEntry& row, const json& v) {
    adAssignValue(o, row, omStore, [&v](auto tr) {
        const char* text = v.is_string() ? v.get_ref<const std::string&>().c_str() : nullptr;
        return adFromPlain<decltype(tr)>(v.is_null(), text, v.is_number_integer() ? integer(v) : 0);
    });
}

// Stores a value read from the repository back.
void restore(_ADObject* o, const ADAttributeEntry& row, const DLLViewValue& v) {
    adAssignValue(o, row, omStore,
                  [&v](auto tr) { return adFromPlain<decltype(tr)>(v.isNull, v.text.c_str(), v.number); });
}

std::string shown(const json& v) {
    std::string s = v.dump(-1, ' ', false, json::error_handler_t::replace);
    return s.size() > 60 ? s.substr(0, 57) + "..." : s;
}

// The first place where the document and the graph's expansion differ.
bool differs(const json& doc, const json& again, const std::string& at, std::string& where, std::string& what) {
    if (doc.is_object() && again.is_object()) {
        for (auto it = doc.begin(); it != doc.end(); ++it) {
            auto there = again.find(it.key());
            if (there == again.end()) {
                where = pointer(at, it.key());
                what = "the graph has nothing here";
                return true;
            }
            if (differs(*it, *there, pointer(at, it.key()), where, what)) return true;
        }
        for (auto it = again.begin(); it != again.end(); ++it) {
            if (!doc.contains(it.key())) {
                where = pointer(at, it.key());
                what = "the graph has " + shown(*it) + " here";
                return true;
            }
        }
        return false;
    }
    if (doc.is_array() && again.is_array()) {
        for (std::size_t i = 0; i < doc.size() && i < again.size(); ++i)
            if (differs(doc[i], again[i], pointer(at, i), where, what)) return true;
        if (doc.size() == again.size()) return false;
        where = at;
        what = "the graph holds " + std::to_string(again.size()) + " links here, the document lists " +
               std::to_string(doc.size());
        return true;
    }
    if (doc == again) return false;
    where = at;
    what = "the graph has " + shown(again) + " here";
    return true;
}

class Builder {
public:
    explicit Builder(Plan& plan) : plan_(plan) {}

    std::vector<ADObject> run() {
        KR_ASSERT_GRAPH_ON_EXIT("an import of documents");
        try {
            make();
            for (int link : plan_.joins[kSource]) join(link, kSource);
            for (int link : plan_.joins[kTarget]) join(link, kTarget);
            for (int r : plan_.arranged) arrange(plan_.roles[r]);
            storeValues();
            verify();
        } catch (...) {
            undo();
            throw;
        }
        std::vector<ADObject> roots;
        for (const Document& d : plan_.documents) roots.push_back(handles_[d.root]);
        return roots;
    }

private:
    void make() {
        handles_.reserve(plan_.objects.size());
        for (std::size_t i = 0; i < plan_.objects.size(); ++i) {
            const Object& o = plan_.objects[i];
            if (o.existing) {
                handles_.emplace_back(o.existing);
                continue;
            }
            std::unique_ptr<ADObject> made(DSRegistration::create(o.cls->c_str(), o.version->c_str(), o.id->c_str()));
            if (!made || made->isEmpty())
                throw DocumentError(plan_.where(o.at, "@class"), "no object of class '" + *o.cls + "' can be made");
            handles_.push_back(std::move(*made));
            made_.push_back(static_cast<int>(i));
        }
    }

    // Sets one end of a new link, as the link constructor does: the source
    // stored and marked changed, the target stored. It joins the end's role
    // at its end.
    void join(int link, Side side) {
        const Object& l = plan_.objects[link];
        _ADObject* self = handles_[link].impl();
        ADObject& end = handles_[l.end[side]];
        if (plan_.objects[l.end[side]].existing) remember(end.impl(), l.cls->c_str(), side);
        const ADAttributeEntry* row = DLLView_findRow(self, side == kSource ? "source" : "target");
        if (auto refused = kr::refusalOf([&] {
                (self->*row->setter.end)(&end, side == kSource ? omStore | omSetChanged : omStore);
                if (side == kSource) end->processChangeFlag();
            }))
            throw DocumentError(plan_.where(l.at), "the link is refused: " + kr::explain(*refused));
    }

    // Puts an ordered role's links in the documents' order, each moved behind
    // the one before it as the ordered link's re-ordering does.
    void arrange(const Role& r) {
        const Object& owner = plan_.objects[r.owner];
        if (owner.existing) {
            // Its held links are still in front, in their old order.
            HeldRole& held = roles_[remember(owner.existing, r.linkClass, kSource)];
            held.moved = true;
            for (const ADObject& h : *held.role) {
                if (static_cast<long>(held.order.size()) == held.count) break;
                held.order.push_back(h.impl());
            }
        }
        ADObject previous;
        for (const auto& [link, held] : r.arrangement) {
            ADObject self = link >= 0 ? handles_[link] : ADObject(held);
            static_cast<_KRLink*>(self.impl())->moveAfterInSource(previous.isEmpty() ? nullptr : &previous, omStore);
            previous = std::move(self);
        }
    }

    // A role of an object that was there before, before it changes: its size
    // and its cursor, to put it back as it was.
    std::size_t remember(_ADObject* o, const char* linkClass, Side side) {
        const ADAttributeEntry* row = DLLView_findRow(o, endRow(linkClass, side).inverse);
        DSModelCollection* role = (o->*row->getter.role)();
        auto [at, fresh] = seen_.emplace(role, roles_.size());
        if (fresh) roles_.push_back({role, role->count(), role->indexOf(), false, {}});
        return at->second;
    }

    void storeValues() {
        for (const Value& v : plan_.values) {  // each attribute of an object once
            _ADObject* o = handles_[v.object].impl();
            if (plan_.objects[v.object].existing) values_.push_back({o, v.row, DLLView_readValue(o, *v.row)});
            store(o, *v.row, *v.value);
        }
    }

    void verify() {
        for (const Document& d : plan_.documents) {
            json again = toJson(DLLView_expand(d.view, handles_[d.root].impl()));
            std::string where, what;
            if (differs((*d.json)["root"], again, plan_.where(d.at, "root"), where, what))
                throw DocumentError(where, "the built graph does not give the document back: " + what);
        }
    }

    void undo() noexcept {
        for (auto v = values_.rbegin(); v != values_.rend(); ++v) restore(v->object, *v->row, v->value);
        // New links were appended to the roles of objects that were there
        // before: cut each back from its end (a removal leaves the cursor on
        // the element before). A rearranged role loses every new link and gets
        // its old order back. Then its cursor is put back.
        std::unordered_set<_ADObject*> made;
        for (int i : made_) made.insert(handles_[i].impl());
        for (const HeldRole& r : roles_) {
            if (r.moved) {
                for (ADObject* h = r.role->first(); h; h = r.role->next())
                    if (made.count(h->impl())) r.role->remove();
                for (std::size_t i = 0; i < r.order.size(); ++i) {
                    for (ADObject* h = r.role->first(); h && h->impl() != r.order[i]; h = r.role->next()) {
                    }
                    ADObject before(i ? r.order[i - 1] : nullptr);
                    r.role->moveAfter(i ? &before : nullptr);
                }
            } else if (r.role->count() > r.count) {
                r.role->first();
                while (r.role->indexOf() < r.role->count() - 1) r.role->next();
                while (r.role->count() > r.count) r.role->remove();
            }
            if (r.cursor >= 0 && r.role->first()) {
                while (r.role->indexOf() < r.cursor) r.role->next();
            } else {
                r.role->first();
                while (r.role->next()) {
                }
            }
        }
        // The new objects and links hold each other in roles and ends: drop
        // those handles, then the objects go with the last ones.
        std::vector<ADObject> dropped;
        for (int i : made_) handles_[i]->dropReferences(dropped);
        dropped.clear();
        handles_.clear();
    }

    struct HeldRole {
        DSModelCollection* role;
        long count;
        long cursor;
        bool moved;  // rearranged: its old order follows
        std::vector<_ADObject*> order;
    };
    struct OldValue {
        _ADObject* object;
        const ADAttributeEntry* row;
        DLLViewValue value;
    };
    Plan& plan_;
    std::vector<ADObject> handles_;  // one per plan object, while it is made
    std::vector<int> made_;          // the plan objects made here
    std::vector<HeldRole> roles_;
    std::unordered_map<DSModelCollection*, std::size_t> seen_;
    std::vector<OldValue> values_;
};
}  // namespace

std::vector<ADObject> build(Plan& plan) { return Builder(plan).run(); }

}  // namespace viewdoc::plan

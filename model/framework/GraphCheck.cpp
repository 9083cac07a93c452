// GraphCheck.cpp — the graph's consistency check (see GraphCheck.h).
#include <krmwtarn/model/framework/GraphCheck.h>

#include <krmwtarn/model/framework/KRLink.h>
#include <krmwtarn/platform/repository/ADAttributeEntry.h>
#include <krmwtarn/platform/repository/ADReflection.h>
#include <krmwtarn/platform/repository/DSModelCollection.h>
#include <krmwtarn/platform/repository/DSRegistrar.h>

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <unordered_map>

namespace kr {
namespace {

const char* const endName[2] = {"source", "target"};

std::string nameOf(_ADObject* o) { return std::string(o->whoAmI()) + ":" + o->objID() + "@" + o->context(); }

// What the walk finds on one object.
struct Node {
    bool registered = false;
    long references = 0;  // handles found on the object
    long roleEntries = 0;
    long ends = 0;
};

class Walk {
public:
    Walk(const std::vector<ADObject>* held, std::size_t limit) : held_(held), limit_(limit) {}

    std::vector<std::string> run() {
        std::size_t registered = 0;
        DSRegistrar::forEach([&](_ADObject* o) {
            live_[o].registered = true;
            ++registered;
        });
        if (registered != DSRegistrar::count()) fault("the registry's walk and its count disagree");
        // Objects reached through roles and ends join as they are found; a
        // deleted object is the only kind that may live off the registry.
        for (auto& [o, node] : live_) work_.push_back(o);
        if (held_)
            for (const ADObject& h : *held_)
                if (!h.isEmpty()) ++reach(h.impl()).references;
        for (std::size_t i = 0; i < work_.size() && !full(); ++i) {
            visitRoles(work_[i]);
            if (auto* link = dynamic_cast<_KRLink*>(work_[i])) visitEnds(link);
        }
        for (auto& [o, node] : live_) {
            if (full()) break;
            verdict(o, node);
        }
        return std::move(faults_);
    }

private:
    bool full() const noexcept { return faults_.size() >= limit_; }
    void fault(std::string what) {
        if (!full()) faults_.push_back(std::move(what));
    }

    Node& reach(_ADObject* o) {
        auto [it, added] = live_.try_emplace(o);
        if (added) work_.push_back(o);
        return it->second;
    }

    void visitRoles(_ADObject* o) {
        adForEachRow(o, [&](const ADAttributeEntry& row) {
            if (!adIsRoleRow(row) || !row.getter.role) return;
            const int end = adRoleEnd(row) == adSource ? krSource : krTarget;
            const char* linkClass = adRoleLinkClass(row);
            for (const ADObject& h : *(o->*row.getter.role)()) {
                const std::string role = "role " + nameOf(o) + "." + row.name;
                if (h.isEmpty()) {
                    fault(role + " holds an empty handle");
                    continue;
                }
                Node& member = reach(h.impl());
                ++member.references;
                ++member.roleEntries;
                auto* link = dynamic_cast<_KRLink*>(h.impl());
                if (!link || std::strcmp(h->whoAmI(), linkClass) != 0)
                    fault(role + " holds a " + h->whoAmI());
                else if (!(link->endSlot(end) == o))
                    fault(role + " holds " + nameOf(link) + ", whose " + endName[end] + " is another object");
            }
        });
    }

    void visitEnds(_KRLink* l) {
        for (int e = 0; e < 2; ++e) {
            ADObject& end = l->endSlot(e);
            if (end.isEmpty()) continue;
            ++reach(end.impl()).references;
            ++live_[l].ends;
            if (!end->isKindOf(l->linkInfo().endClass[e])) {
                fault("the " + std::string(endName[e]) + " of " + nameOf(l) + " is a " + end->whoAmI());
                continue;
            }
            long times = 0;
            for (const ADObject& h : *l->linkInfo().role[e](end.impl())) times += h == l;
            if (times != 1)
                fault(nameOf(l) + " stands " + std::to_string(times) + " times in the role of its " + endName[e]);
        }
    }

    void verdict(_ADObject* o, const Node& node) {
        if (node.registered) {
            if (DSRegistrar::findObj(o->whoAmI(), o->objID(), o->context()) != o)
                fault(nameOf(o) + " is not found by its identity");
        } else if (!(o->status() & adStatusDeleted)) {
            fault(nameOf(o) + " is live, not deleted and not registered");
        }
        if (node.roleEntries != node.ends)
            fault(nameOf(o) + " stands in " + std::to_string(node.roleEntries) + " roles with " +
                  std::to_string(node.ends) + " ends set");
        const long uses = o->_get_useCount();
        if (held_ ? uses != node.references : uses < node.references)
            fault(nameOf(o) + " has use count " + std::to_string(uses) + " for " + std::to_string(node.references) +
                  " handles");
    }

    const std::vector<ADObject>* held_;
    std::size_t limit_;
    std::unordered_map<_ADObject*, Node> live_;
    std::vector<_ADObject*> work_;
    std::vector<std::string> faults_;
};

}  // namespace

std::vector<std::string> checkGraph(const std::vector<ADObject>* held, std::size_t limit) {
    return Walk(held, limit ? limit : 1).run();
}

void assertGraph(const char* after) {
    const std::vector<std::string> faults = checkGraph();
    if (faults.empty()) return;
    std::fprintf(stderr, "krmwtarn: the object graph is broken after %s:\n", after);
    for (const std::string& f : faults) std::fprintf(stderr, "  %s\n", f.c_str());
    std::abort();
}

}  // namespace kr

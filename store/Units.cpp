// Units.cpp — unit roots by the controller rule, and the walk that collects a
// unit's objects and links.
#include <krmwtarn/store/Units.h>

#include <krmwtarn/platform/repository/ADLink.h>
#include <krmwtarn/platform/repository/ADReflection.h>
#include <krmwtarn/platform/repository/DSController.h>
#include <krmwtarn/platform/repository/DSRegistrar.h>

#include <cstring>
#include <unordered_set>

namespace krstore {

_ADObject* UnitResolver::stepOf(_ADObject* o) {
    if (_ADObject* up = dsControllerStep(o)) return up;
    // A link that no end controls goes with its source (or its only end).
    if (o->isRelationshipObject()) {
        auto* l = static_cast<_ADLink*>(o);
        if (l->getSource() && !l->getSource()->isEmpty()) return l->getSource()->impl();
        if (l->getTarget() && !l->getTarget()->isEmpty()) return l->getTarget()->impl();
    }
    return nullptr;
}

_ADObject* UnitResolver::rootOf(_ADObject* o) {
    auto found = root_.find(o);
    if (found != root_.end()) return found->second;
    // Walk up to a known root or the top, then remember the answer for the chain.
    std::vector<_ADObject*>& chain = chain_;
    chain.clear();
    _ADObject* top = o;
    _ADObject* answer = nullptr;
    for (int depth = 0; depth < 64; ++depth) {
        chain.push_back(top);
        _ADObject* up = stepOf(top);
        if (!up || up == o) break;
        auto known = root_.find(up);
        if (known != root_.end()) {
            answer = known->second;
            break;
        }
        top = up;
    }
    if (!answer) answer = top;
    for (_ADObject* c : chain) root_.emplace(c, answer);
    return answer;
}

namespace {
bool bothEnds(_ADObject* link) {
    auto* l = static_cast<_ADLink*>(link);
    return l->getSource() && !l->getSource()->isEmpty() && l->getTarget() && !l->getTarget()->isEmpty();
}
}  // namespace

UnitContent collectUnit(_ADObject* root, UnitResolver& resolver) {
    UnitContent unit;
    unit.root = root;
    std::unordered_set<_ADObject*> seen{root};
    std::vector<_ADObject*> queue{root};
    unit.objects.push_back(root);
    for (std::size_t next = 0; next < queue.size(); ++next) {
        _ADObject* m = queue[next];
        forEachRole(m, [&](const ADAttributeEntry& row, DSModelCollection* role) {
            bool atSource = adRoleEnd(row) == adSource;
            for (const ADObject& h : *role) {
                _ADObject* link = h.impl();
                if (seen.insert(link).second && resolver.rootOf(link) == root) {
                    if (bothEnds(link)) unit.links.push_back(link);
                    queue.push_back(link);  // links may hold roles of their own
                }
                auto* l = static_cast<_ADLink*>(link);
                ADObject* far = atSource ? l->getTarget() : l->getSource();
                if (!far || far->isEmpty()) continue;
                _ADObject* f = far->impl();
                if (seen.insert(f).second && resolver.rootOf(f) == root) {
                    if (!f->isRelationshipObject())
                        unit.objects.push_back(f);
                    else if (bothEnds(f))
                        unit.links.push_back(f);
                    queue.push_back(f);
                }
            }
        });
    }
    return unit;
}

std::vector<UnitContent> collectAllUnits(UnitResolver& resolver) {
    std::vector<UnitContent> units;
    std::unordered_map<_ADObject*, std::size_t> index;
    std::vector<_ADObject*> all;
    all.reserve(DSRegistrar::count());
    DSRegistrar::forEach([&](_ADObject* o) { all.push_back(o); });
    resolver.reserve(all.size());
    auto unitOf = [&](_ADObject* root) -> UnitContent& {
        auto [it, added] = index.emplace(root, units.size());
        if (added) {
            units.emplace_back();
            units.back().root = root;
            units.back().objects.push_back(root);
        }
        return units[it->second];
    };
    for (_ADObject* o : all) {
        _ADObject* root = resolver.rootOf(o);
        if (root->isRelationshipObject()) continue;  // a link with no ends belongs nowhere
        UnitContent& unit = unitOf(root);
        if (o == root) continue;
        if (!o->isRelationshipObject())
            unit.objects.push_back(o);
        else if (bothEnds(o))
            unit.links.push_back(o);
    }
    return units;
}

long positionInEnd(_ADObject* link, int end) {
    auto* l = static_cast<_ADLink*>(link);
    ADObject* e = end == 0 ? l->getSource() : l->getTarget();
    if (!e || e->isEmpty()) return -1;
    // The end's role of this link's class: the role row naming the link class
    // with the end on the right side.
    long found = -1;
    forEachRole(e->impl(), [&](const ADAttributeEntry& row, DSModelCollection* role) {
        if (found >= 0 || std::strcmp(adRoleLinkClass(row), link->whoAmI()) != 0) return;
        bool atSource = adRoleEnd(row) == adSource;
        if (atSource != (end == 0)) return;
        long i = 0;
        for (const ADObject& h : *role) {
            if (h.impl() == link) {
                found = i;
                return;
            }
            ++i;
        }
    });
    return found;
}

void clearChanges(_ADObject* o) {
    if (o->isRelationshipObject()) static_cast<_ADLink*>(o)->setEndChanged(adEndSource | adEndTarget, false);
    if (!o->getChangeFlag(nullptr)) return;
    adForEachRow(o, [o](const ADAttributeEntry& row) {
        if (!adIsEndRow(row)) o->setChangeBit(row.name, omClearChanged);
    });
}

}  // namespace krstore

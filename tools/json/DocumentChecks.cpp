// DocumentChecks.cpp — the second half of reading an import: the plan checked
// as a whole (every link with both ends, no duplicate, one link in a one-to-one
// role, orders that agree), and the order in which the links' ends will be
// set. The repository is only looked at, not changed.
#include <krmwtarn/json/DocumentPlan.h>

#include <krmwtarn/platform/repository/ADLink.h>
#include <krmwtarn/platform/repository/ADReflection.h>

#include <algorithm>
#include <cstdint>
#include <queue>
#include <unordered_set>

namespace viewdoc::plan {
namespace {

const char* const kSideName[2] = {"source", "target"};

// The role collection of `o` that holds links of `linkClass` at `side`.
DSModelCollection* roleCollection(_ADObject* o, const char* linkClass, Side side) {
    const ADAttributeEntry* row = DLLView_findRow(o, endRow(linkClass, side).inverse);
    return row && adIsRoleRow(*row) && row->getter.role ? (o->*row->getter.role)() : nullptr;
}
}  // namespace

void Reader::finish() {
    checkEnds();
    checkDuplicates();
    placeInRoles();
    orderJoins();
}

void Reader::checkEnds() {
    for (Object& l : plan_.objects) {
        if (!l.link) continue;
        for (Side side : {kSource, kTarget}) {
            if (!l.existing) {
                if (l.end[side] < 0) refuse(l.at, "the " + *l.cls + " link is given without its " + kSideName[side]);
                continue;
            }
            auto* live = static_cast<_ADLink*>(l.existing);
            ADObject* end = side == kSource ? live->getSource() : live->getTarget();
            if (!end || end->isEmpty())
                refuse(l.at, "the " + *l.cls + " link stands in the repository without its " + kSideName[side]);
            if (l.end[side] >= 0 && plan_.objects[l.end[side]].existing != end->impl())
                refuse(l.at, "@id", "this " + *l.cls + " joins other objects in the repository");
        }
    }
}

void Reader::checkDuplicates() {
    // Between new links of the documents, and against the links a source
    // already holds (each such role read once).
    std::unordered_map<std::pair<std::string_view, std::uint64_t>, int, PairHash> made;  // class, both ends
    std::unordered_map<std::pair<_ADObject*, std::string_view>, std::unordered_set<_ADObject*>, PairHash> held;
    for (std::size_t i = 0; i < plan_.objects.size(); ++i) {
        const Object& l = plan_.objects[i];
        if (!l.link || l.existing) continue;
        std::uint64_t ends =
            static_cast<std::uint64_t>(l.end[kSource]) << 32 | static_cast<std::uint32_t>(l.end[kTarget]);
        auto [first, fresh] = made.emplace(std::make_pair(std::string_view(*l.cls), ends), static_cast<int>(i));
        if (!fresh)
            refuse(l.at, "a second " + *l.cls + " joins the same two objects (the first at " +
                             plan_.where(plan_.objects[first->second].at) + ")");
        _ADObject* source = plan_.objects[l.end[kSource]].existing;
        _ADObject* target = plan_.objects[l.end[kTarget]].existing;
        if (!source || !target) continue;
        auto [targets, unread] = held.try_emplace(std::make_pair(source, std::string_view(*l.cls)));
        if (unread)
            if (DSModelCollection* role = roleCollection(source, l.cls->c_str(), kSource))
                for (const ADObject& h : *role)
                    if (*l.cls == h->whoAmI())
                        targets->second.insert(static_cast<_ADLink*>(h.impl())->getTarget()->impl());
        if (targets->second.count(target))
            refuse(l.at, "a second " + *l.cls + " joins the same two objects (the repository holds one)");
    }
}

void Reader::placeInRoles() {
    for (std::size_t i = 0; i < plan_.objects.size(); ++i) {
        const Object& l = plan_.objects[i];
        if (!l.link || l.existing) continue;
        for (Side side : {kSource, kTarget})
            plan_.roles[role(l.end[side], l.cls->c_str(), side)].links.push_back(static_cast<int>(i));
    }
    for (Role& r : plan_.roles) {
        if (r.links.empty() && r.lists.empty()) continue;
        const Object& owner = plan_.objects[r.owner];
        DSModelCollection* held = owner.existing ? roleCollection(owner.existing, r.linkClass, r.side) : nullptr;
        long heldCount = held ? held->count() : 0;
        if (r.single && !r.links.empty() && heldCount + static_cast<long>(r.links.size()) > 1) {
            const Object& second = plan_.objects[r.links[heldCount ? 0 : 1]];
            refuse(second.endAt[r.side],
                   "role '" + std::string(r.name) + "' of " + *owner.cls + " " + *owner.id +
                       " holds one link; a second is given here (" +
                       (heldCount ? std::string("the repository holds one")
                                  : "the first at " + plan_.where(plan_.objects[r.links[0]].endAt[r.side])) +
                       ")");
        }
        orderRole(r);
    }
}

// The order of a role's links: every order the documents give for the role
// (an array, one copy of it) is kept; where they say nothing, the links the
// repository holds stay first and in their order, then the new ones by first
// mention. An ordered role at the source is rearranged to the documents'
// order; any other role takes new links at its end only and its held order as
// it is.
void Reader::orderRole(Role& r) {
    if (r.lists.empty()) {
        r.order = r.links;  // mention order, behind whatever the role holds
        return;
    }
    const Object& owner = plan_.objects[r.owner];
    const bool ordered = r.side == kSource && (endRow(r.linkClass, kSource).flags & adFlagOrdered);
    // The order graph: the held links first (nodes 0 .. held-1), then the new ones.
    std::vector<_ADObject*> held;
    if (owner.existing)
        if (DSModelCollection* role = roleCollection(owner.existing, r.linkClass, r.side))
            for (const ADObject& h : *role) held.push_back(h.impl());
    const int nh = static_cast<int>(held.size());
    const int n = nh + static_cast<int>(r.links.size());
    std::unordered_map<int, int> newNode;
    for (std::size_t i = 0; i < r.links.size(); ++i) newNode.emplace(r.links[i], nh + static_cast<int>(i));
    std::unordered_map<_ADObject*, int> heldNode;
    auto nodeOf = [&](const Listed& x) {
        if (plan_.isNew(x.link)) return newNode.at(x.link);
        if (heldNode.empty())
            for (int i = 0; i < nh; ++i) heldNode.emplace(held[i], i);
        auto it = heldNode.find(plan_.objects[x.link].existing);
        if (it == heldNode.end())
            refuse(x.at, "role '" + std::string(r.name) + "' does not hold this link in the repository");
        return it->second;
    };
    struct Edge {
        int from, to;
        Place at;  // the place of `to` in the list that asks for it; -1: the repository's order
    };
    std::vector<Edge> edges;
    if (!ordered)
        for (int i = 1; i < nh; ++i) edges.push_back({i - 1, i, -1});
    for (const std::vector<Listed>& list : r.lists) {
        for (std::size_t i = 1; i < list.size(); ++i) {
            const Listed& a = list[i - 1];
            const Listed& b = list[i];
            int from = nodeOf(a), to = nodeOf(b);
            if (!ordered && from >= nh && to < nh)
                refuse(b.at, "role '" + std::string(r.name) +
                                 "' holds this link in the repository already; a new link cannot come before it");
            edges.push_back({from, to, b.at});
        }
    }
    std::vector<std::vector<int>> out(n), in(n);
    std::vector<int> pending(n, 0);
    for (std::size_t k = 0; k < edges.size(); ++k) {
        out[edges[k].from].push_back(static_cast<int>(k));
        in[edges[k].to].push_back(static_cast<int>(k));
        ++pending[edges[k].to];
    }
    // Kahn's order, the held links first, then the earliest mentioned.
    auto key = [&](int v) {
        return v < nh ? std::make_pair(0L, static_cast<long>(v))
                      : std::make_pair(1L, plan_.objects[r.links[v - nh]].mention);
    };
    auto later = [&](int a, int b) { return key(a) > key(b); };
    std::priority_queue<int, std::vector<int>, decltype(later)> free(later);
    for (int v = 0; v < n; ++v)
        if (!pending[v]) free.push(v);
    std::vector<bool> placed(n, false);
    std::vector<int> order;
    while (!free.empty()) {
        int v = free.top();
        free.pop();
        placed[v] = true;
        order.push_back(v);
        for (int k : out[v])
            if (!--pending[edges[k].to]) free.push(edges[k].to);
    }
    if (static_cast<int>(order.size()) < n) {
        // The lists contradict each other or the repository: walk back from an
        // unplaced link over unplaced predecessors until one repeats, and name
        // the cycle's latest list place and its earliest.
        int v = 0;
        while (placed[v]) ++v;
        std::vector<int> stepAt(n, -1), trail;
        while (stepAt[v] < 0) {
            stepAt[v] = static_cast<int>(trail.size());
            int k = *std::find_if(in[v].begin(), in[v].end(), [&](int e) { return !placed[edges[e].from]; });
            trail.push_back(k);
            v = edges[k].from;
        }
        int latest = -1, earliest = -1;
        bool repository = false;
        for (std::size_t s = static_cast<std::size_t>(stepAt[v]); s < trail.size(); ++s) {
            if (edges[trail[s]].at < 0) {
                repository = true;
                continue;
            }
            if (latest < 0 || trail[s] > latest) latest = trail[s];
            if (earliest < 0 || trail[s] < earliest) earliest = trail[s];
        }
        refuse(edges[latest].at, "this order of role '" + std::string(r.name) + "' contradicts " +
                                     (repository ? std::string("the order the repository holds")
                                                 : "the one given at " + plan_.where(edges[earliest].at)));
    }
    r.order.clear();
    for (int v : order)
        if (v >= nh) r.order.push_back(r.links[v - nh]);
    // Joining at the end gives this order unless a new link comes before a
    // held one or the held ones change places.
    bool asJoined = true;
    for (int k = 0; k < n && asJoined; ++k) asJoined = order[k] == k || (k >= nh && order[k] >= nh);
    if (asJoined) return;
    for (int v : order) r.arrangement.emplace_back(v < nh ? -1 : r.links[v - nh], v < nh ? held[v] : nullptr);
    plan_.arranged.push_back(static_cast<int>(&r - plan_.roles.data()));
}

// The order the new links' ends are set in: every source end first (a link
// joins its source's role with no other end to test against, as the link
// constructor does), then every target end, each role in its order. Target
// ends are set controllers first (the controller test then sees what controls
// both ends), by the depth of the end they control.
void Reader::orderJoins() {
    const int n = static_cast<int>(plan_.objects.size());
    std::vector<std::vector<int>> up(n);  // the objects that control each object
    std::vector<int> controlled(n, -1);   // per new link, the end it controls
    for (int i = 0; i < n; ++i) {
        const Object& l = plan_.objects[i];
        if (!l.link || l.existing) continue;
        for (Side side : {kSource, kTarget}) {
            if (!(endRow(l.cls->c_str(), side).flags & adFlagControlling)) continue;
            int other = l.end[1 - side];
            controlled[i] = other;
            up[other].push_back(l.end[side]);
            up[i].push_back(l.end[side]);  // a link is controlled by what controls its controlling end
            break;
        }
    }
    std::vector<int> depth(n, -1);
    std::vector<bool> open(n, false);
    auto depthOf = [&](auto&& self, int o) -> int {
        if (depth[o] >= 0) return depth[o];
        if (open[o]) return 0;  // a cycle of controllers: the model's walk stops too
        open[o] = true;
        int d = 0;
        for (int c : up[o]) d = std::max(d, 1 + self(self, c));
        open[o] = false;
        return depth[o] = d;
    };
    for (Side side : {kSource, kTarget}) {
        auto key = [&](int link) {
            long d = side == kTarget && controlled[link] >= 0 ? depthOf(depthOf, controlled[link]) : 0;
            return std::make_pair(d, plan_.objects[link].mention);
        };
        // Merge the roles' orders, the smallest key among their next links first.
        using Head = std::pair<std::pair<long, long>, std::pair<int, std::size_t>>;  // key, (role, position)
        std::priority_queue<Head, std::vector<Head>, std::greater<Head>> heads;
        for (std::size_t r = 0; r < plan_.roles.size(); ++r)
            if (plan_.roles[r].side == side && !plan_.roles[r].order.empty())
                heads.push({key(plan_.roles[r].order[0]), {static_cast<int>(r), 0}});
        std::vector<int>& joins = plan_.joins[side];
        joins.clear();
        while (!heads.empty()) {
            auto [k, at] = heads.top();
            heads.pop();
            const std::vector<int>& order = plan_.roles[at.first].order;
            joins.push_back(order[at.second]);
            if (at.second + 1 < order.size()) heads.push({key(order[at.second + 1]), {at.first, at.second + 1}});
        }
    }
}

}  // namespace viewdoc::plan
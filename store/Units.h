// Units.h — the unit of storage: a topmost controller with every object it
// controls by the controller rule and the links among them. A link that no end
// controls belongs to the unit of its source. The positions of each link in
// both of its ends' roles are taken along, so role order is kept exactly.
#pragma once

#include <krmwtarn/platform/common/Export.h>

#include <unordered_map>
#include <vector>

class _ADObject;
class DSModelCollection;
struct ADAttributeEntry;

namespace krstore {

// Answers unit roots, remembering every step it took (valid while the graph
// does not change).
class KRMWTARN_API UnitResolver {
public:
    _ADObject* rootOf(_ADObject* o);
    // Room for the roots of this many objects.
    void reserve(std::size_t objects) { root_.reserve(objects); }

private:
    _ADObject* stepOf(_ADObject* o);
    std::unordered_map<_ADObject*, _ADObject*> root_;
    std::vector<_ADObject*> chain_;  // the walk up of one rootOf, kept for the next
};

struct KRMWTARN_API UnitContent {
    _ADObject* root = nullptr;
    std::vector<_ADObject*> objects;  // the root first
    std::vector<_ADObject*> links;    // links with both ends set
};

// The unit whose root is `root`, walked from it through every role.
KRMWTARN_API UnitContent collectUnit(_ADObject* root, UnitResolver& resolver);

// Every unit of the live registry, roots in first-seen order.
KRMWTARN_API std::vector<UnitContent> collectAllUnits(UnitResolver& resolver);

// Calls f(role row, role) for every role of an object (registered link classes only).
template <class F>
KRMWTARN_API void forEachRole(_ADObject* o, F&& f);

// The position of a link in the role of one of its ends (0 source, 1 target), or -1.
KRMWTARN_API long positionInEnd(_ADObject* link, int end);

// Every change bit of an object off (attributes and roles by name, link
// ends): what an object stored or reloaded has.
void clearChanges(_ADObject* o);

}  // namespace krstore

#include <krmwtarn/store/Units.inl>

// DSModelCollection.h — the repository client's ordered collection of object
// handles with one cursor. Roles keep their link handles in it; `first` and
// `next` move the cursor and answer the handle there, or null past the end.
// A role's collection is made with its role row and takes only the links that
// belong in it (see the constructor); a plain collection takes any handle.
#pragma once

#include <krmwtarn/platform/common/Export.h>

#include <krmwtarn/platform/repository/ADObject.h>
#include <krmwtarn/platform/repository/HandleList.h>

#include <vector>

class KRMWTARN_API DSModelCollection {
public:
    DSModelCollection() = default;
    // The collection of a role, described by its row in the owner's attribute
    // table (role name, link class, the owner's end in the row's flags). The
    // add operations refuse, throwing a KVException* and changing nothing:
    //   2498 ("ewswtarn_": link class, class given or "" for an empty handle,
    //        role name): the handle is empty or not a link of the role's class;
    //   2499 ("ewswtarn_": link class, role name, "source" or "target"): the
    //        link's end on the owner's side is not the object owning the role;
    //   2441 ("relSameTarget": link class, position): the link is there already.
    explicit DSModelCollection(const ADAttributeEntry* role) noexcept : role_(role) {}
    DSModelCollection(const DSModelCollection&) = delete;
    DSModelCollection& operator=(const DSModelCollection&) = delete;

    ADObject* first() noexcept;
    ADObject* next() noexcept;
    long count() const noexcept { return static_cast<long>(items_.size()); }
    // Position of the cursor, -1 before the first element or past the end.
    long indexOf() const noexcept;
    // Position of the element holding the same object, -1 if absent.
    long indexOf(const ADObject* element) const noexcept;
    // The element at a position, or null.
    ADObject* at(long position) noexcept;

    void addFirst(const ADObject& element);
    void addLast(const ADObject& element);
    // Insert behind the element at `position`; -1 (or less) inserts first,
    // a position past the end appends.
    void addAfter(const ADObject& element, long position);
    // Move the element at the cursor directly behind `after` (first when `after`
    // is null). Nothing moves when there is no cursor or `after` is absent.
    void moveAfter(const ADObject* after);
    // Remove the element at the cursor; the cursor then stands before the
    // element that followed it, so `next` continues the walk.
    void remove();

    // Hand every element over to `into`, leaving the collection empty.
    void drainInto(std::vector<ADObject>& into);

    // The role row this collection keeps, or null for a plain collection.
    const ADAttributeEntry* roleRow() const noexcept { return role_; }

    const ADObject* begin() const noexcept { return items_.begin(); }
    const ADObject* end() const noexcept { return items_.end(); }

private:
    // Throws unless a role's collection may take the element (see above).
    void admit(const ADObject& element) const;

    HandleList items_;
    long cursor_ = -1;
    const ADAttributeEntry* role_ = nullptr;
};

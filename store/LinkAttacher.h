// LinkAttacher.h — links retrieved from the repository made live: a link's row
// waits until both its ends are live (their units may come in later
// retrieves); then the link is made by identity and put into both ends' roles
// at its stored positions, among the links that are there already.
#pragma once

#include <krmwtarn/platform/repository/ADObject.h>
#include <krmwtarn/store/Columns.h>
#include <krmwtarn/store/LinkPositions.h>

#include <memory>
#include <string>
#include <vector>

class _KRLink;

namespace krstore {

class Connection;
struct Table;

// A link's row as read, until its link is made.
struct LinkRow {
    // What attaching reads of every row, in position order and so all over
    // memory, lies in the row's first 64 bytes.
    long position[2] = {0, 0};
    // Resolved while attaching: the ends once live, the link once made.
    _ADObject* end[2] = {nullptr, nullptr};
    _KRLink* link = nullptr;
    const Table* table = nullptr;
    const char* endClass[2] = {nullptr, nullptr};  // the schema's own class names
    std::string id, version;
    std::string endID[2];
    std::vector<Value> values;  // the attribute columns
};
using LinkRows = std::vector<std::unique_ptr<LinkRow>>;

// The links one retrieve made: taken out again (their positions forgotten,
// the links deleted, the last made first) unless the retrieve is kept.
class MadeLinks {
public:
    explicit MadeLinks(LinkPositions& positions) : positions_(positions) {}
    MadeLinks(const MadeLinks&) = delete;
    MadeLinks& operator=(const MadeLinks&) = delete;
    ~MadeLinks();
    void add(ADObject link) { links_.push_back(std::move(link)); }
    void keep() noexcept { kept_ = true; }

private:
    LinkPositions& positions_;
    std::vector<ADObject> links_;
    bool kept_ = false;
};

class LinkAttacher {
public:
    // `db` is polled while links are made between a server's results.
    explicit LinkAttacher(Connection& db) : db_(db) {}
    LinkAttacher(const LinkAttacher&) = delete;
    LinkAttacher& operator=(const LinkAttacher&) = delete;

    // Stored positions of live links in their source's and target's roles.
    LinkPositions& positions() noexcept { return positions_; }

    // Makes the links of the rows whose ends are live, into `made`, and puts
    // them in place; their rows leave `rows`, the others wait there.
    void attach(LinkRows& rows, MadeLinks& made);
    // The rows join those that wait for their ends from earlier retrieves, and
    // every waiting row whose ends are live now is attached.
    void attachWaiting(LinkRows& rows, MadeLinks& made);
    // Forgets the rows that wait (before the registry they name goes).
    void clearWaiting() noexcept { waiting_.clear(); }

private:
    // The rows whose ends are live, their links made: looked up in groups.
    std::vector<LinkRow*> make(LinkRows& rows, MadeLinks& made);
    // Each link into its end's role, by stored position at that end.
    void place(std::vector<LinkRow*>& ready);

    Connection& db_;
    LinkPositions positions_;
    LinkRows waiting_;
};

}  // namespace krstore

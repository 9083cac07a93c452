// RandomModel.h — a randomized operation sequence over the model: objects of
// random classes made by identity and with the default ID, links of random
// classes between random objects (many of which must be refused), end setters,
// re-ordering, attribute setters with random processing modes, copied and
// dropped handles, whole-repository releases, markDeleted on links and other
// objects, the deleted status bit set directly, registry walks whose visitor
// deletes links, and additions to role collections of what does not belong
// there (all refused). After every operation the model's invariants are
// checked over every live object (the registered ones and what they reach):
//   - every link stands once in its source's role and once in its target's role
//     and nowhere else (a link with an empty end stands only in its set end's role);
//   - a role holds only links of its class whose end at that side is the role's owner;
//   - every live object is registered and found by identity, except a deleted
//     one that a link still has at an end;
//   - every use count equals the handles that exist on the object (the driver's
//     own, role members, link ends);
//   - an operation that threw left the graph as it was, except for the one
//     documented leftover: a link whose target setter threw inside its
//     constructor stays in its source's role with an empty target.
// The outcome of every link operation (which exception, or none) is predicted
// from the state before it and compared.
#pragma once

#include <krmwtarn/krmwtarn.h>

#include <cstddef>
#include <cstdint>
#include <map>
#include <string>
#include <vector>

namespace krrandom {

// Whether identity construction is sometimes given an ID of the generated form
// ("#N", next to the last one handed out). On unless KRMWTARN_RANDOM_NO_ID_PROBE is set.
extern bool probeGeneratedIds;

// Where the driver's choices come from.
class Choices {
public:
    virtual ~Choices() = default;
    // A number in [0, n), n > 0.
    virtual std::uint32_t below(std::uint32_t n) = 0;
    // True when no further choice can be made (a fuzzer input ran out).
    virtual bool exhausted() const { return false; }
    bool percent(std::uint32_t p) { return below(100) < p; }
};

// A seeded generator (splitmix64): the same seed replays the same run.
class SeededChoices final : public Choices {
public:
    explicit SeededChoices(std::uint64_t seed) noexcept : state_(seed) {}
    std::uint32_t below(std::uint32_t n) override;

private:
    std::uint64_t state_;
};

// The bytes of a fuzzer input, one or two per choice; zeros once they run out.
class ByteChoices final : public Choices {
public:
    ByteChoices(const std::uint8_t* data, std::size_t size) noexcept : data_(data), size_(size) {}
    std::uint32_t below(std::uint32_t n) override;
    bool exhausted() const override { return used_ >= size_; }

private:
    const std::uint8_t* data_;
    std::size_t size_;
    std::size_t used_ = 0;
};

// What a run did: operations by kind, exceptions by number.
struct Tally {
    std::map<std::string, std::uint64_t> operations;
    std::map<long, std::uint64_t> thrown;       // by the link rules
    std::map<long, std::uint64_t> roleRefused;  // by role collections
    std::uint64_t steps = 0;
    void add(const Tally& other);
    std::string summary() const;
};

class Driver {
public:
    // Releases whatever the repository still holds, so the registry starts empty.
    explicit Driver(Choices& choices, int slots = 32);
    ~Driver();
    Driver(const Driver&) = delete;
    Driver& operator=(const Driver&) = delete;

    // One random operation followed by the invariant check. False once a check
    // has failed; failure() then says what, at which step and after which operation.
    bool step();
    // Drops every handle, releases the repository and checks that nothing is left.
    bool finish();

    const std::string& failure() const noexcept { return failure_; }
    const Tally& tally() const noexcept { return tally_; }

private:
    class Snapshot;

    // Operations.
    void newObject();
    void byIdentity();
    void copyHandle();
    void dropHandle();
    void createLink();
    void setLinkEnd();
    void setSourceAfter();
    void moveInSource();
    void setAttribute();
    void setChangeBit();
    void releaseAll();
    void markDeleted();
    void walkDeletingLinks();
    void deletedBit();
    void misuseRole();

    // Helpers.
    void letGo(_ADObject* o);
    int freeSlot();
    int pickHeld(bool (*accept)(const ADObject&, const void*), const void* arg);
    ADObject pickEnd(const char* endClass);
    ADObject objectOfClass(const char* className);
    ADObject pickLink(bool orderedOnly);
    const char* pickContext();
    DSModelCollection* roleOf(_ADObject* owner, const char* linkClass, int end);

    // Checks.
    bool check();
    bool checkThrowOutcome(long expected, long actual, const char* what);
    void fail(std::string message);

    Choices& choices_;
    std::vector<ADObject> slots_;
    std::string operation_;
    std::string failure_;
    Tally tally_;
    long lastGenerated_ = 0;  // number of the last generated object ID seen
};

// Runs `operations` steps from `seed` and finishes. Answers an empty string, or
// the failure with the seed and a command that replays it.
std::string runSeeded(std::uint64_t seed, std::uint64_t operations, Tally* tally = nullptr);

}  // namespace krrandom

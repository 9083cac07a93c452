// bench_model.cpp — what the model costs against what the same work costs with
// plain data, each pair measured in one run (`X` against `X_Baseline`; the
// bench_ratios tool divides their medians):
//   - building the largest model the database manager allows: one DBD with 255
//     segments over 15 levels and 1,000 fields, one PSB with 2,500 PCBs, 30,000
//     SENSEGs and 10,000 SENFLDs; the baseline makes the same allocations,
//     registry insertions and role appends with plain structs, no checks and no
//     notifications;
//   - lookups by identity in a repository of a million objects, against a plain
//     std::unordered_map lookup of the same keys;
//   - bytes per object (an object or a link with its registry entry and role
//     slots) against the sum of its own fields.
#include <benchmark/benchmark.h>
#include <krmwtarn/krmwtarn.h>
#include <malloc.h>

#include <algorithm>
#include <cstdio>
#include <cstring>
#include <memory>
#include <random>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace {

// ---- the largest model ----------------------------------------------------

constexpr int kSegments = 255, kLevels = 15, kFields = 1000;
constexpr int kPCBs = 2500, kSensegs = 30000, kSenflds = 10000;

// Segment i's parent: the first kLevels segments form a chain (levels 0..14);
// every later one hangs below a chain segment of levels 0..13.
int parentOf(int i) { return i < kLevels ? i - 1 : i % (kLevels - 1); }

// A PCB is a DSPCB in the PSB with its database PCB type (a DSPCBdb), which is
// based on the DBD and holds the PCB's SENSEGs. Links made: segments, parents,
// fields; per PCB its place in the PSB, its type and the type's DBD; per SENSEG
// its PCB type and the segment it maps; per SENFLD its SENSEG and its field.
constexpr int kLinks = kSegments + (kSegments - 1) + kFields + 3 * kPCBs + 2 * kSensegs + 2 * kSenflds;
constexpr int kObjects = 1 + kSegments + kFields + 1 + 2 * kPCBs + kSensegs + kSenflds;

void buildModel() {
    const char* v = "V1";
    const char* id = ADObject::defaultObjID();
    DSDBD dbd(v, id, 1);
    std::vector<DSSegment> segments;
    segments.reserve(kSegments);
    for (int i = 0; i < kSegments; ++i) {
        segments.emplace_back(v, id, 1);
        DSContainsSegment(&dbd, &segments[i], 1);
        if (i > 0) DSParent(&segments[i], &segments[parentOf(i)], 1);
    }
    std::vector<DSField> fields;
    fields.reserve(kFields);
    for (int i = 0; i < kFields; ++i) {
        fields.emplace_back(v, id, 1);
        DSHasField(&segments[i % kSegments], &fields[i], 1);
    }
    DSPSB psb(v, id, 1);
    std::vector<DSPCBdb> pcbs;
    pcbs.reserve(kPCBs);
    for (int i = 0; i < kPCBs; ++i) {
        DSPCB pcb(v, id, 1);
        DSIncludesPCB(&psb, &pcb, 1);
        pcbs.emplace_back(v, id, 1);
        DSSpecifiedByType(&pcb, &pcbs[i], 1);
        DSBasedOn(&pcbs[i], &dbd, 1);
    }
    std::vector<DSSenSegment> sensegs;
    sensegs.reserve(kSensegs);
    for (int i = 0; i < kSensegs; ++i) {
        sensegs.emplace_back(v, id, 1);
        DSHasSensitive(&pcbs[i % kPCBs], &sensegs[i], 1);
        DSMapsTo(&sensegs[i], &segments[i % kSegments], 1);
    }
    for (int i = 0; i < kSenflds; ++i) {
        DSSenField senfld(v, id, 1);
        DSUsesSENFLD(&sensegs[i * 3], &senfld, 1);
        DSUsedAsSENFLD(&senfld, &fields[i % kFields], 1);
    }
}

void BuildWorstCaseModel(benchmark::State& state) {
    for (auto _ : state) {
        buildModel();
        state.PauseTiming();
        DSRegistrar::releaseAll();
        state.ResumeTiming();
    }
    state.counters["objects"] = kObjects;
    state.counters["links"] = kLinks;
}
BENCHMARK(BuildWorstCaseModel)->Unit(benchmark::kMillisecond);

// The same work with plain data: one allocation and one registry insertion per
// object and per link, two role appends per link, generated IDs and the same
// registry key (class, ID, context); no class, version, duplicate or controller
// test, no use counts, no notifications.
struct PlainLink;
struct PlainObject {
    const char* cls;
    std::string id;
    std::string context;
    std::vector<PlainLink*> roles[2];
};
struct PlainLink : PlainObject {
    PlainObject* ends[2];
};
struct PlainKey {
    std::string_view cls, id, ctx;
    bool operator==(const PlainKey& o) const noexcept { return cls == o.cls && id == o.id && ctx == o.ctx; }
};
struct PlainKeyHash {
    std::size_t operator()(const PlainKey& k) const noexcept {
        std::hash<std::string_view> h;
        std::size_t v = h(k.id);
        v ^= h(k.cls) + 0x9e3779b97f4a7c15ULL + (v << 6) + (v >> 2);
        v ^= h(k.ctx) + 0x9e3779b97f4a7c15ULL + (v << 6) + (v >> 2);
        return v;
    }
};

class PlainRepository {
public:
    ~PlainRepository() {
        for (PlainObject* o : owned_) delete o;
    }
    template <class T>
    T* make(const char* cls) {
        T* o = new T();
        o->cls = cls;
        o->id = "#" + std::to_string(next_++);
        o->context = "V1";
        registry_.emplace(PlainKey{o->cls, o->id, o->context}, o);
        owned_.push_back(o);
        return o;
    }
    PlainObject* object(const char* cls) { return make<PlainObject>(cls); }
    void link(const char* cls, PlainObject* source, int sourceRole, PlainObject* target, int targetRole) {
        PlainLink* l = make<PlainLink>(cls);
        l->ends[0] = source;
        l->ends[1] = target;
        source->roles[sourceRole].push_back(l);
        target->roles[targetRole].push_back(l);
    }

private:
    unsigned long next_ = 1;
    std::unordered_map<PlainKey, PlainObject*, PlainKeyHash> registry_;
    std::vector<PlainObject*> owned_;
};

void buildPlain(PlainRepository& r) {
    PlainObject* dbd = r.object("DSDBD");
    std::vector<PlainObject*> segments(kSegments), fields(kFields), pcbs(kPCBs), sensegs(kSensegs);
    for (int i = 0; i < kSegments; ++i) {
        segments[i] = r.object("DSSegment");
        r.link("DSContainsSegment", dbd, 0, segments[i], 0);
        if (i > 0) r.link("DSParent", segments[i], 1, segments[parentOf(i)], 1);
    }
    for (int i = 0; i < kFields; ++i) {
        fields[i] = r.object("DSField");
        r.link("DSHasField", segments[i % kSegments], 0, fields[i], 0);
    }
    PlainObject* psb = r.object("DSPSB");
    for (int i = 0; i < kPCBs; ++i) {
        PlainObject* pcb = r.object("DSPCB");
        r.link("DSIncludesPCB", psb, 0, pcb, 0);
        pcbs[i] = r.object("DSPCBdb");
        r.link("DSSpecifiedByType", pcb, 1, pcbs[i], 0);
        r.link("DSBasedOn", pcbs[i], 1, dbd, 1);
    }
    for (int i = 0; i < kSensegs; ++i) {
        sensegs[i] = r.object("DSSenSegment");
        r.link("DSHasSensitive", pcbs[i % kPCBs], 0, sensegs[i], 0);
        r.link("DSMapsTo", sensegs[i], 1, segments[i % kSegments], 1);
    }
    for (int i = 0; i < kSenflds; ++i) {
        PlainObject* senfld = r.object("DSSenField");
        r.link("DSUsesSENFLD", sensegs[i * 3], 0, senfld, 0);
        r.link("DSUsedAsSENFLD", senfld, 1, fields[i % kFields], 1);
    }
}

void BuildWorstCaseModel_Baseline(benchmark::State& state) {
    for (auto _ : state) {
        auto* r = new PlainRepository;
        buildPlain(*r);
        state.PauseTiming();
        delete r;
        state.ResumeTiming();
    }
    state.counters["objects"] = kObjects;
    state.counters["links"] = kLinks;
}
BENCHMARK(BuildWorstCaseModel_Baseline)->Unit(benchmark::kMillisecond);

// ---- bytes per object -------------------------------------------------------

std::size_t liveHeapBytes() { return mallinfo2().uordblks; }

// The sum of the fields an implementation object holds, without padding,
// vtable pointer or allocator overhead: the _ADObject part (use count, status,
// change byte, registered class, name, object ID, version) and, per row of the
// class's own tables, its value or role collection, plus its change bytes.
std::size_t ownFieldBytes(_ADObject* o) {
    std::size_t sum = sizeof(int) + sizeof(unsigned) + 1 + sizeof(const char*) + sizeof(char*) + sizeof(std::string) +
                      sizeof(ADRepositoryKey);
    for (ADAttributeEntry* t = o->nextAttributeTable(nullptr); t && t != _ADObject::ownTable();
         t = o->nextAttributeTable(t)) {
        int rows = 0;
        for (ADAttributeEntry* row = t; row->name; ++row, ++rows) {
            if (adIsRoleRow(*row))
                sum += sizeof(DSModelCollection);
            else if (adIsEndRow(*row))
                sum += sizeof(ADObject);  // the end change byte is counted below
            else if (!std::strcmp(row->type, "string"))
                sum += sizeof(char*);
            else
                sum += static_cast<std::size_t>(row->width);
        }
        sum += (static_cast<std::size_t>(rows) + 7) / 8;  // change bits
    }
    return sum;
}

// Objects made and held; the heap grown per object covers the implementation
// object, its registry entry and whatever else its making allocates. The
// registry's bucket array (one pointer per entry) was allocated by earlier runs
// and is not in the figure. `prepare` runs untimed and unmeasured first.
template <class Prepare, class Make>
void bytesPer(benchmark::State& state, int n, Prepare prepare, Make make, std::size_t extraFieldBytes) {
    std::vector<ADObject> held;
    held.reserve(static_cast<std::size_t>(n));
    std::size_t bytes = 0, fields = 0;
    for (auto _ : state) {
        state.PauseTiming();
        held.clear();
        DSRegistrar::releaseAll();
        prepare();
        std::size_t before = liveHeapBytes();
        state.ResumeTiming();
        for (int i = 0; i < n; ++i) held.push_back(make(i));
        state.PauseTiming();
        bytes = (liveHeapBytes() - before) / static_cast<std::size_t>(n);
        fields = ownFieldBytes(held.front().impl()) + extraFieldBytes;
        state.ResumeTiming();
    }
    held.clear();
    DSRegistrar::releaseAll();
    state.counters["bytes_per_object"] = static_cast<double>(bytes);
    state.counters["field_bytes"] = static_cast<double>(fields);
    state.SetItemsProcessed(state.iterations() * n);
}

constexpr int kMeasured = 100000;

void BytesPerField(benchmark::State& state) {
    bytesPer(
        state, kMeasured, [] {}, [](int) { return ADObject(DSField("V1", ADObject::defaultObjID(), 1)); }, 0);
}
BENCHMARK(BytesPerField)->Unit(benchmark::kMillisecond)->Iterations(3);

// A link between two held objects, each end new, so the link's handle in each
// end's role is a first element: its field bytes count the two role slots (one
// handle each) besides its own ends.
void BytesPerLink(benchmark::State& state) {
    std::vector<DSSegment> segments;
    std::vector<DSField> fields;
    auto prepare = [&] {
        segments.clear();
        fields.clear();
        segments.reserve(kMeasured);
        fields.reserve(kMeasured);
        for (int i = 0; i < kMeasured; ++i) {
            segments.emplace_back("V1", ADObject::defaultObjID(), 1);
            fields.emplace_back("V1", ADObject::defaultObjID(), 1);
        }
    };
    bytesPer(
        state, kMeasured, prepare, [&](int i) { return ADObject(DSHasField(&segments[i], &fields[i], 1)); },
        2 * sizeof(ADObject));
    segments.clear();
    fields.clear();
    DSRegistrar::releaseAll();
}
BENCHMARK(BytesPerLink)->Unit(benchmark::kMillisecond)->Iterations(3);

// ---- lookups by identity -------------------------------------------------------

constexpr int kRepository = 1000000;
constexpr int kLookups = 1 << 20;

const std::vector<std::string>& repositoryIds() {
    static const std::vector<std::string> ids = [] {
        std::vector<std::string> v;
        v.reserve(kRepository);
        char buf[16];
        for (int i = 0; i < kRepository; ++i) {
            std::snprintf(buf, sizeof buf, "F%07d", i);
            v.emplace_back(buf);
        }
        return v;
    }();
    return ids;
}

// The keys looked up, in an order fixed by a seed.
const std::vector<const char*>& lookupOrder() {
    static const std::vector<const char*> order = [] {
        std::vector<const char*> v;
        v.reserve(kLookups);
        std::mt19937 rng(42);
        std::uniform_int_distribution<int> pick(0, kRepository - 1);
        for (int i = 0; i < kLookups; ++i) v.push_back(repositoryIds()[pick(rng)].c_str());
        return v;
    }();
    return order;
}

void LookupByIdentity(benchmark::State& state) {
    std::vector<DSField> held;
    held.reserve(kRepository);
    for (const std::string& id : repositoryIds()) held.emplace_back("V1", id.c_str(), 1);
    const auto& order = lookupOrder();
    std::size_t i = 0;
    for (auto _ : state) {
        benchmark::DoNotOptimize(DSRegistrar::findObj("DSField", order[i], "V1"));
        i = (i + 1) & (kLookups - 1);
    }
    held.clear();
    DSRegistrar::releaseAll();
}
BENCHMARK(LookupByIdentity)->Iterations(4000000);

// A plain map of the same keys (class, object ID, version) to the same kind of
// pointer, with the key's strings in the map's own node and the registry's hash,
// looked up with the same C strings.
struct OwnedKey {
    std::string cls, id, ctx;
};
struct KeyView {
    std::string_view cls, id, ctx;
};
struct TripleHash {
    using is_transparent = void;
    std::size_t operator()(const KeyView& k) const noexcept { return PlainKeyHash{}(PlainKey{k.cls, k.id, k.ctx}); }
    std::size_t operator()(const OwnedKey& k) const noexcept { return (*this)(KeyView{k.cls, k.id, k.ctx}); }
};
struct TripleEqual {
    using is_transparent = void;
    static KeyView view(const OwnedKey& k) { return {k.cls, k.id, k.ctx}; }
    static KeyView view(const KeyView& k) { return k; }
    template <class A, class B>
    bool operator()(const A& a, const B& b) const noexcept {
        KeyView x = view(a), y = view(b);
        return x.cls == y.cls && x.id == y.id && x.ctx == y.ctx;
    }
};

void LookupByIdentity_Baseline(benchmark::State& state) {
    std::unordered_map<OwnedKey, void*, TripleHash, TripleEqual> map;
    map.reserve(kRepository);
    for (const std::string& id : repositoryIds())
        map.emplace(OwnedKey{"DSField", id, "V1"}, const_cast<char*>(id.c_str()));
    const auto& order = lookupOrder();
    std::size_t i = 0;
    for (auto _ : state) {
        auto it = map.find(KeyView{"DSField", order[i], "V1"});
        benchmark::DoNotOptimize(it == map.end() ? nullptr : it->second);
        i = (i + 1) & (kLookups - 1);
    }
}
BENCHMARK(LookupByIdentity_Baseline)->Iterations(4000000);

}  // namespace

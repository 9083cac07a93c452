// bench_expand.cpp — expanding the largest model by its two largest views,
// CORVIAPOPULATEDBD over the largest DBD (255 segments, 1,000 fields) and
// CORVIAPSB over the largest PSB (2,500 PCBs, 30,000 SENSEGs, 10,000 SENFLDs),
// against a baseline that builds the same nodes, entries and values by walking
// the same graph through the typed accessors, with no view tree between: what
// the view machinery costs (finding each element's row by name, class tests of
// every list, the generic value reading). Both report nodes per second.
#include <krmwtarn/krmwtarn.h>
#include <krmwtarn/platform/views/DLLViewExpansion.h>
#include <krmwtarn/views/EwswtarnViews.h>
#include "tests/store/LargestModel.h"

#include <benchmark/benchmark.h>

#include <cstring>
#include <utility>
#include <type_traits>

namespace {

constexpr const char* kVersion = "EXPAND";

std::size_t nodesOf(const DLLViewNode& n) {
    std::size_t count = 1;
    for (const DLLViewEntry& e : n.entries)
        for (const DLLViewNode& c : e.items) count += nodesOf(c);
    return count;
}

// ---- the baseline's node building ----------------------------------------

DLLViewNode& add(std::vector<DLLViewNode>& into, _ADObject* o) {
    into.emplace_back();
    into.back().object = o;
    return into.back();
}

template <class V>
void value(DLLViewNode& n, V v) {
    DLLViewEntry& e = n.entries.emplace_back();
    e.kind = DLLViewEntry::Value;
    if constexpr (std::is_same_v<V, char*> || std::is_same_v<V, const char*>) {
        e.value.isNull = v == nullptr;
        if (v) e.value.text = v;
    } else if constexpr (std::is_same_v<V, char>) {
        e.value.isNull = false;
        if (v) e.value.text.assign(1, v);
    } else {
        e.value.isNull = false;
        e.value.number = static_cast<long>(v);
    }
}

// Each link of a role of class Link (other classes are not listed), with its
// far end of class Far: `far(endNode, end)` fills the end's node, then
// `after(linkNode, link)` the link's own values. A role without such links
// leaves no entry.
template <class Link, bool ToTarget, class Far, class FillFar, class FillLink>
void over(DLLViewNode& n, DSModelCollection* role, const char* linkClass, FillFar&& far, FillLink&& after) {
    DLLViewEntry& entry = n.entries.emplace_back();
    entry.kind = DLLViewEntry::Role;
    for (const ADObject& h : *role) {
        if (std::strcmp(h.impl()->whoAmI(), linkClass) != 0) continue;
        auto* link = static_cast<Link*>(h.impl());
        ADObject* end;
        if constexpr (ToTarget)
            end = link->_get_target();
        else
            end = link->_get_source();
        if (!end || end->isEmpty() || std::strcmp(end->impl()->whoAmI(), Far::className()) != 0) continue;
        DLLViewNode& linkNode = add(entry.items, link);
        DLLViewEntry& endEntry = linkNode.entries.emplace_back();
        endEntry.kind = DLLViewEntry::End;
        far(add(endEntry.items, end->impl()), static_cast<typename Far::Impl*>(end->impl()));
        after(linkNode, link);
    }
    if (entry.items.empty()) n.entries.pop_back();
}
template <class Link, bool ToTarget, class Far, class FillFar>
void over(DLLViewNode& n, DSModelCollection* role, const char* linkClass, FillFar&& far) {
    over<Link, ToTarget, Far>(n, role, linkClass, std::forward<FillFar>(far), [](DLLViewNode&, Link*) {});
}

// The far-end classes the walk lists, with their implementation types.
template <class I>
struct Class {
    using Impl = I;
    static const char* className();
};
#define BASELINE_CLASS(name)           \
    using name##C = Class<_##name>;    \
    template <>                        \
    const char* name##C::className() { \
        return #name;                  \
    }
BASELINE_CLASS(DSDBD)
BASELINE_CLASS(DSSegment)
BASELINE_CLASS(DSField)
BASELINE_CLASS(DSSenSegment)
BASELINE_CLASS(DSSenField)
BASELINE_CLASS(DSPCB)
BASELINE_CLASS(DSPCBdb)
BASELINE_CLASS(DSPSB)
#undef BASELINE_CLASS

void pcbName(DLLViewNode& n, _DSPCBdb* type) {
    over<_DSSpecifiedByType, false, DSPCBC>(n, type->_get_typedPCB(), "DSSpecifiedByType",
                                            [](DLLViewNode& p, _DSPCB* pcb) { value(p, pcb->_get_adName()); });
}

// A physical parent link's own values, at either of its segments.
void parentLinkValues(DLLViewNode& l, _DSParent* link) {
    value(l, link->_get_strPARENT());
    value(l, link->_get_pcPointer());
}

// CORVIAPOPULATEDBD, as it comes out for plain segments.
DLLViewNode walkDbd(_DSDBD* dbd) {
    DLLViewNode root;
    root.object = dbd;
    over<_DSContainsSegment, true, DSSegmentC>(
        root, dbd->_get_segments(), "DSContainsSegment", [](DLLViewNode& s, _DSSegment* seg) {
            over<_DSHasField, true, DSFieldC>(s, seg->_get_fields(), "DSHasField", [](DLLViewNode& f, _DSField* field) {
                value(f, field->_get_strFieldName());
            });
            over<_DSParent, true, DSSegmentC>(
                s, seg->_get_physicalParent(), "DSParent", [](DLLViewNode&, _DSSegment*) {}, parentLinkValues);
            over<_DSMapsTo, false, DSSenSegmentC>(
                s, seg->_get_sensitiveSegments(), "DSMapsTo", [](DLLViewNode& ss, _DSSenSegment* sense) {
                    over<_DSHasSensitive, false, DSPCBdbC>(ss, sense->_get_sourcePCB(), "DSHasSensitive", pcbName);
                    value(ss, sense->_get_strSensegName());
                });
            value(s, seg->_get_strSegmentName());
            value(s, seg->_get_minimumLength());
            value(s, seg->_get_maximumLength());
            over<_DSParent, false, DSSegmentC>(
                s, seg->_get_physicalChildren(), "DSParent",
                [](DLLViewNode& c, _DSSegment* child) {
                    over<_DSHasField, true, DSFieldC>(c, child->_get_fields(), "DSHasField",
                                                      [](DLLViewNode& f, _DSField* field) {
                                                          value(f, field->_get_uniqueSequence());
                                                          value(f, field->_get_sequenceField());
                                                          value(f, field->_get_strFieldName());
                                                      });
                    value(c, child->_get_strSegmentName());
                    value(c, child->_get_rules());
                    value(c, child->_get_minimumLength());
                    value(c, child->_get_maximumLength());
                    value(c, child->_get_frequency());
                },
                parentLinkValues);
            value(s, seg->_get_rules());
            value(s, seg->_get_frequency());
            value(s, seg->_get_exitFlag());
        });
    over<_DSBasedOn, false, DSPCBdbC>(root, dbd->_get_basedPCBs(), "DSBasedOn", [](DLLViewNode& t, _DSPCBdb* type) {
        over<_DSHasSensitive, true, DSSenSegmentC>(
            t, type->_get_senseg(), "DSHasSensitive", [](DLLViewNode& ss, _DSSenSegment* sense) {
                over<_DSMapsTo, true, DSSegmentC>(ss, sense->_get_targetSegment(), "DSMapsTo",
                                                  [](DLLViewNode&, _DSSegment*) {});
                value(ss, sense->_get_strSensegName());
                value(ss, sense->_get_procoptSENSEG());
            });
        pcbName(t, type);
        value(t, type->_get_sequentialBuffering());
        value(t, type->_get_keyLength());
        value(t, type->_get_procoptPCB());
    });
    value(root, dbd->_get_adName());
    value(root, dbd->_get_versionString());
    return root;
}

// CORVIAPSB with CORVIAPCB for each PCB, as it comes out for database PCBs.
DLLViewNode walkPsb(_DSPSB* psb) {
    DLLViewNode root;
    root.object = psb;
    over<_DSIncludesPCB, true, DSPCBC>(root, psb->_get_listPCBs(), "DSIncludesPCB", [](DLLViewNode& p, _DSPCB* pcb) {
        over<_DSSpecifiedByType, true, DSPCBdbC>(
            p, pcb->_get_typeOfPCB(), "DSSpecifiedByType", [](DLLViewNode& t, _DSPCBdb* type) {
                over<_DSHasSensitive, true, DSSenSegmentC>(
                    t, type->_get_senseg(), "DSHasSensitive", [](DLLViewNode& ss, _DSSenSegment* sense) {
                        over<_DSMapsTo, true, DSSegmentC>(
                            ss, sense->_get_targetSegment(), "DSMapsTo", [](DLLViewNode& s, _DSSegment* seg) {
                                over<_DSContainsSegment, false, DSDBDC>(
                                    s, seg->_get_containingDBD(), "DSContainsSegment",
                                    [](DLLViewNode& d, _DSDBD* dbd) { value(d, dbd->_get_adName()); });
                                value(s, seg->_get_strSegmentName());
                            });
                        over<_DSUsesSENFLD, true, DSSenFieldC>(
                            ss, sense->_get_senflds(), "DSUsesSENFLD", [](DLLViewNode& sf, _DSSenField* senfld) {
                                over<_DSUsedAsSENFLD, true, DSFieldC>(sf, senfld->_get_targetFIELD(), "DSUsedAsSENFLD",
                                                                      [](DLLViewNode& f, _DSField* field) {
                                                                          over<_DSHasField, false, DSSegmentC>(
                                                                              f, field->_get_sourceSegment(),
                                                                              "DSHasField",
                                                                              [](DLLViewNode& s, _DSSegment* seg) {
                                                                                  value(s, seg->_get_strSegmentName());
                                                                              });
                                                                          value(f, field->_get_strFieldName());
                                                                      });
                                value(sf, senfld->_get_startPosition());
                                value(sf, senfld->_get_replace());
                            });
                        value(ss, sense->_get_strSensegName());
                        value(ss, sense->_get_subsetPointer8());
                        value(ss, sense->_get_subsetPointer7());
                        value(ss, sense->_get_subsetPointer6());
                        value(ss, sense->_get_subsetPointer5());
                        value(ss, sense->_get_subsetPointer4());
                        value(ss, sense->_get_subsetPointer3());
                        value(ss, sense->_get_subsetPointer2());
                        value(ss, sense->_get_subsetPointer1());
                        value(ss, sense->_get_procoptSENSEG());
                    });
                over<_DSBasedOn, true, DSDBDC>(t, type->_get_baseDBD(), "DSBasedOn", [](DLLViewNode& d, _DSDBD* dbd) {
                    over<_DSContainsSegment, true, DSSegmentC>(
                        d, dbd->_get_segments(), "DSContainsSegment",
                        [](DLLViewNode& s, _DSSegment* seg) { value(s, seg->_get_strSegmentName()); });
                    value(d, dbd->_get_adName());
                });
                value(t, type->_get_keyLength());
                value(t, type->_get_procoptPCB());
            });
        over<_DSIncludesPCB, false, DSPSBC>(p, pcb->_get_usingPSBs(), "DSIncludesPCB",
                                            [](DLLViewNode& u, _DSPSB* using_) { value(u, using_->_get_adName()); });
        value(p, pcb->_get_adName());
        value(p, pcb->_get_list());
    });
    value(root, psb->_get_adName());
    value(root, psb->_get_writeToOperator());
    value(root, psb->_get_ssaSize());
    value(root, psb->_get_lockMaximum());
    value(root, psb->_get_onlineImageCopy());
    value(root, psb->_get_maximumQxCalls());
    value(root, psb->_get_language());
    value(root, psb->_get_ioErrorOption());
    value(root, psb->_get_ioaSize());
    value(root, psb->_get_hpPSBName());
    value(root, psb->_get_compatibility());
    return root;
}

// ---- the benchmarks --------------------------------------------------------

struct Largest {
    _DSDBD* dbd;
    _DSPSB* psb;
};
Largest largestModel() {
    DLLView_init::initAll();
    storetest::buildLargest(kVersion);
    return {static_cast<_DSDBD*>(DSRegistrar::findObj("DSDBD", "BIGDBD", kVersion)),
            static_cast<_DSPSB*>(DSRegistrar::findObj("DSPSB", "BIGPSB", kVersion))};
}

// The same objects in the same order, with the same entries and values.
bool sameTree(const DLLViewNode& a, const DLLViewNode& b) {
    if (a.object != b.object || a.entries.size() != b.entries.size()) return false;
    for (std::size_t i = 0; i < a.entries.size(); ++i) {
        const DLLViewEntry& x = a.entries[i];
        const DLLViewEntry& y = b.entries[i];
        if (x.kind != y.kind || x.items.size() != y.items.size() || x.value.isNull != y.value.isNull ||
            x.value.text != y.value.text || x.value.number != y.value.number)
            return false;
        for (std::size_t k = 0; k < x.items.size(); ++k)
            if (!sameTree(x.items[k], y.items[k])) return false;
    }
    return true;
}

std::pair<DLLViewNode, DLLViewNode> byViews(const Largest& m) {
    return {DLLView_expand(DLLViewType::find("CORVIAPOPULATEDBD"), m.dbd),
            DLLView_expand(DLLViewType::find("CORVIAPSB"), m.psb)};
}
std::pair<DLLViewNode, DLLViewNode> byAccessors(const Largest& m) { return {walkDbd(m.dbd), walkPsb(m.psb)}; }

template <class Expand>
void expanding(benchmark::State& state, Expand&& expand) {
    Largest m = largestModel();
    {
        auto [viewDbd, viewPsb] = byViews(m);
        auto [ownDbd, ownPsb] = byAccessors(m);
        if (!sameTree(viewDbd, ownDbd) || !sameTree(viewPsb, ownPsb))
            state.SkipWithError("the baseline's nodes differ from the views'");
    }
    std::size_t nodes = 0;
    for (auto _ : state) {
        auto [dbdTree, psbTree] = expand(m);
        state.PauseTiming();
        nodes = nodesOf(dbdTree) + nodesOf(psbTree);
        { DLLViewNode drop = std::move(dbdTree), drop2 = std::move(psbTree); }
        state.ResumeTiming();
    }
    DSRegistrar::releaseAll();
    state.counters["nodes"] = static_cast<double>(nodes);
    state.counters["per_node"] =
        benchmark::Counter(static_cast<double>(nodes) * static_cast<double>(state.iterations()),
                           benchmark::Counter::kIsRate | benchmark::Counter::kInvert);
}

void ExpandLargest(benchmark::State& state) { expanding(state, byViews); }
BENCHMARK(ExpandLargest)->Unit(benchmark::kMillisecond);

void ExpandLargest_Baseline(benchmark::State& state) { expanding(state, byAccessors); }
BENCHMARK(ExpandLargest_Baseline)->Unit(benchmark::kMillisecond);

}  // namespace

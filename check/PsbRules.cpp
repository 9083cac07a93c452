// PsbRules.cpp — the rules over one PSB: names, the order of its PCBs, each
// PCB's SENSEGs against its DBD, processing options, limits.
#include "RuleFunctions.h"

#include <string_view>
#include <unordered_map>

namespace krcheck::rule {

// The PSB's name and its PCBs' names are 1-8 letters, digits, @, # or $.
void psbName(const PsbFacts& f, Report& report) {
    if (!validName(f.name))
        report(f.psb, f.name,
               "PSB name '" + f.name + "' is not 1 to 8 letters, digits, @, # or $ starting with no digit");
    for (const PcbFacts& p : f.pcbs) {
        std::string name = str(p.pcb->_get_strPCBAccessName());
        if (!name.empty() && !validName(name))
            report(p.pcb, p.path,
                   "PCB name '" + name + "' is not 1 to 8 letters, digits, @, # or $ starting with no digit");
    }
}

// TP PCBs come before the database and GSAM PCBs.
void tpFirst(const PsbFacts& f, Report& report) {
    const PcbFacts* database = nullptr;
    for (const PcbFacts& p : f.pcbs) {
        if (p.kind != "TP" && !database) database = &p;
        if (p.kind == "TP" && database)
            report(p.pcb, p.path, "TP PCB follows database PCB " + database->path + "; TP PCBs come first");
    }
}

// The first SENSEG of a PCB is its DBD's root, or the segment its PROCSEQ index indexes.
void sensegRoot(const PsbFacts& f, Report& report) {
    for (const PcbFacts& p : f.pcbs) {
        if (p.sensegs.empty() || !p.dbdFacts) continue;
        const SensegFacts& s = p.sensegs.front();
        const SegmentFacts* seg = p.dbdFacts->of(s.segment);
        if (p.procseq || !seg) continue;  // a secondary sequence starts where its index points
        if (seg->parent >= 0)
            report(s.senseg, s.path,
                   "first SENSEG " + s.name + " is not the root of DBD " + p.dbdFacts->name + " (its parent is " +
                       p.dbdFacts->segments[std::size_t(seg->parent)].name + ")");
    }
}

// Each SENSEG's parent SENSEG is its segment's parent in the DBD.
void sensegParent(const PsbFacts& f, Report& report) {
    for (const PcbFacts& p : f.pcbs) {
        if (p.procseq || !p.dbdFacts) continue;
        for (std::size_t i = 1; i < p.sensegs.size(); ++i) {
            const SensegFacts& s = p.sensegs[i];
            const SegmentFacts* seg = p.dbdFacts->of(s.segment);
            if (!seg) continue;
            const _DSSegment* want = seg->parent < 0 ? nullptr : p.dbdFacts->segments[std::size_t(seg->parent)].segment;
            const _DSSegment* have = s.parent < 0 ? nullptr : p.sensegs[std::size_t(s.parent)].segment;
            if (want == have) continue;
            std::string wanted = want ? "segment " + p.dbdFacts->segments[std::size_t(seg->parent)].name : "none";
            std::string given = s.parent < 0 ? "none" : "SENSEG " + p.sensegs[std::size_t(s.parent)].name;
            report(s.senseg, s.path,
                   "SENSEG " + s.name + " has parent " + given + "; in DBD " + p.dbdFacts->name + " its parent is " +
                       wanted);
        }
    }
}

// KEYLEN is at least the longest concatenated key of the sensitive segments.
void keyLength(const PsbFacts& f, Report& report) {
    for (const PcbFacts& p : f.pcbs) {
        if (p.kind != "DB" || p.procseq || !p.dbdFacts) continue;
        long longest = 0;
        std::string deepest;
        for (const SensegFacts& s : p.sensegs) {
            const SegmentFacts* seg = p.dbdFacts->of(s.segment);
            long key = seg ? seg->concatenatedKey : 0;
            if (key > longest) {
                longest = key;
                deepest = s.name;
            }
        }
        auto* db = kr::dyn_cast<_DSPCBdb>(p.based);
        long given = db ? db->_get_keyLength() : 0;
        if (given < longest)
            report(p.pcb, p.path,
                   "KEYLEN=" + n(given) + " is shorter than the concatenated key of SENSEG " + deepest + " (" +
                       n(longest) + " bytes)");
    }
}

// Processing options are letters of G, I, R, D, A, P, O, N, T, E, L, S, H, K, each once, at most four.
void procopt(const PsbFacts& f, Report& report) {
    auto check = [&](const _ADObject* o, const std::string& path, const std::string& what, const std::string& value) {
        bool ok = value.size() <= 4;
        for (std::size_t i = 0; i < value.size(); ++i)
            ok = ok && std::string_view("GIRDAPONTELSHK").find(value[i]) != std::string_view::npos &&
                 value.find(value[i]) == i;
        if (!ok) report(o, path, what + " PROCOPT=" + value + " is not a set of processing options");
    };
    for (const PcbFacts& p : f.pcbs) {
        if (p.based) check(p.pcb, p.path, "PCB", str(p.based->_get_procoptPCB()));
        for (const SensegFacts& s : p.sensegs) check(s.senseg, s.path, "SENSEG", str(s.senseg->_get_procoptSENSEG()));
    }
}

// PROCSEQ names a secondary index of the PCB's DBD (one of its XDFLDs points to it).
void procseqIndex(const PsbFacts& f, Report& report) {
    for (const PcbFacts& p : f.pcbs) {
        if (!p.procseq || !p.dbdFacts) continue;
        bool found = false;
        for (const SegmentFacts& s : p.dbdFacts->segments) {
            auto* complex = kr::dyn_cast<_DSSegmentComplex>(s.segment);
            if (found || !complex) continue;
            for (_DSXDFLD* x : kr::targetsOf<DSHasIndex>(complex->_get_indices()))
                found = found || kr::targetsOf<DSIsUseOf>(x->_get_targetDBDindex()).first() == p.procseq;
        }
        if (!found) {
            _DSDBD* idx = kr::sourcesOf<DSDefinedByAccess>(p.procseq->_get_containingDBD()).first();
            std::string name = idx ? str(idx->_get_strDBDName()) : "?";
            report(p.pcb, p.path,
                   "PROCSEQ=" + name + " is no secondary index of DBD " + p.dbdFacts->name + " (no XDFLD names it)");
        }
    }
}

// A SENFLD names a field of its SENSEG's segment and fits in that segment.
void senfldFit(const PsbFacts& f, Report& report) {
    for (const PcbFacts& p : f.pcbs)
        for (const SensegFacts& s : p.sensegs) {
            const SegmentFacts* seg = p.dbdFacts ? p.dbdFacts->of(s.segment) : nullptr;
            if (!seg) continue;
            for (_DSSenField* sf : s.senflds) {
                _DSField* field = kr::targetsOf<DSUsedAsSENFLD>(sf->_get_targetFIELD()).first();
                const FieldFacts* known = nullptr;
                for (const FieldFacts& fl : seg->fields) known = fl.field == field ? &fl : known;
                if (!known) {
                    report(sf, s.path, "SENFLD names a field that is not in segment " + seg->name);
                    continue;
                }
                long length = seg->segment->_get_maximumLength();
                long end = long(sf->_get_startPosition()) + known->geometry.bytes - 1;
                if (length > 0 && known->geometry.bytes > 0 && end > length)
                    report(sf, s.path + "/" + known->name,
                           "SENFLD " + known->name + " at START=" + n(sf->_get_startPosition()) + " ends at byte " +
                               n(end) + ", beyond the " + n(length) + " bytes of segment " + seg->name);
            }
        }
}

// A PSB holds at most 2,500 PCBs.
void pcbCount(const PsbFacts& f, Report& report) {
    beyond(f.psb, f.name, "PSB " + f.name, long(f.pcbs.size()), krsource::kMaxPCBs, "PCBs", report);
}

// A PSB holds at most 30,000 SENSEGs.
void sensegCount(const PsbFacts& f, Report& report) {
    long count = 0;
    for (const PcbFacts& p : f.pcbs) count += long(p.sensegs.size());
    beyond(f.psb, f.name, "PSB " + f.name, count, krsource::kMaxSensegs, "SENSEGs", report);
}

// A PSB holds at most 10,000 SENFLDs.
void senfldCount(const PsbFacts& f, Report& report) {
    long count = 0;
    for (const PcbFacts& p : f.pcbs)
        for (const SensegFacts& s : p.sensegs) count += long(s.senflds.size());
    beyond(f.psb, f.name, "PSB " + f.name, count, krsource::kMaxSenflds, "SENFLDs", report);
}

// A database or GSAM PCB is based on a DBD (DBDNAME).
void pcbDbd(const PsbFacts& f, Report& report) {
    for (const PcbFacts& p : f.pcbs)
        if (p.based && !p.dbd) report(p.pcb, p.path, p.kind + " PCB " + p.path + " names no DBD (DBDNAME)");
}

// A PCB's name is unique within its PSB.
void pcbNames(const PsbFacts& f, Report& report) {
    std::unordered_map<std::string, const PcbFacts*> first;
    for (const PcbFacts& p : f.pcbs) {
        std::string name = str(p.pcb->_get_strPCBAccessName());
        if (name.empty()) continue;
        auto [it, fresh] = first.emplace(name, &p);
        if (!fresh)
            report(p.pcb, p.path,
                   "PSB " + f.name + " names two PCBs " + name + " (the first is PCB " +
                       std::to_string(it->second - f.pcbs.data() + 1) + ")");
    }
}

// A PSB and a DBD share the library of control blocks, so they cannot share a
// name. Checked alone, a PSB knows only the DBDs its PCBs name.
void psbNamedLikeDbd(const PsbFacts& f, Report& report) {
    bool clash = false;
    if (f.dbdNames)
        clash = f.dbdNames->count(f.name) != 0;
    else
        for (const PcbFacts& p : f.pcbs) clash = clash || (p.dbd && str(p.dbd->_get_strDBDName()) == f.name);
    if (clash)
        report(f.psb, f.name,
               "PSB " + f.name + " has the name of a DBD; the control-block generation cannot hold both");
}

// GSAM PCBs come after the database PCBs.
void gsamLast(const PsbFacts& f, Report& report) {
    const PcbFacts* gsam = nullptr;
    for (const PcbFacts& p : f.pcbs) {
        if (p.kind == "GSAM" && !gsam) gsam = &p;
        if (p.kind == "DB" && gsam)
            report(p.pcb, p.path, "database PCB follows GSAM PCB " + gsam->path + "; GSAM PCBs come last");
    }
}

// A SENSEG has at most 255 SENFLDs.
void senfldsPerSenseg(const PsbFacts& f, Report& report) {
    for (const PcbFacts& p : f.pcbs)
        for (const SensegFacts& s : p.sensegs)
            beyond(s.senseg, s.path, "SENSEG " + s.name, long(s.senflds.size()), kMaxSenfldsPerSenseg, "SENFLDs",
                   report);
}

// A SENSEG sensitive to its key alone (PROCOPT=K) has no SENFLD.
void senfldKeyOnly(const PsbFacts& f, Report& report) {
    for (const PcbFacts& p : f.pcbs)
        for (const SensegFacts& s : p.sensegs)
            if (str(s.senseg->_get_procoptSENSEG()) == "K" && !s.senflds.empty())
                report(s.senflds.front(), s.path,
                       "SENSEG " + s.name + " is sensitive to its key alone (PROCOPT=K) and has SENFLDs");
}

}  // namespace krcheck::rule

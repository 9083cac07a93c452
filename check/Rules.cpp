// Rules.cpp — one function per rule, each over the facts of one DBD or PSB,
// and the rule table that lists them (Rules.h).
#include <krmwtarn/check/Rules.h>

#include <algorithm>
#include <string_view>

namespace krcheck {

bool validName(const std::string& name) noexcept {
    if (name.empty() || name.size() > 8 || (name[0] >= '0' && name[0] <= '9')) return false;
    for (char c : name)
        if (!((c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') || c == '@' || c == '#' || c == '$')) return false;
    return true;
}

namespace {
constexpr int kMaxLevels = 15;
std::string str(const char* s) { return s ? std::string(s) : std::string(); }
std::string n(long v) { return std::to_string(v); }

bool isRootKeyed(const std::string& org) {
    return org == "HIDAM" || org == "PHIDAM" || org == "HISAM" || org == "SHISAM" || org == "INDEX" || org == "PSINDEX";
}
const SegmentFacts* rootOf(const DbdFacts& f) {
    for (const SegmentFacts& s : f.segments)
        if (s.parent < 0) return &s;
    return nullptr;
}
const FieldFacts* sequenceField(const SegmentFacts& s) {
    for (const FieldFacts& fl : s.fields)
        if (fl.field->_get_sequenceField()) return &fl;
    return nullptr;
}

// ---- DBD rules ----

// Names of the DBD, its segments and fields are 1-8 letters, digits, @, # or $.
void nameForm(const DbdFacts& f, Report& report) {
    auto bad = [](const std::string& what, const std::string& name) {
        return what + " name '" + name + "' is not 1 to 8 letters, digits, @, # or $ starting with no digit";
    };
    if (!validName(f.name)) report(f.dbd, f.name, bad("DBD", f.name));
    for (const SegmentFacts& s : f.segments) {
        if (!validName(s.name)) report(s.segment, s.path, bad("segment", s.name));
        for (const FieldFacts& fl : s.fields)
            if (!validName(fl.name)) report(fl.field, s.path + "/" + fl.name, bad("field", fl.name));
    }
}

// A DBD has at most 15 levels of segments.
void segLevels(const DbdFacts& f, Report& report) {
    for (const SegmentFacts& s : f.segments)
        if (s.depth == kMaxLevels + 1)
            report(s.segment, s.path,
                   "segment " + s.name + " is at level " + n(s.depth) + "; a DBD has at most " + n(kMaxLevels));
}

// A DBD with segments has exactly one root segment.
void segRoot(const DbdFacts& f, Report& report) {
    if (f.segments.empty()) return;
    const SegmentFacts* root = rootOf(f);
    if (!root) return report(f.dbd, f.name, "DBD " + f.name + " has no root segment (every segment has a parent)");
    for (const SegmentFacts& s : f.segments)
        if (s.parent < 0 && &s != root)
            report(s.segment, s.path, "segment " + s.name + " is a second root (the root is " + root->name + ")");
}

// A field lies within its segment: START + BYTES - 1 is at most the segment's length.
void fieldRange(const DbdFacts& f, Report& report) {
    for (const SegmentFacts& s : f.segments) {
        long length = s.segment->_get_maximumLength();
        if (length <= 0) continue;
        for (const FieldFacts& fl : s.fields) {
            long end = fl.geometry.start + fl.geometry.bytes - 1;
            if (fl.geometry.start > 0 && fl.geometry.bytes > 0 && end > length)
                report(fl.field, s.path + "/" + fl.name,
                       "field " + fl.name + " ends at byte " + n(end) + ", beyond the " + n(length) +
                           " bytes of segment " + s.name);
        }
    }
}

// A segment has at most one sequence field.
void segSequence(const DbdFacts& f, Report& report) {
    for (const SegmentFacts& s : f.segments) {
        const FieldFacts* seq = sequenceField(s);
        for (const FieldFacts& fl : s.fields)
            if (seq && &fl != seq && fl.field->_get_sequenceField())
                report(fl.field, s.path + "/" + fl.name,
                       "field " + fl.name + " is a second sequence field of segment " + s.name + " (the first is " +
                           seq->name + ")");
    }
}

// The root of a HIDAM, HISAM or INDEX database has a unique sequence field.
void rootSequence(const DbdFacts& f, Report& report) {
    const SegmentFacts* root = rootOf(f);
    if (!root || !isRootKeyed(f.organisation)) return;
    const FieldFacts* seq = sequenceField(*root);
    if (!seq || !seq->field->_get_uniqueSequence())
        report(root->segment, root->path,
               "root segment " + root->name + " of a " + f.organisation + " database needs a unique sequence field " +
                   "(FIELD NAME=(name,SEQ,U))");
}

// The root of an HDAM or DEDB database without a sequence field is found by sequential scan only.
void rootUnkeyed(const DbdFacts& f, Report& report) {
    const SegmentFacts* root = rootOf(f);
    if (!root || (f.organisation != "HDAM" && f.organisation != "DEDB") || sequenceField(*root)) return;
    report(root->segment, root->path,
           "root segment " + root->name + " has no sequence field: its records are found by sequential scan only");
}

// A HIDAM database names its primary index DBD (LCHILD POINTER=INDX on the root).
void hidamIndex(const DbdFacts& f, Report& report) {
    if (f.organisation != "HIDAM") return;
    if (!static_cast<_DSDBDhidam*>(f.access)->_get_primaryIndex()->count())
        report(f.access, f.name, "HIDAM database " + f.name + " has no primary index (LCHILD ...,POINTER=INDX)");
}

// HDAM and DEDB databases name their randomizing module (RMNAME).
void randomizer(const DbdFacts& f, Report& report) {
    if (f.organisation != "HDAM" && f.organisation != "DEDB") return;
    if (str(static_cast<_DSDBDdedb*>(f.access)->_get_rmName()).empty())
        report(f.access, f.name, f.organisation + " database " + f.name + " names no randomizing module (RMNAME)");
}

// A DEDB has areas, each with its size.
void dedbAreas(const DbdFacts& f, Report& report) {
    if (f.organisation != "DEDB") return;
    int areas = 0;
    for (const ADObject& l : *f.dbd->_get_datasets()) {
        auto* area = firstFar<_DSArea>(static_cast<_DSDSColl*>(l.impl())->_get_areaAttributes());
        if (!area) continue;
        ++areas;
        if (area->_get_areaSize() <= 0) {
            auto* dd = static_cast<_DSTARNDDname*>(static_cast<_KRLink*>(l.impl())->_get_target()->impl());
            std::string name = dd && dd->_get_ddsName() ? dd->_get_ddsName() : "?";
            report(area, f.name + "/" + name, "area " + name + " of DEDB " + f.name + " has no size (SIZE)");
        }
    }
    if (!areas) report(f.dbd, f.name, "DEDB " + f.name + " has no areas (AREA statements)");
}

// Each segment of a logical DBD names its source segments (SOURCE).
void logicalSource(const DbdFacts& f, Report& report) {
    if (f.organisation != "LOGICAL") return;
    for (const SegmentFacts& s : f.segments)
        if (!s.segment->isKindOf("DSSegmentLogical") ||
            !static_cast<_DSSegmentLogical*>(s.segment)->_get_sourceSegments()->count())
            report(s.segment, s.path, "segment " + s.name + " of logical DBD " + f.name + " names no source (SOURCE)");
}

// The segment's name, and the DBD that holds it (null when none does).
std::string segName(_ADObject* segment) { return str(static_cast<_DSSegment*>(segment)->_get_strSegmentName()); }
_DSDBD* dbdOf(_ADObject* segment) {
    return firstFar<_DSDBD>(static_cast<_DSSegment*>(segment)->_get_containingDBD(), false);
}
_DSSegmentComplex* complexOf(const SegmentFacts& s) {
    return s.segment->isKindOf("DSSegmentComplex") ? static_cast<_DSSegmentComplex*>(s.segment) : nullptr;
}
std::string joined(const std::vector<_ADObject*>& segments) {
    std::string out;
    for (_ADObject* s : segments) out += (out.empty() ? "" : ", ") + segName(s);
    return out;
}

// Where an LCHILD's PAIR names a logical child (physical pairing), that child's own relationship pairs back.
void lchildPair(const DbdFacts& f, Report& report) {
    for (const SegmentFacts& s : f.segments) {
        _DSSegmentComplex* parent = complexOf(s);
        if (!parent) continue;
        for (const ADObject& l : *parent->_get_logChildren()) {
            auto* rel = static_cast<_DSLChild*>(l.impl());
            _ADObject* child = farEnd(l);
            auto* pair = firstFar<_DSSegmentComplex>(rel->_get_pairedSegment());
            // A pair that is no logical child is a virtual one: nothing to pair back.
            if (!child || !pair || !pair->_get_logParent()->count()) continue;
            std::vector<_ADObject*> back;
            for (const ADObject& pl : *pair->_get_logParent())
                if (_ADObject* p = firstFar(static_cast<_DSLChild*>(pl.impl())->_get_pairedSegment()))
                    back.push_back(p);
            if (std::find(back.begin(), back.end(), child) != back.end()) continue;
            report(s.segment, s.path,
                   "LCHILD " + segName(child) + " of segment " + s.name + " is paired with " + segName(pair) +
                       ", whose logical relationship pairs with " +
                       (back.empty() ? std::string("no segment") : joined(back)));
        }
    }
}

// A logical child's logical parent is a segment of a DBD.
void logicalParent(const DbdFacts& f, Report& report) {
    for (const SegmentFacts& s : f.segments) {
        _DSSegmentComplex* child = complexOf(s);
        if (!child) continue;
        for (_ADObject* parent : farEnds(child->_get_logParent(), false))
            if (!dbdOf(parent))
                report(s.segment, s.path,
                       "the logical parent " + segName(parent) + " of segment " + s.name + " is in no DBD");
    }
}

// An XDFLD has search fields, and its SRCH, SUBSEQ and DDATA fields are fields of its source segment.
void xdfldFields(const DbdFacts& f, Report& report) {
    for (const SegmentFacts& s : f.segments) {
        _DSSegmentComplex* target = complexOf(s);
        if (!target) continue;
        for (_ADObject* o : farEnds(target->_get_indices())) {
            auto* x = static_cast<_DSXDFLD*>(o);
            _ADObject* source = firstFar(x->_get_indexSource());
            if (!source) source = s.segment;
            std::string name = str(x->_get_xdfldName()), path = s.path + "/" + name;
            if (!x->_get_search()->count()) report(x, path, "XDFLD " + name + " has no search field (SRCH)");
            std::vector<_ADObject*> own = farEnds(static_cast<_DSSegment*>(source)->_get_fields());
            for (auto [key, role] : {std::pair{"SRCH", x->_get_search()}, std::pair{"SUBSEQ", x->_get_subseq()},
                                     std::pair{"DDATA", x->_get_ddata()}})
                for (_ADObject* field : farEnds(role))
                    if (std::find(own.begin(), own.end(), field) == own.end())
                        report(x, path,
                               "XDFLD " + name + " " + key + " field " +
                                   str(static_cast<_DSField*>(field)->_get_strFieldName()) +
                                   " is not a field of its source segment " + segName(source));
        }
    }
}

// A HIDAM's primary index is the index of an INDEX DBD that no XDFLD also uses, keyed by a field of the HIDAM's root.
void primaryIndex(const DbdFacts& f, Report& report) {
    if (f.organisation != "HIDAM") return;
    auto* hidam = static_cast<_DSDBDhidam*>(f.access);
    auto* index = firstFar<_DSDBDindex>(hidam->_get_primaryIndex());
    if (!index) return;  // HIDAM-INDEX
    auto* indexDbd = firstFar<_DSDBD>(index->_get_containingDBD(), false);
    std::string indexName = indexDbd ? str(indexDbd->_get_strDBDName()) : std::string();
    if (!indexDbd)
        report(f.access, f.name, "the primary index of HIDAM database " + f.name + " is the index of no DBD");
    else if (auto* x = firstFar<_DSXDFLD>(index->_get_secondaryIndexTarget(), false))
        report(f.access, f.name,
               "primary index DBD " + indexName + " of HIDAM database " + f.name +
                   " is also the secondary index of XDFLD " + str(x->_get_xdfldName()));
    const SegmentFacts* root = rootOf(f);
    auto* key = firstFar<_DSField>(hidam->_get_rootSequenceField());
    if (!root || !key) return;
    for (const FieldFacts& fl : root->fields)
        if (fl.field == key) return;
    report(
        f.access, f.name,
        "the primary index's key " + str(key->_get_strFieldName()) + " is not a field of root segment " + root->name);
}

// An INDEX DBD indexes something: a HIDAM names it as its primary index, or an XDFLD uses it.
void indexTarget(const DbdFacts& f, Report& report) {
    if (f.organisation != "INDEX") return;
    auto* index = static_cast<_DSDBDindex*>(f.access);
    if (!index->_get_primaryIndexTarget()->count() && !index->_get_secondaryIndexTarget()->count())
        report(f.access, f.name,
               "index DBD " + f.name + " indexes nothing: no HIDAM's LCHILD (POINTER=INDX) and no XDFLD names it");
}

// A logical segment's sources are physical segments; its parent's source is its source's physical or logical parent.
void logicalHierarchy(const DbdFacts& f, Report& report) {
    if (f.organisation != "LOGICAL") return;
    auto sourcesOf = [](const SegmentFacts& s) {
        return s.segment->isKindOf("DSSegmentLogical")
                   ? farEnds(static_cast<_DSSegmentLogical*>(s.segment)->_get_sourceSegments())
                   : std::vector<_ADObject*>();
    };
    for (const SegmentFacts& s : f.segments) {
        std::vector<_ADObject*> mine = sourcesOf(s);
        bool physical = true;
        for (_ADObject* source : mine)
            if (source->isKindOf("DSSegmentLogical") || !dbdOf(source)) {
                physical = false;
                report(s.segment, s.path,
                       "source " + segName(source) + " of segment " + s.name + " is not a segment of a physical DBD");
            }
        if (!physical || mine.empty() || s.parent < 0) continue;
        const SegmentFacts& parent = f.segments[std::size_t(s.parent)];
        std::vector<_ADObject*> above = sourcesOf(parent);
        if (above.empty()) continue;  // LOGICAL-SOURCE
        auto* source = static_cast<_DSSegment*>(mine.front());
        std::vector<_ADObject*> parents = farEnds(source->_get_physicalParent());
        if (source->isKindOf("DSSegmentComplex"))
            for (_ADObject* p : farEnds(static_cast<_DSSegmentComplex*>(source)->_get_logParent(), false))
                parents.push_back(p);
        bool joins = false;
        for (_ADObject* a : above) joins = joins || std::find(parents.begin(), parents.end(), a) != parents.end();
        if (!joins)
            report(s.segment, s.path,
                   "source " + segName(source) + " of segment " + s.name +
                       " has no physical or logical parent among the sources of its parent " + parent.name + " (" +
                       joined(above) + ")");
    }
}

// ---- PSB rules ----

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
        long given = static_cast<_DSPCBdb*>(p.based)->_get_keyLength();
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
            if (found || !s.segment->isKindOf("DSSegmentComplex")) continue;
            for (const ADObject& l : *static_cast<_DSSegmentComplex*>(s.segment)->_get_indices()) {
                auto* x = static_cast<_DSXDFLD*>(static_cast<_KRLink*>(l.impl())->_get_target()->impl());
                found = found || (x && firstFar(x->_get_targetDBDindex()) == p.procseq);
            }
        }
        if (!found) {
            _DSDBD* idx = firstFar<_DSDBD>(p.procseq->_get_containingDBD(), false);
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
                auto* field = firstFar<_DSField>(sf->_get_targetFIELD());
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

// What a definition holds beyond a limit of the generation utilities, reported at the definition.
void beyond(const _ADObject* object, const std::string& path, const std::string& what, long count, long limit,
            const std::string& things, Report& report) {
    if (count > limit)
        report(object, path, what + " has " + n(count) + " " + things + "; at most " + n(limit) + " are allowed");
}

// A DBD holds at most 255 segments.
void segmentCount(const DbdFacts& f, Report& report) {
    beyond(f.dbd, f.name, "DBD " + f.name, long(f.segments.size()), long(krsource::kMaxSegments), "segments", report);
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

constexpr Severity E = Severity::Error, W = Severity::Warning;
const Rule table[] = {
    {"NAME-FORM", E, "DBD, segment and field names are 1 to 8 letters, digits, @, # or $, not starting with a digit",
     nameForm, nullptr},
    {"SEG-LEVELS", E, "a DBD has at most 15 levels of segments", segLevels, nullptr},
    {"SEG-ROOT", E, "a DBD with segments has exactly one root segment", segRoot, nullptr},
    {"FLD-RANGE", E, "a field lies within its segment: START + BYTES - 1 is at most the segment's length", fieldRange,
     nullptr},
    {"SEG-SEQ", E, "a segment has at most one sequence field", segSequence, nullptr},
    {"ROOT-SEQ", E, "the root of a HIDAM, HISAM or INDEX database has a unique sequence field", rootSequence, nullptr},
    {"ROOT-UNKEYED", W,
     "the root of an HDAM or DEDB database without a sequence field is found by sequential scan only", rootUnkeyed,
     nullptr},
    {"HIDAM-INDEX", E, "a HIDAM database names its primary index DBD (LCHILD ...,POINTER=INDX)", hidamIndex, nullptr},
    {"RANDOMIZER", E, "HDAM and DEDB databases name their randomizing module (RMNAME)", randomizer, nullptr},
    {"DEDB-AREAS", E, "a DEDB has areas, each with its size", dedbAreas, nullptr},
    {"LOGICAL-SOURCE", E, "each segment of a logical DBD names its source segments (SOURCE)", logicalSource, nullptr},
    {"LOGICAL-HIERARCHY", E,
     "a logical segment's sources are segments of physical DBDs, and its parent's source is the physical or logical "
     "parent of its source",
     logicalHierarchy, nullptr},
    {"LCHILD-PAIR", E, "where an LCHILD's PAIR names a logical child, that child's relationship pairs back with it",
     lchildPair, nullptr},
    {"LOGICAL-PARENT", E, "a logical child's logical parent is a segment of a DBD", logicalParent, nullptr},
    {"XDFLD-FIELDS", E, "an XDFLD has search fields, and its SRCH, SUBSEQ and DDATA fields are its source segment's",
     xdfldFields, nullptr},
    {"INDEX-PRIMARY", E,
     "a HIDAM's primary index belongs to an INDEX DBD that no XDFLD also uses, and its key is a field of the root",
     primaryIndex, nullptr},
    {"INDEX-TARGET", E, "an INDEX DBD is a HIDAM's primary index or an XDFLD's secondary index", indexTarget, nullptr},
    {"SEG-COUNT", E, "a DBD holds at most 255 segments", segmentCount, nullptr},
    {"PCB-COUNT", E, "a PSB holds at most 2,500 PCBs", nullptr, pcbCount},
    {"SENSEG-COUNT", E, "a PSB holds at most 30,000 SENSEGs", nullptr, sensegCount},
    {"SENFLD-COUNT", E, "a PSB holds at most 10,000 SENFLDs", nullptr, senfldCount},
    {"PCB-DBD", E, "a database or GSAM PCB is based on a DBD (DBDNAME)", nullptr, pcbDbd},
    {"PSB-NAME", E, "the PSB's and its PCBs' names are 1 to 8 letters, digits, @, # or $, not starting with a digit",
     nullptr, psbName},
    {"TP-FIRST", W, "TP PCBs come before the database and GSAM PCBs", nullptr, tpFirst},
    {"SENSEG-ROOT", E, "the first SENSEG of a PCB without PROCSEQ is its DBD's root", nullptr, sensegRoot},
    {"SENSEG-PARENT", E, "each SENSEG's parent is its segment's parent in the DBD", nullptr, sensegParent},
    {"PCB-KEYLEN", E, "KEYLEN is at least the longest concatenated key of the sensitive segments", nullptr, keyLength},
    {"PROCOPT", E, "processing options are letters of GIRDAPONTELSHK, each once, at most four", nullptr, procopt},
    {"PROCSEQ-INDEX", E, "PROCSEQ names a secondary index of the PCB's DBD", nullptr, procseqIndex},
    {"SENFLD-FIT", E, "a SENFLD names a field of its segment and fits in that segment", nullptr, senfldFit},
};
}  // namespace

std::span<const Rule> rules() noexcept { return table; }

}  // namespace krcheck

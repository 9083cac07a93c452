// DbdRules.cpp — the rules over one DBD: names, levels and roots, fields,
// what its organisation asks of it (Organisations.h), logical relationships,
// indexes.
#include "RuleFunctions.h"

#include <algorithm>
#include <string_view>

namespace krcheck::rule {
namespace {
constexpr int kMaxLevels = 15;

// What the DBD's organisation is, when the table knows it.
bool is(const DbdFacts& f, bool Organisation::*property) { return f.org && f.org->*property; }
bool inFamily(const DbdFacts& f, Family family) { return f.org && f.org->family == family; }
bool isNamed(const DbdFacts& f, std::string_view name) { return f.org && f.org->name == name; }

// The fields the manager fills for a secondary index, named /SX or /CK and a
// number: the pointer's subsequence (/SX1, no START or BYTES) and a part of
// the concatenated key (/CK1, START counted from that key's first byte).
bool systemField(const std::string& name, std::string_view prefix) {
    return name.size() > 3 && name.size() <= 8 && name.compare(0, 3, prefix) == 0 &&
           name.find_first_not_of("0123456789", 3) == std::string::npos;
}
bool systemField(const std::string& name) { return systemField(name, "/SX") || systemField(name, "/CK"); }
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
// The segment's name, and the DBD that holds it (null when none does).
std::string segName(_DSSegment* segment) { return str(segment->_get_strSegmentName()); }
_DSDBD* dbdOf(_DSSegment* segment) { return kr::sourcesOf<DSContainsSegment>(segment->_get_containingDBD()).first(); }
_DSSegmentComplex* complexOf(const SegmentFacts& s) { return kr::dyn_cast<_DSSegmentComplex>(s.segment); }
// The XDFLDs on the segment: each counts as a field of it.
long xdfldCount(const SegmentFacts& s) {
    _DSSegmentComplex* c = complexOf(s);
    return c ? long(c->_get_indices()->count()) : 0;
}
// Whether a segment takes part in a logical relationship or is indexed: what
// the organisations of one segment type kept whole do not allow.
std::string relationOf(const SegmentFacts& s) {
    _DSSegmentComplex* c = complexOf(s);
    if (!c) return {};
    if (c->_get_logChildren()->count()) return "is a logical parent (LCHILD)";
    if (c->_get_logParent()->count()) return "is a logical child";
    if (c->_get_indices()->count()) return "has a secondary index (XDFLD)";
    return {};
}
// A segment whose every occurrence has the same length.
bool fixedLength(const SegmentFacts& s) {
    short min = s.segment->_get_minimumLength();
    return min == 0 || min == s.segment->_get_maximumLength();
}
std::string joined(const std::vector<_DSSegment*>& segments) {
    std::string out;
    for (_DSSegment* s : segments) out += (out.empty() ? "" : ", ") + segName(s);
    return out;
}

}  // namespace

// Names of the DBD, its segments and fields are 1-8 letters, digits, @, # or $;
// a field may also be one the manager fills for a secondary index (/SX1, /CK1),
// or be known by its EXTERNALNAME alone, which the catalog names as it likes.
void nameForm(const DbdFacts& f, Report& report) {
    auto bad = [](const std::string& what, const std::string& name) {
        return what + " name '" + name + "' is not 1 to 8 letters, digits, @, # or $ starting with no digit";
    };
    if (!validName(f.name)) report(f.dbd, f.name, bad("DBD", f.name));
    for (const SegmentFacts& s : f.segments) {
        if (!validName(s.name)) report(s.segment, s.path, bad("segment", s.name));
        for (const FieldFacts& fl : s.fields)
            if (!fl.externalOnly && !validName(fl.name) && !systemField(fl.name))
                report(fl.field, s.path + "/" + fl.name, bad("field", fl.name));
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

// A field lies within its segment: START + BYTES - 1 is at most the segment's
// length; a /CK field's bytes are counted in the segment's concatenated key.
// Fields may overlap.
void fieldRange(const DbdFacts& f, Report& report) {
    for (const SegmentFacts& s : f.segments) {
        long length = s.segment->_get_maximumLength();
        for (const FieldFacts& fl : s.fields) {
            bool overKey = systemField(fl.name, "/CK");
            long limit = overKey ? s.concatenatedKey : length;
            long end = fl.geometry.start + fl.geometry.bytes - 1;
            if (limit > 0 && fl.geometry.start > 0 && fl.geometry.bytes > 0 && end > limit)
                report(fl.field, s.path + "/" + fl.name,
                       "field " + fl.name + " ends at byte " + n(end) + ", beyond the " + n(limit) + " bytes of " +
                           (overKey ? "the concatenated key of segment " : "segment ") + s.name);
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

// The root of a database whose roots are kept or found by key (HIDAM, HISAM,
// INDEX and their kin) has a unique sequence field.
void rootSequence(const DbdFacts& f, Report& report) {
    const SegmentFacts* root = rootOf(f);
    if (!root || !is(f, &Organisation::rootSequence)) return;
    const FieldFacts* seq = sequenceField(*root);
    if (!seq || !seq->field->_get_uniqueSequence())
        report(root->segment, root->path,
               "root segment " + root->name + " of a " + f.organisation + " database needs a unique sequence field " +
                   "(FIELD NAME=(name,SEQ,U))");
}

// The root of a randomized database (HDAM, PHDAM, DEDB) without a sequence field is found by sequential scan only.
void rootUnkeyed(const DbdFacts& f, Report& report) {
    const SegmentFacts* root = rootOf(f);
    if (!root || !is(f, &Organisation::randomizer) || sequenceField(*root)) return;
    report(root->segment, root->path,
           "root segment " + root->name + " has no sequence field: its records are found by sequential scan only");
}

// A HIDAM database names its primary index DBD (LCHILD POINTER=INDX on the
// root); a PHIDAM's is made by the manager.
void hidamIndex(const DbdFacts& f, Report& report) {
    if (!is(f, &Organisation::primaryIndexNamed)) return;
    auto* hidam = kr::dyn_cast<_DSDBDhidam>(f.access);
    if (!hidam || !hidam->_get_primaryIndex()->count())
        report(f.access, f.name,
               f.organisation + " database " + f.name + " has no primary index (LCHILD ...,POINTER=INDX)");
}

// HDAM and DEDB databases name their randomizing module (RMNAME); a PHDAM may
// name it per partition instead.
void randomizer(const DbdFacts& f, Report& report) {
    if (!is(f, &Organisation::randomizerNamed)) return;
    auto* dedb = kr::dyn_cast<_DSDBDdedb>(f.access);
    if (!dedb || str(dedb->_get_rmName()).empty())
        report(f.access, f.name, f.organisation + " database " + f.name + " names no randomizing module (RMNAME)");
}

// A DEDB has areas, each with its size.
void dedbAreas(const DbdFacts& f, Report& report) {
    if (!inFamily(f, Family::DataEntry)) return;
    int areas = 0;
    for (const ADObject& l : *f.dbd->_get_datasets()) {
        auto* group = kr::cast<_DSDSColl>(l.impl());
        auto* area = kr::targetsOf<DSHasArea>(group->_get_areaAttributes()).first();
        if (!area) continue;
        ++areas;
        if (area->_get_areaSize() <= 0) {
            _DSTARNDDname* dd = group->_get_target()->operator->();
            std::string name = dd && dd->_get_ddsName() ? dd->_get_ddsName() : "?";
            report(area, f.name + "/" + name, "area " + name + " of DEDB " + f.name + " has no size (SIZE)");
        }
    }
    if (!areas) report(f.dbd, f.name, "DEDB " + f.name + " has no areas (AREA statements)");
}

// Each segment of a logical DBD names its source segments (SOURCE).
void logicalSource(const DbdFacts& f, Report& report) {
    if (!inFamily(f, Family::Logical)) return;
    for (const SegmentFacts& s : f.segments)
        if (auto* logical = kr::dyn_cast<_DSSegmentLogical>(s.segment);
            !logical || !logical->_get_sourceSegments()->count())
            report(s.segment, s.path, "segment " + s.name + " of logical DBD " + f.name + " names no source (SOURCE)");
}

// Where an LCHILD's PAIR names a logical child (physical pairing), that child's own relationship pairs back.
void lchildPair(const DbdFacts& f, Report& report) {
    for (const SegmentFacts& s : f.segments) {
        _DSSegmentComplex* parent = complexOf(s);
        if (!parent) continue;
        for (const ADObject& l : *parent->_get_logChildren()) {
            auto* rel = kr::cast<_DSLChild>(l.impl());
            _DSSegmentComplex* child = rel->_get_target()->operator->();
            _DSSegmentComplex* pair = kr::targetsOf<DSHasPair>(rel->_get_pairedSegment()).first();
            // A pair that is no logical child is a virtual one: nothing to pair back.
            if (!child || !pair || !pair->_get_logParent()->count()) continue;
            std::vector<_DSSegment*> back;
            for (const ADObject& pl : *pair->_get_logParent())
                if (_DSSegmentComplex* p =
                        kr::targetsOf<DSHasPair>(kr::cast<_DSLChild>(pl.impl())->_get_pairedSegment()).first())
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
        for (_DSSegmentComplex* parent : kr::sourcesOf<DSLChild>(child->_get_logParent()))
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
        for (_DSXDFLD* x : kr::targetsOf<DSHasIndex>(target->_get_indices())) {
            _DSSegment* source = kr::targetsOf<DSHasIndexSource>(x->_get_indexSource()).first();
            if (!source) source = s.segment;
            std::string name = str(x->_get_xdfldName()), path = s.path + "/" + name;
            if (!x->_get_search()->count()) report(x, path, "XDFLD " + name + " has no search field (SRCH)");
            std::vector<_DSField*> own = kr::collect(kr::targetsOf<DSHasField>(source->_get_fields()));
            auto ofSource = [&](const char* key, const auto& fields) {
                for (_DSField* field : fields)
                    if (std::find(own.begin(), own.end(), field) == own.end())
                        report(x, path,
                               "XDFLD " + name + " " + key + " field " + str(field->_get_strFieldName()) +
                                   " is not a field of its source segment " + segName(source));
            };
            ofSource("SRCH", kr::targetsOf<DSHasSearch>(x->_get_search()));
            ofSource("SUBSEQ", kr::targetsOf<DSHasSubsequence>(x->_get_subseq()));
            ofSource("DDATA", kr::targetsOf<DSHasDuplicateData>(x->_get_ddata()));
        }
    }
}

// A HIDAM's primary index (or a PHIDAM's, where its DBD names one) is the
// index of an INDEX DBD that no XDFLD also uses, keyed by a field of the root.
void primaryIndex(const DbdFacts& f, Report& report) {
    auto* hidam = kr::dyn_cast<_DSDBDhidam>(f.access);
    if (!inFamily(f, Family::Indexed) || !hidam) return;
    _DSDBDindex* index = kr::targetsOf<DSIndex>(hidam->_get_primaryIndex()).first();
    if (!index) return;  // HIDAM-INDEX
    _DSDBD* indexDbd = kr::sourcesOf<DSDefinedByAccess>(index->_get_containingDBD()).first();
    std::string indexName = indexDbd ? str(indexDbd->_get_strDBDName()) : std::string();
    if (!indexDbd)
        report(f.access, f.name,
               "the primary index of " + f.organisation + " database " + f.name + " is the index of no DBD");
    else if (_DSXDFLD* x = kr::sourcesOf<DSIsUseOf>(index->_get_secondaryIndexTarget()).first())
        report(f.access, f.name,
               "primary index DBD " + indexName + " of " + f.organisation + " database " + f.name +
                   " is also the secondary index of XDFLD " + str(x->_get_xdfldName()));
    const SegmentFacts* root = rootOf(f);
    _DSField* key = kr::targetsOf<DSHasRootSequence>(hidam->_get_rootSequenceField()).first();
    if (!root || !key) return;
    for (const FieldFacts& fl : root->fields)
        if (fl.field == key) return;
    report(
        f.access, f.name,
        "the primary index's key " + str(key->_get_strFieldName()) + " is not a field of root segment " + root->name);
}

// An index DBD indexes something: a HIDAM names it as its primary index, or an
// XDFLD uses it (a partitioned one, PSINDEX, is only ever a secondary index).
void indexTarget(const DbdFacts& f, Report& report) {
    auto* index = kr::dyn_cast<_DSDBDindex>(f.access);
    if (!is(f, &Organisation::index) || !index) return;
    if (!index->_get_primaryIndexTarget()->count() && !index->_get_secondaryIndexTarget()->count())
        report(
            f.access, f.name,
            f.organisation + " DBD " + f.name + " indexes nothing: " +
                (f.org->partitioned ? "no XDFLD names it" : "no HIDAM's LCHILD (POINTER=INDX) and no XDFLD names it"));
}

// A logical segment's sources are physical segments; its parent's source is its source's physical or logical parent.
void logicalHierarchy(const DbdFacts& f, Report& report) {
    if (!inFamily(f, Family::Logical)) return;
    auto sources = [](const SegmentFacts& s) {
        auto* logical = kr::dyn_cast<_DSSegmentLogical>(s.segment);
        return logical ? kr::collect(kr::targetsOf<DSSource>(logical->_get_sourceSegments()))
                       : std::vector<_DSSegment*>();
    };
    for (const SegmentFacts& s : f.segments) {
        std::vector<_DSSegment*> mine = sources(s);
        bool physical = true;
        for (_DSSegment* source : mine)
            if (kr::isa<_DSSegmentLogical>(source) || !dbdOf(source)) {
                physical = false;
                report(s.segment, s.path,
                       "source " + segName(source) + " of segment " + s.name + " is not a segment of a physical DBD");
            }
        if (!physical || mine.empty() || s.parent < 0) continue;
        const SegmentFacts& parent = f.segments[std::size_t(s.parent)];
        std::vector<_DSSegment*> above = sources(parent);
        if (above.empty()) continue;  // LOGICAL-SOURCE
        _DSSegment* source = mine.front();
        std::vector<_DSSegment*> parents = kr::collect(kr::targetsOf<DSParent>(source->_get_physicalParent()));
        if (auto* complex = kr::dyn_cast<_DSSegmentComplex>(source))
            for (_DSSegmentComplex* p : kr::sourcesOf<DSLChild>(complex->_get_logParent())) parents.push_back(p);
        bool joins = false;
        for (_DSSegment* a : above) joins = joins || std::find(parents.begin(), parents.end(), a) != parents.end();
        if (!joins)
            report(s.segment, s.path,
                   "source " + segName(source) + " of segment " + s.name +
                       " has no physical or logical parent among the sources of its parent " + parent.name + " (" +
                       joined(above) + ")");
    }
}

// A DBD holds at most 255 segments.
void segmentCount(const DbdFacts& f, Report& report) {
    beyond(f.dbd, f.name, "DBD " + f.name, long(f.segments.size()), long(krsource::kMaxSegments), "segments", report);
}

// A DBD other than GSAM has at least one segment.
void dbdSegments(const DbdFacts& f, Report& report) {
    if (f.segments.empty() && !inFamily(f, Family::Gsam))
        report(f.dbd, f.name, "DBD " + f.name + " has no segments (SEGM statements)");
}

// At most 255 fields in a segment and 1,000 in a DBD, its XDFLDs counted as fields.
void fieldCount(const DbdFacts& f, Report& report) {
    long total = 0;
    for (const SegmentFacts& s : f.segments) {
        long count = long(s.fields.size()) + xdfldCount(s);
        total += count;
        beyond(s.segment, s.path, "segment " + s.name, count, kMaxFieldsPerSegment, "fields and XDFLDs", report);
    }
    beyond(f.dbd, f.name, "DBD " + f.name, total, kMaxFieldsPerDbd, "fields and XDFLDs", report);
}

// A field's name is unique within its segment.
void fieldNames(const DbdFacts& f, Report& report) {
    for (const SegmentFacts& s : f.segments)
        for (std::size_t i = 0; i < s.fields.size(); ++i) {
            const FieldFacts& fl = s.fields[i];
            for (std::size_t j = 0; j < i && !fl.name.empty(); ++j)
                if (s.fields[j].name == fl.name && s.fields[j].externalOnly == fl.externalOnly) {
                    report(fl.field, s.path + "/" + fl.name,
                           "field " + fl.name + " is defined twice in segment " + s.name);
                    break;
                }
        }
}

// A segment's sequence field is its first field.
void sequenceFirst(const DbdFacts& f, Report& report) {
    for (const SegmentFacts& s : f.segments) {
        const FieldFacts* seq = sequenceField(s);
        if (seq && seq != &s.fields.front())
            report(seq->field, s.path + "/" + seq->name,
                   "sequence field " + seq->name + " of segment " + s.name + " follows field " + s.fields.front().name +
                       "; the sequence field is the segment's first");
    }
}

// A DEDB has at most 127 segment types.
void dedbSegments(const DbdFacts& f, Report& report) {
    if (inFamily(f, Family::DataEntry))
        beyond(f.dbd, f.name, "DEDB " + f.name, long(f.segments.size()), kMaxDedbSegments, "segment types", report);
}

// A DEDB segment type has at most 8 subset pointers (SSPTR).
void subsetPointers(const DbdFacts& f, Report& report) {
    const long most = krsource::keywordRow(krsource::Kw::SEGM_SSPTR).hi;
    for (const SegmentFacts& s : f.segments)
        if (auto* d = kr::dyn_cast<_DSSegmentDEDB>(s.segment); d && d->_get_subsetPointers() > most)
            report(s.segment, s.path,
                   "segment " + s.name + " has SSPTR=" + n(d->_get_subsetPointers()) + "; at most " + n(most) +
                       " subset pointers are allowed");
}

// An MSDB holds root segments only, of fixed length, at most 32,000 bytes,
// keyed by at most 240, in no logical relationship and with no secondary index.
void msdbSegments(const DbdFacts& f, Report& report) {
    if (!inFamily(f, Family::MainStorage)) return;
    for (const SegmentFacts& s : f.segments) {
        std::string what = "segment " + s.name + " of MSDB " + f.name;
        if (s.parent >= 0) report(s.segment, s.path, what + " is not a root segment; an MSDB has roots only");
        if (!fixedLength(s)) report(s.segment, s.path, what + " is of variable length; MSDB segments are fixed");
        beyond(s.segment, s.path, what, s.segment->_get_maximumLength(), kMaxMsdbBytes, "bytes", report);
        beyond(s.segment, s.path, what, s.keyBytes, kMaxMsdbKeyBytes, "key bytes", report);
        if (std::string r = relationOf(s); !r.empty()) report(s.segment, s.path, what + " " + r);
    }
}

// A SHISAM database is one root segment of fixed length, without secondary
// index, logical relationship or compression.
void shisamSegments(const DbdFacts& f, Report& report) {
    if (!isNamed(f, "SHISAM")) return;
    for (const SegmentFacts& s : f.segments) {
        std::string what = "segment " + s.name + " of SHISAM " + f.name;
        if (&s != &f.segments.front())
            report(s.segment, s.path, what + " is a second segment; a SHISAM database has one");
        if (!fixedLength(s)) report(s.segment, s.path, what + " is of variable length; a SHISAM segment is fixed");
        if (std::string r = relationOf(s); !r.empty()) report(s.segment, s.path, what + " " + r);
        if (s.segment->_get_compRoutine()->count())
            report(s.segment, s.path, what + " is compressed (COMPRTN); a SHISAM segment is not");
    }
}

// A GSAM database has at most one segment.
void gsamSegments(const DbdFacts& f, Report& report) {
    if (!inFamily(f, Family::Gsam)) return;
    for (std::size_t i = 1; i < f.segments.size(); ++i)
        report(f.segments[i].segment, f.segments[i].path,
               "segment " + f.segments[i].name + " is a second segment; a GSAM database has at most one");
}

}  // namespace krcheck::rule

// DotWriter.cpp — the DOT picture of DBDs, PSBs and PCBs (see DotWriter.h).
// The model is walked in its own order (roles keep their order), so the text
// depends on the definitions alone; sets keyed by object are used for lookups
// only, never to order what is written.
#include <krmwtarn/diagram/DotWriter.h>

#include <krmwtarn/model/framework/Navigation.h>

#include <algorithm>
#include <cstring>
#include <map>
#include <set>
#include <utility>

namespace krdiagram {
namespace {

// ---- reading the model ----------------------------------------------------

std::string str(const char* s) { return s ? std::string(s) : std::string(); }

// An object's own name attribute, else its adName, else its object ID.
std::string nameOf(_ADObject* o) {
    std::string n;
    if (auto* dbd = kr::dyn_cast<_DSDBD>(o))
        n = str(dbd->_get_strDBDName());
    else if (auto* seg = kr::dyn_cast<_DSSegment>(o))
        n = str(seg->_get_strSegmentName());
    else if (auto* psb = kr::dyn_cast<_DSPSB>(o))
        n = str(psb->_get_strPSBName());
    else if (auto* pcb = kr::dyn_cast<_DSPCB>(o))
        n = str(pcb->_get_strPCBAccessName());
    else if (auto* sense = kr::dyn_cast<_DSSenSegment>(o))
        n = str(sense->_get_strSensegName());
    else if (auto* field = kr::dyn_cast<_DSField>(o))
        n = str(field->_get_strFieldName());
    if (n.empty()) n = str(o->_get_adName());
    return n.empty() ? str(o->objID()) : n;
}

_DSDBD* dbdOfSegment(_DSSegment* seg) { return kr::sourcesOf<DSContainsSegment>(seg->_get_containingDBD()).first(); }
_DSDBD* dbdOfAccess(_DSDBDaccess* access) {
    return kr::sourcesOf<DSDefinedByAccess>(access->_get_containingDBD()).first();
}
_DSDBDaccess* accessOf(_DSDBD* dbd) { return kr::targetsOf<DSDefinedByAccess>(dbd->_get_dliAccess()).first(); }
std::vector<_DSSegment*> segmentsOf(_DSDBD* dbd) {
    return kr::collect(kr::targetsOf<DSContainsSegment>(dbd->_get_segments()));
}
_DSSegment* parentOf(_DSSegment* seg) { return kr::targetsOf<DSParent>(seg->_get_physicalParent()).first(); }
// The first segment without a parent: where an index points from and a
// HIDAM database is entered.
_DSSegment* rootOf(_DSDBD* dbd) {
    for (_DSSegment* s : segmentsOf(dbd))
        if (!parentOf(s)) return s;
    return nullptr;
}
_DSSegment* rootOfAccess(_DSDBDaccess* access) {
    _DSDBD* dbd = access ? dbdOfAccess(access) : nullptr;
    return dbd ? rootOf(dbd) : nullptr;
}

std::string join(const std::vector<std::string>& parts, const char* between) {
    std::string out;
    for (std::size_t i = 0; i < parts.size(); ++i) out += (i ? between : "") + parts[i];
    return out;
}
template <class Fields>
std::string fieldNames(const Fields& fields) {
    std::vector<std::string> names;
    for (_DSField* f : fields) names.push_back(nameOf(f));
    return join(names, ",");
}

// ---- the ties between segments ----------------------------------------------

struct Edge {
    _DSSegment* from;
    _DSSegment* to;
    const char* kind;
    std::vector<std::string> label;  // its lines
    const void* key;                 // the link or object the edge stands for, with `kind`
};

// Every logical relationship, logical-DBD source and index that has a segment
// (or the access) of DBD at one end, in the DBD's order.
class Ties {
public:
    std::vector<Edge> of(_DSDBD* dbd) {
        edges_.clear();
        seen_.clear();
        for (_DSSegment* seg : segmentsOf(dbd)) segment(seg);
        _DSDBDaccess* access = accessOf(dbd);
        if (auto* hidam = kr::dyn_cast<_DSDBDhidam>(access))
            for (_DSIndex* l : kr::linksOf<DSIndex>(hidam->_get_primaryIndex())) primary(l);
        if (auto* index = kr::dyn_cast<_DSDBDindex>(access)) {
            for (_DSIndex* l : kr::linksOf<DSIndex>(index->_get_primaryIndexTarget())) primary(l);
            for (_DSXDFLD* x : kr::sourcesOf<DSIsUseOf>(index->_get_secondaryIndexTarget())) xdfld(x);
        }
        return std::move(edges_);
    }

private:
    void add(_DSSegment* from, _DSSegment* to, const char* kind, std::vector<std::string> label, const void* key) {
        if (from && to && seen_.insert({key, kind}).second) edges_.push_back({from, to, kind, std::move(label), key});
    }

    void segment(_DSSegment* seg) {
        for (_DSSource* l : kr::linksOf<DSSource>(seg->_get_logicalSegments())) source(l);
        if (auto* logicalSeg = kr::dyn_cast<_DSSegmentLogical>(seg))
            for (_DSSource* l : kr::linksOf<DSSource>(logicalSeg->_get_sourceSegments())) source(l);
        auto* cx = kr::dyn_cast<_DSSegmentComplex>(seg);
        if (!cx) return;
        for (_DSLChild* l : kr::linksOf<DSLChild>(cx->_get_logChildren())) logical(l);
        for (_DSLChild* l : kr::linksOf<DSLChild>(cx->_get_logParent())) logical(l);
        for (_DSLChild* l : kr::sourcesOf<DSHasPair>(cx->_get_pairedLogChild())) logical(l);
        for (_DSXDFLD* x : kr::targetsOf<DSHasIndex>(cx->_get_indices())) xdfld(x);
        for (_DSXDFLD* x : kr::sourcesOf<DSHasIndexSource>(cx->_get_sourcedIndex())) xdfld(x);
    }

    // A logical segment built from a physical one: physical -> logical.
    void source(_DSSource* link) {
        add(kr::endOf(link->_get_target()), kr::endOf(link->_get_source()), "source",
            {std::string("SOURCE ") + (link->_get_dataAlso() ? "DATA" : "KEY")}, link);
    }

    // Logical parent -> logical child, and the child -> its paired segment.
    void logical(_DSLChild* link) {
        _DSSegmentComplex* child = kr::endOf(link->_get_target());
        std::string label = "LCHILD";
        if (link->_get_rules()) label += std::string(" RULES=") + link->_get_rules();
        add(kr::endOf(link->_get_source()), child, "lchild", {label}, link);
        for (_DSHasPair* pair : kr::linksOf<DSHasPair>(link->_get_pairedSegment()))
            add(child, kr::endOf(pair->_get_target()), "pair", {"PAIR"}, pair);
    }

    // The index DBD's root -> the segment indexed; the indexed segment -> the
    // index source when that is another segment.
    void xdfld(_DSXDFLD* xd) {
        _DSSegmentComplex* indexed = kr::sourcesOf<DSHasIndex>(xd->_get_sourceSEGMcmpx()).first();
        std::vector<std::string> label = {"XDFLD " + str(xd->_get_xdfldName())};
        std::string search = fieldNames(kr::targetsOf<DSHasSearch>(xd->_get_search()));
        if (!search.empty()) label.push_back("SRCH=" + search);
        add(rootOfAccess(kr::targetsOf<DSIsUseOf>(xd->_get_targetDBDindex()).first()), indexed, "xdfld", label, xd);
        _DSSegmentComplex* from = kr::targetsOf<DSHasIndexSource>(xd->_get_indexSource()).first();
        if (from != indexed) add(indexed, from, "indexsource", {"index source"}, xd);
    }

    // The primary index DBD's root -> the HIDAM database's root.
    void primary(_DSIndex* link) {
        add(rootOfAccess(kr::endOf(link->_get_target())), rootOfAccess(kr::endOf(link->_get_source())), "primaryindex",
            {"primary index"}, link);
    }

    std::vector<Edge> edges_;
    std::set<std::pair<const void*, std::string>> seen_;
};

// ---- writing DOT --------------------------------------------------------------

// The length of the UTF-8 sequence at text[i], 0 when it is not one.
std::size_t utf8Length(std::string_view text, std::size_t i) {
    auto byte = [&](std::size_t k) { return static_cast<unsigned char>(text[k]); };
    unsigned char c = byte(i);
    std::size_t n = c >= 0xC2 && c <= 0xDF ? 2 : c >= 0xE0 && c <= 0xEF ? 3 : c >= 0xF0 && c <= 0xF4 ? 4 : 0;
    if (!n || i + n > text.size()) return 0;
    for (std::size_t k = 1; k < n; ++k)
        if ((byte(i + k) & 0xC0) != 0x80) return 0;
    unsigned char second = byte(i + 1);
    // No overlong forms, no surrogates, nothing beyond U+10FFFF.
    if ((c == 0xE0 && second < 0xA0) || (c == 0xED && second >= 0xA0) || (c == 0xF0 && second < 0x90) ||
        (c == 0xF4 && second >= 0x90))
        return 0;
    return n;
}

// TEXT inside a DOT quoted string; in a label `&` is written as an entity too,
// so that Graphviz shows names holding entities as they are.
std::string escaped(std::string_view text, bool label) {
    std::string out;
    for (std::size_t i = 0; i < text.size();) {
        unsigned char c = static_cast<unsigned char>(text[i]);
        if (c == '"' || c == '\\') {
            out += '\\';
            out += static_cast<char>(c);
        } else if (c == '&' && label) {
            out += "&amp;";
        } else if (c < 0x20 || c == 0x7F) {
            out += '?';
        } else if (c >= 0x80) {
            std::size_t n = utf8Length(text, i);
            if (n) {
                out.append(text.substr(i, n));
                i += n;
                continue;
            }
            out += "\xEF\xBF\xBD";  // U+FFFD for a byte that is not UTF-8
        } else {
            out += static_cast<char>(c);
        }
        ++i;
    }
    return out;
}

// Lines of a label, each escaped, joined by DOT's line break.
std::string label(const std::vector<std::string>& lines) {
    std::string out = "\"";
    for (std::size_t i = 0; i < lines.size(); ++i) out += (i ? "\\n" : "") + escaped(lines[i], true);
    return out + "\"";
}

const char* const kSensitiveFill = "#fff3c4";
const char* const kGrey = "grey60";

class Picture {
public:
    explicit Picture(const std::vector<_ADObject*>& subjects) {
        for (_ADObject* o : subjects)
            if (std::find(subjects_.begin(), subjects_.end(), o) == subjects_.end()) subjects_.push_back(o);
    }

    std::string write() {
        std::vector<std::string> names;
        for (_ADObject* o : subjects_) names.push_back(nameOf(o));
        out_ = "digraph " + quoted(join(names, " ")) + " {\n";
        out_ += "  graph [rankdir=TB, compound=true, newrank=true, fontname=\"Helvetica\", fontsize=11];\n";
        out_ += "  node [shape=box, style=rounded, fontname=\"Helvetica\", fontsize=10];\n";
        out_ += "  edge [fontname=\"Helvetica\", fontsize=9];\n";
        std::vector<_DSDBD*> dbds = drawnDbds();
        for (_DSDBD* d : dbds) dbdCluster(d);
        for (_DSPCB* p : pcbs()) pcbCluster(p);
        std::set<_DSDBD*> drawn(dbds.begin(), dbds.end());
        std::vector<Edge> ties;
        std::set<std::pair<const void*, std::string>> seen;
        for (_DSDBD* d : dbds)
            for (Edge& e : Ties().of(d))
                if (drawn.count(dbdOfSegment(e.from)) && drawn.count(dbdOfSegment(e.to)) &&
                    seen.insert({e.key, e.kind}).second)
                    ties.push_back(std::move(e));
        for (const Edge& e : ties) tie(e);
        for (const std::string& line : joins_) out_ += line;
        out_ += "}\n";
        return std::move(out_);
    }

private:
    // The named DBDs; with several subjects the DBDs their PCBs use; then the
    // DBDs at the far end of the named DBDs' ties.
    std::vector<_DSDBD*> drawnDbds() {
        std::vector<_DSDBD*> dbds;
        auto add = [&](_DSDBD* d) {
            if (d && std::find(dbds.begin(), dbds.end(), d) == dbds.end()) dbds.push_back(d);
        };
        for (_ADObject* o : subjects_) add(kr::dyn_cast<_DSDBD>(o));
        std::vector<_DSDBD*> named = dbds;
        if (subjects_.size() > 1)
            for (_DSPCB* p : pcbs()) {
                _DSPCBtype* type = kr::targetsOf<DSSpecifiedByType>(p->_get_typeOfPCB()).first();
                auto* based = kr::dyn_cast<_DSPCBbased>(type);
                if (!based) continue;
                add(kr::targetsOf<DSBasedOn>(based->_get_baseDBD()).first());
                if (auto* db = kr::dyn_cast<_DSPCBdb>(type))
                    if (_DSDBDindex* seq = kr::targetsOf<DSSequencedBy>(db->_get_procseq()).first())
                        add(dbdOfAccess(seq));
            }
        for (_DSDBD* d : named)
            for (const Edge& e : Ties().of(d)) {
                add(dbdOfSegment(e.from));
                add(dbdOfSegment(e.to));
            }
        return dbds;
    }

    // The PCBs of the named PSBs and the named PCBs, in the order named.
    std::vector<_DSPCB*> pcbs() {
        std::vector<_DSPCB*> out;
        for (_ADObject* o : subjects_) {
            std::vector<_DSPCB*> some;
            if (auto* psb = kr::dyn_cast<_DSPSB>(o))
                some = kr::collect(kr::targetsOf<DSIncludesPCB>(psb->_get_listPCBs()));
            else if (auto* pcb = kr::dyn_cast<_DSPCB>(o))
                some = {pcb};
            for (_DSPCB* p : some)
                if (std::find(out.begin(), out.end(), p) == out.end()) out.push_back(p);
        }
        return out;
    }

    // A node name of its own for `key` (an object, or a PCB and a segment).
    const std::string& id(const std::pair<const void*, const void*>& key, const std::string& wanted) {
        auto it = ids_.find(key);
        if (it != ids_.end()) return it->second;
        std::string name = wanted;
        for (int n = 2; !used_.insert(name).second; ++n) name = wanted + "~" + std::to_string(n);
        return ids_.emplace(key, name).first->second;
    }
    const std::string& segmentId(_DSSegment* seg) {
        _DSDBD* dbd = dbdOfSegment(seg);
        return id({seg, nullptr}, (dbd ? nameOf(dbd) + "." : std::string()) + nameOf(seg));
    }

    void line(const std::string& text, int depth) { out_ += std::string(depth * 2, ' ') + text + ";\n"; }
    void node(const std::string& name, const char* cls, const std::string& attributes,
              const std::vector<std::string>& lines, int depth) {
        line(quoted(name) + " [class=\"" + cls + "\", " + (attributes.empty() ? "" : attributes + ", ") +
                 "label=" + label(lines) + "]",
             depth);
    }
    std::string edge(const std::string& from, const std::string& to, const char* cls, const std::string& attributes) {
        return quoted(from) + " -> " + quoted(to) + " [class=\"" + cls + "\"" +
               (attributes.empty() ? "" : ", " + attributes) + "]";
    }
    void cluster(const std::string& name, const std::string& title, const char* attributes) {
        out_ += "  subgraph " + quoted("cluster_" + name) + " {\n";
        line("label=" + label({title}) + "; labeljust=l; " + attributes, 2);
    }

    std::vector<std::string> segmentLines(_DSSegment* s) {
        std::vector<std::string> lines = {nameOf(s)};
        std::vector<_DSField*> fields = kr::collect(kr::targetsOf<DSHasField>(s->_get_fields()));
        for (_DSField* field : fields) {
            if (!field->_get_sequenceField()) continue;
            lines.push_back("key " + nameOf(field) + (field->_get_uniqueSequence() ? " (U)" : " (M)"));
            break;
        }
        std::string size;
        short max = s->_get_maximumLength(), min = s->_get_minimumLength();
        if (kr::isa<_DSSegmentLogical>(s))
            size = "logical";
        else if (max && min && min != max)
            size = std::to_string(max) + "/" + std::to_string(min) + " bytes";
        else if (max)
            size = std::to_string(max) + " bytes";
        if (!fields.empty())
            size += (size.empty() ? "" : ", ") + std::to_string(fields.size()) +
                    (fields.size() == 1 ? " field" : " fields");
        if (!size.empty()) lines.push_back(size);
        return lines;
    }

    void dbdCluster(_DSDBD* dbd) {
        std::string title = nameOf(dbd);
        if (_DSDBDaccess* access = accessOf(dbd)) {
            std::string kind = str(access->_get_dliAccess());
            if (!kind.empty()) title += " (" + kind + ")";
        }
        cluster(id({dbd, nullptr}, nameOf(dbd)), title, "style=rounded; color=grey40");
        std::vector<_DSSegment*> segments = segmentsOf(dbd);
        for (_DSSegment* seg : segments) node(segmentId(seg), "segment", "", segmentLines(seg), 2);
        for (_DSSegment* seg : segments)
            if (_DSSegment* parent = parentOf(seg)) line(edge(segmentId(parent), segmentId(seg), "parent", ""), 2);
        out_ += "  }\n";
    }

    // A PCB's node text: its name, its type and the DBD, its options.
    std::vector<std::string> pcbLines(_DSPCB* pcb, _DSPCBtype* type) {
        std::vector<std::string> lines = {nameOf(pcb)};
        if (!type) return lines;
        std::vector<std::string> options;
        if (auto* tp = kr::dyn_cast<_DSPCBtp>(type)) {
            lines.push_back("TP PCB");
            if (tp->_get_alternateResponse()) options.push_back("ALTRESP");
            if (tp->_get_express()) options.push_back("EXPRESS");
            if (tp->_get_modify()) options.push_back("MODIFY");
            if (tp->_get_sameTerminal()) options.push_back("SAMETRM");
            std::vector<std::string> destinations;
            for (_DSOutputDest* d : kr::targetsOf<DSRefersTo>(tp->_get_destination()))
                destinations.push_back(str(d->_get_ltermName()));
            if (!destinations.empty()) lines.push_back("to " + join(destinations, ", "));
        } else if (auto* based = kr::dyn_cast<_DSPCBbased>(type)) {
            _DSDBD* dbd = kr::targetsOf<DSBasedOn>(based->_get_baseDBD()).first();
            lines.push_back(std::string(kr::isa<_DSPCBdb>(type) ? "DB" : "GSAM") + " PCB" +
                            (dbd ? " on " + nameOf(dbd) : ""));
            if (based->_get_procoptPCB()) options.push_back(std::string("PROCOPT=") + based->_get_procoptPCB());
            if (auto* db = kr::dyn_cast<_DSPCBdb>(type)) {
                if (db->_get_keyLength()) options.push_back("KEYLEN=" + std::to_string(db->_get_keyLength()));
                if (_DSDBDindex* seq = kr::targetsOf<DSSequencedBy>(db->_get_procseq()).first())
                    if (_DSDBD* index = dbdOfAccess(seq)) lines.push_back("PROCSEQ=" + nameOf(index));
            }
        }
        if (pcb->_get_list()) options.push_back("LIST");
        if (!options.empty()) lines.insert(lines.begin() + std::min<std::size_t>(2, lines.size()), join(options, " "));
        return lines;
    }

    std::vector<std::string> sensegLines(_DSSenSegment* sense, _DSSegment* seg, const char* pcbProcopt) {
        std::vector<std::string> lines = {seg ? nameOf(seg) : nameOf(sense)};
        if (sense->_get_procoptSENSEG())
            lines.push_back(std::string("PROCOPT=") + sense->_get_procoptSENSEG());
        else if (pcbProcopt)
            lines.push_back(std::string("PROCOPT=") + pcbProcopt + " (PCB)");
        std::vector<std::string> fields;
        for (_DSSenField* f : kr::targetsOf<DSUsesSENFLD>(sense->_get_senflds()))
            if (_DSField* field = kr::targetsOf<DSUsedAsSENFLD>(f->_get_targetFIELD()).first())
                fields.push_back(nameOf(field));
        if (!fields.empty()) lines.push_back("SENFLD " + join(fields, ","));
        std::vector<std::string> indices;
        for (_DSDBDindex* idx : kr::targetsOf<DSIndexedBy>(sense->_get_indices()))
            if (_DSDBD* d = dbdOfAccess(idx)) indices.push_back(nameOf(d));
        if (!indices.empty()) lines.push_back("INDICES=" + join(indices, ","));
        if (!seg) lines.push_back("(no such segment)");
        return lines;
    }

    // The segment of DBD a SENSEG stands for: the one it maps to, else the one
    // of its name (a SENSEG under a processing sequence may map none).
    static _DSSegment* segmentOf(_DSSenSegment* sense, _DSDBD* dbd) {
        if (!dbd) return nullptr;
        std::vector<_DSSegment*> segments = segmentsOf(dbd);
        _DSSegment* mapped = kr::targetsOf<DSMapsTo>(sense->_get_targetSegment()).first();
        if (mapped) return std::find(segments.begin(), segments.end(), mapped) != segments.end() ? mapped : nullptr;
        for (_DSSegment* s : segments)
            if (nameOf(s) == nameOf(sense)) return s;
        return nullptr;
    }

    void pcbCluster(_DSPCB* pcb) {
        _DSPSB* psb = kr::sourcesOf<DSIncludesPCB>(pcb->_get_usingPSBs()).first();
        int number = 1;
        if (psb) {
            std::vector<_DSPCB*> list = kr::collect(kr::targetsOf<DSIncludesPCB>(psb->_get_listPCBs()));
            number = static_cast<int>(std::find(list.begin(), list.end(), pcb) - list.begin()) + 1;
        }
        std::string base = psb ? nameOf(psb) + "/" + std::to_string(number) : nameOf(pcb);
        const std::string pcbId = id({pcb, nullptr}, base);
        cluster(pcbId, psb ? nameOf(psb) + " PCB " + std::to_string(number) : "PCB " + nameOf(pcb),
                "style=rounded; color=steelblue");
        _DSPCBtype* type = kr::targetsOf<DSSpecifiedByType>(pcb->_get_typeOfPCB()).first();
        node(pcbId, "pcb", "shape=note, style=filled, fillcolor=\"#dce8f5\"", pcbLines(pcb, type), 2);
        if (auto* based = kr::dyn_cast<_DSPCBbased>(type)) {
            _DSDBD* dbd = kr::targetsOf<DSBasedOn>(based->_get_baseDBD()).first();
            auto* db = kr::dyn_cast<_DSPCBdb>(type);
            if (db) hierarchy(pcb, pcbId, db, dbd);
            joinToDbd(pcbId, dbd, "dbd", "");
            if (db)
                if (_DSDBDindex* seq = kr::targetsOf<DSSequencedBy>(db->_get_procseq()).first())
                    joinToDbd(pcbId, dbdOfAccess(seq), "procseq", "PROCSEQ");
        }
        out_ += "  }\n";
    }

    // The DBD's segments in the PCB's cluster, the sensitive ones marked.
    void hierarchy(_DSPCB* pcb, const std::string& pcbId, _DSPCBdb* type, _DSDBD* dbd) {
        std::map<_DSSegment*, _DSSenSegment*> sensitive;  // segment -> its (first) SENSEG
        std::vector<_DSSenSegment*> loose;                // SENSEGs mapping no segment of the DBD
        for (_DSSenSegment* sense : kr::targetsOf<DSHasSensitive>(type->_get_senseg())) {
            if (_DSSegment* seg = segmentOf(sense, dbd))
                sensitive.emplace(seg, sense);
            else
                loose.push_back(sense);
        }
        auto inPcb = [&](_DSSegment* seg) -> const std::string& {
            _DSDBD* d = dbdOfSegment(seg);
            return id({pcb, seg}, pcbId + "/" + (d ? nameOf(d) + "." : std::string()) + nameOf(seg));
        };
        std::vector<_DSSegment*> segments = dbd ? segmentsOf(dbd) : std::vector<_DSSegment*>{};
        const char* procopt = type->_get_procoptPCB();
        for (_DSSegment* seg : segments) {
            auto it = sensitive.find(seg);
            if (it != sensitive.end())
                node(inPcb(seg), "sensitive",
                     std::string("style=\"rounded,filled\", fillcolor=\"") + kSensitiveFill + "\"",
                     sensegLines(it->second, seg, procopt), 2);
            else
                node(inPcb(seg), "insensitive", std::string("color=") + kGrey + ", fontcolor=" + kGrey, {nameOf(seg)},
                     2);
        }
        for (_DSSenSegment* sense : loose)
            node(id({pcb, sense}, pcbId + "/" + nameOf(sense)), "senseg", "style=\"rounded,dashed\", color=firebrick",
                 sensegLines(sense, nullptr, procopt), 2);
        for (_DSSegment* seg : segments) {
            _DSSegment* parent = parentOf(seg);
            if (!parent) {
                line(edge(pcbId, inPcb(seg), "pcbroot", "arrowhead=none, style=dotted"), 2);
                continue;
            }
            // Black where the PCB sees both ends.
            std::string grey = sensitive.count(seg) && sensitive.count(parent) ? "" : std::string("color=") + kGrey;
            line(edge(inPcb(parent), inPcb(seg), "parent", grey), 2);
        }
        for (_DSSenSegment* sense : loose) {
            _DSSenSegment* parent = kr::targetsOf<DSHasParentSenseg>(sense->_get_parentSenseg()).first();
            _DSSegment* parentSeg = parent ? segmentOf(parent, dbd) : nullptr;
            std::string from = parentSeg                             ? inPcb(parentSeg)
                               : parent && ids_.count({pcb, parent}) ? ids_.at({pcb, parent})
                                                                     : pcbId;
            line(edge(from, id({pcb, sense}, ""), "sensegparent", "style=dashed, color=firebrick"), 2);
        }
    }

    // With several subjects: the PCB's node -> the root of a DBD drawn beside it.
    void joinToDbd(const std::string& pcbId, _DSDBD* dbd, const char* cls, const std::string& text) {
        if (subjects_.size() < 2 || !dbd || !ids_.count({dbd, nullptr})) return;
        _DSSegment* root = rootOf(dbd);
        if (!root) return;
        std::string attributes = "style=dashed, color=steelblue, lhead=" + quoted("cluster_" + ids_.at({dbd, nullptr}));
        if (!text.empty()) attributes += ", label=" + label({text});
        joins_.push_back("  " + edge(pcbId, segmentId(root), cls, attributes) + ";\n");
    }

    void tie(const Edge& e) {
        std::string style;
        if (!std::strcmp(e.kind, "lchild"))
            style = "style=dashed, color=blue, fontcolor=blue";
        else if (!std::strcmp(e.kind, "pair"))
            style = "style=dotted, color=blue, fontcolor=blue, dir=both";
        else if (!std::strcmp(e.kind, "xdfld") || !std::strcmp(e.kind, "primaryindex"))
            style = "style=bold, color=darkgreen, fontcolor=darkgreen";
        else if (!std::strcmp(e.kind, "indexsource"))
            style = "style=dotted, color=darkgreen, fontcolor=darkgreen";
        else
            style = "style=dashed, color=purple, fontcolor=purple";
        line(edge(segmentId(e.from), segmentId(e.to), e.kind, style + ", label=" + label(e.label)), 1);
    }

    std::vector<_ADObject*> subjects_;
    std::string out_;
    std::vector<std::string> joins_;  // PCB -> DBD edges, written after the clusters
    std::map<std::pair<const void*, const void*>, std::string> ids_;
    std::set<std::string> used_;
};

}  // namespace

std::string quoted(std::string_view text) { return "\"" + escaped(text, false) + "\""; }

std::string writeDot(const std::vector<_ADObject*>& subjects) { return Picture(subjects).write(); }

}  // namespace krdiagram

// SegmentStatements.cpp — the statements under a DBD's segments: SEGM with its
// parents, pointers, rules, sources, compression and exits; FIELD with its
// geometry and dictionary name; LCHILD (logical relationships and indexes)
// and XDFLD. What names another definition is kept as a deferred step and
// resolved once every DBD of the load is read.
#include "Loader.h"

#include <krmwtarn/source/FieldGeometry.h>

#include <cctype>

namespace krsource {

// A segment's or field's EXTERNALNAME: its name in the data dictionary, an
// alias of the segment's record or the field's element, named as the
// segment or field and belonging to it.
void Loader::externalName(Operands& ops, Kw k, DSSegment* seg, DSField* field) {
    std::string name = ops.text(k);
    if (name.empty()) return;
    if (seg) {
        auto alias = obtain<DSDataStructureAlias>((*seg)->objID());
        alias->_set_adName(name.c_str(), omStore);
        link<DSHasTARNsegmName>(seg, &alias);
    } else {
        auto alias = obtain<DSDataElementAlias>((*field)->objID());
        alias->_set_adName(name.c_str(), omStore);
        link<DSHasTARNfldName>(field, &alias);
    }
}

void Loader::segmStatement(const Statement& st) {
    closeSegment();
    d_.brokenLchild = false;
    Operands ops(st, Stmt::SEGM, diags_);
    if (!ops.require(Kw::SEGM_NAME)) return;
    std::string name = ops.text(Kw::SEGM_NAME);
    if (d_.segmentNames.count(name))
        return diags_.error(ops.valueAt(Kw::SEGM_NAME),
                            "SEGM NAME: segment " + name + " is defined twice in DBD " + d_.name);
    if (d_.segmentNames.size() == kMaxSegments)
        return diags_.error(st.at, "SEGM: a DBD holds at most " + std::to_string(kMaxSegments) + " segments");
    d_.segmentNames.insert(name);
    std::string id = d_.name + "." + name;
    const Access org = organisationAccess(d_.kind);
    bool logical = d_.kind == "LOGICAL", dedb = org == Access::Dedb, plain = org == Access::Msdb || d_.kind == "GSAM";
    DSSegment seg;
    if (logical)
        seg = DSSegment(obtain<DSSegmentLogical>(id).operator->());
    else if (dedb)
        seg = DSSegment(obtain<DSSegmentDEDB>(id).operator->());
    else if (plain)
        seg = obtain<DSSegment>(id);
    else
        seg = DSSegment(obtain<DSSegmentComplex>(id).operator->());
    bool complex = !logical && !dedb && !plain;
    seg->_set_strSegmentName(name.c_str(), omStore);
    if (logical) kr::cast<_DSSegmentLogical>(seg.operator->())->_set_segmentName(name.c_str(), omStore);
    if (const Value* b = ops.value(Kw::SEGM_BYTES)) {
        auto max = ops.numberAt(Kw::SEGM_BYTES, b->item(0), 0, 32767);
        auto min = b->size() > 1 ? ops.numberAt(Kw::SEGM_BYTES, b->item(1), 0, 32767) : max;
        if (max) seg->_set_maximumLength(static_cast<short>(*max), omStore);
        if (min) seg->_set_minimumLength(static_cast<short>(*min), omStore);
    }
    std::string freq = ops.text(Kw::SEGM_FREQ);
    if (!freq.empty()) seg->_set_frequency(freq.c_str(), omStore);
    // RULES=(codes,FIRST|LAST|HERE), RULES=codes or RULES=(,LAST).
    if (const Value* r = ops.value(Kw::SEGM_RULES)) {
        std::string codes = r->kind == Value::List ? ops.textAt(Kw::SEGM_RULES, r->item(0)) : std::string();
        std::string place = r->kind == Value::List ? ops.textAt(Kw::SEGM_RULES, r->item(1)) : r->text;
        if (place != "FIRST" && place != "LAST" && place != "HERE" && codes.empty() && !place.empty() &&
            place.size() <= 3)
            codes = place, place.clear();  // RULES=PLV
        if (!codes.empty()) {
            if (!complex || codes.size() > 3 || codes.find_first_not_of("PLVB") != std::string::npos)
                diags_.error(r->at,
                             "SEGM RULES: insert, delete and replace rules are three of P, L, V, B on a "
                             "segment of a physical DBD, not '" +
                                 codes + "'");
            else {
                auto* c = kr::cast<_DSSegmentComplex>(seg.operator->());
                c->_set_insertFlag(codes[0], omStore);
                if (codes.size() > 1) c->_set_deleteFlag(codes[1], omStore);
                if (codes.size() > 2) c->_set_replaceFlag(codes[2], omStore);
            }
        }
        if (!place.empty()) seg->_set_rules(place.c_str(), omStore);
    }
    if (dedb) {
        auto* s = kr::cast<_DSSegmentDEDB>(seg.operator->());
        std::string type = ops.choice(Kw::SEGM_TYPE);
        if (!type.empty()) s->_set_directDependent(type == "DIR", omStore);
        if (auto n = ops.number(Kw::SEGM_SSPTR)) s->_set_subsetPointers(static_cast<char>(*n), omStore);
    } else if (ops.has(Kw::SEGM_TYPE) || ops.has(Kw::SEGM_SSPTR)) {
        diags_.warning(ops.at(ops.has(Kw::SEGM_TYPE) ? Kw::SEGM_TYPE : Kw::SEGM_SSPTR),
                       "SEGM TYPE and SSPTR: only DEDB segments have them; ignored");
    }
    guarded(st.at, Stmt::SEGM, [&] {
        link<DSContainsSegment>(&d_.dbd, &seg);
        segmParent(ops, seg, name, complex);
        if (complex && !d_.dataset.isEmpty()) {
            auto c = as<DSSegmentComplex>(seg.impl());
            auto ds = as<DSTARNDataset>(d_.dataset.impl());
            link<DSIsPartOf>(&c, &ds);
        }
        segmParts(ops, seg, logical);
        externalName(ops, Kw::SEGM_EXTERNALNAME, &seg, nullptr);
    });
    d_.segment = seg;
    d_.segmentName = name;
}

// PARENT=0 | name | ((name[,SNGL|DBLE])[,(lparent,PHYSICAL|VIRTUAL,dbd)]), with
// POINTER: the logical child's own pointers go to its logical relationship,
// the rest stays with the segment as written.
void Loader::segmParent(Operands& ops, DSSegment& seg, const std::string& name, bool complex) {
    std::string segPointers, ltwin;
    bool lparnt = false, ctr = false;
    const Value* pointer = ops.value(Kw::SEGM_POINTER);
    if (pointer) {
        for (std::size_t i = 0; i < pointer->size(); ++i) {
            std::string w = ops.textAt(Kw::SEGM_POINTER, pointer->item(i));
            // The logical child's pointers by their short forms too.
            if (w == "LP") w = "LPARNT";
            if (w == "LT") w = "LTWIN";
            if (w == "LTB") w = "LTWINBWD";
            if (w == "LPARNT")
                lparnt = true;
            else if (w == "CTR")
                ctr = true;
            else if (w == "LTWIN" || w == "LTWINBWD")
                ltwin = w;
            else if (!w.empty())
                segPointers += (segPointers.empty() ? "" : ",") + w;
        }
        if (!segPointers.empty()) {
            if (complex)
                kr::cast<_DSSegmentComplex>(seg.operator->())->_set_segmPointer(segPointers.c_str(), omStore);
            else
                diags_.warning(ops.at(Kw::SEGM_POINTER),
                               "SEGM POINTER: only segments of physical DBDs keep pointer options; ignored");
        }
    }
    const Value* parent = ops.value(Kw::SEGM_PARENT);
    // PARENT=(name,DBLE) is taken as the physical form alone.
    bool flat = parent && parent->kind == Value::List && !parent->items.empty() && parent->items[0].kind != Value::List;
    const Value* physical = parent ? (flat ? parent : parent->item(0)) : nullptr;
    const Value* logicalParent = parent && !flat && parent->kind == Value::List ? parent->item(1) : nullptr;
    std::string parentName = physical ? ops.textAt(Kw::SEGM_PARENT, physical->item(0)) : std::string();
    if (parentName.empty() || parentName == "0") {
        if (d_.rootSegment.isEmpty()) d_.rootSegment = seg;
    } else if (_ADObject* p = parentName == name ? nullptr : findSegment(d_.name, parentName)) {
        auto ps = as<DSSegment>(p);
        auto l = link<DSParent>(&seg, &ps);
        std::string ptr = physical->size() > 1 ? ops.textAt(Kw::SEGM_PARENT, physical->item(1)) : std::string();
        if (!ptr.empty()) l->_set_pcPointer(ptr.c_str(), omStore);
    } else if (!failedSegment(d_.name, parentName)) {
        diags_.error(physical->at, "SEGM PARENT: no segment " + parentName + " before " + name + " in DBD " + d_.name);
    }
    if (!logicalParent || logicalParent->isEmpty()) {
        if (lparnt || ctr || !ltwin.empty())
            diags_.warning(ops.at(Kw::SEGM_POINTER),
                           "SEGM POINTER: LPARNT, LTWIN and CTR belong to a logical child; ignored");
        return;
    }
    if (!complex)
        return diags_.error(logicalParent->at, "SEGM PARENT: only segments of physical DBDs have a logical parent");
    std::string lpName = ops.textAt(Kw::SEGM_PARENT, logicalParent->item(0)),
                kind = ops.textAt(Kw::SEGM_PARENT, logicalParent->item(1)),
                lpDbd = ops.textAt(Kw::SEGM_PARENT, logicalParent->item(2));
    if (lpDbd.empty()) lpDbd = d_.name;
    Location lpAt = logicalParent->at;
    ADObject child = seg;
    deferred_.push_back([=, this] {
        _ADObject* lp = findSegment(lpDbd, lpName);
        if (!lp && failedSegment(lpDbd, lpName)) return;
        if (!kr::isa<_DSSegmentComplex>(lp))
            return diags_.error(
                lpAt, "SEGM PARENT: no segment " + lpName + " of a physical DBD " + lpDbd + " as logical parent");
        guarded(lpAt, Stmt::SEGM, [&] {
            auto parentSeg = as<DSSegmentComplex>(lp), childSeg = as<DSSegmentComplex>(child.impl());
            DSLChild rel = logicalRelationship(parentSeg, childSeg);
            if (!kind.empty()) rel->_set_virtualParent(kind.c_str(), omStore);
            if (lparnt) rel->_set_lparent(1, omStore);
            if (ctr) rel->_set_counter(1, omStore);
            if (!ltwin.empty()) rel->_set_ltwin(ltwin.c_str(), omStore);
        });
    });
}

// SOURCE=((segment,KEY|DATA,dbd),...) of a logical segment,
// COMPRTN=(routine[,DATA|KEY][,INIT]) and EXIT=.
void Loader::segmParts(Operands& ops, DSSegment& seg, bool logical) {
    if (ops.has(Kw::SEGM_SOURCE) && !logical) {
        diags_.warning(ops.at(Kw::SEGM_SOURCE),
                       "SEGM SOURCE: only segments of a logical DBD keep their sources; ignored");
    } else {
        ADObject logicalSeg = seg;
        for (const Value* s : ops.entries(Kw::SEGM_SOURCE)) {
            std::string srcName = ops.textAt(Kw::SEGM_SOURCE, s->item(0)),
                        mode = ops.textAt(Kw::SEGM_SOURCE, s->item(1)),
                        srcDbd = ops.textAt(Kw::SEGM_SOURCE, s->item(2));
            if (srcName.empty() || srcDbd.empty()) {
                diags_.error(s->at, "SEGM SOURCE: (segment,KEY|DATA,dbd) is expected");
                continue;
            }
            if (!mode.empty() && mode != "KEY" && mode != "DATA") {
                diags_.error(s->item(1)->at, "SEGM SOURCE: KEY or DATA is expected, not '" + mode + "'");
                continue;
            }
            Location srcAt = s->at;
            deferred_.push_back([=, this] {
                _ADObject* src = findSegment(srcDbd, srcName);
                if (!src && failedSegment(srcDbd, srcName)) return;
                if (!src) return diags_.error(srcAt, "SEGM SOURCE: no segment " + srcName + " in DBD " + srcDbd);
                guarded(srcAt, Stmt::SEGM, [&] {
                    auto ls = as<DSSegmentLogical>(logicalSeg.impl());
                    auto ss = as<DSSegment>(src);
                    auto l = link<DSSource>(&ls, &ss);
                    l->_set_strSOURCE(srcName.c_str(), omStore);
                    if (mode == "DATA") l->_set_dataAlso(1, omStore);
                });
            });
        }
    }
    if (const Value* c = ops.value(Kw::SEGM_COMPRTN)) {
        std::string routine = ops.textAt(Kw::SEGM_COMPRTN, c->item(0));
        if (routine.empty()) return diags_.error(c->at, "SEGM COMPRTN: the routine's name is expected first");
        // A routine serves one segment in the model: one object per segment using it.
        auto r = obtain<DSCompRoutine>(d_.name + "." + seg->_get_strSegmentName() + "." + routine);
        r->_set_routine(routine.c_str(), omStore);
        for (std::size_t i = 1; i < c->size(); ++i) {
            std::string w = ops.textAt(Kw::SEGM_COMPRTN, c->item(i));
            if (w == "DATA" || w == "KEY")
                r->_set_dataOnly(w == "DATA", omStore);
            else if (w == "INIT")
                r->_set_initialization(1, omStore);
            else if (!w.empty())
                diags_.error(c->item(i)->at, "SEGM COMPRTN: DATA, KEY or INIT is expected, not '" + w + "'");
        }
        link<DSCompressedBy>(&seg, &r);
    }
    std::vector<DSExit> exits;
    exitsOf(ops, Kw::SEGM_EXIT, d_.name + "." + seg->_get_strSegmentName(), exits);
    for (DSExit& e : exits) link<DSUsesSEGMExit>(&seg, &e);
}

// FIELD NAME=(name[,SEQ[,U|M]]),START=,BYTES=,TYPE=, or a field described for
// the catalog by its EXTERNALNAME alone (no NAME): a field of the segment all
// the same, known by its external name.
void Loader::fieldStatement(const Statement& st) {
    Operands ops(st, Stmt::FIELD, diags_);
    if (d_.segment.isEmpty()) {
        if (!openerFailed()) diags_.error(st.at, "FIELD: no SEGM before it");
        return;
    }
    const Value* nv = ops.value(Kw::FIELD_NAME);
    std::string external = ops.text(Kw::FIELD_EXTERNALNAME);
    if (!nv && external.empty()) {
        diags_.error(ops.at(Kw::FIELD_NAME), "FIELD NAME: required (or EXTERNALNAME for a field known by that alone)");
        return;
    }
    std::string name = nv ? ops.textAt(Kw::FIELD_NAME, nv->item(0)) : std::string();
    if (nv && name.empty()) return void(ops.require(Kw::FIELD_NAME));
    bool seq = false, unique = false;
    for (std::size_t i = 1; nv && i < nv->size(); ++i) {
        std::string w = ops.textAt(Kw::FIELD_NAME, nv->item(i));
        if (w == "SEQ")
            seq = true;
        else if (w == "U" || w == "M")
            unique = w == "U";
        else if (!w.empty())
            diags_.error(nv->item(i)->at, "FIELD NAME: SEQ, U or M is expected, not '" + w + "'");
    }
    if (unique && !seq) diags_.error(nv->at, "FIELD NAME: U or M only follow SEQ");
    auto start = ops.number(Kw::FIELD_START);
    auto bytes = ops.number(Kw::FIELD_BYTES);
    std::string type = ops.text(Kw::FIELD_TYPE);
    if (type.size() > 1 || (!type.empty() && !std::isalpha(static_cast<unsigned char>(type[0]))))
        diags_.error(ops.valueAt(Kw::FIELD_TYPE), "FIELD TYPE: one letter is expected, not '" + type + "'");
    if (++d_.fields > kMaxFields)
        return diags_.error(st.at, "FIELD: a DBD holds at most " + std::to_string(kMaxFields) + " fields");
    auto* segImpl = d_.segment.impl();
    std::string key = name.empty() ? "=" + external : name;
    if (findField(segImpl, key))
        return diags_.error(
            name.empty() ? ops.valueAt(Kw::FIELD_EXTERNALNAME) : nv->at,
            name.empty()
                ? "FIELD EXTERNALNAME: a field " + external + " is described twice in segment " + d_.segmentName
                : "FIELD NAME: field " + name + " is defined twice in segment " + d_.segmentName);
    std::string id = fieldId(segImpl, key);
    auto f = obtain<DSField>(id);
    if (!name.empty()) f->_set_strFieldName(name.c_str(), omStore);
    if (seq) f->_set_sequenceField(1, omStore);
    if (unique) f->_set_uniqueSequence(1, omStore);
    guarded(st.at, Stmt::FIELD, [&] {
        auto seg = as<DSSegment>(segImpl);
        link<DSHasField>(&seg, &f);
        externalName(ops, Kw::FIELD_EXTERNALNAME, nullptr, &f);
        // The geometry lives in the data item the field uses (its offset) and
        // in the item's type definition (length and type), both named as the field.
        if (!start && !bytes && type.empty()) return;
        auto item = obtain<DSDataItem>(id);
        auto def = obtain<DSSimpleTypeDef>(id);
        item->_set_offset(start.value_or(0), omStore);
        def->_set_length(bytes.value_or(0), omStore);
        def->_set_dataType(type.empty() ? kDefaultFieldType : type.c_str(), omStore);
        link<DSMakesUseOf>(&f, &item);
        link<DSLinkDataItm2DataDef>(&item, &def);
    });
}
}  // namespace krsource

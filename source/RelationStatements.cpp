// RelationStatements.cpp — the statements that relate a segment to others:
// LCHILD (a logical relationship, the primary index of an HIDAM or PHIDAM
// root, an index DBD's side of an index) and XDFLD (a secondary index). The
// segments and DBDs they name may be defined in other decks, so the links are
// made by deferred steps once every DBD of the load is read.
#include "Loader.h"

namespace krsource {

void Loader::lchildStatement(const Statement& st) {
    closeSegment();
    d_.brokenLchild = false;
    Operands ops(st, Stmt::LCHILD, diags_);
    if (d_.segment.isEmpty()) {
        if (!openerFailed()) diags_.error(st.at, "LCHILD: no SEGM before it");
        return;
    }
    if (!ops.require(Kw::LCHILD_NAME)) return;
    const Value* nameValue = ops.value(Kw::LCHILD_NAME);
    std::string childName = ops.textAt(Kw::LCHILD_NAME, nameValue->item(0)),
                childDbd = ops.textAt(Kw::LCHILD_NAME, nameValue->item(1));
    if (childName.empty()) return void(ops.require(Kw::LCHILD_NAME));
    if (childDbd.empty()) childDbd = d_.name;
    std::string ptr = ops.text(Kw::LCHILD_POINTER);
    Location nameAt = nameValue->at;
    if (organisationAccess(d_.kind) == Access::Index) {
        // The index's side of a primary or secondary index: checked here; the
        // indexed DBD's LCHILD and XDFLD make the links.
        std::string indexName = ops.text(Kw::LCHILD_INDEX);
        Location indexAt = ops.valueAt(Kw::LCHILD_INDEX);
        deferred_.push_back([=, this] {
            _ADObject* seg = findSegment(childDbd, childName);
            if (!seg && failedSegment(childDbd, childName)) return;
            if (!seg) return diags_.error(nameAt, "LCHILD NAME: no segment " + childName + " in DBD " + childDbd);
            if (indexName.empty()) return;
            if (!findField(seg, indexName) && !DSRegistrar::findObj("DSXDFLD", indexName.c_str(), version_.c_str()))
                diags_.error(indexAt, "LCHILD INDEX: no field or XDFLD " + indexName + " in segment " + childName);
        });
        return;
    }
    if (ptr == "INDX" || ptr == "SYMB") {
        d_.indexPending = true;
        d_.indexUsed = false;
        d_.indexDbd = childDbd;
        d_.indexAt = nameAt;
        d_.symbolic = ptr == "SYMB";
        return;
    }
    // A logical relationship: the current segment is the logical parent.
    if (!kr::isa<_DSSegmentComplex>(d_.segment.impl()))
        return diags_.error(st.at, "LCHILD: only segments of physical DBDs are logical parents");
    const Value* rulesValue = ops.value(Kw::LCHILD_RULES);
    std::string rules = rulesValue ? ops.textAt(Kw::LCHILD_RULES, rulesValue->item(0)) : std::string();
    std::string pair = ops.text(Kw::LCHILD_PAIR);
    Location pairAt = ops.valueAt(Kw::LCHILD_PAIR);
    ADObject parent = d_.segment;
    std::string parentName = d_.segmentName;
    // The paired segment is the other logical child: a child of this LCHILD's
    // segment, so it lives in this DBD (in another one than the named child's
    // when the pair spans two databases).
    std::string pairDbd = d_.name;
    if (ops.has(Kw::LCHILD_INDEX))
        diags_.warning(ops.at(Kw::LCHILD_INDEX),
                       "LCHILD INDEX: only an index DBD's LCHILD names its index field; ignored");
    deferred_.push_back([=, this] {
        _ADObject* child = findSegment(childDbd, childName);
        if (!child && failedSegment(childDbd, childName)) return;
        if (!kr::isa<_DSSegmentComplex>(child))
            return diags_.error(nameAt, "LCHILD NAME: no segment " + childName + " of a physical DBD " + childDbd);
        _ADObject* paired = nullptr;
        if (!pair.empty() && !(paired = findSegment(pairDbd, pair)))
            return failedSegment(pairDbd, pair)
                       ? void()
                       : diags_.error(pairAt, "LCHILD PAIR: no segment " + pair + " in DBD " + pairDbd);
        guarded(nameAt, Stmt::LCHILD, [&] {
            auto p = as<DSSegmentComplex>(parent.impl()), c = as<DSSegmentComplex>(child);
            DSLChild rel = logicalRelationship(p, c);
            rel->_set_strLPARENT(parentName.c_str(), omStore);
            if (!ptr.empty()) rel->_set_lcPointer(ptr.c_str(), omStore);
            if (!rules.empty()) rel->_set_rules(rules.c_str(), omStore);
            if (paired) {
                if (!kr::isa<_DSSegmentComplex>(paired))
                    return diags_.error(pairAt, "LCHILD PAIR: segment " + pair + " is not of a physical DBD");
                auto ps = as<DSSegmentComplex>(paired);
                link<DSHasPair>(&rel, &ps);
            }
        });
    });
}

void Loader::xdfldStatement(const Statement& st) {
    Operands ops(st, Stmt::XDFLD, diags_);
    if (!d_.indexPending) {
        if (!d_.brokenLchild && !openerFailed())
            diags_.error(st.at, "XDFLD: no LCHILD naming an index DBD (POINTER=INDX) before it");
        return;
    }
    if (!kr::isa<_DSSegmentComplex>(d_.segment.impl()))
        return diags_.error(st.at, "XDFLD: only segments of physical DBDs are indexed");
    if (!ops.require(Kw::XDFLD_NAME)) return;
    d_.indexUsed = true;
    std::string name = ops.text(Kw::XDFLD_NAME);
    if (_ADObject* old = DSRegistrar::findObj("DSXDFLD", name.c_str(), version_.c_str());
        old && kr::cast<_DSXDFLD>(old)->_get_sourceSEGMcmpx()->count() > 0)
        return diags_.error(ops.valueAt(Kw::XDFLD_NAME), "XDFLD NAME: an XDFLD named " + name + " is already defined");
    auto x = obtain<DSXDFLD>(name);
    x->_set_xdfldName(name.c_str(), omStore);
    for (auto [key, set] : {std::pair{Kw::XDFLD_NULLVAL, &_DSXDFLD::_set_nullValue},
                            std::pair{Kw::XDFLD_EXTRTN, &_DSXDFLD::_set_exitRoutine},
                            std::pair{Kw::XDFLD_CONST, &_DSXDFLD::_set_constant}}) {
        std::string t = ops.text(key);
        if (!t.empty()) (x.operator->()->*set)(t.c_str(), omStore);
    }
    if (d_.symbolic) x->_set_symbolic(1, omStore);
    ADObject target = d_.segment;
    std::string indexDbd = d_.indexDbd, dbdName = d_.name;
    Location indexAt = d_.indexAt, at = st.at;
    std::string sourceName = ops.text(Kw::XDFLD_SEGMENT);
    Location sourceAt = ops.valueAt(Kw::XDFLD_SEGMENT);
    struct FieldList {
        Kw key;
        std::vector<std::pair<std::string, Location>> names;
    };
    std::vector<FieldList> lists = {{Kw::XDFLD_SRCH, {}}, {Kw::XDFLD_SUBSEQ, {}}, {Kw::XDFLD_DDATA, {}}};
    for (FieldList& l : lists)
        if (const Value* v = ops.value(l.key))
            for (std::size_t i = 0; i < v->size(); ++i)
                l.names.emplace_back(ops.textAt(l.key, v->item(i)), v->item(i)->at);
    if (lists[0].names.empty()) ops.require(Kw::XDFLD_SRCH);
    guarded(at, Stmt::XDFLD, [&] {
        auto t = as<DSSegmentComplex>(target.impl());
        link<DSHasIndex>(&t, &x);
    });
    deferred_.push_back([=, this]() mutable {
        _ADObject* idxDbd = findDbd(indexDbd);
        if (!idxDbd)
            return failedDbd(indexDbd) ? void() : diags_.error(indexAt, "LCHILD NAME: no DBD named " + indexDbd);
        _ADObject* idx = indexAccessOf(idxDbd);
        if (!idx) return diags_.error(indexAt, "LCHILD NAME: DBD " + indexDbd + " is not an index DBD");
        _ADObject* source = target.impl();
        if (!sourceName.empty() && !(source = findSegment(dbdName, sourceName)))
            return failedSegment(dbdName, sourceName)
                       ? void()
                       : diags_.error(sourceAt, "XDFLD SEGMENT: no segment " + sourceName + " in DBD " + dbdName);
        if (!kr::isa<_DSSegmentComplex>(source))
            return diags_.error(sourceAt, "XDFLD SEGMENT: segment " + sourceName + " is not of a physical DBD");
        guarded(at, Stmt::XDFLD, [&] {
            auto s = as<DSSegmentComplex>(source);
            auto index = as<DSDBDindex>(idx);
            link<DSHasIndexSource>(&x, &s);
            link<DSIsUseOf>(&x, &index);
            for (const FieldList& l : lists)
                for (const auto& [fname, fat] : l.names) {
                    _ADObject* f = findField(source, fname);
                    if (!f) {
                        diags_.error(fat, std::string("XDFLD ") + nameOf(l.key) + ": no field " + fname +
                                              " in segment " + kr::cast<_DSSegment>(source)->_get_strSegmentName());
                        continue;
                    }
                    auto field = as<DSField>(f);
                    if (l.key == Kw::XDFLD_SRCH)
                        link<DSHasSearch>(&x, &field);
                    else if (l.key == Kw::XDFLD_SUBSEQ)
                        link<DSHasSubsequence>(&x, &field);
                    else
                        link<DSHasDuplicateData>(&x, &field);
                }
        });
    });
}

}  // namespace krsource

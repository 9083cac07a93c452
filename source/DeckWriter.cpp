// DeckWriter.cpp — the model's DBDs and PSBs as decks (see DeckWriter.h). The
// operand order of each statement is written here once; values that the model
// holds as unset (null strings, zero numbers, false flags) are left out, which
// is how the loader reads an absent operand.
#include <krmwtarn/source/DeckWriter.h>

#include <krmwtarn/source/FieldGeometry.h>
#include <krmwtarn/source/Language.h>

#include <krmwtarn/model/framework/Navigation.h>

#include <cassert>
#include <cctype>
#include <string_view>

namespace krsource {
namespace {

constexpr std::size_t kOperandColumn = 16, kLastColumn = 71;

bool wordChar(char c) {
    return std::isalnum(static_cast<unsigned char>(c)) || c == '#' || c == '@' || c == '$' || c == '_' || c == '-' ||
           c == '.' || c == '*' || c == '+' || c == '/' || c == ':' || c == '&';
}

// A value as the reader takes it back: a word as is (also X'..' and C'..'),
// anything else quoted with its quotes doubled.
std::string val(std::string_view t) {
    if (t.empty()) return {};
    bool word = !t.empty();
    for (char c : t) word = word && wordChar(c);
    bool typed = t.size() >= 3 && std::isalpha(static_cast<unsigned char>(t[0])) && t[1] == '\'' && t.back() == '\'';
    if (word || typed) return std::string(t);
    std::string q = "'";
    for (char c : t) q += c == '\'' ? std::string("''") : std::string(1, c);
    return q + "'";
}
std::string str(const char* s) { return s ? std::string(s) : std::string(); }

// A sublist, its trailing empty positions dropped; one position alone is written bare.
std::string list(std::vector<std::string> items, bool bare = true) {
    while (!items.empty() && items.back().empty()) items.pop_back();
    if (items.empty()) return {};
    if (items.size() == 1 && bare) return items[0];
    std::string s = "(";
    for (std::size_t i = 0; i < items.size(); ++i) s += (i ? "," : "") + items[i];
    return s + ")";
}
std::string num(long n) { return n ? std::to_string(n) : std::string(); }

// One statement's operands, put in the order of the language table whatever
// order they are added in; a keyword the table does not give the statement
// is a fault of the writer.
class Ops {
public:
    explicit Ops(Stmt statement) : statement_(statement), values_(statementRow(statement).count) {}
    void add(const char* key, std::string value) {
        Kw k = keywordNamed(statement_, key);
        if (k == Kw::None) k = positionalNamed(statement_, key);
        assert(k != Kw::None && "a keyword the language table does not give this statement");
        values_[static_cast<std::size_t>(k) - statementRow(statement_).first] = std::move(value);
    }
    void yes(const char* key, long flag) {
        if (flag) add(key, "YES");
    }
    bool empty() const {
        for (const std::string& v : values_)
            if (!v.empty()) return false;
        return true;
    }
    Stmt statement() const noexcept { return statement_; }
    std::vector<std::string> items() const {
        std::vector<std::string> out;
        const StatementRow& row = statementRow(statement_);
        for (std::size_t i = 0; i < values_.size(); ++i) {
            if (values_[i].empty()) continue;
            const KeywordRow& k = keywordRow(Kw(row.first + i));
            out.push_back(k.positional ? values_[i] : std::string(k.name) + "=" + values_[i]);
        }
        return out;
    }

private:
    Stmt statement_;
    std::vector<std::string> values_;
};

class Deck {
public:
    void statement(const std::string& label, const Ops& ops) {
        for (const std::string& card : formatStatement(label, nameOf(ops.statement()), ops.items()))
            text_ += card + "\n";
    }
    void directive(Stmt s) { text_ += formatStatement("", nameOf(s), {})[0] + "\n"; }
    std::string take() { return std::move(text_); }

private:
    std::string text_;
};

std::string exitValue(_DSExit* x) {
    std::vector<std::string> items = {val(str(x->_get_strExit()))};
    if (x->_get_exitKey()) items.push_back("KEY");
    if (x->_get_exitData()) items.push_back("DATA");
    if (x->_get_exitPath()) items.push_back("PATH");
    if (x->_get_cascade() || x->_get_cascadeKey() || x->_get_cascadeData() || x->_get_cascadePath()) {
        std::vector<std::string> c = {x->_get_cascade() ? "CASCADE" : "NOCASCADE"};
        if (x->_get_cascadeKey()) c.push_back("KEY");
        if (x->_get_cascadeData()) c.push_back("DATA");
        if (x->_get_cascadePath()) c.push_back("PATH");
        items.push_back(list(c, false));
    }
    if (x->_get_logFlag()) items.push_back("LOG");
    return list(items, false);
}

template <class Link>
std::string exitsValue(DSModelCollection* exits) {
    std::vector<std::string> all;
    for (_DSExit* x : kr::targetsOf<Link>(exits)) all.push_back(exitValue(x));
    if (all.size() == 1) return all[0];
    return list(all, false);
}

std::string segName(_DSSegment* s) { return str(s->_get_strSegmentName()); }
std::string dbdOf(_DSSegment* s) {
    _DSDBD* d = kr::sourcesOf<DSContainsSegment>(s->_get_containingDBD()).first();
    return d ? str(d->_get_strDBDName()) : std::string();
}
_DSSegment* rootOf(_DSDBD* dbd) {
    for (_DSSegment* s : kr::targetsOf<DSContainsSegment>(dbd->_get_segments()))
        if (s->_get_physicalParent()->count() == 0) return s;
    return nullptr;
}
// The DBD of an access object and that DBD's root segment, as an LCHILD names them.
std::string lchildName(_DSDBDaccess* access) {
    _DSDBD* d = kr::sourcesOf<DSDefinedByAccess>(access->_get_containingDBD()).first();
    if (!d) return {};
    _DSSegment* root = rootOf(d);
    return list({root ? val(segName(root)) : std::string(), val(str(d->_get_strDBDName()))}, false);
}

void datasetStatement(Deck& deck, _DSDSColl* group) {
    std::string dd = str(kr::endOf(group->_get_target())->_get_ddsName());
    std::string label;
    if (_DSArea* area = kr::targetsOf<DSHasArea>(group->_get_areaAttributes()).first()) {
        Ops ops(Stmt::AREA);
        ops.add("DD1", val(dd));
        ops.add("SIZE", num(area->_get_areaSize()));
        ops.add("UOW", list({num(area->_get_uow()), num(area->_get_uowOverflow())}));
        ops.add("ROOT", list({num(area->_get_root()), num(area->_get_rootOverflow())}));
        ops.add("MODEL", val(str(group->_get_dsModel())));
        ops.add("DEVICE", val(str(group->_get_dsDevice())));
        deck.statement("", ops);
        return;
    }
    Ops ops(Stmt::DATASET);
    ops.add("DD1", val(dd));
    _DSTARNDataset* ds = kr::targetsOf<DSHasDataset>(group->_get_datasetAttributes()).first();
    if (ds) {
        label = str(ds->_get_datasetLabel());
        if (_DSTARNDDname* o = kr::targetsOf<DSHasOverflow>(ds->_get_dd2()).first())
            ops.add("OVFLW", val(str(o->_get_ddsName())));
    }
    ops.add("DEVICE", val(str(group->_get_dsDevice())));
    ops.add("MODEL", val(str(group->_get_dsModel())));
    if (ds) {
        ops.add("SIZE", list({num(ds->_get_size1()), num(ds->_get_size2())}));
        ops.add("SCAN", num(ds->_get_scanCylinders()));
        ops.add("RECORD", list({num(ds->_get_inputRecordLength()), num(ds->_get_outputRecordLength())}));
        ops.add("RECFM", val(str(ds->_get_recordFormat())));
        ops.add("BLOCK", list({num(ds->_get_primaryBlockingFactor()), num(ds->_get_overflowBlockingFactor())}));
        ops.add("FRSPC", list({num(ds->_get_freeBlockFrequency()), num(ds->_get_freeSpacePercentage())}));
        if (char c = ds->_get_searchAlgorithm()) ops.add("SEARCHA", std::string(1, c));
    }
    deck.statement(label, ops);
}

void segmentStatements(Deck& deck, _DSDBD* dbd, _DSSegment* seg) {
    auto* cx = kr::dyn_cast<_DSSegmentComplex>(seg);
    Ops ops(Stmt::SEGM);
    ops.add("NAME", val(segName(seg)));
    // PARENT=((parent[,pointer])[,(logical parent,kind,dbd)])
    std::string physical;
    for (_DSParent* p : kr::linksOf<DSParent>(seg->_get_physicalParent())) {
        physical = list({val(segName(kr::endOf(p->_get_target()))), val(str(p->_get_pcPointer()))});
    }
    _DSLChild* logical = nullptr;
    if (cx)
        for (_DSLChild* l : kr::linksOf<DSLChild>(cx->_get_logParent())) logical = l;
    if (logical) {
        _DSSegmentComplex* lp = kr::endOf(logical->_get_source());
        std::string p = physical.empty() ? "0" : physical;
        if (p.front() != '(') p = "(" + p + ")";
        ops.add("PARENT", "(" + p + "," +
                              list({val(segName(lp)), val(str(logical->_get_virtualParent())), val(dbdOf(lp))}, false) +
                              ")");
    } else {
        ops.add("PARENT", !physical.empty() && physical.front() == '(' ? "(" + physical + ")" : physical);
    }
    short max = seg->_get_maximumLength(), min = seg->_get_minimumLength();
    if (max || min) ops.add("BYTES", max == min ? num(max) : list({std::to_string(max), std::to_string(min)}, false));
    ops.add("FREQ", val(str(seg->_get_frequency())));
    std::vector<std::string> pointers;
    if (cx && cx->_get_segmPointer()) {
        std::string all = cx->_get_segmPointer();
        for (std::size_t from = 0; from <= all.size();) {
            std::size_t comma = all.find(',', from);
            if (comma == std::string::npos) comma = all.size();
            if (comma > from) pointers.push_back(val(all.substr(from, comma - from)));
            from = comma + 1;
        }
    }
    if (logical) {
        if (logical->_get_lparent()) pointers.push_back("LPARNT");
        if (logical->_get_ltwin()) pointers.push_back(val(logical->_get_ltwin()));
        if (logical->_get_counter()) pointers.push_back("CTR");
    }
    ops.add("POINTER", list(pointers));
    std::string codes;
    if (cx && cx->_get_insertFlag()) {
        codes += cx->_get_insertFlag();
        if (cx->_get_deleteFlag()) codes += cx->_get_deleteFlag();
        if (cx->_get_deleteFlag() && cx->_get_replaceFlag()) codes += cx->_get_replaceFlag();
    }
    std::string place = str(seg->_get_rules());
    if (!codes.empty() && !place.empty())
        ops.add("RULES", list({codes, val(place)}, false));
    else
        ops.add("RULES", codes.empty() ? val(place) : codes);
    if (auto* logicalSeg = kr::dyn_cast<_DSSegmentLogical>(seg)) {
        std::vector<std::string> all;
        for (_DSSource* src : kr::linksOf<DSSource>(logicalSeg->_get_sourceSegments())) {
            _DSSegment* t = kr::endOf(src->_get_target());
            all.push_back(list({val(segName(t)), src->_get_dataAlso() ? "DATA" : "KEY", val(dbdOf(t))}, false));
        }
        if (!all.empty()) ops.add("SOURCE", list(all, false));
    }
    if (_DSCompRoutine* c = kr::targetsOf<DSCompressedBy>(seg->_get_compRoutine()).first()) {
        std::vector<std::string> items = {val(str(c->_get_routine()))};
        items.push_back(c->_get_dataOnly() ? "DATA" : "");
        if (c->_get_initialization()) items.push_back("INIT");
        ops.add("COMPRTN", list(items));
    }
    if (seg->_get_exits()->count()) ops.add("EXIT", exitsValue<DSUsesSEGMExit>(seg->_get_exits()));
    if (auto* d = kr::dyn_cast<_DSSegmentDEDB>(seg)) {
        if (d->_get_directDependent()) ops.add("TYPE", "DIR");
        ops.add("SSPTR", num(d->_get_subsetPointers()));
    }
    if (DSDataStructureAlias* alias = seg->_getFirst_segmName())
        ops.add("EXTERNALNAME", val(str((*alias)->_get_adName())));
    deck.statement("", ops);

    for (_DSField* field : kr::targetsOf<DSHasField>(seg->_get_fields())) {
        Ops fo(Stmt::FIELD);
        std::string name = val(str(field->_get_strFieldName()));
        if (!name.empty())
            fo.add("NAME", field->_get_sequenceField()
                               ? list({name, "SEQ", field->_get_uniqueSequence() ? "U" : "M"}, false)
                               : name);
        FieldGeometry g = fieldGeometry(field);
        fo.add("START", num(g.start));
        fo.add("BYTES", num(g.bytes));
        if (g.type != kDefaultFieldType) fo.add("TYPE", val(g.type));
        if (DSSDDAlias* alias = field->_getFirst_fldName()) fo.add("EXTERNALNAME", val(str((*alias)->_get_adName())));
        deck.statement("", fo);
    }

    _DSDBDaccess* access = kr::targetsOf<DSDefinedByAccess>(dbd->_get_dliAccess()).first();
    // The primary index, named under the HIDAM root.
    if (auto* hidam = kr::dyn_cast<_DSDBDhidam>(access); hidam && seg == rootOf(dbd))
        if (_DSDBDindex* idx = kr::targetsOf<DSIndex>(hidam->_get_primaryIndex()).first()) {
            Ops lo(Stmt::LCHILD);
            lo.add("NAME", lchildName(idx));
            lo.add("POINTER", "INDX");
            deck.statement("", lo);
        }
    // The index DBD's own LCHILD, towards what it indexes.
    if (auto* index = kr::dyn_cast<_DSDBDindex>(access); index && seg == rootOf(dbd)) {
        for (_DSDBDhidam* h : kr::sourcesOf<DSIndex>(index->_get_primaryIndexTarget())) {
            Ops lo(Stmt::LCHILD);
            lo.add("NAME", lchildName(h));
            if (_DSField* seqField = kr::targetsOf<DSHasRootSequence>(h->_get_rootSequenceField()).first())
                lo.add("INDEX", val(str(seqField->_get_strFieldName())));
            lo.add("POINTER", "INDX");
            deck.statement("", lo);
        }
        for (_DSXDFLD* xd : kr::sourcesOf<DSIsUseOf>(index->_get_secondaryIndexTarget())) {
            _DSSegmentComplex* target = kr::sourcesOf<DSHasIndex>(xd->_get_sourceSEGMcmpx()).first();
            if (!target) continue;
            Ops lo(Stmt::LCHILD);
            lo.add("NAME", list({val(segName(target)), val(dbdOf(target))}, false));
            lo.add("INDEX", val(str(xd->_get_xdfldName())));
            lo.add("POINTER", xd->_get_symbolic() ? "SYMB" : "INDX");
            deck.statement("", lo);
        }
    }
    if (!cx) return;
    for (_DSLChild* rel : kr::linksOf<DSLChild>(cx->_get_logChildren())) {
        _DSSegmentComplex* child = kr::endOf(rel->_get_target());
        Ops lo(Stmt::LCHILD);
        lo.add("NAME", list({val(segName(child)), val(dbdOf(child))}, false));
        lo.add("POINTER", val(str(rel->_get_lcPointer())));
        if (_DSSegmentComplex* pair = kr::targetsOf<DSHasPair>(rel->_get_pairedSegment()).first())
            lo.add("PAIR", val(segName(pair)));
        lo.add("RULES", val(str(rel->_get_rules())));
        deck.statement("", lo);
    }
    for (_DSXDFLD* xd : kr::targetsOf<DSHasIndex>(cx->_get_indices())) {
        Ops lo(Stmt::LCHILD);
        if (_DSDBDindex* idx = kr::targetsOf<DSIsUseOf>(xd->_get_targetDBDindex()).first())
            lo.add("NAME", lchildName(idx));
        lo.add("POINTER", xd->_get_symbolic() ? "SYMB" : "INDX");
        deck.statement("", lo);
        Ops xo(Stmt::XDFLD);
        xo.add("NAME", val(str(xd->_get_xdfldName())));
        _DSSegmentComplex* source = kr::targetsOf<DSHasIndexSource>(xd->_get_indexSource()).first();
        if (source && source != cx) xo.add("SEGMENT", val(segName(source)));
        auto names = [](auto fields) {
            std::vector<std::string> n;
            for (_DSField* f : fields) n.push_back(val(str(f->_get_strFieldName())));
            return list(n);
        };
        xo.add("SRCH", names(kr::targetsOf<DSHasSearch>(xd->_get_search())));
        xo.add("SUBSEQ", names(kr::targetsOf<DSHasSubsequence>(xd->_get_subseq())));
        xo.add("DDATA", names(kr::targetsOf<DSHasDuplicateData>(xd->_get_ddata())));
        xo.add("NULLVAL", val(str(xd->_get_nullValue())));
        xo.add("EXTRTN", val(str(xd->_get_exitRoutine())));
        xo.add("CONST", val(str(xd->_get_constant())));
        deck.statement("", xo);
    }
}

}  // namespace

std::vector<std::string> formatStatement(const std::string& label, const std::string& operation,
                                         const std::vector<std::string>& operands) {
    std::vector<std::string> cards;
    std::string card = label;
    card += ' ';
    if (card.size() < 9) card.resize(9, ' ');
    card += operation;
    card += ' ';
    if (card.size() < kOperandColumn - 1) card.resize(kOperandColumn - 1, ' ');
    auto next = [&] {
        card.resize(kLastColumn, ' ');
        card += 'X';
        cards.push_back(std::move(card));
        card.assign(kOperandColumn - 1, ' ');
    };
    for (std::size_t i = 0; i < operands.size(); ++i) {
        std::string piece = operands[i] + (i + 1 < operands.size() ? "," : "");
        bool fresh = card.size() == kOperandColumn - 1;
        if (!fresh && card.size() + piece.size() > kLastColumn) next();
        // An operand longer than a card runs on to column 71 and continues in column 16.
        while (card.size() + piece.size() > kLastColumn) {
            std::size_t room = kLastColumn - card.size();
            card += piece.substr(0, room);
            piece.erase(0, room);
            next();
        }
        card += piece;
    }
    while (!card.empty() && card.back() == ' ') card.pop_back();
    cards.push_back(std::move(card));
    return cards;
}

std::string writeDbdDeck(_DSDBD* dbd) {
    Deck deck;
    Ops ops(Stmt::DBD);
    ops.add("NAME", val(str(dbd->_get_strDBDName())));
    _DSDBDaccess* access = kr::targetsOf<DSDefinedByAccess>(dbd->_get_dliAccess()).first();
    if (access) {
        std::vector<std::string> items = {val(str(access->_get_dliAccess()))};
        if (access->_get_osAccess()) items.push_back("VSAM");
        if (auto* index = kr::dyn_cast<_DSDBDindex>(access)) {
            if (index->_get_protect()) items.push_back("PROT");
            if (index->_get_dosCompatibility()) items.push_back("DOSCOMP");
        }
        ops.add("ACCESS", list(items));
        if (auto* h = kr::dyn_cast<_DSDBDhdam>(access)) {
            ops.add("RMNAME", list({val(str(h->_get_rmName())), num(h->_get_rootAnchorPoints()),
                                    num(h->_get_relativeBlockNumber()), num(h->_get_rootMaxBytes())}));
        } else if (auto* dedb = kr::dyn_cast<_DSDBDdedb>(access)) {
            ops.add("RMNAME", val(str(dedb->_get_rmName())));
        }
        ops.yes("PASSWD", access->_get_passwordFlag());
    }
    if (dbd->_get_exits()->count()) ops.add("EXIT", exitsValue<DSUsesDBDExit>(dbd->_get_exits()));
    ops.add("VERSION", val(str(dbd->_get_versionString())));
    deck.statement("", ops);
    // A logical DBD's one dataset statement.
    if (access && str(access->_get_dliAccess()) == "LOGICAL") {
        Ops lo(Stmt::DATASET);
        lo.add("LOGICAL", "LOGICAL");
        deck.statement("", lo);
    }
    if (auto* m = kr::dyn_cast<_DSDBDmsdb>(access)) {
        Ops mo(Stmt::DATASET);
        mo.add("REL", list({val(str(m->_get_msdbType())), val(str(m->_get_msdbField()))}));
        if (!mo.empty()) deck.statement("", mo);
    }

    // Dataset groups: those that hold segments just before their first segment;
    // the others first, or last when some segment belongs to no dataset (a
    // DATASET statement holds the segments that follow it).
    std::vector<_DSSegment*> segments;
    for (_DSSegment* s : kr::targetsOf<DSContainsSegment>(dbd->_get_segments())) segments.push_back(s);
    std::vector<_DSDSColl*> groups;
    for (_DSDSColl* g : kr::linksOf<DSDSColl>(dbd->_get_datasets())) groups.push_back(g);
    auto datasetOf = [](_DSSegment* s) -> _DSTARNDataset* {
        auto* cx = kr::dyn_cast<_DSSegmentComplex>(s);
        return cx ? kr::targetsOf<DSIsPartOf>(cx->_get_dataset()).first() : nullptr;
    };
    auto attributesOf = [](_DSDSColl* g) { return kr::targetsOf<DSHasDataset>(g->_get_datasetAttributes()).first(); };
    auto groupOf = [&](_DSTARNDataset* ds) -> _DSDSColl* {
        for (_DSDSColl* g : groups)
            if (attributesOf(g) == ds) return g;
        return nullptr;
    };
    bool looseSegments = false;
    std::vector<_DSDSColl*> empty;
    for (_DSSegment* s : segments) looseSegments = looseSegments || !datasetOf(s);
    for (_DSDSColl* g : groups) {
        _DSTARNDataset* ds = attributesOf(g);
        bool used = false;
        for (_DSSegment* s : segments) used = used || (ds && datasetOf(s) == ds);
        if (!used) empty.push_back(g);
    }
    if (!looseSegments)
        for (_DSDSColl* g : empty) datasetStatement(deck, g);
    _DSTARNDataset* current = nullptr;
    for (_DSSegment* s : segments) {
        _DSTARNDataset* ds = datasetOf(s);
        if (ds && ds != current) {
            if (_DSDSColl* g = groupOf(ds)) datasetStatement(deck, g);
            current = ds;
        }
        segmentStatements(deck, dbd, s);
    }
    if (looseSegments)
        for (_DSDSColl* g : empty) datasetStatement(deck, g);
    deck.directive(Stmt::DBDGEN);
    deck.directive(Stmt::FINISH);
    deck.directive(Stmt::END);
    return deck.take();
}

std::string writePsbDeck(_DSPSB* psb) {
    Deck deck;
    for (_DSPCB* pcb : kr::targetsOf<DSIncludesPCB>(psb->_get_listPCBs())) {
        _DSPCBtype* type = kr::targetsOf<DSSpecifiedByType>(pcb->_get_typeOfPCB()).first();
        auto* tp = kr::dyn_cast<_DSPCBtp>(type);
        auto* based = kr::dyn_cast<_DSPCBbased>(type);
        // A PCB of no type, or of none that a deck can state, is passed over.
        if (!tp && !based) continue;
        Ops ops(Stmt::PCB);
        std::string name = val(str(pcb->_get_strPCBAccessName()));
        if (tp) {
            ops.add("TYPE", "TP");
            std::vector<std::string> names, lterms;
            for (_DSOutputDest* dest : kr::targetsOf<DSRefersTo>(tp->_get_destination()))
                (dest->_get_destinationType() ? lterms : names).push_back(val(str(dest->_get_ltermName())));
            ops.add("NAME", list(names));
            ops.add("LTERM", list(lterms));
            ops.yes("ALTRESP", tp->_get_alternateResponse());
            ops.yes("EXPRESS", tp->_get_express());
            ops.yes("MODIFY", tp->_get_modify());
            ops.yes("SAMETRM", tp->_get_sameTerminal());
            ops.add("PCBNAME", name);
            ops.yes("LIST", pcb->_get_list());
            deck.statement("", ops);
            continue;
        }
        auto* dbt = kr::dyn_cast<_DSPCBdb>(based);
        ops.add("TYPE", dbt ? "DB" : "GSAM");
        if (_DSDBD* d = kr::targetsOf<DSBasedOn>(based->_get_baseDBD()).first())
            ops.add("DBDNAME", val(str(d->_get_strDBDName())));
        ops.add("PROCOPT", val(str(based->_get_procoptPCB())));
        if (dbt) {
            ops.add("KEYLEN", num(dbt->_get_keyLength()));
            if (char c = dbt->_get_positioning()) ops.add("POS", std::string(1, c));
            if (_DSDBDindex* idx = kr::targetsOf<DSSequencedBy>(dbt->_get_procseq()).first())
                if (_DSDBD* d = kr::sourcesOf<DSDefinedByAccess>(idx->_get_containingDBD()).first())
                    ops.add("PROCSEQ", val(str(d->_get_strDBDName())));
        }
        ops.add("PCBNAME", name);
        ops.yes("LIST", pcb->_get_list());
        if (dbt) ops.add("SB", val(str(dbt->_get_sequentialBuffering())));
        deck.statement("", ops);
        if (!dbt) continue;
        for (_DSSenSegment* sense : kr::targetsOf<DSHasSensitive>(dbt->_get_senseg())) {
            Ops so(Stmt::SENSEG);
            so.add("NAME", val(str(sense->_get_strSensegName())));
            if (_DSSenSegment* parent = kr::targetsOf<DSHasParentSenseg>(sense->_get_parentSenseg()).first())
                so.add("PARENT", val(str(parent->_get_strSensegName())));
            so.add("PROCOPT", val(str(sense->_get_procoptSENSEG())));
            char pointers[8] = {sense->_get_subsetPointer1(), sense->_get_subsetPointer2(),
                                sense->_get_subsetPointer3(), sense->_get_subsetPointer4(),
                                sense->_get_subsetPointer5(), sense->_get_subsetPointer6(),
                                sense->_get_subsetPointer7(), sense->_get_subsetPointer8()};
            std::vector<std::string> ss;
            for (int i = 0; i < 8; ++i)
                if (pointers[i]) ss.push_back(list({std::to_string(i + 1), std::string(1, pointers[i])}, false));
            if (!ss.empty()) so.add("SSPTR", list(ss, false));
            std::vector<std::string> indices;
            for (_DSDBDindex* idx : kr::targetsOf<DSIndexedBy>(sense->_get_indices()))
                if (_DSDBD* d = kr::sourcesOf<DSDefinedByAccess>(idx->_get_containingDBD()).first())
                    indices.push_back(val(str(d->_get_strDBDName())));
            so.add("INDICES", list(indices));
            deck.statement("", so);
            for (_DSSenField* senfld : kr::targetsOf<DSUsesSENFLD>(sense->_get_senflds())) {
                Ops fo(Stmt::SENFLD);
                if (_DSField* field = kr::targetsOf<DSUsedAsSENFLD>(senfld->_get_targetFIELD()).first())
                    fo.add("NAME", val(str(field->_get_strFieldName())));
                fo.add("START", num(senfld->_get_startPosition()));
                fo.yes("REPL", senfld->_get_replace());
                deck.statement("", fo);
            }
        }
    }
    Ops gen(Stmt::PSBGEN);
    gen.add("LANG", val(str(psb->_get_language())));
    gen.add("PSBNAME", val(str(psb->_get_strPSBName())));
    gen.yes("CMPAT", psb->_get_compatibility());
    gen.add("IOASIZE", num(psb->_get_ioaSize()));
    gen.add("SSASIZE", num(psb->_get_ssaSize()));
    gen.add("IOEROPN", num(psb->_get_ioErrorOption()));
    gen.add("LOCKMAX", num(psb->_get_lockMaximum()));
    gen.add("MAXQ", num(psb->_get_maximumQxCalls()));
    gen.yes("OLIC", psb->_get_onlineImageCopy());
    gen.add("HPSBNAME", val(str(psb->_get_hpPSBName())));
    gen.yes("WRTOP", psb->_get_writeToOperator());
    deck.statement("", gen);
    deck.directive(Stmt::END);
    return deck.take();
}

}  // namespace krsource

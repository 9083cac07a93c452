// DbdStatements.cpp — a DBD definition into the model: the DBD statement with
// its access, exits and randomizer, DATASET and AREA statements, and the end of
// the DBD (duplicates, the HIDAM root sequence field). Its segments, fields,
// LCHILDs and XDFLDs are read in SegmentStatements.cpp; the lookups by name
// that every part shares are here.
#include "Loader.h"

#include <array>

namespace krsource {

// ---- lookups ----

_ADObject* Loader::findSegment(const std::string& dbd, const std::string& seg) {
    std::string id = dbd + "." + seg;
    if (auto it = segments_.find(id); it != segments_.end()) return it->second;
    for (const char* cls : {"DSSegmentComplex", "DSSegmentDEDB", "DSSegmentLogical", "DSSegment"})
        if (_ADObject* s = DSRegistrar::findObj(cls, id.c_str(), version_.c_str())) {
            // Segments live as long as the repository; PSBs look them up often.
            if (segments_.size() < 100000) segments_.emplace(std::move(id), s);
            return s;
        }
    return nullptr;
}

std::string Loader::fieldId(_ADObject* segment, const std::string& field) {
    const char* seg = kr::cast<_DSSegment>(segment)->_get_strSegmentName();
    return std::string(seg ? seg : "") + "." + field + "@" + segment->objID();
}

_ADObject* Loader::findField(_ADObject* segment, const std::string& field) {
    return DSRegistrar::findObj("DSField", fieldId(segment, field).c_str(), version_.c_str());
}

_ADObject* Loader::accessOf(_ADObject* dbd) {
    DSDBDaccess* a = kr::cast<_DSDBD>(dbd)->_getFirst_dliAccess();
    return a ? a->impl() : nullptr;
}

_ADObject* Loader::indexAccessOf(_ADObject* dbd) {
    _ADObject* a = dbd ? accessOf(dbd) : nullptr;
    return kr::isa<_DSDBDindex>(a) ? a : nullptr;
}

_ADObject* Loader::dbdNamed(Operands& ops, Kw k, const Value* v) {
    std::string name = ops.textAt(k, v);
    _ADObject* d = name.empty() ? nullptr : findDbd(name);
    if (!d && !name.empty() && !failedDbd(name)) diags_.error(v->at, ops.name(k) + ": no DBD named " + name);
    return d;
}

_ADObject* Loader::segmentNamed(Operands& ops, Kw k, const Value* v, const std::string& dbd) {
    std::string name = ops.textAt(k, v);
    _ADObject* s = name.empty() ? nullptr : findSegment(dbd, name);
    if (!s && !name.empty() && !failedSegment(dbd, name))
        diags_.error(v->at, ops.name(k) + ": no segment " + name + " in DBD " + dbd);
    return s;
}

_ADObject* Loader::fieldNamed(Operands& ops, Kw k, const Value* v, _ADObject* segment) {
    std::string name = ops.textAt(k, v);
    _ADObject* f = name.empty() ? nullptr : findField(segment, name);
    if (!f && !name.empty())
        diags_.error(v->at, ops.name(k) + ": no field " + name + " in segment " +
                                kr::cast<_DSSegment>(segment)->_get_strSegmentName());
    return f;
}

// ---- the definition ----

void Loader::brokenStatement(Stmt kind, const Statement& st) {
    // The fault was told: what opens a group leaves its members quiet.
    const std::size_t told = diags_.errorCount() ? diags_.errorCount() - 1 : 0;
    if (kind == Stmt::SEGM) {
        closeSegment();
        d_.segment = ADObject();
        d_.segmentName.clear();
        std::string name = operandText(st, "NAME");
        if (!name.empty()) failedSegments_.insert(d_.name + "." + name);
        errorsAtOpener_ = told;
    } else if (kind == Stmt::LCHILD) {
        closeSegment();
        d_.brokenLchild = true;
    }
}

void Loader::buildDbd(const Definition& def) {
    d_ = DbdState();
    errorsAtOpener_ = kNoOpener;
    const Statement& head = *def.statements.front();
    here_ = head.at;
    if (head.broken) {
        failedDbds_.insert(def.name);
        return;
    }
    dbdStatement(head);
    for (std::size_t i = 1; i < def.statements.size() && !d_.skip; ++i) {
        const Statement& st = *def.statements[i];
        here_ = st.at;
        const Stmt kind = st.kind;
        if (st.broken) {
            brokenStatement(kind, st);
            continue;
        }
        bool dataset = kind == Stmt::DATASET || kind == Stmt::AREA;
        if ((kind == Stmt::LCHILD || kind == Stmt::XDFLD) && ++d_.references > kMaxReferences) {
            diags_.error(st.at, st.operation + ": a DBD holds at most " + std::to_string(kMaxReferences) +
                                    " LCHILD and XDFLD statements");
            continue;
        }
        if (dataset && ++d_.datasets > kMaxDatasets) {
            diags_.error(st.at,
                         st.operation + ": a DBD holds at most " + std::to_string(kMaxDatasets) + " dataset groups");
            continue;
        }
        switch (kind) {
            case Stmt::DATASET:
                errorsAtOpener_ = kNoOpener;
                closeSegment();
                datasetStatement(st);
                break;
            case Stmt::AREA:
                errorsAtOpener_ = kNoOpener;
                closeSegment();
                areaStatement(st);
                break;
            case Stmt::SEGM: {
                errorsAtOpener_ = diags_.errorCount();
                std::string name = operandText(st, "NAME");
                segmStatement(st);
                if (d_.segmentName != name) failedSegments_.insert(d_.name + "." + name);
                break;
            }
            case Stmt::FIELD:
                fieldStatement(st);
                break;
            case Stmt::LCHILD:
                lchildStatement(st);
                break;
            case Stmt::XDFLD:
                xdfldStatement(st);
                break;
            default:
                break;
        }
        if (diags_.full()) return;
    }
    endDbd(def);
}

void Loader::dbdStatement(const Statement& st) {
    Operands ops(st, Stmt::DBD, diags_);
    d_.at = st.at;
    if (!ops.require(Kw::DBD_NAME)) {
        d_.skip = true;
        return;
    }
    d_.name = ops.text(Kw::DBD_NAME);
    if (dbdTexts_.count(d_.name)) {  // given again in this load: told when it ends
        d_.skip = d_.repeated = true;
        return;
    }
    if (findDbd(d_.name)) {
        diags_.warning(st.at, "DBD " + d_.name + ": already in the repository in version " + version_ +
                                  "; the definition there is kept");
        d_.skip = true;
        return;
    }
    const Value* access = ops.value(Kw::DBD_ACCESS);
    std::string os;
    bool protect = false, dosComp = false;
    if (access) {
        d_.kind = ops.textAt(Kw::DBD_ACCESS, access->item(0));
        for (std::size_t i = 1; i < access->size(); ++i) {
            std::string w = ops.textAt(Kw::DBD_ACCESS, access->item(i));
            if (w == "VSAM" || w == "OSAM" || w == "BSAM")
                os = w;
            else if (w == "PROT" || w == "NOPROT" || w == "NPROT")
                protect = w == "PROT";
            else if (w == "DOSCOMP")
                dosComp = true;
            else if (!w.empty())
                diags_.warning(access->item(i)->at, "DBD ACCESS: '" + w + "' has no place in the model; ignored");
        }
    }
    const Access org = organisationAccess(d_.kind);
    if (org == Access::Unknown) {
        diags_.error(ops.valueAt(Kw::DBD_ACCESS),
                     "DBD ACCESS: " + (d_.kind.empty()
                                           ? std::string("required")
                                           : "one of " + organisationList() + " is expected, not '" + d_.kind + "'"));
        d_.skip = true;
        failedDbds_.insert(d_.name);
        return;
    }
    dbdTexts_.emplace(d_.name, std::make_pair(st.at, std::string()));
    d_.dbd = obtain<DSDBD>(d_.name);
    loadedDbds_.emplace_back(st.at, d_.dbd);
    d_.dbd->_set_strDBDName(d_.name.c_str(), omStore);
    d_.dbd->_set_adName(d_.name.c_str(), omStore);
    std::string version = ops.text(Kw::DBD_VERSION);
    if (!version.empty()) d_.dbd->_set_versionString(version.c_str(), omStore);
    std::string accessId = d_.name + ".ACCESS";
    const Value* rm = ops.value(Kw::DBD_RMNAME);
    switch (org) {
        case Access::Hidam:
            d_.access = obtain<DSDBDhidam>(accessId);
            break;
        case Access::Hdam:
        case Access::Dedb: {
            bool hdam = org == Access::Hdam;
            DSDBDdedb a = hdam ? DSDBDdedb(obtain<DSDBDhdam>(accessId).operator->()) : obtain<DSDBDdedb>(accessId);
            d_.access = a;
            if (!rm) break;
            std::string module = ops.textAt(Kw::DBD_RMNAME, rm->item(0));
            if (!module.empty()) a->_set_rmName(module.c_str(), omStore);
            if (hdam) {
                auto* h = kr::cast<_DSDBDhdam>(a.operator->());
                if (auto n = ops.numberAt(Kw::DBD_RMNAME, rm->item(1), 0, 32767))
                    h->_set_rootAnchorPoints(static_cast<short>(*n), omStore);
                if (auto n = ops.numberAt(Kw::DBD_RMNAME, rm->item(2), 0, 2147483647))
                    h->_set_relativeBlockNumber(*n, omStore);
                if (auto n = ops.numberAt(Kw::DBD_RMNAME, rm->item(3), 0, 2147483647))
                    h->_set_rootMaxBytes(*n, omStore);
            } else if (rm->size() > 1) {
                diags_.warning(rm->item(1)->at, "DBD RMNAME: a DEDB keeps only the module's name; the rest is ignored");
            }
            break;
        }
        case Access::Index: {
            auto a = obtain<DSDBDindex>(accessId);
            if (protect) a->_set_protect(1, omStore);
            if (dosComp) a->_set_dosCompatibility(1, omStore);
            d_.access = a;
            break;
        }
        case Access::Msdb:
            d_.access = obtain<DSDBDmsdb>(accessId);
            break;
        default:
            d_.access = obtain<DSDBDaccess>(accessId);
            break;
    }
    if (rm && org != Access::Hdam && org != Access::Dedb)
        diags_.warning(ops.at(Kw::DBD_RMNAME),
                       "DBD RMNAME: only HDAM, PHDAM and DEDB databases have a randomizing module; ignored");
    auto* a = kr::cast<_DSDBDaccess>(d_.access.impl());
    a->_set_dliAccess(d_.kind.c_str(), omStore);
    if (os == "VSAM") a->_set_osAccess(1, omStore);
    if (auto p = ops.yesNo(Kw::DBD_PASSWD)) a->_set_passwordFlag(*p, omStore);
    guarded(st.at, Stmt::DBD, [&] {
        auto accessHandle = as<DSDBDaccess>(d_.access.impl());
        link<DSDefinedByAccess>(&d_.dbd, &accessHandle);
        std::vector<DSExit> exits;
        exitsOf(ops, Kw::DBD_EXIT, d_.name, exits);
        for (DSExit& e : exits) link<DSUsesDBDExit>(&d_.dbd, &e);
    });
}

namespace {
// An exit's flags, in one order: the getter and setter of each.
struct ExitFlag {
    int (_DSExit::*get)();
    void (_DSExit::*set)(int, omSetProcessing);
};
enum { kKey, kData, kPath, kLog, kCascade, kCascadeKey, kCascadeData, kCascadePath, kFlags };
constexpr ExitFlag kExitFlags[kFlags] = {
    {&_DSExit::_get_exitKey, &_DSExit::_set_exitKey},         {&_DSExit::_get_exitData, &_DSExit::_set_exitData},
    {&_DSExit::_get_exitPath, &_DSExit::_set_exitPath},       {&_DSExit::_get_logFlag, &_DSExit::_set_logFlag},
    {&_DSExit::_get_cascade, &_DSExit::_set_cascade},         {&_DSExit::_get_cascadeKey, &_DSExit::_set_cascadeKey},
    {&_DSExit::_get_cascadeData, &_DSExit::_set_cascadeData}, {&_DSExit::_get_cascadePath, &_DSExit::_set_cascadePath}};
// An exit's option words, each with its NO form (KEY sets the flag, NOKEY
// clears it): those of the exit, and those of its cascade sublist.
struct ExitWord {
    const char* word;
    int flag;
};
constexpr ExitWord kExitWords[] = {{"KEY", kKey}, {"DATA", kData},       {"PATH", kPath},
                                   {"LOG", kLog}, {"CASCADE", kCascade}, {nullptr, 0}};
constexpr ExitWord kCascadeWords[] = {
    {"CASCADE", kCascade}, {"KEY", kCascadeKey}, {"DATA", kCascadeData}, {"PATH", kCascadePath}, {nullptr, 0}};
constexpr const char* kExitWordList = "KEY, DATA, PATH, LOG, CASCADE or their NO forms";
constexpr const char* kCascadeWordList = "CASCADE, KEY, DATA, PATH or their NO forms";

bool exitWord(std::array<int, kFlags>& flags, const ExitWord* words, const std::string& w) {
    bool no = w.size() > 2 && w.compare(0, 2, "NO") == 0;
    for (const ExitWord* o = words; o->word; ++o)
        if (w == o->word || (no && w.compare(2, std::string::npos, o->word) == 0)) {
            flags[o->flag] = no ? 0 : 1;
            return true;
        }
    return false;
}
}  // namespace

// EXIT=(name,KEY|NOKEY,DATA|NODATA,PATH|NOPATH,(CASCADE|NOCASCADE,KEY,DATA,PATH),LOG|NOLOG),
// or a sublist of such exits, or NONE. An exit belongs to the DBD that names
// it; a segment naming a routine of its DBD with the same options shares the
// DBD's exit, with other options it has one of its own. On the DBD, `*` names
// no routine (the changes are only logged); on a segment, `*` stands for the
// DBD's exits.
void Loader::exitsOf(Operands& ops, Kw k, const std::string& owner, std::vector<DSExit>& out) {
    const bool onDbd = k == Kw::DBD_EXIT;
    for (const Value* e : ops.entries(k)) {
        std::string name = ops.textAt(k, e->item(0));
        if (name.empty()) {
            diags_.error(e->at, ops.name(k) + ": the exit routine's name (or * or NONE) is expected first");
            continue;
        }
        if (name == "NONE" && e->size() == 1) continue;
        if (name == "*" && !onDbd) {
            for (DSExit* x = d_.dbd->_getFirst_exits(); x; x = d_.dbd->_getNext_exits()) out.push_back(*x);
            continue;
        }
        std::array<int, kFlags> flags{};
        for (std::size_t i = 1; i < e->size(); ++i) {
            const Value* f = e->item(i);
            // The cascade sublist takes its own words; the rest are the exit's.
            bool cascade = f->kind == Value::List;
            for (std::size_t j = 0; j < (cascade ? f->size() : 1); ++j) {
                const Value* at = cascade ? f->item(j) : f;
                std::string w = ops.textAt(k, at);
                if (!w.empty() && !exitWord(flags, cascade ? kCascadeWords : kExitWords, w))
                    diags_.error(at->at, ops.name(k) + ": " + (cascade ? kCascadeWordList : kExitWordList) +
                                             " is expected, not '" + w + "'");
            }
        }
        if (!onDbd) {
            DSExit shared;
            for (DSExit* x = d_.dbd->_getFirst_exits(); x && shared.isEmpty(); x = d_.dbd->_getNext_exits()) {
                const char* routine = (*x)->_get_strExit();
                bool same = routine && name == routine;
                for (int f = 0; f < kFlags && same; ++f)
                    same = ((x->operator->()->*kExitFlags[f].get)() != 0) == (flags[f] != 0);
                if (same) shared = *x;
            }
            if (!shared.isEmpty()) {
                out.push_back(shared);
                continue;
            }
        }
        auto x = obtain<DSExit>(owner + "." + name);
        x->_set_strExit(name.c_str(), omStore);
        if (name != "*") x->_set_captureRoutine(name.c_str(), omStore);
        for (int f = 0; f < kFlags; ++f)
            if (flags[f]) (x.operator->()->*kExitFlags[f].set)(1, omStore);
        out.push_back(x);
    }
}

void Loader::areaStatement(const Statement& st) {
    Operands ops(st, Stmt::AREA, diags_);
    if (d_.kind != "DEDB") diags_.error(st.at, "AREA: only a DEDB has areas");
    if (!ops.require(Kw::AREA_DD1)) return;
    std::string dd = ops.text(Kw::AREA_DD1);
    auto name = obtain<DSTARNDDname>(dd);
    name->_set_ddsName(dd.c_str(), omStore);
    auto area = obtain<DSArea>(dd + ".AREA");
    auto pair = [&](Kw k, void (_DSArea::*first)(short, omSetProcessing),
                    void (_DSArea::*second)(short, omSetProcessing)) {
        const Value* v = ops.value(k);
        if (!v) return;
        if (auto n = ops.numberAt(k, v->item(0), 0, 32767))
            (area.operator->()->*first)(static_cast<short>(*n), omStore);
        if (!second) return;
        if (auto n = ops.numberAt(k, v->item(1), 0, 32767))
            (area.operator->()->*second)(static_cast<short>(*n), omStore);
    };
    pair(Kw::AREA_SIZE, &_DSArea::_set_areaSize, nullptr);
    pair(Kw::AREA_UOW, &_DSArea::_set_uow, &_DSArea::_set_uowOverflow);
    pair(Kw::AREA_ROOT, &_DSArea::_set_root, &_DSArea::_set_rootOverflow);
    guarded(st.at, Stmt::AREA, [&] {
        auto group = link<DSDSColl>(&d_.dbd, &name);
        if (ops.has(Kw::AREA_MODEL)) group->_set_dsModel(ops.text(Kw::AREA_MODEL).c_str(), omStore);
        if (ops.has(Kw::AREA_DEVICE)) group->_set_dsDevice(ops.text(Kw::AREA_DEVICE).c_str(), omStore);
        link<DSHasArea>(&group, &area);
    });
}

void Loader::datasetStatement(const Statement& st) {
    Operands ops(st, Stmt::DATASET, diags_);
    if (d_.kind == "DEDB") diags_.error(st.at, "DATASET: a DEDB's datasets are AREA statements");
    // DATASET LOGICAL: the one dataset statement of a logical DBD.
    if (ops.has(Kw::DATASET_LOGICAL)) {
        if (d_.kind != "LOGICAL")
            diags_.error(ops.at(Kw::DATASET_LOGICAL), "DATASET LOGICAL: only a logical DBD (ACCESS=LOGICAL) has it");
        for (Kw k : {Kw::DATASET_DD1, Kw::DATASET_DD2, Kw::DATASET_OVFLW})
            if (ops.has(k)) diags_.error(ops.at(k), ops.name(k) + ": a logical DBD's DATASET names no data set");
        d_.logicalDataset = true;
        return;
    }
    if (d_.kind == "LOGICAL") {
        diags_.error(st.at, "DATASET: a logical DBD's dataset statement is DATASET LOGICAL");
        return;
    }
    if (ops.has(Kw::DATASET_REL)) {
        const Value* rel = ops.value(Kw::DATASET_REL);
        if (d_.kind != "MSDB") {
            diags_.error(ops.at(Kw::DATASET_REL), "DATASET REL: only an MSDB has a relation type");
        } else if (rel) {
            auto* m = kr::cast<_DSDBDmsdb>(d_.access.impl());
            std::string type = ops.textAt(Kw::DATASET_REL, rel->item(0)),
                        field = ops.textAt(Kw::DATASET_REL, rel->item(1));
            if (!type.empty()) m->_set_msdbType(type.c_str(), omStore);
            if (!field.empty()) m->_set_msdbField(field.c_str(), omStore);
        }
    }
    std::string dd = ops.text(Kw::DATASET_DD1);
    if (dd.empty()) {
        if (!ops.has(Kw::DATASET_REL)) ops.require(Kw::DATASET_DD1);
        return;
    }
    auto name = obtain<DSTARNDDname>(dd);
    name->_set_ddsName(dd.c_str(), omStore);
    auto ds = obtain<DSTARNDataset>(dd + ".DATASET");
    if (!st.label.empty()) ds->_set_datasetLabel(st.label.c_str(), omStore);
    auto shortOf = [&](Kw k, std::size_t pos, void (_DSTARNDataset::*set)(short, omSetProcessing)) {
        const Value* v = ops.value(k);
        if (!v) return;
        const KeywordRow& row = keywordRow(k);
        long lo = row.shape == Shape::Number ? row.lo : 0, hi = row.shape == Shape::Number ? row.hi : 32767;
        if (auto n = ops.numberAt(k, v->item(pos), lo, hi)) (ds.operator->()->*set)(static_cast<short>(*n), omStore);
    };
    shortOf(Kw::DATASET_SIZE, 0, &_DSTARNDataset::_set_size1);
    shortOf(Kw::DATASET_SIZE, 1, &_DSTARNDataset::_set_size2);
    shortOf(Kw::DATASET_SCAN, 0, &_DSTARNDataset::_set_scanCylinders);
    shortOf(Kw::DATASET_RECORD, 0, &_DSTARNDataset::_set_inputRecordLength);
    shortOf(Kw::DATASET_RECORD, 1, &_DSTARNDataset::_set_outputRecordLength);
    shortOf(Kw::DATASET_BLOCK, 0, &_DSTARNDataset::_set_primaryBlockingFactor);
    shortOf(Kw::DATASET_BLOCK, 1, &_DSTARNDataset::_set_overflowBlockingFactor);
    shortOf(Kw::DATASET_FRSPC, 0, &_DSTARNDataset::_set_freeBlockFrequency);
    shortOf(Kw::DATASET_FRSPC, 1, &_DSTARNDataset::_set_freeSpacePercentage);
    if (ops.has(Kw::DATASET_RECFM)) ds->_set_recordFormat(ops.text(Kw::DATASET_RECFM).c_str(), omStore);
    if (auto n = ops.number(Kw::DATASET_SEARCHA)) ds->_set_searchAlgorithm(static_cast<char>('0' + *n), omStore);
    Kw overflow = ops.has(Kw::DATASET_OVFLW) ? Kw::DATASET_OVFLW : Kw::DATASET_DD2;
    if (ops.has(Kw::DATASET_OVFLW) && ops.has(Kw::DATASET_DD2))
        diags_.error(ops.at(Kw::DATASET_DD2), "DATASET DD2: give either OVFLW or DD2");
    guarded(st.at, Stmt::DATASET, [&] {
        auto group = link<DSDSColl>(&d_.dbd, &name);
        if (ops.has(Kw::DATASET_DEVICE)) group->_set_dsDevice(ops.text(Kw::DATASET_DEVICE).c_str(), omStore);
        if (ops.has(Kw::DATASET_MODEL)) group->_set_dsModel(ops.text(Kw::DATASET_MODEL).c_str(), omStore);
        link<DSHasDataset>(&group, &ds);
        std::string o = ops.text(overflow);
        if (!o.empty()) {
            auto oname = obtain<DSTARNDDname>(o);
            oname->_set_ddsName(o.c_str(), omStore);
            link<DSHasOverflow>(&ds, &oname);
        }
    });
    d_.dataset = ds;
}

// A primary index LCHILD (POINTER=INDX with no XDFLD after it) takes effect
// when the segment, the next LCHILD or the DBD ends.
void Loader::closeSegment() {
    if (!d_.indexPending) return;
    d_.indexPending = false;
    if (d_.indexUsed) return;
    if (!kr::isa<_DSDBDhidam>(d_.access.impl())) {
        diags_.error(d_.indexAt,
                     "LCHILD: an index LCHILD without an XDFLD is a primary index, which only an HIDAM "
                     "or PHIDAM DBD has");
        return;
    }
    std::string indexDbd = d_.indexDbd;
    Location at = d_.indexAt;
    ADObject access = d_.access;
    deferred_.push_back([this, indexDbd, at, access]() mutable {
        _ADObject* target = findDbd(indexDbd);
        if (!target) return failedDbd(indexDbd) ? void() : diags_.error(at, "LCHILD NAME: no DBD named " + indexDbd);
        _ADObject* idx = indexAccessOf(target);
        if (!idx) return diags_.error(at, "LCHILD NAME: DBD " + indexDbd + " is not an index DBD");
        guarded(at, Stmt::LCHILD, [&] {
            auto hidam = as<DSDBDhidam>(access.impl());
            auto index = as<DSDBDindex>(idx);
            link<DSIndex>(&hidam, &index);
        });
    });
}

void Loader::endDbd(const Definition& def) {
    std::string text;
    for (const Statement* st : def.statements) text.append(st->operation).append(" ").append(st->source).append("\n");
    if (d_.name.empty()) return;
    auto first = dbdTexts_.find(d_.name);
    if (d_.repeated) {
        if (first->second.second == text)
            diags_.warning(d_.at, "DBD " + d_.name + ": defined again identically (first at " +
                                      where(first->second.first) + "); one definition is kept");
        else
            diags_.error(
                d_.at, "DBD " + d_.name + ": defined again differently (first at " + where(first->second.first) + ")");
        return;
    }
    if (first == dbdTexts_.end()) return;  // already in the repository
    first->second.second = std::move(text);
    if (d_.skip) return;
    closeSegment();
    if (d_.kind == "LOGICAL" && !d_.logicalDataset)
        diags_.warning(d_.at, "DBD " + d_.name + ": a logical DBD has a DATASET LOGICAL statement; none is given");
    // An HIDAM database's root sequence field is its root segment's sequence field.
    if (kr::isa<_DSDBDhidam>(d_.access.impl()) && !d_.rootSegment.isEmpty()) {
        auto root = as<DSSegment>(d_.rootSegment.impl());
        for (DSField* f = root->_getFirst_fields(); f; f = root->_getNext_fields())
            if ((*f)->_get_sequenceField()) {
                DSField seqField = *f;
                auto hidam = as<DSDBDhidam>(d_.access.impl());
                guarded(d_.at, Stmt::DBD, [&] { link<DSHasRootSequence>(&hidam, &seqField); });
                break;
            }
    }
}

}  // namespace krsource

// PsbStatements.cpp — a PSB definition into the model: PSBGEN's options, each
// PCB (database, GSAM or teleprocessing) with its type object, the DBD it is
// based on and its output destinations, the SENSEGs under a database PCB and
// the SENFLDs under a SENSEG. PSBs are built after every DBD of the load, so
// the DBDs they name may come from any deck.
#include "Loader.h"

#include <algorithm>
#include <unordered_set>

namespace krsource {

namespace {
// The text of a whole PSB definition, to tell one given again from one that differs.
std::string definitionText(const Definition& def) {
    std::string text;
    for (const Statement* st : def.statements) text.append(st->operation).append(" ").append(st->source).append("\n");
    return text.append("PSBGEN ").append(def.end->source).append("\n");
}
}  // namespace

void Loader::buildPsb(const Definition& def) {
    const Statement& gen = *def.end;
    here_ = gen.at;
    if (gen.broken) return;  // told; the PSB's name may not even be known
    Operands ops(gen, Stmt::PSBGEN, diags_);
    if (!ops.require(Kw::PSBGEN_PSBNAME)) return;
    std::string name = ops.text(Kw::PSBGEN_PSBNAME);
    std::string fullText = definitionText(def);
    if (auto first = psbTexts_.find(name); first != psbTexts_.end()) {
        if (first->second.second == fullText)
            diags_.warning(gen.at, "PSB " + name + ": defined again identically (first at " +
                                       where(first->second.first) + "); one definition is kept");
        else
            diags_.error(gen.at,
                         "PSB " + name + ": defined again differently (first at " + where(first->second.first) + ")");
        return;
    }
    psbTexts_.emplace(name, std::make_pair(gen.at, fullText));
    if (DSRegistrar::findObj("DSPSB", name.c_str(), version_.c_str())) {
        diags_.warning(gen.at, "PSB " + name + ": already in the repository in version " + version_ +
                                   "; the definition there is kept");
        return;
    }
    auto psb = obtain<DSPSB>(name);
    loadedPsbs_.emplace_back(gen.at, psb);
    psb->_set_strPSBName(name.c_str(), omStore);
    psb->_set_adName(name.c_str(), omStore);
    if (ops.has(Kw::PSBGEN_LANG)) psb->_set_language(ops.text(Kw::PSBGEN_LANG).c_str(), omStore);
    if (ops.has(Kw::PSBGEN_HPSBNAME)) psb->_set_hpPSBName(ops.text(Kw::PSBGEN_HPSBNAME).c_str(), omStore);
    if (auto v = ops.yesNo(Kw::PSBGEN_CMPAT)) psb->_set_compatibility(*v, omStore);
    if (auto v = ops.yesNo(Kw::PSBGEN_OLIC)) psb->_set_onlineImageCopy(*v, omStore);
    if (auto v = ops.yesNo(Kw::PSBGEN_WRTOP)) psb->_set_writeToOperator(*v, omStore);
    if (auto n = ops.number(Kw::PSBGEN_IOASIZE)) psb->_set_ioaSize(*n, omStore);
    if (auto n = ops.number(Kw::PSBGEN_SSASIZE)) psb->_set_ssaSize(*n, omStore);
    if (const Value* v = ops.value(Kw::PSBGEN_IOEROPN))
        if (auto n = ops.numberAt(Kw::PSBGEN_IOEROPN, v->item(0), 0, 32767))
            psb->_set_ioErrorOption(static_cast<short>(*n), omStore);
    if (auto n = ops.number(Kw::PSBGEN_LOCKMAX)) psb->_set_lockMaximum(static_cast<short>(*n), omStore);
    if (auto n = ops.number(Kw::PSBGEN_MAXQ)) psb->_set_maximumQxCalls(static_cast<unsigned short>(*n), omStore);

    int pcbNumber = 0, sensegCount = 0, senfldCount = 0;
    std::vector<std::pair<std::string, Location>> pcbNames;  // a PCB's name is unique within its PSB
    DSPCBdb dbType;                                          // the database PCB the SENSEGs belong to
    std::string dbdName;                                     // its DBD
    std::string qual;  // the PSB and the PCB's name or number: what qualifies the identities under it
    std::unordered_map<std::string, DSSenSegment> sensegs;
    std::unordered_set<std::string> failedSensegs;  // told once: SENSEGs under them stay quiet
    DSSenSegment senseg;                            // the last SENSEG
    std::string sensegName;
    // The statement opening a group failed, told now or before (a DBD or
    // segment it names failed): its members stay quiet.
    auto quietMembers = [&] { errorsAtOpener_ = diags_.errorCount() ? diags_.errorCount() - 1 : 0; };
    for (const Statement* stp : def.statements) {
        const Statement& st = *stp;
        here_ = st.at;
        const Stmt kind = st.kind;
        if (st.broken) {
            // Told: the members of a PCB or SENSEG that broke stay quiet.
            if (kind == Stmt::PCB || kind == Stmt::SENSEG) {
                quietMembers();
                senseg = DSSenSegment();
                if (kind == Stmt::PCB) dbType = DSPCBdb(), sensegs.clear(), failedSensegs.clear(), ++pcbNumber;
                if (kind == Stmt::SENSEG) failedSensegs.insert(operandText(st, "NAME"));
            }
            continue;
        }
        if (kind == Stmt::PCB) {
            errorsAtOpener_ = diags_.errorCount();
            Operands p(st, Stmt::PCB, diags_);
            if (++pcbNumber > kMaxPCBs)
                return diags_.error(st.at, "PCB: a PSB holds at most " + std::to_string(kMaxPCBs) + " PCBs");
            dbType = DSPCBdb();
            senseg = DSSenSegment();
            sensegs.clear();
            failedSensegs.clear();
            std::string type = p.has(Kw::PCB_TYPE) ? p.choice(Kw::PCB_TYPE) : "DB";
            if (type.empty()) continue;
            std::string pcbName = p.has(Kw::PCB_PCBNAME) ? p.text(Kw::PCB_PCBNAME) : st.label;
            Location nameAt = p.has(Kw::PCB_PCBNAME) ? p.valueAt(Kw::PCB_PCBNAME) : st.labelAt;
            if (!pcbName.empty()) {
                auto it = std::find_if(pcbNames.begin(), pcbNames.end(),
                                       [&](const auto& named) { return named.first == pcbName; });
                if (it != pcbNames.end()) {
                    diags_.error(nameAt, "PCB PCBNAME: PSB " + name + " names two PCBs " + pcbName + " (the first at " +
                                             where(it->second) + ")");
                    continue;
                }
                pcbNames.emplace_back(pcbName, nameAt);
            }
            std::string pcbId = name + ".PCB" + std::to_string(pcbNumber);
            qual = pcbName.empty() ? pcbId : name + "." + pcbName;
            auto pcb = obtain<DSPCB>(pcbId);
            if (!pcbName.empty()) {
                pcb->_set_strPCBAccessName(pcbName.c_str(), omStore);
                pcb->_set_adName(pcbName.c_str(), omStore);
            }
            if (auto v = p.yesNo(Kw::PCB_LIST)) pcb->_set_list(*v, omStore);
            guarded(st.at, Stmt::PCB, [&] {
                link<DSIncludesPCB>(&psb, &pcb);
                if (type == "TP") {
                    auto tp = obtain<DSPCBtp>(qual + ".TYPE");
                    tp->_set_strPCBtype("TP", omStore);
                    if (auto v = p.yesNo(Kw::PCB_ALTRESP)) tp->_set_alternateResponse(*v, omStore);
                    if (auto v = p.yesNo(Kw::PCB_EXPRESS)) tp->_set_express(*v, omStore);
                    if (auto v = p.yesNo(Kw::PCB_MODIFY)) tp->_set_modify(*v, omStore);
                    if (auto v = p.yesNo(Kw::PCB_SAMETRM)) tp->_set_sameTerminal(*v, omStore);
                    link<DSSpecifiedByType>(&pcb, &tp);
                    // NAME= a transaction code or terminal, LTERM= a logical terminal.
                    for (Kw key : {Kw::PCB_NAME, Kw::PCB_LTERM})
                        if (const Value* d = p.value(key))
                            for (std::size_t i = 0; i < d->size(); ++i) {
                                std::string lterm = p.textAt(key, d->item(i));
                                if (lterm.empty()) continue;
                                auto dest = obtain<DSOutputDest>(lterm);
                                dest->_set_ltermName(lterm.c_str(), omStore);
                                if (key == Kw::PCB_LTERM) dest->_set_destinationType("LTERM", omStore);
                                link<DSRefersTo>(&tp, &dest);
                            }
                    for (Kw key :
                         {Kw::PCB_DBDNAME, Kw::PCB_PROCOPT, Kw::PCB_KEYLEN, Kw::PCB_POS, Kw::PCB_PROCSEQ, Kw::PCB_SB})
                        if (p.has(key))
                            diags_.warning(p.at(key), p.name(key) + ": a TP PCB has no such operand; ignored");
                    return;
                }
                // The DBD: DBDNAME=, or NAME= as database PCBs also write it.
                Kw dbdKey = p.has(Kw::PCB_DBDNAME) ? Kw::PCB_DBDNAME : Kw::PCB_NAME;
                if (p.has(Kw::PCB_DBDNAME) && p.has(Kw::PCB_NAME))
                    return diags_.error(p.at(Kw::PCB_NAME), "PCB NAME: the DBD is named twice; give DBDNAME or NAME");
                if (!p.value(dbdKey))
                    return diags_.error(st.at,
                                        "PCB DBDNAME: required (the DBD the PCB is based on; NAME= also names it)");
                const Value* dbdValue = p.value(dbdKey);
                if (dbdValue->kind == Value::List && dbdValue->size() > 1)
                    return diags_.error(dbdValue->at, p.name(dbdKey) + ": one DBD is expected, not a sublist");
                _ADObject* dbd = dbdNamed(p, dbdKey, dbdValue);
                if (!dbd) return quietMembers();
                DSPCBbased based;
                if (type == "DB") {
                    dbType = obtain<DSPCBdb>(qual + ".TYPE");
                    based = DSPCBbased(dbType.operator->());
                    dbdName = p.textAt(dbdKey, dbdValue);
                    if (auto n = p.number(Kw::PCB_KEYLEN))
                        dbType->_set_keyLength(static_cast<unsigned short>(*n), omStore);
                    std::string pos = p.choice(Kw::PCB_POS);
                    if (!pos.empty()) dbType->_set_positioning(pos[0], omStore);
                    if (p.has(Kw::PCB_SB)) dbType->_set_sequentialBuffering(p.text(Kw::PCB_SB).c_str(), omStore);
                } else {
                    based = obtain<DSPCBbased>(qual + ".TYPE");
                    for (Kw key : {Kw::PCB_KEYLEN, Kw::PCB_POS, Kw::PCB_PROCSEQ, Kw::PCB_SB})
                        if (p.has(key))
                            diags_.warning(p.at(key), p.name(key) + ": a GSAM PCB has no such operand; ignored");
                }
                based->_set_strPCBtype(type.c_str(), omStore);
                if (p.has(Kw::PCB_PROCOPT)) based->_set_procoptPCB(p.text(Kw::PCB_PROCOPT).c_str(), omStore);
                link<DSSpecifiedByType>(&pcb, &based);
                auto base = as<DSDBD>(dbd);
                link<DSBasedOn>(&based, &base);
                if (type == "DB" && p.has(Kw::PCB_PROCSEQ)) {
                    _ADObject* idxDbd = dbdNamed(p, Kw::PCB_PROCSEQ, p.value(Kw::PCB_PROCSEQ));
                    _ADObject* idx = indexAccessOf(idxDbd);
                    if (idxDbd && !idx)
                        return diags_.error(p.valueAt(Kw::PCB_PROCSEQ),
                                            "PCB PROCSEQ: DBD " + p.text(Kw::PCB_PROCSEQ) + " is not an index DBD");
                    if (idx) {
                        auto index = as<DSDBDindex>(idx);
                        link<DSSequencedBy>(&dbType, &index);
                    }
                }
                for (Kw key : {Kw::PCB_LTERM, Kw::PCB_ALTRESP, Kw::PCB_EXPRESS, Kw::PCB_MODIFY, Kw::PCB_SAMETRM})
                    if (p.has(key)) diags_.warning(p.at(key), p.name(key) + ": only a TP PCB has it; ignored");
            });
        } else if (kind == Stmt::SENSEG) {
            bool quiet = openerFailed();
            errorsAtOpener_ = diags_.errorCount();
            Operands s(st, Stmt::SENSEG, diags_);
            if (dbType.isEmpty()) {
                if (!quiet) diags_.error(st.at, "SENSEG: no database PCB before it");
                senseg = DSSenSegment();
                errorsAtOpener_ = 0;  // an error was told: the SENFLDs under it stay quiet
                continue;
            }
            if (!s.require(Kw::SENSEG_NAME)) continue;
            if (++sensegCount > kMaxSensegs)
                return diags_.error(st.at, "SENSEG: a PSB holds at most " + std::to_string(kMaxSensegs) + " SENSEGs");
            std::string segName = s.text(Kw::SENSEG_NAME);
            if (sensegs.count(segName)) {
                diags_.error(s.valueAt(Kw::SENSEG_NAME), "SENSEG NAME: " + segName + " is sensitive twice in this PCB");
                continue;
            }
            _ADObject* target = segmentNamed(s, Kw::SENSEG_NAME, s.value(Kw::SENSEG_NAME), dbdName);
            if (!target) {
                failedSensegs.insert(segName);
                quietMembers();
                continue;
            }
            auto sense = obtain<DSSenSegment>(qual + "." + segName);
            sense->_set_strSensegName(segName.c_str(), omStore);
            if (s.has(Kw::SENSEG_PROCOPT)) sense->_set_procoptSENSEG(s.text(Kw::SENSEG_PROCOPT).c_str(), omStore);
            // SSPTR=((n,R|U),...): subset pointer n is R (retrieve) or U (update).
            void (_DSSenSegment::*setters[])(char, omSetProcessing) = {
                &_DSSenSegment::_set_subsetPointer1, &_DSSenSegment::_set_subsetPointer2,
                &_DSSenSegment::_set_subsetPointer3, &_DSSenSegment::_set_subsetPointer4,
                &_DSSenSegment::_set_subsetPointer5, &_DSSenSegment::_set_subsetPointer6,
                &_DSSenSegment::_set_subsetPointer7, &_DSSenSegment::_set_subsetPointer8};
            for (const Value* e : s.entries(Kw::SENSEG_SSPTR)) {
                auto n = s.numberAt(Kw::SENSEG_SSPTR, e->item(0), 1, 8);
                std::string mode = s.textAt(Kw::SENSEG_SSPTR, e->item(1));
                if (!n) continue;
                if (mode != "R" && mode != "U") {
                    diags_.error(e->at, "SENSEG SSPTR: (pointer,R|U) is expected");
                    continue;
                }
                (sense.operator->()->*setters[*n - 1])(mode[0], omStore);
            }
            guarded(st.at, Stmt::SENSEG, [&] {
                link<DSHasSensitive>(&dbType, &sense);
                auto seg = as<DSSegment>(target);
                link<DSMapsTo>(&sense, &seg);
                std::string parentName = s.text(Kw::SENSEG_PARENT);
                if (!parentName.empty() && parentName != "0") {
                    auto it = sensegs.find(parentName);
                    if (it == sensegs.end() && failedSensegs.count(parentName)) return;
                    if (it == sensegs.end())
                        return diags_.error(s.valueAt(Kw::SENSEG_PARENT),
                                            "SENSEG PARENT: no SENSEG " + parentName + " before it in this PCB");
                    link<DSHasParentSenseg>(&sense, &it->second);
                }
                if (const Value* ind = s.value(Kw::SENSEG_INDICES))
                    for (std::size_t i = 0; i < ind->size(); ++i) {
                        _ADObject* idxDbd = dbdNamed(s, Kw::SENSEG_INDICES, ind->item(i));
                        if (!idxDbd) continue;
                        _ADObject* idx = indexAccessOf(idxDbd);
                        if (!idx) {
                            diags_.error(ind->item(i)->at,
                                         "SENSEG INDICES: DBD " + ind->item(i)->text + " is not an index DBD");
                            continue;
                        }
                        auto index = as<DSDBDindex>(idx);
                        link<DSIndexedBy>(&sense, &index);
                    }
            });
            sensegs.emplace(segName, sense);
            senseg = sense;
            sensegName = segName;
        } else if (kind == Stmt::SENFLD) {
            Operands f(st, Stmt::SENFLD, diags_);
            if (senseg.isEmpty()) {
                if (!openerFailed()) diags_.error(st.at, "SENFLD: no SENSEG before it");
                continue;
            }
            if (!f.require(Kw::SENFLD_NAME)) continue;
            if (++senfldCount > kMaxSenflds)
                return diags_.error(st.at, "SENFLD: a PSB holds at most " + std::to_string(kMaxSenflds) + " SENFLDs");
            std::string fieldName = f.text(Kw::SENFLD_NAME);
            DSSegment* target = senseg->_getFirst_targetSegment();
            _ADObject* field =
                target ? fieldNamed(f, Kw::SENFLD_NAME, f.value(Kw::SENFLD_NAME), target->impl()) : nullptr;
            if (!field) continue;
            auto senfld = obtain<DSSenField>(qual + "." + sensegName + "." + fieldName);
            if (senfld->_get_sourceSENSEG()->count() > 0) {
                diags_.error(f.valueAt(Kw::SENFLD_NAME),
                             "SENFLD NAME: " + fieldName + " is sensitive twice in SENSEG " + sensegName);
                continue;
            }
            if (auto n = f.number(Kw::SENFLD_START))
                senfld->_set_startPosition(static_cast<unsigned short>(*n), omStore);
            if (auto v = f.yesNo(Kw::SENFLD_REPL)) senfld->_set_replace(*v, omStore);
            guarded(st.at, Stmt::SENFLD, [&] {
                link<DSUsesSENFLD>(&senseg, &senfld);
                auto fld = as<DSField>(field);
                link<DSUsedAsSENFLD>(&senfld, &fld);
            });
        }
        if (diags_.full()) return;
    }
}

}  // namespace krsource

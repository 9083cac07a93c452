// Facts.cpp — what the rules read of a definition, gathered in one walk through
// the model's roles: a DBD's segments in order with their parents, levels,
// fields and key lengths; a PSB's PCBs with their DBDs and SENSEGs.
#include <krmwtarn/check/Rules.h>

namespace krcheck {
namespace {
std::string str(const char* s) { return s ? std::string(s) : std::string(); }

// The organisation as ACCESS wrote it; for an access object made without it,
// the organisation its class stands for.
std::string organisationOf(_ADObject* access) {
    if (!access) return {};
    std::string written = str(static_cast<_DSDBDaccess*>(access)->_get_dliAccess());
    if (organisationNamed(written)) return written;
    if (access->isKindOf("DSDBDhidam")) return "HIDAM";
    if (access->isKindOf("DSDBDhdam")) return "HDAM";
    if (access->isKindOf("DSDBDdedb")) return "DEDB";
    if (access->isKindOf("DSDBDindex")) return "INDEX";
    if (access->isKindOf("DSDBDmsdb")) return "MSDB";
    return written;
}
}  // namespace

DbdFacts::DbdFacts(_DSDBD* d) : dbd(d), name(str(d->_get_strDBDName())) {
    access = firstFar(d->_get_dliAccess());
    organisation = organisationOf(access);
    org = organisationNamed(organisation);
    segments.reserve(static_cast<std::size_t>(d->_get_segments()->count()));
    for (const ADObject& l : *d->_get_segments()) {
        auto* s = static_cast<_DSSegment*>(farEnd(l, true));
        if (!s || segmentIndex.count(s)) continue;
        segmentIndex.emplace(s, static_cast<int>(segments.size()));
        SegmentFacts f{s, str(s->_get_strSegmentName()), {}, -1, 1, {}, 0};
        f.path = name + "/" + f.name;
        for (const ADObject& fl : *s->_get_fields()) {
            auto* field = static_cast<_DSField*>(farEnd(fl, true));
            if (!field) continue;
            std::string fieldName = str(field->_get_strFieldName());
            DSSDDAlias* alias = fieldName.empty() ? field->_getFirst_fldName() : nullptr;
            if (alias) fieldName = str((*alias)->_get_adName());
            f.fields.push_back({field, fieldName, krsource::fieldGeometry(field), alias != nullptr});
            if (field->_get_sequenceField() && !f.keyBytes) f.keyBytes = f.fields.back().geometry.bytes;
        }
        segments.push_back(std::move(f));
    }
    for (SegmentFacts& s : segments)
        if (_ADObject* p = firstFar(s.segment->_get_physicalParent())) {
            auto it = segmentIndex.find(p);
            if (it != segmentIndex.end()) s.parent = it->second;
        }
    // Levels and concatenated keys along the parents, bounded so that a cycle
    // of parents ends.
    for (SegmentFacts& s : segments) {
        s.concatenatedKey = s.keyBytes;
        for (int p = s.parent; p >= 0 && s.depth <= static_cast<int>(segments.size());
             p = segments[std::size_t(p)].parent) {
            ++s.depth;
            s.concatenatedKey += segments[std::size_t(p)].keyBytes;
        }
    }
}

PsbFacts::PsbFacts(_DSPSB* p) : psb(p), name(str(p->_get_strPSBName())) {
    std::unordered_map<const _DSDBD*, const DbdFacts*> known;
    int number = 0;
    for (const ADObject& l : *p->_get_listPCBs()) {
        auto* pcb = static_cast<_DSPCB*>(farEnd(l, true));
        ++number;
        if (!pcb) continue;
        PcbFacts f{pcb, {}, {}, nullptr, nullptr, nullptr, nullptr, {}};
        std::string pcbName = str(pcb->_get_strPCBAccessName());
        f.path = name + "/" + (pcbName.empty() ? "PCB" + std::to_string(number) : pcbName);
        _ADObject* type = firstFar(pcb->_get_typeOfPCB());
        if (type && type->isKindOf("DSPCBtp")) {
            f.kind = "TP";
        } else if (type && type->isKindOf("DSPCBbased")) {
            f.based = static_cast<_DSPCBbased*>(type);
            f.kind = type->isKindOf("DSPCBdb") ? "DB" : str(f.based->_get_strPCBtype());
            f.dbd = firstFar<_DSDBD>(f.based->_get_baseDBD());
            if (f.dbd) {
                auto [it, fresh] = known.emplace(f.dbd, nullptr);
                if (fresh) {
                    dbds_.push_back(std::make_unique<DbdFacts>(f.dbd));
                    it->second = dbds_.back().get();
                }
                f.dbdFacts = it->second;
            }
        }
        if (f.kind == "DB") {
            auto* db = static_cast<_DSPCBdb*>(type);
            f.procseq = firstFar<_DSDBDindex>(db->_get_procseq());
            std::unordered_map<const _ADObject*, int> index;
            for (const ADObject& sl : *db->_get_senseg()) {
                auto* s = static_cast<_DSSenSegment*>(farEnd(sl, true));
                if (!s) continue;
                index.emplace(s, static_cast<int>(f.sensegs.size()));
                SensegFacts sf{s, str(s->_get_strSensegName()), {}, firstFar<_DSSegment>(s->_get_targetSegment()), -1,
                               {}};
                sf.path = f.path + "/" + sf.name;
                if (_ADObject* parent = firstFar(s->_get_parentSenseg())) {
                    auto it = index.find(parent);
                    if (it != index.end()) sf.parent = it->second;
                }
                for (const ADObject& fl : *s->_get_senflds())
                    if (auto* senfld = static_cast<_DSSenField*>(farEnd(fl, true))) sf.senflds.push_back(senfld);
                f.sensegs.push_back(std::move(sf));
            }
        }
        pcbs.push_back(std::move(f));
    }
}

}  // namespace krcheck

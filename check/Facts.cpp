// Facts.cpp — what the rules read of a definition, gathered in one walk through
// the model's roles: a DBD's segments in order with their parents, levels,
// fields and key lengths; a PSB's PCBs with their DBDs and SENSEGs.
#include <krmwtarn/check/Rules.h>

#include <krmwtarn/model/framework/Navigation.h>

namespace krcheck {
namespace {
std::string str(const char* s) { return s ? std::string(s) : std::string(); }

// The organisation as ACCESS wrote it; for an access object made without it,
// the organisation its class stands for.
std::string organisationOf(_DSDBDaccess* access) {
    if (!access) return {};
    std::string written = str(access->_get_dliAccess());
    if (organisationNamed(written)) return written;
    if (kr::isa<_DSDBDhidam>(access)) return "HIDAM";
    if (kr::isa<_DSDBDhdam>(access)) return "HDAM";
    if (kr::isa<_DSDBDdedb>(access)) return "DEDB";
    if (kr::isa<_DSDBDindex>(access)) return "INDEX";
    if (kr::isa<_DSDBDmsdb>(access)) return "MSDB";
    return written;
}
}  // namespace

DbdFacts::DbdFacts(_DSDBD* d) : dbd(d), name(str(d->_get_strDBDName())) {
    access = kr::targetsOf<DSDefinedByAccess>(d->_get_dliAccess()).first();
    organisation = organisationOf(access);
    org = organisationNamed(organisation);
    segments.reserve(static_cast<std::size_t>(d->_get_segments()->count()));
    for (_DSSegment* s : kr::targetsOf<DSContainsSegment>(d->_get_segments())) {
        if (segmentIndex.count(s)) continue;
        segmentIndex.emplace(s, static_cast<int>(segments.size()));
        SegmentFacts f{s, str(s->_get_strSegmentName()), {}, -1, 1, {}, 0};
        f.path = name + "/" + f.name;
        for (_DSField* field : kr::targetsOf<DSHasField>(s->_get_fields())) {
            std::string fieldName = str(field->_get_strFieldName());
            DSSDDAlias* alias = fieldName.empty() ? field->_getFirst_fldName() : nullptr;
            if (alias) fieldName = str((*alias)->_get_adName());
            f.fields.push_back({field, fieldName, krsource::fieldGeometry(field), alias != nullptr});
            if (field->_get_sequenceField() && !f.keyBytes) f.keyBytes = f.fields.back().geometry.bytes;
        }
        segments.push_back(std::move(f));
    }
    for (SegmentFacts& s : segments)
        if (_DSSegment* p = kr::targetsOf<DSParent>(s.segment->_get_physicalParent()).first()) {
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
        // Unnamed PCBs are numbered by their place in the list, a link whose PCB is gone included.
        _DSPCB* pcb = kr::cast<_DSIncludesPCB>(l.impl())->_get_target()->operator->();
        ++number;
        if (!pcb) continue;
        PcbFacts f{pcb, {}, {}, nullptr, nullptr, nullptr, nullptr, {}};
        std::string pcbName = str(pcb->_get_strPCBAccessName());
        f.path = name + "/" + (pcbName.empty() ? "PCB" + std::to_string(number) : pcbName);
        _DSPCBtype* type = kr::targetsOf<DSSpecifiedByType>(pcb->_get_typeOfPCB()).first();
        if (kr::isa<_DSPCBtp>(type)) {
            f.kind = "TP";
        } else if ((f.based = kr::dyn_cast<_DSPCBbased>(type))) {
            f.kind = kr::isa<_DSPCBdb>(type) ? "DB" : str(f.based->_get_strPCBtype());
            f.dbd = kr::targetsOf<DSBasedOn>(f.based->_get_baseDBD()).first();
            if (f.dbd) {
                auto [it, fresh] = known.emplace(f.dbd, nullptr);
                if (fresh) {
                    dbds_.push_back(std::make_unique<DbdFacts>(f.dbd));
                    it->second = dbds_.back().get();
                }
                f.dbdFacts = it->second;
            }
        }
        if (auto* db = kr::dyn_cast<_DSPCBdb>(type)) {
            f.procseq = kr::targetsOf<DSSequencedBy>(db->_get_procseq()).first();
            std::unordered_map<const _ADObject*, int> index;
            for (_DSSenSegment* s : kr::targetsOf<DSHasSensitive>(db->_get_senseg())) {
                index.emplace(s, static_cast<int>(f.sensegs.size()));
                SensegFacts sf{s,  str(s->_get_strSensegName()),
                               {}, kr::targetsOf<DSMapsTo>(s->_get_targetSegment()).first(),
                               -1, {}};
                sf.path = f.path + "/" + sf.name;
                if (_DSSenSegment* parent = kr::targetsOf<DSHasParentSenseg>(s->_get_parentSenseg()).first()) {
                    auto it = index.find(parent);
                    if (it != index.end()) sf.parent = it->second;
                }
                for (_DSSenField* senfld : kr::targetsOf<DSUsesSENFLD>(s->_get_senflds())) sf.senflds.push_back(senfld);
                f.sensegs.push_back(std::move(sf));
            }
        }
        pcbs.push_back(std::move(f));
    }
}

}  // namespace krcheck

// Geometries.h — every field's geometry of some loaded DBDs as text, keyed by
// DBD, segment and field name ("HOSPDBD/PATIENT/PATNO" -> "1,8,P"), so two
// loads, or a load and a retrieve, compare as one map.
#pragma once

#include <krmwtarn/source/FieldGeometry.h>

#include <map>
#include <string>
#include <vector>

namespace decktest {

inline std::map<std::string, std::string> geometries(const std::vector<DSDBD>& dbds) {
    std::map<std::string, std::string> out;
    for (const DSDBD& d : dbds)
        for (DSSegment* s = d->_getFirst_segments(); s; s = d->_getNext_segments())
            for (DSField* f = (*s)->_getFirst_fields(); f; f = (*s)->_getNext_fields()) {
                krsource::FieldGeometry g = krsource::fieldGeometry(f->operator->());
                if (!g.known()) continue;
                out[std::string(d->_get_strDBDName()) + "/" + (*s)->_get_strSegmentName() + "/" +
                    (*f)->_get_strFieldName()] = std::to_string(g.start) + "," + std::to_string(g.bytes) + "," + g.type;
            }
    return out;
}

}  // namespace decktest

// FieldGeometry.h — a field's place in its segment as the model keeps it: the
// offset in the data item the field uses (DSMakesUseOf), the length and type in
// that item's type definition (DSLinkDataItm2DataDef). Read once here for the
// deck writer and for whoever checks definitions.
#pragma once

#include <krmwtarn/platform/common/Export.h>

#include <krmwtarn/krmwtarn.h>

#include <string>

namespace krsource {

// The type a field has when its deck names none.
inline constexpr const char* kDefaultFieldType = "C";

struct KRMWTARN_API FieldGeometry {
    long start = 0;    // START: the first byte, from 1; 0 when not given
    long bytes = 0;    // BYTES: the length; 0 when not given
    std::string type;  // TYPE: one letter; empty when the field has no geometry
    bool known() const noexcept { return start || bytes || !type.empty(); }
};

// The field's geometry; all unset when it uses no data item.
KRMWTARN_API FieldGeometry fieldGeometry(_DSField* field);

}  // namespace krsource

// FieldGeometry.cpp — a field's offset, length and type, read from the data
// item it uses and that item's type definition.
#include <krmwtarn/source/FieldGeometry.h>

namespace krsource {
namespace {
// The far end of the first link in a role, on the far side given by `atSource`.
_ADObject* firstFar(DSModelCollection* role, bool atSource) {
    for (const ADObject& l : *role) {
        auto* link = static_cast<_KRLink*>(l.impl());
        ADObject* far = atSource ? link->_get_target() : link->_get_source();
        if (far && !far->isEmpty()) return far->impl();
    }
    return nullptr;
}
}  // namespace

FieldGeometry fieldGeometry(_DSField* field) {
    FieldGeometry g;
    auto* item = static_cast<_DSDataItem*>(firstFar(field->_get_targetDataItem(), true));
    if (!item) return g;
    g.start = item->_get_offset();
    if (auto* def = static_cast<_DSSimpleTypeDef*>(firstFar(item->_get_dataDef(), true))) {
        g.bytes = def->_get_length();
        g.type = def->_get_dataType();
    }
    return g;
}

}  // namespace krsource

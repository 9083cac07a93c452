// FieldGeometry.cpp — a field's offset, length and type, read from the data
// item it uses and that item's type definition.
#include <krmwtarn/source/FieldGeometry.h>

#include <krmwtarn/model/framework/Navigation.h>

namespace krsource {

FieldGeometry fieldGeometry(_DSField* field) {
    FieldGeometry g;
    _DSDataItem* item = kr::targetsOf<DSMakesUseOf>(field->_get_targetDataItem()).first();
    if (!item) return g;
    g.start = item->_get_offset();
    if (_DSSimpleTypeDef* def = kr::targetsOf<DSLinkDataItm2DataDef>(item->_get_dataDef()).first()) {
        g.bytes = def->_get_length();
        g.type = def->_get_dataType();
    }
    return g;
}

}  // namespace krsource

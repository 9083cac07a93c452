// DSTypeDefLink.h — the data dictionary's link from a data item to its type
// definition (DSLinkDataItm2DataDef), made by the model's link pattern from its
// row of the dictionary's catalogue DictionaryLinks.def. A field's geometry
// lives there: the item's offset, the type definition's length and type.
#pragma once

#include <krmwtarn/model/framework/KRLink.h>
#include <krmwtarn/model/framework/ObjectClass.h>
#include <krmwtarn/platform/dictionary/DSDictionary.h>
#include <krmwtarn/platform/repository/DSRegistration.h>

class DSLinkDataItm2DataDef;
class _DSLinkDataItm2DataDef;

namespace kr {
template <>
struct LinkRow<DSLinkDataItm2DataDef> {
    using Impl = _DSLinkDataItm2DataDef;
    using Source = DSDataItem;
    using Target = DSSimpleTypeDef;
    static constexpr ADLinkFacts facts = adDictionaryLink("DSLinkDataItm2DataDef");
    static constexpr bool ordered = (facts.endFlags[krSource] & adFlagOrdered) != 0;
};
}  // namespace kr

KR_DECLARE_LINK_HANDLE(DSLinkDataItm2DataDef, DSDataItem, DSSimpleTypeDef)
KR_DECLARE_LINK_IMPL(DSLinkDataItm2DataDef)
KR_DEFINE_ARROW(DSLinkDataItm2DataDef)

// The record of the dictionary links the model makes (class table and
// factory), registered when the library loads.
KRMWTARN_API DSRegistration& DSDictionary_madeLinks();

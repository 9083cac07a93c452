// DSSource.h — the ordered source link of a logical segment, with the SOURCE operands.
// Its own rows are in DSSource.def; its ends in the catalogue links.def.
#pragma once

#include "model/links/DSLinks.h"

class _DSSource final : public KRLinkImpl<DSSource> {
    KR_LINK_IMPL_MEMBERS(DSSource)
#define KR_CLASS DSSource
#define KR_ROWS "model/links/DSSource.def"
#include "model/framework/RowsBody.inc"

    // Operation without behaviour in this model.
    char* writeSOURCE();
};
KR_DEFINE_ARROW(DSSource)

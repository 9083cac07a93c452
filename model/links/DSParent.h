// DSParent.h — the physical parent link: a child segment (source) and its parent (target), with the PARENT operands.
// Its own rows are in DSParent.def; its ends in the catalogue links.def.
#pragma once

#include "model/links/DSLinks.h"

class _DSParent final : public KRLinkImpl<DSParent> {
    KR_LINK_IMPL_MEMBERS(DSParent)
#define KR_CLASS DSParent
#define KR_ROWS "model/links/DSParent.def"
#include "model/framework/RowsBody.inc"

    // Operation without behaviour in this model.
    char* writePARENT();
};
KR_DEFINE_ARROW(DSParent)

// DSLChild.h — the logical child link (LCHILD): a DSSegmentComplex logical parent (source) and its logical child (target), with the LCHILD operands; the source of DSHasPair.
// Its own rows are in DSLChild.def; its ends in the catalogue links.def.
#pragma once

#include "model/links/DSLinks.h"

class _DSLChild final : public KRLinkImpl<DSLChild> {
    KR_LINK_IMPL_MEMBERS(DSLChild)
#define KR_CLASS DSLChild
#define KR_ROWS "model/links/DSLChild.def"
#include "model/framework/RowsBody.inc"

    // Operations without behaviour in this model.
    int validateStatement(KVException* messages);
    DSmacro& writeLCHILD();
    char* writeLPARENT();
};
KR_DEFINE_ARROW(DSLChild)

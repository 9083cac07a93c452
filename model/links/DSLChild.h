// DSLChild.h — the logical child link (LCHILD): a DSSegmentComplex logical parent (source) and its logical child
// (target), with the LCHILD operands; the source of DSHasPair. Its own rows are in DSLChild.def; its ends in the
// catalogue links.def.
#pragma once

#include <krmwtarn/platform/common/Export.h>

#include <krmwtarn/model/links/DSLinks.h>

class KRMWTARN_API _DSLChild final : public KRLinkImpl<DSLChild> {
    KR_LINK_IMPL_MEMBERS(DSLChild)
#define KR_CLASS DSLChild
#define KR_ROWS "krmwtarn/model/links/DSLChild.def"
#include <krmwtarn/model/framework/RowsBody.inc>

    // Operations without behaviour in this model.
    int validateStatement(KVException* messages);
    DSmacro& writeLCHILD();
    char* writeLPARENT();
};
KR_DEFINE_ARROW(DSLChild)

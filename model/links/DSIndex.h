// DSIndex.h — the primary index link of a HIDAM DBD: the HIDAM access object
// (source) and its index DBD (target), one-to-one. It carries no attributes,
// only two operations without behaviour.
#pragma once

#include "model/links/DSLinks.h"

class _DSIndex final : public KRLinkImpl<DSIndex> {
    KR_LINK_IMPL_MEMBERS(DSIndex)
    static ADAttributeEntry krTable[];

    // Operations without behaviour in this model.
    DSmacro& writeINDEX();
    DSmacro& writeLCHILD();
};
KR_DEFINE_ARROW(DSIndex)

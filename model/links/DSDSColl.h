// DSDSColl.h — a DBD's dataset group, ordered in the DBD's role, joined to a DD name; the source of DSHasArea and DSHasDataset.
// Its own rows are in DSDSColl.def; its ends in the catalogue links.def.
#pragma once

#include "model/links/DSLinks.h"

class _DSDSColl final : public KRLinkImpl<DSDSColl> {
    KR_LINK_IMPL_MEMBERS(DSDSColl)
#define KR_CLASS DSDSColl
#define KR_ROWS "model/links/DSDSColl.def"
#include "model/framework/RowsBody.inc"

    // Operations without behaviour in this model.
    unsigned short getSize();
    int invalidDDName(char* ddName);
    unsigned long maximumBlock(char* device);
    unsigned long maximumTrack();
    int validateDATASET(KVException* messages, char* dbdName, int options);
};
KR_DEFINE_ARROW(DSDSColl)

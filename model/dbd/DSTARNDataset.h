// DSTARNDataset.h — a dataset of a full-function database, hung off a DSDSColl link through DSHasDataset.
// Its superclass is its row in classes.def; its attributes and roles are its
// rows in DSTARNDataset.def: each row gives a member, _get_/_set_ accessors
// (attributes) or _get_/_getFirst_/_getNext_ accessors (roles), a table row
// and a change bit, in row order.
#pragma once

#include "model/framework/ObjectClass.h"
#include "model/framework/ObjectClass.h"

KR_DECLARE_HANDLE(DSTARNDataset)

class _DSTARNDataset : public kr::SuperImpl<DSTARNDataset> {
#define KR_CLASS DSTARNDataset
#define KR_ROWS "model/dbd/DSTARNDataset.def"
#include "model/framework/ObjectBody.inc"

    // Declared operations without behaviour in this model: they change
    // nothing and answer zero, null or the shared empty statement.
    int validateDATASET(KVException* messages, char* dbdName, char* ddName, int options);
    DSmacro& writeDATASET();
};

KR_DEFINE_ARROW(DSTARNDataset)

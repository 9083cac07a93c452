// DSXDFLD.h — a secondary-index field of a full-function segment: search, subsequence and duplicate-data fields, index source and target index DBD.
// Its superclass is its row in classes.def; its attributes and roles are its
// rows in DSXDFLD.def: each row gives a member, _get_/_set_ accessors
// (attributes) or _get_/_getFirst_/_getNext_ accessors (roles), a table row
// and a change bit, in row order.
#pragma once

#include "model/framework/ObjectClass.h"
#include "model/framework/ObjectClass.h"

KR_DECLARE_HANDLE(DSXDFLD)

class _DSXDFLD : public kr::SuperImpl<DSXDFLD> {
#define KR_CLASS DSXDFLD
#define KR_ROWS "model/dbd/DSXDFLD.def"
#include "model/framework/ObjectBody.inc"

    // Declared operations without behaviour in this model: they change
    // nothing and answer zero, null or the shared empty statement.
    int validateINDEX(KVException* messages);
    DSmacro& writeLCHILD();
    DSmacro& writeXDFLD();
};

KR_DEFINE_ARROW(DSXDFLD)

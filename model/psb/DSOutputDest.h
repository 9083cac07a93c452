// DSOutputDest.h — an output destination that terminal PCBs refer to.
// Its superclass is its row in classes.def; its attributes and roles are its
// rows in DSOutputDest.def: each row gives a member, _get_/_set_ accessors
// (attributes) or _get_/_getFirst_/_getNext_ accessors (roles), a table row
// and a change bit, in row order.
#pragma once

#include "model/framework/ObjectClass.h"
#include "model/framework/ObjectClass.h"

KR_DECLARE_HANDLE(DSOutputDest)

class _DSOutputDest : public kr::SuperImpl<DSOutputDest> {
#define KR_CLASS DSOutputDest
#define KR_ROWS "model/psb/DSOutputDest.def"
#include "model/framework/ObjectBody.inc"

    // Declared operations without behaviour in this model: they change
    // nothing and answer zero, null or the shared empty statement.
    char* writeKeyword();
};

KR_DEFINE_ARROW(DSOutputDest)

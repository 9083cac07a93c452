// DSExit.h — a data-capture exit attached to a DBD or to segments.
// Its superclass is its row in classes.def; its attributes and roles are its
// rows in DSExit.def: each row gives a member, _get_/_set_ accessors
// (attributes) or _get_/_getFirst_/_getNext_ accessors (roles), a table row
// and a change bit, in row order.
#pragma once

#include "model/framework/ObjectClass.h"
#include "model/framework/ObjectClass.h"

KR_DECLARE_HANDLE(DSExit)

class _DSExit : public kr::SuperImpl<DSExit> {
#define KR_CLASS DSExit
#define KR_ROWS "model/dbd/DSExit.def"
#include "model/framework/ObjectBody.inc"

    // Declared operations without behaviour in this model: they change
    // nothing and answer zero, null or the shared empty statement.
    int validateEXIT(KVException* messages);
    char* writeEXIT();
};

KR_DEFINE_ARROW(DSExit)

// DSArea.h — an area of a DEDB, hung off a DSDSColl link through DSHasArea.
// Its superclass is its row in classes.def; its attributes and roles are its
// rows in DSArea.def: each row gives a member, _get_/_set_ accessors
// (attributes) or _get_/_getFirst_/_getNext_ accessors (roles), a table row
// and a change bit, in row order.
#pragma once

#include "model/framework/ObjectClass.h"
#include "model/framework/ObjectClass.h"

KR_DECLARE_HANDLE(DSArea)

class _DSArea : public kr::SuperImpl<DSArea> {
#define KR_CLASS DSArea
#define KR_ROWS "model/dbd/DSArea.def"
#include "model/framework/ObjectBody.inc"

    // Declared operations without behaviour in this model: they change
    // nothing and answer zero, null or the shared empty statement.
    int validateAREA(KVException* messages, char* dbdName);
    DSmacro& writeAREA();
};

KR_DEFINE_ARROW(DSArea)

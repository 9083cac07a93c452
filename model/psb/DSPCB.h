// DSPCB.h — a program communication block: one access path of a PSB, typed through DSSpecifiedByType.
// Its superclass is its row in classes.def; its attributes and roles are its
// rows in DSPCB.def: each row gives a member, _get_/_set_ accessors
// (attributes) or _get_/_getFirst_/_getNext_ accessors (roles), a table row
// and a change bit, in row order.
#pragma once

#include "model/framework/ObjectClass.h"
#include "platform/techobj/DSTechnologyObject.h"

KR_DECLARE_HANDLE(DSPCB)

class _DSPCB : public kr::SuperImpl<DSPCB> {
#define KR_CLASS DSPCB
#define KR_ROWS "model/psb/DSPCB.def"
#include "model/framework/ObjectBody.inc"

    // Declared operations without behaviour in this model: they change
    // nothing and answer zero, null or the shared empty statement.
    char* getName();
    char* getPCBtypeString();
    int getProcoptFlag();
    int isUsed();
    int validatePCB(char** messages);
    char* writePCBasSource(int options, char* buffer);
};

KR_DEFINE_ARROW(DSPCB)

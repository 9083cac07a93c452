// DSTARNDDname.h — a DD name implementing DBDs; the physical description hangs off the DSDSColl link to it.
// Its superclass is its row in classes.def; its attributes and roles are its
// rows in DSTARNDDname.def: each row gives a member, _get_/_set_ accessors
// (attributes) or _get_/_getFirst_/_getNext_ accessors (roles), a table row
// and a change bit, in row order.
#pragma once

#include "model/framework/ObjectClass.h"
#include "model/framework/ObjectClass.h"

KR_DECLARE_HANDLE(DSTARNDDname)

class _DSTARNDDname : public kr::SuperImpl<DSTARNDDname> {
#define KR_CLASS DSTARNDDname
#define KR_ROWS "model/dbd/DSTARNDDname.def"
#include "model/framework/ObjectBody.inc"
};

KR_DEFINE_ARROW(DSTARNDDname)

// DSTARNDDname.h — a DD name implementing DBDs; the physical description hangs off the DSDSColl link to it.
// The class's attributes and roles are its rows in DSTARNDDname.def; each row gives a
// member, _get_/_set_ accessors (attributes) or _get_/_getFirst_/_getNext_
// accessors (roles), a table row and a change bit, in row order.
#pragma once

#include "model/framework/ObjectClass.h"
#include "model/framework/ObjectClass.h"

#define KR_ROWS "model/dbd/DSTARNDDname.def"
#include "model/framework/ForwardDeclare.inc"

KR_DECLARE_HANDLE(DSTARNDDname, ADObject)

class _DSTARNDDname : public _ADObject {
#define KR_CLASS DSTARNDDname
#define KR_BASE _ADObject
#include "model/framework/ObjectBody.inc"
};

KR_DEFINE_ARROW(DSTARNDDname)

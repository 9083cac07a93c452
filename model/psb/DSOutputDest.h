// DSOutputDest.h — an output destination that terminal PCBs refer to.
// The class's attributes and roles are its rows in DSOutputDest.def; each row gives a
// member, _get_/_set_ accessors (attributes) or _get_/_getFirst_/_getNext_
// accessors (roles), a table row and a change bit, in row order.
#pragma once

#include "model/framework/ObjectClass.h"
#include "model/framework/ObjectClass.h"

#define KR_ROWS "model/psb/DSOutputDest.def"
#include "model/framework/ForwardDeclare.inc"

KR_DECLARE_HANDLE(DSOutputDest, ADObject)

class _DSOutputDest : public _ADObject {
#define KR_CLASS DSOutputDest
#define KR_BASE _ADObject
#include "model/framework/ObjectBody.inc"

    // Declared operations without behaviour in this model: they change
    // nothing and answer zero, null or the shared empty statement.
    char* writeKeyword();
};

KR_DEFINE_ARROW(DSOutputDest)

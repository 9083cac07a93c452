// DSCompRoutine.h — the compression routine of one segment.
// Its superclass is its row in classes.def; its attributes and roles are its
// rows in DSCompRoutine.def: each row gives a member, _get_/_set_ accessors
// (attributes) or _get_/_getFirst_/_getNext_ accessors (roles), a table row
// and a change bit, in row order.
#pragma once

#include "model/framework/ObjectClass.h"
#include "model/framework/ObjectClass.h"

KR_DECLARE_HANDLE(DSCompRoutine)

class _DSCompRoutine : public kr::SuperImpl<DSCompRoutine> {
#define KR_CLASS DSCompRoutine
#define KR_ROWS "model/dbd/DSCompRoutine.def"
#include "model/framework/ObjectBody.inc"
};

KR_DEFINE_ARROW(DSCompRoutine)

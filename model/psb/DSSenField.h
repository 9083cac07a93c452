// DSSenField.h — a sensitive field (SENFLD) of a SENSEG, mapped onto a field.
// Its superclass is its row in classes.def; its attributes and roles are its
// rows in DSSenField.def: each row gives a member, _get_/_set_ accessors
// (attributes) or _get_/_getFirst_/_getNext_ accessors (roles), a table row
// and a change bit, in row order.
#pragma once

#include "model/framework/ObjectClass.h"
#include "model/framework/ObjectClass.h"

KR_DECLARE_HANDLE(DSSenField)

class _DSSenField : public kr::SuperImpl<DSSenField> {
#define KR_CLASS DSSenField
#define KR_ROWS "model/psb/DSSenField.def"
#include "model/framework/ObjectBody.inc"

    // Declared operations without behaviour in this model: they change
    // nothing and answer zero, null or the shared empty statement.
    int validateSENFLD(KVException* messages);
    DSmacro& writeSENFLD();
};

KR_DEFINE_ARROW(DSSenField)

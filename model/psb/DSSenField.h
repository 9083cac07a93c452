// DSSenField.h — a sensitive field (SENFLD) of a SENSEG, mapped onto a field.
// The class's attributes and roles are its rows in DSSenField.def; each row gives a
// member, _get_/_set_ accessors (attributes) or _get_/_getFirst_/_getNext_
// accessors (roles), a table row and a change bit, in row order.
#pragma once

#include "model/framework/ObjectClass.h"
#include "model/framework/ObjectClass.h"

#define KR_ROWS "model/psb/DSSenField.def"
#include "model/framework/ForwardDeclare.inc"

KR_DECLARE_HANDLE(DSSenField, ADObject)

class _DSSenField : public _ADObject {
#define KR_CLASS DSSenField
#define KR_BASE _ADObject
#include "model/framework/ObjectBody.inc"

    // Declared operations without behaviour in this model: they change
    // nothing and answer zero, null or the shared empty statement.
    int validateSENFLD(KVException* messages);
    DSmacro& writeSENFLD();
};

KR_DEFINE_ARROW(DSSenField)

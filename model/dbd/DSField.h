// DSField.h — a field of a segment, with its ties to the data dictionary, SENFLDs, XDFLDs and a HIDAM root sequence.
// The class's attributes and roles are its rows in DSField.def; each row gives a
// member, _get_/_set_ accessors (attributes) or _get_/_getFirst_/_getNext_
// accessors (roles), a table row and a change bit, in row order.
#pragma once

#include "model/framework/ObjectClass.h"
#include "model/framework/ObjectClass.h"

#define KR_ROWS "model/dbd/DSField.def"
#include "model/framework/ForwardDeclare.inc"

KR_DECLARE_HANDLE(DSField, ADObject)

class _DSField : public _ADObject {
#define KR_CLASS DSField
#define KR_BASE _ADObject
#include "model/framework/ObjectBody.inc"

    // Declared operations without behaviour in this model: they change
    // nothing and answer zero, null or the shared empty statement.
    char* getName();
    int validateFIELD(KVException* messages, char* segmentName);
    DSmacro& writeFIELD();
};

KR_DEFINE_ARROW(DSField)

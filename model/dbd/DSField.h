// DSField.h — a field of a segment, with its ties to the data dictionary, SENFLDs, XDFLDs and a HIDAM root sequence.
// Its superclass is its row in classes.def; its attributes and roles are its
// rows in DSField.def: each row gives a member, _get_/_set_ accessors
// (attributes) or _get_/_getFirst_/_getNext_ accessors (roles), a table row
// and a change bit, in row order.
#pragma once

#include "model/framework/ObjectClass.h"
#include "model/framework/ObjectClass.h"

KR_DECLARE_HANDLE(DSField)

class _DSField : public kr::SuperImpl<DSField> {
#define KR_CLASS DSField
#define KR_ROWS "model/dbd/DSField.def"
#include "model/framework/ObjectBody.inc"

    // Declared operations without behaviour in this model: they change
    // nothing and answer zero, null or the shared empty statement.
    char* getName();
    int validateFIELD(KVException* messages, char* segmentName);
    DSmacro& writeFIELD();
};

KR_DEFINE_ARROW(DSField)

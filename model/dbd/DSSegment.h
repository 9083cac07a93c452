// DSSegment.h — a segment: one record type in the hierarchy of a DBD, with its fields, exits, compression routine and physical parent and children.
// Its superclass is its row in classes.def; its attributes and roles are its
// rows in DSSegment.def: each row gives a member, _get_/_set_ accessors
// (attributes) or _get_/_getFirst_/_getNext_ accessors (roles), a table row
// and a change bit, in row order.
#pragma once

#include "model/framework/ObjectClass.h"
#include "model/framework/ObjectClass.h"

KR_DECLARE_HANDLE(DSSegment)

class _DSSegment : public kr::SuperImpl<DSSegment> {
#define KR_CLASS DSSegment
#define KR_ROWS "model/dbd/DSSegment.def"
#include "model/framework/ObjectBody.inc"

    // Declared operations without behaviour in this model: they change
    // nothing and answer zero, null or the shared empty statement.
    virtual char* getName();
    virtual unsigned long realLength();
    virtual int validateSEGM(KVException* messages, unsigned short level, char* dbdName);
    virtual DSmacro& writeSEGM();
    DSModelCollection* getNormalFields();
    DSModelCollection* getSequenceFields();
    void renameAliases();
};

KR_DEFINE_ARROW(DSSegment)

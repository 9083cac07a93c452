// DSDBD.h — a database description of the TARN database manager: its name, version, access method, segments, DD names, exits and the PCBs based on it.
// Its superclass is its row in classes.def; its attributes and roles are its
// rows in DSDBD.def: each row gives a member, _get_/_set_ accessors
// (attributes) or _get_/_getFirst_/_getNext_ accessors (roles), a table row
// and a change bit, in row order.
#pragma once

#include "model/framework/ObjectClass.h"
#include "platform/techobj/DSTechnologyObject.h"

KR_DECLARE_HANDLE(DSDBD)

class _DSDBD : public kr::SuperImpl<DSDBD> {
#define KR_CLASS DSDBD
#define KR_ROWS "model/dbd/DSDBD.def"
#include "model/framework/ObjectBody.inc"

    // Declared operations without behaviour in this model: they change
    // nothing and answer zero, null or the shared empty statement.
    char* getName();
    int getReconcileableObjects(DSModelCollection** into, DSParmList* parms) override;
    DSSegment& getRootSegment();
    int isUsed();
    DSSegment* namedSegment(const char* name);
    DSModelCollection* rerootSegmentTree(DSSegment& newRoot);
    int validateDBD(char** messages);
    char* writeDBDasSource(int options, char* buffer);
    using _DSTechnologyObject::setFullName;
    int setFullName(const char* name) override;
    int setFullName(const char* name, char kind, char option) override;
    int setFullName(const char* a, const char* b, const char* c, const char* d) override;
    int isDependent(DSTechnologyObject* other) override;
    void renameAliases();
};

KR_DEFINE_ARROW(DSDBD)

// DSPSB.h — a PSB, the program-side definition: its ordered list of PCBs and program-wide options.
// Its superclass is its row in classes.def; its attributes and roles are its
// rows in DSPSB.def: each row gives a member, _get_/_set_ accessors
// (attributes) or _get_/_getFirst_/_getNext_ accessors (roles), a table row
// and a change bit, in row order.
#pragma once

#include "model/framework/ObjectClass.h"
#include "platform/techobj/DSTechnologyObject.h"

KR_DECLARE_HANDLE(DSPSB)

class _DSPSB : public kr::SuperImpl<DSPSB> {
#define KR_CLASS DSPSB
#define KR_ROWS "model/psb/DSPSB.def"
#include "model/framework/ObjectBody.inc"

    // Declared operations without behaviour in this model: they change
    // nothing and answer zero, null or the shared empty statement.
    char* getName();
    int isUsed();
    int validatePSB(char** messages);
    DSmacro& writePSB();
    char* writePSBasSource(int options, char* buffer);
    void renamePCBs(char* newName);
    using _DSTechnologyObject::setFullName;
    int setFullName(const char* name) override;
    int setFullName(const char* name, char kind, char option) override;
    int setFullName(const char* a, const char* b, const char* c, const char* d) override;
};

KR_DEFINE_ARROW(DSPSB)

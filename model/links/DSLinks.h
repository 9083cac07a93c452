// DSLinks.h — the 41 link classes, expanded from the catalogue links.def: every
// handle first, then the classes with attributes or operations of their own
// (their headers beside this one), then the implementation of every other link.
#pragma once

#include "model/framework/KRLink.h"
#include "model/framework/ObjectClass.h"
#include "model/dbd/DSArea.h"
#include "model/dbd/DSCompRoutine.h"
#include "model/dbd/DSDBD.h"
#include "model/dbd/DSDBDdedb.h"
#include "model/dbd/DSDBDhdam.h"
#include "model/dbd/DSDBDhidam.h"
#include "model/dbd/DSDBDindex.h"
#include "model/dbd/DSDBDmsdb.h"
#include "model/dbd/DSExit.h"
#include "model/dbd/DSField.h"
#include "model/dbd/DSSegmentComplex.h"
#include "model/dbd/DSSegmentDEDB.h"
#include "model/dbd/DSSegmentLogical.h"
#include "model/dbd/DSTARNDDname.h"
#include "model/dbd/DSTARNDataset.h"
#include "model/dbd/DSXDFLD.h"
#include "model/psb/DSOutputDest.h"
#include "model/psb/DSPCB.h"
#include "model/psb/DSPCBdb.h"
#include "model/psb/DSPCBtp.h"
#include "model/psb/DSPSB.h"
#include "model/psb/DSSenField.h"
#include "model/psb/DSSenSegment.h"
#include "platform/dictionary/DSDictionary.h"

#define KR_LINK(C, S, SR, T, TR, SF, TF) KR_DECLARE_LINK_HANDLE(C, S, T)
#include "model/links/links.def"

#include "model/links/DSDSColl.h"
#include "model/links/DSIndex.h"
#include "model/links/DSLChild.h"
#include "model/links/DSParent.h"
#include "model/links/DSSource.h"

#define KR_LINK(C, S, SR, T, TR, SF, TF) KR_DECLARE_LINK_IMPL(C) KR_DEFINE_ARROW(C)
#define KR_LINK_OPS(C, S, SR, T, TR, SF, TF)
#define KR_LINK_ROWS(C, S, SR, T, TR, SF, TF)
#include "model/links/links.def"

// DSLinks.h — the 41 link classes, expanded from the catalogue links.def: every
// handle first, then the classes with attributes or operations of their own
// (their headers beside this one), then the implementation of every other link.
#pragma once

#include <krmwtarn/model/framework/KRLink.h>
#include <krmwtarn/model/framework/ObjectClass.h>
#include <krmwtarn/model/dbd/DSArea.h>
#include <krmwtarn/model/dbd/DSCompRoutine.h>
#include <krmwtarn/model/dbd/DSDBD.h>
#include <krmwtarn/model/dbd/DSDBDdedb.h>
#include <krmwtarn/model/dbd/DSDBDhdam.h>
#include <krmwtarn/model/dbd/DSDBDhidam.h>
#include <krmwtarn/model/dbd/DSDBDindex.h>
#include <krmwtarn/model/dbd/DSDBDmsdb.h>
#include <krmwtarn/model/dbd/DSExit.h>
#include <krmwtarn/model/dbd/DSField.h>
#include <krmwtarn/model/dbd/DSSegmentComplex.h>
#include <krmwtarn/model/dbd/DSSegmentDEDB.h>
#include <krmwtarn/model/dbd/DSSegmentLogical.h>
#include <krmwtarn/model/dbd/DSTARNDDname.h>
#include <krmwtarn/model/dbd/DSTARNDataset.h>
#include <krmwtarn/model/dbd/DSXDFLD.h>
#include <krmwtarn/model/psb/DSOutputDest.h>
#include <krmwtarn/model/psb/DSPCB.h>
#include <krmwtarn/model/psb/DSPCBdb.h>
#include <krmwtarn/model/psb/DSPCBtp.h>
#include <krmwtarn/model/psb/DSPSB.h>
#include <krmwtarn/model/psb/DSSenField.h>
#include <krmwtarn/model/psb/DSSenSegment.h>
#include <krmwtarn/platform/dictionary/DSDictionary.h>

#define KR_LINK(C, S, SR, T, TR, SF, TF) KR_DECLARE_LINK_HANDLE(C, S, T)
#include <krmwtarn/model/links/links.def>

#include <krmwtarn/model/links/DSDSColl.h>
#include <krmwtarn/model/links/DSIndex.h>
#include <krmwtarn/model/links/DSLChild.h>
#include <krmwtarn/model/links/DSParent.h>
#include <krmwtarn/model/links/DSSource.h>

#define KR_LINK(C, S, SR, T, TR, SF, TF) KR_DECLARE_LINK_IMPL(C) KR_DEFINE_ARROW(C)
#define KR_LINK_OPS(C, S, SR, T, TR, SF, TF)
#define KR_LINK_ROWS(C, S, SR, T, TR, SF, TF)
#include <krmwtarn/model/links/links.def>

#include <krmwtarn/model/links/DSTypeDefLink.h>

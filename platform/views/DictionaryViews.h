// DictionaryViews.h — the seven view types that the data-dictionary library
// publishes and that other components' trees delegate to: query and full-graph
// views of data elements, data structures and their aliases.
#pragma once

#include <krmwtarn/platform/common/Export.h>

class DLLViewType;

extern KRMWTARN_API DLLViewType* v_CVQDATAELEMENT;
extern KRMWTARN_API DLLViewType* v_CVQDATASTRUCTURE;
extern KRMWTARN_API DLLViewType* v_CVQDSALIAS;
extern KRMWTARN_API DLLViewType* v_CORVIADATAELEMENT;
extern KRMWTARN_API DLLViewType* v_CORVIADATASTRUCTURE;
extern KRMWTARN_API DLLViewType* v_CORVIADEALIAS;
extern KRMWTARN_API DLLViewType* v_CORVIADSALIAS;

// Registers the dictionary's class descriptions and creates its seven view
// types, the first time only. DLLView_init::initAll calls it before it runs any
// component's registration, so the variables above are set when trees that
// delegate to them are built.
KRMWTARN_API void DLLView_registerDictionaryViews();

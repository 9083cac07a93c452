// DictionaryViews.h — the seven view types that the data-dictionary library
// publishes and that other components' trees delegate to: query and full-graph
// views of data elements, data structures and their aliases.
#pragma once

class DLLViewType;

extern DLLViewType* v_CVQDATAELEMENT;
extern DLLViewType* v_CVQDATASTRUCTURE;
extern DLLViewType* v_CVQDSALIAS;
extern DLLViewType* v_CORVIADATAELEMENT;
extern DLLViewType* v_CORVIADATASTRUCTURE;
extern DLLViewType* v_CORVIADEALIAS;
extern DLLViewType* v_CORVIADSALIAS;

// Registers the dictionary's class descriptions and creates its seven view
// types, the first time only. DLLView_init::initAll calls it before it runs any
// component's registration, so the variables above are set when trees that
// delegate to them are built.
void DLLView_registerDictionaryViews();

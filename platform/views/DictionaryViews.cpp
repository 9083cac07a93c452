// DictionaryViews.cpp — the data-dictionary library's view types and their
// small trees over its own classes (DSDataElement, DSDataStructure and the two
// alias classes), built from the records like any component's trees.
#include <krmwtarn/platform/views/DictionaryViews.h>

#include <krmwtarn/platform/dictionary/ViewClasses.h>
#include <krmwtarn/platform/views/DLLView.h>

DLLViewType* v_CVQDATAELEMENT = nullptr;
DLLViewType* v_CVQDATASTRUCTURE = nullptr;
DLLViewType* v_CVQDSALIAS = nullptr;
DLLViewType* v_CORVIADATAELEMENT = nullptr;
DLLViewType* v_CORVIADATASTRUCTURE = nullptr;
DLLViewType* v_CORVIADEALIAS = nullptr;
DLLViewType* v_CORVIADSALIAS = nullptr;

// The dictionary library's own way of making records (in the original, each
// library carries its own record constructors). Null in, null passed on.
class DLLViewRecords {
public:
    static DLLViewElem* attribute(DLLViewElem* next, const char* name, const char* alias = nullptr) {
        DLLViewElem* e = new (std::nothrow) DLLViewElem();
        if (!e) return nullptr;
        e->name = name;
        e->alias = alias ? alias : name;
        e->next = next;
        return e;
    }
    static DLLViewElem* role(DLLViewElem* next, const char* name, DLLViewList* list) {
        DLLViewElem* e = attribute(next, name);
        if (e) e->list = list;
        return e;
    }
    static DLLViewList* list(const char* className, DLLViewElem* first) {
        DLLViewList* l = new (std::nothrow) DLLViewList();
        if (!l) return nullptr;
        l->className = className;
        if (first) l->loadViewElems(first);
        return l;
    }
};

namespace {
using R = DLLViewRecords;

// pAnnotationText → ADLinkADAnnotObj2AnnotTxt → adTarget → ADAnnotationText.
DLLViewElem* annotation(DLLViewElem* next, const char* labelAlias, const char* contentsAlias) {
    DLLViewList* text = R::list("ADAnnotationText",
                                R::attribute(R::attribute(nullptr, "contents", contentsAlias), "label", labelAlias));
    DLLViewList* link = R::list("ADLinkADAnnotObj2AnnotTxt", R::role(nullptr, "adTarget", text));
    return R::role(next, "pAnnotationText", link);
}

// structureDef → DSLinkDataStrc2StrctDef → adTarget → DSStructureDef.
DLLViewElem* structureDefinition(DLLViewElem* next) {
    DLLViewList* def = R::list("DSStructureDef", R::attribute(R::attribute(nullptr, "length"), "structureType"));
    DLLViewList* link = R::list("DSLinkDataStrc2StrctDef", R::role(nullptr, "adTarget", def));
    return R::role(next, "structureDef", link);
}

void buildCvqDataElement(DLLViewType* view) {
    DLLViewElem* tail = R::attribute(R::attribute(nullptr, "length"), "dataType");
    tail = R::attribute(tail, "adName", "dataElementName");
    view->_set_adViewList(R::list("DSDataElement", annotation(tail, "elementDescType", "elementDescription")));
}

void buildCvqDataStructure(DLLViewType* view) {
    DLLViewElem* tail = R::attribute(nullptr, "adName", "dataStructureName");
    view->_set_adViewList(R::list("DSDataStructure", structureDefinition(tail)));
}

void buildCvqDsAlias(DLLViewType* view) {
    DLLViewElem* tail = R::attribute(nullptr, "adName", "structureAliasName");
    view->_set_adViewList(R::list("DSDataStructureAlias", annotation(tail, "aliasDescType", "aliasDescription")));
}

void buildCorviaDataElement(DLLViewType* view) {
    DLLViewElem* tail = R::attribute(R::attribute(R::attribute(nullptr, "scale"), "length"), "dataType");
    tail = R::attribute(tail, "adName");
    view->_set_adViewList(R::list("DSDataElement", annotation(tail, "label", "contents")));
}

void buildCorviaDataStructure(DLLViewType* view) {
    DLLViewElem* tail = annotation(R::attribute(nullptr, "adName"), "label", "contents");
    view->_set_adViewList(R::list("DSDataStructure", structureDefinition(tail)));
}

void buildCorviaDeAlias(DLLViewType* view) {
    DLLViewElem* tail = R::attribute(nullptr, "adName");
    view->_set_adViewList(R::list("DSDataElementAlias", annotation(tail, "label", "contents")));
}

void buildCorviaDsAlias(DLLViewType* view) {
    DLLViewElem* tail = R::attribute(nullptr, "adName");
    view->_set_adViewList(R::list("DSDataStructureAlias", annotation(tail, "label", "contents")));
}
}  // namespace

void DLLView_registerDictionaryViews() {
    static bool registered = false;
    if (registered) return;
    registered = true;
    DSDictionary_viewClasses();
    v_CVQDATAELEMENT = new (std::nothrow) DLLViewType("CVQDATAELEMENT", "", buildCvqDataElement);
    v_CVQDATASTRUCTURE = new (std::nothrow) DLLViewType("CVQDATASTRUCTURE", "", buildCvqDataStructure);
    v_CVQDSALIAS = new (std::nothrow) DLLViewType("CVQDSALIAS", "", buildCvqDsAlias);
    v_CORVIADATAELEMENT = new (std::nothrow) DLLViewType("CORVIADATAELEMENT", "", buildCorviaDataElement);
    v_CORVIADATASTRUCTURE = new (std::nothrow) DLLViewType("CORVIADATASTRUCTURE", "", buildCorviaDataStructure);
    v_CORVIADEALIAS = new (std::nothrow) DLLViewType("CORVIADEALIAS", "", buildCorviaDeAlias);
    v_CORVIADSALIAS = new (std::nothrow) DLLViewType("CORVIADSALIAS", "", buildCorviaDsAlias);
}

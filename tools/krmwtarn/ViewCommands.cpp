// ViewCommands.cpp — the main job of the tool: expand a view over the built-in
// sample (`demo`, `expand`), and write or read the sample as JSON documents
// (`export`, `import`).
#include "tools/krmwtarn/Commands.h"

#include "tools/json/ViewDocument.h"
#include "tools/sample/SampleModel.h"

#include <cstdio>
#include <cstring>
#include <fstream>
#include <iostream>
#include <memory>
#include <string>

namespace {
void printValue(const DLLViewValue& v) {
    if (v.isNull) std::printf("null");
    else if (!std::strcmp(v.type, "string")) std::printf("\"%s\"", v.text.c_str());
    else if (!std::strcmp(v.type, "char")) std::printf("'%s'", v.text.c_str());
    else std::printf("%ld", v.number);
}

void printNode(const DLLViewNode& node, int depth) {
    for (const DLLViewEntry& e : node.entries) {
        std::printf("%*s%s", depth * 2, "", e.element->alias);
        if (e.kind == DLLViewEntry::Value) {
            std::printf(" = ");
            printValue(e.value);
            std::printf("\n");
            continue;
        }
        std::printf(e.kind == DLLViewEntry::Role ? ":\n" : ": ");
        for (const DLLViewNode& item : e.items) {
            if (e.kind == DLLViewEntry::Role) std::printf("%*s- ", depth * 2 + 2, "");
            std::printf("%s", item.object->whoAmI());
            if (!item.object->isRelationshipObject()) std::printf(" %s", item.object->objID());
            if (item.delegated && e.kind == DLLViewEntry::End) std::printf("  [by %s]", item.delegated->name());
            if (!item.list) std::printf("  (already being expanded)");
            std::printf("\n");
            printNode(item, depth + (e.kind == DLLViewEntry::Role ? 3 : 2));
        }
    }
}

// The sample object a view is expanded over: by name, or the view's usual root.
_ADObject* rootFor(DLLViewType* view, const char* name, const sample::Model& model) {
    DLLViewList* list = view->_get_adViewList();
    if (!list) return nullptr;
    if (name) return DSRegistrar::findObj(list->className, name, sample::kVersion);
    return sample::defaultRoot(model, list->className);
}

int expandOne(const char* viewName, const char* rootName, bool asJson) {
    DLLView_init::initAll();
    DLLViewType* view = DLLViewType::find(viewName);
    if (!view) {
        std::fprintf(stderr, "krmwtarn: no view named '%s' (see 'krmwtarn views')\n", viewName);
        return 1;
    }
    sample::Model model = sample::build();
    int status = 0;
    _ADObject* root = rootFor(view, rootName, model);
    if (!root) {
        std::fprintf(stderr, "krmwtarn: the sample has no %s named '%s'\n",
                     view->_get_adViewList() ? view->_get_adViewList()->className : "object", rootName ? rootName : "");
        status = 1;
    } else if (asJson) {
        std::cout << viewdoc::exportView(view, root).dump(2) << "\n";
    } else {
        DLLViewNode node = DLLView_expand(view, root);
        std::printf("%s over %s %s\n", view->name(), root->whoAmI(), root->objID());
        printNode(node, 1);
    }
    model = sample::Model();
    DSRegistrar::releaseAll();
    return status;
}

// The whole sample as documents.
nlohmann::json sampleDocuments(const sample::Model& m) {
    DLLView_init::initAll();
    nlohmann::json docs = nlohmann::json::array();
    for (const auto& [view, root] : sample::documentRoots(m))
        docs.push_back(viewdoc::exportView(DLLViewType::find(view), root));
    return nlohmann::json{{"documents", docs}};
}
}  // namespace


int krmwtarnDemo(int argc, char** argv) {
    const char* view = "CORVIADBD";
    const char* root = nullptr;
    if (argc > 1) view = argv[1];
    if (argc > 2) root = argv[2];
    return expandOne(view, root, false);
}

int krmwtarnExpand(int argc, char** argv) {
    const char* view = nullptr;
    const char* root = nullptr;
    bool json = false;
    for (int i = 1; i < argc; ++i) {
        if (!std::strcmp(argv[i], "--json")) json = true;
        else if (!std::strcmp(argv[i], "--root") && i + 1 < argc) root = argv[++i];
        else if (argv[i][0] == '-') {
            std::fprintf(stderr, "krmwtarn expand: unknown option '%s'\n", argv[i]);
            return 2;
        } else if (!view) view = argv[i];
        else {
            std::fprintf(stderr, "krmwtarn expand: one view at a time\n");
            return 2;
        }
    }
    if (!view) {
        std::fprintf(stderr, "usage: krmwtarn expand VIEW [--root NAME] [--json]\n");
        return 2;
    }
    return expandOne(view, root, json);
}

int krmwtarnExport(int argc, char** argv) {
    if (argc < 2) {
        std::fprintf(stderr, "usage: krmwtarn export FILE   (- for standard output)\n");
        return 2;
    }
    sample::Model model = sample::build();
    nlohmann::json docs = sampleDocuments(model);
    model = sample::Model();
    DSRegistrar::releaseAll();
    if (!std::strcmp(argv[1], "-")) {
        std::cout << docs.dump(2) << "\n";
        return 0;
    }
    std::ofstream out(argv[1]);
    if (!out) {
        std::fprintf(stderr, "krmwtarn export: cannot write '%s'\n", argv[1]);
        return 1;
    }
    out << docs.dump(2) << "\n";
    return out ? 0 : 1;
}

int krmwtarnImport(int argc, char** argv) {
    if (argc < 2) {
        std::fprintf(stderr, "usage: krmwtarn import FILE   (- for standard input)\n");
        return 2;
    }
    nlohmann::json doc;
    try {
        if (!std::strcmp(argv[1], "-")) {
            doc = nlohmann::json::parse(std::cin);
        } else {
            std::ifstream in(argv[1]);
            if (!in) {
                std::fprintf(stderr, "krmwtarn import: cannot read '%s'\n", argv[1]);
                return 1;
            }
            doc = nlohmann::json::parse(in);
        }
    } catch (const nlohmann::json::parse_error& e) {
        std::fprintf(stderr, "krmwtarn import: not JSON: %s\n", e.what());
        return 1;
    }
    DLLView_init::initAll();
    int status = 0;
    try {
        std::vector<ADObject> roots = viewdoc::importDocuments(doc);
        std::printf("imported %zu document(s): %zu objects and links in the repository\n", roots.size(),
                    DSRegistrar::count());
    } catch (const viewdoc::DocumentError& e) {
        std::fprintf(stderr, "krmwtarn import: %s\n", e.what());
        status = 1;
    }
    DSRegistrar::releaseAll();
    return status;
}

// ViewCommands.cpp — the main job of the tool: expand a view over the built-in
// sample (`demo`, `expand`), and write or read the sample as JSON documents
// (`export`, `import`).
#include "Commands.h"

#include <krmwtarn/json/ViewDocument.h>
#include "Definitions.h"
#include "Files.h"
#include "RepoCommands.h"

#include <krmwtarn/platform/repository/ADReflection.h>
#include <krmwtarn/store/Repository.h>

#include <cstdio>
#include <iostream>
#include <cstring>
#include <memory>
#include <string>
#include <vector>

namespace {
void printValue(const DLLViewValue& v) {
    const ADValueTypeInfo* type = adFindValueType(v.type);
    ADValueForm form = type ? type->form : ADValueForm::Integer;
    if (v.isNull)
        std::printf("null");
    else if (form == ADValueForm::Text)
        std::printf("\"%s\"", v.text.c_str());
    else if (form == ADValueForm::Char)
        std::printf("'%s'", v.text.c_str());
    else
        std::printf("%ld", v.number);
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

// Every definition as documents: each DBD by the populate view, each PSB by its view.
nlohmann::json documentsOf(const krmwtarn::Definitions& defs) {
    DLLView_init::initAll();
    nlohmann::json docs = nlohmann::json::array();
    for (const ADObject& r : defs.roots())
        docs.push_back(
            viewdoc::exportView(DLLViewType::find(r->isKindOf("DSDBD") ? "CORVIAPOPULATEDBD" : "CORVIAPSB"), r.impl()));
    return nlohmann::json{{"documents", docs}};
}

// The imported roots exported again, each by the view its document names, in
// the shape that was read: one document, or {"documents": [...]}.
nlohmann::json exportAgain(const nlohmann::json& read, const std::vector<ADObject>& roots) {
    auto again = [&](const nlohmann::json& doc, const ADObject& root) {
        return viewdoc::exportView(DLLViewType::find(doc.at("view").get<std::string>().c_str()), root.impl());
    };
    if (!(read.is_object() && read.contains("documents"))) return again(read, roots.front());
    nlohmann::json docs = nlohmann::json::array();
    for (std::size_t i = 0; i < roots.size(); ++i) docs.push_back(again(read["documents"][i], roots[i]));
    return nlohmann::json{{"documents", docs}};
}
}  // namespace

int krmwtarn::expand(const std::string& viewName, const std::optional<std::string>& rootGiven, bool asJson,
                     const std::vector<std::string>& decks, const std::string& repo) {
    DLLView_init::initAll();
    DLLViewType* view = DLLViewType::find(viewName.c_str());
    if (!view) {
        std::fprintf(stderr, "krmwtarn: no view named '%s' (see 'krmwtarn views')\n", viewName.c_str());
        return exitBadInput;
    }
    const char* rootName = rootGiven ? rootGiven->c_str() : nullptr;
    Definitions defs(decks, repo);
    if (!defs.ok()) return exitBadInput;
    int status = exitDone;
    DLLViewList* list = view->_get_adViewList();
    _ADObject* root = list ? defs.find(list->className, rootName) : nullptr;
    if (!root) {
        std::fprintf(stderr, "krmwtarn: %s has no %s named '%s'\n", defs.origin(), list ? list->className : "object",
                     rootName ? rootName : "");
        status = exitBadInput;
    } else if (asJson) {
        printText(viewdoc::exportView(view, root).dump(2) + "\n");
    } else {
        DLLViewNode node = DLLView_expand(view, root);
        std::printf("%s over %s %s\n", view->name(), root->whoAmI(), root->objID());
        printNode(node, 1);
    }
    return status;
}

int krmwtarn::exportDefinitions(const std::string& file, const std::vector<std::string>& decks,
                                const std::string& repo) {
    nlohmann::json docs;
    {
        Definitions defs(decks, repo);
        if (!defs.ok()) return exitBadInput;
        docs = documentsOf(defs);
    }
    return writeResult("export", file, docs.dump(2) + "\n");
}

int krmwtarn::importDocuments(const std::string& file, bool asJson, const std::string& repo) {
    std::string text, reason;
    if (!readFile(file, text, reason)) {
        std::fprintf(stderr, "krmwtarn import: cannot read %s: %s\n", file == "-" ? "standard input" : file.c_str(),
                     reason.c_str());
        return exitBadInput;
    }
    nlohmann::json doc;
    try {
        doc = nlohmann::json::parse(text);
    } catch (const nlohmann::json::parse_error& e) {
        std::fprintf(stderr, "krmwtarn import: not JSON: %s\n", e.what());
        return exitBadInput;
    }
    DLLView_init::initAll();
    // The documents go into an empty registry; with a repository, the units
    // they make are stored (nothing is when a document is refused).
    auto importInto = [&](std::vector<_ADObject*>& made) {
        try {
            std::vector<ADObject> roots = viewdoc::importDocuments(doc);
            if (asJson)
                printText(exportAgain(doc, roots).dump(2) + "\n");
            else
                std::printf("imported %zu document(s): %zu objects and links in the repository\n", roots.size(),
                            DSRegistrar::count());
            for (const ADObject& r : roots) made.push_back(r.impl());
            return static_cast<int>(exitDone);
        } catch (const viewdoc::DocumentError& e) {
            std::fprintf(stderr, "krmwtarn import: %s\n", e.what());
            return static_cast<int>(exitBadInput);
        }
    };
    if (!repo.empty())
        return repocmd::storeMade(
            repo, asJson, std::cout, std::cerr,
            [&](krstore::Repository&, std::vector<_ADObject*>& made) { return importInto(made); });
    std::vector<_ADObject*> made;
    int status = importInto(made);
    DSRegistrar::releaseAll();
    return status;
}

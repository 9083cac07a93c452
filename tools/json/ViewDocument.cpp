// ViewDocument.cpp — JSON export of view expansions, and the import entries:
// a file's documents are read into one plan (DocumentReader.cpp) and built
// from it (DocumentImport.cpp).
#include <krmwtarn/json/ViewDocument.h>

#include <krmwtarn/json/DocumentPlan.h>

#include <krmwtarn/platform/repository/ADReflection.h>

#include <cstring>
#include <memory>

using nlohmann::json;

namespace viewdoc {
namespace {
json valueJson(const DLLViewValue& v) {
    if (v.isNull) return nullptr;
    const ADValueTypeInfo* type = adFindValueType(v.type);
    if (type && type->form != ADValueForm::Integer) return v.text;
    return v.number;
}
}  // namespace

json toJson(const DLLViewNode& node) {
    json out = json::object();
    _ADObject* o = node.object;
    out["@class"] = o->whoAmI();
    out["@id"] = o->objID();
    out["@version"] = o->context();
    for (const DLLViewEntry& e : node.entries) {
        const char* key = e.element->alias;
        switch (e.kind) {
            case DLLViewEntry::Value:
                out[key] = valueJson(e.value);
                break;
            case DLLViewEntry::Role: {
                // Copies of a role for several classes share their alias: one array.
                json& items = out[key];
                if (!items.is_array()) items = json::array();
                for (const DLLViewNode& item : e.items) items.push_back(toJson(item));
                break;
            }
            case DLLViewEntry::End:
                out[key] = toJson(e.items.front());
                break;
        }
    }
    return out;
}

json exportView(DLLViewType* view, _ADObject* root) {
    return json{{"view", view->name()}, {"root", toJson(DLLView_expand(view, root))}};
}

std::string pointer(const std::string& at, const std::string& key) {
    std::string out = at;
    out.reserve(at.size() + key.size() + 1);
    out += '/';
    for (char c : key) {
        if (c == '~')
            out += "~0";
        else if (c == '/')
            out += "~1";
        else
            out += c;
    }
    return out;
}

std::string pointer(const std::string& at, std::size_t index) { return at + "/" + std::to_string(index); }

std::vector<ADObject> importDocuments(const json& file) {
    static const std::string documentsKey = "documents";
    plan::Plan p;
    plan::Reader reader(p);
    if (file.is_object() && file.contains(documentsKey)) {
        for (auto it = file.begin(); it != file.end(); ++it)
            if (it.key() != documentsKey)
                throw DocumentError(pointer("", it.key()), "beside 'documents' a file holds nothing");
        const json& docs = file[documentsKey];
        if (!docs.is_array()) throw DocumentError("/documents", "an array of documents is expected");
        plan::Place at = p.step(-1, documentsKey);
        for (std::size_t i = 0; i < docs.size(); ++i) reader.document(docs[i], p.step(at, i));
    } else {
        reader.document(file, -1);
    }
    reader.finish();
    return plan::build(p);
}

ADObject* importDocument(const json& document) {
    plan::Plan p;
    plan::Reader reader(p);
    reader.document(document, -1);
    reader.finish();
    return new ADObject(std::move(plan::build(p).front()));
}

}  // namespace viewdoc

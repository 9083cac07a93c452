// ViewDocument.h — views as JSON documents. Export writes a view's expansion
// with the elements' aliases as keys, each object with its class ("@class"),
// identity ("@id") and version ("@version"). Import builds the graph such a
// document describes in the current repository, through the attribute tables'
// setters and the link constructors, so that export, import into an empty
// repository and export again give the same document. A document that does not
// fit the view or the model is refused with a message that names the place in
// the document, and the repository is left as it was.
#pragma once

#include <krmwtarn/platform/views/DLLViewExpansion.h>

#include <nlohmann/json.hpp>

#include <stdexcept>
#include <string>

namespace viewdoc {

// A refused document; `where` is a JSON pointer to the offending place.
class DocumentError : public std::runtime_error {
public:
    DocumentError(const std::string& where, const std::string& what)
        : std::runtime_error(where + ": " + what), where_(where) {}
    const std::string& where() const { return where_; }

private:
    std::string where_;
};

// The expansion as a document: {"view": NAME, "root": {...}}.
nlohmann::json exportView(DLLViewType* view, _ADObject* root);
nlohmann::json toJson(const DLLViewNode& node);

// Builds the document's graph; answers a new handle on its root object, which
// the caller owns. Throws DocumentError (repository unchanged).
ADObject* importDocument(const nlohmann::json& document);

}  // namespace viewdoc

// ViewDocument.h — views as JSON documents. Export writes a view's expansion
// with the elements' aliases as keys, each object with its class ("@class"),
// identity ("@id") and version ("@version"). Import builds the graph such a
// document describes in the current repository, through the attribute tables'
// setters and the link end setters, so that export, import into an empty
// repository and export again give the same document. A document that does not
// fit the view, the model or the other documents read with it is refused with a
// message that names the place in the document, and the repository is left
// exactly as it was.
#pragma once

#include <krmwtarn/platform/common/Export.h>
#include <krmwtarn/platform/common/Finding.h>
#include <krmwtarn/platform/views/DLLViewExpansion.h>

#include <nlohmann/json.hpp>

#include <cstddef>
#include <stdexcept>
#include <string>
#include <vector>

namespace viewdoc {

// A refused document: a finding whose path is a JSON pointer to the offending
// place; what() reads "where: what".
class KRMWTARN_API DocumentError : public std::runtime_error {
public:
    DocumentError(const std::string& where, const std::string& what)
        : std::runtime_error(where + ": " + what), finding_{{}, 0, 0, kr::Severity::Error, what, {}, where} {}
    const std::string& where() const noexcept { return finding_.path; }
    const kr::Finding& finding() const noexcept { return finding_; }

private:
    kr::Finding finding_;
};

// The expansion as a document: {"view": NAME, "root": {...}}.
KRMWTARN_API nlohmann::json exportView(DLLViewType* view, _ADObject* root);
KRMWTARN_API nlohmann::json toJson(const DLLViewNode& node);

// Builds the graph of a file's documents: the file is one document, or
// {"documents": [...]}. The documents are imported as one: all of them are read
// and checked before anything is made; links join their roles in the order the
// documents give; every document must come back from the built graph
// unchanged. Answers a handle on each document's root, in document order.
// Throws DocumentError; the repository is then left exactly as it was.
KRMWTARN_API std::vector<ADObject> importDocuments(const nlohmann::json& file);

// One document, as importDocuments of it alone; the caller owns the handle.
KRMWTARN_API ADObject* importDocument(const nlohmann::json& document);

// JSON pointers (RFC 6901): `at` followed by one reference token, a key with
// '~' written "~0" and '/' written "~1", or an array index.
KRMWTARN_API std::string pointer(const std::string& at, const std::string& key);
KRMWTARN_API std::string pointer(const std::string& at, std::size_t index);

}  // namespace viewdoc

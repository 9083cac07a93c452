// SarifReport.cpp — findings as a SARIF 2.1.0 log (see SarifReport.h).
#include "SarifReport.h"

#include <krmwtarn/check/Rules.h>

#include <cstdint>
#include <cstdio>
#include <map>
#include <utility>

namespace krmwtarn {
namespace {
const char* levelOf(kr::Severity s) { return s == kr::Severity::Error ? "error" : "warning"; }

// A path as a URI reference: unreserved characters and '/' as they are, every
// other byte percent-encoded.
std::string uriEncoded(const std::string& path) {
    std::string out;
    for (unsigned char c : path) {
        if ((c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z') || (c >= '0' && c <= '9') || c == '-' || c == '.' ||
            c == '_' || c == '~' || c == '/') {
            out += static_cast<char>(c);
        } else {
            char hex[4];
            std::snprintf(hex, sizeof hex, "%%%02X", c);
            out += hex;
        }
    }
    return out;
}

// The deck's place: relative to `base` where it lies below it, else an
// absolute file URI.
nlohmann::json artifactOf(const std::string& file, const std::filesystem::path& base) {
    namespace fs = std::filesystem;
    std::error_code ec;
    fs::path absolute = fs::absolute(fs::path(file), ec).lexically_normal();
    fs::path relative = absolute.lexically_relative(base);
    if (!ec && !relative.empty() && *relative.begin() != "..")
        return {{"uri", uriEncoded(relative.generic_string())}, {"uriBaseId", "SRCROOT"}};
    return {{"uri", "file://" + uriEncoded(absolute.generic_string())}};
}

// FNV-1a, 64 bits: the same text gives the same fingerprint on every machine.
std::string fingerprint(const std::string& text) {
    std::uint64_t h = 14695981039346656037ull;
    for (unsigned char c : text) h = (h ^ c) * 1099511628211ull;
    char hex[17];
    std::snprintf(hex, sizeof hex, "%016llx", static_cast<unsigned long long>(h));
    return hex;
}
}  // namespace

nlohmann::json sarifReport(const std::vector<kr::Finding>& findings, const std::string& version,
                           const std::filesystem::path& base) {
    nlohmann::json rules = nlohmann::json::array();
    std::map<std::string, std::size_t> ruleIndex;
    for (const krcheck::Rule& r : krcheck::rules()) {
        ruleIndex.emplace(r.code, rules.size());
        rules.push_back({{"id", r.code},
                         {"shortDescription", {{"text", r.description}}},
                         {"defaultConfiguration", {{"level", levelOf(r.severity)}}}});
    }
    nlohmann::json results = nlohmann::json::array();
    // A rule may find several things on one object: they are told apart by
    // their order among that rule's findings on it.
    std::map<std::pair<std::string, std::string>, int> seen;
    for (const kr::Finding& f : findings) {
        nlohmann::json result = {
            {"ruleId", f.code}, {"level", levelOf(f.severity)}, {"message", {{"text", f.message}}}};
        if (auto it = ruleIndex.find(f.code); it != ruleIndex.end()) result["ruleIndex"] = it->second;
        nlohmann::json location = nlohmann::json::object();
        if (f.located()) {
            nlohmann::json physical = {{"artifactLocation", artifactOf(f.file, base)}};
            if (f.line > 0) physical["region"] = {{"startLine", f.line}, {"startColumn", f.column > 0 ? f.column : 1}};
            location["physicalLocation"] = std::move(physical);
        }
        // Arrays are made as such: a braced list of one object may be taken for the object.
        if (!f.path.empty()) location["logicalLocations"] = nlohmann::json::array({{{"fullyQualifiedName", f.path}}});
        if (!location.empty()) result["locations"] = nlohmann::json::array({std::move(location)});
        const int occurrence = seen[{f.code, f.path}]++;
        result["partialFingerprints"] = {
            {"krmwtarnObject/v1", fingerprint(f.code + '\x1f' + f.path + '\x1f' + std::to_string(occurrence))}};
        results.push_back(std::move(result));
    }
    std::string root = "file://" + uriEncoded(base.generic_string());
    if (root.back() != '/') root += '/';
    nlohmann::json driver = {
        {"name", "krmwtarn"}, {"version", version}, {"semanticVersion", version}, {"rules", std::move(rules)}};
    nlohmann::json run = nlohmann::json::object();
    run["tool"] = {{"driver", std::move(driver)}};
    run["originalUriBaseIds"] = {{"SRCROOT", {{"uri", root}}}};
    run["columnKind"] = "unicodeCodePoints";
    run["results"] = std::move(results);
    nlohmann::json log = nlohmann::json::object();
    log["$schema"] = "https://json.schemastore.org/sarif-2.1.0.json";
    log["version"] = "2.1.0";
    log["runs"] = nlohmann::json::array({std::move(run)});
    return log;
}

}  // namespace krmwtarn

// SarifReport.h — the findings of `check` as a SARIF 2.1.0 log, the form that
// CI services read: one run, the rule table as the driver's rules, each
// finding at its deck place (a URI relative to the directory the check ran in)
// and its object path, with a fingerprint made of the rule and the object, not
// of the card, so that a finding keeps its identity when cards move.
#pragma once

#include <krmwtarn/platform/common/Finding.h>

#include <nlohmann/json.hpp>

#include <filesystem>
#include <string>
#include <vector>

namespace krmwtarn {

// `base` is the directory that deck paths are made relative to (SRCROOT).
nlohmann::json sarifReport(const std::vector<kr::Finding>& findings, const std::string& version,
                           const std::filesystem::path& base);

}  // namespace krmwtarn

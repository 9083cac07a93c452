// Finding.cpp — a finding as one line of text.
#include <krmwtarn/platform/common/Finding.h>

#include <krmwtarn/platform/common/KVException.h>
#include <krmwtarn/platform/common/Refusals.h>

namespace kr {

std::string Finding::text() const {
    std::string at = !located() ? path
                     : line > 0 ? file + ":" + std::to_string(line) + ":" + std::to_string(column)
                                : file;
    std::string out = at.empty() ? std::string() : at + ": ";
    out += severity == Severity::Error ? "error: " : "warning: ";
    if (!code.empty()) out += "[" + code + "] ";
    return out + message;
}

Finding findingOf(const KVException& e, std::string where) {
    Finding f;
    f.message = describe(e);
    f.code = std::to_string(e.number());
    f.path = std::move(where);
    return f;
}

}  // namespace kr

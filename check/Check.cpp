// Check.cpp — running the rule table over definitions: the facts of each DBD
// or PSB gathered once, every rule of its kind applied in table order, each
// finding located through the load that made its object.
#include <krmwtarn/check/Rules.h>

#include <krmwtarn/model/framework/Navigation.h>

#include <cassert>

namespace krcheck {
namespace {
// Findings of one rule, placed where their objects were made.
class Collect final : public Report {
public:
    Collect(const Rule& rule, const krsource::LoadResult* from, std::vector<Finding>& out)
        : rule_(rule), from_(from), out_(out) {}
    void operator()(const _ADObject* object, const std::string& path, std::string message) override {
        assert(!path.empty() && !message.empty() && "a finding names its object and what is wrong");
        Finding f;
        f.severity = rule_.severity;
        f.code = rule_.code;
        f.path = path;
        f.message = std::move(message);
        if (const krsource::Place* at = from_ ? from_->placeOf(object) : nullptr) {
            f.file = from_->files[static_cast<std::size_t>(at->file)];
            f.line = at->line;
            f.column = at->column;
        }
        out_.push_back(std::move(f));
    }

private:
    const Rule& rule_;
    const krsource::LoadResult* from_;
    std::vector<Finding>& out_;
};
}  // namespace

namespace {
// Every rule of one kind (the rule's member `onKind`) over the facts of one definition.
template <class Facts>
std::vector<Finding> apply(const Facts& facts, const krsource::LoadResult* from,
                           void (*Rule::*onKind)(const Facts&, Report&)) {
    std::vector<Finding> out;
    for (const Rule& r : rules()) {
        if (!(r.*onKind)) continue;
        Collect report(r, from, out);
        (r.*onKind)(facts, report);
    }
    return out;
}

std::vector<Finding> checkPsb(_DSPSB* psb, const krsource::LoadResult* from,
                              const std::unordered_set<std::string>* dbdNames) {
    PsbFacts facts(psb);
    facts.dbdNames = dbdNames;
    return apply(facts, from, &Rule::onPsb);
}

std::string nameOf(_DSDBD* dbd) {
    const char* name = dbd->_get_strDBDName();
    return name ? name : "";
}
}  // namespace

std::vector<Finding> check(_DSDBD* dbd, const krsource::LoadResult* from) {
    return apply(DbdFacts(dbd), from, &Rule::onDbd);
}

std::vector<Finding> check(_DSPSB* psb, const krsource::LoadResult* from) { return checkPsb(psb, from, nullptr); }

std::vector<Finding> check(const krsource::LoadResult& loaded) {
    std::vector<Finding> out;
    auto take = [&](std::vector<Finding> found) {
        for (Finding& f : found) out.push_back(std::move(f));
    };
    std::unordered_set<std::string> dbdNames;
    for (const DSDBD& d : loaded.dbds) {
        dbdNames.insert(nameOf(d.operator->()));
        take(check(d.operator->(), &loaded));
    }
    for (const DSPSB& p : loaded.psbs) take(checkPsb(p.operator->(), &loaded, &dbdNames));
    return out;
}

std::vector<Finding> check(const std::vector<ADObject>& definitions) {
    std::vector<Finding> out;
    std::unordered_set<std::string> dbdNames;
    for (const ADObject& d : definitions)
        if (auto* dbd = kr::dyn_cast<_DSDBD>(d.impl())) dbdNames.insert(nameOf(dbd));
    for (const ADObject& d : definitions) {
        if (d.isEmpty()) continue;
        std::vector<Finding> found;
        if (auto* dbd = kr::dyn_cast<_DSDBD>(d.impl()))
            found = check(dbd);
        else if (auto* psb = kr::dyn_cast<_DSPSB>(d.impl()))
            found = checkPsb(psb, nullptr, &dbdNames);
        for (Finding& f : found) out.push_back(std::move(f));
    }
    return out;
}

bool hasErrors(const std::vector<Finding>& findings) noexcept {
    for (const Finding& f : findings)
        if (f.severity == Severity::Error) return true;
    return false;
}

}  // namespace krcheck

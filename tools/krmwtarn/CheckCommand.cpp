// CheckCommand.cpp — `krmwtarn check`: the database manager's rules over the
// definitions of decks, of a repository (all, or the DBDs and PSBs named) or of
// the built-in sample, as `file:line:column: error|warning: [CODE] message`
// lines (the object's path where there is no deck), as JSON, or as a SARIF log.
#include "CommandLine.h"
#include "Commands.h"
#include "Definitions.h"
#include "SarifReport.h"

#include <krmwtarn/check/Check.h>

#include <nlohmann/json.hpp>

#include <cstring>
#include <filesystem>
#include <iostream>

namespace krmwtarn {
namespace {
enum class Format { Text, Json, Sarif };

void print(const std::vector<krcheck::Finding>& findings, Format format) {
    if (format == Format::Text) {
        for (const krcheck::Finding& f : findings) std::cout << f.text() << "\n";
        return;
    }
    if (format == Format::Sarif) {
        std::error_code ec;
        std::filesystem::path here = std::filesystem::current_path(ec);
        std::cout << sarifReport(findings, KRMWTARN_VERSION, ec ? std::filesystem::path("/") : here).dump(2) << "\n";
        return;
    }
    nlohmann::json list = nlohmann::json::array();
    long errors = 0;
    for (const krcheck::Finding& f : findings) {
        bool error = f.severity == krcheck::Severity::Error;
        errors += error;
        nlohmann::json j = {
            {"severity", error ? "error" : "warning"}, {"code", f.code}, {"path", f.path}, {"message", f.message}};
        if (f.located()) j.update({{"file", f.file}, {"line", f.line}, {"column", f.column}});
        list.push_back(std::move(j));
    }
    std::cout << nlohmann::json{{"findings", list},
                                {"errors", errors},
                                {"warnings", static_cast<long>(findings.size()) - errors}}
                     .dump(2)
              << "\n";
}

bool named(const ADObject& o, const std::string& name) {
    return name == o->objID() || (o->_get_adName() && name == o->_get_adName());
}

// The definitions of the decks ARGS, or with REPO the repository's (all, or
// the DBDs and PSBs ARGS names), or the sample; exit 1 on any error finding.
int checkDefinitions(const std::vector<std::string>& args, Format format, const std::string& repo) {
    std::vector<krcheck::Finding> findings;
    if (repo.empty() && !args.empty()) {
        krsource::LoadResult loaded = krsource::loadDeckFiles(args);
        for (const krsource::Diagnostic& d : loaded.diagnostics) std::cerr << d.text() << "\n";
        if (!loaded.ok()) {
            DSRegistrar::releaseAll();
            return exitBadInput;
        }
        findings = krcheck::check(loaded);
        loaded = krsource::LoadResult();
        DSRegistrar::releaseAll();
    } else {
        // The repository's units (or the sample); NAMEs choose among them.
        Definitions defs({}, repo);
        if (!defs.ok()) return exitBadInput;
        std::vector<ADObject> chosen;
        for (const std::string& name : args) {
            std::size_t before = chosen.size();
            for (const ADObject& r : defs.roots())
                if (named(r, name)) chosen.push_back(r);
            if (chosen.size() == before) {
                std::cerr << "krmwtarn check: " << defs.origin() << " has no DBD or PSB named '" << name << "'\n";
                return exitBadInput;
            }
        }
        findings = krcheck::check(args.empty() ? defs.roots() : chosen);
    }
    print(findings, format);
    return krcheck::hasErrors(findings) ? exitBadInput : exitDone;
}
}  // namespace

void addCheck(CommandLine& cli) {
    struct Arguments {
        std::vector<std::string> args;
        bool json = false;
        std::string format = "text";
    };
    auto& a = cli.keep<Arguments>();
    CLI::App* command = cli.app.add_subcommand(
        "check", "Check definitions against the database manager's rules: decks, a repository (--repo), or the sample");
    command->add_option("DECK|NAME", a.args, "The decks to check; with --repo, the DBDs and PSBs to check")
        ->type_name("");
    CLI::Option* json = command->add_flag("--json", a.json, "Print the findings as a JSON document (--format json)");
    command
        ->add_option("--format", a.format,
                     "text (the default), json, or sarif: a SARIF 2.1.0 log for code scanning in CI, deck paths "
                     "relative to the current directory")
        ->check(CLI::IsMember({"text", "json", "sarif"}))
        ->excludes(json);
    command->footer(
        "Findings: FILE:LINE:COLUMN: error|warning: [CODE] message (the object's path where there is no deck).\n"
        "Exit status: 0 no errors, 1 an error found or bad input, 2 bad usage.");
    cli.runs(command, [&cli, &a] {
        const Format format = a.json || a.format == "json" ? Format::Json
                              : a.format == "sarif"        ? Format::Sarif
                                                           : Format::Text;
        return checkDefinitions(a.args, format, cli.repo);
    });
}
}  // namespace krmwtarn

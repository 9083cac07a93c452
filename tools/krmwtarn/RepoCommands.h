// RepoCommands.h — the tool's repository commands as functions of their parsed
// arguments: with `--repo PATH` the tool stores the sample in a repository,
// lists, locks, unlocks and deletes its units, and copies them into another
// repository (the view commands read repositories through Definitions). Each
// answers the exit status (0 done, 1 refused,
// 2 bad usage); messages go to `err`.
#pragma once

#include <functional>
#include <ostream>
#include <string>
#include <vector>

class _ADObject;
namespace krstore {
class Repository;
}

namespace repocmd {

// `sample`: build the built-in sample and store every unit of it.
int storeSample(const std::string& repo, std::ostream& out, std::ostream& err);
// A command that makes definitions (`load`, `import`) run against a
// repository: `make` may read the repository's units first (so that names
// resolve against what is stored), builds the definitions and puts their roots
// in `roots`; when it answers 0, those units are stored in one go and `out`
// hears how many, unless `quiet` (its output is a document). Nothing is stored
// when it answers anything else.
int storeMade(const std::string& repo, bool quiet, std::ostream& out, std::ostream& err,
              const std::function<int(krstore::Repository&, std::vector<_ADObject*>& roots)>& make);
// `list`: the units, one a line: class, name, version, revision, lock owner.
int list(const std::string& repo, std::ostream& out, std::ostream& err);
// `delete NAME`, `lock NAME`, `unlock NAME [--force]`.
int remove(const std::string& repo, const std::string& name, std::ostream& out, std::ostream& err);
int lock(const std::string& repo, const std::string& name, std::ostream& out, std::ostream& err);
int unlock(const std::string& repo, const std::string& name, bool force, std::ostream& out, std::ostream& err);
// `copy-repo TARGET`: every unit copied into another, empty repository.
int copyRepository(const std::string& repo, const std::string& target, std::ostream& out, std::ostream& err);

}  // namespace repocmd

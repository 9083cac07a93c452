// Check.h — checking DBDs and PSBs against the rules that the database
// manager's generation enforces. A check walks a definition through the
// model's public interface and answers findings: severity, a stable code, the
// object's path (HOSPDBD/PATIENT/PATNAME), a message, and the deck location of
// the object when the definition was loaded from decks.
#pragma once

#include <krmwtarn/platform/common/Export.h>
#include <krmwtarn/platform/common/Finding.h>

#include <krmwtarn/source/DeckLoader.h>

#include <krmwtarn/krmwtarn.h>

#include <string>
#include <vector>

namespace krcheck {

using kr::Severity;

// A rule broken: the rule's severity and code, the object's path
// (HOSPDBD/PATIENT/PATNAME), the message in the statements' words, and the
// deck place of the object when it came from a deck.
using Finding = kr::Finding;

// Checks one definition. With `from`, the load that made it, findings carry
// the location of the statement that made the object they are about.
KRMWTARN_API std::vector<Finding> check(_DSDBD* dbd, const krsource::LoadResult* from = nullptr);
KRMWTARN_API std::vector<Finding> check(_DSPSB* psb, const krsource::LoadResult* from = nullptr);
// Every DBD and PSB of a load (DBDs first), located.
KRMWTARN_API std::vector<Finding> check(const krsource::LoadResult& loaded);
// Several definitions (DBDs and PSBs; other objects are passed over).
KRMWTARN_API std::vector<Finding> check(const std::vector<ADObject>& definitions);

KRMWTARN_API bool hasErrors(const std::vector<Finding>& findings) noexcept;

}  // namespace krcheck

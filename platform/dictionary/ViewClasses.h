// ViewClasses.h — class descriptions of the data-dictionary and annotation
// classes that only the views name: annotation texts and their link, the
// dependency link between parts, data elements (their aliases are dictionary
// classes, DSDictionary.h), structure definitions and the dictionary's own
// links to them (a data item's type definition is a made class).
#pragma once

#include <krmwtarn/platform/common/Export.h>

#include <krmwtarn/platform/repository/DSRegistration.h>

// The record that describes these classes (no factory: no objects of them are
// made here). Registered on the first call; the view service calls this before
// it registers the data-dictionary views.
KRMWTARN_API DSRegistration& DSDictionary_viewClasses();

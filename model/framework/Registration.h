// Registration.h — the component's registration record: its class table (68
// rows: the object classes of classes.def, then the link classes of links.def,
// then a row of nulls), its factory (dispatching on the class name's hash) and
// its name "ewswtarn".
#pragma once

#include "model/framework/Catalogue.h"
#include "platform/repository/DSRegistration.h"

extern _classStruct ewswtarnClassTable[];
ADObject* ewswtarnFactory(const char* className, const char* context, const char* objID);
extern const char* const ewswtarnComponentName;

// Number of rows of the class table (without the closing row of nulls): the
// rows of classes.def and links.def.
constexpr int ewswtarnClassCount = kr::objectClassCount + kr::linkClassCount;

class ADLink;

// Make a link of the named class between two objects, exactly as that class's
// constructor does (same checks, same exceptions); with `placeAfter`, as the
// ordered constructor does, behind `after`. The caller owns the new handle.
// Null for an unknown link class.
ADLink* ewswtarnCreateLink(const char* linkClass, ADObject* source, ADObject* target,
                           ADObject* after = nullptr, bool placeAfter = false);

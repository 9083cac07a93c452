// DSController.h — one step of the controller rule, for callers that walk or
// cache the chain themselves (_ADObject::findController walks it to the top).
#pragma once

#include <krmwtarn/platform/common/Export.h>

class _ADObject;

// The object that controls `o` directly: the far end of the first link, in
// attribute-table order, in which `o` stands at the controlled end; for a link
// object, its controlling end. Null when nothing controls `o`.
KRMWTARN_API _ADObject* dsControllerStep(_ADObject* o);

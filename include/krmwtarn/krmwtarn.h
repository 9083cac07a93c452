// krmwtarn.h — everything a client of the library uses: the platform substitute
// (handles, collections, registry, exceptions, trace), the 27 object classes,
// the 41 link classes and the registration record.
#pragma once

#include "platform/common/KVException.h"
#include "platform/common/Trace.h"
#include "platform/repository/ADLink.h"
#include "platform/repository/DSModelCollection.h"
#include "platform/repository/DSRegistrar.h"
#include "platform/repository/DSRegistration.h"
#include "model/framework/Registration.h"
#include "model/links/DSLinks.h"

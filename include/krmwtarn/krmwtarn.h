// krmwtarn.h — everything a client of the library uses: the platform substitute
// (handles, collections, registry, exceptions, trace), the 27 object classes,
// the 41 link classes and the registration record.
#pragma once

#include <krmwtarn/platform/common/KVException.h>
#include <krmwtarn/platform/common/Trace.h>
#include <krmwtarn/platform/repository/ADLink.h>
#include <krmwtarn/platform/repository/DSModelCollection.h>
#include <krmwtarn/platform/repository/DSRegistrar.h>
#include <krmwtarn/platform/repository/DSRegistration.h>
#include <krmwtarn/model/framework/Registration.h>
#include <krmwtarn/model/links/DSLinks.h>

// DSRepositoryClient.h — the repository behind the unit operations of technology
// objects. The platform only calls it: whoever opens a repository installs an
// implementation at run time (the store layer does), and without one the unit
// operations answer 0 and leave everything in memory as it is.
#pragma once

#include <krmwtarn/platform/common/Export.h>

class _ADObject;
class DSModelCollection;

// The operations a repository performs on the unit of an object (the unit of
// its topmost controller). Each answers 0 when done; a refusal is thrown as a
// KVException* with a message, and leaves the objects in memory as they were.
class KRMWTARN_API DSRepositoryBackend {
public:
    virtual ~DSRepositoryBackend() = default;
    virtual int store(_ADObject* object) = 0;
    virtual int retrieve(_ADObject* object) = 0;
    virtual int refresh(_ADObject* object) = 0;
    virtual int lock(_ADObject* object) = 0;
    virtual int unlock(_ADObject* object) = 0;
    virtual int touch(_ADObject* object) = 0;
    virtual int deleteFromRepository(_ADObject* object) = 0;
    virtual int getDeleteList(_ADObject* object, DSModelCollection* into) = 0;
    virtual int copy(_ADObject* object) = 0;
};

namespace dsrepository {
// The repository the unit operations go to, or null (objects in memory only).
KRMWTARN_API DSRepositoryBackend* current() noexcept;
// Make `backend` the current repository (null: none); answers the previous one.
// The caller keeps ownership.
KRMWTARN_API DSRepositoryBackend* install(DSRepositoryBackend* backend) noexcept;
}  // namespace dsrepository

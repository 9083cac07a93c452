// DSmacro.h — a generated source statement of the database manager. This
// library produces none; operations that would return one return the shared
// empty statement.
#pragma once

#include <krmwtarn/platform/common/Export.h>

class KRMWTARN_API DSmacro {
public:
    static DSmacro& empty() noexcept;
    const char* text() const noexcept { return ""; }
};

class DSParmList;

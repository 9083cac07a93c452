// DSmacro.h — a generated source statement of the database manager. This
// library produces none; operations that would return one return the shared
// empty statement.
#pragma once

class DSmacro {
public:
    static DSmacro& empty() noexcept;
    const char* text() const noexcept { return ""; }
};

class DSParmList;

// DSRegistration.h — the record a component hands the repository client when it
// loads: its factory, its class table and its name. Every record constructed is
// kept in load order, so the client can find any class of any component (its
// superclass and attribute table) and make objects of it through the factory.
#pragma once

#include <krmwtarn/platform/common/Export.h>

#include <krmwtarn/platform/repository/ADAttributeEntry.h>

#include <vector>

// One row of a component's class table; the table ends with a row of nulls.
struct KRMWTARN_API _classStruct {
    const char* className;
    const char* superclassName;
    ADAttributeEntry* attributes;
};

typedef ADObject* (*DSFactoryFn)(const char* className, const char* context, const char* objID);

class KRMWTARN_API DSRegistration {
public:
    // A factory may be null for a component that only describes classes.
    DSRegistration(DSFactoryFn factory, _classStruct* classTable, const char* componentName);
    ~DSRegistration();
    DSRegistration(const DSRegistration&) = delete;
    DSRegistration& operator=(const DSRegistration&) = delete;

    DSFactoryFn factory() const { return factory_; }
    _classStruct* classTable() const { return classTable_; }
    const char* componentName() const { return componentName_; }
    int classCount() const;

    // Every record registered so far, in load order.
    static const std::vector<DSRegistration*>& all();
    // The row of a class in any registered component, or null.
    static const _classStruct* findClass(const char* className);
    // The record whose class table holds the class, or null.
    static DSRegistration* componentOf(const char* className);
    // Make a handle through the owning component's factory (null if unknown).
    static ADObject* create(const char* className, const char* context, const char* objID);

private:
    DSFactoryFn factory_;
    _classStruct* classTable_;
    const char* componentName_;
};

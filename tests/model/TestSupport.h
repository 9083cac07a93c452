// TestSupport.h — shared fixtures: every test ends by releasing the repository
// so object graphs with cycles are freed, and can record what objects notify.
#pragma once

#include <krmwtarn/krmwtarn.h>

#include "tests/common/TestSupport.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

class RepositoryTest : public ::testing::Test {
protected:
    void SetUp() override {
        adnotify::setListener({[this](_ADObject* o, const char* name) {
                                   notes.push_back({o, name});
                               },
                               [this](_ADObject* o) { changeFlags.push_back(o); }});
    }
    void TearDown() override {
        adnotify::setListener({});
        DSRegistrar::releaseAll();
    }
    struct Note {
        _ADObject* object;
        std::string name;
    };
    std::vector<Note> notes;
    std::vector<_ADObject*> changeFlags;

    template <class H>
    static H make(const char* context = "V1") {
        return H(context, ADObject::defaultObjID(), 1);
    }
};

// KVException.h — the common library's exception: a first text (a source file
// name such as "ewswtarn_" or a message id), a number, and further texts. It is
// thrown as a pointer to a newly allocated object that the catcher deletes.
#pragma once

#include <krmwtarn/platform/common/Export.h>

#include <initializer_list>
#include <string>
#include <vector>

class KRMWTARN_API KVException {
public:
    KVException(const char* first, long number, std::initializer_list<const char*> texts = {});
    KVException(const char* first, long number, const char* t1, const char* t2 = nullptr, const char* t3 = nullptr,
                const char* t4 = nullptr, const char* t5 = nullptr);

    const char* first() const { return first_.c_str(); }
    long number() const { return number_; }
    int textCount() const { return static_cast<int>(texts_.size()); }
    // Further text i (0-based), or null past the end.
    const char* text(int i) const;
    // All parts joined for a human reader: "first number: t1, t2, ...".
    std::string message() const;

private:
    std::string first_;
    long number_;
    std::vector<std::string> texts_;
};

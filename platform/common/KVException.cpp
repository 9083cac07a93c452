// KVException.cpp — storage and formatting of the common exception object.
#include <krmwtarn/platform/common/KVException.h>

KVException::KVException(const char* first, long number, std::initializer_list<const char*> texts)
    : first_(first ? first : ""), number_(number) {
    for (const char* t : texts) texts_.emplace_back(t ? t : "");
}

KVException::KVException(const char* first, long number, const char* t1, const char* t2, const char* t3, const char* t4,
                         const char* t5)
    : first_(first ? first : ""), number_(number) {
    // Trailing null texts are absent; a null in the middle is kept as "".
    const char* all[] = {t1, t2, t3, t4, t5};
    int last = -1;
    for (int i = 0; i < 5; ++i)
        if (all[i]) last = i;
    for (int i = 0; i <= last; ++i) texts_.emplace_back(all[i] ? all[i] : "");
}

const char* KVException::text(int i) const {
    if (i < 0 || i >= textCount()) return nullptr;
    return texts_[static_cast<size_t>(i)].c_str();
}

std::string KVException::message() const {
    std::string m = first_ + " " + std::to_string(number_);
    for (size_t i = 0; i < texts_.size(); ++i) m += (i == 0 ? ": " : ", ") + texts_[i];
    return m;
}

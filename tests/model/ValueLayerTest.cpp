// ValueLayerTest.cpp — the value types list and the generic access built on
// it: every row of every class maps to one value type, the table chains read
// the same from a class and from an object, and values assigned and visited
// through the helpers meet the classes' own typed accessors.
#include "TestSupport.h"

#include <krmwtarn/platform/repository/ADReflection.h>

#include <cstring>
#include <limits>
#include <map>
#include <memory>
#include <set>
#include <string>
#include <type_traits>
#include <vector>

using ValueLayer = RepositoryTest;

namespace {
int matches(const char* type) {
    int n = 0;
    for (const ADValueTypeInfo& info : adValueTypes) n += type && std::strcmp(info.name, type) == 0;
    return n;
}

// The range of a `width`-byte integer of the value type's signedness.
template <class T>
void expectRangeOfWidth() {
    using V = typename T::value;
    const int bits = 8 * T::width;
    long long lo = std::is_signed_v<V> ? -(1LL << (bits - 1)) : 0;
    long long hi = std::is_signed_v<V> ? (1LL << (bits - 1)) - 1 : (1LL << bits) - 1;
    EXPECT_EQ(T::low, lo) << T::name;
    EXPECT_EQ(T::high, hi) << T::name;
    EXPECT_LE(static_cast<long long>(std::numeric_limits<V>::min()), lo) << T::name;
    EXPECT_GE(static_cast<unsigned long long>(std::numeric_limits<V>::max()), static_cast<unsigned long long>(hi))
        << T::name;
    EXPECT_GE(T::columnLow, T::low) << T::name;
    EXPECT_LE(T::columnHigh, T::high) << T::name;
}
}  // namespace

TEST_F(ValueLayer, TypeListIsConsistentWithItsTraits) {
    std::set<std::string> names;
    for (int i = 0; i < adValueTypeCount; ++i) {
        const ADValueTypeInfo& info = adValueTypes[i];
        EXPECT_TRUE(names.insert(info.name).second) << info.name;
        EXPECT_EQ(static_cast<int>(info.type), i);
        EXPECT_EQ(adFindValueType(info.name), &info);
        adDispatch(info.type, [&](auto tr) {
            using T = decltype(tr);
            EXPECT_STREQ(T::name, info.name);
            EXPECT_EQ(T::width, info.width);
            if constexpr (T::form == ADValueForm::Integer) expectRangeOfWidth<T>();
        });
    }
    EXPECT_EQ(adFindValueType("DSSegment"), nullptr);
    EXPECT_EQ(adFindValueType(nullptr), nullptr);
    EXPECT_EQ(adFindValueType("int"), nullptr);
}

TEST_F(ValueLayer, EveryAttributeRowNamesExactlyOneValueType) {
    int attributes = 0, roles = 0;
    std::set<std::string> used;
    for (const _classStruct* c = ewswtarnClassTable; c->className; ++c) {
        std::vector<const ADAttributeEntry*> byClass;
        adForEachClassRow(c, [&](const _classStruct&, const ADAttributeEntry& row) {
            byClass.push_back(&row);
            std::uint32_t kind = adRowKind(row);
            EXPECT_TRUE(kind == adRowAttribute || kind == adRowRoleAtSource || kind == adRowRoleAtTarget ||
                        kind == adRowLinkSource || kind == adRowLinkTarget)
                << c->className << "." << row.name;
            if (!adIsAttributeRow(row)) {
                // Roles and ends name a class, never a value type.
                EXPECT_EQ(matches(row.type), 0) << c->className << "." << row.name;
                // A role's end is the link's end row whose inverse the role is.
                // (The dictionary's links are no classes of the model.)
                const _classStruct* link = adIsRoleRow(row) ? DSRegistration::findClass(adRoleLinkClass(row)) : nullptr;
                if (link && link->attributes) {
                    ++roles;
                    EXPECT_STREQ(link->attributes[adRoleEnd(row)].inverse, row.name) << c->className;
                }
                return;
            }
            ++attributes;
            ASSERT_EQ(matches(row.type), 1) << c->className << "." << row.name << " " << row.type;
            used.insert(row.type);
            EXPECT_EQ(adFindValueType(row.type)->width, row.width) << c->className << "." << row.name;
            EXPECT_TRUE(row.getter.str && row.setter.str) << c->className << "." << row.name;
        });
        // The first row of a name wins, from the class as from an object of it.
        std::map<std::string, const ADAttributeEntry*> first;
        for (const ADAttributeEntry* row : byClass) first.emplace(row->name, row);
        for (const auto& [name, row] : first) EXPECT_EQ(adFindClassRow(c->className, name.c_str()), row) << name;
        // An object's chain walks the same rows as its class's.
        std::unique_ptr<ADObject> h(ewswtarnFactory(c->className, "V1", ADObject::defaultObjID()));
        ASSERT_TRUE(h && !h->isEmpty()) << c->className;
        std::vector<const ADAttributeEntry*> byObject;
        adForEachRow(h->impl(), [&](const ADAttributeEntry& row) { byObject.push_back(&row); });
        EXPECT_GE(byObject.size(), byClass.size()) << c->className;
        for (const auto& [name, row] : first) EXPECT_EQ(adFindRow(h->impl(), name.c_str()), row) << name;
    }
    EXPECT_GT(attributes, 68);
    EXPECT_GT(roles, 68);
    EXPECT_EQ(static_cast<int>(used.size()), adValueTypeCount) << "a value type no class uses";
    EXPECT_EQ(adFindClassRow("NoSuchClass", "adName"), nullptr);
}

TEST_F(ValueLayer, AssignedValuesReadBackThroughTheTypedGetters) {
    DSPSB psb = make<DSPSB>();
    DSPCBdb pcb = make<DSPCBdb>();
    auto set = [](_ADObject* o, const char* name, long long number, const char* text) {
        const ADAttributeEntry* row = adFindRow(o, name);
        ASSERT_NE(row, nullptr) << name;
        EXPECT_TRUE(adAssignValue(o, *row, omStore, [&](auto tr) {
            return adFromPlain<decltype(tr)>(text == nullptr && number == 0, text, number);
        })) << name;
    };
    set(psb.impl(), "hpPSBName", 0, "PSB1");
    set(psb.impl(), "compatibility", 1, nullptr);
    set(psb.impl(), "ioErrorOption", -32768, nullptr);
    set(psb.impl(), "maximumQxCalls", 65535, nullptr);
    set(psb.impl(), "ioaSize", -2147483648LL, nullptr);
    set(pcb.impl(), "positioning", 0, "Sx");
    EXPECT_STREQ(psb->_get_hpPSBName(), "PSB1");
    EXPECT_EQ(psb->_get_compatibility(), 1);
    EXPECT_EQ(psb->_get_ioErrorOption(), -32768);
    EXPECT_EQ(psb->_get_maximumQxCalls(), 65535);
    EXPECT_EQ(psb->_get_ioaSize(), -2147483648L);
    EXPECT_EQ(pcb->_get_positioning(), 'S');

    // A null text clears a string; an empty one leaves a char unset.
    set(psb.impl(), "hpPSBName", 0, nullptr);
    set(pcb.impl(), "positioning", 0, "");
    EXPECT_EQ(psb->_get_hpPSBName(), nullptr);
    EXPECT_EQ(pcb->_get_positioning(), '\0');

    // A visit hands each row's value over as its own C++ type.
    psb->_set_maximumQxCalls(40000, omStore);
    psb->_set_ioErrorOption(-5, omStore);
    pcb->_set_positioning('P', omStore);
    auto seen = [](_ADObject* o, const char* name) {
        std::string out;
        EXPECT_TRUE(adVisitValue(o, *adFindRow(o, name), [&](auto tr, auto value) {
            using T = decltype(tr);
            static_assert(std::is_same_v<decltype(value), typename T::value>);
            if constexpr (T::form == ADValueForm::Text)
                out = std::string(T::name) + ":" + (value ? value : "null");
            else if constexpr (T::form == ADValueForm::Char)
                out = std::string(T::name) + ":" + value;
            else
                out = std::string(T::name) + ":" + std::to_string(value);
        }));
        return out;
    };
    EXPECT_EQ(seen(psb.impl(), "maximumQxCalls"), "ushort:40000");
    EXPECT_EQ(seen(psb.impl(), "ioErrorOption"), "short:-5");
    EXPECT_EQ(seen(psb.impl(), "hpPSBName"), "string:null");
    EXPECT_EQ(seen(pcb.impl(), "positioning"), "char:P");
    EXPECT_EQ(seen(psb.impl(), "compatibility"), "boolean:1");

    // A role row holds no value: nothing is visited or assigned.
    const ADAttributeEntry* role = adFindRow(psb.impl(), "listPCBs");
    ASSERT_NE(role, nullptr);
    EXPECT_FALSE(adVisitValue(psb.impl(), *role, [](auto, auto) { FAIL(); }));
}

// RandomTest.cpp — short seeded runs of the randomized operation sequence (the
// long run is the random_long program), and the faults such runs found, each
// pinned by a test of its own.
#include <gtest/gtest.h>

#include <cstdlib>
#include <functional>
#include <memory>
#include <string>

#include "RandomModel.h"

namespace {
constexpr std::uint64_t shortRun = 1500;

class Seeds : public ::testing::TestWithParam<std::uint64_t> {};

std::unique_ptr<KVException> thrown(const std::function<void()>& f) {
    try {
        f();
    } catch (KVException* e) {
        return std::unique_ptr<KVException>(e);
    }
    return nullptr;
}
}  // namespace

TEST_P(Seeds, InvariantsHoldAfterEveryOperation) {
    EXPECT_EQ(krrandom::runSeeded(GetParam(), shortRun), "");
}

INSTANTIATE_TEST_SUITE_P(Short, Seeds, ::testing::Range<std::uint64_t>(1, 11));

// The runs above must reach every kind of refusal and every operation, or a
// quiet change of the generator would leave paths untested.
TEST(RandomRuns, ReachEveryRefusalAndOperation) {
    krrandom::Tally t;
    for (std::uint64_t seed = 100; seed < 104; ++seed) ASSERT_EQ(krrandom::runSeeded(seed, shortRun, &t), "");
    for (long n : {2441L, 2498L, 2510L, 2514L}) EXPECT_GE(t.thrown[n], 3u) << n << "\n" << t.summary();
    for (long n : {2441L, 2498L, 2499L}) EXPECT_GE(t.roleRefused[n], 3u) << n << "\n" << t.summary();
    EXPECT_EQ(t.operations.size(), 15u) << t.summary();
    EXPECT_GT(t.operations["create link"], t.thrown[2441] + t.thrown[2498] + t.thrown[2510] + t.thrown[2514])
        << "most creations must succeed\n"
        << t.summary();
}

// Generic creation with a source of the wrong class: the duplicate test walked
// the source's role through the declared source class before any class test,
// reading an object of another class as if it had that role.
TEST(RandomFaults, GenericCreationTestsTheSourceClassBeforeTouchingIt) {
    for (bool ordered : {false, true}) {
        std::unique_ptr<ADObject> field(ewswtarnFactory("DSField", "V1", ADObject::defaultObjID()));
        std::unique_ptr<ADObject> segment(ewswtarnFactory("DSSegment", "V1", ADObject::defaultObjID()));
        std::size_t registered = DSRegistrar::count();
        auto e = thrown(
            [&] { delete ewswtarnCreateLink("DSContainsSegment", field.get(), segment.get(), nullptr, ordered); });
        ASSERT_TRUE(e);
        EXPECT_EQ(e->number(), 2498);
        EXPECT_STREQ(e->text(0), "DSDBD");
        EXPECT_STREQ(e->text(1), "DSField");
        EXPECT_STREQ(e->text(3), "source");
        EXPECT_EQ(DSRegistrar::count(), registered);
        EXPECT_EQ((*segment)->_get_useCount(), 1);
    }
    DSRegistrar::releaseAll();
}

// A caller may give any object ID, also one of the form the default ID turns
// into. An object made later with the default ID must still get an identity of
// its own: else it cannot be registered, and a lookup by its identity answers
// the other object.
TEST(RandomFaults, AGivenIdOfTheGeneratedFormIsNotHandedOutAgain) {
    {
        DSDBD first("V1", ADObject::defaultObjID(), 1);
        ASSERT_EQ(first->objID()[0], '#');
        std::string next = "#" + std::to_string(std::atol(first->objID() + 1) + 1);
        DSDBD given("V1", next.c_str(), 1);
        DSDBD made("V1", ADObject::defaultObjID(), 1);
        EXPECT_STRNE(made->objID(), next.c_str());
        EXPECT_EQ(DSRegistrar::findObj("DSDBD", made->objID(), "V1"), made.impl());
    }
    DSRegistrar::releaseAll();
}

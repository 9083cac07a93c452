// GraphCheck.h — the consistency check of the whole object graph: every
// registered object found by its identity, every link in exactly the roles of
// its two ends (and each role holding only links of its class, with the owner
// at the right end), every end of the class its link declares, use counts
// covering the handles the graph holds. Debug builds run it after each load,
// import, retrieve and undo (KR_ASSERT_GRAPH); the tests run it at will.
#pragma once

#include <krmwtarn/platform/common/Export.h>

#include <krmwtarn/platform/repository/ADObject.h>

#include <string>
#include <vector>

namespace kr {

// What is wrong with the graph, one sentence per fault (empty: nothing). With
// `held`, the handles the caller holds outside the graph, each object's use
// count must equal the handles that the graph and `held` hold on it; without,
// it must cover those the graph holds (an empty handle in `held` counts for
// nothing; copying handles into `held` would add to the counts). At most
// `limit` faults are told.
KRMWTARN_API std::vector<std::string> checkGraph(const std::vector<ADObject>* held = nullptr, std::size_t limit = 20);

// Prints the faults with `after` (what was just done) on standard error and
// aborts when there are any.
KRMWTARN_API void assertGraph(const char* after);

}  // namespace kr

namespace kr {
// Checks the graph when the scope ends, however it ends (a refused step must
// leave the graph as whole as a done one).
struct GraphCheckOnExit {
    const char* after;
    explicit GraphCheckOnExit(const char* what) noexcept : after(what) {}
    GraphCheckOnExit(const GraphCheckOnExit&) = delete;
    GraphCheckOnExit& operator=(const GraphCheckOnExit&) = delete;
    ~GraphCheckOnExit() { assertGraph(after); }
};
}  // namespace kr

// After a step that rebuilds part of the graph, in debug builds only: now, or
// when the enclosing scope ends.
#ifdef NDEBUG
#define KR_ASSERT_GRAPH(after) ((void)0)
#define KR_ASSERT_GRAPH_ON_EXIT(after) ((void)0)
#else
#define KR_ASSERT_GRAPH(after) ::kr::assertGraph(after)
#define KR_ASSERT_GRAPH_ON_EXIT(after) \
    const ::kr::GraphCheckOnExit krGraphCheckOnExit_ { after }
#endif

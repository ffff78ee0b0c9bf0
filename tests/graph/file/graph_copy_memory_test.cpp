// A copy for which the memory does not suffice leaves its target as it was.
#include "common/graph_state.h"
#include "graph/file/graph_file.h"
#include "graph/model/graph.h"

#include <cstdlib>
#include <functional>
#include <gtest/gtest.h>
#include <new>

namespace {

constexpr std::size_t kLarge = 4000; // bytes: the points of a data set come in blocks of that size

int g_largeLeft = -1; // that can be had; any number while below 0

} // namespace

// Not inlined: the compiler would see free called on what came from new.
void* operator new(std::size_t size) {
    if (size >= kLarge && g_largeLeft >= 0 && g_largeLeft-- == 0) throw std::bad_alloc();
    if (void* memory = std::malloc(size > 0 ? size : 1)) return memory;
    throw std::bad_alloc();
}
void* operator new(std::size_t size, const std::nothrow_t&) noexcept {
    return std::malloc(size > 0 ? size : 1);
}
[[gnu::noinline]] void operator delete(void* memory) noexcept {
    std::free(memory);
}
[[gnu::noinline]] void operator delete(void* memory, const std::nothrow_t&) noexcept {
    std::free(memory);
}
[[gnu::noinline]] void operator delete(void* memory, std::size_t) noexcept {
    std::free(memory);
}

namespace lumoplot {
namespace {

void FillWith(TxyGraph& graph, const char* name, int points) {
    for (int number = 1; number <= 3; ++number) {
        TSeries& series = *graph.FindSeries(graph.AddSeries());
        series.SetSeriesName(name + std::to_string(number));
        for (int i = 0; i < points; ++i) series.AddPoint(i, i % 7 * number);
    }
    graph.AddMark({.X1 = 1.0 * points, .Caption = name});
    graph.Appearance()->SetGraphTitle(name);
    graph.Appearance()->SetXAxisSerIndex(2);
}

/// Runs out of memory at each of its large pieces in turn, until it has enough.
void ExpectAllOrNothing(TxyGraph& graph, const TxyGraph& wanted, const std::function<void()>& replace) {
    const TGraphState before(graph);
    for (int pieces = 0;; ++pieces) {
        ASSERT_LT(pieces, 1000);
        g_largeLeft = pieces;
        bool isDone = true;
        try {
            replace();
        } catch (const std::bad_alloc&) {
            isDone = false;
        }
        g_largeLeft = -1;
        const TGraphState after(graph);
        ASSERT_EQ(TGraphState::Difference(after, isDone ? TGraphState(wanted) : before), "") << pieces;
        if (!isDone) continue;
        EXPECT_GT(pieces, 3);
        return;
    }
}

TEST(GraphCopyMemory, ACopyAndALoadingAreAllOrNothing) {
    for (const bool fromFile : {false, true}) {
        SCOPED_TRACE(fromFile);
        TxyGraph graph, wanted;
        FillWith(graph, "old", 3000);
        FillWith(wanted, "new", 5000);
        const TBytes bytes = FileOf(wanted);
        LoadBytes(wanted, bytes);
        ExpectAllOrNothing(graph, wanted,
                           [&] { fromFile ? LoadBytes(graph, bytes) : graph.CopyFrom(wanted); });
    }
}

} // namespace
} // namespace lumoplot

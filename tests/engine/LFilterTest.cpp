// SPDX-License-Identifier: MIT
#include "engine/LFilter.h"
#include "tests/engine/Samples.h"

namespace larynth {
namespace {

Samples Filtered(LFilter& filter, const Samples& inputs) {
    return Feed([&filter](double x) { return filter.Filter(x); }, inputs);
}

TEST(LFilterRing, SizeIsTheNextPowerOfTwo) {
    const std::size_t sizes[] = {1, 1, 2, 4, 4, 8};
    for (std::size_t count = 0; count < 6; ++count)
        EXPECT_EQ(LFilterRing(count).Size(), sizes[count]) << count;
}

TEST(LFilter, FollowsTheDifferenceEquation) {
    struct Row {
        const char* name;
        Samples feedback, feedForward, inputs, expected;
    };
    const Row rows[] = {
        {"none", {}, {}, {4.0, 2.0}, {0.0, 0.0}},
        {"average", {}, {0.5, 0.5}, {4.0, 2.0, 0.0}, {2.0, 3.0, 1.0}},
        {"delay", {}, {0.0, 0.0, 1.0}, {1.0, 2.0, 3.0, 4.0, 5.0, 6.0}, {0.0, 0.0, 1.0, 2.0, 3.0, 4.0}},
        {"one pole", {0.5}, {1.0}, {1.0, 0.0, 0.0, 1.0}, {1.0, 0.5, 0.25, 1.125}},
        {"echo",
         {0.0, 0.0, -0.5},
         {1.0},
         {8.0, 4.0, 2.0, 0.0, 0.0, 0.0, 0.0},
         {8.0, 4.0, 2.0, -4.0, -2.0, -1.0, 2.0}},
        // Another order of the sum would lose the 1 beside 1e16.
        {"feedback first", {1.0, -1.0}, {1.0}, {1e16, 0.0, 1.0}, {1e16, 1e16, 1.0}},
        {"newest first", {}, {1.0, -1.0, 1.0}, {1.0, 1e16, 1e16}, {1.0, 1e16, 1.0}},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        LFilter filter(0, 0);
        filter.SetCoefficients(row.feedback, row.feedForward);
        EXPECT_EQ(Filtered(filter, row.inputs), row.expected);
        filter.Reset();
        EXPECT_EQ(Filtered(filter, row.inputs), row.expected);
    }
}

TEST(LFilter, HistoryOutlivesNewValuesButNotNewCounts) {
    struct Row {
        const char* name;
        Samples feedback, feedForward;
        double expected;  // for input 0 after inputs 1, 1 through y[n] = x[n−1] + y[n−1]
    };
    const Row rows[] = {
        {"same counts", {0.5}, {0.0, 4.0}, 4.5},
        {"other feedback count", {0.5, 0.5}, {0.0, 4.0}, 4.0},
        {"other feed-forward count", {0.5}, {0.0, 4.0, 4.0}, 0.5},
    };
    for (const Row& row : rows) {
        LFilter filter(1, 2);
        filter.SetCoefficients({1.0}, {0.0, 1.0});
        EXPECT_EQ(Filtered(filter, {1.0, 1.0}), (Samples{0.0, 1.0}));
        filter.SetCoefficients(row.feedback, row.feedForward);
        EXPECT_EQ(filter.Filter(0.0), row.expected) << row.name;
    }
}

}  // namespace
}  // namespace larynth

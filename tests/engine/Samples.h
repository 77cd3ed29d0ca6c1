// SPDX-License-Identifier: MIT
#pragma once

#include <gtest/gtest.h>

#include "tests/support/Numbers.h"

namespace larynth {

/// What `step` makes of each input in turn.
Samples Feed(auto&& step, Samples samples) {
    for (double& x : samples) x = step(x);
    return samples;
}

inline void ExpectNear(const Samples& actual, const Samples& expected, double tolerance) {
    ASSERT_EQ(actual.size(), expected.size());
    for (std::size_t i = 0; i < expected.size(); ++i) EXPECT_NEAR(actual[i], expected[i], tolerance) << i;
}

}  // namespace larynth

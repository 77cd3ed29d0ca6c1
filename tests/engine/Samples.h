// SPDX-License-Identifier: MIT
#pragma once

#include <concepts>
#include <cstddef>
#include <gtest/gtest.h>
#include <limits>
#include <vector>

#include "engine/FilterComponent.h"

namespace larynth {

using Samples = std::vector<double>;

inline constexpr double kNan = std::numeric_limits<double>::quiet_NaN();

/// What `step` makes of each input in turn.
template <std::invocable<double> Step>
Samples Feed(Step&& step, const Samples& inputs) {
    Samples outputs;
    for (const double x : inputs) outputs.push_back(step(x));
    return outputs;
}

inline Samples Feed(FilterComponent& element, const Samples& inputs) {
    return Feed([&element](double x) { return element.Process(x); }, inputs);
}

inline void ExpectNear(const Samples& actual, const Samples& expected, double tolerance) {
    ASSERT_EQ(actual.size(), expected.size());
    for (std::size_t i = 0; i < expected.size(); ++i)
        EXPECT_NEAR(actual[i], expected[i], tolerance) << "sample " << i;
}

}  // namespace larynth

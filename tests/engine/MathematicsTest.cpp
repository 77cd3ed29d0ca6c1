// SPDX-License-Identifier: MIT
#include <cmath>
#include <cstdlib>
#include <fstream>
#include <map>
#include <random>
#include <sstream>

#include "engine/Exponential.h"
#include "engine/Trigonometry.h"
#include "tests/engine/Samples.h"

namespace larynth {
namespace {

/// The value that lies so many units in the last place above `x`.
double Above(double x, int units) {
    for (; units > 0; --units) x = std::nextafter(x, HUGE_VAL);
    for (; units < 0; ++units) x = std::nextafter(x, -HUGE_VAL);
    return x;
}

bool Same(double a, double b) {
    return std::isnan(b) ? std::isnan(a) : a == b && std::signbit(a) == std::signbit(b);
}

/// Against a table of true values: our bits are pinned on every platform, and so is how far they are off.
TEST(Mathematics, HasItsBitsNextToTheTrueValues) {
    const std::map<std::string, double (*)(double)> functions = {
        {"Sine", Sine},           {"Cosine", Cosine},           {"Tangent", Tangent},
        {"ArcCosine", ArcCosine}, {"Exponential", Exponential}, {"Logarithm", Logarithm}};
    std::ifstream file(LARYNTH_FUNCTION_TABLE);
    int rows = 0;
    for (std::string line; std::getline(file, line);) {
        std::string function, argument, nearest;
        int above = 0;
        if (line.starts_with('#')) continue;
        ASSERT_TRUE(std::istringstream(line) >> function >> argument >> nearest >> above) << line;
        const double value = functions.at(function)(std::strtod(argument.c_str(), nullptr));
        EXPECT_TRUE(Same(value, Above(std::strtod(nearest.c_str(), nullptr), above)))
            << line << " got " << value;
        ++rows;
    }
    EXPECT_GT(rows, 100);
}

/// Loops use the reduced forms, single values the others.
TEST(Mathematics, IsTheSameWithAndWithoutBranches) {
    std::mt19937_64 random(1);
    for (const double limit : {1.0, 1e4, kSineReductionLimit}) {
        std::uniform_real_distribution<double> argument(-limit, limit);
        for (int i = 0; i < 20000; ++i) {
            const double x = argument(random);
            ASSERT_EQ(ReducedSine(ReduceToQuadrant(x)), Sine(x)) << x;
            ASSERT_EQ(ReducedCosine(ReduceToQuadrant(x)), Cosine(x)) << x;
        }
    }
}

}  // namespace
}  // namespace larynth

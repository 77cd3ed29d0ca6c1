// SPDX-License-Identifier: MIT
#include <cmath>
#include <cstdlib>
#include <fstream>
#include <map>
#include <sstream>

#include "engine/Exponential.h"
#include "engine/Trigonometry.h"
#include "tests/engine/Samples.h"

namespace larynth {
namespace {

/// Against a table of true values: our bits are pinned on every platform, and so is how far they are off.
TEST(Mathematics, HasItsBitsNextToTheTrueValues) {
    const std::map<std::string, double (*)(double)> functions = {
        {"Sine", Sine},           {"Cosine", Cosine},           {"Tangent", Tangent},
        {"ArcCosine", ArcCosine}, {"Exponential", Exponential}, {"Logarithm", Logarithm}};
    std::ifstream file(LARYNTH_FUNCTION_TABLE);
    int rows = 0;
    for (std::string line, function, argument, value; std::getline(file, line);) {
        if (line.starts_with('#')) continue;
        int above = 0;
        ASSERT_TRUE(std::istringstream(line) >> function >> argument >> value >> above) << line;
        double expected = std::strtod(value.c_str(), nullptr);
        if (above != 0) expected = std::nextafter(expected, above * kInfinity);
        const double got = functions.at(function)(std::strtod(argument.c_str(), nullptr));
        EXPECT_TRUE(std::isnan(expected) ? std::isnan(got) : got == expected) << line << " got " << got;
        EXPECT_TRUE(std::isnan(expected) || std::signbit(got) == std::signbit(expected)) << line;
        ++rows;
    }
    EXPECT_GT(rows, 100);
}

}  // namespace
}  // namespace larynth

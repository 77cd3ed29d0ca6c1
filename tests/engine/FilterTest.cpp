// SPDX-License-Identifier: MIT
#include "engine/AntiResonator.h"
#include "engine/LFilter.h"
#include "engine/Resonator.h"
#include "engine/ShelfFilter.h"
#include "engine/TiltFilter.h"
#include "tests/engine/Samples.h"

namespace larynth {
namespace {

Samples Through(FilterComponent& element, const Samples& inputs) {
    return Feed([&](double x) { return element.Process(x); }, inputs);
}

void ExpectResponse(FilterComponent& element, const Samples& expected, double tolerance) {
    Samples impulse(expected.size());
    impulse[0] = 1.0;
    ExpectNear(Through(element, impulse), expected, tolerance);
}

TEST(Resonator, IsDesignedWithTenDigitPiAndAPlainGainWithoutFrequencyOrBandwidth) {
    const struct {
        double F, BW, gain;
        Samples response;  // with full pi it differs from the tenth digit on
    } rows[] = {
        {500.0, 100.0, 1.0, {0.09581607585042728, 0.17661636331068023, 0.2355733368888544}},
        {-500.0, -100.0, 2.0, {0.20405907003204904, 0.400530864346925}},
        {-0.0, 80.0, 3.0, {3.0, 0.0}},
        {500.0, 0.0, 3.0, {3.0, 0.0}},
        {500.0, kNan, 3.0, {3.0, 0.0}},
    };
    for (const auto& row : rows) {
        Resonator section(1.0, 0.5, 0.5);
        section.SetFB(row.F, row.BW, row.gain, 1.0 / 10000.0);
        ExpectResponse(section, row.response, 1e-15);
    }
}

TEST(Sections, NewCoefficientsContinueFromTheOldStateInTheStatedOrder) {
    // (1e16 − 1e16) + 1 keeps the 1 that any other order rounds away.
    const auto follows = [](auto section) {
        EXPECT_EQ(Through(section, {1e16, 1e16}), (Samples{1e16, 1e16}));
        section.SetABC(1.0, 1.0, -1.0);
        EXPECT_EQ(Through(section, {1.0, 0.0}), (Samples{1.0, -1e16}));
    };
    follows(Resonator());
    follows(AntiResonator());
}

TEST(LFilter, FollowsTheDifferenceEquation) {
    const struct {
        Samples feedback, feedForward, inputs, expected;
    } rows[] = {
        {{0.0, 0.0, -0.5}, {1.0}, {8.0, 4.0, 2.0, 0.0, 0.0}, {8.0, 4.0, 2.0, -4.0, -2.0}},
        // Another order of the sum would lose the 1 beside 1e16.
        {{1.0, -1.0}, {1.0}, {1e16, 0.0, 1.0}, {1e16, 1e16, 1.0}},
        {{}, {1.0, -1.0, 1.0}, {1.0, 1e16, 1e16}, {1.0, 1e16, 1.0}},
    };
    for (const auto& row : rows) {
        LFilter filter(0, 0);
        filter.SetCoefficients(row.feedback, row.feedForward);
        EXPECT_EQ(Feed([&](double x) { return filter.Filter(x); }, row.inputs), row.expected);
    }
}

TEST(LFilter, HistoryOutlivesNewValuesButNotNewCounts) {
    const struct {
        Samples feedback, feedForward;
        double expected;  // for input 0 after inputs 1, 1 through y[n] = x[n−1] + y[n−1]
    } rows[] = {{{0.5}, {0.0, 4.0}, 4.5}, {{0.5, 0.5}, {0.0, 4.0}, 4.0}, {{0.5}, {0.0, 4.0, 4.0}, 0.5}};
    for (const auto& row : rows) {
        LFilter filter(1, 2);
        filter.SetCoefficients({1.0}, {0.0, 1.0});
        filter.Filter(filter.Filter(1.0) + 1.0);
        filter.SetCoefficients(row.feedback, row.feedForward);
        EXPECT_EQ(filter.Filter(0.0), row.expected);
    }
}

TEST(TiltFilter, EachTiltHasItsSectionWhichOnlyAnotherTiltReplaces) {
    const struct {
        int before, TL;
        double fs;
        Samples response;
    } rows[] = {
        {0, 11, 11025, {0.19523162967054908, 0.2180239368768106}},
        {0, 50, 11025, {0.014328472161597198, 0.026218164562012015}},  // as 41
        {41, 41, 22050, {0.014328472161597198}},
        {50, 50, 22050, {0.003743112766474706}},  // compared before it is limited
        {41, 10, 0.0, {0.014328472161597198}},
        {41, -1, 11025, {1.0, 0.0}},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(testing::Message() << row.before << " to " << row.TL << " at " << row.fs);
        TiltFilter filter;
        filter.SetTilt(row.before, 11025.0);
        filter.SetTilt(row.TL, row.fs);
        ExpectResponse(filter, row.response, 1e-14);
    }
    TiltFilter filter;
    for (const int TL : {10, 0, 10}) {
        filter.SetTilt(TL, 11025.0);
        EXPECT_NE(filter.Process(TL == 10 ? 1.0 : 5.0), 0.0);
    }
    EXPECT_NEAR(filter.Process(0.0), 0.41306140429976556, 1e-14) << "it stood still at tilt 0";
}

TEST(ShelfFilter, CoefficientsFollowTheDesign) {
    const Samples lowFeedback = {1.892357996933056, -0.9095665596293483};
    const Samples lowScaled = {1.0311209894516098, -1.8997766352141165, 0.8946287322268105};
    const Samples highScaled = {2.6279794799236433, 0.8531505398037116, 0.5000137833547652};
    const struct {
        double G, F, P3, fs;
        char kind;
        Samples feedback, feedForward;
    } rows[] = {
        {1.5, 500, 0.8, 11025, 'l', lowFeedback, lowScaled},
        {2.0, 3000, 0.75, 16000, 'h', {-0.7848507087707203, -0.41269395321082336}, highScaled},
    };
    Samples a, b;
    for (const auto& row : rows) {
        DesignShelfFilter(row.G, row.F, row.P3, 0.0, row.fs, a, b, row.kind);
        ExpectNear(a, row.feedback, 1e-13);
        ExpectNear(b, row.feedForward, 1e-13);
    }
}

}  // namespace
}  // namespace larynth

// SPDX-License-Identifier: MIT
#include "engine/TiltFilter.h"
#include "tests/engine/Samples.h"

namespace larynth {
namespace {

TEST(TiltFilter, EachTiltHasItsSection) {
    struct Row {
        int TL;
        double fs, first, second, third;  // impulse response
    };
    const Row rows[] = {
        {0, 11025, 1.0, 0.0, 0.0},
        {-7, 11025, 1.0, 0.0, 0.0},
        {1, 11025, 0.5047855704504428, 0.29228838218781295, 0.12693384388701567},
        {7, 8000, 0.3851540309432694, 0.2922492564743937, 0.16631561668243916},
        {10, 11025, 0.2108348735838601, 0.22805327999090774, 0.18500812430885782},
        {11, 11025, 0.19523162967054908, 0.2180239368768106, 0.1826075117723401},
        {20, 16000, 0.04376869114283297, 0.07007720488523499, 0.08414919974764434},
        {41, 11025, 0.014328472161597198, 0.026218164562012015, 0.03597947598557745},
        {50, 11025, 0.014328472161597198, 0.026218164562012015, 0.03597947598557745},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.TL);
        TiltFilter filter;
        filter.SetTilt(row.TL, row.fs);
        ExpectNear(Feed(filter, {1.0, 0.0, 0.0}), {row.first, row.second, row.third}, 1e-14);
    }
}

TEST(TiltFilter, IsDesignedAgainOnlyForAnotherTilt) {
    struct Row {
        const char* name;
        int before, after;
        double fs, impulse;
    };
    const Row rows[] = {
        {"same tilt, other frequency", 41, 41, 22050, 0.014328472161597198},
        {"a tilt past the limit is compared unlimited", 50, 50, 22050, 0.003743112766474706},
        {"no frequency", 41, 10, 0.0, 0.014328472161597198},
        {"frequency not a number", 41, 10, kNan, 0.014328472161597198},
        {"other tilt", 41, 10, 11025, 0.2108348735838601},
        {"tilt off", 41, -1, 11025, 1.0},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        TiltFilter filter;
        filter.SetTilt(row.before, 11025.0);
        filter.SetTilt(row.after, row.fs);
        EXPECT_NEAR(filter.Process(1.0), row.impulse, 1e-14);
    }
}

TEST(TiltFilter, TheSectionStandsStillWhileBypassed) {
    TiltFilter filter;
    filter.SetTilt(10, 11025.0);
    filter.Process(1.0);
    filter.SetTilt(0, 11025.0);
    EXPECT_EQ(Feed(filter, {5.0, -7.0}), (Samples{5.0, -7.0}));
    filter.SetTilt(10, 11025.0);
    EXPECT_NEAR(filter.Process(0.0), 0.22805327999090774, 1e-14);
}

}  // namespace
}  // namespace larynth

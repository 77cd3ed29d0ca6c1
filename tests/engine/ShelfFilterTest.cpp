// SPDX-License-Identifier: MIT
#include "engine/ShelfFilter.h"
#include "tests/engine/Samples.h"

namespace larynth {
namespace {

struct Shelf {
    Samples feedback = {7.0}, feedForward = {7.0};  // replaced by the design

    Shelf(double G, double F, double P3, double P4, double fs, bool normalize, char kind) {
        DesignShelfFilter(G, F, P3, P4, fs, feedback, feedForward, normalize, kind);
    }

    /// Gain at z = 1 (0 Hz) or z = −1 (half the sample frequency).
    double Gain(double z) const {
        return (feedForward[0] + feedForward[1] * z + feedForward[2]) / (1.0 - feedback[0] * z - feedback[1]);
    }
};

TEST(ShelfFilter, CoefficientsFollowTheDesign) {
    struct Row {
        Shelf shelf;
        Samples feedback, feedForward;
    };
    const Samples lowFeedback = {1.892357996933056, -0.9095665596293483};
    const Samples low = {1.0247594304296994, -1.888055856258983, 0.8891092698737219};
    const Samples lowScaled = {1.0311209894516098, -1.8997766352141165, 0.8946287322268105};
    const Samples highFeedback = {-0.7848507087707203, -0.41269395321082336};
    const Samples highScaled = {2.6279794799236433, 0.8531505398037116, 0.5000137833547652};
    const Row rows[] = {
        {{1.5, 500, 0.8, 0, 11025, false, 'l'}, lowFeedback, low},
        {{1.5, 500, 0.8, 0, 11025, true, 'l'}, lowFeedback, lowScaled},
        {{1.5, 500, 0.8, 0, 11025, true, 'x'}, lowFeedback, low},
        {{2.0, 3000, 0.75, 0, 16000, true, 'h'}, highFeedback, highScaled},
    };
    for (const Row& row : rows) {
        ExpectNear(row.shelf.feedback, row.feedback, 1e-13);
        ExpectNear(row.shelf.feedForward, row.feedForward, 1e-13);
    }
}

TEST(ShelfFilter, GainIsGAtTheShelfAndOneAtTheOtherEnd) {
    const Shelf low(3.0, 4000, 0.6, 0.05, 16000, false, 'l');
    EXPECT_NEAR(low.Gain(1.0), 3.0, 1e-10);
    EXPECT_NEAR(low.Gain(-1.0), 1.0, 1e-10);
    const Shelf high(2.0, 3000, 0.75, 0.1, 16000, false, 'h');
    EXPECT_NEAR(high.Gain(1.0), 1.0, 1e-10);
    EXPECT_NEAR(high.Gain(-1.0), 2.0, 1e-10);
}

}  // namespace
}  // namespace larynth

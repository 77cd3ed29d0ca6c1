// SPDX-License-Identifier: MIT
#include <bit>
#include <cmath>
#include <gtest/gtest.h>
#include <random>
#include <string>
#include <vector>

#include "com/Create.h"
#include "com/FlushDenormals.h"
#include "components/NoiseSources.h"
#include "components/PropertyIndex.h"
#include "components/TTSParallelTract.h"
#include "components/TTSVocalTractF.h"
#include "components/TTSVocalTractR.h"
#include "components/TTSVoicingSourceFilter.h"
#include "components/TTSVoicingSourceStd.h"
#include "components/TTSVoicingSourceWave.h"
#include "packet/ItemTable.h"
#include "packet/LarynthParams.h"
#include "synth/Roles.h"
#include "synth/SignalTaps.h"
#include "synth/SynthesizerState.h"
#include "tests/support/ForwardingOuter.h"
#include "tests/support/Numbers.h"
#include "tests/support/Partners.h"

namespace larynth::vector {
namespace {

template <class Class, class Role>
void Fill(ComPtr<Role>& role) {
    role.Query(&MakeObject<Class>()->Inner());
}

using Items = std::vector<std::pair<const char*, std::vector<double>>>;

/// A kind of networks and of frames for them: every frame takes each item from its choices at random.
struct Kind {
    const char* name;
    Items items;
    bool filterTract = false, waveSource = false, voicingFilter = true, movesSource = true;
};

void FillRoles(Roles& roles, const Kind& kind) {
    Fill<TTSVoicingSourceStd>(roles.voicingSource);
    Fill<TTSVocalTractR>(roles.vocalTract);
    Fill<TTSParallelTract>(roles.parallelTract);
    Fill<TTSAspirationSource>(roles.aspirationSource);
    Fill<TTSFricationSource>(roles.fricationSource);
    if (kind.filterTract) Fill<TTSVocalTractF>(roles.vocalTract);
    if (kind.waveSource) {
        const auto source = MakeObject<TTSVoicingSourceWave>();
        PropertyIndex index;
        index.SetDimensionCount(1);
        index.SetSize(0, 20);
        for (int i = 0; i < 20; ++i) {
            const double value = i * (i - 7.5) / 30.0;
            index.SetIndex(0, i);
            source->SetPropertyValue(nullptr, "Wave", 0, &value, kPropertyTypeDouble, 0, 0, &index);
        }
        source->SetOQ(0.6);
        roles.voicingSource.Query(&source->Inner());
    }
    if (!kind.voicingFilter) return;
    Fill<TTSVoicingSourceFilter>(roles.voicingFilter);
    if (kind.movesSource) roles.WireVoicingFilter();
}

bool SameBits(double a, double b) {
    return (std::isnan(a) && std::isnan(b)) ||
           std::bit_cast<std::uint64_t>(a) == std::bit_cast<std::uint64_t>(b);
}

/// What the component shows of itself; −1 before its first sample.
template <class Role>
double Shown(const ComPtr<Role>& role) {
    double value = 0.0;
    return role && role->GetOutputValue(&value) == S_OK ? value : -1.0;
}

std::vector<double> Shown(const Roles& roles) {
    return {Shown(roles.voicingSource), Shown(roles.aspirationSource), Shown(roles.fricationSource),
            Shown(roles.voicingFilter), Shown(roles.vocalTract),       Shown(roles.parallelTract)};
}

/// Two equal networks. One is asked for each sample, and asks a packet that is part of another object for its
/// values; the other takes the frame of a packet of ours and renders stretches.
class Comparison {
  public:
    Comparison(const Kernels& kernels, const Kind& kind) : network_(kernels), kind_(kind) {
        FillRoles(single_, kind);
        for (Roles* const roles : {&blocks_, &tapped_, &restored_}) FillRoles(*roles, kind);
    }

    /// One frame, the stretches as long as `stretches` says, again and again.
    void Render(std::size_t count, const std::vector<std::size_t>& stretches) {
        ForwardingOuter outer;
        const auto packet = MakeObject<LarynthParams>(), part = MakeObject<LarynthParams>(&outer);
        Draw(*packet);
        part->Values().CopyFrom(packet->Values());
        outer.part.Query(&part->Inner());
        single_.SetParams(&outer);
        blocks_.SetParams(static_cast<ILarynthParams*>(packet.get()));
        const FlushDenormals flush;
        const std::uint32_t state = LarynthNoise()->State();
        std::vector<double> expected(count), sums;
        for (double& sum : expected) sum = single_.ToCall().NextSample();
        const std::uint32_t stateBehind = LarynthNoise()->State();

        LarynthSeedNoise(state);
        const auto own = blocks_.OwnElements();
        ASSERT_TRUE(own.has_value());
        for (std::size_t k = 0; sums.size() < count; ++k) {
            const auto next =
                network_.Render(*own, std::min(count - sums.size(), stretches[k % stretches.size()]));
            sums.insert(sums.end(), next.begin(), next.end());
        }
        ASSERT_EQ(LarynthNoise()->State(), stateBehind);
        for (std::size_t i = 0; i < count; ++i) {
            ASSERT_TRUE(SameBits(sums[i], expected[i]))
                << "sample " << i << " of " << count << ": " << sums[i] << " for " << expected[i];
        }
        const std::vector<double> shown = Shown(blocks_), expectedShown = Shown(single_);
        for (std::size_t i = 0; i < shown.size(); ++i) {
            ASSERT_TRUE(SameBits(shown[i], expectedShown[i])) << "output of component " << i;
        }

        LarynthSeedNoise(state);
        OutputStage output;
        kept_->Save(*tapped_.OwnElements(), output);
        for (Roles* const roles : {&tapped_, &restored_, &tapped_}) {
            kept_->Restore(*roles->OwnElements(), output);
            roles->SetParams(static_cast<ILarynthParams*>(packet.get()));
            CompareSignals(*roles->OwnElements(), packet->Values().frame.sections, expected, shown);
            ASSERT_EQ(LarynthNoise()->State(), stateBehind);
        }
    }

    /// The signals of a frame are what the components give, and follow from each other.
    void CompareSignals(const Network::Elements& own, const CoefficientRows& sections,
                        const std::vector<double>& sums, const std::vector<double>& shown) {
        const std::size_t count = sums.size();
        if (count == 0) return;
        OutputStage stages[5];  // each has a step more
        for (int k = 0; k < 5; ++k) {
            stages[k].outputGain = 0.5;
            stages[k].SetShelves({.G = k > 0 ? 2.0 : 1.0, .F = 300.0, .P3 = 0.75},
                                 {.G = k > 1 ? 3.0 : 1.0, .F = 3000.0, .P3 = 0.6});
            stages[k].SetSampleFreq(11025.0);
            stages[k].preEmphasis = k > 2 ? 0.9 : 0.0;
            stages[k].volume = k > 3 ? 0.7 : 1.0;
        }
        std::vector<double> rows(static_cast<std::size_t>(Signal::Count) * count);
        const auto row = [&](Signal signal) { return &rows[static_cast<std::size_t>(signal) * count]; };
        std::vector<std::int16_t> samples(count);
        OutputStage output = stages[4];
        SignalTaps(own, output, {rows.data(), static_cast<int>(count)}).Render(samples);
        for (std::size_t i = 0; i < count; ++i) {
            ASSERT_TRUE(SameBits(row(Signal::Sum)[i], sums[i])) << i;
            for (std::size_t k = 0; k < 5; ++k) {
                const double y = row(Signal::Gained)[k * count + i];
                ASSERT_TRUE(SameBits(y, stages[k].Advance(sums[i]).output)) << "step " << k << " at " << i;
            }
            ASSERT_EQ(samples[i], ToSample(row(Signal::Output)[i]));
        }
        const Signal components[] = {Signal::Voicing,       Signal::Aspiration, Signal::Frication,
                                     Signal::TiltedVoicing, Signal::Cascade,    Signal::Parallel};
        // A wave-table source that is silent still shows what it gave last.
        for (std::size_t k = kind_.waveSource ? 1 : 0; k < shown.size(); ++k) {
            const bool isPassed = k == 3 && !kind_.voicingFilter;
            const double expected = isPassed ? row(Signal::Voicing)[count - 1] : shown[k];
            ASSERT_TRUE(SameBits(row(components[k])[count - 1], expected)) << "component " << k;
        }
        for (std::size_t place = 0; place < Frame::kSectionCount; ++place) {
            // Behind each other but for the zero, which comes first; the bypass is where it would be.
            const bool isZero = place == Frame::kFirstCascadeZero,
                       inParallel = place > Frame::kFirstCascadeZero;
            const double* const y =
                isZero ? row(Signal::CascadeZero) : row(Signal::FirstCascadePole) + place * count;
            const double* const x = inParallel ? row(Signal::Frication) : y - count;
            const double* const kept = isZero ? x : y;
            const auto [A, B, C] = sections.At(place);
            for (std::size_t i = 2; i < count; ++i) {
                const double expected = (B * kept[i - 1] + C * kept[i - 2]) + A * x[i];
                ASSERT_TRUE(SameBits(y[i], kind_.filterTract && !inParallel ? kNan : expected))
                    << "section " << place << " at " << i;
            }
        }
    }

    std::size_t Random(std::size_t count) { return random_() % count; }

  private:
    double Between(double low, double high) {
        return std::uniform_real_distribution<double>(low, high)(random_);
    }
    /// Formants and noise at random, and the items of the kind.
    void Draw(LarynthParams& packet) {
        const auto set = [&](const std::string& name, double value) {
            packet.Values().Item(IndexFromName(name).value()) = value;
        };
        for (const std::string n : {"1", "2", "3", "4", "5"}) {
            set("F" + n, Between(200.0, 5000.0));
            set("PF" + n, Between(200.0, 5000.0));
            set("BW" + n, Between(30.0, 500.0));
        }
        for (const char* const name : {"AH", "AF", "AB", "PG2", "PG4", "PG6"}) set(name, Between(0.0, 100.0));
        for (const auto& [name, choices] : kind_.items) set(name, choices[Random(choices.size())]);
        packet.SetSampleFreq(std::vector{11025.0, 11025.0, 22050.0, 8000.0}[Random(4)]);
        static_cast<void>(packet.ConvertToFilter());
    }

    Network network_;
    Roles single_, blocks_, tapped_, restored_;
    Created<SynthesizerState> kept_ = MakeObject<SynthesizerState>();
    const Kind& kind_;
    std::mt19937 random_{17};
};

const Items kFlutter = {
    {"F0", {90.0, 200.0, 231.7, 0.0}}, {"AV", {900.0, 0.0}},   {"OQ", {0.0, 0.3, 0.6, 1.0}},
    {"FL", {0.1, 0.0, 0.5}},           {"FLT", {9.07, 800.0}}, {"TL", {0.0, 7.0, 41.0}},
    {"DI", {0.0, 0.0, 0.4, -1.0}}};
const Items kSilent = {{"F0", {0.0, 100.0, kNan}}, {"AV", {0.0, 100.0}}, {"AH", {0.0}}, {"AF", {0.0}}};
const Items kStrange = {{"F0", {-100.0, 90.0, 8000.0, 1e-300, kInfinity}},
                        {"AV", {10.0}},
                        {"DI", {0.0, 0.5}},
                        {"FL", {0.0, 3.0}},
                        {"FLT", {9.0, 1e7, 1e12}}};
const Items kNoNumbers = {{"F0", {100.0}},     {"AV", {kInfinity, 1.0}}, {"AH", {0.0, kInfinity}},
                          {"AB", {kNan, 1.0}}, {"F2", {kNan, 1000.0}},   {"BW2", {100.0}}};

const Kind kKinds[] = {
    {"flutter", kFlutter},
    {"silent sources", kSilent},
    {"strange pitches", kStrange},
    {"numbers that are none", kNoNumbers},
    {"numbers that are none in a tract as one filter", kNoNumbers, true},
    {"tract as one filter", kFlutter, true},
    {"wave source", kFlutter, false, true},
    {"no voicing filter", kFlutter, false, false, false},
    {"voicing filter without a source", kFlutter, false, false, true, false},
};

/// Every split of a short frame in up to three stretches, and frames of other lengths between them.
void CompareEverySplit(const Kernels& kernels, const Kind& kind) {
    constexpr std::size_t kCount = 19;
    Comparison comparison(kernels, kind);
    for (std::size_t first = 1; first < kCount; ++first) {
        for (std::size_t second = 1; second <= kCount - first; ++second) {
            ASSERT_NO_FATAL_FAILURE(comparison.Render(kCount, {first, second, kCount}));
        }
        for (const std::size_t most : {40U, 600U}) {
            ASSERT_NO_FATAL_FAILURE(comparison.Render(comparison.Random(most), {kStretch}));
        }
    }
}

TEST(Network, EverySplitOfAStreamGivesTheBitsOfTheSamplePath) {
    for (const Kernels* const kernels : AvailableKernels()) {
        for (const Kind& kind : kKinds) {
            SCOPED_TRACE(testing::Message() << kind.name << ", " << kernels->name);
            ASSERT_NO_FATAL_FAILURE(CompareEverySplit(*kernels, kind));
        }
    }
}

TEST(Network, ReadsNoCascadeSectionsWithATractAsOneFilter) {
    Roles roles;
    FillRoles(roles, {.name = "", .items = {}, .filterTract = true});
    EXPECT_EQ(roles.OwnElements()->Sections(), Frame::Sections::Parallel);
}

TEST(Network, IsNoneWithAComponentThatCouldBehaveOtherwise) {
    Roles roles;
    FillRoles(roles, {});
    EXPECT_TRUE(roles.OwnElements());
    test::Script script;
    test::FakeVoicingSource source(script);
    Roles foreign = roles;
    foreign.voicingSource.Query(&source);
    EXPECT_FALSE(foreign.OwnElements()) << "a host's own source";
    foreign.voicingSource = roles.voicingSource;
    foreign.voicingFilter->SetVoicingSource(&source, GUID_NULL);
    EXPECT_FALSE(foreign.OwnElements()) << "flutter moves a host's source";
    foreign.voicingFilter->SetVoicingSource(nullptr, GUID_NULL);
    EXPECT_TRUE(foreign.OwnElements()) << "a filter without a source";
}

}  // namespace
}  // namespace larynth::vector

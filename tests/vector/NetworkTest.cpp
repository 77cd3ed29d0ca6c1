// SPDX-License-Identifier: MIT
#include <bit>
#include <cmath>
#include <gtest/gtest.h>
#include <limits>
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
#include "tests/support/ForwardingOuter.h"
#include "tests/support/Partners.h"

namespace larynth::vector {
namespace {

constexpr double kNan = std::numeric_limits<double>::quiet_NaN();
constexpr double kInfinity = std::numeric_limits<double>::infinity();

template <class Class, class Role>
void Fill(ComPtr<Role>& role) {
    role.Query(&MakeObject<Class>()->Inner());
}

/// A wave source with a waveform of its own.
Created<TTSVoicingSourceWave> MakeWaveSource() {
    constexpr int kSize = 20;
    auto source = MakeObject<TTSVoicingSourceWave>();
    PropertyIndex index;
    index.SetDimensionCount(1);
    index.SetSize(0, kSize);
    for (int i = 0; i < kSize; ++i) {
        const double value = i * (i - 7.5) / 30.0;
        index.SetIndex(0, i);
        EXPECT_EQ(source->SetPropertyValue(nullptr, "Wave", 0, &value, kPropertyTypeDouble, 0, 0, &index),
                  S_OK);
    }
    EXPECT_EQ(source->SetOQ(0.6), S_OK);
    return source;
}

/// What a network is made of.
struct Make {
    bool filterTract = false, waveSource = false, voicingFilter = true;
};

void FillRoles(Roles& roles, const Make& make) {
    if (make.waveSource) {
        roles.voicingSource.Query(&MakeWaveSource()->Inner());
    } else {
        Fill<TTSVoicingSourceStd>(roles.voicingSource);
    }
    if (make.filterTract) {
        Fill<TTSVocalTractF>(roles.vocalTract);
    } else {
        Fill<TTSVocalTractR>(roles.vocalTract);
    }
    Fill<TTSParallelTract>(roles.parallelTract);
    Fill<TTSAspirationSource>(roles.aspirationSource);
    Fill<TTSFricationSource>(roles.fricationSource);
    if (!make.voicingFilter) return;
    Fill<TTSVoicingSourceFilter>(roles.voicingFilter);
    roles.WireVoicingFilter();
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
    Comparison(const Kernels& kernels, const Make& make) : network_(kernels) {
        FillRoles(single_, make);
        FillRoles(blocks_, make);
    }

    /// One frame, the stretches as long as `stretches` says, again and again.
    void Render(KlattPacketData& values, IUnknown* packet, std::size_t count,
                const std::vector<std::size_t>& stretches) {
        ForwardingOuter outer;
        const auto part = MakeObject<LarynthParams>(&outer);
        part->Values().CopyFrom(values);
        part->Inner().AddRef();
        outer.part = ComPtr<IUnknown>::Adopt(&part->Inner());
        single_.SetParams(&outer);
        blocks_.SetParams(packet);
        const FlushDenormals flush;
        const std::uint32_t state = LarynthNoise()->State();
        std::vector<double> expected(count), sums(count + kRoom);
        for (double& sum : expected) sum = single_.NextSample();
        const std::uint32_t stateBehind = LarynthNoise()->State();

        LarynthSeedNoise(state);
        const auto own = blocks_.OwnElements();
        ASSERT_TRUE(own.has_value());
        std::size_t done = 0;
        for (std::size_t k = 0; done < count; ++k) {
            const std::size_t length = std::min(count - done, stretches[k % stretches.size()]);
            network_.Render(*own, std::span(sums).subspan(done, length));
            done += length;
        }
        ASSERT_EQ(LarynthNoise()->State(), stateBehind);
        for (std::size_t i = 0; i < count; ++i) {
            ASSERT_TRUE(SameBits(sums[i], expected[i]))
                << "sample " << i << " of " << count << ": " << sums[i] << " for " << expected[i] << " at F0 "
                << values.Scalar(ScalarItem::F0);
        }
        const std::vector<double> shown = Shown(blocks_), expectedShown = Shown(single_);
        for (std::size_t i = 0; i < shown.size(); ++i) {
            ASSERT_TRUE(SameBits(shown[i], expectedShown[i])) << "output of component " << i;
        }
    }

  private:
    Network network_;
    Roles single_, blocks_;
};

using Items = std::vector<std::pair<const char*, std::vector<double>>>;

/// A kind of frames: every frame takes each item from its choices at random.
struct Kind {
    const char* name;
    Make make;
    Items items;
    std::vector<double> sampleFreqs = {11025.0};
};

const Items kVowel = {{"F0", {90.0, 110.0, 231.7}}, {"AV", {1000.0}}, {"OQ", {0.3, 0.6, 1.0}}};
const Items kFlutter = {{"F0", {90.0, 200.0}},   {"AV", {900.0, 0.0}},   {"OQ", {0.5}},
                        {"FL", {0.1, 0.0, 0.5}}, {"FLT", {9.07, 800.0}}, {"DI", {0.0, 0.4}},
                        {"TL", {0.0, 5.0}}};

const Kind kKinds[] = {
    {"vowel", {}, kVowel},
    {"tilt on and off, diplophonia",
     {},
     {{"F0", {100.0}}, {"AV", {1e3}}, {"TL", {0.0, 7.0, 41.0}}, {"DI", {0.0, 0.2, 1.0, -1.0}}}},
    {"flutter", {}, kFlutter},
    {"flutter beyond the reduction of the sine",
     {},
     {{"F0", {90.0}}, {"AV", {1e3}}, {"FL", {0.2}}, {"FLT", {1e7, 1e12}}}},
    {"silent sources",
     {},
     {{"F0", {0.0, 100.0, kNan}}, {"AV", {0.0, 100.0}}, {"OQ", {0.0, 0.5}}, {"AH", {0.0}}, {"AF", {0.0}}}},
    {"strange pitches",
     {},
     {{"F0", {-100.0, 8000.0, 1e-300, kInfinity}},
      {"AV", {10.0}},
      {"DI", {0.0, 0.5}},
      {"FL", {0.0, 3.0}},
      {"FLT", {9.0}}}},
    {"numbers that are none",
     {},
     {{"F0", {100.0}},
      {"AV", {kInfinity, 1.0}},
      {"AB", {kNan, 1.0}},
      {"F2", {kNan, 1000.0}},
      {"BW2", {100.0}}}},
    {"tract as one filter with numbers that are none",
     {.filterTract = true},
     {{"F0", {100.0}}, {"AV", {kInfinity, 1.0}}, {"AH", {0.0, kInfinity}}, {"F2", {1000.0}}}},
    {"other sample frequencies", {}, kFlutter, {11025.0, 22050.0, 8000.0}},
    {"no voicing filter", {.voicingFilter = false}, kVowel},
    {"tract as one filter", {.filterTract = true}, kFlutter},
    {"wave source", {.waveSource = true}, kFlutter},
};

class Frames {
  public:
    explicit Frames(const Kind& kind) : kind_(kind) {}

    /// A packet of this kind with formants and noise at random.
    Created<LarynthParams> Next() {
        auto packet = MakeObject<LarynthParams>();
        const auto set = [&](const std::string& name, double value) {
            packet->Values().Item(IndexFromName(name).value()) = value;
        };
        for (const char* const name : {"F1", "F2", "F3", "F4", "F5", "PF1", "PF2", "PF3", "PF4", "PF5"}) {
            set(name, Between(200.0, 5000.0));
        }
        for (const char* const name : {"BW1", "BW2", "BW3", "BW4", "BW5", "PBW1"})
            set(name, Between(30.0, 500.0));
        for (const char* const name : {"AH", "AF", "AB", "PG2", "PG4", "PG6"}) set(name, Between(0.0, 100.0));
        for (const auto& [name, choices] : kind_.items) set(name, choices[Index(choices.size())]);
        packet->SetSampleFreq(kind_.sampleFreqs[Index(kind_.sampleFreqs.size())]);
        static_cast<void>(packet->ConvertToFilter());
        return packet;
    }
    std::size_t Index(std::size_t count) { return random_() % count; }

  private:
    double Between(double low, double high) {
        return std::uniform_real_distribution<double>(low, high)(random_);
    }

    const Kind& kind_;
    std::mt19937 random_{17};
};

template <class Body>
void ForEachKindAndKernels(Body&& body) {
    for (const Kernels* const kernels : AvailableKernels()) {
        for (const Kind& kind : kKinds) {
            SCOPED_TRACE(std::string(kind.name) + ", " + kernels->name);
            body(*kernels, kind);
            if (::testing::Test::HasFatalFailure()) return;
        }
    }
}

TEST(Network, RendersTheBitsOfTheSamplePathFrameAfterFrame) {
    ForEachKindAndKernels([](const Kernels& kernels, const Kind& kind) {
        Comparison comparison(kernels, kind.make);
        Frames frames(kind);
        for (int k = 0; k < 60; ++k) {
            const auto packet = frames.Next();
            const std::size_t count = k < 30 ? frames.Index(40) : frames.Index(600);
            comparison.Render(packet->Values(), static_cast<ILarynthParams*>(packet.get()), count,
                              {kStretch});
            if (::testing::Test::HasFatalFailure()) return;
        }
    });
}

TEST(Network, EverySplitOfAStreamGivesTheSameBits) {
    constexpr std::size_t kCount = 19;
    ForEachKindAndKernels([](const Kernels& kernels, const Kind& kind) {
        Comparison comparison(kernels, kind.make);
        Frames frames(kind);
        for (std::size_t first = 1; first < kCount; ++first) {
            for (std::size_t second = 1; second <= kCount - first; ++second) {
                const auto packet = frames.Next();
                comparison.Render(packet->Values(), static_cast<ILarynthParams*>(packet.get()), kCount,
                                  {first, second, kCount});
                if (::testing::Test::HasFatalFailure()) return;
            }
        }
    });
}

TEST(Network, IsNoneWithAComponentThatCouldBehaveOtherwise) {
    Roles roles;
    FillRoles(roles, {});
    EXPECT_TRUE(roles.OwnElements());
    {
        Roles foreign = roles;
        test::Script script;
        test::FakeVoicingSource source(script);
        foreign.voicingSource.Query(&source);
        EXPECT_FALSE(foreign.OwnElements()) << "a host's own source";
        foreign.voicingSource = roles.voicingSource;
        foreign.voicingFilter->SetVoicingSource(&source, GUID_NULL);
        EXPECT_FALSE(foreign.OwnElements()) << "flutter moves a host's source";
        foreign.voicingFilter->SetVoicingSource(nullptr, GUID_NULL);
        EXPECT_TRUE(foreign.OwnElements()) << "a filter without a source";
    }
    const auto outer = MakeObject<TTSVocalTractR>();
    const auto part = MakeObject<TTSParallelTract>(&outer->Inner());
    part->AddRef();
    roles.parallelTract = ComPtr<ITTSParallelTract>::Adopt(part.get());
    EXPECT_FALSE(roles.OwnElements()) << "a part of another object";
    roles.parallelTract.Release();
}

}  // namespace
}  // namespace larynth::vector

// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <span>

#include "engine/CascadeFilterTract.h"
#include "engine/CascadeTract.h"
#include "engine/NoiseSource.h"
#include "engine/ParallelTractCore.h"
#include "engine/VoicingFilterCore.h"
#include "engine/VoicingSourceCore.h"
#include "engine/WaveTablePlayer.h"
#include "engine/vector/Kernels.h"
#include "engine/vector/PhaseTable.h"

namespace larynth {

/// Renders many samples of a voice at once, from the elements that make it: the samples, and all that the
/// elements keep and show, are what advancing them one by one would leave. The order for each sample is
/// voicing, aspiration, frication, voicing filter, cascade tract, parallel tract.
class Network {  // NOLINT(clang-analyzer-optin.performance.Padding): little beside a stretch's arrays
  public:
    /// The elements of one voice, which belong to others and outlive the rendering.
    struct Elements {
        VoicingSourceCore* source = nullptr;  ///< Null with a wave source.
        WaveTablePlayer* waveSource = nullptr;
        VoicingFilterCore* filter = nullptr;  ///< May be null.
        bool filterMovesSource = false;       ///< Whether flutter reaches the source.
        NoiseSource* aspiration = nullptr;
        NoiseSource* frication = nullptr;
        CascadeTract* cascade = nullptr;  ///< Null with a filter tract.
        CascadeFilterTract* filterTract = nullptr;
        ParallelTractCore* parallel = nullptr;

        /// What they read of a frame's sections.
        Frame::Sections Sections() const {
            return cascade != nullptr ? Frame::Sections::Both : Frame::Sections::Parallel;
        }

        /// Hands a frame to every element.
        void Take(const Frame& frame) const;

        /// Whether there is an element for every role but the filter's.
        bool Complete() const {
            return (source != nullptr || waveSource != nullptr) && aspiration != nullptr &&
                   frication != nullptr && (cascade != nullptr || filterTract != nullptr) &&
                   parallel != nullptr;
        }
    };

    explicit Network(const vector::Kernels& kernels = vector::FastestKernels()) : kernels_(kernels) {}

    /// The next sums of both tracts: `count` of them, 1 to vector::kStretch, which stay until the next call.
    /// The elements are complete.
    std::span<const double> Render(const Elements& elements, std::size_t count) noexcept;

  private:
    /// The arrays of a stretch, in one place because of how far apart they lie.
    struct alignas(64) Stretch {
        vector::StretchValues voicing, aspiration, frication, bypassed, mixed, delayed, branch, sums;
    };

    void Excite(std::span<double> voicing) noexcept;
    void ExciteSteadily(std::span<double> voicing) noexcept;
    void ExciteFluttering(std::span<double> voicing) noexcept;
    void ExciteFromWave(std::span<double> voicing, bool flutters) noexcept;
    void FlutterF0(std::span<double> F0) noexcept;
    void DrawNoise(const vector::Noise& noise, std::size_t count) noexcept;
    void RunTracts(const vector::TractSamples& samples, std::size_t count) noexcept;
    void RunFilterTract(const vector::TractSamples& samples, std::size_t count) noexcept;

    const vector::Kernels& kernels_;
    vector::PhaseTable phases_;
    Stretch stretch_;
    const Elements* elements_ = nullptr;  // while it renders
};

}  // namespace larynth

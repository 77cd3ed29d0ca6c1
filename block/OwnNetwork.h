// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <optional>
#include <span>

#include <larynth/Sources.h>
#include <larynth/Tracts.h>

#include "engine/block/Kernels.h"
#include "engine/block/PhaseTable.h"
#include "components/TTSAspirationSource.h"
#include "components/TTSFricationSource.h"
#include "components/TTSParallelTract.h"
#include "components/TTSVocalTractF.h"
#include "components/TTSVocalTractR.h"
#include "components/TTSVoicingSourceFilter.h"
#include "components/TTSVoicingSourceStd.h"
#include "components/TTSVoicingSourceWave.h"

namespace larynth::block {

/// The components that fill a synthesizer's roles; none is null but the voicing filter, which may be.
struct Network {
    ITTSVoicingSource* voicingSource;
    ITTSAspirationSource* aspirationSource;
    ITTSFricationSource* fricationSource;
    ITTSVocalTract* vocalTract;
    ITTSParallelTract* parallelTract;
    ITTSVoicingSourceFilter* voicingFilter;
};

/// A network in which every component is this module's own and stands alone. It is rendered stretch by
/// stretch from the elements inside: the samples, and all that the components keep and show, are what calling
/// them sample by sample would leave. It owns no reference.
class OwnNetwork {
  public:
    /// Nothing for a network with any other component, and for one whose voicing filter moves another source
    /// than the network's.
    static std::optional<OwnNetwork> Find(const Network& network) noexcept;

    /// The next sums of both tracts, no more than kStretch. `phases` may serve other networks as well.
    void Render(const Kernels& kernels, PhaseTable& phases, std::span<double> sums) noexcept;

  private:
    OwnNetwork() = default;

    void Excite(const Kernels& kernels, PhaseTable& phases, std::span<double> voicing) noexcept;
    void ExciteSteadily(const Kernels& kernels, PhaseTable& phases, std::span<double> voicing) noexcept;
    void ExciteFluttering(const Kernels& kernels, std::span<double> voicing) noexcept;
    void ExciteFromWave(std::span<double> voicing, bool flutters) noexcept;
    void FlutterF0(const Kernels& kernels, std::span<double> F0) noexcept;
    void DrawNoise(const Kernels& kernels, double* aspiration, double* frication, std::size_t count) noexcept;
    void RunTracts(const Kernels& kernels, TractSamples samples, std::size_t count) noexcept;
    void RunFilterTract(const Kernels& kernels, TractSamples samples, std::size_t count) noexcept;

    ITTSVoicingSource* voicingSource_ = nullptr;
    TTSVoicingSourceStd* standardSource_ = nullptr;  // the same, or null for a wave source
    TTSAspirationSource* aspirationSource_ = nullptr;
    TTSFricationSource* fricationSource_ = nullptr;
    TTSVocalTractR* resonatorTract_ = nullptr;  // one of the two forms
    TTSVocalTractF* filterTract_ = nullptr;
    TTSParallelTract* parallelTract_ = nullptr;
    TTSVoicingSourceFilter* filter_ = nullptr;
};

}  // namespace larynth::block

// SPDX-License-Identifier: MIT
#include "components/TTSVocalTractF.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <span>

#include <larynth/ComPtr.h>
#include <larynth/Packet.h>

#include "com/Boundary.h"

namespace larynth {
namespace {

using FilterParams = ILarynthVocalTractFilterParams;
using DegreeGetter = HRESULT (LARYNTH_CALL FilterParams::*)(int*);
using CoefficientGetter = HRESULT (LARYNTH_CALL FilterParams::*)(int, double*);

/// A packet's coefficients of one kind, no more than Count.
template <std::size_t Count>
class Coefficients {
  public:
    /// False, with no coefficient read, when the packet has more of them than fit.
    bool Read(FilterParams& params, DegreeGetter getDegree, CoefficientGetter getCoefficient) {
        int degree = 0;
        (params.*getDegree)(&degree);
        if (degree > static_cast<int>(Count)) return false;
        degree_ = static_cast<std::size_t>(std::max(degree, 0));
        for (std::size_t i = 0; i < degree_; ++i) (params.*getCoefficient)(static_cast<int>(i), &values_[i]);
        return true;
    }

    void CopyTo(std::span<double> target) const { std::copy_n(values_.begin(), degree_, target.begin()); }

  private:
    std::array<double, Count> values_{};
    std::size_t degree_ = 0;
};

}  // namespace

HRESULT LARYNTH_CALL TTSVocalTractF::SetParams(IUnknown* pIParams, REFIID /*riid*/) noexcept {
    return GuardedAlive([&]() -> HRESULT {
        ComPtr<FilterParams> params;
        if (!params.TryQuery(pIParams)) return E_FAIL;
        // Both sets are read before either is stored: a degree that does not fit must change nothing.
        Coefficients<Frame::kFeedbackCount> alpha;
        Coefficients<Frame::kFeedForwardCount> beta;
        if (!alpha.Read(*params.Get(), &FilterParams::GetAlphaDegree, &FilterParams::GetAlpha)) return E_FAIL;
        if (!beta.Read(*params.Get(), &FilterParams::GetBetaDegree, &FilterParams::GetBeta)) return E_FAIL;
        alpha.CopyTo(core_.Filter().Feedback());
        beta.CopyTo(core_.Filter().FeedForward());
        return S_OK;
    });
}

}  // namespace larynth

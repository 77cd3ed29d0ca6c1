// SPDX-License-Identifier: MIT
// A component of one's own in a role: the trigonometric glottal pulse of Rosenberg (1971) as voicing source.
// The same vowel with it and with the standard source, as own.wav and standard.wav.
#include <cmath>
#include <numbers>

#include <larynth/Packet.h>
#include <larynth/Speech.h>

namespace {

/// A flow of 1/2·(1 − cos(pi·t/Tp)) while the glottis opens, for the first Tp = 2/5 of the period, and of
/// cos(pi/2·(t − Tp)/Tn) while it closes, for the next Tn = 1/6. What excites the tract is its derivative.
class RosenbergSource final : public ITTSVoicingSource {
  public:
    HRESULT LARYNTH_CALL QueryInterface(REFIID riid, void** ppv) noexcept override {
        if (ppv == nullptr) return E_POINTER;
        const bool isKnown = riid == IID_IUnknown || riid == IID_ITTSVoicingSource;
        *ppv = isKnown ? static_cast<ITTSVoicingSource*>(this) : nullptr;
        if (isKnown) AddRef();
        return isKnown ? S_OK : E_NOINTERFACE;
    }
    ULONG LARYNTH_CALL AddRef() noexcept override { return ++references_; }
    ULONG LARYNTH_CALL Release() noexcept override {
        const ULONG left = --references_;
        if (left == 0) delete this;
        return left;
    }

    HRESULT LARYNTH_CALL SetSampleFreq(double dValue) noexcept override { return Set(sampleFreq_, dValue); }
    HRESULT LARYNTH_CALL SetF0(double dValue) noexcept override { return Set(F0_, dValue); }
    HRESULT LARYNTH_CALL SetVolume(double dValue) noexcept override { return Set(AV_, dValue); }
    HRESULT LARYNTH_CALL Reset() noexcept override { return Set(phase_, 0.0); }
    HRESULT LARYNTH_CALL CalculateNext(double* pdValue) noexcept override {
        output_ = F0_ > 0.0 ? AV_ * FlowSlope(phase_) : 0.0;
        phase_ += F0_ / sampleFreq_;
        phase_ -= std::floor(phase_);
        return GetOutputValue(pdValue);
    }
    HRESULT LARYNTH_CALL GetOutputValue(double* pdValue) noexcept override {
        if (pdValue != nullptr) *pdValue = output_;
        return S_OK;
    }
    /// Once a frame: the packet says what it wants of a source.
    HRESULT LARYNTH_CALL SetParams(IUnknown* pIParams, REFIID) noexcept override {
        ComPtr<ILarynthVoiceParams> voice;
        ComPtr<ILarynthParams> frame;
        for (const HRESULT hr : {voice.QueryFrom(pIParams), frame.QueryFrom(pIParams)}) {
            if (FAILED(hr)) return hr;
        }
        for (const HRESULT hr :
             {voice->GetF0(&F0_), voice->GetAV(&AV_), frame->GetSampleFreq(&sampleFreq_)}) {
            if (FAILED(hr)) return hr;
        }
        return S_OK;
    }

  private:
    static constexpr double kOpening = 2.0 / 5.0, kClosing = 1.0 / 6.0;  // of a period

    static HRESULT Set(double& member, double value) noexcept {
        member = value;
        return S_OK;
    }
    /// The steepest slope, where the glottis closes, is −1.
    static double FlowSlope(double phase) {
        using std::numbers::pi;
        if (phase < kOpening) return kClosing / kOpening * std::sin(pi * phase / kOpening);
        if (phase < kOpening + kClosing) return -std::sin(pi / 2.0 * (phase - kOpening) / kClosing);
        return 0.0;
    }

    ULONG references_ = 1;
    double sampleFreq_ = 11025.0, F0_ = 0.0, AV_ = 0.0;
    double phase_ = 0.0;  // part of the period that is over
    double output_ = 0.0;
};

}  // namespace

int main() {
    larynth::KlattUtterance vowel{.frames = std::vector<larynth::KlattFrame>(60)};
    for (larynth::KlattFrame& frame : vowel.frames) {
        frame.length = 110;
        frame.F0 = 120, frame.AV = 2500, frame.AH = frame.AF = 0;
        frame.F1 = 390, frame.F2 = 2300, frame.F3 = 2850, frame.F4 = 3500, frame.F5 = 4500;
        frame.BW1 = 60, frame.BW2 = 90, frame.BW3 = 150, frame.BW4 = 200, frame.BW5 = 250;
    }
    larynth::Synthesizer synthesizer;
    synthesizer.Render(vowel).Write("standard.wav");
    const auto source = ComPtr<ITTSVoicingSource>::Adopt(new RosenbergSource);
    synthesizer.PlugIn(source.Get(), IID_ITTSVoicingSource);
    synthesizer.Render(vowel).Write("own.wav");
}

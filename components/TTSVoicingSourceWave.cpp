// SPDX-License-Identifier: MIT
#include "components/TTSVoicingSourceWave.h"

#include <cstring>
#include <filesystem>
#include <fstream>
#include <optional>
#include <string_view>
#include <utility>

#include <larynth/Classes.h>
#include <larynth/ComPtr.h>

#include "com/Create.h"
#include "components/PropertyIndex.h"

namespace larynth {
namespace {

constexpr char kWaveProperty[] = "Wave";
constexpr char kProgID[] = "Larynth.TTSVoicingSourceWave";
constexpr double kMostOQ = 0.95;

bool IsWave(LPCSTR name) { return std::strcmp(name, kWaveProperty) == 0; }

/// A name up to its zero, or as far as no file's name reaches; nothing when it ends in memory that cannot be
/// read. That is asked block by block: no page is smaller.
std::optional<std::string_view> Readable(LPCSTR name) {
    constexpr std::size_t kBlock = 4096;  // bytes; more than the longest name
    std::size_t length = 0;
    for (std::size_t left = kBlock - reinterpret_cast<std::uintptr_t>(name) % kBlock; length <= kBlock;) {
        if (IsBadReadPtr(name + length, 1) != FALSE) return std::nullopt;
        const void* const end = std::memchr(name + length, '\0', left);
        if (end != nullptr) {
            return std::string_view(name, static_cast<std::size_t>(static_cast<const char*>(end) - name));
        }
        length += std::exchange(left, kBlock);
    }
    return std::string_view(name, length);
}

/// Opens the file to read and closes it again; not what would wait for somebody at its other end, as a pipe
/// does.
void Open(std::string_view name) {
    std::error_code unclear;
    const std::filesystem::path path(name);
    if (std::filesystem::is_regular_file(path, unclear)) std::ifstream file(path);
}

ComPtr<IACLPropertyIndex> IndexOf(IUnknown* object) {
    ComPtr<IACLPropertyIndex> index;
    index.Query(object);
    Zelvani::CheckPointer(index.Get());
    return index;
}

int CurrentIndex(IACLPropertyIndex& index) {
    int i = 0;
    Zelvani::CheckResult(index.GetIndex(0, &i));
    return i;
}

bool HasElement(int index, std::size_t count) {
    return index >= 0 && static_cast<std::size_t>(index) < count;
}

}  // namespace

HRESULT LARYNTH_CALL TTSVoicingSourceWave::Copy(IUnknown* /*pSource*/) noexcept { return E_FAIL; }

HRESULT LARYNTH_CALL TTSVoicingSourceWave::Clone(REFIID Id, IUnknown** ppClone) noexcept {
    if (!CanWrite(ppClone)) return E_POINTER;
    return Guarded([&]() -> HRESULT {
        const Created<TTSVoicingSourceWave> clone = MakeObject<TTSVoicingSourceWave>();
        clone->player_.TakeSettingsOf(player_);
        return clone->Inner().QueryInterface(Id, reinterpret_cast<void**>(ppClone));
    });
}

HRESULT LARYNTH_CALL TTSVoicingSourceWave::SetParams(IUnknown* pIParams, REFIID /*riid*/) noexcept {
    return GuardedAlive([&]() -> HRESULT {
        ComPtr<ILarynthVoiceParams> voice;
        if (!voice.TryQuery(pIParams)) return E_FAIL;
        ComPtr<ILarynthParams> params;
        const HRESULT result = params.QueryFrom(pIParams);
        if (!params) return E_FAIL;

        double fs = 0.0, AV = 0.0, F0 = 0.0;
        const bool complete =
            params->GetSampleFreq(&fs) == S_OK && voice->GetAV(&AV) == S_OK && voice->GetF0(&F0) == S_OK;
        if (!complete) return E_FAIL;

        player_.SetF0(F0);
        player_.SetAmplitude(AV);
        player_.SetSampleFreq(fs);
        return result;
    });
}

HRESULT LARYNTH_CALL TTSVoicingSourceWave::LoadFromTxt(LPSTR sFileName) noexcept {
    const auto name = sFileName != nullptr ? Readable(sFileName) : std::string_view();
    if (!name) return E_POINTER;
    return Guarded([&] {
        Open(*name);  // what the file could tell has no format
        player_.Rebuild(wave_, player_.OQ());
        return S_OK;
    });
}

/// What it should report is open; a caller's variable keeps its value.
HRESULT LARYNTH_CALL TTSVoicingSourceWave::GetDefaultPitch(double* /*pDefaultPitch*/) noexcept {
    return S_OK;
}

HRESULT LARYNTH_CALL TTSVoicingSourceWave::SetOQ(double dValue) noexcept {
    return Guarded([&] {
        player_.Rebuild(wave_, dValue > kMostOQ ? kMostOQ : dValue);
        return S_OK;
    });
}

HRESULT LARYNTH_CALL TTSVoicingSourceWave::DescribeProperties(IACLPropertySink* pSink) noexcept {
    if (!CanCall(pSink)) return E_POINTER;
    return GuardedAlive([&] {
        PropertyIndex index;
        Zelvani::CheckResult(index.SetDimensionCount(1));
        Zelvani::CheckResult(index.SetSize(0, static_cast<int>(wave_.size())));
        pSink->AddProperty(this, kWaveProperty, nullptr, kPropertyTypeDouble, 0, 0, 0, &index);
        return S_OK;
    });
}

HRESULT LARYNTH_CALL TTSVoicingSourceWave::LoadProperties(IACLPropertySource* pSource) noexcept {
    if (!CanCall(pSource)) return E_POINTER;
    return GuardedAlive([&] {
        const HRESULT result = pSource->PushProperties(this);
        player_.Rebuild(wave_, player_.OQ());
        return result;
    });
}

HRESULT LARYNTH_CALL TTSVoicingSourceWave::SetPropertyValue(IUnknown* /*pReserved1*/, LPCSTR sName,
                                                            LONG /*nReserved3*/, const void* pValue,
                                                            LONG /*nType*/, LONG /*nReserved6*/,
                                                            LONG /*nReserved7*/, IUnknown* pIndex) noexcept {
    if (pValue == nullptr || sName == nullptr) return E_FAIL;
    if (!IsWave(sName)) return S_OK;
    return GuardedAlive([&] {
        const ComPtr<IACLPropertyIndex> index = IndexOf(pIndex);
        int size = 0;
        Zelvani::CheckResult(index->GetSize(0, &size));
        double value = 0.0;
        std::memcpy(&value, pValue, sizeof value);
        StoreElement(CurrentIndex(*index.Get()), size, value);
        return S_OK;
    });
}

HRESULT LARYNTH_CALL TTSVoicingSourceWave::GetPropertyValue(IACLValueHolder* pHolder, LPCSTR sName,
                                                            LONG /*nReserved3*/, IUnknown* pIndex) noexcept {
    if (pHolder == nullptr || sName == nullptr) return E_FAIL;
    if (!IsWave(sName)) return S_OK;
    return GuardedAlive([&]() -> HRESULT {
        const int i = CurrentIndex(*IndexOf(pIndex).Get());
        if (!HasElement(i, wave_.size())) return E_FAIL;
        const double value = wave_[static_cast<std::size_t>(i)];
        pHolder->SetValue(&value, kPropertyTypeDouble);
        return S_OK;
    });
}

HRESULT LARYNTH_CALL TTSVoicingSourceWave::GetClassID(CLSID* pClassID) noexcept {
    return Put(pClassID, CLSID_TTSVoicingSourceWave);
}

HRESULT LARYNTH_CALL TTSVoicingSourceWave::GetProgID(LPCSTR* psProgID) noexcept {
    return Put(psProgID, kProgID);
}

/// Element 0 fixes the waveform's length; every other one must lie within it.
void TTSVoicingSourceWave::StoreElement(int index, int size, double value) {
    const bool first = index == 0;
    const std::size_t announced = size > 0 ? static_cast<std::size_t>(size) : 0;
    const std::size_t count = first ? announced : wave_.size();
    if (!HasElement(index, count) || count > WaveTablePlayer::kMostSamples) Zelvani::CheckResult(E_FAIL);
    if (first) wave_.resize(count);
    wave_[static_cast<std::size_t>(index)] = value;
}

}  // namespace larynth

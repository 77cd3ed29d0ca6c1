// SPDX-License-Identifier: MIT
#pragma once

#include <optional>

#include <larynth/ComPtr.h>
#include <larynth/Resonators.h>

#include "com/ComObject.h"
#include "com/OutPointer.h"
#include "packet/ItemTable.h"
#include "packet/ResonatorEntry.h"

namespace larynth {

/// A live view of one entry of a packet, which it keeps alive. Resonators and antiresonators have the same
/// methods in interfaces of their own; `kUnitCodes` are the groups that the view may stand in, in the order
/// of the units that GetLocation tells (cascade, parallel tract).
///
/// Created by itself it is bound to nothing, and every method gives E_FAIL.
template <class FBInterface, class ABCInterface, class StructInterface, int... kUnitCodes>
class ResonatorParams final : public ComObject<FBInterface, ABCInterface, StructInterface> {
  public:
    using ComObject<FBInterface, ABCInterface, StructInterface>::ComObject;

    /// Makes it a view of `entry`, which belongs to `packet`. Done once, before anybody else sees the view.
    void Bind(const ResonatorEntry& entry, IUnknown& packet) noexcept {
        packet.AddRef();
        packet_ = ComPtr<IUnknown>::Adopt(&packet);
        entry_ = entry;
    }

    // These two serve both forms.
    HRESULT LARYNTH_CALL SetState(int nState) noexcept override {
        if (!entry_) return E_FAIL;
        entry_.UserState() = nState;
        return S_OK;
    }
    HRESULT LARYNTH_CALL GetState(int* pnState) noexcept override {
        return entry_ ? Put(pnState, entry_.UserState()) : E_FAIL;
    }

    HRESULT LARYNTH_CALL SetFreq(double dValue) noexcept override { return Store(&FB::F, dValue); }
    HRESULT LARYNTH_CALL SetBW(double dValue) noexcept override { return Store(&FB::BW, dValue); }
    HRESULT LARYNTH_CALL SetGain(double dValue) noexcept override { return Store(&FB::G, dValue); }
    HRESULT LARYNTH_CALL GetFreq(double* pdValue) noexcept override { return Read(&FB::F, pdValue); }
    HRESULT LARYNTH_CALL GetBW(double* pdValue) noexcept override { return Read(&FB::BW, pdValue); }
    HRESULT LARYNTH_CALL GetGain(double* pdValue) noexcept override { return Read(&FB::G, pdValue); }
    HRESULT LARYNTH_CALL GetIDFreq(int* pnID) noexcept override { return ReadID(0, pnID); }
    HRESULT LARYNTH_CALL GetIDBW(int* pnID) noexcept override { return ReadID(1, pnID); }
    HRESULT LARYNTH_CALL GetIDGain(int* pnID) noexcept override { return ReadID(2, pnID); }

    HRESULT LARYNTH_CALL SetA(double dValue) noexcept override { return Store(&ABC::A, dValue); }
    HRESULT LARYNTH_CALL SetB(double dValue) noexcept override { return Store(&ABC::B, dValue); }
    HRESULT LARYNTH_CALL SetC(double dValue) noexcept override { return Store(&ABC::C, dValue); }
    HRESULT LARYNTH_CALL GetA(double* pdValue) noexcept override { return Read(&ABC::A, pdValue); }
    HRESULT LARYNTH_CALL GetB(double* pdValue) noexcept override { return Read(&ABC::B, pdValue); }
    HRESULT LARYNTH_CALL GetC(double* pdValue) noexcept override { return Read(&ABC::C, pdValue); }
    HRESULT LARYNTH_CALL GetIDA(int*) noexcept override { return E_FAIL; }  // coefficients are no items
    HRESULT LARYNTH_CALL GetIDB(int*) noexcept override { return E_FAIL; }
    HRESULT LARYNTH_CALL GetIDC(int*) noexcept override { return E_FAIL; }

    HRESULT LARYNTH_CALL QueryPacketInterface(REFIID riid, IUnknown** ppIPacket) noexcept override {
        if (!packet_) return E_FAIL;
        if (!CanWrite(ppIPacket)) return E_POINTER;
        return packet_->QueryInterface(riid, reinterpret_cast<void**>(ppIPacket));
    }
    // The one method whose out-pointers may be bad: such a pointer is skipped.
    HRESULT LARYNTH_CALL GetLocation(int* pnUnit, int* pnIndex) noexcept override {
        const std::optional<int> unit = entry_ ? UnitOf(entry_.UnitCode()) : std::nullopt;
        if (!unit) return E_FAIL;
        static_cast<void>(Put(pnUnit, *unit));
        static_cast<void>(Put(pnIndex, entry_.Position()));
        return S_OK;
    }

  private:
    using FB = FrequencyRows;
    using ABC = CoefficientRows;

    template <class Rows>
    HRESULT Store(SectionRow Rows::*row, double dValue) noexcept {
        if (!entry_) return E_FAIL;
        entry_.Set(row, dValue);
        return S_OK;
    }

    template <class Rows>
    HRESULT Read(SectionRow Rows::*row, double* pdValue) noexcept {
        if (!entry_) return E_FAIL;
        if (!CanWrite(pdValue)) return E_POINTER;
        *pdValue = entry_.Get(row);
        return S_OK;
    }

    HRESULT ReadID(int k, int* pnID) noexcept { return entry_ ? Put(pnID, entry_.ItemID(k)) : E_FAIL; }

    /// The place of a unit code among those accepted.
    static std::optional<int> UnitOf(int unitCode) noexcept {
        int unit = 0;
        for (const int accepted : {kUnitCodes...}) {
            if (unitCode == accepted) return unit;
            ++unit;
        }
        return std::nullopt;
    }

    ResonatorEntry entry_;
    ComPtr<IUnknown> packet_;
};

using TTSResonatorParams =
    ResonatorParams<ITTSResonatorFBParams, ITTSResonatorABCParams, ITTSResonatorStructInfo,
                    kCascadePoles.unitCode, kParallelPoles.unitCode>;
using TTSAntiResonatorParams = ResonatorParams<ITTSAntiResonatorFBParams, ITTSAntiResonatorABCParams,
                                               ITTSAntiResonatorStructInfo, kCascadeZeros.unitCode>;

}  // namespace larynth

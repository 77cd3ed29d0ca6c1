// SPDX-License-Identifier: MIT
#pragma once

#include <gtest/gtest.h>

#include <larynth/ComPtr.h>
#include <larynth/Packet.h>
#include <larynth/Resonators.h>

#include "com/Create.h"
#include "packet/LarynthParams.h"
#include "tests/support/Code.h"

namespace larynth::test {

template <class Interface = ILarynthParams>
ComPtr<Interface> NewPacket() {
    ComPtr<Interface> packet;
    Zelvani::CheckResult(CreateInstance<LarynthParams>(nullptr, packet.Id(), packet.PutVoid()));
    return packet;
}

/// Another interface of the same object, which has it.
template <class Interface>
ComPtr<Interface> As(const auto& object) {
    ComPtr<Interface> other;
    other.Query(object.Get());
    return other;
}

/// The view that `handOut` (a packet's GetResonator or GetAntiResonator) gives.
template <class Interface, class Tract>
ComPtr<Interface> View(HRESULT (Tract::*handOut)(int, IUnknown**, REFIID), const auto& packet, int index) {
    ComPtr<Interface> view;
    Zelvani::CheckResult((As<Tract>(packet).Get()->*handOut)(index, view.PutUnknown(), view.Id()));
    return view;
}
template <class Interface = ITTSResonatorFBParams>
auto Cascade(const auto& packet, int index) {
    return View<Interface>(&ILarynthVocalTractParams::GetResonator, packet, index);
}
template <class Interface = ITTSAntiResonatorFBParams>
auto Zero(const auto& packet) {
    return View<Interface>(&ILarynthVocalTractParams::GetAntiResonator, packet, 0);
}
template <class Interface = ITTSResonatorFBParams>
auto Parallel(const auto& packet, int index) {
    return View<Interface>(&ILarynthParallelTractParams::GetResonator, packet, index);
}

/// What a getter writes; it must succeed.
template <class Interface, class Value>
Value Get(const auto& object, HRESULT (Interface::*get)(Value*)) {
    Value value{};
    EXPECT_EQ(Code((object.Get()->*get)(&value)), "S_OK");
    return value;
}
template <class Interface, class Key, class Value>
Value Get(const auto& object, HRESULT (Interface::*get)(Key, Value*), std::type_identity_t<Key> key) {
    Value value{};
    EXPECT_EQ(Code((object.Get()->*get)(key, &value)), "S_OK");
    return value;
}

inline double ItemValue(const auto& packet, int index) {
    return Get(As<ITTSDoublePacket>(packet), &ITTSDoublePacket::GetItemValue, index);
}

/// The validity of resonator and filter form, each as its interface tells it.
inline std::pair<LONG, LONG> Validity(const auto& packet) {
    return {
        Get(As<ILarynthVocalTractParams>(packet), &ILarynthVocalTractParams::IsResDataValid),
        Get(As<ILarynthVocalTractFilterParams>(packet), &ILarynthVocalTractFilterParams::IsFilterDataValid)};
}

using Three = std::array<double, 3>;

/// The three values of a view's form: F, BW, G, or A, B, C.
template <class FormView>
Three Form(const ComPtr<FormView>& view) {
    if constexpr (requires { &FormView::GetFreq; }) {
        return {Get(view, &FormView::GetFreq), Get(view, &FormView::GetBW), Get(view, &FormView::GetGain)};
    } else {
        return {Get(view, &FormView::GetA), Get(view, &FormView::GetB), Get(view, &FormView::GetC)};
    }
}

/// The object's count of references.
inline ULONG References(IUnknown* object) {
    object->AddRef();
    return object->Release();
}

}  // namespace larynth::test

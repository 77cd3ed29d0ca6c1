// SPDX-License-Identifier: MIT
#pragma once

#include <gtest/gtest.h>

#include <larynth/ComPtr.h>
#include <larynth/Packet.h>
#include <larynth/Resonators.h>

#include "com/Create.h"
#include "packet/LarynthParams.h"

namespace larynth::test {

template <class Interface = ILarynthParams>
ComPtr<Interface> NewPacket() {
    ComPtr<Interface> packet;
    Zelvani::CheckResult(CreateInstance<LarynthParams>(nullptr, packet.Id(), packet.PutVoid()));
    return packet;
}

/// Another interface of the same object, which has it.
template <class Interface, class Source>
ComPtr<Interface> As(const ComPtr<Source>& object) {
    ComPtr<Interface> other;
    other.Query(object.Get());
    return other;
}

/// A view that a packet hands out: `View<ITTSResonatorFBParams>(&ILarynthVocalTractParams::GetResonator, …)`.
template <class Interface, class Tract, class Source>
ComPtr<Interface> View(HRESULT (Tract::*handOut)(int, IUnknown**, REFIID), const ComPtr<Source>& packet,
                       int index) {
    ComPtr<Interface> view;
    Zelvani::CheckResult((As<Tract>(packet).Get()->*handOut)(index, view.PutUnknown(), view.Id()));
    return view;
}

template <class Interface = ITTSResonatorFBParams, class Source>
ComPtr<Interface> Cascade(const ComPtr<Source>& packet, int index) {
    return View<Interface>(&ILarynthVocalTractParams::GetResonator, packet, index);
}
template <class Interface = ITTSAntiResonatorFBParams, class Source>
ComPtr<Interface> Zero(const ComPtr<Source>& packet) {
    return View<Interface>(&ILarynthVocalTractParams::GetAntiResonator, packet, 0);
}
template <class Interface = ITTSResonatorFBParams, class Source>
ComPtr<Interface> Parallel(const ComPtr<Source>& packet, int index) {
    return View<Interface>(&ILarynthParallelTractParams::GetResonator, packet, index);
}

/// What a getter writes; it must succeed.
template <class Object, class Interface, class Value>
Value Get(const ComPtr<Object>& object, HRESULT (Interface::*get)(Value*)) {
    Value value{};
    EXPECT_EQ((object.Get()->*get)(&value), S_OK);
    return value;
}

inline double ItemValue(const ComPtr<ITTSDoublePacket>& items, int index) {
    double value = -1.0;
    EXPECT_EQ(items->GetItemValue(index, &value), S_OK) << "item " << index;
    return value;
}

/// The validity of resonator and filter form, each as its interface tells it.
template <class Source>
std::pair<LONG, LONG> Validity(const ComPtr<Source>& packet) {
    return {
        Get(As<ILarynthVocalTractParams>(packet), &ILarynthVocalTractParams::IsResDataValid),
        Get(As<ILarynthVocalTractFilterParams>(packet), &ILarynthVocalTractFilterParams::IsFilterDataValid)};
}

/// The object's count of references.
inline ULONG References(IUnknown* object) {
    object->AddRef();
    return object->Release();
}

}  // namespace larynth::test

// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <utility>

#include <larynth/Resonators.h>

namespace larynth {

/// A scripted packet's view of one section, as ITTSResonatorABCParams or ITTSAntiResonatorABCParams. It is
/// born unreferenced; each of its references is one on the packet too.
template <class Interface, class Packet>
class FakeSection final : public Interface {
  public:
    FakeSection(Packet& packet, std::string name) : packet_(packet), name_(std::move(name)) {}
    virtual ~FakeSection() = default;

    HRESULT LARYNTH_CALL QueryInterface(REFIID riid, void** ppv) noexcept override {
        const bool own = riid == IID_IUnknown || riid == InterfaceId<Interface>::value;
        *ppv = own ? this : nullptr;
        if (own) AddRef();
        return own ? S_OK : E_NOINTERFACE;
    }
    ULONG LARYNTH_CALL AddRef() noexcept override {
        packet_.AddRef();
        return ++count_;
    }
    ULONG LARYNTH_CALL Release() noexcept override {
        packet_.Release();
        const ULONG left = --count_;
        if (left == 0) delete this;
        return left;
    }

    HRESULT LARYNTH_CALL SetState(int) noexcept override { return E_NOTIMPL; }
    HRESULT LARYNTH_CALL GetState(int*) noexcept override { return E_NOTIMPL; }
    HRESULT LARYNTH_CALL SetA(double d) noexcept override { return packet_.Set(name_ + ".A", d); }
    HRESULT LARYNTH_CALL SetB(double d) noexcept override { return packet_.Set(name_ + ".B", d); }
    HRESULT LARYNTH_CALL SetC(double d) noexcept override { return packet_.Set(name_ + ".C", d); }
    HRESULT LARYNTH_CALL GetA(double* pd) noexcept override { return packet_.Give(name_ + ".A", pd); }
    HRESULT LARYNTH_CALL GetB(double* pd) noexcept override { return packet_.Give(name_ + ".B", pd); }
    HRESULT LARYNTH_CALL GetC(double* pd) noexcept override { return packet_.Give(name_ + ".C", pd); }
    HRESULT LARYNTH_CALL GetIDA(int*) noexcept override { return E_FAIL; }
    HRESULT LARYNTH_CALL GetIDB(int*) noexcept override { return E_FAIL; }
    HRESULT LARYNTH_CALL GetIDC(int*) noexcept override { return E_FAIL; }

  private:
    Packet& packet_;
    std::string name_;
    ULONG count_ = 0;
};

}  // namespace larynth

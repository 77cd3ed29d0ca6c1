// SPDX-License-Identifier: MIT
#pragma once

#include <utility>

#include <larynth/ComException.h>
#include <larynth/Interface.h>
#include <larynth/Runtime.h>

/// Holds at most one counted reference of interface T and releases it on every path.
///
/// Asking that may fail is TryQuery; asking that must succeed is Query, which raises an exception: the name
/// shows at the call which one it is.
template <class T>
class ComPtr {
  public:
    ComPtr() noexcept = default;
    ComPtr(const ComPtr& other) noexcept : held_(other.held_) {
        if (held_ != nullptr) held_->AddRef();
    }
    ComPtr(ComPtr&& other) noexcept : held_(std::exchange(other.held_, nullptr)) {}
    ComPtr& operator=(ComPtr other) noexcept {
        std::swap(held_, other.held_);
        return *this;
    }
    ~ComPtr() { Release(); }

    /// Takes over a reference that the caller owns.
    static ComPtr Adopt(T* pointer) noexcept {
        ComPtr adopted;
        adopted.held_ = pointer;
        return adopted;
    }

    /// Holds a reference of its own beside the caller's; null stays null.
    static ComPtr Share(T* pointer) noexcept {
        if (pointer != nullptr) pointer->AddRef();
        return Adopt(pointer);
    }

    /// Releases what is held, if anything.
    void Release() noexcept {
        if (T* old = std::exchange(held_, nullptr)) old->Release();
    }

    /// Holds `source`'s interface T instead of what was held, or nothing when the query fails, whatever it
    /// wrote before it failed; the query's result.
    HRESULT QueryFrom(IUnknown* source) {
        Release();
        void* answer = nullptr;
        const HRESULT hr = source->QueryInterface(Id(), &answer);
        if (SUCCEEDED(hr)) *this = Adopt(static_cast<T*>(answer));  // the source may have filled it meanwhile
        return hr;
    }

    /// As QueryFrom, for a query that must succeed: raises Zelvani::Exception for a null source and
    /// Zelvani::ComException, with nothing held, for a query that failed.
    void Query(IUnknown* source) {
        Zelvani::CheckPointer(source);
        Zelvani::CheckResult(QueryFrom(source), nullptr, nullptr, "ComPtr", 115);
    }

    /// As QueryFrom, where a missing interface is an answer and not an error: true when one is held.
    bool TryQuery(IUnknown* source) {
        Release();
        return source != nullptr && SUCCEEDED(QueryFrom(source)) && held_ != nullptr;
    }

    /// Holds a new object of class `rclsid`; the result is CoCreateInstance's, E_FAIL for a success without
    /// object.
    HRESULT Create(REFCLSID rclsid, IUnknown* pUnkOuter = nullptr) {
        Release();
        void* made = nullptr;
        const HRESULT hr = CoCreateInstance(rclsid, pUnkOuter, CLSCTX_INPROC_SERVER, Id(), &made);
        *this = Adopt(static_cast<T*>(made));
        return SUCCEEDED(hr) && held_ == nullptr ? E_FAIL : hr;
    }

    T* Get() const noexcept { return held_; }  ///< Null when nothing is held; no reference for the caller.
    T* operator->() const noexcept { return held_; }
    explicit operator bool() const noexcept { return held_ != nullptr; }

    /// Gives the reference to the caller.
    [[nodiscard]] T* Detach() noexcept { return std::exchange(held_, nullptr); }

    /// For a call that writes a reference; what was held is released first.
    T** Put() noexcept {
        Release();
        return &held_;
    }
    /// As Put, for calls that write any interface.
    void** PutVoid() noexcept { return reinterpret_cast<void**>(Put()); }
    /// As Put, for calls that write the interface as IUnknown.
    IUnknown** PutUnknown() noexcept { return reinterpret_cast<IUnknown**>(Put()); }

    /// The identifier of T.
    static constexpr REFIID Id() noexcept { return larynth::InterfaceId<T>::value; }

  private:
    T* held_ = nullptr;
};

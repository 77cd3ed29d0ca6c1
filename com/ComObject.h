// SPDX-License-Identifier: MIT
#pragma once

#include <utility>

#include <larynth/Interface.h>

#include "com/Boundary.h"
#include "com/ModuleLock.h"
#include "com/OutPointer.h"

namespace larynth {

/// The interface that an entry of a ComObject's list stands for. A face (a class that implements one
/// interface over data shared with other faces) names it as `Face::Interface`; an interface stands for
/// itself.
template <class Entry>
struct InterfaceOf {
    using Type = Entry;
};
template <class Face>
requires requires { typename Face::Interface; }
struct InterfaceOf<Face> {
    using Type = typename Face::Interface;
};

/// Base of every component class. The list of template arguments is the bases and the QueryInterface answers,
/// in order; IUnknown gives the first.
///
/// The inner IUnknown counts, answers and destroys; the methods that clients see delegate to the controlling
/// one, which is the outer object's in an aggregate and the inner one otherwise: that one is known, and
/// called without its virtual table. The count is plain: one object is used by one thread at a time. An
/// object is born with one reference, its creator's, which the creator gives back through Inner().
template <class First, class... Others>
class ComObject : public First, public Others... {
  public:
    explicit ComObject(IUnknown* outer) noexcept
        : inner_(*this), controlling_(outer != nullptr ? outer : &inner_) {}
    ComObject(const ComObject&) = delete;
    ComObject& operator=(const ComObject&) = delete;

    HRESULT LARYNTH_CALL QueryInterface(REFIID riid, void** ppv) noexcept final {
        if (StandsAlone()) return inner_.QueryInterface(riid, ppv);
        return Guarded([&] { return controlling_->QueryInterface(riid, ppv); });
    }
    ULONG LARYNTH_CALL AddRef() noexcept final {
        return StandsAlone() ? inner_.AddRef() : controlling_->AddRef();
    }
    ULONG LARYNTH_CALL Release() noexcept final {
        return StandsAlone() ? inner_.Release() : controlling_->Release();
    }

    /// The non-delegating IUnknown. It belongs to whoever created the object: an outer object, or the class
    /// factory.
    IUnknown& Inner() noexcept { return inner_; }

    /// Whether it is no part of an outer object.
    bool StandsAlone() const noexcept { return controlling_ == &inner_; }

  protected:
    virtual ~ComObject() = default;

    /// As Guarded, for a method that calls partners: the object lives until the method ends, even if a
    /// partner gives back the last reference.
    template <class Body>
    HRESULT GuardedAlive(Body&& body) noexcept {
        inner_.AddRef();
        const HRESULT hr = Guarded(std::forward<Body>(body));
        inner_.Release();
        return hr;
    }

  private:
    class InnerUnknown final : public IUnknown {
      public:
        explicit InnerUnknown(ComObject& object) noexcept : object_(object) {}

        HRESULT LARYNTH_CALL QueryInterface(REFIID riid, void** ppv) noexcept override {
            if (!CanWrite(ppv)) return E_POINTER;
            IUnknown* answer = object_.Answer(riid);
            *ppv = answer;
            if (answer == nullptr) return E_NOINTERFACE;
            answer->AddRef();
            return S_OK;
        }
        ULONG LARYNTH_CALL AddRef() noexcept override { return ++count_; }
        ULONG LARYNTH_CALL Release() noexcept override {
            if (const ULONG left = --count_; left != 0) return left;
            count_ = 1;  // a balanced AddRef and Release inside the destructor must not destroy twice
            delete &object_;
            return 0;
        }

      private:
        ComObject& object_;
        ULONG count_ = 1;
    };

    /// The pointer that answers `riid`, without a reference, or null. An interface's IUnknown lies at its
    /// start, so one pointer serves as both.
    IUnknown* Answer(REFIID riid) noexcept {
        if (riid == IID_IUnknown) return StandsAlone() ? Face<First>() : &inner_;
        IUnknown* answer = nullptr;
        static_cast<void>((TryAnswer<First>(riid, answer) || ... || TryAnswer<Others>(riid, answer)));
        return answer;
    }

    template <class Entry>
    bool TryAnswer(REFIID riid, IUnknown*& answer) noexcept {
        if (!(riid == InterfaceId<typename InterfaceOf<Entry>::Type>::value)) return false;
        answer = Face<Entry>();
        return true;
    }

    template <class Entry>
    IUnknown* Face() noexcept {
        return static_cast<IUnknown*>(
            static_cast<typename InterfaceOf<Entry>::Type*>(static_cast<Entry*>(this)));
    }

    ModuleHold moduleHold_;
    InnerUnknown inner_;
    IUnknown* controlling_;  // not counted: an outer object outlives its parts
};

}  // namespace larynth

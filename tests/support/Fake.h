// SPDX-License-Identifier: MIT
/// Scripted partners: objects that a host could bring, which do what the test tells them.
#pragma once

#include <algorithm>
#include <functional>
#include <gtest/gtest.h>
#include <map>
#include <string>
#include <utility>
#include <vector>

#include <larynth/ComPtr.h>

#include "com/ComObject.h"

namespace larynth::test {

/// What the partners of a test answer, and what they were asked. A call has a name ("GetF0" of a packet is
/// "F0"); queries are counted but not listed.
class Script {
  public:
    /// Makes the call return `code`.
    void Return(const std::string& call, HRESULT code) { codes_[call] = code; }
    /// Makes queries for `id` return `code`.
    void ReturnFromQuery(REFIID id, HRESULT code) { queryCodes_.emplace_back(id, code); }
    /// Makes the call, "QueryInterface" among them, raise what no status code stands for.
    void Throw(const std::string& call) { thrower_ = call; }
    /// Does `action` within the `ordinal`th call or query from now on, counted from 1.
    void Do(int ordinal, std::function<void()> action) {
        steps = 0;
        actAt_ = ordinal;
        action_ = std::move(action);
    }
    /// Does it within the next call of this name.
    void Do(std::string call, std::function<void()> action) {
        actIn_ = std::move(call);
        action_ = std::move(action);
    }
    /// Begins to count and to list anew, and makes the `ordinal`th call or query fail, counted from 1.
    void Restart(int failAt = 0) {
        calls.clear();
        failed.clear();
        steps = 0;
        failAt_ = failAt;
    }

    /// Notes the call; its code.
    HRESULT Next(const std::string& call) {
        calls.push_back(call);
        const auto found = codes_.find(call);
        return Step(call, found != codes_.end() ? found->second : S_OK);
    }
    HRESULT NextQuery(REFIID id) {
        const auto found = std::ranges::find(queryCodes_, id, &std::pair<IID, HRESULT>::first);
        return Step("QueryInterface", found != queryCodes_.end() ? found->second : S_OK);
    }

    std::ptrdiff_t Times(const std::string& call) const { return std::ranges::count(calls, call); }

    static constexpr HRESULT kFailure = static_cast<HRESULT>(0x80041234);  ///< Of the call that fails.

    std::vector<std::string> calls;        ///< In order.
    std::map<std::string, double> values;  ///< What getters give; 0 where there is none.
    int steps = 0;                         ///< Calls and queries so far.
    std::string failed;                    ///< The call that was made to fail.

  private:
    HRESULT Step(const std::string& call, HRESULT code) {
        if (call == thrower_) throw 7;
        if ((++steps == actAt_ || call == actIn_) && action_) std::exchange(action_, nullptr)();
        if (steps != failAt_) return code;
        failed = call;
        return kFailure;
    }

    std::map<std::string, HRESULT> codes_;
    std::vector<std::pair<IID, HRESULT>> queryCodes_;
    std::string thrower_;
    std::string actIn_;
    std::function<void()> action_;
    int failAt_ = 0, actAt_ = 0;
};

/// Base of the partners: counts references, answers its list (as ComObject's) and asks the script first. It
/// lives where the test puts it, and at its end nobody may hold it any more.
template <class First, class... Others>
class Fake : public First, public Others... {
  public:
    explicit Fake(Script& told) : script(told) {}
    virtual ~Fake() { EXPECT_EQ(references, 0) << "a reference was not given back"; }
    Fake(const Fake&) = delete;
    Fake& operator=(const Fake&) = delete;

    HRESULT LARYNTH_CALL QueryInterface(REFIID riid, void** ppv) override {
        // On failure a host's object need not write null.
        *ppv = reinterpret_cast<void*>(1);
        const HRESULT code = script.NextQuery(riid);
        if (FAILED(code)) return code;
        if (riid == IID_IUnknown) *ppv = Unknown();
        const bool known =
            riid == IID_IUnknown || Answer<First>(riid, ppv) || (Answer<Others>(riid, ppv) || ...);
        if (known) AddRef();
        return known ? code : E_NOINTERFACE;
    }
    ULONG LARYNTH_CALL AddRef() override { return static_cast<ULONG>(++references); }
    ULONG LARYNTH_CALL Release() override { return static_cast<ULONG>(--references); }

    IUnknown* Unknown() { return static_cast<typename InterfaceOf<First>::Type*>(this); }

    Script& script;
    int references = 0;

  protected:
    /// A getter: the named value, unless the script says otherwise.
    template <class T>
    HRESULT Give(const std::string& call, T* target) {
        const HRESULT code = script.Next(call);
        if (SUCCEEDED(code)) *target = static_cast<T>(script.values[call]);
        return code;
    }

  private:
    template <class Entry>
    bool Answer(REFIID riid, void** ppv) {
        using Interface = typename InterfaceOf<Entry>::Type;
        if (!(riid == InterfaceId<Interface>::value)) return false;
        *ppv = static_cast<Interface*>(this);
        return true;
    }
};

}  // namespace larynth::test

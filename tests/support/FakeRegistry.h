// SPDX-License-Identifier: MIT
#pragma once

#include <map>
#include <string>

#include <larynth/Registry.h>

/// A registry in memory for the code that writes one: paths as they come, one transaction at a time, and any
/// call can be made to fail. It lives on the stack.
class FakeRegistry final : public ILarynthRegistry {
  public:
    using Values = std::map<std::string, std::string>;  // "" is the default value
    using Keys = std::map<std::string, Values>;

    Keys keys;
    int calls = 0;          ///< Since the last reset.
    int failingCall = 0;    ///< This one fails, from 1; 0: none does.
    bool staysBad = false;  ///< So do all after it.

    bool InTransaction() const { return inTransaction_; }

    HRESULT LARYNTH_CALL QueryInterface(REFIID, void** ppv) noexcept override {
        *ppv = nullptr;
        return E_NOINTERFACE;
    }
    ULONG LARYNTH_CALL AddRef() noexcept override { return 1; }
    ULONG LARYNTH_CALL Release() noexcept override { return 1; }

    HRESULT LARYNTH_CALL Begin() noexcept override {
        if (Fails() || inTransaction_) return REGDB_E_WRITEREGDB;
        inTransaction_ = true;
        before_ = keys;
        return S_OK;
    }
    HRESULT LARYNTH_CALL Commit() noexcept override {
        if (Fails() || !inTransaction_) return REGDB_E_WRITEREGDB;
        inTransaction_ = false;
        return S_OK;
    }
    HRESULT LARYNTH_CALL Rollback() noexcept override {
        if (!inTransaction_) return E_FAIL;
        inTransaction_ = false;
        keys = before_;
        return S_OK;
    }
    HRESULT LARYNTH_CALL CreateKey(LPCSTR sKey) noexcept override {
        if (Fails() || !inTransaction_) return REGDB_E_WRITEREGDB;
        keys[sKey];
        return S_OK;
    }
    HRESULT LARYNTH_CALL DeleteKey(LPCSTR sKey) noexcept override {
        if (Fails() || !inTransaction_) return REGDB_E_WRITEREGDB;
        const std::size_t gone = std::erase_if(
            keys, [&](const auto& key) { return key.first == sKey || IsBelow(key.first, sKey); });
        return gone != 0 ? S_OK : S_FALSE;
    }
    HRESULT LARYNTH_CALL SetValue(LPCSTR sKey, LPCSTR sName, LPCSTR sValue) noexcept override {
        if (Fails() || !inTransaction_) return REGDB_E_WRITEREGDB;
        const auto key = keys.find(sKey);
        if (key == keys.end()) return REGDB_E_KEYMISSING;
        key->second[sName] = sValue;
        return S_OK;
    }
    HRESULT LARYNTH_CALL GetValue(LPCSTR sKey, LPCSTR sName, LPCSTR* psValue) noexcept override {
        const auto key = keys.find(sKey);
        if (key == keys.end() || !key->second.contains(sName)) return REGDB_E_KEYMISSING;
        *psValue = key->second[sName].c_str();
        return S_OK;
    }
    HRESULT LARYNTH_CALL GetCounts(LPCSTR sKey, int* pnSubkeys, int* pnValues) noexcept override {
        if (Fails()) return REGDB_E_READREGDB;
        const auto key = keys.find(sKey);
        if (key == keys.end()) return REGDB_E_KEYMISSING;
        *pnValues = static_cast<int>(key->second.size() - key->second.count(""));
        *pnSubkeys = 0;
        for (const auto& [path, values] : keys) *pnSubkeys += IsBelow(path, sKey) ? 1 : 0;
        return S_OK;
    }
    HRESULT LARYNTH_CALL GetSubkey(LPCSTR, int, LPCSTR*) noexcept override { return E_NOTIMPL; }

  private:
    static bool IsBelow(const std::string& path, const std::string& key) {
        return path.starts_with(key + '\\');
    }
    bool Fails() {
        ++calls;
        return calls == failingCall || (staysBad && failingCall != 0 && calls > failingCall);
    }

    bool inTransaction_ = false;
    Keys before_;
};

// SPDX-License-Identifier: MIT
#pragma once

#include <cstdlib>
#include <filesystem>
#include <optional>
#include <stdexcept>
#include <string>

#include <larynth/ComPtr.h>
#include <larynth/Registry.h>

#include "tests/support/Code.h"

/// Sets an environment variable (takes it away) as long as it lives.
class Setting {
  public:
    Setting(const char* name, const char* value) : name_(name) {
        if (const char* before = std::getenv(name)) before_ = before;
        Set(value);
    }
    ~Setting() { Set(before_ ? before_->c_str() : nullptr); }
    Setting(const Setting&) = delete;
    Setting& operator=(const Setting&) = delete;

  private:
    void Set(const char* value) { value != nullptr ? setenv(name_, value, 1) : unsetenv(name_); }

    const char* name_;
    std::optional<std::string> before_;
};

/// A folder of its own in the build tree, removed with all that is in it, and the registration store of this
/// process in it. The store does not exist at first.
class TestStore {
  public:
    TestStore() : folder_(NewFolder()), setting_("LARYNTH_REGISTRY", File().c_str()) {}
    ~TestStore() {
        std::error_code ignored;
        std::filesystem::remove_all(folder_, ignored);
    }
    TestStore(const TestStore&) = delete;
    TestStore& operator=(const TestStore&) = delete;

    const std::filesystem::path& Folder() const { return folder_; }
    std::filesystem::path File() const { return folder_ / "registry.db"; }

    static ComPtr<ILarynthRegistry> Open() {
        ComPtr<ILarynthRegistry> registry;
        if (FAILED(LarynthOpenRegistry(registry.Put()))) throw std::runtime_error(LarynthLastError());
        return registry;
    }

    /// The value of a key, or the code of the failure.
    static std::string Value(const char* key, const char* name = "") {
        LPCSTR value = nullptr;
        const auto registry = Open();
        const HRESULT hr = registry->GetValue(key, name, &value);
        return SUCCEEDED(hr) ? value : Code(hr);
    }

    /// Creates a key with that default value, in a transaction of its own.
    static void Write(const std::string& key, const char* value) {
        const auto registry = Open();
        registry->Begin();
        registry->CreateKey(key.c_str());
        registry->SetValue(key.c_str(), "", value);
        if (FAILED(registry->Commit())) throw std::runtime_error(LarynthLastError());
    }

    /// A key with everything below it, a line for each key and value; empty when there is no such key.
    static std::string Listing(ILarynthRegistry& registry, const std::string& key) {
        int subkeys = 0;
        int values = 0;
        if (FAILED(registry.GetCounts(key.c_str(), &subkeys, &values))) return {};
        std::string text = key;
        LPCSTR value = nullptr;
        if (SUCCEEDED(registry.GetValue(key.c_str(), "", &value))) text += std::string(" = ") + value;
        text += values == 0 ? "\n" : " + " + std::to_string(values) + "\n";
        for (int i = 0; i < subkeys; ++i) {
            LPCSTR name = nullptr;
            if (FAILED(registry.GetSubkey(key.c_str(), i, &name))) return text + "subkey is missing\n";
            text += Listing(registry, key + "\\" + std::string(name));
        }
        return text;
    }

  private:
    static std::filesystem::path NewFolder() {
        std::string pattern = LARYNTH_TEST_DIR "/store-XXXXXX";
        if (mkdtemp(pattern.data()) == nullptr) throw std::runtime_error("no folder for the store");
        return pattern;
    }

    std::filesystem::path folder_;
    Setting setting_;
};

// SPDX-License-Identifier: MIT
#include "host/ClassesCommand.h"

#include <stdexcept>
#include <string>
#include <vector>

#include <larynth/ComPtr.h>
#include <larynth/Registry.h>

#include "host/OutputFile.h"
#include "host/OwnModules.h"
#include "host/TextTable.h"

namespace larynth {
namespace {

using Rows = std::vector<std::vector<std::string>>;

constexpr char kClasses[] = "HKEY_CLASSES_ROOT\\CLSID";

void Check(HRESULT hr) {
    if (FAILED(hr)) throw std::runtime_error(LarynthLastError());
}

/// Empty where there is none.
std::string Value(ILarynthRegistry& registry, const std::string& key, const char* name) {
    LPCSTR value = "";
    const HRESULT hr = registry.GetValue(key.c_str(), name, &value);
    if (hr != REGDB_E_KEYMISSING) Check(hr);
    return value;
}

std::vector<std::string> ClassesIn(ILarynthRegistry& registry) {
    std::vector<std::string> classes;
    LPCSTR name = nullptr;
    HRESULT hr = S_OK;
    while (SUCCEEDED(hr = registry.GetSubkey(kClasses, static_cast<int>(classes.size()), &name))) {
        classes.emplace_back(name);
    }
    if (hr != REGDB_E_KEYMISSING) Check(hr);
    return classes;
}

void AddRows(ILarynthRegistry& registry, const char* source, Rows& rows) {
    for (const std::string& id : ClassesIn(registry)) {
        const std::string key = std::string(kClasses) + '\\' + id;
        const std::string server = key + "\\InprocServer32";
        const std::string module = Value(registry, server, "");
        if (module.empty()) continue;  // of no use to anybody who looks for the class
        rows.push_back({source, id, Value(registry, key + "\\ProgID", ""), Value(registry, key, ""),
                        Value(registry, server, "ThreadingModel"), module});
    }
}

}  // namespace

void RunClassesCommand() {
    Rows rows{{"source", "class", "ProgID", "description", "threading", "module"}};
    for (const std::string& module : OwnModules()) {
        ComPtr<ILarynthRegistry> described;
        Check(LarynthDescribeModule(module.c_str(), described.Put()));
        AddRows(*described.Get(), "loaded", rows);
    }
    ComPtr<ILarynthRegistry> store;
    Check(LarynthOpenRegistry(store.Put()));
    AddRows(*store.Get(), "store", rows);
    OutputFile output("-");
    output.Write(AlignedText(rows));
    output.Commit();
}

}  // namespace larynth

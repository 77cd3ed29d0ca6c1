// SPDX-License-Identifier: MIT
#include <CLI/CLI.hpp>
#include <string>
#include <vector>

#include <larynth/ComPtr.h>
#include <larynth/Registry.h>
#include <larynth/Speech.h>

#include "host/Files.h"
#include "host/command/Listings.h"
#include "input/Text.h"

namespace larynth {
namespace {

constexpr char kClasses[] = "HKEY_CLASSES_ROOT\\CLSID";

/// Empty where there is none.
std::string Value(ILarynthRegistry& registry, const std::string& key, const char* name) {
    LPCSTR value = "";
    const HRESULT hr = registry.GetValue(key.c_str(), name, &value);
    if (hr != REGDB_E_KEYMISSING) RequireRuntime(hr);
    return value;
}

std::vector<std::string> ClassesIn(ILarynthRegistry& registry) {
    std::vector<std::string> classes;
    LPCSTR name = nullptr;
    HRESULT hr = S_OK;
    while (SUCCEEDED(hr = registry.GetSubkey(kClasses, static_cast<int>(classes.size()), &name))) {
        classes.emplace_back(name);
    }
    if (hr != REGDB_E_KEYMISSING) RequireRuntime(hr);
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
        for (std::string& field : rows.back()) field = Printable(field);  // the store is a file
    }
}

void ListClasses() {
    Rows rows{{"source", "class", "ProgID", "description", "threading", "module"}};
    for (const std::string& module : ModulePaths()) {
        ComPtr<ILarynthRegistry> described;
        RequireRuntime(LarynthDescribeModule(module.c_str(), described.Put()));
        AddRows(*described.Get(), "loaded", rows);
    }
    ComPtr<ILarynthRegistry> store;
    RequireRuntime(LarynthOpenRegistry(store.Put()));
    AddRows(*store.Get(), "store", rows);
    RequireRuntime(LarynthOpenSystemRegistry(store.Put()));
    AddRows(*store.Get(), "system", rows);
    WriteToStandardOutput(AlignedText(rows));
}

}  // namespace

void AddClassesCommand(CLI::App& program) {
    program
        .add_subcommand("classes", "List the classes of the loaded modules, of the store and of the system's")
        ->footer("Example:\n  larynth classes | grep TTSVocalTract")
        ->callback(ListClasses);
}

}  // namespace larynth

// SPDX-License-Identifier: MIT
#include "host/command/Listings.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <string>
#include <vector>

#include <larynth/ComPtr.h>
#include <larynth/Registry.h>

#include "host/Errors.h"
#include "host/Files.h"
#include "host/OwnModules.h"
#include "host/tables/ItemVocabulary.h"
#include "input/Text.h"

namespace larynth {
namespace {

using Rows = std::vector<std::vector<std::string>>;  // equally many fields in each

// Columns aligned and two blanks apart.
std::string AlignedText(const Rows& rows) {
    std::vector<std::size_t> widths;
    for (const auto& row : rows) {
        widths.resize(std::max(widths.size(), row.size()));
        for (std::size_t i = 0; i < row.size(); ++i) widths[i] = std::max(widths[i], row[i].size());
    }
    std::string text;
    for (const auto& row : rows) {
        for (std::size_t i = 0; i + 1 < row.size(); ++i) {
            text += row[i] + std::string(widths[i] + 2 - row[i].size(), ' ');
        }
        text += row.back() + '\n';
    }
    return text;
}

constexpr char kClasses[] = "HKEY_CLASSES_ROOT\\CLSID";

void Check(HRESULT hr) {
    if (FAILED(hr)) RaiseLastError();
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
        for (std::string& field : rows.back()) field = Printable(field);  // the store is a file
    }
}

void ListItems() {
    LoadOwnModules();
    const ItemVocabulary vocabulary = ItemVocabulary::OfNewPacket();
    Rows rows{{"index", "ID", "name", "unit", "initial", "meaning"}};
    for (const Item& item : vocabulary.Items()) {
        const auto [unit, text] = MeaningOf(item.name);
        rows.push_back({std::to_string(rows.size() - 1), std::to_string(item.id), item.name,
                        std::string(unit), ShortestText(item.initial), std::string(text)});
    }
    WriteToStandardOutput(AlignedText(rows));
}

void ListClasses() {
    Rows rows{{"source", "class", "ProgID", "description", "threading", "module"}};
    for (const std::string& module : OwnModules()) {
        ComPtr<ILarynthRegistry> described;
        Check(LarynthDescribeModule(module.c_str(), described.Put()));
        AddRows(*described.Get(), "loaded", rows);
    }
    ComPtr<ILarynthRegistry> store;
    Check(LarynthOpenRegistry(store.Put()));
    AddRows(*store.Get(), "store", rows);
    Check(LarynthOpenSystemRegistry(store.Put()));
    AddRows(*store.Get(), "system", rows);
    WriteToStandardOutput(AlignedText(rows));
}

}  // namespace

void AddItemsCommand(CLI::App& program) {
    program.add_subcommand("items", "List the items of a frame with units and initial values")
        ->footer("Example:\n  larynth items | grep Hz")
        ->callback(ListItems);
}

void AddClassesCommand(CLI::App& program) {
    program
        .add_subcommand("classes", "List the classes of the loaded modules, of the store and of the system's")
        ->footer("Example:\n  larynth classes | grep TTSVocalTract")
        ->callback(ListClasses);
}

}  // namespace larynth

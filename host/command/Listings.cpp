// SPDX-License-Identifier: MIT
#include "host/command/Listings.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <memory>
#include <string>
#include <vector>

#include <larynth/ComPtr.h>
#include <larynth/Registry.h>
#include <larynth/Speech.h>

#include "host/Files.h"
#include "host/command/Options.h"
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

Rows ItemRows() {
    LoadModules();
    ComPtr<ITTSDoublePacket> packet;
    Require(packet.Create(CLSID_LarynthParams), "create a packet");
    const KlattFrame newFrame;
    Rows rows{{"index", "ID", "name", "unit", "initial", "meaning"}};
    for (const FrameItem& item : FrameItems()) {
        const int index = static_cast<int>(rows.size()) - 1;
        int id = 0;
        Require(packet->GetIDFromIndex(index, &id), "read an item's ID");
        rows.push_back({std::to_string(index), std::to_string(id), std::string(item.name),
                        std::string(item.unit), ShortestText(newFrame.*item.value),
                        std::string(item.meaning)});
    }
    return rows;
}

// Fields with a comma stand in quotation marks (RFC 4180); there is none with a quotation mark.
std::string CsvText(const Rows& rows) {
    std::string text;
    for (const auto& row : rows) {
        for (std::size_t i = 0; i < row.size(); ++i) {
            const bool quoted = row[i].find(',') != std::string::npos;
            text += (i > 0 ? "," : "") + (quoted ? '"' + row[i] + '"' : row[i]);
        }
        text += '\n';
    }
    return text;
}

// An array of objects, one a line, whose keys stand in the first row. No field needs an escape.
std::string JsonText(const Rows& rows) {
    std::string text = "[";
    for (std::size_t i = 1; i < rows.size(); ++i) {
        text += i > 1 ? ",\n " : "\n ";
        for (std::size_t k = 0; k < rows[i].size(); ++k) {
            const bool isText = !ParseNumber(rows[i][k]);
            text += (k > 0 ? ", \"" : "{\"") + rows[0][k] +
                    "\": " + (isText ? '"' + rows[i][k] + '"' : rows[i][k]);
        }
        text += '}';
    }
    return text + "\n]\n";
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

void AddItemsCommand(CLI::App& program) {
    CLI::App* const command =
        program.add_subcommand("items", "List the items of a frame with units and initial values");
    command->footer("Example:\n  larynth items | grep Hz");
    const auto format = std::make_shared<std::string>("text");
    command->add_option("--format", *format, "How they are listed (default text)")
        ->type_name("text|csv|json");
    command->callback([format] {
        if (*format != "text" && *format != "csv" && *format != "json") {
            Refuse("--format", "text, csv or json", *format);
        }
        const Rows rows = ItemRows();
        WriteToStandardOutput(*format == "text"  ? AlignedText(rows)
                              : *format == "csv" ? CsvText(rows)
                                                 : JsonText(rows));
    });
}

void AddClassesCommand(CLI::App& program) {
    program
        .add_subcommand("classes", "List the classes of the loaded modules, of the store and of the system's")
        ->footer("Example:\n  larynth classes | grep TTSVocalTract")
        ->callback(ListClasses);
}

}  // namespace larynth

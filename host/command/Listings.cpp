// SPDX-License-Identifier: MIT
#include "host/command/Listings.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <memory>
#include <string>
#include <vector>

#include <larynth/ComPtr.h>
#include <larynth/Speech.h>

#include "host/Files.h"
#include "host/command/Options.h"
#include "input/Text.h"

namespace larynth {

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

namespace {

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

}  // namespace larynth

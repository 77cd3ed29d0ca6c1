// SPDX-License-Identifier: MIT
#include "tests/typelib/HeaderText.h"

#include <cctype>

namespace {

/// The same without comments to the end of the line and with single blanks.
std::string Squeezed(const std::string& text) {
    std::string squeezed;
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (text.compare(i, 2, "//") == 0) i = text.find('\n', i);
        if (std::isspace(static_cast<unsigned char>(text[i])) == 0) {
            squeezed += text[i];
        } else if (!squeezed.empty() && squeezed.back() != ' ') {
            squeezed += ' ';
        }
    }
    return squeezed;
}

std::string Trimmed(const std::string& text) {
    const std::size_t start = text.find_first_not_of(' ');
    return start == std::string::npos ? "" : text.substr(start, text.find_last_not_of(' ') + 1 - start);
}

/// Takes what stands in front of `mark`, and the mark, off the text.
std::string TakeUntil(std::string& text, const std::string& mark) {
    const std::size_t end = text.find(mark);
    const std::string taken = text.substr(0, end);
    text.erase(0, end == std::string::npos ? end : end + mark.size());
    return Trimmed(taken);
}

/// LONG as "long", a reference to an identifier as a pointer.
std::string LibrarySpelling(const std::string& type) {
    const std::string spelling = Trimmed(type);
    if (spelling == "REFIID") return "_GUID*";
    return spelling.substr(0, 4) == "LONG" ? "long" + spelling.substr(4) : spelling;
}

/// "int* pnCount /*out*/" as "[out] int* pnCount".
std::string ParameterText(std::string declaration) {
    const std::string typeAndName = TakeUntil(declaration, "/*");
    const std::size_t name = typeAndName.find_last_of(" *") + 1;
    return "[" + TakeUntil(declaration, "*/") + "] " + LibrarySpelling(typeAndName.substr(0, name)) + " " +
           typeAndName.substr(name);
}

/// "virtual HRESULT LARYNTH_CALL Name(parameters) = 0".
std::string FunctionText(std::string declaration) {
    TakeUntil(declaration, "virtual ");
    std::string text = LibrarySpelling(TakeUntil(declaration, "LARYNTH_CALL ")) + " ";
    text += TakeUntil(declaration, "(") + "(";
    std::string parameters = TakeUntil(declaration, ")");
    for (const char* comma = ""; !parameters.empty(); comma = ", ") {
        text += comma + ParameterText(TakeUntil(parameters, ","));
    }
    return text + ")\n";
}

}  // namespace

std::map<std::string, std::string> HeaderListings(const std::string& header) {
    constexpr int kFirstSlot = 3;  // behind IUnknown's
    std::map<std::string, std::string> listings;
    std::string text = Squeezed(header);
    TakeUntil(text, "LARYNTH_INTERFACE(");
    while (!text.empty()) {
        const std::string name = TakeUntil(text, ",");
        TakeUntil(text, "\"");
        std::string listing = "interface " + name + " {" + TakeUntil(text, "\"") + "} : ";
        TakeUntil(text, ":");
        listing += TakeUntil(text, "{") + "\n";
        std::string body = TakeUntil(text, "}");
        for (int slot = kFirstSlot; body.find(';') != std::string::npos; ++slot) {
            listing += "  " + std::to_string(slot) + " " + FunctionText(TakeUntil(body, ";"));
        }
        listings[name] = listing;
        TakeUntil(text, "LARYNTH_INTERFACE(");
    }
    return listings;
}

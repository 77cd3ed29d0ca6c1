// SPDX-License-Identifier: MIT
// The module's type library as it is read back, against the record of what was released and the headers.
#include <cstdio>
#include <fstream>
#include <gtest/gtest.h>
#include <regex>
#include <sstream>

#include <larynth/Larynth.h>

#include "tests/support/Code.h"
#include "tests/support/Content.h"

namespace {

std::string IdText(const GUID& id) {
    const auto& last = id.Data4;
    char text[37];
    std::snprintf(text, sizeof(text), "%08x-%04x-%04x-%02x%02x-%02x%02x%02x%02x%02x%02x", id.Data1, id.Data2,
                  id.Data3, last[0], last[1], last[2], last[3], last[4], last[5], last[6], last[7]);
    return text;
}

ComPtr<ILarynthTypeLibrary> LoadLibraryOf(const std::string& path) {
    ComPtr<ILarynthTypeLibrary> library;
    EXPECT_EQ(Code(LarynthLoadTypeLibrary(path.c_str(), library.Put())), "S_OK") << LarynthLastError();
    return library;
}

std::string FunctionLine(ILarynthTypeLibrary& library, int type, int number) {
    LarynthFunctionInfo function{};
    EXPECT_EQ(Code(library.GetFunction(type, number, &function)), "S_OK");
    std::string parameters;
    for (int i = 0; i < function.ParametersCount; ++i) {
        constexpr const char* kDirections[] = {"[] ", "[in] ", "[out] ", "[in, out] "};
        LarynthParameterInfo parameter{};
        EXPECT_EQ(Code(library.GetParameter(type, number, i, &parameter)), "S_OK");
        parameters += std::string(i > 0 ? ", " : "") + kDirections[parameter.Direction & 3] + parameter.Type +
                      " " + parameter.Name;
    }
    return "  " + std::to_string(function.Slot) + " " + function.ReturnType + " " + function.Name + "(" +
           parameters + ")\n";
}

std::string TypeListing(ILarynthTypeLibrary& library, int type) {
    LarynthTypeInfo about{};
    EXPECT_EQ(Code(library.GetType(type, &about)), "S_OK");
    const std::string name = about.Name, id = " {" + IdText(about.Id) + "} ", help = about.HelpString;
    std::string text = about.Kind == TKIND_INTERFACE ? "interface " + name + id + ": " + about.Base + "\n"
                       : about.Kind == TKIND_COCLASS ? "class " + name + id + "\"" + help + "\"\n"
                       : about.Kind == TKIND_RECORD  ? "record " + name + "\n"
                                                     : "type " + name + "\n";
    for (int i = 0; i < about.FunctionsCount; ++i) text += FunctionLine(library, type, i);
    for (int i = 0; i < about.InterfacesCount; ++i) {
        LarynthImplementedInfo implemented{};
        EXPECT_EQ(Code(library.GetImplemented(type, i, &implemented)), "S_OK");
        text += std::string("  ") + implemented.Name + " {" + IdText(implemented.Id) + "}";
        text += (implemented.Flags & IMPLTYPEFLAG_DEFAULT) != 0 ? " default\n" : "\n";
    }
    return text;
}

/// The whole library: what it says of itself, then its types in their order. An interface is a line with its
/// identifier and base, then a line a method: slot, result, name, parameters.
std::string Listing(ILarynthTypeLibrary& library) {
    LarynthLibraryInfo about{};
    EXPECT_EQ(Code(library.GetLibrary(&about)), "S_OK");
    std::string text = std::string("library ") + about.Name + " {" + IdText(about.Id) + "} version " +
                       std::to_string(about.MajorVersion) + "." + std::to_string(about.MinorVersion) +
                       " locale " + std::to_string(about.Locale) + " \"" + about.HelpString + "\"\n";
    for (int i = 0; i < about.TypesCount; ++i) text += std::string("\n") + TypeListing(library, i);
    return text;
}

std::string Replaced(const std::string& text, const char* pattern, const char* with) {
    return std::regex_replace(text, std::regex(pattern), with);
}

/// The declaration of an interface as a header has it, from its lines in the listing; no blanks.
std::string DeclarationOf(std::istream& listing, const std::string& head) {
    std::string text =
        Replaced(head, R"(interface (\w+) \{(.*)\} : (\w+))", "structLARYNTH_INTERFACE($1,\"$2\"):$3{");
    std::string line;
    for (int slot = 3; std::getline(listing, line) && !line.empty(); ++slot) {
        EXPECT_EQ(std::stoi(line), slot) << head << line;
        line = Replaced(line, R"(\blong\b)", "LONG");
        line = Replaced(line, R"(_GUID\*)", "REFIID");
        line = Replaced(line, R"(\[([a-z, ]+)\] ([^,)]+))", "$2/*$1*/");
        text += Replaced(line, R"( +\d+ (\S+) (.*))", "virtual$1LARYNTH_CALL$2=0;");
    }
    return Replaced(text + "};", R"(\s)", "");
}

}  // namespace

// The file is the record of what was released. A new interface appends to it; a line that is there never
// changes.
TEST(TypeLibrary, ReleasedLinesStand) {
    const std::string listing = Listing(*LoadLibraryOf(LARYNTH_MODULE).Get());
    std::ofstream(LARYNTH_TEST_DIR "/LarynthLib.txt") << listing;
    EXPECT_EQ(listing, ContentOf(LARYNTH_LISTING)) << "what there is now stands in " LARYNTH_TEST_DIR;
    EXPECT_EQ(Listing(*LoadLibraryOf(LARYNTH_TYPE_LIBRARY).Get()), listing) << "the module's is the file's";
}

// No overloads, so the compiler's slots are the order of the lines.
TEST(TypeLibrary, TheHeadersDeclareTheSameInterfacesToTheLetter) {
    std::string headers;
    for (const char* header : {"Packet.h", "Resonators.h", "Sources.h", "Synthesizer.h", "Tracts.h"}) {
        headers += Replaced(ContentOf(std::string(LARYNTH_HEADERS "/") + header), "//[^\n]*|\\s", "");
    }
    std::istringstream listing(ContentOf(LARYNTH_LISTING));
    for (std::string line; std::getline(listing, line);) {
        if (!line.starts_with("interface ")) continue;
        const std::string expected = DeclarationOf(listing, line);
        const std::size_t at = headers.find(expected);
        ASSERT_NE(at, headers.npos) << expected;
        headers.erase(at, expected.size());
    }
    EXPECT_EQ(headers.find("LARYNTH_INTERFACE"), headers.npos) << "not in the listing";
}

TEST(TypeLibrary, AnIndexOutsideAndANullPointerAreRefused) {
    const ComPtr<ILarynthTypeLibrary> library = LoadLibraryOf(LARYNTH_MODULE);
    // The first has four methods of one parameter.
    LarynthTypeInfo type{};
    LarynthFunctionInfo function{};
    LarynthParameterInfo parameter{};
    LarynthImplementedInfo implemented{};
    for (const int outside : {-1, 47}) {
        EXPECT_EQ(Code(library->GetType(outside, &type)), "E_FAIL");
        EXPECT_EQ(Code(library->GetFunction(0, outside, &function)), "E_FAIL");
        EXPECT_EQ(Code(library->GetParameter(0, outside, 0, &parameter)), "E_FAIL");
        EXPECT_EQ(Code(library->GetParameter(0, 0, outside, &parameter)), "E_FAIL");
        EXPECT_EQ(Code(library->GetImplemented(0, outside, &implemented)), "E_FAIL");
        EXPECT_EQ(Code(library->GetImplemented(outside, 0, &implemented)), "E_FAIL");
    }
    EXPECT_EQ(Code(library->GetLibrary(nullptr)), "E_POINTER");
}

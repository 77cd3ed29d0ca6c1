// SPDX-License-Identifier: MIT
#include "tests/typelib/Listing.h"

#include <cstdio>
#include <stdexcept>

namespace {

/// What a description call wrote.
template <class Info, class Call>
Info Asked(Call&& call) {
    Info info{};
    if (FAILED(call(&info))) throw std::runtime_error("the library does not answer for what it counts");
    return info;
}

std::string ParameterText(const LarynthParameterInfo& parameter) {
    std::string text = "[";
    if ((parameter.Direction & PARAMFLAG_IN) != 0) text += "in";
    if (parameter.Direction == (PARAMFLAG_IN | PARAMFLAG_OUT)) text += ", ";
    if ((parameter.Direction & PARAMFLAG_OUT) != 0) text += "out";
    return text + "] " + parameter.Type + " " + parameter.Name;
}

std::string FunctionLine(ILarynthTypeLibrary& library, int type, int number) {
    const auto function =
        Asked<LarynthFunctionInfo>([&](auto* info) { return library.GetFunction(type, number, info); });
    std::string parameters;
    for (int i = 0; i < function.ParametersCount; ++i) {
        if (i > 0) parameters += ", ";
        parameters += ParameterText(Asked<LarynthParameterInfo>(
            [&](auto* info) { return library.GetParameter(type, number, i, info); }));
    }
    return std::string("  ") + std::to_string(function.Slot) + " " + function.ReturnType + " " + function.Name + "(" +
           parameters + ")\n";
}

std::string ClassListing(ILarynthTypeLibrary& library, int type) {
    const auto described = Asked<LarynthTypeInfo>([&](auto* info) { return library.GetType(type, info); });
    std::string text = std::string("class ") + described.Name + " {" + IdText(described.Id) + "} \"" +
                       described.HelpString + "\"\n";
    for (int i = 0; i < described.InterfacesCount; ++i) {
        const auto implemented =
            Asked<LarynthImplementedInfo>([&](auto* info) { return library.GetImplemented(type, i, info); });
        text += std::string("  ") + implemented.Name + " {" + IdText(implemented.Id) + "}";
        text += (implemented.Flags & IMPLTYPEFLAG_DEFAULT) != 0 ? " default\n" : "\n";
    }
    return text;
}

std::string TypeListing(ILarynthTypeLibrary& library, int type) {
    const auto described = Asked<LarynthTypeInfo>([&](auto* info) { return library.GetType(type, info); });
    if (described.Kind == TKIND_INTERFACE) return InterfaceListing(library, type);
    if (described.Kind == TKIND_COCLASS) return ClassListing(library, type);
    return (described.Kind == TKIND_RECORD ? "record " : "type ") + std::string(described.Name) + "\n";
}

}  // namespace

std::string IdText(const GUID& id) {
    const auto& last = id.Data4;
    char text[37];
    std::snprintf(text, sizeof(text), "%08x-%04x-%04x-%02x%02x-%02x%02x%02x%02x%02x%02x", id.Data1, id.Data2,
                  id.Data3, last[0], last[1], last[2], last[3], last[4], last[5], last[6], last[7]);
    return text;
}

ComPtr<ILarynthTypeLibrary> LoadLibraryOf(const std::string& path) {
    ComPtr<ILarynthTypeLibrary> library;
    if (FAILED(LarynthLoadTypeLibrary(path.c_str(), library.Put())))
        throw std::runtime_error(LarynthLastError());
    return library;
}

std::string InterfaceListing(ILarynthTypeLibrary& library, int type) {
    const auto described = Asked<LarynthTypeInfo>([&](auto* info) { return library.GetType(type, info); });
    std::string text = std::string("interface ") + described.Name + " {" + IdText(described.Id) +
                       "} : " + described.Base + "\n";
    for (int i = 0; i < described.FunctionsCount; ++i) text += FunctionLine(library, type, i);
    return text;
}

std::string Listing(ILarynthTypeLibrary& library) {
    const auto about = Asked<LarynthLibraryInfo>([&](auto* info) { return library.GetLibrary(info); });
    std::string text = std::string("library ") + about.Name + " {" + IdText(about.Id) + "} version " +
                       std::to_string(about.MajorVersion) + "." + std::to_string(about.MinorVersion) +
                       " locale " + std::to_string(about.Locale) + " \"" + about.HelpString + "\"\n";
    for (int i = 0; i < about.TypesCount; ++i) text += std::string("\n") + TypeListing(library, i);
    return text;
}

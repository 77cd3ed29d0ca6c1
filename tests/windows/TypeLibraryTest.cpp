// SPDX-License-Identifier: MIT
// The type library as the system's own loader sees it.
#include <gtest/gtest.h>
#include <map>
#include <string>

#include <larynth/ComPtr.h>

#include "tests/support/Code.h"
#include "tests/support/Content.h"

namespace {

/// A text of the system's, which is given back.
std::string Taken(BSTR text) {
    const std::wstring wide = text != nullptr ? text : L"";
    SysFreeString(text);
    return {wide.begin(), wide.end()};
}

std::string IdText(const GUID& id) {
    std::wstring text(39, L'\0');
    StringFromGUID2(id, text.data(), 39);
    for (wchar_t& letter : text) letter = static_cast<wchar_t>(towlower(static_cast<wint_t>(letter)));
    return {text.begin(), text.end() - 1};
}

template <class Described>
std::string Documentation(Described& described, MEMBERID member, int which) {
    BSTR name = nullptr, help = nullptr;
    EXPECT_EQ(Code(described.GetDocumentation(member, &name, &help, nullptr, nullptr)), "S_OK");
    const std::string texts[] = {Taken(name), Taken(help)};
    return texts[which];
}
std::string NameOf(ITypeInfo& type) { return Documentation(type, MEMBERID_NIL, 0); }

/// A type that another one refers to.
ComPtr<ITypeInfo> Referred(ITypeInfo& type, HREFTYPE reference) {
    ComPtr<ITypeInfo> referred;
    EXPECT_EQ(Code(type.GetRefTypeInfo(reference, referred.Put())), "S_OK");
    return referred;
}

std::string TypeText(ITypeInfo& type, const TYPEDESC& described) {
    static const std::map<VARTYPE, std::string> kNames{
        {VT_I4, "long"},     {VT_R8, "double"},       {VT_INT, "int"},          {VT_UI2, "unsigned short"},
        {VT_LPSTR, "LPSTR"}, {VT_HRESULT, "HRESULT"}, {VT_UNKNOWN, "IUnknown*"}};
    if (described.vt == VT_PTR) return TypeText(type, *described.lptdesc) + '*';
    if (described.vt == VT_USERDEFINED) return NameOf(*Referred(type, described.hreftype).Get());
    const auto found = kNames.find(described.vt);
    return found != kNames.end() ? found->second : "type " + std::to_string(described.vt);
}

std::string FunctionLine(ITypeInfo& type, UINT index) {
    FUNCDESC* function = nullptr;
    EXPECT_EQ(Code(type.GetFuncDesc(index, &function)), "S_OK");
    std::vector<BSTR> names(static_cast<std::size_t>(function->cParams) + 1);
    UINT count = 0;
    type.GetNames(function->memid, names.data(), static_cast<UINT>(names.size()), &count);
    EXPECT_EQ(count, names.size());
    std::string text = "  " + std::to_string(function->oVft / static_cast<SHORT>(sizeof(void*))) + ' ' +
                       TypeText(type, function->elemdescFunc.tdesc) + ' ' + Taken(names[0]) + '(';
    for (std::size_t i = 1; i < names.size(); ++i) {
        const ELEMDESC& parameter = function->lprgelemdescParam[i - 1];
        constexpr const char* kDirections[] = {"[] ", "[in] ", "[out] ", "[in, out] "};
        text += (i > 1 ? ", " : "") + std::string(kDirections[parameter.paramdesc.wParamFlags & 3]) +
                TypeText(type, parameter.tdesc) + ' ' + Taken(names[i]);
    }
    type.ReleaseFuncDesc(function);
    return text + ")\n";
}

std::string InterfaceLine(ITypeInfo& type, UINT index) {
    HREFTYPE reference = 0;
    int flags = 0;
    TYPEATTR* about = nullptr;
    type.GetRefTypeOfImplType(index, &reference);
    type.GetImplTypeFlags(index, &flags);
    const auto implemented = Referred(type, reference);
    implemented->GetTypeAttr(&about);
    const std::string text = "  " + NameOf(*implemented.Get()) + ' ' + IdText(about->guid);
    implemented->ReleaseTypeAttr(about);
    return text + ((flags & IMPLTYPEFLAG_FDEFAULT) != 0 ? " default\n" : "\n");
}

std::string TypeListing(ITypeInfo& type) {
    TYPEATTR* about = nullptr;
    type.GetTypeAttr(&about);
    const std::string name = NameOf(type), id = ' ' + IdText(about->guid) + ' ';
    std::string text = "type " + name + '\n';
    HREFTYPE base = 0;
    if (about->typekind == TKIND_RECORD) text = "record " + name + '\n';
    if (about->typekind == TKIND_INTERFACE) {
        type.GetRefTypeOfImplType(0, &base);
        text = "interface " + name + id + ": " + NameOf(*Referred(type, base).Get()) + '\n';
    }
    for (UINT i = 0; i < about->cFuncs; ++i) text += FunctionLine(type, i);
    if (about->typekind == TKIND_COCLASS) {
        text = "class " + name + id + '"' + Documentation(type, MEMBERID_NIL, 1) + "\"\n";
        for (UINT i = 0; i < about->cImplTypes; ++i) text += InterfaceLine(type, i);
    }
    type.ReleaseTypeAttr(about);
    return text;
}

/// In the form of LARYNTH_LISTING, the record of what was released.
std::string Listing(ITypeLib& library) {
    TLIBATTR* about = nullptr;
    library.GetLibAttr(&about);
    std::string text = "library " + Documentation(library, -1, 0) + ' ' + IdText(about->guid) + " version " +
                       std::to_string(about->wMajorVerNum) + '.' + std::to_string(about->wMinorVerNum) +
                       " locale " + std::to_string(about->lcid) + " \"" + Documentation(library, -1, 1) +
                       "\"\n";
    library.ReleaseTLibAttr(about);
    for (UINT i = 0; i < library.GetTypeInfoCount(); ++i) {
        ComPtr<ITypeInfo> type;
        library.GetTypeInfo(i, type.Put());
        text += '\n' + TypeListing(*type.Get());
    }
    return text;
}

TEST(TypeLibrary, IsToTheSystemWhatItIsToOurReader) {
    const GUID id = larynth::ParseGuid("e1d6ebce-52c7-4e5a-81d6-68214bd2805b");
    ComPtr<ITypeLib> library;
    ASSERT_EQ(Code(LoadRegTypeLib(id, 1, 0, 1033, library.Put())), "S_OK");
    EXPECT_EQ(Listing(*library.Get()), ContentOf(LARYNTH_LISTING));
}

}  // namespace

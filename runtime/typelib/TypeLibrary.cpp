// SPDX-License-Identifier: MIT
#include "runtime/typelib/TypeLibrary.h"

namespace larynth {

namespace {

/// The element `index`, or null when there is none.
template <class Element>
const Element* Find(const std::vector<Element>& elements, int index) noexcept {
    if (index < 0 || static_cast<std::size_t>(index) >= elements.size()) return nullptr;
    return &elements[static_cast<std::size_t>(index)];
}

template <class Element>
int Count(const std::vector<Element>& elements) noexcept {
    return static_cast<int>(elements.size());
}

/// Writes what `describe` makes of `subject`, a null one being an index outside.
template <class Subject, class Info, class Describe>
HRESULT Put(Info* info, const Subject* subject, Describe&& describe) noexcept {
    if (!CanWrite(info)) return E_POINTER;
    if (subject == nullptr) return E_FAIL;
    *info = describe(*subject);
    return S_OK;
}

}  // namespace

const DescribedType* TypeLibrary::Type(int type) const noexcept { return Find(contents_.Types, type); }

const DescribedFunction* TypeLibrary::Function(int type, int function) const noexcept {
    const DescribedType* const found = Type(type);
    return found != nullptr ? Find(found->Functions, function) : nullptr;
}

HRESULT TypeLibrary::GetLibrary(LarynthLibraryInfo* pInfo) noexcept {
    return Put(pInfo, &contents_, [](const TypeLibraryContents& library) {
        return LarynthLibraryInfo{library.Name.c_str(), library.HelpString.c_str(), library.Id,
                                  library.MajorVersion, library.MinorVersion,       library.Locale,
                                  Count(library.Types)};
    });
}

HRESULT TypeLibrary::GetType(int nType, LarynthTypeInfo* pInfo) noexcept {
    return Put(pInfo, Type(nType), [](const DescribedType& type) {
        return LarynthTypeInfo{type.Kind,         type.Name.c_str(),     type.HelpString.c_str(), type.Id,
                               type.Base.c_str(), Count(type.Functions), Count(type.Interfaces)};
    });
}

HRESULT TypeLibrary::GetFunction(int nType, int nFunction, LarynthFunctionInfo* pInfo) noexcept {
    return Put(pInfo, Function(nType, nFunction), [](const DescribedFunction& function) {
        return LarynthFunctionInfo{function.Name.c_str(), function.Slot, function.ReturnType.c_str(),
                                   Count(function.Parameters)};
    });
}

HRESULT TypeLibrary::GetParameter(int nType, int nFunction, int nParameter,
                                  LarynthParameterInfo* pInfo) noexcept {
    const DescribedFunction* const function = Function(nType, nFunction);
    const DescribedParameter* const found =
        function != nullptr ? Find(function->Parameters, nParameter) : nullptr;
    return Put(pInfo, found, [](const DescribedParameter& parameter) {
        return LarynthParameterInfo{parameter.Name.c_str(), parameter.Type.c_str(), parameter.Direction};
    });
}

HRESULT TypeLibrary::GetImplemented(int nType, int nInterface, LarynthImplementedInfo* pInfo) noexcept {
    const DescribedType* const type = Type(nType);
    const ImplementedInterface* const found = type != nullptr ? Find(type->Interfaces, nInterface) : nullptr;
    return Put(pInfo, found, [](const ImplementedInterface& implemented) {
        return LarynthImplementedInfo{implemented.Name.c_str(), implemented.Id, implemented.Flags};
    });
}

}  // namespace larynth

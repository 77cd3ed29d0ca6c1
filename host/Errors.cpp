// SPDX-License-Identifier: MIT
#include "host/Errors.h"

#include <array>
#include <cstdio>
#include <stdexcept>
#include <string>

#include <larynth/Runtime.h>

namespace larynth {
namespace {

struct StatusName {
    HRESULT code;
    const char* name;
};

constexpr std::array kStatusNames{
    StatusName{E_NOTIMPL, "E_NOTIMPL"},
    StatusName{E_NOINTERFACE, "E_NOINTERFACE"},
    StatusName{E_POINTER, "E_POINTER"},
    StatusName{E_FAIL, "E_FAIL"},
    StatusName{E_OUTOFMEMORY, "out of memory"},
    StatusName{E_INVALIDARG, "E_INVALIDARG"},
    StatusName{REGDB_E_CLASSNOTREG, "no module offers the class"},
    StatusName{CO_E_DLLNOTFOUND, "the class's module cannot be loaded"},
    StatusName{CO_E_ERRORINDLL, "not a component module"},
};

std::string StatusText(HRESULT hr) {
    char number[sizeof("0x00000000")];
    std::snprintf(number, sizeof(number), "0x%08X", static_cast<unsigned>(hr));
    for (const StatusName& row : kStatusNames) {
        if (row.code == hr) return std::string(row.name) + ", " + number;
    }
    return number;
}

}  // namespace

void Require(HRESULT hr, const char* what) {
    if (FAILED(hr)) throw std::runtime_error("cannot " + std::string(what) + " (" + StatusText(hr) + ")");
}

void RaiseLastError() { throw std::runtime_error(LarynthLastError()); }

}  // namespace larynth

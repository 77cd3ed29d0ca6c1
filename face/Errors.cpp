// SPDX-License-Identifier: MIT
#include <array>
#include <cstdio>
#include <string>
#include <utility>

#include <larynth/Runtime.h>
#include <larynth/Speech.h>

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

Error::Error(HRESULT status, const std::string& what) : std::runtime_error(what), status_(status) {}
Error::~Error() = default;

InputError::InputError(const std::string& what) : Error(E_INVALIDARG, what) {}
InputError::InputError(const std::string& what, std::string file, std::int64_t line, std::int64_t column)
    : Error(E_INVALIDARG, what), file_(std::move(file)), line_(line), column_(column) {}
InputError::~InputError() = default;

void Require(HRESULT status, const char* what) {
    if (FAILED(status)) throw Error(status, "cannot " + std::string(what) + " (" + StatusText(status) + ")");
}

void RequireRuntime(HRESULT status) {
    if (FAILED(status)) throw Error(status, LarynthLastError());
}

}  // namespace larynth

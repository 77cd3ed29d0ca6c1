// SPDX-License-Identifier: MIT
#include <exception>
#include <string>

#include <larynth/Speech.h>

#include "input/BadInput.h"
#include "python/Module.h"

namespace larynth {
namespace {

namespace py = pybind11;

/// The class of this name in the package's own module of errors.
py::object ErrorClass(const char* name) { return py::module_::import("larynth.errors").attr(name); }

void Raise(const py::object& error) { PyErr_SetObject(error.get_type().ptr(), error.ptr()); }

/// Names of files need not be UTF-8.
py::object Text(const std::string& text) {
    const auto size = static_cast<py::ssize_t>(text.size());
    return py::reinterpret_steal<py::object>(PyUnicode_DecodeUTF8(text.data(), size, "surrogateescape"));
}

void RaiseInputError(const char* what, const std::string& file, std::int64_t line, std::int64_t column) {
    Raise(ErrorClass("InputError")(Text(what), Text(file), line, column));
}

void Translate(std::exception_ptr thrown) {
    try {
        std::rethrow_exception(thrown);
    } catch (const InputError& error) {
        RaiseInputError(error.what(), error.File(), error.Line(), error.Column());
    } catch (const Error& error) {
        Raise(ErrorClass("Error")(Text(error.what()), error.Status()));
    } catch (const BadInput& error) {
        const TextPosition& where = error.Where();
        RaiseInputError(error.what(), where.file, where.line, where.column);
    }
}

}  // namespace

void BindErrors(py::module_&) { py::register_exception_translator(&Translate); }

}  // namespace larynth

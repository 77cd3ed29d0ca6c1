// SPDX-License-Identifier: MIT
#include <cstddef>
#include <string>

#include "python/Arrays.h"
#include "python/Module.h"

namespace larynth {
namespace {

namespace py = pybind11;

std::size_t OffsetOf(const FrameItem& item) {
    static const KlattFrame frame;
    const auto address = [](const auto& part) { return reinterpret_cast<const char*>(&part); };
    return static_cast<std::size_t>(address(frame.*item.value) - address(frame));
}

py::dtype MakeFrameDtype() {
    py::list names, formats, offsets;
    const auto add = [&](std::string_view name, const py::dtype& format, std::size_t offset) {
        names.append(name);
        formats.append(format);
        offsets.append(offset);
    };
    add("length", py::dtype::of<int>(), offsetof(KlattFrame, length));
    for (const FrameItem& item : FrameItems()) add(item.name, py::dtype::of<double>(), OffsetOf(item));
    py::dict layout;
    layout["names"] = names;
    layout["formats"] = formats;
    layout["offsets"] = offsets;
    layout["itemsize"] = sizeof(KlattFrame);
    return py::module_::import("numpy").attr("dtype")(layout, py::arg("align") = true);
}

/// Name, unit, meaning, and the value of a new packet.
py::list Items() {
    py::list rows;
    const KlattFrame initial;
    for (const FrameItem& item : FrameItems()) {
        rows.append(py::make_tuple(item.name, item.unit, item.meaning, initial.*item.value));
    }
    return rows;
}

}  // namespace

py::dtype FrameDtype() {
    static const py::handle dtype = MakeFrameDtype().release();  // for the interpreter's life
    return py::reinterpret_borrow<py::dtype>(dtype);
}

std::span<const KlattFrame> FramesIn(const py::array& frames) {
    const bool isContiguous = (frames.flags() & py::array::c_style) != 0;
    const auto address = reinterpret_cast<std::uintptr_t>(frames.data());
    if (!frames.dtype().equal(FrameDtype()) || frames.ndim() != 1 || !isContiguous ||
        address % alignof(KlattFrame) != 0) {
        throw InputError("expected a contiguous array of frames in one dimension");
    }
    return {static_cast<const KlattFrame*>(frames.data()), static_cast<std::size_t>(frames.size())};
}

void BindFrames(py::module_& module) {
    module.attr("frame_dtype") = FrameDtype();
    module.def("items", &Items);
    module.def("require_item", [](const std::string& name) { static_cast<void>(KlattFrame()[name]); });
}

}  // namespace larynth

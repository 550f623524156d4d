#pragma once

#include <pybind11/pybind11.h>

namespace binding {

/// The classes of the public headers.
void bindClasses(pybind11::module_& module);

/// What isdbt-inspect says of streams.
void bindInspection(pybind11::module_& module);

} // namespace binding

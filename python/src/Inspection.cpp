#include "Module.h"
#include "RunningInspection.h"

#include <pybind11/stl.h>

namespace binding {

namespace py = pybind11;

void bindInspection(py::module_& module) {
    py::register_exception<inspect::UsageError>(module, "UsageError", PyExc_ValueError).doc() =
        "The options do not fit: the text is that of isdbt-inspect.";
    py::register_exception<InspectionError>(module, "InspectionError", PyExc_OSError).doc() =
        "An input could not be read to its end: the text is that of isdbt-inspect.";
    py::class_<RunningInspection>(
        module, "RunningInspection",
        "The lines that isdbt-inspect --json prints; the words of its command line are given.")
        .def(py::init<std::vector<std::string>>(), py::arg("words"))
        .def("__iter__", [](py::object self) { return self; })
        .def("__next__", &RunningInspection::nextLine)
        .def("close", &RunningInspection::close)
        .def_property_readonly("status", &RunningInspection::status);
}

} // namespace binding

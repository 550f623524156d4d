#include "Module.h"

PYBIND11_MODULE(_quor_isdbt, module) {
    binding::bindClasses(module);
    binding::bindInspection(module);
}

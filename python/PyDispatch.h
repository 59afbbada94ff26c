#pragma once
#include <pybind11/pybind11.h>

namespace vexplot::python {

// Registers vexplot.AutomationObject: the Python face of the annotation
// objects (CoLabel, CoMarker, CoRegion) and their collections. Members are
// reached by dispatch name like the control's (out arguments come back as
// a tuple: `ok, x, y, z = marker.Position()`); a collection also takes
// len(), indexing (negative indices count from the end; IndexError
// outside) and iteration; == compares object identity.
void RegisterDispatchObject(pybind11::module_& module);

}  // namespace vexplot::python

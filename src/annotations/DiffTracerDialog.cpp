#include "annotations/DiffTracerDialog.h"

#include "annotations/CGD_DiffTracer.h"

namespace vexplot {

DiffTracerDialog::DiffTracerDialog(CGD_DiffTracer& tracer)
    : x(tracer.GetX()),
      y(tracer.GetY()),
      z(tracer.GetZ()),
      drawLine(tracer.DrawLine()),
      color(tracer.Color()),
      tracer_(tracer) {}

bool DiffTracerDialog::Accept(std::string* error) {
    // Z may be NoZValue (the fixed point lies off the surface), which is finite.
    if (!CheckFinite({x, y, z}, "the fixed position", error)) return false;
    tracer_.SetPosition(x, y, z);
    tracer_.SetDrawLine(drawLine);
    tracer_.SetColor(color);
    return true;
}

}  // namespace vexplot

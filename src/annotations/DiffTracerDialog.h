#pragma once
#include <cstdint>
#include <string>

#include "annotations/AnnotationDialog.h"

namespace vexplot {

class CGD_DiffTracer;

// "Difference Tracer": " Fixed Position: " "&X:", "&Y:", "&Z:", "Draw &Line"
// and "&Color:".
class DiffTracerDialog final : public AnnotationDialog {
public:
    explicit DiffTracerDialog(CGD_DiffTracer& tracer);
    std::string_view DialogName() const override { return "DiffTracerProperties"; }
    const char* Caption() const override { return "Difference Tracer"; }
    bool Accept(std::string* error) override;

    double x, y, z;
    bool drawLine;
    uint32_t color;

private:
    CGD_DiffTracer& tracer_;
};

}  // namespace vexplot

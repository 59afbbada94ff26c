#pragma once
#include <cstdint>
#include <vector>

#include "engine/ExportScene.h"

namespace vexplot {

// An exported scene as a one-page PDF: polygons and polylines as paths,
// texts in the standard Helvetica faces (metric twins of Arial), images as
// compressed RGB image objects. The page is the picture at 96 dpi.
class PdfWriter {
public:
    static std::vector<uint8_t> Write(const ExportScene& scene);
};

}  // namespace vexplot

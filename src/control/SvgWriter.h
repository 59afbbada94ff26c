#pragma once
#include <string>

#include "engine/ExportScene.h"

namespace vexplot {

// An exported scene as an SVG 1.1 document: polygons and polylines as
// such, texts as text (the face with sans-serif behind it), images as
// embedded PNG. Numbers are written with a dot whatever the locale.
class SvgWriter {
public:
    static std::string Write(const ExportScene& scene);
};

}  // namespace vexplot

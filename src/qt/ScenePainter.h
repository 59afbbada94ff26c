#pragma once
#include <QRectF>

#include "engine/ExportScene.h"

class QPainter;

namespace vexplot {

// Draws an exported scene with a QPainter (a printer, a preview page, an
// image), scaled to fit `target` with its proportions kept and centred:
// polygons, lines and texts stay vectors wherever the device keeps them.
void PaintScene(QPainter& painter, const ExportScene& scene, const QRectF& target);

}  // namespace vexplot

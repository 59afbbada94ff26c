#pragma once
#include <QFont>

#include "model/LogicalFont.h"

namespace vexplot {

// The Qt font of a logical font: a negative height is the character height
// in pixels (the em size), a positive one the cell height.
QFont ToQFont(const LogicalFont& font);

}  // namespace vexplot

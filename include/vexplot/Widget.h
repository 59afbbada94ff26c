#pragma once
// The control as a Qt widget: VexplotWidget, with the control behind it
// (Control()). Link Vexplot::Widget (pkg-config: vexplot-widget).
#include "qt/VexplotWidget.h"
#include "vexplot/Control.h"

#pragma once
// The site of a control without windows: pictures come out as bitmaps,
// message boxes go to stderr and dialogs are answered by the host's script;
// ImageFile saves a picture as PNG or BMP.
#include "control/HeadlessSite.h"
#include "vexplot/Control.h"
#include "control/ImageFile.h"

#pragma once
// The control for any host: CUI_VexplotCtrl with its properties, methods,
// events and saved state, created with MakeComObject and placed on a site
// (vexplot/HeadlessSite.h for batch hosts, vexplot/Widget.h for Qt).
// Link Vexplot::Control (pkg-config: vexplot).
#include "com/ComObject.h"
#include "com/ComPtr.h"
#include "control/CUI_VexplotCtrl.h"
#include "settings/SettingsStore.h"
#include "vexplot/EngineSetup.h"
#include "vexplot/GraphData.h"
#include "vexplot/Version.h"

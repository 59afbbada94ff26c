#pragma once

namespace vexplot {

// Registers the data object's class factory for CLSID_GraphData with the
// class registry, for in-process servers and handlers (CLSCTX_INPROC), so
// that CoCreateInstance(CLSID_GraphData, ...) makes a GraphDataObject.
// Safe to call any number of times from any thread; only the first
// registers.
void RegisterGraphDataClass();

}  // namespace vexplot

#pragma once
#include "com/Guid.h"
#include "com/IDispatch.h"

namespace vexplot {

// The data object's outgoing dispatch interface. Sinks implement IDispatch
// (see GraphDataEventSink) and are called through Invoke with these dispids.
inline constexpr IID IID_IGraphDataEvents = GUID::FromLiteral("{FF6FFCFE-A914-4FF1-95CC-01A279906355}");

inline constexpr DISPID DISPID_DataChanged = 1;    // no parameters: the grid or a value changed
inline constexpr DISPID DISPID_TicksChanged = 2;   // one I4: 0 X scale, 1 Y scale, 2 both
inline constexpr DISPID DISPID_LabelsChanged = 3;  // no parameters: a label or the name changed

}  // namespace vexplot

#pragma once
#include "com/IPersist.h"
#include "com/IStream.h"

namespace vexplot {

// An embedded object in a stream: its CLSID (16 bytes, the GUID's fields
// little-endian), then the object's own IPersistStream data. A null object
// is the null CLSID alone, so a reader can tell "no object" from a failure.

// Writes `object` (null allowed) at the stream's position.
HRESULT OleSaveToStream(IPersistStream* object, IStream* stream);

// Reads an embedded object: creates its class (in-process), loads it and
// returns its `iid` interface in *out. A null object gives S_FALSE and a
// null *out. Failures leave the stream where the reader stopped, with a
// description through SetErrorInfo.
HRESULT OleLoadFromStream(IStream* stream, const IID& iid, void** out);

}  // namespace vexplot

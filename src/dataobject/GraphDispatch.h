#pragma once
#include <cstdint>

#include "com/IDispatch.h"

namespace vexplot {

class IGraphData;
class IGraphDataAccess;

// The late-bound face of the data object: its properties by name and
// dispatch id, answered through the object's own interfaces.
//
//   dispid  name      arguments       access
//   1       Data      -               get, put (two-dimensional array)
//   2       XScale    -               get, put (one-dimensional array)
//   3       YScale    -               get, put
//   4       XLabel    -               get, put (string)
//   5       YLabel    -               get, put
//   6       ZLabel    -               get, put
//   7       Name      -               get, put
//   8       Value     row, column     get, put (double)
//   9       XCount    -               get
//   10      YCount    -               get
//   11      ZMin      -               get
//   12      ZMax      -               get
//   13      State     -               get
//
// Names match case-insensitively. Invoke answers as automation clients
// expect: DISP_E_MEMBERNOTFOUND for an unknown dispid or a put of a
// read-only property, DISP_E_BADPARAMCOUNT for the wrong number of
// arguments, DISP_E_TYPEMISMATCH (with *argErr) for an argument that does
// not convert, DISP_E_NONAMEDARGS for named arguments other than the put
// value. When the property itself fails, Invoke returns DISP_E_EXCEPTION with
// the failure's code and description in *excepInfo, or the failure's code
// when there is no excepInfo.
class GraphDispatch {
public:
    static HRESULT GetIDsOfNames(const char* const* names, uint32_t count, DISPID* ids);
    static HRESULT Invoke(IGraphData& data, IGraphDataAccess& access, DISPID member, uint16_t flags,
                          DispParams* params, Variant* result, ExcepInfo* excepInfo, uint32_t* argErr);
};

}  // namespace vexplot

#pragma once
#include <cstdint>
#include <string>

#include "com/IUnknown.h"

namespace vexplot {

class Variant;

// Fast, read-mostly access to a data object for the graph object and the
// engine. Z extents ignore NaN cells (NaN means "no value"); a grid without
// any finite value reports 0 for both.
class IGraphDataAccess : public IUnknown {
public:
    using Base = IUnknown;
    static constexpr IID kIid = GUID::FromLiteral("{7E9F49F0-4181-4FBF-8D6C-321559E33721}");

    // Slots 3 and 4 answer S_FALSE (and 0) for a grid without a finite value.
    virtual HRESULT GetZMin(double* zMin) = 0;             // slot 3: lowest finite value
    virtual HRESULT GetZMax(double* zMax) = 0;             // slot 4: highest finite value
    virtual HRESULT GetData(Variant* grid) = 0;            // slot 5: VT_ARRAY|VT_R8, two dimensions
    virtual HRESULT GetXScale(Variant* scale) = 0;         // slot 6: VT_ARRAY|VT_R8, one dimension
    virtual HRESULT GetYScale(Variant* scale) = 0;         // slot 7: VT_ARRAY|VT_R8, one dimension
    virtual HRESULT GetSize(int32_t* xCount, int32_t* yCount) = 0;             // slot 8
    // Scale values at indices (clamped to the grid): the inverse of slot 13.
    virtual HRESULT IndicesToValues(int32_t xIndex, int32_t yIndex, double* x, double* y) = 0;  // slot 9
    // The value of the cell nearest to (x, y), as slot 13 finds it.
    virtual HRESULT GetValueAt(double x, double y, double* z) = 0;             // slot 10
    // Number of cells holding NaN ("no value").
    virtual HRESULT GetMissingCount(int64_t* count) = 0;                       // slot 11
    // Direct read-only view of the grid for bulk readers (the engine's
    // upload): valid until the next change of the data object.
    virtual HRESULT GetGridPointer(const double** values, int32_t* xCount, int32_t* yCount) = 0;  // slot 12
    // Index of the nearest scale element for x and for y, clamped to the
    // grid; scales may ascend or descend.
    virtual HRESULT ValuesToIndices(double x, double y, int32_t* xIndex, int32_t* yIndex) = 0;  // slot 13

protected:
    ~IGraphDataAccess() = default;
};

}  // namespace vexplot

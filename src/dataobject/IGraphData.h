#pragma once
#include <cstdint>
#include <string>

#include "com/IDispatch.h"
#include "com/SafeArray.h"

namespace vexplot {

// The data object's class: a grid of doubles with one scale per horizontal
// axis and three axis labels, created through the class registry.
inline constexpr CLSID CLSID_GraphData = GUID::FromLiteral("{8D5D1D92-6199-4AEC-900A-EF2724B42BB0}");

// The data object's main interface (dual: also reachable through Invoke).
//
// Grid addressing: a grid of X count by Y count holds value (ix, iy) at
// position ix * (Y count) + iy, the X index being the slower one. As a
// SafeArray it has two dimensions, dimension 0 = Y (fastest) and
// dimension 1 = X. A "row" is one X index, a "column" one Y index.
//
// Every operation returns an HRESULT; out parameters are left untouched on
// failure, and a failed put changes nothing.
class IGraphData : public IDispatch {
public:
    using Base = IDispatch;
    static constexpr IID kIid = GUID::FromLiteral("{E22BFE0E-CEB5-4C3E-BDBB-C54414943F7B}");

    virtual HRESULT GetData(SafeArray* grid) = 0;                // slot 7: the grid, sharing storage until written
    // Replaces the grid. When its sizes differ from the scales', the scales
    // become the indices 0, 1, 2, ... of the new sizes. Raises DataChanged.
    virtual HRESULT PutData(const SafeArray& grid) = 0;          // slot 8
    virtual HRESULT GetXScale(SafeArray* scale) = 0;             // slot 9: one value per X index
    // Replaces the X scale; its length must equal the X count
    // (E_INVALIDARG otherwise). Raises TicksChanged(0).
    virtual HRESULT PutXScale(const SafeArray& scale) = 0;       // slot 10
    virtual HRESULT GetYScale(SafeArray* scale) = 0;             // slot 11
    virtual HRESULT PutYScale(const SafeArray& scale) = 0;       // slot 12: as slot 10, TicksChanged(1)
    virtual HRESULT GetXLabel(std::string* label) = 0;           // slot 13
    virtual HRESULT PutXLabel(const std::string& label) = 0;     // slot 14: raises LabelsChanged
    virtual HRESULT GetYLabel(std::string* label) = 0;           // slot 15
    virtual HRESULT PutYLabel(const std::string& label) = 0;     // slot 16: raises LabelsChanged
    virtual HRESULT GetZLabel(std::string* label) = 0;           // slot 17
    virtual HRESULT PutZLabel(const std::string& label) = 0;     // slot 18: raises LabelsChanged
    // The revision of the contents: 0 for an object never filled, then one
    // more for every change. Readers call it before reading the sizes, and a
    // reader that cached sizes can tell whether they are still current.
    virtual int32_t GetState() = 0;                              // slot 19
    virtual HRESULT GetSize(int32_t* xCount, int32_t* yCount) = 0;  // slot 20
    // Replaces grid and both scales in one step (one DataChanged): the grid
    // must be X count by Y count for scales of those lengths (E_INVALIDARG).
    virtual HRESULT SetGrid(const SafeArray& grid, const SafeArray& xScale,
                            const SafeArray& yScale) = 0;        // slot 21
    virtual HRESULT GetName(std::string* name) = 0;              // slot 22: the data set's name, for legends and titles
    virtual HRESULT PutName(const std::string& name) = 0;        // slot 23: raises LabelsChanged
    virtual HRESULT GetValue(int32_t row, int32_t column, double* value) = 0;  // slot 24: DISP_E_BADINDEX outside
    virtual HRESULT PutValue(int32_t row, int32_t column, double value) = 0;   // slot 25: raises DataChanged

protected:
    ~IGraphData() = default;
};

}  // namespace vexplot

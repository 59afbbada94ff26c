#pragma once
#include <cstdint>
#include <string>

#include "com/ComObject.h"
#include "com/ConnectionPointList.h"
#include "com/IConnectionPoint.h"
#include "com/IPersist.h"
#include "dataobject/GraphContents.h"
#include "dataobject/IGraphData.h"
#include "dataobject/IGraphDataAccess.h"
#include "dataobject/ZExtentCache.h"

namespace vexplot {

// The data object (class CLSID_GraphData): a grid of doubles with an X and a
// Y scale, three axis labels and a name, with change notifications and
// persistence. Made by its class factory (see RegisterGraphDataClass) or by
// MakeComObject; used from one thread, like the control that shows it.
//
// Storage: the grid and the scales are SafeArrays shared with callers. Get
// hands out the object's storage without copying; Put adopts the caller's
// storage; the first write after sharing (PutValue) copies once.
//
// Notifications (IGraphDataEvents, one connection point): after a change
// completes, each kind of change that happened is announced once, in the
// order DataChanged (grid or a value), TicksChanged (0 X scale, 1 Y scale,
// 2 both), LabelsChanged (a label or the name). So PutData that also resets
// the X scale raises DataChanged then TicksChanged(0); a load raises all
// three. A failed call changes nothing and raises nothing. Each change also
// advances GetState by one.
//
// Scales on PutData: a scale whose length no longer matches the new grid
// becomes 0, 1, 2, ...; a scale that still matches is kept. A null or empty
// grid clears the object (sizes 0, empty scales).
//
// Indices: GetValue/PutValue take (row = X index, column = Y index) from 0,
// whatever lower bounds the stored arrays have.
//
// Persistence: IPersistStream writes GraphStreamFormat; IPersistFile saves
// that form (a ".3do" file, whatever the name's extension, through
// WriteFileAtomically) and loads by extension (GraphFileLoader). A failed
// load leaves the object unchanged; failures leave a description through
// SetErrorInfo.
class GraphDataObject final
    : public ComObject<IGraphData, IGraphDataAccess, IConnectionPointContainer, IPersistStream, IPersistFile> {
public:
    GraphDataObject();

    // IDispatch (see GraphDispatch for the members).
    HRESULT GetTypeInfoCount(uint32_t* count) override;
    HRESULT GetTypeInfo(uint32_t index, LCID lcid, IUnknown** info) override;
    HRESULT GetIDsOfNames(const IID& riid, const char* const* names, uint32_t count, LCID lcid,
                          DISPID* ids) override;
    HRESULT Invoke(DISPID member, const IID& riid, LCID lcid, uint16_t flags, DispParams* params, Variant* result,
                   ExcepInfo* excepInfo, uint32_t* argErr) override;

    // IGraphData.
    HRESULT GetData(SafeArray* grid) override;
    HRESULT PutData(const SafeArray& grid) override;
    HRESULT GetXScale(SafeArray* scale) override;
    HRESULT PutXScale(const SafeArray& scale) override;
    HRESULT GetYScale(SafeArray* scale) override;
    HRESULT PutYScale(const SafeArray& scale) override;
    HRESULT GetXLabel(std::string* label) override;
    HRESULT PutXLabel(const std::string& label) override;
    HRESULT GetYLabel(std::string* label) override;
    HRESULT PutYLabel(const std::string& label) override;
    HRESULT GetZLabel(std::string* label) override;
    HRESULT PutZLabel(const std::string& label) override;
    int32_t GetState() override;
    HRESULT GetSize(int32_t* xCount, int32_t* yCount) override;  // also IGraphDataAccess slot 8
    HRESULT SetGrid(const SafeArray& grid, const SafeArray& xScale, const SafeArray& yScale) override;
    HRESULT GetName(std::string* name) override;
    HRESULT PutName(const std::string& name) override;
    HRESULT GetValue(int32_t row, int32_t column, double* value) override;
    HRESULT PutValue(int32_t row, int32_t column, double value) override;

    // IGraphDataAccess. Without a grid, IndicesToValues and GetValueAt
    // answer DISP_E_BADINDEX and ValuesToIndices gives (0, 0).
    HRESULT GetZMin(double* zMin) override;
    HRESULT GetZMax(double* zMax) override;
    HRESULT GetData(Variant* grid) override;
    HRESULT GetXScale(Variant* scale) override;
    HRESULT GetYScale(Variant* scale) override;
    HRESULT IndicesToValues(int32_t xIndex, int32_t yIndex, double* x, double* y) override;
    HRESULT GetValueAt(double x, double y, double* z) override;
    HRESULT GetMissingCount(int64_t* count) override;
    HRESULT GetGridPointer(const double** values, int32_t* xCount, int32_t* yCount) override;
    HRESULT ValuesToIndices(double x, double y, int32_t* xIndex, int32_t* yIndex) override;

    // IConnectionPointContainer: one point, IID_IGraphDataEvents.
    HRESULT GetConnectionPointCount(uint32_t* count) override;
    HRESULT FindConnectionPoint(const IID& iid, IConnectionPoint** out) override;

    // IPersist, IPersistStream, IPersistFile. IsDirty and GetClassID serve
    // both persistence interfaces.
    HRESULT GetClassID(CLSID* clsid) override;
    HRESULT IsDirty() override;
    HRESULT Load(IStream* stream) override;
    HRESULT Save(IStream* stream, bool clearDirty) override;
    HRESULT GetSizeMax(uint64_t* size) override;
    // `mode` is accepted and ignored: the file is only read, never locked.
    HRESULT Load(const char* fileName, uint32_t mode) override;
    // A null `fileName` saves to the current file.
    HRESULT Save(const char* fileName, bool remember) override;
    HRESULT SaveCompleted(const char* fileName) override;
    // S_FALSE and "*.3do" when the object has no file yet; E_INVALIDARG
    // when `size` has no room for the name and its terminator.
    HRESULT GetCurFile(char* buffer, uint32_t size) override;

private:
    // What a change touched; each set bit raises its notification once.
    enum Change : unsigned { kGrid = 1, kXScale = 2, kYScale = 4, kLabels = 8, kAll = 15 };

    ~GraphDataObject() override;

    void Commit(unsigned changes);
    void Adopt(GraphContents next);
    HRESULT PutScale(const SafeArray& scale, bool xAxis);
    HRESULT PutText(std::string GraphContents::*field, const std::string& text);
    static HRESULT GetText(const std::string& field, std::string* text);
    const ZExtentCache::Extent& Extent();
    HRESULT ExtentResult() const;

    GraphContents contents_;
    ZExtentCache extent_;
    int32_t revision_ = 0;
    int32_t savedRevision_ = 0;
    std::string currentFile_;
    ConnectionPointList points_;
    ConnectionPoint& events_;
};

}  // namespace vexplot

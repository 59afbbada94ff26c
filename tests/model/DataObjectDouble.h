#pragma once
#include <functional>
#include <map>
#include <memory>

#include "CallLog.h"
#include "com/ComObject.h"
#include "com/IClassFactory.h"
#include "com/IConnectionPoint.h"
#include "com/IPersist.h"
#include "dataobject/IGraphData.h"
#include "dataobject/IGraphDataAccess.h"

namespace vexplot::test {

// A data object for failure paths: forwards every call to a real data
// object, records it in `log` by operation name ("GetXScale",
// "AccessGetData" for access slot 5, "Load", "Run", ...) and answers the
// failure injected there instead of forwarding. QueryInterface answers
// `queryResults` for the interfaces listed there (E_NOINTERFACE hides an
// interface). `destroyed` turns true when the last reference goes.
class DataObjectDouble final : public ComObject<IGraphData, IGraphDataAccess, IConnectionPointContainer,
                                                IPersistFile, IRunnableObject> {
public:
    explicit DataObjectDouble(ComPtr<IGraphData> inner);

    HRESULT QueryInterface(const IID& iid, void** out) override;

    HRESULT GetTypeInfoCount(uint32_t* count) override;
    HRESULT GetTypeInfo(uint32_t index, LCID lcid, IUnknown** info) override;
    HRESULT GetIDsOfNames(const IID& riid, const char* const* names, uint32_t count, LCID lcid,
                          DISPID* ids) override;
    HRESULT Invoke(DISPID member, const IID& riid, LCID lcid, uint16_t flags, DispParams* params, Variant* result,
                   ExcepInfo* excepInfo, uint32_t* argErr) override;

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
    HRESULT GetSize(int32_t* xCount, int32_t* yCount) override;
    HRESULT SetGrid(const SafeArray& grid, const SafeArray& xScale, const SafeArray& yScale) override;
    HRESULT GetName(std::string* name) override;
    HRESULT PutName(const std::string& name) override;
    HRESULT GetValue(int32_t row, int32_t column, double* value) override;
    HRESULT PutValue(int32_t row, int32_t column, double value) override;

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

    HRESULT GetConnectionPointCount(uint32_t* count) override;
    HRESULT FindConnectionPoint(const IID& iid, IConnectionPoint** out) override;

    HRESULT GetClassID(CLSID* clsid) override;
    HRESULT IsDirty() override;
    HRESULT Load(const char* fileName, uint32_t mode) override;
    HRESULT Save(const char* fileName, bool remember) override;
    HRESULT SaveCompleted(const char* fileName) override;
    HRESULT GetCurFile(char* buffer, uint32_t size) override;

    HRESULT Run() override;

    CallLog log;
    std::map<IID, HRESULT> queryResults;
    std::shared_ptr<bool> destroyed = std::make_shared<bool>(false);

private:
    ~DataObjectDouble() override;

    template <class Call>
    HRESULT Forward(const char* operation, Call call);

    ComPtr<IGraphData> inner_;
    ComPtr<IGraphDataAccess> access_;
    ComPtr<IConnectionPointContainer> container_;
    ComPtr<IPersistFile> file_;
};

// A class factory for CLSID_GraphData that makes doubles, so that the
// graph object's own creation paths meet them.
class DataObjectDoubleFactory final : public ComObject<IClassFactory> {
public:
    explicit DataObjectDoubleFactory(std::function<ComPtr<DataObjectDouble>()> make) : make_(std::move(make)) {}
    HRESULT CreateInstance(IUnknown* outer, const IID& iid, void** out) override;
    HRESULT LockServer(bool) override { return S_OK; }

private:
    ~DataObjectDoubleFactory() override = default;
    std::function<ComPtr<DataObjectDouble>()> make_;
};

// Registers `factory` for CLSID_GraphData for the life of this object, then
// puts the real data object's class back.
class ScopedDataClass {
public:
    explicit ScopedDataClass(ComPtr<IClassFactory> factory);
    ~ScopedDataClass();
    ScopedDataClass(const ScopedDataClass&) = delete;
    ScopedDataClass& operator=(const ScopedDataClass&) = delete;
};

}  // namespace vexplot::test

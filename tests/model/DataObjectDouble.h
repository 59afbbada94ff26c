#pragma once
#include <functional>
#include <map>
#include <memory>

#include "CallLog.h"
#include "com/ClassFactory.h"
#include "com/ClassRegistry.h"
#include "com/ComObject.h"
#include "com/IClassFactory.h"
#include "com/IConnectionPoint.h"
#include "com/IPersist.h"
#include "dataobject/GraphDataClass.h"
#include "dataobject/GraphDataObject.h"
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
    explicit DataObjectDouble(ComPtr<IGraphData> inner)
        : inner_(std::move(inner)),
          access_(inner_.As<IGraphDataAccess>()),
          container_(inner_.As<IConnectionPointContainer>()),
          file_(inner_.As<IPersistFile>()) {}

    HRESULT QueryInterface(const IID& iid, void** out) override {
        const auto it = queryResults.find(iid);
        if (it == queryResults.end()) return ComObject::QueryInterface(iid, out);
        if (out) *out = nullptr;
        return it->second;
    }

    // IDispatch
    HRESULT GetTypeInfoCount(uint32_t* n) override {
        return Forward("GetTypeInfoCount", &IDispatch::GetTypeInfoCount, n);
    }
    HRESULT GetTypeInfo(uint32_t i, LCID lcid, IUnknown** info) override {
        return Forward("GetTypeInfo", &IDispatch::GetTypeInfo, i, lcid, info);
    }
    HRESULT GetIDsOfNames(const IID& riid, const char* const* names, uint32_t count, LCID lcid, DISPID* ids) override {
        return Forward("GetIDsOfNames", &IDispatch::GetIDsOfNames, riid, names, count, lcid, ids);
    }
    HRESULT Invoke(DISPID member, const IID& riid, LCID lcid, uint16_t flags, DispParams* params, Variant* result,
                   ExcepInfo* excepInfo, uint32_t* argErr) override {
        return Forward("Invoke", &IDispatch::Invoke, member, riid, lcid, flags, params, result, excepInfo, argErr);
    }

    // IGraphData
    HRESULT GetData(SafeArray* grid) override { return Forward("GetData", &IGraphData::GetData, grid); }
    HRESULT PutData(const SafeArray& grid) override { return Forward("PutData", &IGraphData::PutData, grid); }
    HRESULT GetXScale(SafeArray* s) override { return Forward("GetXScale", &IGraphData::GetXScale, s); }
    HRESULT PutXScale(const SafeArray& s) override { return Forward("PutXScale", &IGraphData::PutXScale, s); }
    HRESULT GetYScale(SafeArray* s) override { return Forward("GetYScale", &IGraphData::GetYScale, s); }
    HRESULT PutYScale(const SafeArray& s) override { return Forward("PutYScale", &IGraphData::PutYScale, s); }
    HRESULT GetXLabel(std::string* l) override { return Forward("GetXLabel", &IGraphData::GetXLabel, l); }
    HRESULT PutXLabel(const std::string& l) override { return Forward("PutXLabel", &IGraphData::PutXLabel, l); }
    HRESULT GetYLabel(std::string* l) override { return Forward("GetYLabel", &IGraphData::GetYLabel, l); }
    HRESULT PutYLabel(const std::string& l) override { return Forward("PutYLabel", &IGraphData::PutYLabel, l); }
    HRESULT GetZLabel(std::string* l) override { return Forward("GetZLabel", &IGraphData::GetZLabel, l); }
    HRESULT PutZLabel(const std::string& l) override { return Forward("PutZLabel", &IGraphData::PutZLabel, l); }
    int32_t GetState() override {
        log.Record("GetState");
        return inner_->GetState();
    }
    HRESULT GetSize(int32_t* x, int32_t* y) override { return Forward("GetSize", &IGraphData::GetSize, x, y); }
    HRESULT SetGrid(const SafeArray& grid, const SafeArray& x, const SafeArray& y) override {
        return Forward("SetGrid", &IGraphData::SetGrid, grid, x, y);
    }
    HRESULT GetName(std::string* n) override { return Forward("GetName", &IGraphData::GetName, n); }
    HRESULT PutName(const std::string& n) override { return Forward("PutName", &IGraphData::PutName, n); }
    HRESULT GetValue(int32_t r, int32_t c, double* v) override {
        return Forward("GetValue", &IGraphData::GetValue, r, c, v);
    }
    HRESULT PutValue(int32_t r, int32_t c, double v) override {
        return Forward("PutValue", &IGraphData::PutValue, r, c, v);
    }

    // IGraphDataAccess
    HRESULT GetZMin(double* z) override { return ForwardTo("GetZMin", access_, &Access::GetZMin, z); }
    HRESULT GetZMax(double* z) override { return ForwardTo("GetZMax", access_, &Access::GetZMax, z); }
    HRESULT GetData(Variant* g) override { return ForwardTo("AccessGetData", access_, &Access::GetData, g); }
    HRESULT GetXScale(Variant* s) override { return ForwardTo("AccessGetXScale", access_, &Access::GetXScale, s); }
    HRESULT GetYScale(Variant* s) override { return ForwardTo("AccessGetYScale", access_, &Access::GetYScale, s); }
    HRESULT IndicesToValues(int32_t ix, int32_t iy, double* x, double* y) override {
        return ForwardTo("IndicesToValues", access_, &Access::IndicesToValues, ix, iy, x, y);
    }
    HRESULT GetValueAt(double x, double y, double* z) override {
        return ForwardTo("GetValueAt", access_, &Access::GetValueAt, x, y, z);
    }
    HRESULT GetMissingCount(int64_t* n) override {
        return ForwardTo("GetMissingCount", access_, &Access::GetMissingCount, n);
    }
    HRESULT GetGridPointer(const double** values, int32_t* x, int32_t* y) override {
        return ForwardTo("GetGridPointer", access_, &Access::GetGridPointer, values, x, y);
    }
    HRESULT ValuesToIndices(double x, double y, int32_t* ix, int32_t* iy) override {
        return ForwardTo("ValuesToIndices", access_, &Access::ValuesToIndices, x, y, ix, iy);
    }

    // IConnectionPointContainer
    HRESULT GetConnectionPointCount(uint32_t* n) override {
        return ForwardTo("GetConnectionPointCount", container_, &Points::GetConnectionPointCount, n);
    }
    HRESULT FindConnectionPoint(const IID& iid, IConnectionPoint** out) override {
        return ForwardTo("FindConnectionPoint", container_, &Points::FindConnectionPoint, iid, out);
    }

    // IPersistFile
    HRESULT GetClassID(CLSID* id) override { return ForwardTo("GetClassID", file_, &File::GetClassID, id); }
    HRESULT IsDirty() override { return ForwardTo("IsDirty", file_, &File::IsDirty); }
    HRESULT Load(const char* name, uint32_t mode) override { return ForwardTo("Load", file_, &File::Load, name, mode); }
    HRESULT Save(const char* name, bool remember) override {
        return ForwardTo("Save", file_, &File::Save, name, remember);
    }
    HRESULT SaveCompleted(const char* name) override {
        return ForwardTo("SaveCompleted", file_, &File::SaveCompleted, name);
    }
    HRESULT GetCurFile(char* buffer, uint32_t size) override {
        return ForwardTo("GetCurFile", file_, &File::GetCurFile, buffer, size);
    }

    // IRunnableObject
    HRESULT Run() override { return log.Record("Run"); }

    CallLog log;
    std::map<IID, HRESULT> queryResults;
    std::shared_ptr<bool> destroyed = std::make_shared<bool>(false);

private:
    using Access = IGraphDataAccess;
    using Points = IConnectionPointContainer;
    using File = IPersistFile;

    ~DataObjectDouble() override { *destroyed = true; }

    // Records `operation`, then answers the failure injected for it or calls
    // `method` of `target` (Forward: of the inner object's main interface).
    template <class T, class M, class... A>
    HRESULT ForwardTo(const char* operation, const ComPtr<T>& target, M method, A&&... args) {
        const HRESULT hr = log.Record(operation);
        return FAILED(hr) ? hr : (target.Get()->*method)(std::forward<A>(args)...);
    }
    template <class M, class... A>
    HRESULT Forward(const char* operation, M method, A&&... args) {
        return ForwardTo(operation, inner_, method, std::forward<A>(args)...);
    }

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
    HRESULT CreateInstance(IUnknown* outer, const IID& iid, void** out) override {
        return outer ? CLASS_E_NOAGGREGATION : make_()->QueryInterface(iid, out);
    }
    HRESULT LockServer(bool) override { return S_OK; }

private:
    ~DataObjectDoubleFactory() override = default;
    std::function<ComPtr<DataObjectDouble>()> make_;
};

// Registers `factory` for CLSID_GraphData for the life of this object, then
// puts the real data object's class back.
class ScopedDataClass {
public:
    explicit ScopedDataClass(ComPtr<IClassFactory> factory) {
        ClassRegistry::Instance().Register(CLSID_GraphData, std::move(factory), CLSCTX_INPROC);
    }
    ~ScopedDataClass() {
        ClassRegistry::Instance().Register(CLSID_GraphData, MakeComObject<ClassFactory<GraphDataObject>>(),
                                           CLSCTX_INPROC);
    }
    ScopedDataClass(const ScopedDataClass&) = delete;
    ScopedDataClass& operator=(const ScopedDataClass&) = delete;
};

}  // namespace vexplot::test

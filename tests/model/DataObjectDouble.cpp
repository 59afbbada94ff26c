#include "DataObjectDouble.h"

#include "com/ClassFactory.h"
#include "com/ClassRegistry.h"
#include "dataobject/GraphDataObject.h"

namespace vexplot::test {

DataObjectDouble::DataObjectDouble(ComPtr<IGraphData> inner)
    : inner_(std::move(inner)),
      access_(inner_.As<IGraphDataAccess>()),
      container_(inner_.As<IConnectionPointContainer>()),
      file_(inner_.As<IPersistFile>()) {}

DataObjectDouble::~DataObjectDouble() { *destroyed = true; }

HRESULT DataObjectDouble::QueryInterface(const IID& iid, void** out) {
    const auto it = queryResults.find(iid);
    if (it == queryResults.end()) return ComObject::QueryInterface(iid, out);
    if (out) *out = nullptr;
    return it->second;
}

template <class Call>
HRESULT DataObjectDouble::Forward(const char* operation, Call call) {
    const HRESULT hr = log.Record(operation);
    return FAILED(hr) ? hr : call();
}

HRESULT DataObjectDouble::GetTypeInfoCount(uint32_t* count) {
    return Forward("GetTypeInfoCount", [&] { return inner_->GetTypeInfoCount(count); });
}
HRESULT DataObjectDouble::GetTypeInfo(uint32_t index, LCID lcid, IUnknown** info) {
    return Forward("GetTypeInfo", [&] { return inner_->GetTypeInfo(index, lcid, info); });
}
HRESULT DataObjectDouble::GetIDsOfNames(const IID& riid, const char* const* names, uint32_t count, LCID lcid,
                                        DISPID* ids) {
    return Forward("GetIDsOfNames", [&] { return inner_->GetIDsOfNames(riid, names, count, lcid, ids); });
}
HRESULT DataObjectDouble::Invoke(DISPID member, const IID& riid, LCID lcid, uint16_t flags, DispParams* params,
                                 Variant* result, ExcepInfo* excepInfo, uint32_t* argErr) {
    return Forward("Invoke",
                   [&] { return inner_->Invoke(member, riid, lcid, flags, params, result, excepInfo, argErr); });
}

HRESULT DataObjectDouble::GetData(SafeArray* grid) {
    return Forward("GetData", [&] { return inner_->GetData(grid); });
}
HRESULT DataObjectDouble::PutData(const SafeArray& grid) {
    return Forward("PutData", [&] { return inner_->PutData(grid); });
}
HRESULT DataObjectDouble::GetXScale(SafeArray* scale) {
    return Forward("GetXScale", [&] { return inner_->GetXScale(scale); });
}
HRESULT DataObjectDouble::PutXScale(const SafeArray& scale) {
    return Forward("PutXScale", [&] { return inner_->PutXScale(scale); });
}
HRESULT DataObjectDouble::GetYScale(SafeArray* scale) {
    return Forward("GetYScale", [&] { return inner_->GetYScale(scale); });
}
HRESULT DataObjectDouble::PutYScale(const SafeArray& scale) {
    return Forward("PutYScale", [&] { return inner_->PutYScale(scale); });
}
HRESULT DataObjectDouble::GetXLabel(std::string* label) {
    return Forward("GetXLabel", [&] { return inner_->GetXLabel(label); });
}
HRESULT DataObjectDouble::PutXLabel(const std::string& label) {
    return Forward("PutXLabel", [&] { return inner_->PutXLabel(label); });
}
HRESULT DataObjectDouble::GetYLabel(std::string* label) {
    return Forward("GetYLabel", [&] { return inner_->GetYLabel(label); });
}
HRESULT DataObjectDouble::PutYLabel(const std::string& label) {
    return Forward("PutYLabel", [&] { return inner_->PutYLabel(label); });
}
HRESULT DataObjectDouble::GetZLabel(std::string* label) {
    return Forward("GetZLabel", [&] { return inner_->GetZLabel(label); });
}
HRESULT DataObjectDouble::PutZLabel(const std::string& label) {
    return Forward("PutZLabel", [&] { return inner_->PutZLabel(label); });
}
int32_t DataObjectDouble::GetState() {
    log.Record("GetState");
    return inner_->GetState();
}
HRESULT DataObjectDouble::GetSize(int32_t* xCount, int32_t* yCount) {
    return Forward("GetSize", [&] { return inner_->GetSize(xCount, yCount); });
}
HRESULT DataObjectDouble::SetGrid(const SafeArray& grid, const SafeArray& xScale, const SafeArray& yScale) {
    return Forward("SetGrid", [&] { return inner_->SetGrid(grid, xScale, yScale); });
}
HRESULT DataObjectDouble::GetName(std::string* name) {
    return Forward("GetName", [&] { return inner_->GetName(name); });
}
HRESULT DataObjectDouble::PutName(const std::string& name) {
    return Forward("PutName", [&] { return inner_->PutName(name); });
}
HRESULT DataObjectDouble::GetValue(int32_t row, int32_t column, double* value) {
    return Forward("GetValue", [&] { return inner_->GetValue(row, column, value); });
}
HRESULT DataObjectDouble::PutValue(int32_t row, int32_t column, double value) {
    return Forward("PutValue", [&] { return inner_->PutValue(row, column, value); });
}

HRESULT DataObjectDouble::GetZMin(double* zMin) {
    return Forward("GetZMin", [&] { return access_->GetZMin(zMin); });
}
HRESULT DataObjectDouble::GetZMax(double* zMax) {
    return Forward("GetZMax", [&] { return access_->GetZMax(zMax); });
}
HRESULT DataObjectDouble::GetData(Variant* grid) {
    return Forward("AccessGetData", [&] { return access_->GetData(grid); });
}
HRESULT DataObjectDouble::GetXScale(Variant* scale) {
    return Forward("AccessGetXScale", [&] { return access_->GetXScale(scale); });
}
HRESULT DataObjectDouble::GetYScale(Variant* scale) {
    return Forward("AccessGetYScale", [&] { return access_->GetYScale(scale); });
}
HRESULT DataObjectDouble::IndicesToValues(int32_t xIndex, int32_t yIndex, double* x, double* y) {
    return Forward("IndicesToValues", [&] { return access_->IndicesToValues(xIndex, yIndex, x, y); });
}
HRESULT DataObjectDouble::GetValueAt(double x, double y, double* z) {
    return Forward("GetValueAt", [&] { return access_->GetValueAt(x, y, z); });
}
HRESULT DataObjectDouble::GetMissingCount(int64_t* count) {
    return Forward("GetMissingCount", [&] { return access_->GetMissingCount(count); });
}
HRESULT DataObjectDouble::GetGridPointer(const double** values, int32_t* xCount, int32_t* yCount) {
    return Forward("GetGridPointer", [&] { return access_->GetGridPointer(values, xCount, yCount); });
}
HRESULT DataObjectDouble::ValuesToIndices(double x, double y, int32_t* xIndex, int32_t* yIndex) {
    return Forward("ValuesToIndices", [&] { return access_->ValuesToIndices(x, y, xIndex, yIndex); });
}

HRESULT DataObjectDouble::GetConnectionPointCount(uint32_t* count) {
    return Forward("GetConnectionPointCount", [&] { return container_->GetConnectionPointCount(count); });
}
HRESULT DataObjectDouble::FindConnectionPoint(const IID& iid, IConnectionPoint** out) {
    return Forward("FindConnectionPoint", [&] { return container_->FindConnectionPoint(iid, out); });
}

HRESULT DataObjectDouble::GetClassID(CLSID* clsid) {
    return Forward("GetClassID", [&] { return file_->GetClassID(clsid); });
}
HRESULT DataObjectDouble::IsDirty() {
    return Forward("IsDirty", [&] { return file_->IsDirty(); });
}
HRESULT DataObjectDouble::Load(const char* fileName, uint32_t mode) {
    return Forward("Load", [&] { return file_->Load(fileName, mode); });
}
HRESULT DataObjectDouble::Save(const char* fileName, bool remember) {
    return Forward("Save", [&] { return file_->Save(fileName, remember); });
}
HRESULT DataObjectDouble::SaveCompleted(const char* fileName) {
    return Forward("SaveCompleted", [&] { return file_->SaveCompleted(fileName); });
}
HRESULT DataObjectDouble::GetCurFile(char* buffer, uint32_t size) {
    return Forward("GetCurFile", [&] { return file_->GetCurFile(buffer, size); });
}

HRESULT DataObjectDouble::Run() {
    return Forward("Run", [] { return S_OK; });
}

HRESULT DataObjectDoubleFactory::CreateInstance(IUnknown* outer, const IID& iid, void** out) {
    if (outer) return CLASS_E_NOAGGREGATION;
    return make_()->QueryInterface(iid, out);
}

ScopedDataClass::ScopedDataClass(ComPtr<IClassFactory> factory) {
    ClassRegistry::Instance().Register(CLSID_GraphData, std::move(factory), CLSCTX_INPROC);
}

ScopedDataClass::~ScopedDataClass() {
    ClassRegistry::Instance().Register(CLSID_GraphData, MakeComObject<ClassFactory<GraphDataObject>>(),
                                       CLSCTX_INPROC);
}

}  // namespace vexplot::test

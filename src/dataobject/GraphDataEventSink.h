#pragma once
#include <cstdint>

#include "com/ComObject.h"
#include "com/IDispatch.h"

namespace vexplot {

// A sink for the data object's notifications: advise an instance on the
// IGraphDataEvents connection point and override the three handlers.
// Invoke maps the dispids to the handlers; unknown dispids answer
// DISP_E_MEMBERNOTFOUND.
class GraphDataEventSink : public ComObject<IDispatch> {
public:
    HRESULT GetTypeInfoCount(uint32_t* count) override;
    HRESULT GetTypeInfo(uint32_t index, LCID lcid, IUnknown** info) override;
    HRESULT GetIDsOfNames(const IID& riid, const char* const* names, uint32_t count, LCID lcid,
                          DISPID* ids) override;
    HRESULT Invoke(DISPID member, const IID& riid, LCID lcid, uint16_t flags, DispParams* params, Variant* result,
                   ExcepInfo* excepInfo, uint32_t* argErr) override;

protected:
    ~GraphDataEventSink() override = default;

    virtual void DataChanged() = 0;
    virtual void TicksChanged(int32_t which) = 0;
    virtual void LabelsChanged() = 0;
};

}  // namespace vexplot

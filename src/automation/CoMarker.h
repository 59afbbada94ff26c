#pragma once
#include "automation/CoAnnotation.h"
#include "automation/DispatchTable.h"

namespace vexplot {

class CGD_Marker;

// The automation object of one marker (IMarker), handed out by the markers'
// collection; see Marker's rows in CoMarker.cpp for the members and their dispids.
class CoMarker final : public CoAnnotation {
public:
    explicit CoMarker(CGD_Marker* marker);
    // A new wrapper of `marker`.
    static ComPtr<CoAnnotation> Make(CGD_Marker* marker);

    // The marker, or null once detached.
    CGD_Marker* Marker() const;
    static const BasicDispatchTable<CoMarker>& Table();

    HRESULT GetIDsOfNames(const IID& riid, const char* const* names, uint32_t count, LCID lcid,
                          DISPID* ids) override;
    HRESULT Invoke(DISPID member, const IID& riid, LCID lcid, uint16_t flags, DispParams* params, Variant* result,
                   ExcepInfo* excepInfo, uint32_t* argErr) override;

private:
    ~CoMarker() override = default;
};

}  // namespace vexplot

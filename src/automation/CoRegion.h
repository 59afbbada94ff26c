#pragma once
#include "automation/CoAnnotation.h"
#include "automation/DispatchTable.h"

namespace vexplot {

class CGD_Region;

// The automation object of one region (IRegion), handed out by the regions'
// collection; see Region's rows in CoRegion.cpp for the members and their dispids.
class CoRegion final : public CoAnnotation {
public:
    explicit CoRegion(CGD_Region* region);
    // A new wrapper of `region`.
    static ComPtr<CoAnnotation> Make(CGD_Region* region);

    // The region, or null once detached.
    CGD_Region* Region() const;
    static const BasicDispatchTable<CoRegion>& Table();

    HRESULT GetIDsOfNames(const IID& riid, const char* const* names, uint32_t count, LCID lcid,
                          DISPID* ids) override;
    HRESULT Invoke(DISPID member, const IID& riid, LCID lcid, uint16_t flags, DispParams* params, Variant* result,
                   ExcepInfo* excepInfo, uint32_t* argErr) override;

private:
    ~CoRegion() override = default;
};

}  // namespace vexplot

#pragma once
#include "automation/CoAnnotation.h"
#include "automation/DispatchTable.h"

namespace vexplot {

class CGD_Label;

// The automation object of one label (ILabel), handed out by the labels'
// collection; see Label's rows in CoLabel.cpp for the members and their dispids.
class CoLabel final : public CoAnnotation {
public:
    explicit CoLabel(CGD_Label* label);
    // A new wrapper of `label`.
    static ComPtr<CoAnnotation> Make(CGD_Label* label);

    // The label, or null once detached.
    CGD_Label* Label() const;
    static const BasicDispatchTable<CoLabel>& Table();

    HRESULT GetIDsOfNames(const IID& riid, const char* const* names, uint32_t count, LCID lcid,
                          DISPID* ids) override;
    HRESULT Invoke(DISPID member, const IID& riid, LCID lcid, uint16_t flags, DispParams* params, Variant* result,
                   ExcepInfo* excepInfo, uint32_t* argErr) override;

private:
    ~CoLabel() override = default;
};

}  // namespace vexplot

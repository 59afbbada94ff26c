#pragma once
#include <functional>
#include <utility>

#include "com/ComObject.h"
#include "com/IDispatch.h"
#include "com/Variant.h"

namespace vexplot {

// A dispatch sink for an object's outgoing (event) interface, as clients
// advise on a connection point: every event the point fires arrives as Invoke and is handed to
// `handler` with the event's dispid and its arguments as fired (reversed,
// by-reference arguments pointing at the control's storage).
class EventSink final : public ComObject<IDispatch> {
public:
    using Handler = std::function<void(DISPID, DispParams&)>;

    explicit EventSink(Handler handler) : handler_(std::move(handler)) {}

    // Drops the handler: events fired later are accepted and ignored, so a
    // connection point that still holds the sink cannot reach a dead owner.
    void Detach() { handler_ = nullptr; }

    HRESULT GetTypeInfoCount(uint32_t* count) override {
        if (!count) return E_POINTER;
        *count = 0;
        return S_OK;
    }
    HRESULT GetTypeInfo(uint32_t, LCID, IUnknown** info) override {
        if (info) *info = nullptr;
        return E_NOTIMPL;
    }
    HRESULT GetIDsOfNames(const IID&, const char* const*, uint32_t, LCID, DISPID*) override {
        return DISP_E_UNKNOWNNAME;
    }
    HRESULT Invoke(DISPID member, const IID&, LCID, uint16_t, DispParams* params, Variant*, ExcepInfo*,
                   uint32_t*) override {
        DispParams none;
        if (handler_) handler_(member, params ? *params : none);
        return S_OK;
    }

private:
    Handler handler_;
};

}  // namespace vexplot

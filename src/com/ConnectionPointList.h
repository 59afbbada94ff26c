#pragma once
#include <vector>

#include "com/ConnectionPoint.h"

namespace vexplot {

// The connection points of one object, for implementing
// IConnectionPointContainer by forwarding to it.
class ConnectionPointList {
public:
    explicit ConnectionPointList(IConnectionPointContainer* owner) : owner_(owner) {}
    ~ConnectionPointList() {
        for (auto& p : points_) p->Disconnect();
    }
    ConnectionPointList(const ConnectionPointList&) = delete;
    ConnectionPointList& operator=(const ConnectionPointList&) = delete;

    ConnectionPoint& Add(const IID& iid) {
        points_.push_back(MakeComObject<ConnectionPoint>(owner_, iid));
        return *points_.back();
    }
    ConnectionPoint* Get(const IID& iid) const {
        for (const auto& p : points_)
            if (p->Iid() == iid) return p.Get();
        return nullptr;
    }

    HRESULT Count(uint32_t* count) const {
        if (!count) return E_POINTER;
        *count = static_cast<uint32_t>(points_.size());
        return S_OK;
    }
    HRESULT Find(const IID& iid, IConnectionPoint** out) const {
        if (!out) return E_POINTER;
        *out = Get(iid);
        if (!*out) return CONNECT_E_NOCONNECTION;
        (*out)->AddRef();
        return S_OK;
    }

private:
    IConnectionPointContainer* owner_;
    std::vector<ComPtr<ConnectionPoint>> points_;
};

}  // namespace vexplot

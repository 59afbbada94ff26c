#include <gtest/gtest.h>

#include <vector>

#include "com/ComObject.h"
#include "com/ConnectionPoint.h"
#include "com/ConnectionPointList.h"
#include "com/Variant.h"

namespace vexplot {
namespace {

constexpr IID kEvents = GUID::FromLiteral("{11111111-2222-3333-4444-555555555555}");

// An event source with one outgoing dispatch interface.
class Source final : public ComObject<IConnectionPointContainer> {
public:
    Source() { points_.Add(kEvents); }
    HRESULT GetConnectionPointCount(uint32_t* count) override { return points_.Count(count); }
    HRESULT FindConnectionPoint(const IID& iid, IConnectionPoint** out) override { return points_.Find(iid, out); }
    void Fire(DISPID id, std::vector<Variant> args) { points_.Get(kEvents)->FireDispatch(id, std::move(args)); }

private:
    ConnectionPointList points_{this};
};

// Records every call; optionally unadvises itself on the first one.
class Sink final : public ComObject<IDispatch> {
public:
    struct Call {
        DISPID id;
        std::vector<double> args;  // natural order
    };
    std::vector<Call> calls;
    IUnknown* unadviseFrom = nullptr;
    uint32_t cookie = 0;

    HRESULT GetTypeInfoCount(uint32_t* n) override { *n = 0; return S_OK; }
    HRESULT GetTypeInfo(uint32_t, LCID, IUnknown**) override { return E_NOTIMPL; }
    HRESULT GetIDsOfNames(const IID&, const char* const*, uint32_t, LCID, DISPID*) override { return E_NOTIMPL; }
    HRESULT Invoke(DISPID id, const IID&, LCID, uint16_t, DispParams* p, Variant*, ExcepInfo*, uint32_t*) override {
        Call c{id, {}};
        for (uint32_t i = p->argCount; i-- > 0;) c.args.push_back(p->args[i].R8());
        calls.push_back(c);
        if (unadviseFrom) ConnectionUnadvise(std::exchange(unadviseFrom, nullptr), kEvents, cookie);
        return S_OK;
    }
};

uint32_t RefCount(IUnknown* p) {
    p->AddRef();
    return p->Release();
}

// Advising also keeps the sink alive until it is unadvised.
TEST(ConnectionPoint, AdvisedSinksReceiveEventsWithArgumentsInOrder) {
    auto source = MakeComObject<Source>();
    auto a = MakeComObject<Sink>(), b = MakeComObject<Sink>();
    const uint32_t before = RefCount(a.Get());
    uint32_t ca = 0, cb = 0;
    ASSERT_EQ(ConnectionAdvise(source.Get(), kEvents, a.Get(), &ca), S_OK);
    EXPECT_GT(RefCount(a.Get()), before);
    ASSERT_EQ(ConnectionAdvise(source.Get(), kEvents, b.Get(), &cb), S_OK);
    EXPECT_NE(ca, cb);
    source->Fire(7, {Variant(1.0), Variant(2.0)});
    ASSERT_EQ(a->calls.size(), 1u);
    EXPECT_EQ(a->calls[0].id, 7);
    EXPECT_EQ(a->calls[0].args, (std::vector<double>{1.0, 2.0}));
    EXPECT_EQ(b->calls.size(), 1u);

    ASSERT_EQ(ConnectionUnadvise(source.Get(), kEvents, ca), S_OK);
    EXPECT_EQ(RefCount(a.Get()), before);
    source->Fire(8, {});
    EXPECT_EQ(a->calls.size(), 1u);
    EXPECT_EQ(b->calls.size(), 2u);
    EXPECT_EQ(ConnectionUnadvise(source.Get(), kEvents, ca), CONNECT_E_NOCONNECTION);
}

TEST(ConnectionPoint, SinkMayUnadviseWhileBeingCalled) {
    auto source = MakeComObject<Source>();
    auto a = MakeComObject<Sink>(), b = MakeComObject<Sink>();
    uint32_t cb = 0;
    ASSERT_EQ(ConnectionAdvise(source.Get(), kEvents, a.Get(), &a->cookie), S_OK);
    ASSERT_EQ(ConnectionAdvise(source.Get(), kEvents, b.Get(), &cb), S_OK);
    a->unadviseFrom = source.Get();
    source->Fire(1, {});
    source->Fire(2, {});
    EXPECT_EQ(a->calls.size(), 1u);
    EXPECT_EQ(b->calls.size(), 2u);
}

TEST(ConnectionPoint, UnknownInterfaceAndNonDispatchSinksAreRefused) {
    auto source = MakeComObject<Source>();
    auto sink = MakeComObject<Sink>();
    uint32_t cookie = 0;
    EXPECT_EQ(ConnectionAdvise(source.Get(), IID_IDispatch, sink.Get(), &cookie), CONNECT_E_NOCONNECTION);
    auto notASink = MakeComObject<Source>();
    EXPECT_EQ(ConnectionAdvise(source.Get(), kEvents, notASink.Get(), &cookie), CONNECT_E_CANNOTCONNECT);
    EXPECT_EQ(cookie, 0u);
}

TEST(ConnectionPoint, PointOutlivingItsContainerAnswersUnexpected) {
    ComPtr<IConnectionPoint> point;
    {
        auto source = MakeComObject<Source>();
        ASSERT_EQ(source->FindConnectionPoint(kEvents, point.ReleaseAndGetAddressOf()), S_OK);
        IConnectionPointContainer* back = nullptr;
        ASSERT_EQ(point->GetConnectionPointContainer(&back), S_OK);
        EXPECT_EQ(back, source.Get());
        back->Release();
    }
    IConnectionPointContainer* back = nullptr;
    EXPECT_EQ(point->GetConnectionPointContainer(&back), E_UNEXPECTED);
}

}  // namespace
}  // namespace vexplot

#pragma once
#include <gtest/gtest.h>

#include <cstdlib>
#include <functional>
#include <memory>
#include <vector>

#include "CallLog.h"
#include "RecordingEngine.h"
#include "RecordingViewHost.h"
#include "com/ComError.h"
#include "dataobject/GraphDataClass.h"
#include "dataobject/GraphDataFactory.h"
#include "model/CGD_GraphObject.h"
#include "model/CGD_GraphObjectList.h"
#include "support/Caught.h"
#include "support/Grid.h"

namespace vexplot::test {

// The test grids' cell (ix, iy).
inline double Cell(int ix, int iy) { return ix * 1000.0 + iy; }

// All cells of an xCount x yCount grid in grid order (X index slower).
inline std::vector<double> Cells(int xCount, int yCount) {
    const SafeArray grid = MakeGrid(static_cast<uint32_t>(xCount), static_cast<uint32_t>(yCount), Cell);
    return {grid.Values().begin(), grid.Values().end()};
}

// A graph object list owned by a recording host with a recording engine,
// and data objects holding Cell values.
class GraphFixture : public ::testing::Test {
protected:
    void SetUp() override {
        // An unregistered class makes the class registry look for a plug-in
        // in the settings store: never the user's own.
        setenv("VEXPLOT_REGISTRY", ":memory:", 1);
        RegisterGraphDataClass();
        host->list = &list;
        host->engine = engine.Get();
    }

    static ComPtr<IGraphData> MakeData(int xCount, int yCount, std::vector<double> xScale = {},
                                       std::vector<double> yScale = {}) {
        return CreateGraphData(Cells(xCount, yCount), xCount, yCount, xScale, yScale, "time", "depth", "level");
    }

    // A new active graph object for `data` (full range kept unless told).
    CGD_GraphObject& Show(IUnknown* data, bool keepFullRange = true) {
        CGD_GraphObject& graph = list.AddDataObject(data, host.Get(), false, keepFullRange);
        log->calls.clear();
        return graph;
    }

    std::shared_ptr<CallLog> log = std::make_shared<CallLog>();
    ComPtr<RecordingEngine> engine = MakeComObject<RecordingEngine>(log);
    ComPtr<RecordingViewHost> host = MakeComObject<RecordingViewHost>(log);
    CGD_GraphObjectList list;  // last: its graph objects go before host and engine
};

// Runs `call` and checks that it raises ComError with `code` on `iid`.
inline void ExpectComError(const std::function<void()>& call, HRESULT code, const IID& iid) {
    const auto e = Caught<ComError>(call);
    ASSERT_TRUE(e) << "expected " << HResultText(code);
    EXPECT_EQ(HResultText(e->Code()), HResultText(code));
    EXPECT_EQ(e->Interface().ToString(), iid.ToString());
}

}  // namespace vexplot::test

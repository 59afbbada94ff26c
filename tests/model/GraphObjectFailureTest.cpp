#include <gtest/gtest.h>

#include <functional>
#include <string>
#include <vector>

#include "DataObjectDouble.h"
#include "GraphFixture.h"
#include "com/ClassRegistry.h"
#include "com/IConnectionPoint.h"
#include "dataobject/GraphDataObject.h"
#include "dataobject/IGraphDataEvents.h"

namespace vexplot::test {
namespace {

class GraphObjectFailureTest : public GraphFixture {
protected:
    // Around a data object made directly, not through the class registry,
    // which may be serving doubles.
    static ComPtr<DataObjectDouble> MakeDouble(uint32_t xCount = 4, uint32_t yCount = 3) {
        ComPtr<IGraphData> inner(MakeComObject<GraphDataObject>());
        EXPECT_EQ(inner->PutData(MakeGrid(xCount, yCount, Cell)), S_OK);  // scales 0, 1, 2, ...
        return MakeComObject<DataObjectDouble>(inner);
    }

    // A saved 4 x 3 grid for the file paths.
    static std::string SavedGridFile() {
        const std::string path = testing::TempDir() + "model_tests_grid.3do";
        auto file = MakeData(4, 3).As<IPersistFile>();
        EXPECT_EQ(file->Save(path.c_str(), false), S_OK);
        return path;
    }

    static uint32_t References(IUnknown* object) {
        object->AddRef();
        return object->Release();
    }

    static uint32_t Connections(IGraphData* data) {
        ComPtr<IConnectionPoint> point;
        EXPECT_EQ(ComPtr<IGraphData>(data).As<IConnectionPointContainer>()->FindConnectionPoint(IID_IGraphDataEvents,
                                                                            point.ReleaseAndGetAddressOf()),
                  S_OK);
        uint32_t count = 0;
        point->GetConnectionCount(&count);
        return count;
    }
};

using Configure = std::function<void(DataObjectDouble&)>;

struct FailureCase {
    const char* name;
    Configure configure;
    HRESULT code;
    IID iid;
};

TEST_F(GraphObjectFailureTest, CreateFromFileRaisesTheFailingStepsCodeAndInterface) {
    const std::string path = SavedGridFile();
    const FailureCase cases[] = {
        {"run", [](auto& d) { d.log.failures["Run"] = E_FAIL; }, E_FAIL, IRunnableObject::kIid},
        {"main interface", [](auto& d) { d.queryResults[IGraphData::kIid] = E_UNEXPECTED; }, E_UNEXPECTED,
         IGraphData::kIid},
        {"no file interface", [](auto& d) { d.queryResults[IPersistFile::kIid] = E_NOINTERFACE; }, E_POINTER,
         IPersistFile::kIid},
        {"file interface refused", [](auto& d) { d.queryResults[IPersistFile::kIid] = E_ACCESSDENIED; },
         E_ACCESSDENIED, IPersistFile::kIid},
        {"load", [](auto& d) { d.log.failures["Load"] = STG_E_FILENOTFOUND; }, STG_E_FILENOTFOUND,
         IPersistFile::kIid},
        {"access interface refused", [](auto& d) { d.queryResults[IGraphDataAccess::kIid] = E_UNEXPECTED; },
         E_UNEXPECTED, IGraphDataAccess::kIid},
        {"sizes", [](auto& d) { d.log.failures["GetXScale"] = E_FAIL; }, E_FAIL, IGraphData::kIid},
    };
    for (const FailureCase& c : cases) {
        SCOPED_TRACE(c.name);
        ScopedDataClass scope(MakeComObject<DataObjectDoubleFactory>([&] {
            auto d = MakeDouble();
            c.configure(*d);
            return d;
        }));
        CGD_GraphObject graph;
        ExpectComError([&] { graph.CreateFromFile(path, host.Get(), true); }, c.code, c.iid);
        EXPECT_EQ(host->waitDepth, 0);
    }

    ScopedDataClass scope(MakeComObject<DataObjectDoubleFactory>([] { return MakeDouble(); }));
    ClassRegistry::Instance().Revoke(CLSID_GraphData);
    CGD_GraphObject graph;
    ExpectComError([&] { graph.CreateFromFile(path, host.Get(), true); }, REGDB_E_CLASSNOTREG, IID_IUnknown);
}

TEST_F(GraphObjectFailureTest, CreateFromFileLoadsTheFileIntoANewDataObject) {
    host->backgroundColor = 0x00123456;
    CGD_GraphObject graph;
    EXPECT_TRUE(graph.CreateFromFile(SavedGridFile(), host.Get(), false));
    EXPECT_EQ(graph.ContrastColor(), 0x00EDCBA9u);  // the complement, low 24 bits
    EXPECT_EQ(graph.GetGeometry().xCount, 4);
    EXPECT_EQ(graph.GetGeometry().shownYCount, 3);
    EXPECT_EQ(graph.GetValue(3, 2), Cell(3, 2));
}

TEST_F(GraphObjectFailureTest, AttachRaisesTheFailingStepsCodeAndInterface) {
    const FailureCase cases[] = {
        {"no main interface", [](auto& d) { d.queryResults[IGraphData::kIid] = E_NOINTERFACE; }, E_POINTER,
         IGraphData::kIid},
        {"shown range", [](auto& d) { d.log.failures["ValuesToIndices"] = E_FAIL; }, E_FAIL,
         IGraphDataAccess::kIid},
        {"preview", [](auto& d) { d.log.failures["AccessGetData"] = E_OUTOFMEMORY; }, E_OUTOFMEMORY,
         IGraphDataAccess::kIid},
    };
    for (const FailureCase& c : cases) {
        SCOPED_TRACE(c.name);
        auto data = MakeDouble(120, 40);
        c.configure(*data);
        CGD_GraphObject graph;
        ExpectComError([&] { graph.Attach(data->Identity(), host.Get(), false); }, c.code, c.iid);
    }
    CGD_GraphObject graph;
    ExpectComError([&] { graph.Attach(nullptr, host.Get(), true); }, E_POINTER, IGraphData::kIid);
    log->failures["engine.GetView3D"] = E_FAIL;
    ExpectComError([&] { graph.Attach(MakeData(2, 2).Get(), host.Get(), true); }, E_FAIL, IGraphEngine::kIid);
}

TEST_F(GraphObjectFailureTest, UpdateEngineRaisesTheFailingCallsCodeAndInterface) {
    struct Case {
        const char* failing;  // an engine call or a data-object operation
        bool engineCall;
        IID iid;
    };
    const Case cases[] = {
        {"device.SetGrid", true, IGraphDevice2D::kIid},
        {"view.Refresh", true, IGraphView3D::kIid},
        {"view.SetGrid", true, IGraphView3D::kIid},
        {"view.SetDataVisible", true, IGraphView3D::kIid},
        {"AccessGetYScale", false, IGraphDataAccess::kIid},
        {"GetZMax", false, IGraphDataAccess::kIid},
        {"GetZLabel", false, IGraphData::kIid},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.failing);
        auto data = MakeDouble();
        CGD_GraphObject& graph = Show(data->Identity());
        log->failures.clear();
        (c.engineCall ? log->failures : data->log.failures)[c.failing] = E_ACCESSDENIED;
        ExpectComError([&] { graph.UpdateEngine(); }, E_ACCESSDENIED, c.iid);
    }
}

TEST_F(GraphObjectFailureTest, UpdateEngineReadsZMaximumBeforeMinimumForEachSurface) {
    auto data = MakeDouble();
    CGD_GraphObject& graph = Show(data->Identity());
    data->log.calls.clear();
    graph.UpdateEngine();
    std::vector<std::string> extent;
    for (const std::string& name : data->log.Names())
        if (name == "GetZMax" || name == "GetZMin") extent.push_back(name);
    EXPECT_EQ(extent, (std::vector<std::string>{"GetZMax", "GetZMin", "GetZMax", "GetZMin"}));
}

TEST_F(GraphObjectFailureTest, WithoutAccessInterfaceBindingWorksButEveryAccessRaises) {
    auto data = MakeDouble();
    data->queryResults[IGraphDataAccess::kIid] = E_NOINTERFACE;
    CGD_GraphObject& graph = Show(data->Identity(), true);
    EXPECT_EQ(graph.Access(), nullptr);

    const std::pair<const char*, std::function<void()>> accesses[] = {
        {"UpdateEngine", [&] { graph.UpdateEngine(); }},
        {"ZMinClamp", [&] { list.ZMinClamp(); }},
        {"ZMaxClamp", [&] { graph.ZMaxClamp(); }},
        {"GetRows", [&] { graph.GetRows(0, 0, 2, 2); }},
        {"SetShownRange", [&] { graph.SetShownRange(0, 1, 0, 1); }},
        {"OpenDataEditor", [&] { graph.OpenDataEditor(nullptr); }},
        {"DataFlag", [&] { graph.SetDataFlag(true); }},
    };
    for (const auto& [name, access] : accesses) {
        SCOPED_TRACE(name);
        ExpectComError(access, E_POINTER, IGraphDataAccess::kIid);
    }

    // The shown range needs the access interface unless the full range is kept.
    CGD_GraphObject other;
    ExpectComError([&] { other.Attach(data->Identity(), host.Get(), false); }, E_POINTER, IGraphDataAccess::kIid);
}

// Rebinding, detaching and destroying the graph object each let go of the
// data object: no reference, no connection and no cycle is left.
TEST_F(GraphObjectFailureTest, UnbindingReleasesTheDataObject) {
    auto first = MakeData(4, 3);
    auto second = MakeData(4, 3);
    CGD_GraphObject graph;
    graph.Attach(first.Get(), host.Get(), true);
    EXPECT_GT(References(first.Get()), 1u);
    EXPECT_EQ(Connections(first.Get()), 1u);

    graph.Attach(second.Get(), host.Get(), true);
    EXPECT_EQ(References(first.Get()), 1u);
    EXPECT_EQ(Connections(first.Get()), 0u);

    graph.Detach();
    EXPECT_EQ(References(second.Get()), 1u);
    EXPECT_EQ(Connections(second.Get()), 0u);

    auto data = MakeDouble();
    const std::shared_ptr<bool> destroyed = data->destroyed;
    list.Remove(&Show(data->Identity()));
    EXPECT_EQ(Connections(data.Get()), 0u);
    data.Reset();
    EXPECT_TRUE(*destroyed);
}

TEST_F(GraphObjectFailureTest, FailuresDuringANotificationGoToTheHostsErrorEvent) {
    auto data = MakeData(4, 3);
    Show(data.Get());
    log->failures["view.SetGrid"] = E_FAIL;
    EXPECT_EQ(data->PutValue(0, 0, 1.0), S_OK);
    ASSERT_FALSE(log->calls.empty());
    EXPECT_EQ(log->calls.back(), "host.FireError(" + std::to_string(E_FAIL) + ")");
}

TEST_F(GraphObjectFailureTest, AFailedReleaseOfTheOldGridStillDropsTheSurfaces) {
    CGD_GraphObject& graph = Show(MakeData(4, 3).Get());
    log->failures["view.ReleaseGrid"] = E_FAIL;
    ExpectComError([&] { graph.SetEngine(nullptr); }, E_FAIL, IGraphView3D::kIid);
    EXPECT_EQ(graph.View(), nullptr);
    EXPECT_EQ(graph.Device(), nullptr);
}

}  // namespace
}  // namespace vexplot::test

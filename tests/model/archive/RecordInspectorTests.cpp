// What `vexplot info` says about an archive of records.
#include <gtest/gtest.h>

#include <string>

#include "ArchiveSupport.h"
#include "dataobject/GraphDataFactory.h"
#include "model/CGD_Axis.h"
#include "model/CGD_GraphObject.h"
#include "model/CGD_ObjectList.h"
#include "model/DetachedViewHost.h"
#include "model/RecordInspector.h"

namespace vexplot::test {
namespace {

class LabelLayout final : public ArchiveObject {
public:
    const ArchiveClass& GetRuntimeClass() const override {
        static const ArchiveClass cls("CGD_Label", 1, [] { return std::make_unique<LabelLayout>(); });
        return cls;
    }
    void Serialize(CArchive&) override {}
};

// A Y axis whose neighbouring fields all differ, so that a field read from
// the wrong place shows.
std::unique_ptr<CGD_Axis> DistinctAxis() {
    auto axis = std::make_unique<CGD_Axis>(AxisId::Y);
    CGD_Axis::Appearance look;
    look.label = "Depth \"m\"";
    look.numberColor = 0x0000FF;
    look.majorGridColor = 0x00FF00;
    look.minorGridColor = 0xFF0000;
    look.scaleFormat = ScaleFormat::Base10;
    look.minorGrid = false;
    look.minorTicks = 2;
    axis->SetAppearance(look);
    return axis;
}

class RecordInspectorTest : public GraphDataTest {
protected:
    // A palette record, a graph object record with its data, and an object
    // list holding an axis and two labels.
    Bytes PlotFile() {
        const std::vector<double> cells{1, 2, 3, -4, 5, 6.5};
        const ComPtr<IGraphData> data = CreateGraphData(cells, 3, 2, std::vector<double>{-3, 0, 3},
                                                        std::vector<double>{2, 1}, "x", "y", "z");
        CGD_GraphObject& graph = host->GetGraphObjects()->AddDataObject(data.Get(), host.Get(), false, true);
        CGD_ObjectList objects;
        objects.Add(DistinctAxis());
        objects.Add(std::make_unique<LabelLayout>());
        objects.Add(std::make_unique<LabelLayout>());
        return Stored([&](CArchive& a) {
            a.WriteString("PaletteStart:");
            a.WriteUInt32(3);
            for (uint32_t c : {0x000000u, 0x808080u, 0xFFFFFFu}) a.WriteColor(c);
            a.WriteString("PaletteEnd");
            graph.Serialize(a);
            objects.Serialize(a);
        });
    }

    static RecordInspector::Report Inspect(const Bytes& bytes) {
        auto stream = MakeComObject<MemoryStream>(bytes);
        return RecordInspector::Inspect(stream.Get());
    }

    ComPtr<DetachedViewHost> host = MakeComObject<DetachedViewHost>();
};

TEST_F(RecordInspectorTest, DescribesEachRecordFieldByField) {
    const RecordInspector::Report report = Inspect(PlotFile());
    EXPECT_EQ(report.error, "");
    EXPECT_EQ(RecordInspector::Format(report, "plot.vxg"),
              "plot.vxg: archive of 3 records\n"
              "  @0      palette record: 3 colours, first 0x000000, last 0xFFFFFF\n"
              "  @41     CGD_GraphObject record\n"
              "            flags             visible 1, data 0, use preview 0, suppressed 0\n"
              "            grid              3 x 2 (Y count 2, X count 3)\n"
              "            shown part        3 x 2 from X index 0, Y index 0\n"
              "            preview           0 x 0, steps 0 x 0\n"
              "            contrast colour   0x000000\n"
              "            1-D view          0\n"
              "            drawing           surface, image 1, shading 0, low resolution 0\n"
              "            section           plot style 2, point style 0, colour 0xFFFFFF, at 50%\n"
              "            data object       {8D5D1D92-6199-4AEC-900A-EF2724B42BB0} 3 x 2, X -3 .. 3, Y 2 .. 1, "
              "Z -4 .. 6.5\n"
              "  @306    object list: 3 entries\n"
              "    @310    CGD_Axis (schema 1)\n"
              "              direction         0, 1, 0\n"
              "              label             \"Depth \\x22m\\x22\"\n"
              "              shown             1\n"
              "              axis id           1\n"
              "              number colour     0x0000FF\n"
              "              major grid colour 0x00FF00\n"
              "              minor grid colour 0xFF0000\n"
              "              numbers shown     1\n"
              "              scale format      3\n"
              "              display mode      0\n"
              "              major grid        1\n"
              "              minor grid        0\n"
              "              major ticks       5\n"
              "              minor ticks       2\n"
              "              line, tick marks  1, 1\n"
              "              decimal count     10\n"
              "    @419    CGD_Label (schema 1)\n"
              "    @435    CGD_Label (schema 1)\n");
}

TEST_F(RecordInspectorTest, StopsWithTheOffsetOfWhatItCannotRead) {
    const Bytes file = PlotFile();
    // Inside the graph object record's X count (record at 41, X count 39 bytes in).
    const RecordInspector::Report cut = Inspect(Bytes(file.begin(), file.begin() + 82));
    EXPECT_EQ(cut.error, "at offset 80: X count needs 4 bytes but only 2 remain");
    ASSERT_EQ(cut.records.size(), 2u);
    EXPECT_EQ(cut.records[1].fields.size(), 1u);  // the flags, read before the cut

    Bytes unknownClass;
    AppendUInt16(unknownClass, 0xFFFF);
    AppendInt32(unknownClass, 1);
    AppendShortString(unknownClass, "CGD_Teapot");
    EXPECT_EQ(Inspect(unknownClass).error,
              "at offset 0: no layout known for class \"CGD_Teapot\" with schema 1, so the records after it "
              "cannot be found");
    EXPECT_EQ(Inspect(Bytes{'#', ' ', 'R', 'E', 'A', 'D'}).error,
              "at offset 0: expected a palette record, a graph object record, a class record or a list of "
              "records; found 23 20 52 45");
}

// The inspector reads what anybody hands it: every prefix of a good file
// ends in a report, never in an exception or a read past the end.
TEST_F(RecordInspectorTest, EveryPrefixOfAFileEndsInAReport) {
    const Bytes file = PlotFile();
    for (size_t cut = 0; cut < file.size(); ++cut) {
        SCOPED_TRACE(cut);
        const RecordInspector::Report report = Inspect(Bytes(file.begin(), file.begin() + static_cast<ptrdiff_t>(cut)));
        // Only a cut between records leaves a whole, shorter archive.
        const bool between = cut == 0 || cut == 41 || cut == 306;
        EXPECT_EQ(report.error.empty(), between) << report.error;
        if (!between) {
            EXPECT_EQ(report.error.rfind("at offset ", 0), 0u) << report.error;
        }
    }
}

}  // namespace
}  // namespace vexplot::test

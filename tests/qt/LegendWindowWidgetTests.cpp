#include <gtest/gtest.h>

#include <QListWidget>
#include <memory>

#include "GraphFixture.h"
#include "control/RecordingSite.h"
#include "model/CGD_Palette.h"
#include "qt/LegendWindowWidget.h"
#include "settings/SettingsStore.h"
#include "support/RecordingLegendOwner.h"
#include "ui/CUIW_LegendWindow.h"
#include "ui/LegendPreview.h"

namespace vexplot {
namespace {

using ListOwner = test::RecordingLegendOwner;

class LegendWindowWidgetTest : public test::GraphFixture {
protected:
    void SetUp() override {
        GraphFixture::SetUp();
        palette.SetStandard(3);
        owner.list = &list;
        owner.palette = &palette;
        const WindowHandle control = site.CreateWindow(WindowRole::Control, 0, {0, 0, 400, 300}, nullptr);
        ASSERT_TRUE(legend.Create(site, control, {0, 0, 160, 200}, owner));
        widget.Bind(&legend);
    }

    CGD_GraphObject& Add(const char* name) {
        ComPtr<IGraphData> data = MakeData(8, 6);
        data->PutName(name);
        CGD_GraphObject& graph = Show(data.Get());
        legend.AddObject(&graph);
        return graph;
    }

    CGD_Palette palette;
    ListOwner owner;
    test::RecordingSite site{std::make_shared<test::CallLog>()};
    CUIW_LegendWindow legend{nullptr, SettingsStore::OpenUnshared(":memory:")};
    LegendWindowWidget widget{nullptr};
};

TEST_F(LegendWindowWidgetTest, ShowsOneCheckedRowWithAnIconPerObject) {
    Add("alpha");
    Add("beta");
    QListWidget* rows = widget.List();
    ASSERT_EQ(rows->count(), 2);
    EXPECT_EQ(rows->item(0)->text(), "alpha");
    EXPECT_EQ(rows->item(1)->text(), "beta");
    for (int i = 0; i < 2; ++i) {
        EXPECT_FALSE(rows->item(i)->icon().isNull()) << i;
        EXPECT_EQ(rows->item(i)->checkState(), Qt::Checked) << i;
    }
    EXPECT_EQ(rows->currentRow(), 1);  // the object added last is active

    legend.Rebuild();
    EXPECT_EQ(rows->count(), 2);
    list.Remove(list.At(0));
    legend.Rebuild();
    ASSERT_EQ(rows->count(), 1);
    EXPECT_EQ(rows->item(0)->text(), "beta");
}

TEST_F(LegendWindowWidgetTest, CheckStateFollowsTheLogicBothWays) {
    CGD_GraphObject& graph = Add("alpha");
    QListWidgetItem* item = widget.List()->item(0);

    legend.ToggleVisible(0);
    EXPECT_EQ(item->checkState(), Qt::Unchecked);

    // The user's click on the box reaches the object.
    item->setCheckState(Qt::Checked);
    EXPECT_TRUE(graph.Flags().visible);
    EXPECT_TRUE(legend.Rows()[0].checked);
    EXPECT_EQ(owner.redraws, 2 + 1);  // add, toggle, click; each redrew once
}

TEST_F(LegendWindowWidgetTest, SelectingARowActivatesItsObject) {
    Add("alpha");
    Add("beta");
    widget.List()->setCurrentRow(0);
    EXPECT_EQ(list.ActiveIndex(), 0);
    EXPECT_EQ(legend.Selection(), 0);
}

TEST(LegendWindowWidgetImageTest, MaskColourBecomesTransparent) {
    RgbaRaster raster(2, 1, LegendPreview::kMaskColor);
    raster.SetPixel(1, 0, 0x00336699);  // 0x00BBGGRR
    const QImage image = LegendWindowWidget::ToImage(raster);
    EXPECT_EQ(qAlpha(image.pixel(0, 0)), 0);
    EXPECT_EQ(image.pixel(1, 0), qRgb(0x99, 0x66, 0x33));
}

}  // namespace
}  // namespace vexplot

#include <gtest/gtest.h>

#include <cmath>
#include <cstdio>
#include <optional>
#include <string>
#include <vector>

#include "control/ControlFixture.h"
#include "control/HeadlessSite.h"
#include "control/CommandIds.h"
#include "ui/CUIW_LegendWindow.h"
#include "ui/CUIW_DataEditor.h"
#include "ui/PaletteEditor.h"
#include "ui/RememberedCustomPalette.h"

namespace vexplot::test {
namespace {

TEST(DataEditorText, LeadingNumberConversion) {
    struct Case {
        const char* text;
        std::optional<double> value;
    };
    const double inf = HUGE_VAL;
    for (const Case& c : std::vector<Case>{{"12ab", 12.0},
                                           {"  -1.5e3x", -1500.0},
                                           {"+.5", 0.5},
                                           {"1e", 1.0},
                                           {"0x10", 0.0},
                                           {"1e999", inf},  // too large: infinite, which an edit refuses
                                           {"abc", std::nullopt},
                                           {"", std::nullopt},
                                           {"-", std::nullopt},
                                           {".", std::nullopt},
                                           {"nan", std::nullopt},
                                           {"inf", std::nullopt}}) {
        EXPECT_EQ(CUIW_DataEditor::LeadingNumber(c.text), c.value) << c.text;
    }
    // Only the first 256 characters are read.
    EXPECT_EQ(CUIW_DataEditor::LeadingNumber(std::string(256, ' ') + "5"), std::nullopt);
    EXPECT_EQ(CUIW_DataEditor::FormatCell(1.5), "1.500000e+00");
    EXPECT_EQ(CUIW_DataEditor::FormatCoordinate(0.1), "0.1");
    EXPECT_EQ(CUIW_DataEditor::FormatCoordinate(1234567.891234), "1234567.891");
}

// A control on the batch site showing a 4 x 3 grid (value (ix, iy) =
// ix * 3 + iy) with Y coordinates 10, 20, 30.
class DataEditorTest : public ::testing::Test, public ControlHarness {
protected:
    void SetUp() override {
        InstallEngine();
        Construct();
        ASSERT_TRUE(control->Create(batch, {0, 0, 320, 240}));
        std::vector<double> z(12);
        for (size_t i = 0; i < z.size(); ++i) z[i] = static_cast<double>(i);
        const std::vector<double> xs{0.1, 0.2, 0.3, 0.4}, ys{10, 20, 30};
        data = CreateGraphData(z, 4, 3, xs, ys);
        ASSERT_EQ(control->SetData(data.Get()), S_OK);
        graph = control->GetGraphObjects()->Active();
    }
    void TearDown() override {
        control->Destroy();
        std::fclose(out);
    }
    double DataValue(int32_t ix, int32_t iy) {
        double v = 0.0;
        EXPECT_EQ(data->GetValue(ix, iy, &v), S_OK);
        return v;
    }

    std::FILE* out = std::tmpfile();
    HeadlessSite batch{out};
    ComPtr<IGraphData> data;
    CGD_GraphObject* graph = nullptr;
};

TEST_F(DataEditorTest, TheScriptedUserEditsThroughTheControlAndSaves) {
    std::vector<std::string> seen;
    batch.AnswerDialog("DataEditor", [&](IDialogLogic& d) {
        auto& editor = dynamic_cast<CUIW_DataEditor&>(d);
        // The highest Y row on top; the cells of the first column read down
        // from Y index 2.
        seen = {editor.RowHeader(0), editor.RowHeader(2), editor.ColumnHeader(0), editor.CellText(0, 0),
                editor.CellText(2, 0), editor.CellText(0, 3), editor.ToolTip(0, 1)};
        EXPECT_TRUE(editor.Edit(0, 1, "7.25 volts").written);  // X index 1, Y index 2
        for (const char* bad : {"abc", "nan", "-1e999"}) {
            const auto refused = editor.Edit(1, 1, bad);
            EXPECT_FALSE(refused.written) << bad;
            EXPECT_FALSE(refused.message.empty());
        }
        EXPECT_FALSE(editor.Edit(3, 0, "1").written);  // no fourth row
        editor.Save();
        return kAnswerOk;
    });
    ASSERT_TRUE(control->OpenDataEditor());
    EXPECT_EQ(seen, (std::vector<std::string>{"30", "10", "0.1", "2.000000e+00", "0.000000e+00", "1.100000e+01",
                                              "X = 0.2, Y = 30"}));
    EXPECT_EQ(DataValue(1, 2), 7.25);  // in the data object: the plot follows
    EXPECT_EQ(DataValue(1, 1), 4.0);   // the refused edits wrote nothing
    EXPECT_FALSE(graph->Editor()->WindowExists());
}

TEST_F(DataEditorTest, ExitAsksAndNoPutsTheGridBack) {
    // The editor over the graph object's own contents.
    batch.AnswerDialog("DataEditor", [](IDialogLogic&) { return kAnswerOk; });
    ASSERT_TRUE(control->OpenDataEditor(graph));
    auto* editor = dynamic_cast<CUIW_DataEditor*>(graph->Editor());
    ASSERT_NE(editor, nullptr);
    EXPECT_TRUE(editor->WindowExists());

    EXPECT_TRUE(editor->Edit(2, 3, "-4").written);  // X index 3, Y index 0
    EXPECT_EQ(DataValue(3, 0), -4.0);
    editor->Exit();  // the control asks through its site: the batch site says Yes
    EXPECT_EQ(DataValue(3, 0), -4.0);

    // An editor that is told No puts back the grid it opened with.
    std::vector<std::string> asked;
    CGD_GraphObject::DataEditorContents contents;
    contents.grid = SafeArray::Create2D(3, 4);
    ASSERT_EQ(data->GetData(&contents.grid), S_OK);
    contents.xScale = SafeArray::FromValues(std::vector<double>{0.1, 0.2, 0.3, 0.4});
    contents.yScale = SafeArray::FromValues(std::vector<double>{10, 20, 30});
    CUIW_DataEditor told(*graph, contents, batch, [&](const std::string& q) {
        asked.push_back(q);
        return kAnswerNo;
    });
    EXPECT_TRUE(told.Edit(0, 0, "99").written);
    told.Exit();
    EXPECT_EQ(asked, (std::vector<std::string>{CUIW_DataEditor::kSaveQuestion}));
    EXPECT_EQ(DataValue(0, 2), 2.0);
    EXPECT_EQ(told.Value(0, 0), 2.0);
    told.Exit();  // nothing changed now: no question
    EXPECT_EQ(asked.size(), 1u);
}

// Scales that do not match the grid leave nothing to edit.
TEST_F(DataEditorTest, AGridThatDoesNotMatchItsScalesShowsEmpty) {
    CGD_GraphObject::DataEditorContents mismatched;
    mismatched.grid = SafeArray::Create2D(3, 4);
    mismatched.xScale = SafeArray::FromValues(std::vector<double>{1, 2});
    mismatched.yScale = SafeArray::FromValues(std::vector<double>{1, 2, 3});
    CUIW_DataEditor empty(*graph, mismatched, batch, {});
    EXPECT_EQ(empty.Rows(), 0);
    EXPECT_EQ(empty.Columns(), 0);
    EXPECT_FALSE(empty.Edit(0, 0, "1").written);
}

// "Edit Palette" through the command path: the plot follows the editor at
// once, Cancel puts the palette back, OK keeps it.
TEST_F(DataEditorTest, EditPaletteFollowsLiveAndCancelRestores) {
    RememberedCustomPalette::Forget();
    const std::vector<uint32_t> before(control->Palette().Colors().begin(), control->Palette().Colors().end());
    ASSERT_EQ(before.size(), 1024u);
    std::vector<uint32_t> during;
    int32_t answer = kAnswerCancel;
    batch.AnswerDialog("PaletteEditor", [&](IDialogLogic& d) {
        auto& editor = dynamic_cast<PaletteEditor&>(d);
        editor.ChooseType(4);  // "Inverse Gray scale"
        during.assign(control->Palette().Colors().begin(), control->Palette().Colors().end());
        return answer;
    });
    log->calls.clear();
    EXPECT_TRUE(control->DoCommand(cmd::kEditPalette));  // refused when disabled
    ASSERT_EQ(during.size(), 1024u);
    EXPECT_EQ(during.front(), 0xFFFFFFu);
    EXPECT_EQ(during[512], 0x808080u);  // trunc(0.5 * 255 + 0.5) = 128
    EXPECT_EQ(Calls("engine.SetPalette").size(), 2u);  // the change, then the restore
    EXPECT_TRUE(std::equal(before.begin(), before.end(), control->Palette().Colors().begin()));

    answer = kAnswerOk;
    EXPECT_TRUE(control->DoCommand(cmd::kEditPalette));
    EXPECT_EQ(control->Palette().GetColor(0), 0xFFFFFFu);
    EXPECT_TRUE(control->IsModified());
    RememberedCustomPalette::Forget();
}

// The legend's "&Data" and "&Properties" are available for a row with data.
TEST(LegendEditors, DataAndPropertiesAreOffered) {
    ControlHarness h;
    h.CreateWorking();
    h.ShowGrid();
    auto* legend = std::get<CUIW_LegendWindow*>(h.site.windows[h.control->Window(WindowRole::LegendWindow)].logic);
    std::vector<bool> offered;
    h.site.menuAnswer = [&](const MenuModel& menu) {
        for (const MenuItem& item : menu)
            if (item.command == CUIW_LegendWindow::kCmdData || item.command == CUIW_LegendWindow::kCmdProperties)
                offered.push_back(item.enabled);
        return 0;
    };
    legend->OnRowContextMenu(0, {1, 1});
    EXPECT_EQ(offered, (std::vector<bool>{true, true}));
}

}  // namespace
}  // namespace vexplot::test

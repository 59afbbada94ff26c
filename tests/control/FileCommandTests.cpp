// The file, palette and resampling commands as the user runs them: through
// the command router, with the site's file dialog and message box answered
// by the recording site.
#include <fstream>

#include "ControlFixture.h"
#include "control/CommandIds.h"
#include "dataobject/GraphDataFactory.h"
#include "support/ArchiveBytes.h"
#include "support/TempDir.h"

namespace vexplot::test {
namespace {

constexpr const char* kNoRange = "For external resampling you must create or select region or zoom visible range.";
constexpr const char* kSameRange = "Data range and visible range is identical. Do you want external resampling?";

class FileCommands : public WorkingControl {
protected:
    // Runs `command` with the file dialog answering `path`.
    bool Run(int32_t command, const std::string& path) {
        site.files = {path};
        return control->DoCommand(command);
    }
    int32_t GraphCount() { return control->GetGraphObjects()->Count(); }
    GraphStyle ActiveStyle() { return control->GetGraphObjects()->Active()->Drawing().style; }

    TempDir dir;
};

TEST_F(FileCommands, APlotSavedWithBarsComesBackWithBarsAndAskedForTheRightFileType) {
    ShowGrid(5, 4);
    control->SetGraphMode(1);  // bar chart
    ASSERT_TRUE(Run(cmd::kSaveVexplot, dir / "bars.vxg"));
    ASSERT_EQ(site.fileRequests.size(), 1u);
    EXPECT_TRUE(site.fileRequests[0].save);
    EXPECT_EQ(site.fileRequests[0].filter, "Vexplot Data (*.vxg)");
    EXPECT_EQ(site.fileRequests[0].extension, ".vxg");

    control->SetGraphMode(0);
    ASSERT_EQ(ActiveStyle(), GraphStyle::Surface);
    ASSERT_TRUE(Run(cmd::kLoadVexplot, dir / "bars.vxg"));
    EXPECT_EQ(ActiveStyle(), GraphStyle::Barchart);
    EXPECT_EQ(control->GetGraphMode(), 1);
    EXPECT_TRUE(site.messages.empty());
}

TEST_F(FileCommands, AFileOfTheFirstRecordLayoutStillLoads) {
    // Saved by the program before graph object records kept their style.
    ASSERT_TRUE(Run(cmd::kLoadVexplot, std::string(VEXPLOT_TEST_DATA) + "/bars-format-1.0.vxg"));
    EXPECT_TRUE(site.messages.empty()) << site.messages.front();
    ASSERT_EQ(GraphCount(), 1);
    EXPECT_EQ(control->GetGraphObjects()->Active()->GetGeometry().xCount, 6);
    EXPECT_EQ(ActiveStyle(), GraphStyle::Surface);
}

TEST_F(FileCommands, PlotsThatCannotBeLoadedOrSavedAreToldAndChangeNothing) {
    ShowGrid();
    Bytes newer;
    AppendInt32(newer, 0x00010002);  // a later minor version
    AppendInt32(newer, 400);
    AppendInt32(newer, 300);
    AppendShortString(newer, "From the future");
    newer.resize(newer.size() + 64, 0);
    dir.Write("newer.vxg", newer);

    control->DoCommand(cmd::kLoadVexplot);  // cancelled: nothing said
    ASSERT_TRUE(site.messages.empty());
    ASSERT_TRUE(Run(cmd::kLoadVexplot, dir / "newer.vxg"));
    ASSERT_EQ(site.messages.size(), 1u);
    EXPECT_NE(site.messages[0].find("newer version of Vexplot"), std::string::npos) << site.messages[0];
    EXPECT_EQ(GraphCount(), 1);
    EXPECT_NE(control->GetCaption(), "From the future");

    const std::string unwritable = dir / "missing/plot.vxg";
    ASSERT_TRUE(Run(cmd::kSaveVexplot, unwritable));
    ASSERT_EQ(site.messages.size(), 2u);
    EXPECT_EQ(site.messages[1].rfind("Saving \"" + unwritable + "\" failed: ", 0), 0u) << site.messages[1];
    EXPECT_NE(site.messages[1].find("No such file or directory"), std::string::npos) << site.messages[1];
}

TEST_F(FileCommands, LoadDataAsksWhetherToReplaceAndNeverLosesTheOldDataOnAFailure) {
    EXPECT_FALSE(control->CommandState(cmd::kSaveData).enabled);  // nothing to save yet
    ShowGrid(4, 3);
    ASSERT_TRUE(Run(cmd::kSaveData, dir / "grid.3do"));
    ASSERT_EQ(site.fileRequests.back().filter, "3DO file (*.3do)");

    site.answers = {kAnswerNo};
    ASSERT_TRUE(Run(cmd::kLoadData, dir / "grid.3do"));
    EXPECT_EQ(site.messages.back(), "Replace active graph object?");
    EXPECT_EQ(GraphCount(), 2);  // beside the old one

    site.answers = {kAnswerYes};
    dir.Write("broken.3do", std::string("not a grid"));
    ASSERT_TRUE(Run(cmd::kLoadData, dir / "broken.3do"));
    EXPECT_EQ(GraphCount(), 2);
    EXPECT_NE(site.messages.back().find("broken.3do"), std::string::npos) << site.messages.back();

    CGD_GraphObject* old = control->GetGraphObjects()->Active();
    site.answers = {kAnswerYes};
    ASSERT_TRUE(Run(cmd::kLoadData, dir / "grid.3do"));
    EXPECT_EQ(GraphCount(), 2);
    EXPECT_NE(control->GetGraphObjects()->Active(), old);
    EXPECT_EQ(control->GetGraphObjects()->Active()->GetGeometry().xCount, 4);
}

TEST_F(FileCommands, PaletteFilesRoundTripAndAFileThatIsNoPaletteKeepsTheColours) {
    const auto colours = [this] {
        const auto span = control->Palette().Colors();
        return std::vector<uint32_t>(span.begin(), span.end());
    };
    const std::vector<uint32_t> before = colours();
    ASSERT_TRUE(Run(cmd::kSavePalette, dir / "saved.plt"));
    EXPECT_EQ(site.fileRequests.back().filter, "Palette files(*.plt)");

    for (const char* junk : {"", "hello world\n", "1,2\n", "PaletteStart:\x01\x02"}) {
        dir.Write("junk.plt", std::string(junk));
        ASSERT_TRUE(Run(cmd::kLoadPalette, dir / "junk.plt"));
        EXPECT_NE(site.messages.back().find("is not a palette file"), std::string::npos) << junk;
        EXPECT_EQ(colours(), before) << junk;
    }

    dir.Write("two.plt", std::string("255,0,0\n0,0,255\n"));
    ASSERT_TRUE(Run(cmd::kLoadPalette, dir / "two.plt"));
    EXPECT_EQ(colours(), (std::vector<uint32_t>{0x0000FF, 0xFF0000}));
    ASSERT_TRUE(Run(cmd::kLoadPalette, dir / "saved.plt"));
    EXPECT_EQ(colours(), before);
}

TEST_F(FileCommands, ExternalResamplingAsksAsTheRangeRequiresAndFiresOnlyWithARange) {
    const auto sink = Advise();
    const auto fired = [&sink] {
        for (const auto& e : sink->events)
            if (e.dispid == CUI_VexplotCtrl::kDispidResample) {
                std::vector<double> range;
                for (const Variant& v : e.args) range.push_back(v.R8());
                return range;
            }
        return std::vector<double>{};
    };
    ASSERT_TRUE(control->DoCommand(cmd::kExternalResampling));
    EXPECT_EQ(site.messages, std::vector<std::string>{kNoRange});
    EXPECT_TRUE(fired().empty());

    CGD_GraphObject* graph = ShowGrid(5, 4);  // scales 0..4 and 0..3
    site.answers = {kAnswerNo};
    control->DoCommand(cmd::kExternalResampling);
    EXPECT_EQ(site.messages.back(), kSameRange);
    EXPECT_TRUE(fired().empty());

    site.answers = {kAnswerYes};
    control->DoCommand(cmd::kExternalResampling);
    EXPECT_EQ(fired(), (std::vector<double>{0, 4, 0, 3}));

    sink->events.clear();
    site.messages.clear();
    graph->SetShownRange(1, 3, 1, 2);
    control->DoCommand(cmd::kExternalResampling);
    EXPECT_TRUE(site.messages.empty());  // a zoomed range needs no question
    EXPECT_EQ(fired(), (std::vector<double>{1, 3, 1, 2}));
}

}  // namespace
}  // namespace vexplot::test
